// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxText.h"

#include <functional>
#include <ostream>

#include "qx/foundation/util/QxDebugStream.h"

namespace {

constexpr char32_t Replacement = 0xFFFD;

constexpr bool isHighSurrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}

constexpr bool isLowSurrogate(char32_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

/// What a lead byte announces: how many continuation bytes follow, and the range of the first of
/// them, which rules out overlong forms, surrogates and values beyond U+10FFFF.
struct Lead {
    int following;
    unsigned char low;
    unsigned char high;
};

constexpr Lead leadOf(unsigned char byte) {
    if (byte >= 0xC2 && byte <= 0xDF) {
        return {1, 0x80, 0xBF};
    }
    if (byte >= 0xE0 && byte <= 0xEF) {
        const auto low = static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80);
        const auto high = static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF);
        return {2, low, high};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        const auto low = static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80);
        const auto high = static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF);
        return {3, low, high};
    }
    return {0, 0, 0};
}

/// Takes one character, or the longest beginning of one that cannot be completed, off the front.
char32_t takeCharacter(std::string_view& utf8) {
    const auto first = static_cast<unsigned char>(utf8.front());
    utf8.remove_prefix(1);
    if (first < 0x80) {
        return first;
    }
    Lead lead = leadOf(first);
    if (lead.following == 0) {
        return Replacement;
    }
    char32_t character = first & (0x3FU >> lead.following);
    for (; lead.following > 0; lead = {lead.following - 1, 0x80, 0xBF}) {
        const auto byte = static_cast<unsigned char>(utf8.empty() ? '\0' : utf8.front());
        if (byte < lead.low || byte > lead.high) {
            return Replacement;
        }
        utf8.remove_prefix(1);
        character = (character << 6) | (byte & 0x3FU);
    }
    return character;
}

void appendWide(std::wstring& wide, char32_t character) {
    if (sizeof(wchar_t) == 2 && character > 0xFFFF) {
        character -= 0x10000;
        wide += static_cast<wchar_t>(0xD800 + (character >> 10));
        character = 0xDC00 + (character & 0x3FF);
    }
    wide += static_cast<wchar_t>(character);
}

void appendUtf8(std::string& utf8, char32_t c) {
    const auto append = [&utf8](char32_t byte) { utf8 += static_cast<char>(byte); };
    if (c < 0x80) {
        append(c);
    } else if (c < 0x800) {
        append(0xC0 | (c >> 6));
        append(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        append(0xE0 | (c >> 12));
        append(0x80 | ((c >> 6) & 0x3F));
        append(0x80 | (c & 0x3F));
    } else {
        append(0xF0 | (c >> 18));
        append(0x80 | ((c >> 12) & 0x3F));
        append(0x80 | ((c >> 6) & 0x3F));
        append(0x80 | (c & 0x3F));
    }
}

}  // namespace

QxText& QxText::operator=(const wchar_t* string) {
    m_string = string != nullptr ? std::wstring(string) : std::wstring();
    return *this;
}

std::wstring QxText::decodeUtf8(std::string_view utf8) {
    std::wstring wide;
    wide.reserve(utf8.size());
    while (!utf8.empty()) {
        appendWide(wide, takeCharacter(utf8));
    }
    return wide;
}

std::string QxText::encodeUtf8(std::wstring_view wide) {
    std::string utf8;
    utf8.reserve(wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i) {
        auto c = static_cast<char32_t>(wide[i]);
        const char32_t next = i + 1 < wide.size() ? static_cast<char32_t>(wide[i + 1]) : 0;
        if (isHighSurrogate(c) && isLowSurrogate(next)) {
            c = 0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00);
            ++i;
        } else if (isHighSurrogate(c) || isLowSurrogate(c) || c > 0x10FFFF) {
            c = Replacement;
        }
        appendUtf8(utf8, c);
    }
    return utf8;
}

std::size_t QxText::hashCode() const {
    return std::hash<std::wstring>{}(m_string);
}

int QxText::equals(const QxObject* other) const {
    const auto* text = dynamic_cast<const QxText*>(other);
    return text != nullptr && text->m_string == m_string ? 1 : 0;
}

void QxText::copyObject(const QxObject* source) {
    copyAttributes(source);
}

void QxText::copyAttributes(const QxObject* source) {
    if (const auto* text = dynamic_cast<const QxText*>(source); text != nullptr) {
        *this = *text;
    }
}

void QxText::debugOutput(int depth) const {
    qxDebugIndent(depth) << '"' << toUtf8() << "\"\n";
}

QxObject* QxText::vCloneObject() const {
    return new QxText(*this, QxDeepCopy);
}

QxObject* QxText::vCloneAttributes() const {
    return new QxText(*this, QxAttributeCopy);
}
