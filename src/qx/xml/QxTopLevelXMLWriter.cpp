// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxTopLevelXMLWriter.h"

#include <ostream>

#include "qx/xml/internal/Names.h"
#include "qx/xml/internal/NewDocument.h"
#include "qx/xml/internal/ObjectNumbers.h"
#include "qx/xml/internal/Serializer.h"
#include "qx/xml/internal/WholeFile.h"
#include "qx/xml/internal/Xerces.h"

using qx::internal::DocumentFault;
using qx::internal::ObjectNumbers;

QxTopLevelXMLWriter::QxTopLevelXMLWriter() : m_numbers(std::make_unique<ObjectNumbers>()) {}

QxTopLevelXMLWriter::QxTopLevelXMLWriter(const char* fileName)
    : QxTopLevelXMLWriter(fileName, 0, 1) {}

QxTopLevelXMLWriter::QxTopLevelXMLWriter(const char* fileName, int, int indented)
    : QxTopLevelXMLWriter() {
    m_fileName = fileName != nullptr ? fileName : "";
    m_isIndented = indented != 0;
}

QxTopLevelXMLWriter::QxTopLevelXMLWriter(std::string* buffer, int, int indented)
    : QxTopLevelXMLWriter() {
    m_buffer = buffer;
    m_isIndented = indented != 0;
}

QxTopLevelXMLWriter::QxTopLevelXMLWriter(std::ostream* stream, int, int indented)
    : QxTopLevelXMLWriter() {
    m_stream = stream;
    m_isIndented = indented != 0;
}

QxTopLevelXMLWriter::~QxTopLevelXMLWriter() = default;

std::string QxTopLevelXMLWriter::pID(const QxObject* object) {
    if (object == nullptr) {
        return {};
    }
    const ObjectNumbers::Number& number = m_numbers->of(*object);
    return number.letter + std::to_string(number.number);
}

void QxTopLevelXMLWriter::writeID(QxDOMElement& element, QxXMLUtilities::Name attribute,
                                  const QxObject* object) {
    QxXMLUtilities::writeValue(element, attribute, pID(object));
}

std::uint32_t QxTopLevelXMLWriter::number(const QxObject* object) {
    return object != nullptr ? m_numbers->of(*object).number : 0;
}

int QxTopLevelXMLWriter::hasID(const QxObject* object) const {
    return object != nullptr && m_numbers->has(*object) ? 1 : 0;
}

int QxTopLevelXMLWriter::writeDocument() {
    m_numbers = std::make_unique<ObjectNumbers>();
    try {
        qx::internal::NewDocument document(qx::names::Top);
        QxXMLUtilities::writeInt(document.top(), qx::names::Version, 1);
        populateDOMElement(document.top());
        m_numbers = std::make_unique<ObjectNumbers>();  // makes room
        write(document.top());
    } catch (const DocumentFault& fault) {
        fatalError(fault.what());
        return 0;
    } catch (...) {
        fatalError(qx::internal::describeFault());
        return 0;
    }
    return 1;
}

void QxTopLevelXMLWriter::write(const QxDOMElement& top) {
    using Bytes = std::string_view;
    if (m_buffer != nullptr) {
        std::string all;
        qx::internal::serialize(top, m_isIndented, [&](Bytes bytes) { all += bytes; });
        *m_buffer = std::move(all);
    } else if (m_stream != nullptr) {
        qx::internal::serialize(top, m_isIndented, [&](Bytes bytes) {
            m_stream->write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        });
        if (!m_stream->flush()) {
            throw DocumentFault("the stream cannot be written");
        }
    } else if (!m_fileName.empty()) {
        qx::internal::WholeFile file(m_fileName);
        qx::internal::serialize(top, m_isIndented, [&](Bytes bytes) { file.write(bytes); });
        file.commit();
    } else {
        throw DocumentFault("there is no output");
    }
}

void QxTopLevelXMLWriter::warning(const std::string& message) {
    m_messages.push_back({QxXMLWarning, message, 0, 0});
}

void QxTopLevelXMLWriter::fatalError(const std::string& message) {
    m_messages.push_back({QxXMLFatalError, message, 0, 0});
}
