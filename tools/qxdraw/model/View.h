// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/Drawing.h"

namespace qxdraw {

/// How much of a drawing is shown.
struct ViewOptions {
    enum class Way { Children, Parents, Both };

    std::vector<std::string> collapse;  ///< names of nested graphs, "all", "depth:N"
    std::vector<std::string> fold;      ///< lists of names, each "NAME,NAME,..." makes a folder
    std::vector<std::string> hide;
    std::string only;  ///< shows this and what lies around it; empty: everything
    int depth = 1;     ///< how many edges away from `only`
    Way way = Way::Both;

    bool isEmpty() const {
        return collapse.empty() && fold.empty() && hide.empty() && only.empty();
    }
};

/// What is wrong with a value of `collapse`, whatever the file; empty for a good one.
std::string collapseFault(std::string_view value);

/// Folds, collapses and hides in a drawing that has not been placed yet, in this order, and adds
/// meta-edges for the edges that cannot be drawn; the document follows. Throws NameError.
void applyView(Drawing& drawing, GraphDocument& document, const ViewOptions& options);

}  // namespace qxdraw
