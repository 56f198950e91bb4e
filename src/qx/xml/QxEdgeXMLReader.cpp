// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxEdgeXMLReader.h"

#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxGraphManager.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/xml/QxGraphManagerXMLReader.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/ElementKind.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using qx::internal::ElementKind;

namespace {

enum class State { Connected, Disconnected, Deactivated };

State stateOf(const QxDOMElement& element) {
    const QxDOMElement* const more = QxXMLHelper::pMore(element);
    const QxDOMElement* const state =
        more != nullptr ? QxXMLUtilities::pChild(*more, names::State) : nullptr;
    const std::u16string_view value =
        state != nullptr ? QxXMLUtilities::attribute(*state, names::Value) : u"";
    return value == names::Disconnected  ? State::Disconnected
           : value == names::Deactivated ? State::Deactivated
                                         : State::Connected;
}

/// A node that stands for a missing end while an edge is inserted, and takes that end along when it
/// goes.
class StandIn {
public:
    explicit StandIn(QxGraphManager& manager) : m_manager(manager) {}
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;
    ~StandIn() {
        if (m_node != nullptr) {
            m_graph->removeNode(m_node);
            m_node->vRelease();
        }
    }
    QxNode* pNode() {
        if (m_node == nullptr && m_manager.pFirstGraph() != nullptr) {
            m_graph = m_manager.pFirstGraph();
            m_node = m_graph->addNode(0);
        }
        return m_node;
    }

private:
    QxGraphManager& m_manager;
    QxGraph* m_graph = nullptr;
    QxNode* m_node = nullptr;
};

}  // namespace

struct QxEdgeXMLReader::Ends {
    QxNode* source;
    QxNode* target;
};

QxEdgeXMLReader::QxEdgeXMLReader(QxGraphManagerXMLReader& document)
    : QxXMLReader(document), m_manager(document) {}

QxEdge* QxEdgeXMLReader::read(QxGraph& graph, const QxDOMElement& element) {
    QxEdge* const edge = addEdge(graph, element);
    if (edge == nullptr) {
        return nullptr;
    }
    document().registerObject(element, edge);
    m_edge = edge;
    processDOMElement(element);
    if (stateOf(element) == State::Disconnected) {
        edge->disconnect();
    } else if (stateOf(element) == State::Deactivated) {
        edge->deactivate();
    }
    m_edge = nullptr;
    return edge;
}

QxEdge* QxEdgeXMLReader::addEdge(QxGraph& graph, const QxDOMElement& element) {
    const bool isLoose = stateOf(element) == State::Disconnected;
    const Ends ends{static_cast<QxNode*>(document().pElementObject(element, names::Source,
                                                                   ElementKind::Node, isLoose)),
                    static_cast<QxNode*>(document().pElementObject(element, names::Target,
                                                                   ElementKind::Node, isLoose))};
    const int type = QxXMLHelper::parseType(element);
    if (isLoose || staysIn(graph, element) != 0) {
        return addToGraph(graph, ends, type);
    }
    if (ends.source == nullptr || ends.target == nullptr) {
        document().repair(element, "the edge has not two ends and is left out");
        return nullptr;
    }
    const bool isWithin =
        ends.source->pOwnerGraph() == &graph && ends.target->pOwnerGraph() == &graph;
    if (isWithin || graph.isIntergraph() != 0) {
        return graph.addEdge(ends.source, ends.target, type);
    }
    document().repair(element, "its ends lie in other graphs; it comes to where they lie");
    return m_manager.pGraphManager()->addEdge(ends.source, ends.target, type);
}

QxEdge* QxEdgeXMLReader::addToGraph(QxGraph& graph, const Ends& ends, int type) {
    StandIn source(*m_manager.pGraphManager());
    StandIn target(*m_manager.pGraphManager());
    return graph.addEdge(ends.source != nullptr ? ends.source : source.pNode(),
                         ends.target != nullptr ? ends.target : target.pNode(), type);
}

void QxEdgeXMLReader::processDOMElement(const QxDOMElement& element) {
    QxXMLHelper::parseName(*m_edge, element);
    QxXMLHelper::parseCommonMore(*m_edge, element);
    m_manager.noteChildGraph(element);
}

int QxEdgeXMLReader::staysIn(const QxGraph&, const QxDOMElement&) const {
    return 0;
}
