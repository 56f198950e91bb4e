// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxNodeXMLWriter.h"

#include "qx/foundation/graph/QxChildGraphForestEdge.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/xml/QxEdgeXMLWriter.h"
#include "qx/xml/QxTopLevelXMLWriter.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/Names.h"

#include "qx/foundation/graph/QxEdge.h"

namespace names = qx::names;

void QxNodeXMLWriter::write(const QxNode& node, QxDOMElement& element) {
    m_node = &node;
    populateDOMElement(element);
    writeMore(element);
    m_node = nullptr;
}

void QxNodeXMLWriter::populateDOMElement(QxDOMElement& element) {
    QxXMLHelper::writeName(*m_node, element);
    writeChildGraph(*m_node, document(), element);
}

void QxNodeXMLWriter::numberObjects(const QxNode&) {}

void QxNodeXMLWriter::writeMore(QxDOMElement& element) {
    QxXMLHelper::writeCommonMore(*m_node, element);
}

void QxNodeXMLWriter::writeChildGraph(const QxGraphMember& member, QxTopLevelXMLWriter& document,
                                      QxDOMElement& element) {
    const QxGraph* const graph = member.pChildGraph();
    if (graph == nullptr || document.hasID(graph) == 0) {
        return;
    }
    QxDOMElement& child = *QxXMLUtilities::pAppendChild(element, names::ChildGraph);
    document.writeID(child, names::Id, member.pChildGraphForestEdge());
    document.writeID(child, names::Value, graph);
}

void QxEdgeXMLWriter::write(const QxEdge& edge, QxDOMElement& element) {
    m_edge = &edge;
    document().writeID(element, names::Id, &edge);
    // An end that is out of the drawing is not written.
    if (document().hasID(edge.pSourceNode()) != 0) {
        document().writeID(element, names::Source, edge.pSourceNode());
    }
    if (document().hasID(edge.pTargetNode()) != 0) {
        document().writeID(element, names::Target, edge.pTargetNode());
    }
    QxXMLHelper::writeType(edge, element);
    populateDOMElement(element);
    writeMore(element);
    m_edge = nullptr;
}

void QxEdgeXMLWriter::populateDOMElement(QxDOMElement& element) {
    QxXMLHelper::writeName(*m_edge, element);
    QxNodeXMLWriter::writeChildGraph(*m_edge, document(), element);
}

const char* QxEdgeXMLWriter::pState() const {
    return m_edge->deactivated() != 0 ? "deactivated"
           : m_edge->connected() == 0 ? "disconnected"
                                      : nullptr;
}

void QxEdgeXMLWriter::writeMore(QxDOMElement& element) {
    QxXMLHelper::writeCommonMore(*m_edge, element);
    if (const char* state = pState()) {
        QxXMLUtilities::writeValue(
            *QxXMLUtilities::pAppendChild(QxXMLHelper::more(element), names::State), names::Value,
            state);
    }
}
