// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxXMLUtilities.h"

namespace xercesc_3_2 {
class DOMDocument;
}  // namespace xercesc_3_2

namespace qx::internal {

/// A document that is being made, with its top element. Throws a DocumentFault.
class NewDocument {
public:
    explicit NewDocument(QxXMLUtilities::Name top);
    ~NewDocument();
    NewDocument(const NewDocument&) = delete;
    NewDocument& operator=(const NewDocument&) = delete;

    QxDOMElement& top() const { return *m_top; }

private:
    xercesc_3_2::DOMDocument* m_document = nullptr;
    QxDOMElement* m_top = nullptr;
};

}  // namespace qx::internal
