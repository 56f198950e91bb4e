// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDrawingDLists.h"
#include "qx/drawing/QxLabelInfoEdgeMoved.h"
#include "qx/drawing/QxLabelManager.h"
#include "qx/foundation/geometry/QxPerMil.h"
#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/graph/internal/GraphObjectExtras.h"
#include "qx/foundation/util/internal/Ref.h"

class QxGeometricUpdateInfo;

namespace qx::internal {

/// What few nodes and bends use.
struct NodeExtras : GraphObjectExtras {
    std::unique_ptr<const QxRect> rectBeforeMove;
    std::unique_ptr<const QxRect> rectBeforeMoveForSelfLoops;
    std::unique_ptr<QxConnectorManager> connectors;
    QxDNode* clone = nullptr;
    Ref<QxLabelManager> labels;

    bool isIdle() const override {
        return GraphObjectExtras::isIdle() && !rectBeforeMove && !rectBeforeMoveForSelfLoops &&
               !connectors && clone == nullptr && !labels;
    }
};

/// What few connectors use.
struct ConnectorExtras : GraphObjectExtras {
    /// Of a calculated connector of an expanded node: the place from which it follows the sizes
    /// of the node, and where it has come by that.
    struct Basis {
        QxRect nodeRect;
        QxPerMil perMil;
        QxSize offset;
        bool scales;
        QxSize lastNodeSize;
        QxSize lastPlace;
    };
    std::unique_ptr<const QxRect> rectBeforeMove;
    Ref<QxLabelManager> labels;
    std::unique_ptr<Basis> basis;

    bool isIdle() const override {
        return GraphObjectExtras::isIdle() && !rectBeforeMove && !labels && !basis;
    }
};

/// The connector that an end of an edge is assigned to, and the number of the end there.
struct ConnectorUse {
    QxConnector* connector = nullptr;
    std::size_t number = 0;
};

/// What few edges use.
struct EdgeExtras : GraphObjectExtras {
    QxDEdge* clone = nullptr;
    Ref<QxLabelManager> labels;
    ConnectorUse atSource;
    ConnectorUse atTarget;
    /// What a move that is running notes about the edge: a QxDEdgeInitialGeometry.
    Ref<QxObject> initialGeometry;
    /// The path objects of the edge in the order in which they came, by their own cells: whatever
    /// is joined to what, the edge knows what it owns.
    QxDList parts;

    bool isIdle() const override {
        return GraphObjectExtras::isIdle() && clone == nullptr && !labels &&
               atSource.connector == nullptr && atTarget.connector == nullptr && !initialGeometry &&
               parts.isEmpty() != 0;
    }
};

/// What few graphs use, or all during longer changes only.
struct GraphExtras : GraphObjectExtras {
    QxDGraph* clone = nullptr;
    QxGeometricUpdateInfo* updateInfo = nullptr;
    QxDEdgeDList affectedEdges;
    Ref<QxLabelManager> labels;
    /// How many labels its nodes, its connected edges and its nodes' connectors have.
    std::int32_t nodeLabels = 0;
    std::int32_t edgeLabels = 0;
    std::int32_t connectorLabels = 0;
    /// The edges whose labels may cover something else than the extents say.
    QxDList outdatedLabelEdges;
    /// Of a fold graph: the middle of the group when it was folded, and a sum over all places.
    struct FoldedGroup {
        QxPoint center;
        std::uint64_t places;
    };
    std::unique_ptr<const FoldedGroup> folded;

    /// The list of affected edges is handed out.
    bool isIdle() const override { return false; }
};

/// What few labels use.
struct LabelExtras : GraphObjectExtras {
    struct Place {
        QxPoint center;
        std::int16_t proportionX;
        std::int16_t proportionY;
        QxPoint offset;
    };
    QxLabel* clone = nullptr;
    std::unique_ptr<Place> storedPlace;
    /// Where a pinned label of an edge stays.
    QxPoint pinnedAt;
    /// What is to be known once the edge has moved.
    std::vector<Ref<QxLabelInfoEdgeMoved>> moves;

    bool isIdle() const override { return false; }
};

}  // namespace qx::internal
