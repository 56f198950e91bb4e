// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxXMLWriter.h"

class QxGraphMember;
class QxNode;

/// Writes nodes: name and child graph.
class QX_API QxNodeXMLWriter : public QxXMLWriter {
public:
    using QxXMLWriter::QxXMLWriter;

    void write(const QxNode& node, QxDOMElement& element);
    const QxNode* pNode() const { return m_node; }
    void populateDOMElement(QxDOMElement& element) override;
    /// Gives what the node carries identifiers.
    virtual void numberObjects(const QxNode& node);
    /// The child `childGraph`: the relation, and the graph.
    static void writeChildGraph(const QxGraphMember& member, QxTopLevelXMLWriter& document,
                                QxDOMElement& element);

protected:
    /// Appends what the other elements cannot carry.
    virtual void writeMore(QxDOMElement& element);

private:
    const QxNode* m_node = nullptr;
};
