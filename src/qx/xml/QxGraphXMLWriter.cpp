// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxGraphXMLWriter.h"

#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/xml/QxEdgeXMLWriter.h"
#include "qx/xml/QxGraphManagerXMLWriter.h"
#include "qx/xml/QxNodeXMLWriter.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using qx::internal::each;

QxGraphXMLWriter::QxGraphXMLWriter(QxGraphManagerXMLWriter& document)
    : QxXMLWriter(document),
      m_manager(document),
      m_nodeWriter(std::make_unique<QxNodeXMLWriter>(document)) {}

QxGraphXMLWriter::~QxGraphXMLWriter() = default;

void QxGraphXMLWriter::install(std::unique_ptr<QxNodeXMLWriter> nodeWriter) {
    m_nodeWriter = std::move(nodeWriter);
}

void QxGraphXMLWriter::write(const QxGraph& graph, QxDOMElement& element) {
    m_graph = &graph;
    populateDOMElement(element);
    writeMore(element);
    m_graph = nullptr;
}

void QxGraphXMLWriter::populateDOMElement(QxDOMElement& element) {
    QxXMLHelper::writeName(*m_graph, element);
    writeNodes(element);
    writeEdges(element);
}

void QxGraphXMLWriter::writeMore(QxDOMElement& element) {
    QxXMLHelper::writeCommonMore(*m_graph, element);
}

void QxGraphXMLWriter::numberObjects(const QxGraph& graph) {
    numberMembersOf(graph, false);
    numberMembersOf(graph, true);
}

void QxGraphXMLWriter::numberMembersOf(const QxGraph& graph, bool edges) {
    if (!edges) {
        for (const QxNode* node : each<QxNode>(*graph.pNodeList())) {
            document().pID(node);
            m_nodeWriter->numberObjects(*node);
        }
        return;
    }
    for (const QxEdgeDList* list :
         {graph.pEdgeList(), graph.pDisconnectedEdgeList(), graph.pDeactivatedEdgeList()}) {
        for (const QxEdge* edge : each<QxEdge>(*list)) {
            document().pID(edge);
        }
    }
}

void QxGraphXMLWriter::writeNodes(QxDOMElement& element) {
    writeNodesOf(*m_graph, element);
}

void QxGraphXMLWriter::writeEdges(QxDOMElement& element) {
    writeEdgesOf(*m_graph, element);
}

void QxGraphXMLWriter::writeNodesOf(const QxGraph& graph, QxDOMElement& element) {
    for (const QxNode* node : each<QxNode>(*graph.pNodeList())) {
        QxDOMElement& child = *QxXMLUtilities::pAppendChild(element, names::Node);
        document().writeID(child, names::Id, node);
        QxXMLHelper::writeType(*node, child);
        m_nodeWriter->write(*node, child);
    }
}

void QxGraphXMLWriter::writeEdgesOf(const QxGraph& graph, QxDOMElement& element) {
    for (const QxEdgeDList* list :
         {graph.pEdgeList(), graph.pDisconnectedEdgeList(), graph.pDeactivatedEdgeList()}) {
        for (const QxEdge* edge : each<QxEdge>(*list)) {
            QxDOMElement& child = *QxXMLUtilities::pAppendChild(element, names::Edge);
            m_manager.pEdgeWriter()->write(*edge, child);
        }
    }
}
