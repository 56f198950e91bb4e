// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/internal/EscapedText.h"

#include <charconv>
#include <cstdint>

namespace qx::internal {

namespace {

bool canStand(std::uint32_t c) {
    if (c < 0x20) {
        return c == '\t' || c == '\n' || c == '\r';
    }
    return c < 0xD800 || (c >= 0xE000 && c < 0xFFFE) || (c >= 0x10000 && c < 0x110000);
}

void append(std::u16string& text, std::uint32_t c) {
    if (c < 0x10000) {
        text += static_cast<char16_t>(c);
    } else {
        text += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
        text += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    }
}

}  // namespace

EscapedText::EscapedText(std::wstring_view text) {
    bool isEscaped = false;
    for (const wchar_t one : text) {
        const auto c = static_cast<std::uint32_t>(one);
        append(m_plain, canStand(c) ? c : 0xFFFD);
        isEscaped = isEscaped || !canStand(c);
    }
    for (std::size_t i = 0; isEscaped && i < text.size(); ++i) {
        const auto c = static_cast<std::uint32_t>(text[i]);
        if (canStand(c) && c != '\\') {
            append(m_escaped, c);
            continue;
        }
        m_escaped += u'\\';
        if (c == '\\') {
            m_escaped += u'\\';
            continue;
        }
        char hex[16];
        const char* const end = std::to_chars(hex, hex + sizeof hex, c, 16).ptr;
        m_escaped.append(static_cast<const char*>(hex), end);
        m_escaped += u';';
    }
}

std::wstring toWide(std::u16string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::uint32_t c = text[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] < 0xE000) {
            c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00U);
        }
        wide += static_cast<wchar_t>(c);
    }
    return wide;
}

std::wstring unescaped(std::u16string_view text) {
    const std::wstring wide = toWide(text);
    std::wstring plain;
    for (std::size_t i = 0; i < wide.size(); ++i) {
        if (wide[i] != L'\\') {
            plain += wide[i];
            continue;
        }
        if (i + 1 < wide.size() && wide[i + 1] == L'\\') {
            plain += wide[++i];
            continue;
        }
        const std::size_t end = wide.find(L';', i);
        std::string hex;
        for (std::size_t k = i + 1; end != std::wstring::npos && k < end && k < i + 10; ++k) {
            hex += wide[k] < 0x80 ? static_cast<char>(wide[k]) : '?';
        }
        std::uint32_t c = 0;
        const auto [last, error] = std::from_chars(hex.data(), hex.data() + hex.size(), c, 16);
        const bool isEscape = error == std::errc() && last == hex.data() + hex.size() &&
                              end == i + 1 + hex.size() && c != 0;
        plain += isEscape ? static_cast<wchar_t>(c) : wide[i];
        i = isEscape ? end : i;
    }
    return plain;
}

}  // namespace qx::internal
