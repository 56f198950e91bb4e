// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "qx/xml/QxXMLMessage.h"
#include "qx/xml/QxXMLUtilities.h"

class QxObject;

namespace qx::internal {
class Document;
enum class ElementKind : unsigned char;
}  // namespace qx::internal

/// Reads one document from one input. Reading is safe: a document type is refused, so there are no
/// entities, and nothing outside the document is ever opened; limits bound what it may cost. The
/// document is parsed and checked as a whole before anything is made of it. Any encoding that the
/// parser knows.
class QX_API QxTopLevelXMLReader {
public:
    /// Without an input: reading is refused.
    QxTopLevelXMLReader();
    explicit QxTopLevelXMLReader(const char* fileName);
    /// The bytes have to live until they are read.
    QxTopLevelXMLReader(const char* bytes, std::size_t length);
    explicit QxTopLevelXMLReader(std::istream* stream);
    virtual ~QxTopLevelXMLReader();
    QxTopLevelXMLReader(const QxTopLevelXMLReader&) = delete;
    QxTopLevelXMLReader& operator=(const QxTopLevelXMLReader&) = delete;

    const QxXMLLimits& limits() const { return m_limits; }
    void limits(const QxXMLLimits& limits) { m_limits = limits; }

    /// @name Objects by their elements
    /// @{

    /// The object that has been made for the element of that identifier; null for none.
    QxObject* pObject(std::u16string_view id) const;
    /// The same, when its element is of that kind.
    QxObject* pObject(std::u16string_view id, qx::internal::ElementKind kind) const;
    /// The object that the attribute of the element names, and what it was read from has to be of
    /// that kind; null, and a repair is told, when there is no such object. An absent attribute
    /// tells nothing when `isOptional`.
    QxObject* pElementObject(const QxDOMElement& element, QxXMLUtilities::Name attribute,
                             qx::internal::ElementKind kind, bool isOptional = false);
    /// Notes the object that has been made for an element.
    void registerObject(const QxDOMElement& element, QxObject* object);
    /// @}

    /// Tells of a fault in the document that has been repaired, and of what is worth knowing.
    void repair(const QxDOMElement& element, const std::string& message);
    void note(const QxDOMElement& element, const std::string& message);

    /// Everything told so far. When it is very much, the rest is only counted, in the last.
    const std::vector<QxXMLMessage>& messages() const { return m_messages; }

protected:
    /// Parses, checks, and gives the top element to processDOMElement. 1, or 0 after fatalError or
    /// parsingError; then nothing has been changed.
    int readDocument();
    virtual void processDOMElement(const QxDOMElement& top) = 0;

    /// @name Told of what happens; they collect, for messages()
    /// @{
    virtual void warning(const std::string& message, std::int32_t line, std::int32_t column);
    virtual void error(const std::string& message, std::int32_t line, std::int32_t column);
    virtual void fatalError(const std::string& message, std::int32_t line, std::int32_t column);
    virtual void parsingError(const std::string& message, std::int32_t line, std::int32_t column);
    /// @}

private:
    friend class qx::internal::Document;

    std::string takeBytes();
    void checkVersion();
    std::int32_t lineOf(const QxDOMElement& element) const;
    void collect(QxXMLSeverityEnum severity, const std::string& message, std::int32_t line,
                 std::int32_t column);

    std::string m_fileName;
    const char* m_bytes = nullptr;
    std::size_t m_length = 0;
    std::istream* m_stream = nullptr;
    QxXMLLimits m_limits;
    std::unique_ptr<qx::internal::Document> m_document;
    std::vector<QxXMLMessage> m_messages;
    std::size_t m_untold = 0;
};
