// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/xml/QxGraphXMLWriter.h"

class QxDGraph;
class QxGraphLabelXMLWriter;

/// Writes drawing graphs: margins, routing and labels. What is hidden from a graph stands within
/// its element.
class QX_API QxDGraphXMLWriter : public QxGraphXMLWriter {
public:
    explicit QxDGraphXMLWriter(QxGraphManagerXMLWriter& document);
    ~QxDGraphXMLWriter() override;

    QxGraphLabelXMLWriter* pGraphLabelWriter() const { return m_labelWriter.get(); }
    void populateDOMElement(QxDOMElement& element) override;
    void numberObjects(const QxGraph& graph) override;

protected:
    void writeNodes(QxDOMElement& element) override;
    void writeEdges(QxDOMElement& element) override;
    virtual void createMargins(QxDOMElement& element);
    void writeMore(QxDOMElement& element) override;

private:
    const QxDGraph* pDGraph() const;

    std::unique_ptr<QxGraphLabelXMLWriter> m_labelWriter;
};
