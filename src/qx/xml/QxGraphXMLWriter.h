// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/xml/QxXMLWriter.h"

class QxEdge;
class QxEdgeDList;
class QxGraph;
class QxGraphManagerXMLWriter;
class QxNode;
class QxNodeDList;
class QxNodeXMLWriter;

/// Writes graphs: name, nodes, edges in whatever state.
class QX_API QxGraphXMLWriter : public QxXMLWriter {
public:
    explicit QxGraphXMLWriter(QxGraphManagerXMLWriter& document);
    ~QxGraphXMLWriter() override;

    void write(const QxGraph& graph, QxDOMElement& element);
    const QxGraph* pGraph() const { return m_graph; }
    QxNodeXMLWriter* pNodeWriter() const { return m_nodeWriter.get(); }
    void populateDOMElement(QxDOMElement& element) override;
    /// Gives the nodes and edges of a graph their identifiers, in the order of writing.
    virtual void numberObjects(const QxGraph& graph);

protected:
    virtual void writeNodes(QxDOMElement& element);
    virtual void writeEdges(QxDOMElement& element);
    /// Appends what the other elements cannot carry.
    virtual void writeMore(QxDOMElement& element);
    void writeNodesOf(const QxGraph& graph, QxDOMElement& element);
    /// The connected edges, those that are not, and those out of action.
    void writeEdgesOf(const QxGraph& graph, QxDOMElement& element);
    /// Gives the members and what they carry identifiers.
    void numberMembersOf(const QxGraph& graph, bool edges);
    void install(std::unique_ptr<QxNodeXMLWriter> nodeWriter);

private:
    QxGraphManagerXMLWriter& m_manager;
    const QxGraph* m_graph = nullptr;
    std::unique_ptr<QxNodeXMLWriter> m_nodeWriter;
};
