// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxTopLevelXMLWriter.h"

class QxEdgeXMLWriter;
class QxGraph;
class QxGraphManager;
class QxGraphXMLWriter;

/// Writes a graph manager: its graphs, side by side in their order, with their nodes and edges, and
/// the edges between them.
class QX_API QxGraphManagerXMLWriter : public QxTopLevelXMLWriter {
public:
    QxGraphManagerXMLWriter();
    explicit QxGraphManagerXMLWriter(const char* fileName);
    QxGraphManagerXMLWriter(const char* fileName, int useTemplates, int indented);
    QxGraphManagerXMLWriter(std::string* buffer, int useTemplates, int indented);
    QxGraphManagerXMLWriter(std::ostream* stream, int useTemplates, int indented);
    ~QxGraphManagerXMLWriter() override;

    /// Writes the manager, which stays as it is. 1, or 0 when that failed: then messages() says
    /// why, and the former file is as it was. Linear in the drawing.
    int write(const QxGraphManager* manager);
    /// What is being written; null otherwise.
    const QxGraphManager* pGraphManager() const { return m_manager; }
    QxGraphXMLWriter* pGraphWriter() const { return m_graphWriter.get(); }
    QxEdgeXMLWriter* pEdgeWriter() const { return m_edgeWriter.get(); }

protected:
    void populateDOMElement(QxDOMElement& top) override;
    /// Whether the graph is written within another one, or not at all.
    virtual int isLeftOut(const QxGraph* graph) const;
    /// Gives everything that others may name its identifier, in the order of the document.
    virtual void numberObjects();
    /// Appends to `instances` what the other elements cannot carry.
    virtual void writeMore(QxDOMElement& instances);
    /// Puts other writers in place of those that write graphs and edges.
    void install(std::unique_ptr<QxGraphXMLWriter> graphWriter,
                 std::unique_ptr<QxEdgeXMLWriter> edgeWriter);

private:
    friend class QxGraphXMLWriter;

    void writeGraph(const QxGraph& graph, QxDOMElement& instances, QxXMLUtilities::Name name);

    const QxGraphManager* m_manager = nullptr;
    std::unique_ptr<QxGraphXMLWriter> m_graphWriter;
    std::unique_ptr<QxEdgeXMLWriter> m_edgeWriter;
};
