// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/GmlParser.h"

#include <algorithm>

#include "import/CharacterEntities.h"
#include "import/ImportError.h"
#include "import/ImportLimits.h"
#include "import/Numbers.h"
#include "import/SourceText.h"

namespace qxdraw {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

class GmlParser {
public:
    explicit GmlParser(std::string_view text) : m_text(text) {}

    GmlEntry parse() {
        GmlEntry top;
        top.line = 1;
        readMembers(top, 0);
        return top;
    }

private:
    bool atEnd() const { return m_at == m_text.size(); }
    char current() const { return m_text[m_at]; }

    void advance() {
        if (current() == '\n') {
            ++m_line;
        }
        ++m_at;
    }

    /// Moves past blanks and past comments, which run from '#' to the end of their line.
    void skipBlanks() {
        while (!atEnd() && (isBlank(current()) || current() == '#')) {
            if (current() == '#') {
                m_at = std::min(m_text.find('\n', m_at), m_text.size());
            } else {
                advance();
            }
        }
    }

    /// Reads entries up to the list's closing bracket, or the end of the text at depth 0.
    void readMembers(GmlEntry& list, int depth) {
        for (;;) {
            skipBlanks();
            if (atEnd()) {
                if (depth > 0) {
                    throw ImportError("'[' of '" + list.key + "' is never closed", list.line);
                }
                return;
            }
            if (current() == ']' && depth > 0) {
                advance();
                return;
            }
            list.members.push_back(readEntry(depth));
        }
    }

    GmlEntry readEntry(int depth) {
        if (!isLetter(current())) {
            throw ImportError("a key was expected here", m_line);
        }
        GmlEntry entry;
        const std::size_t start = m_at;
        while (!atEnd() && (isLetter(current()) || isDigit(current()))) {
            advance();
        }
        entry.key = m_text.substr(start, m_at - start);
        skipBlanks();
        entry.line = m_line;
        readValue(entry, depth);
        return entry;
    }

    void readValue(GmlEntry& entry, int depth) {
        if (!atEnd() && current() == '[') {
            if (depth == ImportLimits::NestingDepth) {
                throw ImportError("more than " + std::to_string(depth) + " lists inside each other",
                                  m_line);
            }
            advance();
            readMembers(entry, depth + 1);
        } else if (!atEnd() && current() == '"') {
            entry.kind = GmlEntry::Kind::String;
            entry.text = readString();
        } else {
            entry.kind = GmlEntry::Kind::Number;
            entry.text = readNumberText(entry.key);
        }
    }

    std::string readString() {
        const int line = m_line;
        advance();
        const std::size_t start = m_at;
        while (!atEnd() && current() != '"') {
            advance();
        }
        if (atEnd()) {
            throw ImportError("a string is never closed", line);
        }
        const std::string_view raw = m_text.substr(start, m_at - start);
        advance();
        return decodeCharacterEntities(raw);
    }

    std::string readNumberText(const std::string& key) {
        const std::size_t start = m_at;
        while (!atEnd() && !isBlank(current()) && current() != ']' && current() != '[' &&
               current() != '#') {
            advance();
        }
        const std::string_view word = m_text.substr(start, m_at - start);
        if (!parseNumber(word)) {
            throw ImportError(
                "the value of '" + key + "' is no number within range, string or list", m_line);
        }
        return std::string(word);
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    int m_line = 1;
};

}  // namespace

const GmlEntry* GmlEntry::find(std::string_view name) const {
    for (const GmlEntry& member : members) {
        if (member.key == name) {
            return &member;
        }
    }
    return nullptr;
}

GmlEntry parseGml(std::string_view text) {
    requireUtf8Text(text);
    return GmlParser(withoutByteOrderMark(text)).parse();
}

}  // namespace qxdraw
