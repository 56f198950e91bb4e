// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/DotLabels.h"

#include <algorithm>

#include "import/CharacterEntities.h"

namespace qxdraw {

namespace {

void appendEscape(std::string& text, char escape, const DotLabelNames& names) {
    switch (escape) {
        case 'n':
        case 'l':
        case 'r':
            text += '\n';
            break;
        case 'N':
        case 'E':
            text += names.object;
            break;
        case 'G':
            text += names.graph;
            break;
        case 'T':
            text += names.tail;
            break;
        case 'H':
            text += names.head;
            break;
        case '\n':  // a line that goes on in the next one
            break;
        default:
            text += escape;
    }
}

/// Blanks at both ends of every field go, and empty fields with them.
std::string joinFields(std::string_view fields) {
    std::string result;
    while (!fields.empty()) {
        const std::size_t length = std::min(fields.find('\0'), fields.size());
        std::string_view field = fields.substr(0, length);
        fields.remove_prefix(std::min(length + 1, fields.size()));
        while (field.starts_with(' ')) {
            field.remove_prefix(1);
        }
        while (field.ends_with(' ')) {
            field.remove_suffix(1);
        }
        if (!field.empty()) {
            result.append(result.empty() ? "" : " | ").append(field);
        }
    }
    return result;
}

bool isRecordEscape(char c) {
    return std::string_view("{}|<> ").find(c) != std::string_view::npos;
}

}  // namespace

std::string plainDotLabel(std::string_view label, const DotLabelNames& names) {
    std::string text;
    for (std::size_t at = 0; at < label.size(); ++at) {
        if (label[at] == '\\' && at + 1 < label.size()) {
            appendEscape(text, label[++at], names);
        } else {
            text += label[at];
        }
    }
    while (text.ends_with('\n')) {  // \l and \r end lines, the last one too
        text.pop_back();
    }
    return decodeCharacterEntities(text);
}

std::string flattenRecordLabel(std::string_view label) {
    std::string fields;  // separated by NUL, which no label holds
    bool inPort = false;
    for (std::size_t at = 0; at < label.size(); ++at) {
        const char c = label[at];
        if (c == '\\' && at + 1 < label.size()) {
            const char escaped = label[++at];
            if (!inPort) {
                fields +=
                    isRecordEscape(escaped) ? std::string(1, escaped) : std::string{'\\', escaped};
            }
        } else if (c == '<' || c == '>') {
            inPort = c == '<';
        } else if (c == '|' || c == '{' || c == '}') {
            fields += '\0';
        } else if (!inPort) {
            fields += c;
        }
    }
    return joinFields(fields);
}

}  // namespace qxdraw
