// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxXMLReader.h"

class QxGraphObject;
class QxLabel;

/// Reads labels, of the owners that one of the four kinds is for.
class QX_API QxLabelXMLReader : public QxXMLReader {
public:
    using QxXMLReader::QxXMLReader;

    virtual QxXMLUtilities::Name elementName() const;
    /// Makes a label of the owner from the element; null when the owner takes none.
    QxLabel* read(QxGraphObject& owner, const QxDOMElement& element);
    QxLabel* pLabel() const { return m_label; }
    void processDOMElement(const QxDOMElement& element) override;
    /// A new label of the owner; null here.
    virtual QxLabel* pNewLabel(QxGraphObject& owner, int type) const;

protected:
    /// For labels of nodes, connectors and graphs.
    void processProportionalOffset(const QxDOMElement& element) const;

private:
    QxLabel* m_label = nullptr;
};

/// Of nodes.
class QX_API QxNodeLabelXMLReader : public QxLabelXMLReader {
public:
    using QxLabelXMLReader::QxLabelXMLReader;
    QxXMLUtilities::Name elementName() const override;
    QxLabel* pNewLabel(QxGraphObject& owner, int type) const override;
    void processDOMElement(const QxDOMElement& element) override;
};

/// Of edges.
class QX_API QxEdgeLabelXMLReader : public QxLabelXMLReader {
public:
    using QxLabelXMLReader::QxLabelXMLReader;
    QxXMLUtilities::Name elementName() const override;
    QxLabel* pNewLabel(QxGraphObject& owner, int type) const override;
    void processDOMElement(const QxDOMElement& element) override;
};

/// Of connectors.
class QX_API QxConnectorLabelXMLReader : public QxLabelXMLReader {
public:
    using QxLabelXMLReader::QxLabelXMLReader;
    QxXMLUtilities::Name elementName() const override;
    QxLabel* pNewLabel(QxGraphObject& owner, int type) const override;
    void processDOMElement(const QxDOMElement& element) override;
};

/// Of graphs.
class QX_API QxGraphLabelXMLReader : public QxLabelXMLReader {
public:
    using QxLabelXMLReader::QxLabelXMLReader;
    QxXMLUtilities::Name elementName() const override;
    QxLabel* pNewLabel(QxGraphObject& owner, int type) const override;
    void processDOMElement(const QxDOMElement& element) override;
};
