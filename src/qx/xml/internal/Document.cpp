// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Parsing, safely.
//
// The parser builds the elements and their attributes and nothing else: text, comments and
// processing instructions count for nothing here, so they cost no memory. It refuses a document
// type as soon as it meets one, before anything that stands in it is looked at; what is left of XML
// then has no entities and names no other file. Limits are looked at with every start tag. Lines
// are noted beside the elements, in their order, for the few that somebody asks for.

#include "qx/xml/internal/Document.h"

#include <array>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "qx/xml/QxTopLevelXMLReader.h"
#include "qx/xml/internal/Names.h"
#include "qx/xml/internal/Numbers.h"
#include "qx/xml/internal/Xerces.h"

namespace qx::internal {

namespace {

struct KnownKind {
    const char16_t* name;
    ElementKind kind;
};
constexpr std::array KnownKinds = {
    KnownKind{names::Node, ElementKind::Node},
    KnownKind{names::Edge, ElementKind::Edge},
    KnownKind{names::Connector, ElementKind::Connector},
    KnownKind{names::NodeLabel, ElementKind::Label},
    KnownKind{names::EdgeLabel, ElementKind::Label},
    KnownKind{names::ConnectorLabel, ElementKind::Label},
    KnownKind{names::GraphLabel, ElementKind::Label},
    KnownKind{names::Graph, ElementKind::Graph},
    KnownKind{names::Intergraph, ElementKind::Graph},
    KnownKind{names::ChildGraph, ElementKind::ChildGraphRelation},
    KnownKind{names::RectangleShape, ElementKind::Shape},
    KnownKind{names::OvalShape, ElementKind::Shape},
    KnownKind{names::PolygonShape, ElementKind::Shape},
};

ElementKind kindOf(std::u16string_view name) {
    for (const KnownKind& known : KnownKinds) {
        if (name == known.name) {
            return known.kind;
        }
    }
    return ElementKind::None;
}

/// The elements whose attributes are numbers, all of them.
bool isMeasure(std::u16string_view name) {
    for (const char16_t* known :
         {names::Center, names::Size, names::OriginalSize, names::Point, names::InnerRect,
          names::Proportional, names::Constant, names::ConstantOffset, names::ProportionalOffset,
          names::SourceClipping, names::TargetClipping, names::CalculatedMargins,
          names::MinimumMarginWidth, names::MinimumMarginHeight, names::DistanceFromSource,
          names::Pinned, names::Transform}) {
        if (name == known) {
            return true;
        }
    }
    return false;
}

}  // namespace

class SafeParser : public xercesc::XercesDOMParser, private xercesc::ErrorHandler {
public:
    SafeParser(Document& document, const QxXMLLimits& limits)
        : m_document(document), m_limits(limits) {
        setValidationScheme(Val_Never);
        useScanner(xercesc::XMLUni::fgWFXMLScanner);
        getScanner()->setDisallowDTD(true);
        setDisableDefaultEntityResolution(true);
        setLoadExternalDTD(false);
        setCreateEntityReferenceNodes(false);
        setCreateCommentNodes(false);
        setDoNamespaces(false);
        setDoSchema(false);
        setErrorHandler(this);
    }

    struct Fault {
        std::string text;
        int line = 0;
        int column = 0;
    };
    const Fault* pFault() const { return m_hasFault ? &m_fault : nullptr; }

private:
    [[noreturn]] void refuse(const std::string& why) const {
        throw DocumentFault(why, static_cast<int>(getScanner()->getLocator()->getLineNumber()));
    }

    void startElement(const xercesc::XMLElementDecl& decl, const unsigned int uri,
                      const XMLCh* const prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                      const XMLSize_t count, const bool isEmpty, const bool isRoot) override {
        if (++m_depth > m_limits.depth) {
            refuse("elements are nested more than " + std::to_string(m_limits.depth) + " deep");
        }
        if (m_document.m_lines.size() / 8 >= m_limits.objects) {
            refuse("more elements than " + std::to_string(m_limits.objects) + " objects need");
        }
        for (XMLSize_t i = 0; i < count; ++i) {
            if (xercesc::XMLString::stringLen(attributes.elementAt(i)->getValue()) >
                m_limits.attributeLength) {
                refuse("an attribute is longer than " + std::to_string(m_limits.attributeLength) +
                       " characters");
            }
        }
        m_document.m_lines.push_back(
            static_cast<std::uint32_t>(getScanner()->getLocator()->getLineNumber()));
        XercesDOMParser::startElement(decl, uri, prefix, attributes, count, isEmpty, isRoot);
    }
    void endElement(const xercesc::XMLElementDecl& decl, const unsigned int uri, const bool isRoot,
                    const XMLCh* const prefix) override {
        --m_depth;
        XercesDOMParser::endElement(decl, uri, isRoot, prefix);
    }
    void docCharacters(const XMLCh* const, const XMLSize_t, const bool) override {}
    void docComment(const XMLCh* const) override {}
    void docPI(const XMLCh* const, const XMLCh* const) override {}
    void ignorableWhitespace(const XMLCh* const, const XMLSize_t, const bool) override {}
    void doctypeDecl(const xercesc::DTDElementDecl&, const XMLCh* const, const XMLCh* const,
                     const bool, const bool) override {
        refuse("a document type is not allowed");
    }

    void warning(const xercesc::SAXParseException&) override {}
    void error(const xercesc::SAXParseException& fault) override { note(fault); }
    void fatalError(const xercesc::SAXParseException& fault) override { note(fault); }
    void resetErrors() override { m_hasFault = false; }
    void note(const xercesc::SAXParseException& fault) {
        if (!m_hasFault) {
            m_hasFault = true;
            m_fault = {toUtf8(fault.getMessage()), static_cast<int>(fault.getLineNumber()),
                       static_cast<int>(fault.getColumnNumber())};
        }
    }

    Document& m_document;
    const QxXMLLimits& m_limits;
    std::size_t m_depth = 0;
    bool m_hasFault = false;
    Fault m_fault;
};

Document::Document(QxTopLevelXMLReader& reader) : m_reader(reader) {}

void Document::parse(std::string bytes, const QxXMLLimits& limits) {
    startXerces();
    const xercesc::DOMDocument* document = nullptr;
    try {
        m_parser = std::make_unique<SafeParser>(*this, limits);
        const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.data()),
                                                bytes.size(), u"document", false);
        m_parser->parse(source);
        document = m_parser->getDocument();
    } catch (...) {
        rethrowAsFault();
    }
    if (const SafeParser::Fault* fault = m_parser->pFault()) {
        m_reader.parsingError(fault->text, fault->line, fault->column);
        throw DocumentFault("no well-formed document", fault->line);
    }
    m_top = document != nullptr ? document->getDocumentElement() : nullptr;
    if (m_top == nullptr) {
        throw DocumentFault("no document");
    }
    if (QxXMLUtilities::hasName(*m_top, names::Top) == 0) {
        throw DocumentFault(
            "no drawing: the document begins with \"" + toUtf8(QxXMLUtilities::name(*m_top)) + "\"",
            lineOf(*m_top));
    }
    std::string().swap(bytes);
    m_ids.reserve(m_lines.size() / 4);
    collectIds();
    if (m_ids.size() > limits.objects) {
        throw DocumentFault("more than " + std::to_string(limits.objects) + " objects");
    }
}

Document::~Document() = default;

void Document::addId(const QxDOMElement& element, ElementKind kind) {
    const std::u16string_view id = QxXMLUtilities::attribute(element, names::Id);
    if (!id.empty() && !m_ids.emplace(id, Entry{&element, nullptr, kind}).second) {
        throw DocumentFault("the identifier \"" + toUtf8(id) + "\" stands twice", lineOf(element));
    }
}

void Document::checkNumbers(const QxDOMElement& element) {
    const xercesc::DOMNamedNodeMap* const attributes = element.getAttributes();
    for (XMLSize_t i = 0, n = attributes->getLength(); i < n; ++i) {
        const xercesc::DOMNode* const one = attributes->item(i);
        if (!isPlainNumber(one->getNodeValue())) {
            m_reader.repair(element, numberFault(one->getNodeName(), one->getNodeValue()));
        }
    }
}

/// The element that begins next in the document; null behind the last one.
const QxDOMElement* Document::pAfter(const QxDOMElement* element) const {
    const QxDOMElement* next = QxXMLUtilities::pFirst(*element);
    while (next == nullptr && element != m_top) {
        next = QxXMLUtilities::pNext(*element);
        if (next == nullptr) {
            element = static_cast<const QxDOMElement*>(element->getParentNode());
        }
    }
    return next;
}

/// One walk over all elements: their identifiers, and numbers that are none or out of range.
void Document::collectIds() {
    struct Known {
        ElementKind kind = ElementKind::None;
        bool isMeasure = false;
    };
    // The names of elements are kept once in a document, so that their addresses tell them apart.
    std::unordered_map<const XMLCh*, Known> kinds;
    const QxDOMElement* element = m_top;
    while (element != nullptr) {
        const XMLCh* const name = element->getNodeName();
        const auto [known, isNew] = kinds.try_emplace(name);
        if (isNew) {
            known->second = {kindOf(name), isMeasure(name)};
        }
        if (known->second.kind != ElementKind::None) {
            addId(*element, known->second.kind);
        }
        if (known->second.isMeasure) {
            checkNumbers(*element);
        }
        element = pAfter(element);
    }
}

Document::Entry* Document::find(std::u16string_view id) {
    const auto found = m_ids.find(id);
    return found != m_ids.end() ? &found->second : nullptr;
}

int Document::lineOf(const QxDOMElement& element) {
    if (m_places.empty()) {
        std::uint32_t place = 0;
        for (const QxDOMElement* one = m_top; one != nullptr; one = pAfter(one)) {
            m_places.emplace(one, place++);
        }
    }
    const auto found = m_places.find(&element);
    return found != m_places.end() && found->second < m_lines.size()
               ? static_cast<int>(m_lines[found->second])
               : 0;
}

}  // namespace qx::internal
