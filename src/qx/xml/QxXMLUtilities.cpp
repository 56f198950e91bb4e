// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxXMLUtilities.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "qx/foundation/geometry/QxArithmetic.h"
#include "qx/xml/internal/EscapedText.h"
#include "qx/xml/internal/Names.h"
#include "qx/xml/internal/Numbers.h"

namespace {

namespace names = qx::names;

/// A short ASCII text in UTF-16, zero terminated.
class Utf16 {
public:
    explicit Utf16(std::string_view ascii) {
        if (ascii.size() < m_small.size()) {
            char16_t* to = m_small.data();
            for (const char c : ascii) {
                *to++ = static_cast<char16_t>(static_cast<unsigned char>(c));
            }
            *to = 0;
        } else {
            m_large.assign(ascii.begin(), ascii.end());
        }
    }
    const char16_t* get() const { return m_large.empty() ? m_small.data() : m_large.c_str(); }

private:
    std::array<char16_t, 48> m_small;
    std::u16string m_large;
};

/// The node itself, or the first of its next siblings, that is an element.
const QxDOMElement* elementFrom(const xercesc::DOMNode* node) {
    while (node != nullptr && node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
        node = node->getNextSibling();
    }
    return static_cast<const QxDOMElement*>(node);
}

template <class Number>
void writeNumber(QxDOMElement& element, const char16_t* attribute, Number value) {
    char text[40];
    const auto [end, error] = std::to_chars(text, text + sizeof text, value);
    QxXMLUtilities::writeValue(element, attribute, {text, error == std::errc() ? end : text});
}

}  // namespace

QxDOMElement* QxXMLUtilities::pAppendChild(QxDOMElement& parent, Name name) {
    QxDOMElement* const child = parent.getOwnerDocument()->createElement(name);
    parent.appendChild(child);
    return child;
}

void QxXMLUtilities::removeChild(QxDOMElement& parent, QxDOMElement& child) {
    parent.removeChild(&child)->release();
}

int QxXMLUtilities::hasChildren(const QxDOMElement& element) {
    return element.getFirstElementChild() != nullptr ? 1 : 0;
}

int QxXMLUtilities::hasAttributes(const QxDOMElement& element) {
    return element.hasAttributes() ? 1 : 0;
}

std::u16string_view QxXMLUtilities::name(const QxDOMElement& element) {
    return element.getNodeName();
}

int QxXMLUtilities::hasName(const QxDOMElement& element, Name wanted) {
    return name(element) == wanted ? 1 : 0;
}

const QxDOMElement* QxXMLUtilities::pChild(const QxDOMElement& parent, Name name) {
    const QxDOMElement* child = pFirst(parent);
    while (child != nullptr && hasName(*child, name) == 0) {
        child = pNext(*child);
    }
    return child;
}

QxDOMElement* QxXMLUtilities::pChild(QxDOMElement& parent, Name name) {
    return const_cast<QxDOMElement*>(
        pChild(static_cast<const QxDOMElement&>(parent), name));  // the parent is not const
}

const QxDOMElement* QxXMLUtilities::pFirst(const QxDOMElement& parent) {
    return elementFrom(parent.getFirstChild());
}

const QxDOMElement* QxXMLUtilities::pNext(const QxDOMElement& element) {
    return elementFrom(element.getNextSibling());
}

void QxXMLUtilities::writeValue(QxDOMElement& element, Name attribute, std::string_view ascii) {
    element.setAttribute(attribute, Utf16(ascii).get());
}

void QxXMLUtilities::writeInt(QxDOMElement& element, Name attribute, std::int64_t value) {
    writeNumber(element, attribute, value);
}

void QxXMLUtilities::writeDouble(QxDOMElement& element, Name attribute, double value) {
    writeNumber(element, attribute, std::isfinite(value) ? value + 0.0 : 0.0);
}

void QxXMLUtilities::writeBoolean(QxDOMElement& element, Name attribute, int value) {
    element.setAttribute(attribute, value != 0 ? u"true" : u"false");
}

void QxXMLUtilities::writeText(QxDOMElement& element, Name attribute, std::wstring_view text) {
    const qx::internal::EscapedText written(text);
    element.setAttribute(attribute, written.plain().c_str());
    if (!written.escaped().empty()) {
        element.setAttribute((attribute + std::u16string(qx::internal::EscapedSuffix)).c_str(),
                             written.escaped().c_str());
    }
}

int QxXMLUtilities::hasAttribute(const QxDOMElement& element, Name attribute) {
    return element.hasAttribute(attribute) ? 1 : 0;
}

std::u16string_view QxXMLUtilities::attribute(const QxDOMElement& element, Name attribute) {
    const XMLCh* const value = element.getAttribute(attribute);
    return value != nullptr ? value : u"";
}

std::optional<double> QxXMLUtilities::parseDouble(const QxDOMElement& element, Name name) {
    return qx::internal::parseNumber(attribute(element, name));
}

std::optional<std::int32_t> QxXMLUtilities::parseInt(const QxDOMElement& element, Name attribute) {
    const std::optional<double> value = parseDouble(element, attribute);
    return value ? std::optional(toInt32(*value)) : std::nullopt;
}

std::optional<std::int64_t> QxXMLUtilities::parseInt64(const QxDOMElement& element, Name name) {
    std::string ascii;
    for (const char16_t c : attribute(element, name)) {
        ascii += c < 0x80 ? static_cast<char>(c) : '?';
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
    return error == std::errc() && end == ascii.data() + ascii.size() && !ascii.empty()
               ? std::optional(value)
               : std::nullopt;
}

std::optional<int> QxXMLUtilities::parseBoolean(const QxDOMElement& element, Name name) {
    const std::u16string_view value = attribute(element, name);
    if (value == u"true" || value == u"1") {
        return 1;
    }
    return value == u"false" || value == u"0" ? std::optional(0) : std::nullopt;
}

std::optional<std::wstring> QxXMLUtilities::parseText(const QxDOMElement& element, Name name) {
    const std::u16string escapedName = name + std::u16string(qx::internal::EscapedSuffix);
    if (hasAttribute(element, escapedName.c_str()) != 0) {
        return qx::internal::unescaped(attribute(element, escapedName.c_str()));
    }
    return hasAttribute(element, name) != 0
               ? std::optional(qx::internal::toWide(attribute(element, name)))
               : std::nullopt;
}

void QxXMLUtilities::writeIntValue(QxDOMElement& parent, Name name, std::int64_t value) {
    writeInt(*pAppendChild(parent, name), names::Value, value);
}

void QxXMLUtilities::writeDoubleValue(QxDOMElement& parent, Name name, double value) {
    writeDouble(*pAppendChild(parent, name), names::Value, value);
}

void QxXMLUtilities::writeBooleanValue(QxDOMElement& parent, Name name, int value) {
    writeBoolean(*pAppendChild(parent, name), names::Value, value);
}

std::optional<std::int32_t> QxXMLUtilities::parseIntValue(const QxDOMElement& parent, Name name) {
    const QxDOMElement* child = pChild(parent, name);
    return child != nullptr ? parseInt(*child, names::Value) : std::nullopt;
}

std::optional<double> QxXMLUtilities::parseDoubleValue(const QxDOMElement& parent, Name name) {
    const QxDOMElement* child = pChild(parent, name);
    return child != nullptr ? parseDouble(*child, names::Value) : std::nullopt;
}

std::optional<int> QxXMLUtilities::parseBooleanValue(const QxDOMElement& parent, Name name) {
    const QxDOMElement* child = pChild(parent, name);
    return child != nullptr ? parseBoolean(*child, names::Value) : std::nullopt;
}

std::int32_t QxXMLUtilities::toInt32(double value) {
    const double nearest = std::nearbyint(value);
    return qx::truncToInt32(std::abs(value - nearest) <= 1e-6 ? nearest : value);
}

std::int16_t QxXMLUtilities::toInt16(double value) {
    return qx::clampToInt16(toInt32(value));
}
