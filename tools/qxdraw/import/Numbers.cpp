// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "import/ImportError.h"
#include "import/ImportLimits.h"

namespace qxdraw {

namespace {

constexpr std::string_view Blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

/// A value from a file, cut so that it cannot flood a message.
std::string quoted(std::string_view text) {
    constexpr std::size_t Longest = 40;
    const std::string shown(text.substr(0, Longest));
    return "'" + shown + (text.size() > Longest ? "...'" : "'");
}

double readNumber(std::string_view text, std::string_view what, int line) {
    const std::optional<double> value = parseNumber(text);
    if (!value) {
        throw ImportError(std::string(what) + " is not a finite number: " + quoted(text), line);
    }
    return *value;
}

}  // namespace

std::optional<double> parseNumber(std::string_view text) {
    text = trimmed(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) {
            return std::nullopt;
        }
    }
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (stop != end || text.empty()) {
        return std::nullopt;
    }
    // Too large and too small for a double are told apart only by what the text says, so the
    // tiny ones are refused as well: no coordinate needs them.
    if (error != std::errc{} || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<std::vector<double>> parseNumbers(std::string_view text) {
    constexpr std::string_view Separators = ", \t\r\n";
    std::vector<double> numbers;
    for (;;) {
        const std::size_t first = text.find_first_not_of(Separators);
        if (first == std::string_view::npos) {
            return numbers;
        }
        text.remove_prefix(first);
        const std::size_t length = std::min(text.find_first_of(Separators), text.size());
        const std::optional<double> number = parseNumber(text.substr(0, length));
        if (!number) {
            return std::nullopt;
        }
        numbers.push_back(*number);
        text.remove_prefix(length);
    }
}

double checkedCoordinate(double value, std::string_view what, int line) {
    if (!(std::abs(value) <= ImportLimits::Coordinate)) {
        throw ImportError(std::string(what) + " is out of range", line);
    }
    return value;
}

double checkedExtent(double value, std::string_view what, int line) {
    if (value < 0) {
        throw ImportError(std::string(what) + " is negative", line);
    }
    if (!(value <= ImportLimits::Extent)) {
        throw ImportError(std::string(what) + " is out of range", line);
    }
    return value;
}

double readCoordinate(std::string_view text, std::string_view what, int line) {
    return checkedCoordinate(readNumber(text, what, line), what, line);
}

double readExtent(std::string_view text, std::string_view what, int line) {
    return checkedExtent(readNumber(text, what, line), what, line);
}

}  // namespace qxdraw
