// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/xml/QxEdgeXMLWriter.h"

class QxDEdge;
class QxEdgeLabelXMLWriter;

/// Writes drawing edges: where they end, routing, bends and labels.
class QX_API QxDEdgeXMLWriter : public QxEdgeXMLWriter {
public:
    explicit QxDEdgeXMLWriter(QxTopLevelXMLWriter& document);
    ~QxDEdgeXMLWriter() override;

    QxEdgeLabelXMLWriter* pEdgeLabelWriter() const { return m_labelWriter.get(); }
    void populateDOMElement(QxDOMElement& element) override;

protected:
    /// One end: nothing when it is at the node itself.
    virtual void writeClipping(QxDOMElement& element, int atSource);
    virtual void createBends(QxDOMElement& element);
    const char* pState() const override;
    void writeMore(QxDOMElement& element) override;

private:
    const QxDEdge* pDEdge() const;

    std::unique_ptr<QxEdgeLabelXMLWriter> m_labelWriter;
};
