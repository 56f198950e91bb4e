// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxNodeXMLReader.h"

#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/xml/QxGraphManagerXMLReader.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/Names.h"

QxNodeXMLReader::QxNodeXMLReader(QxGraphManagerXMLReader& document)
    : QxXMLReader(document), m_manager(document) {}

QxNode* QxNodeXMLReader::read(QxGraph& graph, const QxDOMElement& element) {
    QxNode* const node =
        graph.isIntergraph() == 0 ? graph.addNode(QxXMLHelper::parseType(element)) : nullptr;
    if (node == nullptr) {
        document().repair(element, "the graph takes no nodes");
        return nullptr;
    }
    document().registerObject(element, node);
    m_node = node;
    processDOMElement(element);
    m_node = nullptr;
    return node;
}

void QxNodeXMLReader::processDOMElement(const QxDOMElement& element) {
    QxXMLHelper::parseName(*m_node, element);
    QxXMLHelper::parseCommonMore(*m_node, element);
    m_manager.noteChildGraph(element);
}
