// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/HtmlLabels.h"

#include <algorithm>
#include <vector>

#include "import/CharacterEntities.h"
#include "import/ImportLimits.h"
#include "import/SourceText.h"

namespace qxdraw {

namespace {

constexpr std::string_view Blanks = " \t\r\n";

/// The next tag, without its brackets, or text of the label; takes it off.
struct Token {
    bool isTag = false;
    std::string_view text;
};

Token takeToken(std::string_view& label) {
    Token token;
    token.isTag = label.front() == '<';
    if (label.starts_with("<!--")) {
        const std::size_t end = label.find("-->", 4);
        label.remove_prefix(end == std::string_view::npos ? label.size() : end + 3);
        return token;
    }
    if (!token.isTag) {
        token.text = label.substr(0, label.find('<'));
        label.remove_prefix(token.text.size());
        return token;
    }
    char quote = '\0';
    std::size_t end = 1;
    while (end < label.size() && (quote != '\0' || label[end] != '>')) {
        const char c = label[end++];
        if (quote == '\0' ? c == '"' || c == '\'' : c == quote) {
            quote = quote == '\0' ? c : '\0';
        }
    }
    token.text = label.substr(1, end - 1);
    label.remove_prefix(std::min(end + 1, label.size()));
    return token;
}

std::string tagName(std::string_view tag) {
    return toLowerAscii(tag.substr(0, tag.find_first_of(" \t\r\n/", 1)));
}

std::string withoutLineEnds(std::string_view text) {
    std::string result(text);
    std::replace_if(
        result.begin(), result.end(),
        [](char c) { return Blanks.find(c) != std::string_view::npos; }, ' ');
    return result;
}

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \n");
    return first == std::string::npos
               ? std::string()
               : text.substr(first, text.find_last_not_of(" \n") - first + 1);
}

/// The value of PORT in a tag; empty when there is none.
std::string portOf(std::string_view tag) {
    std::size_t at = std::min(tag.find_first_of(Blanks), tag.size());
    while (at < tag.size()) {
        const std::size_t name = std::min(tag.find_first_not_of(" \t\r\n/", at), tag.size());
        const std::size_t equals = std::min(tag.find('=', name), tag.size());
        const std::size_t open = std::min(tag.find_first_of("\"'", equals), tag.size());
        if (open == tag.size()) {
            break;
        }
        const std::size_t close = std::min(tag.find(tag[open], open + 1), tag.size());
        if (toLowerAscii(tag.substr(name, 4)) == "port") {
            return decodeCharacterEntities(tag.substr(open + 1, close - open - 1));
        }
        at = close + 1;
    }
    return {};
}

/// Builds the table from its tags. Tables, rows and cells that are open lie on a stack.
class TableBuilder {
public:
    bool open(const std::string& name, std::string_view tag) {
        const bool isTable = name == "table";
        const std::string_view around = m_open.empty() ? "" : m_open.back().name;
        if (around != (isTable        ? (m_open.empty() ? "" : "td")
                       : name == "tr" ? "table"
                                      : "tr") ||
            (isTable && m_open.empty() && m_result) ||
            m_open.size() > std::size_t{3} * ImportLimits::FieldDepth) {
            return false;
        }
        Element& element = m_open.emplace_back();
        element.name = isTable ? "table" : name == "tr" ? "tr" : "td";
        element.field.port = portOf(tag);
        element.field.isStacked = element.field.isTable = isTable;
        return true;
    }

    bool close(const std::string& name) {
        if (m_open.empty() || m_open.back().name != name) {
            return false;
        }
        DocumentField field = std::move(m_open.back().field);
        m_open.pop_back();
        if (m_open.empty()) {
            m_result = std::move(field);
        } else if (name == "table") {
            // The cell and its table become one field, so that the nesting is that of the label.
            DocumentField& cell = m_open.back().field;
            field.port = field.port.empty() ? cell.port : field.port;
            cell = std::move(field);
        } else {
            if (name == "td") {
                field.text =
                    field.parts.empty() ? decodeCharacterEntities(trimmed(field.text)) : "";
            }
            m_open.back().field.parts.push_back(std::move(field));
        }
        return true;
    }

    /// Text that stands where none may makes the label no table.
    bool addText(std::string_view text) {
        if (!m_open.empty() && m_open.back().name == "td") {
            m_open.back().field.text += text;
            return true;
        }
        return text.find_first_not_of(" \n") == std::string_view::npos;
    }

    std::optional<DocumentField> finish() {
        const bool isWhole = m_open.empty() && m_result && !m_result->parts.empty();
        return isWhole ? std::move(m_result) : std::nullopt;
    }

private:
    struct Element {
        std::string_view name;
        DocumentField field;
    };

    std::vector<Element> m_open;
    std::optional<DocumentField> m_result;
};

/// What a tag puts in the place of itself.
std::string_view tagReplacement(std::string_view tag) {
    const std::string name = tagName(tag);
    return name == "br" || name == "/tr" ? "\n" : name == "td" ? " " : "";
}

}  // namespace

std::optional<DocumentField> parseHtmlTable(std::string_view label) {
    TableBuilder builder;
    while (!label.empty()) {
        const Token token = takeToken(label);
        if (!token.isTag) {
            if (!builder.addText(withoutLineEnds(token.text))) {
                return std::nullopt;
            }
            continue;
        }
        const std::string name = tagName(token.text);
        const bool isClosing = name.starts_with('/');
        const std::string element = isClosing ? name.substr(1) : name;
        bool isFine = true;
        if (element == "br") {
            isFine = builder.addText("\n");
        } else if (element == "table" || element == "tr" || element == "td") {
            isFine = isClosing ? builder.close(element) : builder.open(element, token.text);
            if (isFine && !isClosing && token.text.ends_with('/')) {
                isFine = builder.close(element);
            }
        }
        if (!isFine) {
            return std::nullopt;
        }
    }
    return builder.finish();
}

std::string plainHtmlLabel(std::string_view label) {
    std::string text;
    while (!label.empty()) {
        const Token token = takeToken(label);
        text += token.isTag ? std::string(tagReplacement(token.text)) : withoutLineEnds(token.text);
    }
    return decodeCharacterEntities(trimmed(text));
}

}  // namespace qxdraw
