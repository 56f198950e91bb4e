// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/xml/QxNodeXMLWriter.h"

class QxConnectorXMLWriter;
class QxDNode;
class QxEdge;
class QxEdgeDList;
class QxNodeLabelXMLWriter;

/// Writes drawing nodes: place, size, shape, clipping, connectors and labels. Of an expanded node
/// it writes how it looks while it is collapsed; its present look follows in `more`.
class QX_API QxDNodeXMLWriter : public QxNodeXMLWriter {
public:
    explicit QxDNodeXMLWriter(QxTopLevelXMLWriter& document);
    ~QxDNodeXMLWriter() override;

    QxConnectorXMLWriter* pConnectorWriter() const { return m_connectorWriter.get(); }
    QxNodeLabelXMLWriter* pNodeLabelWriter() const { return m_labelWriter.get(); }
    void populateDOMElement(QxDOMElement& element) override;
    void numberObjects(const QxNode& node) override;

protected:
    /// The specified connectors; nothing when there are none.
    virtual void createConnectors(QxDOMElement& element);
    void writeMore(QxDOMElement& element) override;

private:
    const QxDNode* pDNode() const;
    void writeExpandedLook(QxDOMElement& element);
    void writeCalculatedConnectors(QxDOMElement& element);
    void writeEdgeOrder(QxDOMElement& element);
    bool isImplied(const QxEdgeDList& edges) const;
    void writeOrder(const QxEdgeDList& edges, QxDOMElement& element,
                    QxXMLUtilities::Name name) const;

    std::unique_ptr<QxConnectorXMLWriter> m_connectorWriter;
    std::unique_ptr<QxNodeLabelXMLWriter> m_labelWriter;
};
