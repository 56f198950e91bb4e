// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace qxdraw {

/// The finite number that `text` spells, blanks around it allowed; nothing for anything else
/// (words such as nan and inf, values too large for a double, trailing characters).
std::optional<double> parseNumber(std::string_view text);

/// Splits at commas and blanks and reads every part; nothing when a part is no number.
std::optional<std::vector<double>> parseNumbers(std::string_view text);

/// Checks against ImportLimits. They return the value, or throw ImportError naming `what`.
double checkedCoordinate(double value, std::string_view what, int line);
double checkedExtent(double value, std::string_view what, int line);

/// The same for a value still in text form.
double readCoordinate(std::string_view text, std::string_view what, int line);
double readExtent(std::string_view text, std::string_view what, int line);

}  // namespace qxdraw
