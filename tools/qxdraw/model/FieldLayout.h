// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

struct DocumentSize {
    double width = 0;
    double height = 0;
};

/// A field of a node's label and its place, relative to the center of the node.
struct PlacedField {
    const DocumentField* field = nullptr;
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;

    DocumentPoint center() const { return {(left + right) / 2, (bottom + top) / 2}; }
};

/// The room that a field and all in it take at least.
DocumentSize naturalSize(const DocumentField& field);

/// The fields of a node of known size, each before those in it; none without fields. In a
/// rectangular node they fill it, what is left over is shared out evenly; in any other they stand
/// in the middle.
std::vector<PlacedField> placeFields(const DocumentNode& node);

}  // namespace qxdraw
