// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/xml/QxXMLReader.h"

class QxGraph;
class QxGraphManagerXMLReader;
class QxNodeXMLReader;

/// Reads graphs: at first all but the edges, then these.
class QX_API QxGraphXMLReader : public QxXMLReader {
public:
    explicit QxGraphXMLReader(QxGraphManagerXMLReader& document);
    ~QxGraphXMLReader() override;

    void read(QxGraph& graph, const QxDOMElement& element);
    void readEdges(QxGraph& graph, const QxDOMElement& element);
    QxGraph* pGraph() const { return m_graph; }
    QxNodeXMLReader* pNodeReader() const { return m_nodeReader.get(); }
    void processDOMElement(const QxDOMElement& element) override;

protected:
    virtual void processNodes(const QxDOMElement& element);
    virtual void processEdges(const QxDOMElement& element);
    void install(std::unique_ptr<QxNodeXMLReader> nodeReader);

private:
    QxGraphManagerXMLReader& m_manager;
    QxGraph* m_graph = nullptr;
    std::unique_ptr<QxNodeXMLReader> m_nodeReader;
};
