// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <map>
#include <sstream>
#include <string>

#include "qx/foundation/graph/QxChildGraphForest.h"
#include "support/GraphTesting.h"

namespace qxtest {

/// Writes down lists with the objects numbered by their place in the graphs' node lists and by
/// their names, so that two managers of the same shape give the same text.
class Description {
public:
    explicit Description(QxGraphManager& manager) {
        std::vector<QxGraph*> graphs = objectsOf<QxGraph>(*manager.pGraphList());
        graphs.push_back(manager.pIntergraph());
        for (QxGraph* graph : graphs) {
            number(graph);
            for (QxNode* node : objectsOf<QxNode>(*graph->pNodeList())) {
                number(node);
            }
            QxEdgeDList edges;
            graph->buildAllEdgeList(&edges);
            for (QxEdge* edge : edgesOf(&edges)) {
                m_edges.push_back(edge);
            }
        }
        // Edges with an end outside are not part of the drawing, nor of its copies.
        for (const QxEdge* edge : m_edges) {
            if (isNumbered(edge->pSourceNode()) && isNumbered(edge->pTargetNode())) {
                number(edge);
            }
        }
        for (const QxGraph* graph : graphs) {
            describe(*graph);
        }
    }

    std::string text() const { return m_text.str(); }

private:
    void number(const QxGraphObject* object) {
        const int next = static_cast<int>(m_numbers.size());
        m_numbers[object] = next;
    }
    bool isNumbered(const QxObject* object) const { return m_numbers.count(object) != 0; }
    void write(const char* what, const QxDList* list) {
        m_text << what;
        for (const QxObject* object : objectsOf<QxObject>(*list)) {
            if (isNumbered(object)) {
                m_text << ' ' << m_numbers.at(object);
            }
        }
    }
    void writeChild(const QxGraphMember& member) {
        if (const QxGraph* child = member.pChildGraph()) {
            m_text << " holds " << m_numbers.at(child);
        }
    }
    void describe(const QxGraph& graph) {
        const wchar_t* name = graph.pNameString();
        m_text << "\ngraph " << (name != nullptr ? static_cast<char>(*name) : '-');
        write(" nodes", graph.pNodeList());
        write(" edges", graph.pEdgeList());
        write(" disconnected", graph.pDisconnectedEdgeList());
        write(" deactivated", graph.pDeactivatedEdgeList());
        write(" entering", graph.pEnteringIntergraphEdgeList());
        write(" leaving", graph.pLeavingIntergraphEdgeList());
        write(" unconnected", graph.pUnconnectedIntergraphEdgeList());
        QxGraphDList children;
        graph.buildChildGraphList(&children);
        m_text << " children";
        for (const QxGraph* child : objectsOf<QxGraph>(children)) {
            if (isNumbered(child->pParentGraphMember())) {
                m_text << ' ' << m_numbers.at(child);
            }
        }
        for (const QxNode* node : objectsOf<QxNode>(*graph.pNodeList())) {
            m_text << "\n  node";
            write(" in", node->pInEdgeList());
            write(" out", node->pOutEdgeList());
            write(" disconnected", node->pDisconnectedEdgeList());
            write(" deactivated", node->pDeactivatedEdgeList());
            writeChild(*node);
        }
        QxEdgeDList edges;
        graph.buildAllEdgeList(&edges);
        for (const QxEdge* edge : edgesOf(&edges)) {
            if (!isNumbered(edge)) {
                continue;
            }
            m_text << "\n  edge " << m_numbers.at(edge->pSourceNode()) << " to "
                   << m_numbers.at(edge->pTargetNode());
            writeChild(*edge);
        }
    }

    std::map<const QxObject*, int> m_numbers;
    std::vector<const QxEdge*> m_edges;
    std::ostringstream m_text;
};

inline std::string describe(QxGraphManager& manager) {
    return Description(manager).text();
}

}  // namespace qxtest
