// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/xml/QxXMLWriter.h"

class QxConnector;
class QxConnectorLabelXMLWriter;

/// Writes connectors: name, size, place, shape, labels.
class QX_API QxConnectorXMLWriter : public QxXMLWriter {
public:
    explicit QxConnectorXMLWriter(QxTopLevelXMLWriter& document);
    ~QxConnectorXMLWriter() override;

    void write(const QxConnector& connector, QxDOMElement& element);
    const QxConnector* pConnector() const { return m_connector; }
    QxConnectorLabelXMLWriter* pConnectorLabelWriter() const { return m_labelWriter.get(); }
    void populateDOMElement(QxDOMElement& element) override;

private:
    void writeMore(QxDOMElement& element) const;

    const QxConnector* m_connector = nullptr;
    std::unique_ptr<QxConnectorLabelXMLWriter> m_labelWriter;
};
