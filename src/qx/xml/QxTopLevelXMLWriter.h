// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "qx/xml/QxXMLMessage.h"
#include "qx/xml/QxXMLUtilities.h"

class QxObject;

namespace qx::internal {
class ObjectNumbers;
}

/// Writes one document to one output. A file appears whole or not at all: it is written beside the
/// old one, flushed, and takes its place then; permissions and symbolic links stay. UTF-8.
class QX_API QxTopLevelXMLWriter {
public:
    /// Without an output: writing is refused.
    QxTopLevelXMLWriter();
    explicit QxTopLevelXMLWriter(const char* fileName);
    /// Templates are never written, whatever `useTemplates` says; with `indented` 0 all stands
    /// on one line.
    QxTopLevelXMLWriter(const char* fileName, int useTemplates, int indented);
    /// Into a string, which has to live as long as the writer; it keeps its contents on failure.
    QxTopLevelXMLWriter(std::string* buffer, int useTemplates, int indented);
    QxTopLevelXMLWriter(std::ostream* stream, int useTemplates, int indented);
    virtual ~QxTopLevelXMLWriter();
    QxTopLevelXMLWriter(const QxTopLevelXMLWriter&) = delete;
    QxTopLevelXMLWriter& operator=(const QxTopLevelXMLWriter&) = delete;

    /// The identifier of an object in this document: a letter for its kind and a number, given in
    /// the order of asking. Empty for null.
    std::string pID(const QxObject* object);
    void writeID(QxDOMElement& element, QxXMLUtilities::Name attribute, const QxObject* object);
    /// The number in it; 0 for null.
    std::uint32_t number(const QxObject* object);
    /// Whether the object has been given an identifier.
    int hasID(const QxObject* object) const;

    /// Everything told so far.
    const std::vector<QxXMLMessage>& messages() const { return m_messages; }

protected:
    /// Builds the document and writes it. 1, or 0 after a fatalError.
    int writeDocument();
    /// Fills the top element.
    virtual void populateDOMElement(QxDOMElement& top) = 0;
    /// Told of what happens; they collect, for messages().
    virtual void warning(const std::string& message);
    virtual void fatalError(const std::string& message);
    int isIndented() const { return m_isIndented ? 1 : 0; }

private:
    void write(const QxDOMElement& top);

    std::string m_fileName;
    std::string* m_buffer = nullptr;
    std::ostream* m_stream = nullptr;
    bool m_isIndented = true;
    std::unique_ptr<qx::internal::ObjectNumbers> m_numbers;
    std::vector<QxXMLMessage> m_messages;
};
