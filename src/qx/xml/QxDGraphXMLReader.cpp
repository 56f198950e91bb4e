// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxDGraphXMLReader.h"

#include "qx/drawing/QxDGraph.h"
#include "qx/xml/QxDNodeXMLReader.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxGraphManagerXMLReader.h"
#include "qx/xml/QxLabelXMLReader.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/GraphSpacings.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using Utilities = QxXMLUtilities;

QxDGraphXMLReader::QxDGraphXMLReader(QxGraphManagerXMLReader& document)
    : QxGraphXMLReader(document), m_labelReader(std::make_unique<QxGraphLabelXMLReader>(document)) {
    install(std::make_unique<QxDNodeXMLReader>(document));
}

QxDGraphXMLReader::~QxDGraphXMLReader() = default;

QxDGraph* QxDGraphXMLReader::pDGraph() const {
    return static_cast<QxDGraph*>(pGraph());
}

void QxDGraphXMLReader::processDOMElement(const QxDOMElement& element) {
    QxGraphXMLReader::processDOMElement(element);
    if (pGraph()->levelNumber() < 2) {
        return;
    }
    QxDGraph& graph = *pDGraph();
    graph.setMinSizeOfMarginBoundingRect(
        QxSize(Utilities::parseIntValue(element, names::MinimumMarginWidth).value_or(0),
               Utilities::parseIntValue(element, names::MinimumMarginHeight).value_or(0)));
    if (const auto wanted = Utilities::parseBooleanValue(element, names::OrthogonalRouting)) {
        graph.orthogonalRouting(*wanted);
    }
    processMargins(element);
    QxDXMLHelper::parseLabels(element, *m_labelReader, graph, names::GraphLabels);
    const QxDOMElement* const more = QxXMLHelper::pMore(element);
    if (more == nullptr) {
        return;
    }
    if (const auto spacing = Utilities::parseIntValue(*more, names::MultiEdgeSpacing)) {
        graph.diagrammingMultiEdgeSpacing(*spacing);
    }
    if (const QxDOMElement* margins = Utilities::pChild(*more, names::NestedMargins)) {
        qx::internal::setNestedMargins(
            graph, QxDXMLHelper::parseSpacings(*margins, qx::internal::nestedMarginsOf(graph)));
    }
}

void QxDGraphXMLReader::processMargins(const QxDOMElement& element) {
    if (const QxDOMElement* margins = Utilities::pChild(element, names::Margins)) {
        qx::internal::setMargins(
            *pDGraph(), QxDXMLHelper::parseSpacings(*margins, qx::internal::marginsOf(*pDGraph())));
    }
}
