// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxGraphXMLReader.h"

#include "qx/foundation/graph/QxGraph.h"
#include "qx/xml/QxEdgeXMLReader.h"
#include "qx/xml/QxGraphManagerXMLReader.h"
#include "qx/xml/QxNodeXMLReader.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;

QxGraphXMLReader::QxGraphXMLReader(QxGraphManagerXMLReader& document)
    : QxXMLReader(document),
      m_manager(document),
      m_nodeReader(std::make_unique<QxNodeXMLReader>(document)) {}

QxGraphXMLReader::~QxGraphXMLReader() = default;

void QxGraphXMLReader::install(std::unique_ptr<QxNodeXMLReader> nodeReader) {
    m_nodeReader = std::move(nodeReader);
}

void QxGraphXMLReader::read(QxGraph& graph, const QxDOMElement& element) {
    m_graph = &graph;
    processDOMElement(element);
    m_graph = nullptr;
}

void QxGraphXMLReader::readEdges(QxGraph& graph, const QxDOMElement& element) {
    m_graph = &graph;
    processEdges(element);
    m_graph = nullptr;
}

void QxGraphXMLReader::processDOMElement(const QxDOMElement& element) {
    QxXMLHelper::parseName(*m_graph, element);
    QxXMLHelper::parseCommonMore(*m_graph, element);
    processNodes(element);
}

void QxGraphXMLReader::processNodes(const QxDOMElement& element) {
    for (const QxDOMElement* child = QxXMLUtilities::pFirst(element); child != nullptr;
         child = QxXMLUtilities::pNext(*child)) {
        if (QxXMLUtilities::hasName(*child, names::Node) != 0) {
            m_nodeReader->read(*m_graph, *child);
        }
    }
}

void QxGraphXMLReader::processEdges(const QxDOMElement& element) {
    for (const QxDOMElement* child = QxXMLUtilities::pFirst(element); child != nullptr;
         child = QxXMLUtilities::pNext(*child)) {
        if (QxXMLUtilities::hasName(*child, names::Edge) != 0) {
            m_manager.pEdgeReader()->read(*m_graph, *child);
        }
    }
}
