// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/internal/Xerces.h"

#include <mutex>
#include <new>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

namespace qx::internal {

void startXerces() {
    static std::once_flag once;
    try {
        std::call_once(once, [] { xercesc::XMLPlatformUtils::Initialize(); });
    } catch (...) {
        rethrowAsFault();
    }
}

void rethrowAsFault() {
    try {
        throw;
    } catch (const DocumentFault&) {
        throw;
    } catch (const xercesc::OutOfMemoryException&) {
        throw DocumentFault("out of memory");
    } catch (const std::bad_alloc&) {
        throw DocumentFault("out of memory");
    } catch (const xercesc::XMLException& fault) {
        throw DocumentFault(toUtf8(fault.getMessage()), static_cast<int>(fault.getSrcLine()));
    } catch (const xercesc::SAXException& fault) {
        throw DocumentFault(toUtf8(fault.getMessage()));
    } catch (const xercesc::DOMException& fault) {
        throw DocumentFault(toUtf8(fault.getMessage()));
    } catch (const std::exception& fault) {
        throw DocumentFault(fault.what());
    }
}

std::string describeFault() {
    try {
        rethrowAsFault();
    } catch (const DocumentFault& fault) {
        return fault.what();
    }
}

std::string toUtf8(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        const bool isPair = c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() &&
                            text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
        if (isPair) {
            c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00U);
        } else if (c >= 0xD800 && c < 0xE000) {
            c = 0xFFFD;
        }
        if (c < 0x80) {
            bytes += static_cast<char>(c);
        } else if (c < 0x800) {
            bytes += static_cast<char>(0xC0 | (c >> 6));
            bytes += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            if (c < 0x10000) {
                bytes += static_cast<char>(0xE0 | (c >> 12));
            } else {
                bytes += static_cast<char>(0xF0 | (c >> 18));
                bytes += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            }
            bytes += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            bytes += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return bytes;
}

}  // namespace qx::internal
