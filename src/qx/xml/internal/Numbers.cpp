// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/internal/Numbers.h"

#include <charconv>
#include <cmath>

#include "qx/foundation/geometry/QxArithmetic.h"
#include "qx/xml/internal/Xerces.h"

namespace qx::internal {

std::optional<double> parseNumber(std::u16string_view text) {
    constexpr std::u16string_view Space = u" \t\r\n";
    const std::size_t first = text.find_first_not_of(Space);
    if (first == std::u16string_view::npos) {
        return std::nullopt;
    }
    text = text.substr(first, text.find_last_not_of(Space) - first + 1);
    // What is longer is no number that anybody needs.
    char ascii[400];
    std::size_t length = 0;
    for (const char16_t c : text) {
        if (c >= 0x80 || length == sizeof ascii) {
            return std::nullopt;
        }
        ascii[length++] = static_cast<char>(c);
    }
    const char* begin = ascii;
    if (*begin == '+' && length > 1 && begin[1] != '-') {
        ++begin;
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(begin, ascii + length, value);
    if (end != ascii + length) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range) {
        // Too small counts as 0; from_chars leaves the value alone.
        const bool isSmall = std::string_view(begin, end).find("e-") != std::string_view::npos ||
                             std::string_view(begin, end).find("E-") != std::string_view::npos;
        return isSmall ? 0.0 : (*begin == '-' ? -1e300 : 1e300);
    }
    return error == std::errc() && std::isfinite(value) ? std::optional<double>(value)
                                                        : std::nullopt;
}

bool isPlainNumber(std::u16string_view text) {
    // Nearly all are short whole numbers.
    const std::size_t sign = !text.empty() && text.front() == u'-' ? 1 : 0;
    if (text.size() > sign && text.size() < sign + 10 &&
        text.find_first_not_of(u"0123456789", sign) == std::u16string_view::npos) {
        return true;
    }
    const std::optional<double> value = parseNumber(text);
    return value && *value >= MinInt32 && *value <= MaxInt32;
}

std::string numberFault(std::u16string_view attribute, std::u16string_view text) {
    const std::string what =
        toUtf8(attribute) + "=\"" + toUtf8(text.substr(0, 40)) + (text.size() > 40 ? "..." : "");
    return what + (parseNumber(text) ? "\" lies outside the range of coordinates and was limited"
                                     : "\" is no number and was left out");
}

}  // namespace qx::internal
