// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxConnectorXMLReader.h"

#include "qx/drawing/QxConnector.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxLabelXMLReader.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using Utilities = QxXMLUtilities;

QxConnectorXMLReader::QxConnectorXMLReader(QxTopLevelXMLReader& document)
    : QxXMLReader(document), m_labelReader(std::make_unique<QxConnectorLabelXMLReader>(document)) {}

QxConnectorXMLReader::~QxConnectorXMLReader() = default;

void QxConnectorXMLReader::read(QxConnector& connector, const QxDOMElement& element) {
    m_connector = &connector;
    processDOMElement(element);
    m_connector = nullptr;
}

void QxConnectorXMLReader::processDOMElement(const QxDOMElement& element) {
    QxXMLHelper::parseName(*m_connector, element);
    QxXMLHelper::parseCommonMore(*m_connector, element);
    if (const auto size = QxDXMLHelper::pParseSize(element)) {
        m_connector->ntResize(*size);
    }
    if (const auto offset =
            QxDXMLHelper::pParseOffset(Utilities::pChild(element, names::ConstantOffset))) {
        m_connector->ntSetOffset(*offset);
    }
    if (const auto perMil =
            QxDXMLHelper::pParsePerMil(Utilities::pChild(element, names::ProportionalOffset), 1)) {
        m_connector->ntSetPerMil(*perMil);
    }
    if (const auto shape = QxDXMLHelper::pParseShape(element, document())) {
        m_connector->pShapeResource();  // held, as what was written was
        m_connector->pShape(shape.get());
    }
    if (const QxDOMElement* more = QxXMLHelper::pMore(element)) {
        if (Utilities::parseBooleanValue(*more, names::Named).value_or(0) != 0) {
            m_connector->nameString(L"");
        }
        const auto direction = Utilities::parseIntValue(*more, names::Direction);
        if (direction && *direction >= QxDirectionRight && *direction < QxDirectionNone) {
            m_connector->routingDirection(static_cast<QxDirectionEnum>(*direction));
        }
    }
    QxDXMLHelper::parseLabels(element, *m_labelReader, *m_connector, names::ConnectorLabels);
}
