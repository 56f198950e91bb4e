// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/xml/QxGraphXMLReader.h"

class QxDGraph;
class QxGraphLabelXMLReader;

/// Reads drawing graphs.
class QX_API QxDGraphXMLReader : public QxGraphXMLReader {
public:
    explicit QxDGraphXMLReader(QxGraphManagerXMLReader& document);
    ~QxDGraphXMLReader() override;

    void processDOMElement(const QxDOMElement& element) override;

protected:
    virtual void processMargins(const QxDOMElement& element);

private:
    QxDGraph* pDGraph() const;

    std::unique_ptr<QxGraphLabelXMLReader> m_labelReader;
};
