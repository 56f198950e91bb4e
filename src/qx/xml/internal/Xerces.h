// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace qx::internal {

/// Why a document is refused or cannot be written, on its way to whoever tells it.
class DocumentFault : public std::runtime_error {
public:
    explicit DocumentFault(const std::string& what, int line = 0)
        : std::runtime_error(what), m_line(line) {}
    int line() const { return m_line; }

private:
    int m_line;
};

/// Makes the XML library ready, once in a process; it stays so. Throws a DocumentFault.
void startXerces();

/// Rethrows what is being handled as a DocumentFault; to be called in a handler. Nobody else knows
/// the exceptions of the XML library.
[[noreturn]] void rethrowAsFault();

/// What it would say.
std::string describeFault();

/// UTF-16 as UTF-8; lone surrogates become U+FFFD.
std::string toUtf8(std::u16string_view text);

}  // namespace qx::internal
