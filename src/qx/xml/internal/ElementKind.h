// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

namespace qx::internal {

/// What an element with an identifier stands for.
enum class ElementKind : unsigned char {
    None,
    Graph,  ///< the graph of the edges between graphs included
    Node,
    Edge,
    Connector,
    Label,
    Shape,
    ChildGraphRelation
};

/// For messages.
inline const char* nameOf(ElementKind kind) {
    constexpr const char* Names[] = {"object",    "graph", "node",  "edge",
                                     "connector", "label", "shape", "nesting relation"};
    return Names[static_cast<unsigned char>(kind)];
}

}  // namespace qx::internal
