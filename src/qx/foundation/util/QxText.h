// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

#include "qx/foundation/util/QxObject.h"

/// An object that holds a text of wide characters.
class QX_API QxText : public QxObject {
public:
    QxText() = default;
    /// Null makes an empty text.
    explicit QxText(const wchar_t* string) : m_string(string != nullptr ? string : L"") {}
    explicit QxText(std::wstring string) noexcept : m_string(std::move(string)) {}
    QxText(const QxText& source) = default;
    QxText(const QxText& source, QxDeepFlagEnum) : QxText(source) {}
    QxText& operator=(const QxText& source) = default;
    QxText& operator=(const wchar_t* string);

    /// Zero terminated, never null; valid until the text changes.
    const wchar_t* pString() const noexcept { return m_string.c_str(); }
    const std::wstring& string() const noexcept { return m_string; }
    std::int32_t length() const noexcept { return static_cast<std::int32_t>(m_string.size()); }

    /// A text read from UTF-8. Each ill-formed sequence becomes one U+FFFD; bytes after it that can
    /// begin a character do.
    static QxText fromUtf8(std::string_view utf8) { return QxText(decodeUtf8(utf8)); }
    /// The text in UTF-8. Surrogate pairs become one character; lone surrogates and values beyond
    /// U+10FFFF become U+FFFD.
    std::string toUtf8() const { return encodeUtf8(m_string); }

    /// The same conversions for plain strings.
    static std::wstring decodeUtf8(std::string_view utf8);
    static std::string encodeUtf8(std::wstring_view wide);

    /// Texts are equal when their contents are.
    std::size_t hashCode() const override;
    int equals(const QxObject* other) const override;

    /// The whole text is an attribute: both copies take it over from another text.
    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;
    void debugOutput(int depth) const override;
    QxText* cloneObject() const { return static_cast<QxText*>(vCloneObject()); }
    QxText* cloneAttributes() const { return static_cast<QxText*>(vCloneAttributes()); }

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    std::wstring m_string;
};
