// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxXMLWriter.h"

class QxConnectorLabel;
class QxEdgeLabel;
class QxGraphLabel;
class QxLabel;
class QxNodeLabel;

/// Writes labels: name, size, offset.
class QX_API QxLabelXMLWriter : public QxXMLWriter {
public:
    using QxXMLWriter::QxXMLWriter;

    virtual QxXMLUtilities::Name elementName() const;
    void write(const QxLabel& label, QxDOMElement& element);
    const QxLabel* pLabel() const { return m_label; }
    void populateDOMElement(QxDOMElement& element) override;

protected:
    /// Appends what the other elements cannot carry.
    virtual void writeMore(QxDOMElement& element);
    /// For labels of nodes, connectors and graphs.
    void writeProportionalOffset(QxDOMElement& element) const;

private:
    const QxLabel* m_label = nullptr;
};

/// Of nodes.
class QX_API QxNodeLabelXMLWriter : public QxLabelXMLWriter {
public:
    using QxLabelXMLWriter::QxLabelXMLWriter;
    QxXMLUtilities::Name elementName() const override;
    const QxNodeLabel* pNodeLabel() const;
    void populateDOMElement(QxDOMElement& element) override;
};

/// Of edges: the distance from the source, and whether and where they are pinned.
class QX_API QxEdgeLabelXMLWriter : public QxLabelXMLWriter {
public:
    using QxLabelXMLWriter::QxLabelXMLWriter;
    QxXMLUtilities::Name elementName() const override;
    const QxEdgeLabel* pEdgeLabel() const;
    void populateDOMElement(QxDOMElement& element) override;

protected:
    void writeMore(QxDOMElement& element) override;
};

/// Of connectors.
class QX_API QxConnectorLabelXMLWriter : public QxLabelXMLWriter {
public:
    using QxLabelXMLWriter::QxLabelXMLWriter;
    QxXMLUtilities::Name elementName() const override;
    const QxConnectorLabel* pConnectorLabel() const;
    void populateDOMElement(QxDOMElement& element) override;
};

/// Of graphs.
class QX_API QxGraphLabelXMLWriter : public QxLabelXMLWriter {
public:
    using QxLabelXMLWriter::QxLabelXMLWriter;
    QxXMLUtilities::Name elementName() const override;
    const QxGraphLabel* pGraphLabel() const;
    void populateDOMElement(QxDOMElement& element) override;
};
