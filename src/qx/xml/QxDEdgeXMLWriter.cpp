// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxDEdgeXMLWriter.h"

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxLabelXMLWriter.h"
#include "qx/xml/QxTopLevelXMLWriter.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/BetweenGraphs.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using qx::internal::each;
using Utilities = QxXMLUtilities;

QxDEdgeXMLWriter::QxDEdgeXMLWriter(QxTopLevelXMLWriter& document)
    : QxEdgeXMLWriter(document), m_labelWriter(std::make_unique<QxEdgeLabelXMLWriter>(document)) {}

QxDEdgeXMLWriter::~QxDEdgeXMLWriter() = default;

const QxDEdge* QxDEdgeXMLWriter::pDEdge() const {
    return static_cast<const QxDEdge*>(pEdge());
}

void QxDEdgeXMLWriter::populateDOMElement(QxDOMElement& element) {
    QxEdgeXMLWriter::populateDOMElement(element);
    if (pEdge()->levelNumber() < 2) {
        return;
    }
    writeClipping(element, 1);
    writeClipping(element, 0);
    Utilities::writeBooleanValue(element, names::OrthogonalRouting,
                                 pDEdge()->internalOrthogonalRouting());
    createBends(element);
    QxDXMLHelper::writeLabels(pDEdge()->pQueryLabelManager(), *m_labelWriter, element,
                              names::EdgeLabels);
}

void QxDEdgeXMLWriter::writeClipping(QxDOMElement& element, int atSource) {
    const QxConnector* const connector =
        atSource != 0 ? pDEdge()->pInternalSourceConnector() : pDEdge()->pInternalTargetConnector();
    if (connector == nullptr) {
        return;
    }
    QxDOMElement& clipping = *Utilities::pAppendChild(
        element, atSource != 0 ? names::SourceClipping : names::TargetClipping);
    if (connector->specified() != 0) {
        document().writeID(
            *Utilities::pAppendChild(
                element, atSource != 0 ? names::SourceConnector : names::TargetConnector),
            names::Value, connector);
        return;
    }
    const QxRect& node = *connector->pOwnerNode()->pIRect();
    const QxPoint center = connector->ntCenter();
    QxPerMil perMil = connector->getPerMil();
    if (connector->ntOffsetX() != 0) {
        perMil.computeX(qx::saturatingSub(center.x(), node.x()), node);
    }
    if (connector->ntOffsetY() != 0) {
        perMil.computeY(qx::saturatingSub(center.y(), node.y()), node);
    }
    QxDXMLHelper::writePerMil(perMil, clipping, 1);
}

void QxDEdgeXMLWriter::createBends(QxDOMElement& element) {
    QxPNodeDList bends;
    pDEdge()->buildPathNodeList(bends);
    if (bends.isEmpty() != 0) {
        return;
    }
    const qx::internal::BetweenGraphs frame(*pDEdge());
    QxDOMElement& list = *Utilities::pAppendChild(element, names::Bends);
    for (const QxPNode* bend : each<QxPNode>(bends)) {
        QxDXMLHelper::writePoint(frame.toCommon(bend->iCenter()),
                                 *Utilities::pAppendChild(list, names::Point), 0);
    }
}

/// Of a hidden edge: what it will be when it shows.
const char* QxDEdgeXMLWriter::pState() const {
    if (pEdge()->levelNumber() < 2 || pDEdge()->hidden() == 0) {
        return QxEdgeXMLWriter::pState();
    }
    const std::uint32_t flags = pEdge()->flagWord();
    return (flags & qx::flags::EdgeReturnsDeactivated) != 0    ? "deactivated"
           : (flags & qx::flags::EdgeReturnsDisconnected) != 0 ? "disconnected"
                                                               : nullptr;
}

void QxDEdgeXMLWriter::writeMore(QxDOMElement& element) {
    QxEdgeXMLWriter::writeMore(element);
    if (pEdge()->levelNumber() < 2) {
        return;
    }
    const QxDEdge& edge = *pDEdge();
    if (edge.clipSourceSide() == 0 || edge.clipTargetSide() == 0) {
        QxDOMElement& clipping =
            *Utilities::pAppendChild(QxXMLHelper::more(element), names::Clipping);
        Utilities::writeBoolean(clipping, names::Source, edge.clipSourceSide());
        Utilities::writeBoolean(clipping, names::Target, edge.clipTargetSide());
    }
    if (edge.multiEdge() != 0) {
        Utilities::writeBooleanValue(QxXMLHelper::more(element), names::MultiEdge, 1);
    }
    const auto isCalculated = [](const QxConnector* connector) {
        return connector != nullptr && connector->specified() == 0;
    };
    const bool source = isCalculated(edge.pInternalSourceConnector());
    const bool target = isCalculated(edge.pInternalTargetConnector());
    if (source || target) {
        QxDOMElement& ends = *Utilities::pAppendChild(QxXMLHelper::more(element), names::Ends);
        if (source) {
            document().writeID(ends, names::Source, edge.pInternalSourceConnector());
        }
        if (target) {
            document().writeID(ends, names::Target, edge.pInternalTargetConnector());
        }
    }
}
