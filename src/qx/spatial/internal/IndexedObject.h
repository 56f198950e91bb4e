// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>

#include "qx/foundation/graph/QxGraphObject.h"
#include "qx/spatial/QxQTree.h"
#include "qx/spatial/internal/QuadShape.h"

class QxDEdge;

/// How the objects of a drawing look to a spatial index.
namespace qx::internal {

/// The kinds, by the numbers that the engine knows; bit 1 << kind is the kind's bit in the mask of
/// excluded kinds.
enum class IndexKind : unsigned {
    PathEdge,
    PathNode,
    Node,
    NodeLabel,
    ConnectorLabel,
    EdgeLabel,
    GraphLabel,
    Connector,
};

constexpr unsigned bitOf(IndexKind kind) {
    return 1U << static_cast<unsigned>(kind);
}

/// The kind of an object; none for what is never indexed. A straight edge whose segment has not
/// been made stands for it.
std::optional<IndexKind> indexKindOf(const QxGraphObject& object);

/// Whether an object of that kind counts now.
bool countsInIndex(const QxGraphObject& object, IndexKind kind);

/// What it covers, in the coordinates of its graph; for segments and their labels regardless of
/// what is cut off.
QuadShape indexShapeOf(const QxGraphObject& object, IndexKind kind);

/// Asks the memory for what indexShapeOf looks at beyond the object.
void fetchForShape(const QxGraphObject& object, IndexKind kind);

/// Whether an object whose stored shape meets the rectangle is seen there: it is not set aside, is
/// visible if it lies between graphs, and is not just a part that is cut off.
bool showsIn(const QxGraphObject& object, IndexKind kind, const QxRect& rect);

/// The object to report: the segment of a straight edge that stands for it.
QxGraphObject* reportedObject(QxGraphObject* object, IndexKind kind);

/// The graph in whose index an object belongs; null when it is in none.
QxDGraph* indexGraphOf(const QxGraphObject& object, IndexKind kind);

QxQTreeObject::Kind recordKindOf(const QxGraphObject& object, IndexKind kind);

/// Where an object keeps its slot in the index of its graph; NoIndexSlot while it is in none.
struct IndexSlot {
    static std::int32_t& of(QxGraphObject& object, IndexKind kind);
    /// Sets the state bit that says so.
    static void isRegistered(QxGraphObject& object, bool value) {
        object.setFlag(flags::InQuadTree, value ? 1 : 0);
    }
    /// Lets the edge of a segment tell the index from now on when its ends move.
    static void trackEdgeOf(QxGraphObject& segment);
    /// What a straight edge covers that runs between the centers of two nodes of one graph, as most
    /// do; none for all others.
    static std::optional<QuadShape> shapeOfPlainEdge(const QxGraphObject& segment);
    /// Whether a straight edge shows in the rectangle, if what is known already tells; `segment` is
    /// its segment, or the edge that stands for it.
    static std::optional<bool> showsAsKnown(const QxGraphObject& segment, const QxRect& rect);
};
inline constexpr std::int32_t NoIndexSlot = -1;

}  // namespace qx::internal
