// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/DotPorts.h"

#include <array>

namespace qxdraw {

namespace {

std::string keyOf(int node, std::string_view name) {
    return std::to_string(node).append(":").append(name);
}

std::optional<DocumentPoint> compassPoint(std::string_view name) {
    struct Point {
        std::string_view name;
        DocumentPoint place;
    };
    static constexpr std::array<Point, 8> Points = {{{"n", {0, 1}},
                                                     {"ne", {1, 1}},
                                                     {"e", {1, 0}},
                                                     {"se", {1, -1}},
                                                     {"s", {0, -1}},
                                                     {"sw", {-1, -1}},
                                                     {"w", {-1, 0}},
                                                     {"nw", {-1, 1}}}};
    for (const Point& point : Points) {
        if (point.name == name) {
            return point.place;
        }
    }
    return std::nullopt;
}

/// Names of a side that leave it open.
bool isAnySide(std::string_view name) {
    return name.empty() || name == "_" || name == "c";
}

}  // namespace

void DotPorts::addFields(int node, const DocumentField& field) {
    if (!field.port.empty()) {
        m_fields.insert(keyOf(node, field.port));
    }
    for (const DocumentField& part : field.parts) {
        addFields(node, part);
    }
}

bool DotPorts::hasField(int node, std::string_view field) const {
    return m_fields.contains(keyOf(node, field));
}

std::optional<DocumentPort> DotPorts::read(int node, std::string_view port) const {
    DocumentPort result;
    result.name = port;
    if (hasField(node, port)) {
        result.field = port;
        return result;
    }
    const std::size_t colon = port.rfind(':');
    std::string_view side = port;
    if (colon != std::string_view::npos) {
        result.field = port.substr(0, colon);
        side = port.substr(colon + 1);
        if (!hasField(node, result.field)) {
            return std::nullopt;
        }
    }
    result.place = compassPoint(side);
    return result.place || isAnySide(side) ? std::optional(result) : std::nullopt;
}

int DotPorts::portOf(int node, std::string_view port) {
    if (isAnySide(port)) {
        return -1;
    }
    const auto [known, isNew] = m_indexOfPort.emplace(keyOf(node, port), -1);
    if (isNew) {
        DocumentNode& owner = m_document.nodes[static_cast<std::size_t>(node)];
        if (auto read = this->read(node, port)) {
            known->second = static_cast<int>(owner.ports.size());
            owner.ports.push_back(std::move(*read));
        } else {
            m_document.warnings.push_back({"node '" + owner.id + "' has no port '" +
                                           std::string(port) + "'; edges there end at the node"});
        }
    }
    return known->second;
}

}  // namespace qxdraw
