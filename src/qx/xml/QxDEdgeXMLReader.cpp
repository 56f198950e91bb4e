// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxDEdgeXMLReader.h"

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/xml/QxDGraphManagerXMLReader.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxLabelXMLReader.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/BetweenGraphs.h"
#include "qx/xml/internal/ElementKind.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using qx::internal::ElementKind;
using Utilities = QxXMLUtilities;

QxDEdgeXMLReader::QxDEdgeXMLReader(QxGraphManagerXMLReader& document)
    : QxEdgeXMLReader(document), m_labelReader(std::make_unique<QxEdgeLabelXMLReader>(document)) {}

QxDEdgeXMLReader::~QxDEdgeXMLReader() = default;

QxDEdge* QxDEdgeXMLReader::pDEdge() const {
    return static_cast<QxDEdge*>(pEdge());
}

namespace {

/// Whether the document says that the edge is not connected.
int stateIn(const QxDOMElement& element) {
    const QxDOMElement* const more = QxXMLHelper::pMore(element);
    return more != nullptr && Utilities::pChild(*more, names::State) != nullptr ? 1 : 0;
}

}  // namespace

/// A hidden edge whose ends lie in other graphs stays where it is written.
int QxDEdgeXMLReader::staysIn(const QxGraph& graph, const QxDOMElement& element) const {
    return graph.isIntergraph() == 0 && graph.levelNumber() >= 2 &&
                   static_cast<const QxDGraphManagerXMLReader&>(document()).isHidden(element) != 0
               ? 1
               : 0;
}

void QxDEdgeXMLReader::processDOMElement(const QxDOMElement& element) {
    QxEdgeXMLReader::processDOMElement(element);
    if (pEdge()->levelNumber() < 2) {
        return;
    }
    QxDEdge& edge = *pDEdge();
    processClipping(element, 1);
    processClipping(element, 0);
    if (const auto wanted = Utilities::parseBooleanValue(element, names::OrthogonalRouting)) {
        edge.internalOrthogonalRouting(*wanted);
    }
    if (edge.pOwnerGraph()->isIntergraph() != 0) {
        m_late.push_back({&edge, &element});
    } else {
        processBends(element);
    }
    if (edge.connected() == 0 && staysIn(*edge.pOwnerGraph(), element) != 0 &&
        stateIn(element) == 0) {
        m_stranded.insert(&edge);
    }
    QxDXMLHelper::parseLabels(element, *m_labelReader, edge, names::EdgeLabels);
    if (const QxDOMElement* more = QxXMLHelper::pMore(element)) {
        if (const QxDOMElement* clipping = Utilities::pChild(*more, names::Clipping)) {
            edge.clipSourceSide(Utilities::parseBoolean(*clipping, names::Source).value_or(1));
            edge.clipTargetSide(Utilities::parseBoolean(*clipping, names::Target).value_or(1));
        }
        edge.multiEdge(Utilities::parseBooleanValue(*more, names::MultiEdge).value_or(0));
    }
}

void QxDEdgeXMLReader::processClipping(const QxDOMElement& element, int atSource) {
    if (QxConnector* connector = pFindConnector(element, atSource)) {
        assign(connector, element, atSource);
        return;
    }
    const QxDOMElement* const clipping =
        Utilities::pChild(element, atSource != 0 ? names::SourceClipping : names::TargetClipping);
    QxDNode* const node = atSource != 0 ? pDEdge()->pSourceNode() : pDEdge()->pTargetNode();
    if (clipping == nullptr || Utilities::hasAttributes(*clipping) == 0 || node == nullptr) {
        return;
    }
    const auto perMil = QxDXMLHelper::pParsePerMil(clipping, 1);
    if (QxConnector* connector = node->ntAddConnector(perMil->x(), perMil->y(), 0, 0)) {
        m_newConnectors.push_back(connector);
        assign(connector, element, atSource);
    }
}

/// The connector that is named: one of a client, else, in what only our own documents have, one
/// that was made for the end.
QxConnector* QxDEdgeXMLReader::pFindConnector(const QxDOMElement& element, int atSource) {
    if (const QxDOMElement* named = Utilities::pChild(
            element, atSource != 0 ? names::SourceConnector : names::TargetConnector)) {
        if (auto* connector = static_cast<QxConnector*>(
                document().pElementObject(*named, names::Value, ElementKind::Connector))) {
            return connector;
        }
    }
    const QxDOMElement* const more = QxXMLHelper::pMore(element);
    const QxDOMElement* const ends =
        more != nullptr ? Utilities::pChild(*more, names::Ends) : nullptr;
    return ends != nullptr ? static_cast<QxConnector*>(document().pElementObject(
                                 *ends, atSource != 0 ? names::Source : names::Target,
                                 ElementKind::Connector, true))
                           : nullptr;
}

void QxDEdgeXMLReader::assign(QxConnector* connector, const QxDOMElement& element, int atSource) {
    QxDEdge& edge = *pDEdge();
    const QxConnector* const assigned =
        atSource != 0 ? edge.pSourceConnector(connector) : edge.pTargetConnector(connector);
    if (assigned != connector) {
        document().repair(element, "the connector is not at that end; the edge ends at the node");
    }
}

void QxDEdgeXMLReader::processBends(const QxDOMElement& element) {
    addBends(*pDEdge(), element);
}

void QxDEdgeXMLReader::addBends(QxDEdge& edge, const QxDOMElement& element) const {
    const QxDOMElement* const list = Utilities::pChild(element, names::Bends);
    const qx::internal::BetweenGraphs frame(edge);
    for (const QxDOMElement* child = list != nullptr ? Utilities::pFirst(*list) : nullptr;
         child != nullptr; child = Utilities::pNext(*child)) {
        if (Utilities::hasName(*child, names::Point) != 0) {
            edge.ntAppendBend(frame.toAnchor(*QxDXMLHelper::pParsePoint(child, 0)));
        }
    }
}

void QxDEdgeXMLReader::finish() {
    for (const Late& late : m_late) {
        addBends(*late.edge, *late.element);
        late.edge->actOnEndObjectChange();
    }
    for (QxConnector* connector : m_newConnectors) {
        QxDNode* const node = connector->pOwnerNode();
        QxDEdgeDList users;
        connector->buildIncidentEdgeList(&users, QxEdgeDirectionBoth, QxEdgeConnectionAll);
        for (QxDEdge* edge : qx::internal::each<QxDEdge>(users)) {
            if (node != nullptr && edge->intergraphEdge() == 0) {
                node->convertConnectorToConstantOffset(connector);
            }
            edge->updateCalculatedConnectors();
        }
    }
    m_late.clear();
    m_newConnectors.clear();
}
