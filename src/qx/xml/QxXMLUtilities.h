// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "qx/foundation/util/QxApi.h"

namespace xercesc_3_2 {
class DOMElement;
}  // namespace xercesc_3_2

/// An element of a document. Only names and attributes of elements count; text does not.
using QxDOMElement = xercesc_3_2::DOMElement;

/// What readers and writers do with elements and attributes.
///
/// Names are UTF-16 and zero terminated. Numbers are written in their shortest form and do not
/// depend on the locale. Parsing answers nothing for what is absent or no such value.
class QX_API QxXMLUtilities {
public:
    using Name = const char16_t*;

    /// @name Elements
    /// @{
    static QxDOMElement* pAppendChild(QxDOMElement& parent, Name name);
    /// Takes the child out and destroys it.
    static void removeChild(QxDOMElement& parent, QxDOMElement& child);
    static int hasChildren(const QxDOMElement& element);
    static int hasAttributes(const QxDOMElement& element);
    static std::u16string_view name(const QxDOMElement& element);
    static int hasName(const QxDOMElement& element, Name name);
    /// The first child of that name; null when there is none.
    static const QxDOMElement* pChild(const QxDOMElement& parent, Name name);
    static QxDOMElement* pChild(QxDOMElement& parent, Name name);
    /// The first child, the next sibling: for walks; null at the end.
    static const QxDOMElement* pFirst(const QxDOMElement& parent);
    static const QxDOMElement* pNext(const QxDOMElement& element);
    /// @}

    /// @name Attributes
    /// @{
    static void writeValue(QxDOMElement& element, Name attribute, std::string_view ascii);
    static void writeInt(QxDOMElement& element, Name attribute, std::int64_t value);
    static void writeDouble(QxDOMElement& element, Name attribute, double value);
    static void writeBoolean(QxDOMElement& element, Name attribute, int value);
    /// Any text. What XML cannot hold is written as U+FFFD, and the whole of it, escaped, in an
    /// attribute of its own beside it.
    static void writeText(QxDOMElement& element, Name attribute, std::wstring_view text);

    static int hasAttribute(const QxDOMElement& element, Name attribute);
    /// Empty when it is absent; valid as long as the element.
    static std::u16string_view attribute(const QxDOMElement& element, Name attribute);
    static std::optional<double> parseDouble(const QxDOMElement& element, Name attribute);
    /// A number, its fraction cut off, clamped to the range.
    static std::optional<std::int32_t> parseInt(const QxDOMElement& element, Name attribute);
    static std::optional<std::int64_t> parseInt64(const QxDOMElement& element, Name attribute);
    /// true, false, 1, 0.
    static std::optional<int> parseBoolean(const QxDOMElement& element, Name attribute);
    static std::optional<std::wstring> parseText(const QxDOMElement& element, Name attribute);
    /// @}

    /// @name Children that hold one value: <name value="..."/>
    /// @{
    static void writeIntValue(QxDOMElement& parent, Name name, std::int64_t value);
    static void writeDoubleValue(QxDOMElement& parent, Name name, double value);
    static void writeBooleanValue(QxDOMElement& parent, Name name, int value);
    static std::optional<std::int32_t> parseIntValue(const QxDOMElement& parent, Name name);
    static std::optional<double> parseDoubleValue(const QxDOMElement& parent, Name name);
    static std::optional<int> parseBooleanValue(const QxDOMElement& parent, Name name);
    /// @}

    /// A number as readers take it: a double that lies within a millionth of a whole number is
    /// that number, else its fraction is cut off. Clamped.
    static std::int32_t toInt32(double value);
    static std::int16_t toInt16(double value);
};
