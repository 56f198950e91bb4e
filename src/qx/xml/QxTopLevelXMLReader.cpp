// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxTopLevelXMLReader.h"

#include <istream>

#include "qx/xml/internal/Document.h"
#include "qx/xml/internal/Names.h"
#include "qx/xml/internal/WholeFile.h"
#include "qx/xml/internal/Xerces.h"

using qx::internal::Document;
using qx::internal::DocumentFault;
using qx::internal::ElementKind;

namespace {

constexpr std::size_t MostMessages = 1000;

std::string readStream(std::istream& stream, std::size_t limit) {
    std::string bytes;
    char piece[1 << 16];
    while (bytes.size() <= limit && (stream.read(piece, sizeof piece) || stream.gcount() > 0)) {
        bytes.append(piece, static_cast<std::size_t>(stream.gcount()));
    }
    if (stream.bad()) {
        throw DocumentFault("the stream cannot be read");
    }
    return bytes;
}

}  // namespace

QxTopLevelXMLReader::QxTopLevelXMLReader() = default;
QxTopLevelXMLReader::QxTopLevelXMLReader(const char* fileName)
    : m_fileName(fileName != nullptr ? fileName : "") {}
QxTopLevelXMLReader::QxTopLevelXMLReader(const char* bytes, std::size_t length)
    : m_bytes(bytes), m_length(length) {}
QxTopLevelXMLReader::QxTopLevelXMLReader(std::istream* stream) : m_stream(stream) {}
QxTopLevelXMLReader::~QxTopLevelXMLReader() = default;

std::string QxTopLevelXMLReader::takeBytes() {
    std::string bytes;
    if (m_bytes != nullptr) {
        if (m_length <= m_limits.bytes) {
            bytes.assign(m_bytes, m_length);
        }
    } else if (m_stream != nullptr) {
        bytes = readStream(*m_stream, m_limits.bytes);
    } else if (!m_fileName.empty()) {
        bytes = qx::internal::readWholeFile(m_fileName, m_limits.bytes);
    } else {
        throw DocumentFault("there is no input");
    }
    if (bytes.size() > m_limits.bytes || m_length > m_limits.bytes) {
        throw DocumentFault("more than " + std::to_string(m_limits.bytes) + " bytes");
    }
    return bytes;
}

int QxTopLevelXMLReader::readDocument() {
    try {
        m_document = std::make_unique<Document>(*this);
        m_document->parse(takeBytes(), m_limits);
        checkVersion();
        processDOMElement(m_document->top());
    } catch (const DocumentFault& fault) {
        fatalError(fault.what(), fault.line(), 0);
        return 0;
    } catch (...) {
        fatalError(qx::internal::describeFault(), 0, 0);
        return 0;
    }
    if (m_untold != 0) {
        m_messages.push_back(
            {QxXMLError, std::to_string(m_untold) + " more faults are not listed", 0, 0});
    }
    return 1;
}

void QxTopLevelXMLReader::checkVersion() {
    const QxDOMElement& top = m_document->top();
    const auto version = QxXMLUtilities::parseInt(top, qx::names::Version);
    if (!version) {
        note(top, "the document does not say its version; it is read as version 1");
    } else if (*version > 1) {
        note(top, "version " + std::to_string(*version) +
                      " is newer than this reader; what it does not know is left out");
    }
}

QxObject* QxTopLevelXMLReader::pObject(std::u16string_view id) const {
    const Document::Entry* entry = m_document != nullptr ? m_document->find(id) : nullptr;
    return entry != nullptr ? entry->object : nullptr;
}

QxObject* QxTopLevelXMLReader::pObject(std::u16string_view id, ElementKind kind) const {
    const Document::Entry* entry = m_document != nullptr ? m_document->find(id) : nullptr;
    return entry != nullptr && entry->kind == kind ? entry->object : nullptr;
}

QxObject* QxTopLevelXMLReader::pElementObject(const QxDOMElement& element,
                                              QxXMLUtilities::Name attribute, ElementKind kind,
                                              bool isOptional) {
    const std::u16string_view id = QxXMLUtilities::attribute(element, attribute);
    if (id.empty() && isOptional && QxXMLUtilities::hasAttribute(element, attribute) == 0) {
        return nullptr;
    }
    const Document::Entry* entry = m_document->find(id);
    const bool isThere = entry != nullptr && entry->object != nullptr;
    if (isThere && (kind == ElementKind::None || entry->kind == kind)) {
        return entry->object;
    }
    repair(element, qx::internal::toUtf8(attribute) + "=\"" +
                        qx::internal::toUtf8(id.substr(0, 40)) + "\" names " +
                        (isThere ? std::string("a ") + nameOf(entry->kind) + ", " : "") + "no " +
                        nameOf(kind));
    return nullptr;
}

void QxTopLevelXMLReader::registerObject(const QxDOMElement& element, QxObject* object) {
    Document::Entry* entry = m_document->find(QxXMLUtilities::attribute(element, qx::names::Id));
    if (entry != nullptr && entry->element == &element) {
        entry->object = object;
    }
}

void QxTopLevelXMLReader::repair(const QxDOMElement& element, const std::string& message) {
    if (m_messages.size() < MostMessages) {
        error("<" + qx::internal::toUtf8(QxXMLUtilities::name(element)) + ">: " + message,
              lineOf(element), 0);
    } else {
        ++m_untold;
    }
}

void QxTopLevelXMLReader::note(const QxDOMElement& element, const std::string& message) {
    if (m_messages.size() < MostMessages) {
        warning(message, lineOf(element), 0);
    } else {
        ++m_untold;
    }
}

std::int32_t QxTopLevelXMLReader::lineOf(const QxDOMElement& element) const {
    return m_document != nullptr ? m_document->lineOf(element) : 0;
}

void QxTopLevelXMLReader::collect(QxXMLSeverityEnum severity, const std::string& message,
                                  std::int32_t line, std::int32_t column) {
    m_messages.push_back({severity, message, line, column});
}

void QxTopLevelXMLReader::warning(const std::string& message, std::int32_t line,
                                  std::int32_t column) {
    collect(QxXMLWarning, message, line, column);
}

void QxTopLevelXMLReader::error(const std::string& message, std::int32_t line,
                                std::int32_t column) {
    collect(QxXMLError, message, line, column);
}

void QxTopLevelXMLReader::fatalError(const std::string& message, std::int32_t line,
                                     std::int32_t column) {
    collect(QxXMLFatalError, message, line, column);
}

void QxTopLevelXMLReader::parsingError(const std::string& message, std::int32_t line,
                                       std::int32_t column) {
    collect(QxXMLParsingError, message, line, column);
}
