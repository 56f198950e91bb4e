// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/DotScanner.h"

#include <string>

#include "import/ImportError.h"
#include "import/ImportLimits.h"

namespace qxdraw {

namespace {

class DotScanner {
public:
    explicit DotScanner(std::string_view text) : m_text(text) {}

    DotScan scan() {
        while (m_at < m_text.size()) {
            if (m_closed && isContent()) {
                m_result.lineAfterGraph = m_line;
                return m_result;  // what follows is not read
            }
            scanToken();
        }
        if (!m_closed) {
            m_result.graphEnd = m_text.size();
        }
        return m_result;
    }

private:
    bool startsWith(std::string_view token) const { return m_text.substr(m_at).starts_with(token); }

    void advance() {
        if (m_text[m_at] == '\n') {
            ++m_line;
        }
        ++m_at;
    }

    bool isContent() const {
        const char c = m_text[m_at];
        return c != ' ' && c != '\t' && c != '\r' && c != '\n' && c != ';' && !startsWith("/*") &&
               !startsWith("//") && !isDirective();
    }

    /// A line that starts with '#' is left over from a preprocessor.
    bool isDirective() const {
        return m_text[m_at] == '#' && (m_at == 0 || m_text[m_at - 1] == '\n');
    }

    void scanToken() {
        if (startsWith("//") || isDirective()) {
            while (m_at < m_text.size() && m_text[m_at] != '\n') {
                ++m_at;
            }
        } else if (startsWith("/*")) {
            skipComment();
        } else if (m_text[m_at] == '"') {
            skipString();
        } else if (m_text[m_at] == '<') {
            skipHtml();
        } else {
            countBrace();
            advance();
        }
    }

    void countBrace() {
        if (m_text[m_at] == '{' && ++m_depth > ImportLimits::NestingDepth) {
            throw ImportError("more than " + std::to_string(ImportLimits::NestingDepth) +
                                  " braces inside each other",
                              m_line);
        }
        if (m_text[m_at] == '}' && m_depth > 0 && --m_depth == 0) {
            m_closed = true;
            m_result.graphEnd = m_at + 1;
        }
    }

    void skipComment() {
        const int line = m_line;
        m_at += 2;
        while (!startsWith("*/")) {
            requireMore("a comment is never closed", line);
            advance();
        }
        m_at += 2;
    }

    void skipString() {
        const int line = m_line;
        advance();
        while (m_at < m_text.size() && m_text[m_at] != '"') {
            if (m_text[m_at] == '\\' && m_at + 1 < m_text.size()) {
                advance();
            }
            advance();
        }
        requireMore("a quote is never closed", line);
        advance();
    }

    void skipHtml() {
        const int line = m_line;
        int depth = 0;
        do {
            requireMore("an HTML label is never closed", line);
            depth += m_text[m_at] == '<' ? 1 : m_text[m_at] == '>' ? -1 : 0;
            advance();
        } while (depth > 0);
    }

    void requireMore(const char* reason, int line) const {
        if (m_at >= m_text.size()) {
            throw ImportError(reason, line);
        }
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    int m_line = 1;
    int m_depth = 0;
    bool m_closed = false;
    DotScan m_result;
};

}  // namespace

DotScan scanDot(std::string_view text) {
    return DotScanner(text).scan();
}

}  // namespace qxdraw
