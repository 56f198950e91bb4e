// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxDNodeXMLWriter.h"

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/geometry/QxShapeResource.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/nesting/QxExpandedNodeExtension.h"
#include "qx/xml/QxConnectorXMLWriter.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxLabelXMLWriter.h"
#include "qx/xml/QxTopLevelXMLWriter.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using qx::internal::each;
using Utilities = QxXMLUtilities;

QxDNodeXMLWriter::QxDNodeXMLWriter(QxTopLevelXMLWriter& document)
    : QxNodeXMLWriter(document),
      m_connectorWriter(std::make_unique<QxConnectorXMLWriter>(document)),
      m_labelWriter(std::make_unique<QxNodeLabelXMLWriter>(document)) {}

QxDNodeXMLWriter::~QxDNodeXMLWriter() = default;

const QxDNode* QxDNodeXMLWriter::pDNode() const {
    return static_cast<const QxDNode*>(pNode());
}

void QxDNodeXMLWriter::numberObjects(const QxNode& node) {
    if (node.levelNumber() < 2) {
        return;
    }
    if (const QxConnectorManager* connectors =
            static_cast<const QxDNode&>(node).pQueryConnectorManager()) {
        for (const QxConnector* connector : each<QxConnector>(*connectors)) {
            document().pID(connector);
        }
    }
}

void QxDNodeXMLWriter::populateDOMElement(QxDOMElement& element) {
    QxNodeXMLWriter::populateDOMElement(element);
    if (pNode()->levelNumber() < 2) {
        return;
    }
    const QxDNode& node = *pDNode();
    const QxExpandedNodeExtension* const kept = node.pExpandedNodeExtension();
    QxDXMLHelper::writePoint(node.iCenter(), *Utilities::pAppendChild(element, names::Center), 0);
    QxDXMLHelper::writeWidthAndHeight(kept != nullptr ? *kept->pPreExpandSize() : node.iSize(),
                                      *Utilities::pAppendChild(element, names::Size));
    QxDXMLHelper::writeWidthAndHeight(
        kept != nullptr ? *kept->pPreExpandOriginalSize() : node.originalSize(),
        *Utilities::pAppendChild(element, names::OriginalSize));
    Utilities::writeBooleanValue(
        element, names::ForceClipping,
        kept != nullptr ? kept->preExpandForceClipping() : node.forceClipping());
    const QxShapeResource* const shape =
        kept != nullptr ? kept->pShapeResource() : node.pQueryShapeResource();
    if (shape != nullptr) {
        QxDXMLHelper::writeShape(*shape->pShape(), document(), element);
    }
    createConnectors(element);
    QxDXMLHelper::writeLabels(node.pQueryLabelManager(), *m_labelWriter, element,
                              names::NodeLabels);
}

void QxDNodeXMLWriter::createConnectors(QxDOMElement& element) {
    if (pDNode()->hasConnectors() == 0) {
        return;
    }
    QxDOMElement& list = *Utilities::pAppendChild(element, names::Connectors);
    for (const QxConnector* connector : each<QxConnector>(*pDNode()->pQueryConnectorManager())) {
        if (connector->specified() != 0) {
            m_connectorWriter->write(*connector, *Utilities::pAppendChild(list, names::Connector));
        }
    }
}

void QxDNodeXMLWriter::writeMore(QxDOMElement& element) {
    QxNodeXMLWriter::writeMore(element);
    if (pNode()->levelNumber() < 2) {
        return;
    }
    if (pDNode()->expanded() != 0) {
        writeExpandedLook(element);
    }
    if (pDNode()->numberOfAllConnectors() != pDNode()->numberOfConnectors()) {
        writeCalculatedConnectors(element);
    }
    writeEdgeOrder(element);
}

void QxDNodeXMLWriter::writeExpandedLook(QxDOMElement& element) {
    const QxDNode& node = *pDNode();
    const QxExpandedNodeExtension& kept = *node.pExpandedNodeExtension();
    QxDOMElement& look = *Utilities::pAppendChild(QxXMLHelper::more(element), names::Expanded);
    QxDXMLHelper::writeWidthAndHeight(node.iSize(), *Utilities::pAppendChild(look, names::Size));
    QxDXMLHelper::writeWidthAndHeight(node.originalSize(),
                                      *Utilities::pAppendChild(look, names::OriginalSize));
    Utilities::writeBooleanValue(look, names::ForceClipping, node.forceClipping());
    if (node.pQueryShapeResource() != nullptr) {
        QxDXMLHelper::writeShape(*node.pShape(), document(), look);
    }
    if (kept.aspectRatio() != 1.0) {
        Utilities::writeDoubleValue(look, names::AspectRatio, kept.aspectRatio());
    }
    QxDOMElement& touches = *Utilities::pAppendChild(look, names::Touches);
    Utilities::writeInt(touches, names::Left, kept.touchesNestedGraphOnLeft());
    Utilities::writeInt(touches, names::Right, kept.touchesNestedGraphOnRight());
    Utilities::writeInt(touches, names::Upper, kept.touchesNestedGraphOnTop());
    Utilities::writeInt(touches, names::Bottom, kept.touchesNestedGraphOnBottom());
}

/// Those that the edges made for themselves, each with its place among all connectors.
void QxDNodeXMLWriter::writeCalculatedConnectors(QxDOMElement& element) {
    QxDOMElement& list = *Utilities::pAppendChild(QxXMLHelper::more(element), names::Connectors);
    int place = 0;
    for (const QxConnector* connector : each<QxConnector>(*pDNode()->pQueryConnectorManager())) {
        ++place;
        if (connector->specified() == 0) {
            QxDOMElement& child = *Utilities::pAppendChild(list, names::Connector);
            Utilities::writeInt(child, names::At, place);
            m_connectorWriter->write(*connector, child);
        }
    }
}

/// Edges are listed at their ends as they come in the document, unless something else is said.
bool QxDNodeXMLWriter::isImplied(const QxEdgeDList& edges) const {
    std::uint32_t last = 0;
    for (const QxEdge* edge : each<QxEdge>(edges)) {
        const std::uint32_t number = document().number(edge);
        if (number <= last) {
            return false;
        }
        last = number;
    }
    return true;
}

void QxDNodeXMLWriter::writeEdgeOrder(QxDOMElement& element) {
    const QxDNode& node = *pDNode();
    const auto order = [&]() -> QxDOMElement& {
        QxDOMElement& more = QxXMLHelper::more(element);
        QxDOMElement* const present = Utilities::pChild(more, names::EdgeOrder);
        return *(present != nullptr ? present : Utilities::pAppendChild(more, names::EdgeOrder));
    };
    if (!isImplied(*node.pInEdgeList())) {
        writeOrder(*node.pInEdgeList(), order(), names::Incoming);
    }
    if (!isImplied(*node.pOutEdgeList())) {
        writeOrder(*node.pOutEdgeList(), order(), names::Outgoing);
    }
    // How those came to be as they are no order of elements tells.
    if (node.pDisconnectedEdgeList()->count() > 1) {
        writeOrder(*node.pDisconnectedEdgeList(), order(), names::Disconnected);
    }
    if (node.pDeactivatedEdgeList()->count() > 1) {
        writeOrder(*node.pDeactivatedEdgeList(), order(), names::Deactivated);
    }
}

/// One child for each end of an edge in the list.
void QxDNodeXMLWriter::writeOrder(const QxEdgeDList& edges, QxDOMElement& element,
                                  Utilities::Name name) const {
    const QxEdge* lastLoop = nullptr;
    for (const QxEdge* edge : each<QxEdge>(edges)) {
        QxDOMElement& child = *Utilities::pAppendChild(element, name);
        document().writeID(child, names::Id, edge);
        if (name == names::Disconnected || name == names::Deactivated) {
            // Of a loop both ends are here; which is first nobody can see.
            const bool isSecond = edge == lastLoop;
            const bool atTarget = edge->pSourceNode() != pNode() || isSecond;
            Utilities::writeBoolean(child, names::Target, atTarget ? 1 : 0);
            lastLoop = edge->reflexive() != 0 ? edge : lastLoop;
        }
    }
}
