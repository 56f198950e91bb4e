// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxDNodeXMLReader.h"

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDNode.h"
#include "qx/xml/QxConnectorXMLReader.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxGraphManagerXMLReader.h"
#include "qx/xml/QxLabelXMLReader.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/ElementKind.h"
#include "qx/xml/internal/Names.h"
#include "qx/xml/internal/SharedShapes.h"

namespace names = qx::names;
using Utilities = QxXMLUtilities;

QxDNodeXMLReader::QxDNodeXMLReader(QxGraphManagerXMLReader& document)
    : QxNodeXMLReader(document),
      m_connectorReader(std::make_unique<QxConnectorXMLReader>(document)),
      m_labelReader(std::make_unique<QxNodeLabelXMLReader>(document)) {}

QxDNodeXMLReader::~QxDNodeXMLReader() = default;

QxDNode* QxDNodeXMLReader::pDNode() const {
    return static_cast<QxDNode*>(pNode());
}

void QxDNodeXMLReader::processDOMElement(const QxDOMElement& element) {
    QxNodeXMLReader::processDOMElement(element);
    if (pNode()->levelNumber() < 2) {
        return;
    }
    QxDNode& node = *pDNode();
    if (const auto center =
            QxDXMLHelper::pParsePoint(Utilities::pChild(element, names::Center), 0)) {
        node.ntMoveTo(*center);
    }
    if (const auto size = QxDXMLHelper::pParseSize(element)) {
        node.ntResize(*size);
    }
    if (const auto size =
            QxDXMLHelper::pParseWidthAndHeight(Utilities::pChild(element, names::OriginalSize))) {
        node.originalSize(*size);
    }
    if (const auto forced = Utilities::parseBooleanValue(element, names::ForceClipping)) {
        node.forceClipping(*forced);
    }
    qx::internal::giveShape(node, element, document());
    processConnectors(element);
    QxDXMLHelper::parseLabels(element, *m_labelReader, node, names::NodeLabels);
}

/// The specified ones in their order, and between them those that edges have made for themselves,
/// each at its place.
void QxDNodeXMLReader::processConnectors(const QxDOMElement& element) {
    const QxDOMElement* const list = Utilities::pChild(element, names::Connectors);
    const QxDOMElement* const more = QxXMLHelper::pMore(element);
    const QxDOMElement* const calculatedList =
        more != nullptr ? Utilities::pChild(*more, names::Connectors) : nullptr;
    const QxDOMElement* calculated =
        calculatedList != nullptr ? Utilities::pFirst(*calculatedList) : nullptr;
    const auto addCalculated = [&](bool isRest) {
        while (calculated != nullptr &&
               (isRest || Utilities::parseInt(*calculated, names::At).value_or(0) <=
                              pDNode()->numberOfAllConnectors() + 1)) {
            processConnector(*calculated, 0);
            calculated = Utilities::pNext(*calculated);
        }
    };
    for (const QxDOMElement* child = list != nullptr ? Utilities::pFirst(*list) : nullptr;
         child != nullptr; child = Utilities::pNext(*child)) {
        addCalculated(false);
        processConnector(*child, 1);
    }
    addCalculated(true);
}

void QxDNodeXMLReader::processConnector(const QxDOMElement& element, int specified) {
    if (Utilities::hasName(element, names::Connector) == 0) {
        return;
    }
    QxConnector* const connector =
        specified != 0 ? pDNode()->addConnector(0, 0, 0, 0, 1, QxXMLHelper::parseType(element))
                       : pDNode()->ntAddConnector(0, 0, 0, 0);
    if (connector != nullptr) {
        document().registerObject(element, connector);
        m_connectorReader->read(*connector, element);
    }
}
