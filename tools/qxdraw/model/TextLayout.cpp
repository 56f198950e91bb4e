// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/TextLayout.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace qxdraw {

namespace {

/// Widths of U+0020 to U+007E in thousandths of the font size, as common sans fonts have them
/// (the wide ones among them, so that names fit with the others too).
constexpr std::array<std::uint16_t, 95> AsciiWidths = {
    318, 401, 460, 838, 636, 950, 780, 275, 390, 390, 500, 838, 318, 361,  318, 337, 636, 636, 636,
    636, 636, 636, 636, 636, 636, 636, 337, 337, 838, 838, 838, 531, 1000, 684, 686, 698, 770, 632,
    575, 775, 752, 295, 295, 656, 557, 863, 748, 787, 603, 787, 695, 635,  611, 732, 684, 989, 685,
    611, 685, 390, 337, 390, 838, 500, 500, 613, 635, 550, 635, 615, 352,  635, 634, 278, 278, 579,
    278, 974, 634, 612, 635, 635, 411, 521, 392, 634, 592, 818, 592, 592,  525, 636, 337, 636, 838};

constexpr char32_t ZeroWidthJoiner = 0x200D;

struct Range {
    char32_t first;
    char32_t last;
};

/// Marks that stand over or under the letter before them, joiners and direction marks.
constexpr Range ZeroWidthRanges[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A},  {0x064B, 0x065F},
    {0x0941, 0x0948}, {0x094D, 0x094D}, {0x0E31, 0x0E31}, {0x0E34, 0x0E3A},  {0x0E47, 0x0E4E},
    {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x200B, 0x200F}, {0x202A, 0x202E},  {0x2060, 0x206F},
    {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0x1F3FB, 0x1F3FF}};

constexpr Range WideRanges[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF},   {0xAC00, 0xD7A3},
                                {0xF900, 0xFAFF}, {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
                                {0xFFE0, 0xFFE6}, {0x1F300, 0x1FAFF}, {0x20000, 0x3FFFD}};

template <std::size_t Count>
bool isIn(const Range (&ranges)[Count], char32_t c) {
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [c](const Range& range) { return c >= range.first && c <= range.last; });
}

/// Width in font sizes.
double characterWidth(char32_t c) {
    if (c >= 0x20 && c < 0x7F) {
        return AsciiWidths[c - 0x20] / 1000.0;
    }
    if (isIn(ZeroWidthRanges, c)) {
        return 0;
    }
    return isIn(WideRanges, c) ? 1.0 : 0.68;
}

/// Takes the first character off `text`, which is UTF-8.
char32_t takeCharacter(std::string_view& text) {
    const auto byte = [&](std::size_t i) {
        return static_cast<char32_t>(static_cast<unsigned char>(text[i]));
    };
    const char32_t lead = byte(0);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (length == 1 || length > text.size()) {
        text.remove_prefix(1);
        return lead;
    }
    char32_t c = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        c = c << 6 | (byte(i) & 0x3F);
    }
    text.remove_prefix(length);
    return c;
}

bool isControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

/// Control characters go, tabs become blanks.
std::string withoutControls(std::string_view line) {
    std::string result;
    while (!line.empty()) {
        const std::string_view before = line;
        const char32_t c = takeCharacter(line);
        if (!isControl(c)) {
            result += before.substr(0, before.size() - line.size());
        } else if (c == '\t') {
            result += ' ';
        }
    }
    return result;
}

bool breaksAfter(char32_t c) {
    return c < 0x80
               ? std::string_view(" -/_.,:;|").find(static_cast<char>(c)) != std::string_view::npos
               : isIn(WideRanges, c);
}

/// Length in bytes of what fits into one line: up to the last good place for a break, or else
/// up to the last character. Marks stay with their letter.
std::size_t fittingLength(std::string_view line, double fontSize, double widest) {
    std::string_view rest = line;
    double width = 0;
    std::size_t atBreak = 0;
    std::size_t atCharacter = 0;
    bool joined = true;
    while (!rest.empty()) {
        const std::size_t start = line.size() - rest.size();
        const char32_t c = takeCharacter(rest);
        const double advance = characterWidth(c) * fontSize;
        if (!joined && advance > 0) {
            atCharacter = start;
        }
        width += advance;
        if (width > widest && atCharacter > 0 && c != ' ') {
            return atBreak > 0 ? atBreak : atCharacter;
        }
        joined = c == ZeroWidthJoiner;
        if (breaksAfter(c)) {
            atBreak = line.size() - rest.size();
        }
    }
    return line.size();
}

void trimBlanks(std::string& line) {
    line.erase(line.find_last_not_of(' ') + 1);
    line.erase(0, line.find_first_not_of(' '));
}

}  // namespace

double textWidth(std::string_view line, double fontSize) {
    double width = 0;
    while (!line.empty()) {
        width += characterWidth(takeCharacter(line));
    }
    return width * fontSize;
}

std::vector<std::string> wrapText(std::string_view text, double fontSize, double widest,
                                  std::size_t mostLines) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        std::string paragraph = withoutControls(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
        do {
            if (lines.size() == mostLines) {
                lines.back() += "…";
                return lines;
            }
            const std::size_t fitting = fittingLength(paragraph, fontSize, widest);
            lines.push_back(paragraph.substr(0, fitting));
            trimBlanks(lines.back());
            paragraph.erase(0, fitting);
        } while (!paragraph.empty());
    }
    return lines;
}

TextBlock fitText(std::string_view text, double width, double height) {
    constexpr double SmallestFont = 8;
    constexpr std::size_t MostLines = 12;
    TextBlock block{wrapName(text), NameFontSize};
    const auto fits = [&] { return block.width() <= width && block.height() <= height; };
    if (fits()) {
        return block;
    }
    for (; block.fontSize >= SmallestFont; block.fontSize -= 1) {
        block.lines = wrapText(text, block.fontSize, std::max(width, 4 * NameFontSize), MostLines);
        if (fits() && widestWord(text, block.fontSize) <= width) {
            return block;
        }
    }
    block.fontSize = SmallestFont;
    return block;
}

std::vector<std::string> wrapName(std::string_view name) {
    constexpr double Widest = 200;
    constexpr std::size_t MostLines = 6;
    return wrapText(name, NameFontSize, Widest, MostLines);
}

std::vector<std::string> wrapEdgeLabel(std::string_view label) {
    constexpr double Widest = 120;
    constexpr std::size_t MostLines = 3;
    return wrapText(label, EdgeFontSize, Widest, MostLines);
}

double widestWord(std::string_view text, double fontSize) {
    double widest = 0;
    double width = 0;
    while (!text.empty()) {
        const char32_t c = takeCharacter(text);
        width += c == ' ' || isControl(c) ? 0 : characterWidth(c);
        widest = std::max(widest, width);
        width = breaksAfter(c) || c == '\n' ? 0 : width;
    }
    return widest * fontSize;
}

double widthOf(const std::vector<std::string>& lines, double fontSize) {
    double width = 0;
    for (const std::string& line : lines) {
        width = std::max(width, textWidth(line, fontSize));
    }
    return width;
}

double TextBlock::width() const {
    return widthOf(lines, fontSize);
}

double TextBlock::height() const {
    return heightOf(lines, fontSize);
}

double heightOf(const std::vector<std::string>& lines, double fontSize) {
    return static_cast<double>(lines.size()) * fontSize * LineSpacing;
}

}  // namespace qxdraw
