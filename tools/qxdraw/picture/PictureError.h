// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <stdexcept>

namespace qxdraw {

/// A picture that cannot be made or written; what() is the reason.
class PictureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace qxdraw
