// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxLabelXMLReader.h"

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxTopLevelXMLReader.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using Utilities = QxXMLUtilities;

Utilities::Name QxLabelXMLReader::elementName() const {
    return names::Label;
}

QxLabel* QxLabelXMLReader::pNewLabel(QxGraphObject&, int) const {
    return nullptr;
}

QxLabel* QxLabelXMLReader::read(QxGraphObject& owner, const QxDOMElement& element) {
    QxLabel* const label = pNewLabel(owner, QxXMLHelper::parseType(element));
    if (label != nullptr) {
        document().registerObject(element, label);
        m_label = label;
        processDOMElement(element);
        m_label = nullptr;
    }
    return label;
}

void QxLabelXMLReader::processDOMElement(const QxDOMElement& element) {
    QxXMLHelper::parseName(*m_label, element);
    QxXMLHelper::parseCommonMore(*m_label, element);
    if (const auto size = QxDXMLHelper::pParseSize(element)) {
        m_label->ntResize(*size);
    }
    if (const auto offset =
            QxDXMLHelper::pParseOffset(Utilities::pChild(element, names::ConstantOffset))) {
        m_label->ntSetOffset(*offset);
    }
    if (const QxDOMElement* more = QxXMLHelper::pMore(element)) {
        m_label->moveLabelOnOwnerMove(
            Utilities::parseBooleanValue(*more, names::MovesWithOwner).value_or(1));
        if (Utilities::parseBooleanValue(*more, names::Named).value_or(0) != 0) {
            m_label->nameString(L"");
        }
    }
}

void QxLabelXMLReader::processProportionalOffset(const QxDOMElement& element) const {
    if (const auto perMil =
            QxDXMLHelper::pParsePerMil(Utilities::pChild(element, names::ProportionalOffset), 0)) {
        static_cast<QxRectangularObjectLabel*>(m_label)->ntSetPerMil(*perMil);
    }
}

Utilities::Name QxNodeLabelXMLReader::elementName() const {
    return names::NodeLabel;
}

QxLabel* QxNodeLabelXMLReader::pNewLabel(QxGraphObject& owner, int type) const {
    return static_cast<QxDNode&>(owner).addLabel(nullptr, type);
}

void QxNodeLabelXMLReader::processDOMElement(const QxDOMElement& element) {
    QxLabelXMLReader::processDOMElement(element);
    processProportionalOffset(element);
}

Utilities::Name QxEdgeLabelXMLReader::elementName() const {
    return names::EdgeLabel;
}

QxLabel* QxEdgeLabelXMLReader::pNewLabel(QxGraphObject& owner, int type) const {
    return static_cast<QxDEdge&>(owner).addLabel(nullptr, type);
}

void QxEdgeLabelXMLReader::processDOMElement(const QxDOMElement& element) {
    QxLabelXMLReader::processDOMElement(element);
    auto& label = static_cast<QxEdgeLabel&>(*pLabel());
    if (const auto distance = Utilities::parseDoubleValue(element, names::DistanceFromSource)) {
        const std::int32_t perMil = Utilities::toInt32(QxDXMLHelper::denormalize(*distance));
        if (perMil >= 0 && perMil <= 1000) {
            label.ntPerMilDistanceFromSource(static_cast<std::int16_t>(perMil));
        } else {
            document().repair(element, "its distance from the source lies beyond the edge");
        }
    }
    const QxDOMElement* const more = QxXMLHelper::pMore(element);
    if (const auto point =
            more != nullptr ? QxDXMLHelper::pParsePoint(Utilities::pChild(*more, names::Pinned), 0)
                            : nullptr) {
        label.globalOffsetMode(1);
        label.ntMoveTo(*point);
    }
}

Utilities::Name QxConnectorLabelXMLReader::elementName() const {
    return names::ConnectorLabel;
}

QxLabel* QxConnectorLabelXMLReader::pNewLabel(QxGraphObject& owner, int type) const {
    return static_cast<QxConnector&>(owner).addLabel(nullptr, type);
}

void QxConnectorLabelXMLReader::processDOMElement(const QxDOMElement& element) {
    QxLabelXMLReader::processDOMElement(element);
    processProportionalOffset(element);
}

Utilities::Name QxGraphLabelXMLReader::elementName() const {
    return names::GraphLabel;
}

QxLabel* QxGraphLabelXMLReader::pNewLabel(QxGraphObject& owner, int type) const {
    return static_cast<QxDGraph&>(owner).addLabel(nullptr, type);
}

void QxGraphLabelXMLReader::processDOMElement(const QxDOMElement& element) {
    QxLabelXMLReader::processDOMElement(element);
    processProportionalOffset(element);
}
