// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxXMLUtilities.h"

class QxTopLevelXMLWriter;

/// Fills elements with what objects of one kind hold. A writer belongs to the writer of the whole
/// document, is used for one object after the other, and keeps none of them.
class QX_API QxXMLWriter {
public:
    explicit QxXMLWriter(QxTopLevelXMLWriter& document) : m_document(document) {}
    virtual ~QxXMLWriter() = default;
    QxXMLWriter(const QxXMLWriter&) = delete;
    QxXMLWriter& operator=(const QxXMLWriter&) = delete;

    QxTopLevelXMLWriter& document() const { return m_document; }
    /// Appends to the element what the present object holds.
    virtual void populateDOMElement(QxDOMElement& element) = 0;

private:
    QxTopLevelXMLWriter& m_document;
};
