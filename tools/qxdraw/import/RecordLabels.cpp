// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/RecordLabels.h"

#include "import/ImportLimits.h"

namespace qxdraw {

namespace {

class RecordParser {
public:
    explicit RecordParser(std::string_view label) : m_label(label) {}

    std::optional<DocumentField> parse(bool isStacked) {
        DocumentField record;
        if (!parseFields(record, isStacked, 0) || m_at < m_label.size()) {
            return std::nullopt;
        }
        return record;
    }

private:
    bool isAtEnd() const { return m_at >= m_label.size(); }
    bool isAt(char c) const { return !isAtEnd() && m_label[m_at] == c; }

    /// Fields up to a closing brace, or up to the end.
    bool parseFields(DocumentField& around, bool isStacked, int depth) {
        if (depth > ImportLimits::FieldDepth) {
            return false;
        }
        around.isStacked = isStacked;
        for (;;) {
            if (!parseField(around.parts.emplace_back(), !isStacked, depth)) {
                return false;
            }
            if (!isAt('|')) {
                return true;
            }
            ++m_at;
        }
    }

    bool parseField(DocumentField& field, bool isStacked, int depth) {
        bool hasPort = false;
        while (!isAtEnd() && !isAt('|') && !isAt('}')) {
            const bool isFresh = field.text.empty() && field.parts.empty();
            if (isAt('{')) {
                if (!isFresh || !parseNested(field, isStacked, depth)) {
                    return false;
                }
            } else if (isAt('<')) {
                if (hasPort || !parsePort(field.port)) {
                    return false;
                }
                hasPort = true;
            } else if (!takeText(field.text) || (!field.parts.empty() && !field.text.empty())) {
                return false;
            }
        }
        if (field.text.ends_with(' ') && !field.text.ends_with("\\ ")) {
            field.text.pop_back();
        }
        return true;
    }

    bool parseNested(DocumentField& field, bool isStacked, int depth) {
        ++m_at;
        if (!parseFields(field, isStacked, depth + 1) || !isAt('}')) {
            return false;
        }
        ++m_at;
        return true;
    }

    bool parsePort(std::string& port) {
        ++m_at;
        while (!isAtEnd() && !isAt('>')) {
            if (isAt('<') || isAt('{') || isAt('}') || isAt('|') || !takeText(port)) {
                return false;
            }
        }
        if (isAtEnd()) {
            return false;
        }
        ++m_at;
        port.erase(port.find_last_not_of(' ') + 1);
        return true;
    }

    /// One character or escape; of several blanks the first, and none at the start.
    bool takeText(std::string& text) {
        const char c = m_label[m_at++];
        if (c == '>') {
            return false;
        }
        if (c != '\\') {
            if ((c != ' ' && c != '\n') || (!text.empty() && !text.ends_with(' '))) {
                text += c == '\n' ? ' ' : c;
            }
            return true;
        }
        if (!isAtEnd()) {
            const char escaped = m_label[m_at++];
            if (std::string_view("{}|<>").find(escaped) == std::string_view::npos) {
                text += '\\';
            }
            text += escaped;
        }
        return true;
    }

    std::string_view m_label;
    std::size_t m_at = 0;
};

}  // namespace

std::optional<DocumentField> parseRecordLabel(std::string_view label, bool isStacked) {
    return RecordParser(label).parse(isStacked);
}

}  // namespace qxdraw
