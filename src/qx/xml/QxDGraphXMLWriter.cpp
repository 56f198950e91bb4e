// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxDGraphXMLWriter.h"

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/xml/QxDNodeXMLWriter.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxGraphManagerXMLWriter.h"
#include "qx/xml/QxLabelXMLWriter.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/GraphSpacings.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using Utilities = QxXMLUtilities;

QxDGraphXMLWriter::QxDGraphXMLWriter(QxGraphManagerXMLWriter& document)
    : QxGraphXMLWriter(document), m_labelWriter(std::make_unique<QxGraphLabelXMLWriter>(document)) {
    install(std::make_unique<QxDNodeXMLWriter>(document));
}

QxDGraphXMLWriter::~QxDGraphXMLWriter() = default;

const QxDGraph* QxDGraphXMLWriter::pDGraph() const {
    return static_cast<const QxDGraph*>(pGraph());
}

void QxDGraphXMLWriter::numberObjects(const QxGraph& graph) {
    const QxDGraph* const hidden =
        graph.levelNumber() < 2 ? nullptr : static_cast<const QxDGraph&>(graph).pHideGraph();
    for (const bool edges : {false, true}) {
        numberMembersOf(graph, edges);
        if (hidden != nullptr) {
            numberMembersOf(*hidden, edges);
        }
    }
}

void QxDGraphXMLWriter::populateDOMElement(QxDOMElement& element) {
    if (pGraph()->levelNumber() < 2) {
        QxGraphXMLWriter::populateDOMElement(element);
        return;
    }
    const QxDGraph& graph = *pDGraph();
    Utilities::writeIntValue(element, names::MinimumMarginWidth,
                             graph.minWidthOfMarginBoundingRect());
    Utilities::writeIntValue(element, names::MinimumMarginHeight,
                             graph.minHeightOfMarginBoundingRect());
    QxGraphXMLWriter::populateDOMElement(element);
    Utilities::writeBooleanValue(element, names::OrthogonalRouting, graph.orthogonalRouting());
    createMargins(element);
    QxDXMLHelper::writeLabels(graph.pQueryLabelManager(), *m_labelWriter, element,
                              names::GraphLabels);
}

void QxDGraphXMLWriter::writeNodes(QxDOMElement& element) {
    QxGraphXMLWriter::writeNodes(element);
    if (pGraph()->levelNumber() >= 2 && pDGraph()->pHideGraph() != nullptr) {
        writeNodesOf(*pDGraph()->pHideGraph(), element);
    }
}

void QxDGraphXMLWriter::writeEdges(QxDOMElement& element) {
    QxGraphXMLWriter::writeEdges(element);
    if (pGraph()->levelNumber() >= 2 && pDGraph()->pHideGraph() != nullptr) {
        writeEdgesOf(*pDGraph()->pHideGraph(), element);
    }
}

void QxDGraphXMLWriter::createMargins(QxDOMElement& element) {
    QxDXMLHelper::writeSpacings(qx::internal::marginsOf(*pDGraph()),
                                *Utilities::pAppendChild(element, names::Margins));
}

void QxDGraphXMLWriter::writeMore(QxDOMElement& element) {
    QxGraphXMLWriter::writeMore(element);
    if (pGraph()->levelNumber() < 2) {
        return;
    }
    const QxDGraph& graph = *pDGraph();
    if (graph.diagrammingMultiEdgeSpacing() != 8) {
        Utilities::writeIntValue(QxXMLHelper::more(element), names::MultiEdgeSpacing,
                                 graph.diagrammingMultiEdgeSpacing());
    }
    if (graph.pParentNode() == nullptr && qx::internal::hasNestedMargins(graph)) {
        QxDXMLHelper::writeSpacings(
            qx::internal::nestedMarginsOf(graph),
            *Utilities::pAppendChild(QxXMLHelper::more(element), names::NestedMargins));
    }
    if ((graph.flagWord() & qx::flags::GraphNeedsBounds) == 0) {
        Utilities::writeBooleanValue(QxXMLHelper::more(element), names::BoundsOff, 1);
    }
    if (!(*graph.pTransform() == QxTransform())) {
        qx::internal::writeTransform(
            *graph.pTransform(),
            *Utilities::pAppendChild(QxXMLHelper::more(element), names::Transform));
    }
}
