// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qxdraw {

/// World units (CSS pixels).
inline constexpr double NameFontSize = 13;
inline constexpr double EdgeFontSize = 11;
inline constexpr double TitleFontSize = 12;      ///< of graphs; bold
inline constexpr double BoldTimesAsWide = 1.08;  ///< as the same text in the normal weight
inline constexpr double LineSpacing = 1.25;      ///< times the font size

/// About how wide a line of UTF-8 text is in the picture's sans font. It depends on nothing but
/// the text, so that a drawing comes out the same on every machine.
double textWidth(std::string_view line, double fontSize);

/// The lines of `text`, with control characters dropped and lines wider than `widest` broken: after
/// a blank or a punctuation mark where there is one. What does not fit into `mostLines` is cut,
/// which an ellipsis shows.
std::vector<std::string> wrapText(std::string_view text, double fontSize, double widest,
                                  std::size_t mostLines);

/// A text as it is painted.
struct TextBlock {
    std::vector<std::string> lines;
    double fontSize = 0;

    double width() const;
    double height() const;
};

/// Breaks a text, and makes it smaller within limits, until it fits into the room, if it can.
TextBlock fitText(std::string_view text, double width, double height);

/// The name of a node as it is shown, and the label of an edge, in lines.
std::vector<std::string> wrapName(std::string_view name);
std::vector<std::string> wrapEdgeLabel(std::string_view label);

/// Width of the widest piece of `text` that has no good place for a break inside.
double widestWord(std::string_view text, double fontSize);

/// Extent of lines under each other.
double widthOf(const std::vector<std::string>& lines, double fontSize);
double heightOf(const std::vector<std::string>& lines, double fontSize);

}  // namespace qxdraw
