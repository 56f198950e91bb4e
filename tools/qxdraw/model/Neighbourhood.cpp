// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Neighbourhood.h"

#include "model/Nesting.h"

namespace qxdraw {

namespace {

class Search {
public:
    Search(const GraphDocument& document, bool children, bool parents)
        : m_document(document),
          m_graphIn(graphsInNodes(document)),
          m_next(document.nodes.size()),
          m_members(document.graphs.size()),
          m_isReached(document.nodes.size(), 0) {
        for (const DocumentEdge& edge : document.edges) {
            if (children) {
                m_next[at(edge.source)].push_back(edge.target);
            }
            if (parents) {
                m_next[at(edge.target)].push_back(edge.source);
            }
        }
        for (std::size_t i = 0; i < document.nodes.size(); ++i) {
            m_members[at(document.nodes[i].graph)].push_back(static_cast<int>(i));
        }
    }

    std::vector<char> run(const std::vector<int>& start, int depth) {
        for (const int node : start) {
            reach(node);
        }
        std::size_t first = 0;
        for (int level = 0; level < depth && first < m_reached.size(); ++level) {
            const std::size_t last = m_reached.size();
            for (; first < last; ++first) {
                for (const int next : m_next[at(m_reached[first])]) {
                    reach(next);
                }
            }
        }
        std::vector<char> marks = m_isReached;
        for (const int node : m_reached) {
            markAround(node, marks);
        }
        return marks;
    }

private:
    static std::size_t at(int index) { return static_cast<std::size_t>(index); }

    void reach(int node) {
        std::vector<int> open{node};
        while (!open.empty()) {
            const int next = open.back();
            open.pop_back();
            if (m_isReached[at(next)] != 0) {
                continue;
            }
            m_isReached[at(next)] = 1;
            m_reached.push_back(next);
            if (m_graphIn[at(next)] >= 0) {
                const std::vector<int>& inside = m_members[at(m_graphIn[at(next)])];
                open.insert(open.end(), inside.begin(), inside.end());
            }
        }
    }

    void markAround(int node, std::vector<char>& marks) const {
        int around = m_document.graphs[at(m_document.nodes[at(node)].graph)].node;
        while (around >= 0 && marks[at(around)] == 0) {
            marks[at(around)] = 1;
            around = m_document.graphs[at(m_document.nodes[at(around)].graph)].node;
        }
    }

    const GraphDocument& m_document;
    std::vector<int> m_graphIn;
    std::vector<std::vector<int>> m_next;
    std::vector<std::vector<int>> m_members;
    std::vector<char> m_isReached;
    std::vector<int> m_reached;  ///< in the order of their distance
};

}  // namespace

std::vector<char> neighbourhoodOf(const GraphDocument& document, const std::vector<int>& start,
                                  int depth, bool children, bool parents) {
    return Search(document, children, parents).run(start, depth);
}

}  // namespace qxdraw
