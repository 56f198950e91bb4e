// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxXMLReader.h"

class QxGraph;
class QxGraphManagerXMLReader;
class QxNode;

/// Reads nodes.
class QX_API QxNodeXMLReader : public QxXMLReader {
public:
    explicit QxNodeXMLReader(QxGraphManagerXMLReader& document);

    /// Makes a node of the graph from the element; null when the graph takes none.
    QxNode* read(QxGraph& graph, const QxDOMElement& element);
    QxNode* pNode() const { return m_node; }
    void processDOMElement(const QxDOMElement& element) override;

private:
    QxGraphManagerXMLReader& m_manager;
    QxNode* m_node = nullptr;
};
