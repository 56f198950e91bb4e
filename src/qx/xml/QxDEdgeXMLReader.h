// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <unordered_set>
#include <vector>

#include "qx/xml/QxEdgeXMLReader.h"

class QxConnector;
class QxDEdge;
class QxEdgeLabelXMLReader;

/// Reads drawing edges. The bends of edges between graphs are added at the end, when it is known
/// where the graphs lie.
class QX_API QxDEdgeXMLReader : public QxEdgeXMLReader {
public:
    explicit QxDEdgeXMLReader(QxGraphManagerXMLReader& document);
    ~QxDEdgeXMLReader() override;

    void processDOMElement(const QxDOMElement& element) override;
    /// The last steps, once the nesting is there: bends of edges between graphs; the places of
    /// connectors that have been made for ends, which are kept by constant offsets within a graph;
    /// visible parts.
    void finish();
    /// Whether the edge is hidden, and lies in a graph where it cannot be connected.
    int isStranded(const QxDEdge& edge) const { return m_stranded.count(&edge) != 0 ? 1 : 0; }

protected:
    virtual void processClipping(const QxDOMElement& element, int atSource);
    virtual void processBends(const QxDOMElement& element);
    int staysIn(const QxGraph& graph, const QxDOMElement& element) const override;

private:
    QxDEdge* pDEdge() const;
    QxConnector* pFindConnector(const QxDOMElement& element, int atSource);
    void addBends(QxDEdge& edge, const QxDOMElement& element) const;
    void assign(QxConnector* connector, const QxDOMElement& element, int atSource);

    struct Late {
        QxDEdge* edge;
        const QxDOMElement* element;
    };
    std::vector<Late> m_late;
    std::vector<QxConnector*> m_newConnectors;
    std::unordered_set<const QxDEdge*> m_stranded;
    std::unique_ptr<QxEdgeLabelXMLReader> m_labelReader;
};
