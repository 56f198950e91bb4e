// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/GraphMLReader.h"

#include <memory>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "import/GraphMLBuilder.h"
#include "import/ImportError.h"
#include "import/SourceText.h"

namespace qxdraw {

namespace {

/// Keeps the parser library ready from the first document on: getting it ready takes longer than
/// reading a small one.
class XercesUse {
public:
    XercesUse() { xercesc::XMLPlatformUtils::Initialize(); }
    ~XercesUse() { xercesc::XMLPlatformUtils::Terminate(); }
    XercesUse(const XercesUse&) = delete;
    XercesUse& operator=(const XercesUse&) = delete;
};

std::string toUtf8(const XMLCh* text, std::size_t length) {
    std::string result;
    for (std::size_t i = 0; i < length; ++i) {
        std::uint32_t character = text[i];
        if (character >= 0xD800 && character < 0xDC00 && i + 1 < length &&
            (text[i + 1] & 0xFC00) == 0xDC00) {
            character = 0x10000 + ((character & 0x3FF) << 10) + (text[++i] & 0x3FFU);
        }
        appendUtf8(result, character);
    }
    return result;
}

std::string toUtf8(const XMLCh* text) {
    return text == nullptr ? std::string() : toUtf8(text, std::char_traits<XMLCh>::length(text));
}

/// Hands the parser's events to the builder.
class GraphMLHandler : public xercesc::DefaultHandler {
public:
    explicit GraphMLHandler(GraphMLBuilder& builder) : m_builder(builder) {}

    void setDocumentLocator(const xercesc::Locator* const locator) override { m_locator = locator; }

    void startElement(const XMLCh* const, const XMLCh* const localName, const XMLCh* const,
                      const xercesc::Attributes& attributes) override {
        GraphMLAttributes values;
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
            values.emplace_back(toUtf8(attributes.getLocalName(i)), toUtf8(attributes.getValue(i)));
        }
        m_text.clear();
        m_builder.startElement(toUtf8(localName), values, line());
    }

    void endElement(const XMLCh* const, const XMLCh* const, const XMLCh* const) override {
        m_builder.endElement(toUtf8(m_text.data(), m_text.size()), line());
        m_text.clear();
    }

    void characters(const XMLCh* const text, const XMLSize_t length) override {
        m_text.append(text, length);
    }

    void startDTD(const XMLCh* const, const XMLCh* const, const XMLCh* const) override {
        throw ImportError("document types (DOCTYPE) are refused", line());
    }

    xercesc::InputSource* resolveEntity(const XMLCh* const, const XMLCh* const) override {
        throw ImportError("other files are not read", line());
    }

    void error(const xercesc::SAXParseException& exception) override { fatalError(exception); }

    void fatalError(const xercesc::SAXParseException& exception) override {
        throw ImportError(toUtf8(exception.getMessage()),
                          static_cast<int>(exception.getLineNumber()));
    }

private:
    int line() const {
        return m_locator == nullptr ? 0 : static_cast<int>(m_locator->getLineNumber());
    }

    GraphMLBuilder& m_builder;
    const xercesc::Locator* m_locator = nullptr;
    std::basic_string<XMLCh> m_text;
};

void parse(const std::string& text, GraphMLHandler& handler) {
    const std::unique_ptr<xercesc::SAX2XMLReader> reader(
        xercesc::XMLReaderFactory::createXMLReader());
    reader->setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, true);
    reader->setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
    reader->setFeature(xercesc::XMLUni::fgXercesSchema, false);
    reader->setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
    reader->setContentHandler(&handler);
    reader->setErrorHandler(&handler);
    reader->setLexicalHandler(&handler);
    reader->setEntityResolver(&handler);
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()),
                                            text.size(), "document");
    try {
        reader->parse(source);
    } catch (const xercesc::OutOfMemoryException&) {
        throw ImportError("not enough memory");
    } catch (const xercesc::XMLException& exception) {
        throw ImportError(toUtf8(exception.getMessage()), static_cast<int>(exception.getSrcLine()));
    }
}

}  // namespace

GraphDocument readGraphML(const std::string& text) {
    static const XercesUse xerces;
    GraphMLBuilder builder;
    GraphMLHandler handler(builder);
    parse(text, handler);
    return builder.finish();
}

}  // namespace qxdraw
