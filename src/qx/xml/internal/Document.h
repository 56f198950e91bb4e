// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "qx/xml/QxXMLMessage.h"
#include "qx/xml/QxXMLUtilities.h"
#include "qx/xml/internal/ElementKind.h"

class QxObject;
class QxTopLevelXMLReader;

namespace qx::internal {

class SafeParser;

/// A document that has been parsed, with the table of its identifiers.
class Document {
public:
    explicit Document(QxTopLevelXMLReader& reader);
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// Parses and checks. Throws a DocumentFault for what is refused; what XML itself forbids is
    /// told to the reader before. Once.
    void parse(std::string bytes, const QxXMLLimits& limits);

    const QxDOMElement& top() const { return *m_top; }
    struct Entry {
        const QxDOMElement* element;
        QxObject* object;
        ElementKind kind;
    };
    /// Null for an unknown identifier.
    Entry* find(std::u16string_view id);
    /// The line on which the start tag of an element ends; linear in the document the first time.
    int lineOf(const QxDOMElement& element);

private:
    friend class SafeParser;

    const QxDOMElement* pAfter(const QxDOMElement* element) const;
    void collectIds();
    void checkNumbers(const QxDOMElement& element);
    void addId(const QxDOMElement& element, ElementKind kind);

    QxTopLevelXMLReader& m_reader;
    std::unique_ptr<SafeParser> m_parser;
    const QxDOMElement* m_top = nullptr;
    std::vector<std::uint32_t> m_lines;  ///< of the elements in their order
    std::unordered_map<const QxDOMElement*, std::uint32_t> m_places;
    std::unordered_map<std::u16string_view, Entry> m_ids;
};

}  // namespace qx::internal
