// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxApi.h"

class QxDEdge;
class QxDGraph;
class QxDNode;
class QxPEdge;
class QxPNode;

namespace qx::internal {

enum class IndexKind : unsigned;

/// The door through which the drawing keeps spatial indexes up to date. Without an index, or with
/// one that has not been asked for since it was discarded, each call is a test or two.
class IndexUpkeep {
public:
    /// The object covers something else, or has come to count or ceased to.
    static void changed(QxDNode& node);
    static void changed(QxPNode& bend);
    static void changed(QxPEdge& segment);
    /// The segments at the ends of the edge.
    static void endsChanged(QxDEdge& edge);
    /// The edge, with all parts of its path.
    static void countChanged(QxDEdge& edge);
    /// The object leaves its graph, or its path.
    static void ended(QxDNode& node);
    static void ended(QxPNode& bend);
    static void ended(QxPEdge& segment);
    static void ended(QxDEdge& edge);

private:
    template <class Object>
    static void tell(Object& object, IndexKind kind);
    template <class Object>
    static void tellEnded(Object& object, IndexKind kind);
};

}  // namespace qx::internal
