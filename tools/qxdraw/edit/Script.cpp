// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "edit/Script.h"

namespace qxdraw {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

/// Reads the rest of a word in quotes, from behind the first; returns the place behind the last.
std::size_t readQuoted(const std::string& line, std::size_t at, std::string& word, int number) {
    while (at < line.size() && line[at] != '"') {
        const bool isEscape = line[at] == '\\' && at + 1 < line.size();
        at += isEscape ? 1 : 0;
        word += isEscape && line[at] == 'n' ? '\n' : line[at];
        ++at;
    }
    if (at == line.size()) {
        throw ScriptError("a quotation mark is missing at the end", number);
    }
    return at + 1;
}

std::vector<std::string> wordsOf(const std::string& line, int number) {
    std::vector<std::string> words;
    std::size_t at = 0;
    while (true) {
        while (at < line.size() && isBlank(line[at])) {
            ++at;
        }
        if (at == line.size() || (words.empty() && line[at] == '#')) {
            return words;
        }
        std::string word;
        while (at < line.size() && !isBlank(line[at])) {
            if (line[at] == '"') {
                at = readQuoted(line, at + 1, word, number);
            } else {
                word += line[at++];
            }
        }
        words.push_back(std::move(word));
    }
}

}  // namespace

std::vector<ScriptLine> readScript(std::istream& in) {
    std::vector<ScriptLine> lines;
    std::string text;
    for (int number = 1; std::getline(in, text); ++number) {
        if (!text.empty() && text.back() == '\r') {
            text.pop_back();
        }
        std::vector<std::string> words = wordsOf(text, number);
        if (!words.empty()) {
            lines.push_back({number, text, std::move(words)});
        }
    }
    return lines;
}

}  // namespace qxdraw
