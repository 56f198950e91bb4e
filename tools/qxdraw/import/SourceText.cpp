// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/SourceText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "import/ImportError.h"
#include "import/ImportLimits.h"

namespace qxdraw {

namespace {

/// Length of the well-formed UTF-8 sequence at the start of `text`; 0 when there is none.
std::size_t utf8SequenceLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) {
        return 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) {
            return 0;
        }
    }
    const unsigned char second = byte(1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool outside = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
    return overlong || outside ? 0 : length;
}

}  // namespace

std::string readSourceFile(const std::string& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                               &std::fclose);
    if (!file) {
        throw ImportError(std::string("cannot be opened: ") + std::strerror(errno));
    }
    std::string text;
    std::array<char, 65536> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file.get())) {
        text.append(block.data(), count);
        if (text.size() > ImportLimits::FileBytes) {
            throw ImportError("larger than " +
                              std::to_string(ImportLimits::FileBytes / (1024 * 1024)) + " MB");
        }
    }
    if (std::ferror(file.get()) != 0) {
        throw ImportError(std::string("cannot be read: ") + std::strerror(errno));
    }
    return text;
}

int lineOfOffset(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    return 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
}

std::size_t findInvalidUtf8(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t length = utf8SequenceLength(text.substr(at));
        if (length == 0) {
            return at;
        }
        at += length;
    }
    return std::string_view::npos;
}

void requireUtf8Text(std::string_view text) {
    const std::size_t invalid = findInvalidUtf8(text);
    if (invalid != std::string_view::npos) {
        throw ImportError("bytes that are not UTF-8", lineOfOffset(text, invalid));
    }
    const std::size_t nul = text.find('\0');
    if (nul != std::string_view::npos) {
        throw ImportError("a NUL byte in the text", lineOfOffset(text, nul));
    }
}

std::string latin1ToUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size() + text.size() / 8);
    for (const char c : text) {
        appendUtf8(result, static_cast<unsigned char>(c));
    }
    return result;
}

void appendUtf8(std::string& text, std::uint32_t character) {
    const auto append = [&](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF)) {
        character = 0xFFFD;
    }
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0 | character >> 6);
        append(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        append(0xE0 | character >> 12);
        append(0x80 | (character >> 6 & 0x3F));
        append(0x80 | (character & 0x3F));
    } else {
        append(0xF0 | character >> 18);
        append(0x80 | (character >> 12 & 0x3F));
        append(0x80 | (character >> 6 & 0x3F));
        append(0x80 | (character & 0x3F));
    }
}

std::string_view withoutByteOrderMark(std::string_view text) {
    return text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text;
}

std::string toLowerAscii(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return result;
}

}  // namespace qxdraw
