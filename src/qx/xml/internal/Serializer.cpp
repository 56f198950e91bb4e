// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/internal/Serializer.h"

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include "qx/xml/internal/Xerces.h"

namespace qx::internal {

namespace {

class Output {
public:
    Output(const ByteSink& sink, bool isIndented) : m_sink(sink), m_isIndented(isIndented) {}

    void startLine(std::size_t depth) {
        if (m_isIndented) {
            m_bytes += '\n';
            m_bytes.append(depth * 2, ' ');
        }
    }
    void add(std::string_view ascii) { m_bytes += ascii; }
    void addName(std::u16string_view name) { addPlain(name, false); }
    void addValue(std::u16string_view value) { addPlain(value, true); }
    /// Hands over what has come together.
    void flush(std::size_t least) {
        if (m_bytes.size() >= least) {
            m_sink(m_bytes);
            m_bytes.clear();
        }
    }

private:
    void addPlain(std::u16string_view text, bool isValue) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            const char16_t c = text[i];
            if (c >= 0x7F) {
                m_bytes += toUtf8(text.substr(i, isHigh(c) ? 2 : 1));
                i += isHigh(c) ? 1 : 0;
            } else if (c >= u' ' && (!isValue || (c != u'<' && c != u'&' && c != u'"'))) {
                m_bytes += static_cast<char>(c);
            } else {
                addEscaped(c);
            }
        }
    }
    static bool isHigh(char16_t c) { return c >= 0xD800 && c < 0xDC00; }
    void addEscaped(char16_t c) {
        switch (c) {
            case u'<':
                m_bytes += "&lt;";
                break;
            case u'&':
                m_bytes += "&amp;";
                break;
            case u'"':
                m_bytes += "&quot;";
                break;
            default:  // a tabulator or an end of a line, which would be read as a blank
                m_bytes += "&#" + std::to_string(static_cast<int>(c)) + ';';
        }
    }

    const ByteSink& m_sink;
    bool m_isIndented;
    std::string m_bytes;
};

void addStart(Output& out, const QxDOMElement& element) {
    out.add("<");
    out.addName(element.getNodeName());
    const xercesc::DOMNamedNodeMap* const attributes = element.getAttributes();
    for (XMLSize_t i = 0, n = attributes->getLength(); i < n; ++i) {
        const xercesc::DOMNode* const attribute = attributes->item(i);
        out.add(" ");
        out.addName(attribute->getNodeName());
        out.add("=\"");
        out.addValue(attribute->getNodeValue());
        out.add("\"");
    }
}

}  // namespace

void serialize(const QxDOMElement& top, bool isIndented, const ByteSink& sink) {
    constexpr std::size_t Piece = 1 << 20;
    Output out(sink, isIndented);
    out.add("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    std::size_t depth = 0;
    const QxDOMElement* element = &top;
    while (element != nullptr) {
        out.startLine(depth);
        addStart(out, *element);
        const QxDOMElement* next = QxXMLUtilities::pFirst(*element);
        if (next != nullptr) {
            out.add(">");
            ++depth;
        } else {
            out.add("/>");
        }
        while (next == nullptr && element != &top) {
            next = QxXMLUtilities::pNext(*element);
            if (next == nullptr) {
                element = static_cast<const QxDOMElement*>(element->getParentNode());
                out.startLine(--depth);
                out.add("</");
                out.addName(element->getNodeName());
                out.add(">");
            }
        }
        out.flush(Piece);
        element = next;
    }
    out.add("\n");
    out.flush(0);
}

}  // namespace qx::internal
