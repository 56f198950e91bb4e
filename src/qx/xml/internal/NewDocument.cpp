// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/internal/NewDocument.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMImplementation.hpp>
#include <xercesc/dom/DOMImplementationRegistry.hpp>

#include "qx/xml/internal/Xerces.h"

namespace qx::internal {

NewDocument::NewDocument(QxXMLUtilities::Name top) {
    startXerces();
    try {
        m_document =
            xercesc::DOMImplementationRegistry::getDOMImplementation(u"Core")->createDocument();
        m_top = m_document->createElement(top);
        m_document->appendChild(m_top);
    } catch (...) {
        rethrowAsFault();
    }
}

NewDocument::~NewDocument() {
    if (m_document != nullptr) {
        m_document->release();
    }
}

}  // namespace qx::internal
