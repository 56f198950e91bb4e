// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxConnectorXMLWriter.h"

#include "qx/drawing/QxConnector.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxLabelXMLWriter.h"
#include "qx/xml/QxTopLevelXMLWriter.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using Utilities = QxXMLUtilities;

QxConnectorXMLWriter::QxConnectorXMLWriter(QxTopLevelXMLWriter& document)
    : QxXMLWriter(document), m_labelWriter(std::make_unique<QxConnectorLabelXMLWriter>(document)) {}

QxConnectorXMLWriter::~QxConnectorXMLWriter() = default;

void QxConnectorXMLWriter::write(const QxConnector& connector, QxDOMElement& element) {
    m_connector = &connector;
    document().writeID(element, names::Id, &connector);
    QxXMLHelper::writeType(connector, element);
    populateDOMElement(element);
    writeMore(element);
    m_connector = nullptr;
}

void QxConnectorXMLWriter::populateDOMElement(QxDOMElement& element) {
    if (const wchar_t* name = m_connector->pNameString(); name != nullptr && *name != 0) {
        QxXMLHelper::writeName(*m_connector, element);
    }
    QxDXMLHelper::writeWidthAndHeight(QxSize(m_connector->ntWidth(), m_connector->ntHeight()),
                                      *Utilities::pAppendChild(element, names::Size));
    QxDXMLHelper::writeOffset(m_connector->ntOffset(),
                              *Utilities::pAppendChild(element, names::ConstantOffset));
    QxDXMLHelper::writePerMil(m_connector->getPerMil(),
                              *Utilities::pAppendChild(element, names::ProportionalOffset), 1);
    if (m_connector->pQueryShapeResource() != nullptr) {
        QxDXMLHelper::writeShape(*m_connector->pShape(), document(), element);
    }
    QxDXMLHelper::writeLabels(m_connector->pQueryLabelManager(), *m_labelWriter, element,
                              names::ConnectorLabels);
}

void QxConnectorXMLWriter::writeMore(QxDOMElement& element) const {
    QxXMLHelper::writeCommonMore(*m_connector, element);
    if (const wchar_t* name = m_connector->pNameString(); name != nullptr && *name == 0) {
        Utilities::writeBooleanValue(QxXMLHelper::more(element), names::Named, 1);
    }
    if (m_connector->hasRoutingDirection() != 0) {
        Utilities::writeIntValue(QxXMLHelper::more(element), names::Direction,
                                 m_connector->routingDirection());
    }
}
