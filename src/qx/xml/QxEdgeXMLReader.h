// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxXMLReader.h"

class QxEdge;
class QxGraph;
class QxGraphManagerXMLReader;
class QxNode;

/// Reads edges. One without ends that can be found is left out, unless the document says that it is
/// not connected; one whose ends lie elsewhere comes to where they lie.
class QX_API QxEdgeXMLReader : public QxXMLReader {
public:
    explicit QxEdgeXMLReader(QxGraphManagerXMLReader& document);

    /// Makes an edge from the element, in the graph or where it belongs; null when it is left out.
    QxEdge* read(QxGraph& graph, const QxDOMElement& element);
    QxEdge* pEdge() const { return m_edge; }
    void processDOMElement(const QxDOMElement& element) override;

protected:
    /// Whether the edge belongs to the graph although it cannot be connected there.
    virtual int staysIn(const QxGraph& graph, const QxDOMElement& element) const;

private:
    struct Ends;
    QxEdge* addEdge(QxGraph& graph, const QxDOMElement& element);
    QxEdge* addToGraph(QxGraph& graph, const Ends& ends, int type);

    QxGraphManagerXMLReader& m_manager;
    QxEdge* m_edge = nullptr;
};
