// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxXMLUtilities.h"

class QxTopLevelXMLReader;

/// Gives objects of one kind what their elements hold; the counterpart of QxXMLWriter.
class QX_API QxXMLReader {
public:
    explicit QxXMLReader(QxTopLevelXMLReader& document) : m_document(document) {}
    virtual ~QxXMLReader() = default;
    QxXMLReader(const QxXMLReader&) = delete;
    QxXMLReader& operator=(const QxXMLReader&) = delete;

    QxTopLevelXMLReader& document() const { return m_document; }
    /// Gives the present object what the element holds. Unknown children are skipped.
    virtual void processDOMElement(const QxDOMElement& element) = 0;

private:
    QxTopLevelXMLReader& m_document;
};
