// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/Explaining.h"

#include <algorithm>

#include "model/Names.h"
#include "model/Nesting.h"

namespace qxdraw {

namespace {

constexpr std::size_t Separator = 2;  // the length of "->" and "--"

const char* wordFor(QxInvisibilityEnum reason) {
    switch (reason) {
        case QxInvisibleNot:
            return "";
        case QxInvisibleHidden:
            return "hidden";
        case QxInvisibleCollapsed:
            return "collapsed";
        case QxInvisibleFolded:
            return "folded";
        case QxInvisibleNotConnected:
            return "not-connected";
        case QxInvisibleEndsCoverEachOther:
            return "ends-cover-each-other";
        default:
            return "outside";
    }
}

class Explainer {
public:
    Explainer(const Drawing& drawing, const GraphDocument& document)
        : m_drawing(drawing), m_document(document), m_graphIn(graphsInNodes(document)) {}

    Explanation explain(QxGraphMember& member) const {
        const QxDGraphManager& manager = m_drawing.manager();
        Explanation result;
        describe(member, result.kind, result.name);
        QxGraphObject* blame = nullptr;
        const QxInvisibilityEnum reason = manager.whyInvisible(&member, &blame);
        result.isShown = reason == QxInvisibleNot;
        result.why = wordFor(reason);
        std::string kind;
        describeObject(blame != &member ? blame : nullptr, kind, result.blame);
        QxGraphObject* standIn = manager.pVisibleRepresentative(&member);
        if (result.isShown) {
            const auto* node =
                member.isNode() != 0 ? static_cast<const QxDNode*>(&member) : nullptr;
            result.isClosed = node != nullptr && node->collapsed() != 0;
        } else if (standIn != &member) {
            describeObject(standIn, result.standInKind, result.standIn);
            if (standIn != nullptr && standIn->isEdge() != 0) {
                result.standsFor = documentEdge(static_cast<QxGraphMember&>(*standIn)).standsFor;
            }
        }
        return result;
    }

private:
    const DocumentEdge& documentEdge(const QxGraphMember& edge) const {
        return m_document.edges[m_drawing.indexOf(edge)];
    }

    void describeObject(const QxGraphObject* object, std::string& kind, std::string& name) const {
        if (object != nullptr && (object->isNode() != 0 || object->isEdge() != 0)) {
            describe(static_cast<const QxGraphMember&>(*object), kind, name);
        }
    }

    void describe(const QxGraphMember& member, std::string& kind, std::string& name) const {
        const std::size_t index = m_drawing.indexOf(member);
        if (member.isNode() != 0) {
            kind = m_graphIn[index] >= 0 ? "nested graph" : "node";
            name = m_document.nodes[index].id;
            return;
        }
        const DocumentEdge& edge = m_document.edges[index];
        kind = edge.standsFor > 0 ? "meta-edge" : "edge";
        name =
            nodeName(edge.source) + (m_document.directed ? " -> " : " -- ") + nodeName(edge.target);
    }

    const std::string& nodeName(int index) const {
        return m_document.nodes[static_cast<std::size_t>(index)].id;
    }

    const Drawing& m_drawing;
    const GraphDocument& m_document;
    const std::vector<int> m_graphIn;
};

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? ""
                                      : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

std::vector<std::size_t> edgesBetween(std::vector<int> sources, std::vector<int> targets,
                                      bool directed, const std::vector<std::pair<int, int>>& ends) {
    std::sort(sources.begin(), sources.end());
    std::sort(targets.begin(), targets.end());
    const auto isIn = [](const std::vector<int>& nodes, int node) {
        return std::binary_search(nodes.begin(), nodes.end(), node);
    };
    std::vector<std::size_t> edges;
    for (std::size_t i = 0; i < ends.size(); ++i) {
        const auto& [source, target] = ends[i];
        if ((isIn(sources, source) && isIn(targets, target)) ||
            (!directed && isIn(sources, target) && isIn(targets, source))) {
            edges.push_back(i);
        }
    }
    return edges;
}

}  // namespace

std::string Explanation::words() const {
    const std::string subject = kind + " '" + name + "' ";
    if (isShown) {
        return subject + (isClosed ? "is shown, but not what is in it" : "is shown");
    }
    std::string reason = "it lies outside of what is drawn";
    if (why == "hidden") {
        reason = blame.empty() ? "it is hidden" : "'" + blame + "' is hidden";
    } else if (why == "collapsed") {
        reason = "'" + blame + "' is collapsed";
    } else if (why == "folded") {
        reason = "it is folded into '" + blame + "'";
    } else if (why == "not-connected") {
        reason = "an end of it is hidden";
    } else if (why == "ends-cover-each-other") {
        reason = "its ends cover each other";
    }
    const std::string standing =
        standIn.empty()
            ? "nothing stands for it"
            : standInKind + " '" + standIn + "' stands for it" +
                  (standsFor > 1 ? " and " + std::to_string(standsFor - 1) + " more" : "");
    return subject + "is not shown: " + reason + "; " + standing;
}

std::vector<std::pair<int, int>> endsOfEdges(const GraphDocument& document) {
    std::vector<std::pair<int, int>> ends;
    ends.reserve(document.edges.size());
    for (const DocumentEdge& edge : document.edges) {
        ends.emplace_back(edge.source, edge.target);
    }
    return ends;
}

Explained findToExplain(const std::string& name, const GraphDocument& document,
                        const std::vector<std::pair<int, int>>& ends) {
    const Names names(document);
    Explained explained{names.find(name), {}};
    for (std::size_t at = 1; explained.nodes.empty() && at + Separator < name.size(); ++at) {
        const std::string separator = name.substr(at, Separator);
        if (separator == "->" || separator == "--") {
            const auto more = edgesBetween(names.find(trimmed(name.substr(0, at))),
                                           names.find(trimmed(name.substr(at + Separator))),
                                           document.directed && separator == "->", ends);
            explained.edges.insert(explained.edges.end(), more.begin(), more.end());
        }
    }
    if (explained.nodes.empty() && explained.edges.empty()) {
        names.findAmong(name, "node, nested graph or edge", [](int) { return true; });
    }
    return explained;
}

std::vector<Explanation> explain(const Explained& explained, const Drawing& drawing,
                                 const GraphDocument& document) {
    const Explainer explainer(drawing, document);
    std::vector<Explanation> results;
    for (const int node : explained.nodes) {
        results.push_back(explainer.explain(drawing.node(static_cast<std::size_t>(node))));
    }
    for (const std::size_t edge : explained.edges) {
        results.push_back(explainer.explain(drawing.edge(edge)));
    }
    return results;
}

}  // namespace qxdraw
