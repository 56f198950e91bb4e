// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxXMLWriter.h"

class QxEdge;

/// Writes edges: ends, name and child graph.
class QX_API QxEdgeXMLWriter : public QxXMLWriter {
public:
    using QxXMLWriter::QxXMLWriter;

    void write(const QxEdge& edge, QxDOMElement& element);
    const QxEdge* pEdge() const { return m_edge; }
    void populateDOMElement(QxDOMElement& element) override;

protected:
    /// What the edge will be when it is read: "disconnected", "deactivated", or null for connected.
    virtual const char* pState() const;
    /// Appends what the other elements cannot carry.
    virtual void writeMore(QxDOMElement& element);

private:
    const QxEdge* m_edge = nullptr;
};
