// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDGraph.h"

/// The one reading of the coordinate flag: nonzero asks for the coordinates of the object's own
/// graph, 0 for those of the anchor graph. Then the object must be visible: else the answer is 0
/// and the value stays as it is.
namespace qx::internal {

inline void toAnchor(const QxDGraph& graph, QxPoint& point) {
    graph.expandedTransformPoint(point);
}
inline void toAnchor(const QxDGraph& graph, QxSize& size) {
    graph.expandedTransformSize(size);
}
inline void toAnchor(const QxDGraph& graph, QxRect& rect) {
    graph.expandedTransformRect(rect);
}
inline void fromAnchor(const QxDGraph& graph, QxPoint& point) {
    graph.inverseExpandedTransformPoint(point);
}
inline void fromAnchor(const QxDGraph& graph, QxSize& size) {
    graph.inverseExpandedTransformSize(size);
}
inline void fromAnchor(const QxDGraph& graph, QxRect& rect) {
    graph.inverseExpandedTransformRect(rect);
}

/// The graph that an object lies in: a label tells it as its graph, all others as their owner.
template <class Object>
QxDGraph* graphOf(const Object& object) {
    if constexpr (requires { object.pGraph(); }) {
        return object.pGraph();
    } else {
        return object.pOwnerGraph();
    }
}

/// Whether the object has coordinates of the asked-for kind.
template <class Object>
int hasAsked(const Object& object, int inOwnGraph) {
    return inOwnGraph != 0 || (graphOf(object) != nullptr && object.isVisible() != 0) ? 1 : 0;
}

/// From the coordinates of the object's graph into the asked-for ones.
template <class Object, class Value>
int toAsked(const Object& object, Value& value, int inOwnGraph) {
    if (hasAsked(object, inOwnGraph) == 0) {
        return 0;
    }
    if (inOwnGraph == 0) {
        toAnchor(*graphOf(object), value);
    }
    return 1;
}

/// Puts the value, in the coordinates of the object's graph, into `out` in the asked-for ones.
template <class Object, class Value>
int giveAsked(const Object& object, Value& out, Value value, int inOwnGraph) {
    if (toAsked(object, value, inOwnGraph) == 0) {
        return 0;
    }
    out = value;
    return 1;
}

/// From the asked-for coordinates into those of the object's graph.
template <class Object, class Value>
int fromAsked(const Object& object, Value& value, int inOwnGraph) {
    if (hasAsked(object, inOwnGraph) == 0) {
        return 0;
    }
    if (inOwnGraph == 0) {
        fromAnchor(*graphOf(object), value);
    }
    return 1;
}

}  // namespace qx::internal
