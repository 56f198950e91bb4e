// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <map>
#include <set>
#include <string>

#include "qx/foundation/graph/QxGraphChangeEventData.h"
#include "qx/foundation/graph/QxGraphChangeListener.h"
#include "support/GraphTesting.h"

namespace qxtest {

/// Knows the graphs of a factory from the changes that they tell, in the order of every list. What
/// comes in it looks at once; later it looks at nothing any more.
class GraphFollower : public QxGraphChangeListener {
public:
    /// The contents of a manager or the nodes of a graph; the edges of a graph by state follow.
    static constexpr int Contents = 100;
    static constexpr int EdgesByState = 200;

    void graphChanged(QxGraphChangeEventData* data) override;

    /// Compares with the real objects; empty, or what differs first.
    std::string differenceAt(const QxGraphManager& manager) const;

private:
    using Objects = std::vector<const QxObject*>;
    struct Edge {
        const QxGraph* owner;
        const QxNode* source;
        const QxNode* target;
        QxEdgeStateEnum state;
    };
    Objects& at(const QxObject* owner, int list) { return m_lists[{owner, list}]; }
    void place(Objects& list, const QxObject* object, const QxObject* previous);
    void look(const QxGraph& graph);
    void look(const QxNode& node);
    void lookAtMember(const QxGraphMember& member);
    void forget(const QxGraph& graph);
    void leaveEnds(const QxEdge* edge);
    void enterEnds(const QxEdge* edge);
    void hearOfGraph(const QxGraphChangeEventData& data);
    void hearOfNode(const QxGraphChangeEventData& data);
    void hearOfEdge(const QxGraphChangeEventData& data);
    void hearOfEdgeInserted(const QxGraphChangeEventData& data);
    std::string differenceAt(const QxGraph& graph) const;
    std::string differenceAt(const QxGraphMember& member) const;

    std::map<std::pair<const QxObject*, int>, Objects> m_lists;
    std::set<const QxObject*> m_graphs;
    std::map<const QxObject*, Edge> m_edges;
    std::map<const QxObject*, const QxGraph*> m_children;
    std::map<const QxObject*, std::wstring> m_names;
    std::string m_misfit;
};

}  // namespace qxtest
