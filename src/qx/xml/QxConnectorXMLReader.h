// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/xml/QxXMLReader.h"

class QxConnector;
class QxConnectorLabelXMLReader;

/// Reads connectors.
class QX_API QxConnectorXMLReader : public QxXMLReader {
public:
    explicit QxConnectorXMLReader(QxTopLevelXMLReader& document);
    ~QxConnectorXMLReader() override;

    void read(QxConnector& connector, const QxDOMElement& element);
    QxConnector* pConnector() const { return m_connector; }
    void processDOMElement(const QxDOMElement& element) override;

private:
    QxConnector* m_connector = nullptr;
    std::unique_ptr<QxConnectorLabelXMLReader> m_labelReader;
};
