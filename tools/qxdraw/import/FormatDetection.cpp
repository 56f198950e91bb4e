// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/FormatDetection.h"

#include <algorithm>
#include <string>

#include "import/SourceText.h"

namespace qxdraw {

namespace {

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

std::string_view skipPast(std::string_view text, std::string_view end) {
    const std::size_t at = text.find(end);
    return at == std::string_view::npos ? std::string_view{} : text.substr(at + end.size());
}

/// The text from its first token on: blanks and the comments of DOT and GML are passed over.
std::string_view withoutLeadingComments(std::string_view text) {
    for (;;) {
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
        if (text.starts_with("//") || text.starts_with('#')) {
            text = skipPast(text, "\n");
        } else if (text.starts_with("/*")) {
            text = skipPast(text, "*/");
        } else {
            return text;
        }
    }
}

bool isUtf16Markup(std::string_view text) {
    constexpr std::string_view LittleEndian("\xFF\xFE<\0", 4);
    constexpr std::string_view BigEndian("\xFE\xFF\0<", 4);
    return text.starts_with(LittleEndian) || text.starts_with(BigEndian);
}

/// `text` starts at a word that could open a DOT or a GML text.
DocumentFormat formatOfFirstWord(std::string_view text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isWordCharacter);
    const std::size_t length = static_cast<std::size_t>(end - text.begin());
    const std::string word = toLowerAscii(text.substr(0, length));
    const std::string_view next = withoutLeadingComments(text.substr(length));
    if (next.starts_with('[')) {
        return DocumentFormat::Gml;
    }
    if (word == "graph" || word == "digraph" || word == "strict") {
        return DocumentFormat::Dot;
    }
    // GML opens with `Creator "..."` or `Version 1` as a rule.
    return word == "creator" || word == "version" ? DocumentFormat::Gml : DocumentFormat::Unknown;
}

DocumentFormat formatOfEnding(std::string_view path) {
    const std::size_t dot = path.find_last_of("./");
    const std::string ending =
        dot == std::string_view::npos ? std::string() : toLowerAscii(path.substr(dot));
    if (ending == ".dot" || ending == ".gv") {
        return DocumentFormat::Dot;
    }
    if (ending == ".graphml" || ending == ".xml") {
        return DocumentFormat::GraphML;
    }
    return ending == ".gml" ? DocumentFormat::Gml : DocumentFormat::Unknown;
}

}  // namespace

DocumentFormat detectFormat(std::string_view text, std::string_view path) {
    if (isUtf16Markup(text)) {
        return DocumentFormat::GraphML;
    }
    text = withoutByteOrderMark(text);
    if (text.find_first_not_of(" \t\r\n") == std::string_view::npos) {
        return DocumentFormat::Empty;
    }
    const std::string_view start = withoutLeadingComments(text);
    if (start.starts_with('<')) {
        return DocumentFormat::GraphML;
    }
    if (start.starts_with('{') || start.starts_with('[')) {
        return DocumentFormat::Unknown;
    }
    const DocumentFormat format = formatOfFirstWord(start);
    return format == DocumentFormat::Unknown ? formatOfEnding(path) : format;
}

}  // namespace qxdraw
