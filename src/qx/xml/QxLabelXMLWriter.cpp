// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxLabelXMLWriter.h"

#include <cwchar>

#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxTopLevelXMLWriter.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using Utilities = QxXMLUtilities;

Utilities::Name QxLabelXMLWriter::elementName() const {
    return names::Label;
}

void QxLabelXMLWriter::write(const QxLabel& label, QxDOMElement& element) {
    m_label = &label;
    document().writeID(element, names::Id, &label);
    QxXMLHelper::writeType(label, element);
    populateDOMElement(element);
    writeMore(element);
    m_label = nullptr;
}

void QxLabelXMLWriter::populateDOMElement(QxDOMElement& element) {
    if (const wchar_t* name = m_label->pNameString(); name != nullptr && *name != 0) {
        QxXMLHelper::writeName(*m_label, element);
    }
    QxDXMLHelper::writeWidthAndHeight(m_label->ntSize(),
                                      *Utilities::pAppendChild(element, names::Size));
    QxDXMLHelper::writeOffset(m_label->ntOffset(),
                              *Utilities::pAppendChild(element, names::ConstantOffset));
}

void QxLabelXMLWriter::writeMore(QxDOMElement& element) {
    QxXMLHelper::writeCommonMore(*m_label, element);
    if (const wchar_t* name = m_label->pNameString(); name != nullptr && *name == 0) {
        Utilities::writeBooleanValue(QxXMLHelper::more(element), names::Named, 1);
    }
    if (m_label->moveLabelOnOwnerMove() == 0) {
        Utilities::writeBooleanValue(QxXMLHelper::more(element), names::MovesWithOwner, 0);
    }
}

void QxLabelXMLWriter::writeProportionalOffset(QxDOMElement& element) const {
    QxPerMil perMil;
    static_cast<const QxRectangularObjectLabel*>(m_label)->getPerMil(perMil);
    QxDXMLHelper::writePerMil(perMil, *Utilities::pAppendChild(element, names::ProportionalOffset),
                              0);
}

Utilities::Name QxNodeLabelXMLWriter::elementName() const {
    return names::NodeLabel;
}

const QxNodeLabel* QxNodeLabelXMLWriter::pNodeLabel() const {
    return static_cast<const QxNodeLabel*>(pLabel());
}

void QxNodeLabelXMLWriter::populateDOMElement(QxDOMElement& element) {
    QxLabelXMLWriter::populateDOMElement(element);
    writeProportionalOffset(element);
}

Utilities::Name QxEdgeLabelXMLWriter::elementName() const {
    return names::EdgeLabel;
}

const QxEdgeLabel* QxEdgeLabelXMLWriter::pEdgeLabel() const {
    return static_cast<const QxEdgeLabel*>(pLabel());
}

void QxEdgeLabelXMLWriter::populateDOMElement(QxDOMElement& element) {
    QxLabelXMLWriter::populateDOMElement(element);
    Utilities::writeDoubleValue(element, names::DistanceFromSource,
                                QxDXMLHelper::normalize(pEdgeLabel()->perMilDistanceFromSource()));
}

void QxEdgeLabelXMLWriter::writeMore(QxDOMElement& element) {
    QxLabelXMLWriter::writeMore(element);
    if (pEdgeLabel()->globalOffsetMode() != 0) {
        QxDXMLHelper::writePoint(
            pEdgeLabel()->ntCenter(),
            *Utilities::pAppendChild(QxXMLHelper::more(element), names::Pinned), 0);
    }
}

Utilities::Name QxConnectorLabelXMLWriter::elementName() const {
    return names::ConnectorLabel;
}

const QxConnectorLabel* QxConnectorLabelXMLWriter::pConnectorLabel() const {
    return static_cast<const QxConnectorLabel*>(pLabel());
}

void QxConnectorLabelXMLWriter::populateDOMElement(QxDOMElement& element) {
    QxLabelXMLWriter::populateDOMElement(element);
    writeProportionalOffset(element);
}

Utilities::Name QxGraphLabelXMLWriter::elementName() const {
    return names::GraphLabel;
}

const QxGraphLabel* QxGraphLabelXMLWriter::pGraphLabel() const {
    return static_cast<const QxGraphLabel*>(pLabel());
}

void QxGraphLabelXMLWriter::populateDOMElement(QxDOMElement& element) {
    QxLabelXMLWriter::populateDOMElement(element);
    writeProportionalOffset(element);
}
