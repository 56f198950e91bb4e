// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace qxdraw {

struct CheckOptions {
    std::string input;
};

/// Lists on stdout, by line, everything wrong with a drawing document (.qxd): why it is refused, or
/// what a reader repairs. Whether nothing is.
bool runCheck(const CheckOptions& options);

}  // namespace qxdraw
