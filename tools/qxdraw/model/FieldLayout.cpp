// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/FieldLayout.h"

#include <algorithm>

#include "model/TextLayout.h"

namespace qxdraw {

namespace {

constexpr double SidePadding = 6;
constexpr double TopPadding = 3;
constexpr double LeastWidth = 16;
constexpr double LeastHeight = 20;

/// A field with the room that it takes at least.
struct SizedField {
    const DocumentField* field;
    DocumentSize size;
    std::vector<SizedField> parts;
};

SizedField sized(const DocumentField& field);

void sumUp(SizedField& around) {
    DocumentSize size;
    for (const SizedField& part : around.parts) {
        if (around.field->isStacked) {
            size.width = std::max(size.width, part.size.width);
            size.height += part.size.height;
        } else {
            size.width += part.size.width;
            size.height = std::max(size.height, part.size.height);
        }
    }
    around.size = size;
}

/// Gives the cells of each column one width, where all rows have as many cells.
void alignColumns(SizedField& table) {
    const std::size_t columns = table.parts.front().parts.size();
    for (const SizedField& row : table.parts) {
        if (row.parts.size() != columns) {
            return;
        }
    }
    for (std::size_t column = 0; column < columns; ++column) {
        double width = 0;
        for (const SizedField& row : table.parts) {
            width = std::max(width, row.parts[column].size.width);
        }
        for (SizedField& row : table.parts) {
            row.parts[column].size.width = width;
        }
    }
    for (SizedField& row : table.parts) {
        if (columns > 0) {
            sumUp(row);
        }
    }
}

SizedField sized(const DocumentField& field) {
    SizedField result{&field, {}, {}};
    if (field.parts.empty()) {
        const std::vector<std::string> lines = wrapName(field.text);
        result.size = {std::max(LeastWidth, widthOf(lines, NameFontSize) + 2 * SidePadding),
                       std::max(LeastHeight, heightOf(lines, NameFontSize) + 2 * TopPadding)};
        return result;
    }
    for (const DocumentField& part : field.parts) {
        result.parts.push_back(sized(part));
    }
    if (field.isTable) {
        alignColumns(result);
    }
    sumUp(result);
    return result;
}

/// Extents of the parts on the axis along which they stand, within `room`: too much is shared out
/// evenly, too little in proportion.
std::vector<double> shareOut(const SizedField& field, double room) {
    std::vector<double> extents;
    double sum = 0;
    for (const SizedField& part : field.parts) {
        extents.push_back(field.field->isStacked ? part.size.height : part.size.width);
        sum += extents.back();
    }
    const double extra = (room - sum) / static_cast<double>(extents.size());
    for (double& extent : extents) {
        extent = extra >= 0 ? extent + extra : extent * room / sum;
    }
    return extents;
}

void place(const SizedField& source, const PlacedField& at, std::vector<PlacedField>& result) {
    result.push_back(at);
    if (source.parts.empty()) {
        return;
    }
    const bool isStacked = source.field->isStacked;
    const std::vector<double> extents =
        shareOut(source, isStacked ? at.top - at.bottom : at.right - at.left);
    PlacedField next = at;
    for (std::size_t i = 0; i < extents.size(); ++i) {
        next.field = source.parts[i].field;
        const bool isLast = i + 1 == extents.size();  // ends exactly at the border
        if (isStacked) {
            next.bottom = isLast ? at.bottom : next.top - extents[i];
        } else {
            next.right = isLast ? at.right : next.left + extents[i];
        }
        place(source.parts[i], next, result);
        (isStacked ? next.top : next.left) = isStacked ? next.bottom : next.right;
    }
}

}  // namespace

DocumentSize naturalSize(const DocumentField& field) {
    return sized(field).size;
}

std::vector<PlacedField> placeFields(const DocumentNode& node) {
    std::vector<PlacedField> result;
    if (node.fields != nullptr) {
        const SizedField fields = sized(*node.fields);
        const bool fills = node.shape.kind == ShapeKind::Rectangle;
        const double width = fills ? node.width : std::min(node.width, fields.size.width);
        const double height = fills ? node.height : std::min(node.height, fields.size.height);
        place(fields, {node.fields.get(), -width / 2, -height / 2, width / 2, height / 2}, result);
    }
    return result;
}

}  // namespace qxdraw
