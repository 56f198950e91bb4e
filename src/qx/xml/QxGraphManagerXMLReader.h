// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <utility>

#include "qx/xml/QxTopLevelXMLReader.h"

class QxEdgeXMLReader;
class QxGraph;
class QxGraphManager;
class QxGraphXMLReader;

/// Reads a graph manager. What stands in the document is added to what the manager holds.
///
/// Graphs and nodes come first, then edges, then nesting, so that elements may stand in any order.
class QX_API QxGraphManagerXMLReader : public QxTopLevelXMLReader {
public:
    QxGraphManagerXMLReader();
    explicit QxGraphManagerXMLReader(const char* fileName);
    QxGraphManagerXMLReader(const char* bytes, std::size_t length);
    explicit QxGraphManagerXMLReader(std::istream* stream);
    ~QxGraphManagerXMLReader() override;

    /// Reads the document into the manager. 1, or 0 when the document is refused; then the manager
    /// is as it was, and messages() says why. Faults that are repaired are told there, too.
    int read(QxGraphManager* manager);
    /// What is being read into; null otherwise.
    QxGraphManager* pGraphManager() const { return m_manager; }
    QxGraphXMLReader* pGraphReader() const { return m_graphReader.get(); }
    QxEdgeXMLReader* pEdgeReader() const { return m_edgeReader.get(); }

protected:
    void processDOMElement(const QxDOMElement& top) override;
    /// Around the reading of what a graph holds.
    virtual void preReadGraph(QxGraph* graph);
    virtual void postReadGraph(QxGraph* graph);
    /// Takes over what the other elements cannot carry.
    virtual void processMore(const QxDOMElement& instances);
    /// Nests the child graphs. Each relation is made by nestChildGraph.
    virtual void processChildGraphs();
    /// Puts other readers in place of those that read graphs and edges.
    void install(std::unique_ptr<QxGraphXMLReader> graphReader,
                 std::unique_ptr<QxEdgeXMLReader> edgeReader);

    using GraphElements = std::vector<std::pair<QxGraph*, const QxDOMElement*>>;
    /// The graphs that have been read, with their elements; that of the edges between graphs last.
    const GraphElements& graphElements() const { return m_graphs; }
    /// The elements that nest a graph in the object that was read from `member`.
    struct ChildGraphElement {
        const QxDOMElement* member;
        const QxDOMElement* relation;
    };
    const std::vector<ChildGraphElement>& childGraphElements() const { return m_childGraphs; }
    /// Makes the relation; a graph that cannot be nested there stays outside, and that is told.
    void nestChildGraph(const ChildGraphElement& element);

private:
    friend class QxEdgeXMLReader;
    friend class QxNodeXMLReader;

    void addGraphs(const QxDOMElement& instances);
    void noteChildGraph(const QxDOMElement& member);

    QxGraphManager* m_manager = nullptr;
    std::unique_ptr<QxGraphXMLReader> m_graphReader;
    std::unique_ptr<QxEdgeXMLReader> m_edgeReader;
    GraphElements m_graphs;
    std::vector<ChildGraphElement> m_childGraphs;
};
