// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/xml/QxNodeXMLReader.h"

class QxConnector;
class QxConnectorXMLReader;
class QxDGraphManagerXMLReader;
class QxDNode;
class QxNodeLabelXMLReader;

/// Reads drawing nodes. The present look of an expanded node is read when it is expanded.
class QX_API QxDNodeXMLReader : public QxNodeXMLReader {
public:
    explicit QxDNodeXMLReader(QxGraphManagerXMLReader& document);
    ~QxDNodeXMLReader() override;

    void processDOMElement(const QxDOMElement& element) override;

protected:
    virtual void processConnectors(const QxDOMElement& element);
    virtual void processConnector(const QxDOMElement& element, int specified);

private:
    QxDNode* pDNode() const;

    std::unique_ptr<QxConnectorXMLReader> m_connectorReader;
    std::unique_ptr<QxNodeLabelXMLReader> m_labelReader;
};
