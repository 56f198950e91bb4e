// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxGNode.h"
#include "qx/drawing/QxGeometricUpdateInfo.h"
#include "qx/drawing/internal/AskedCoordinates.h"
#include "qx/foundation/util/internal/Ref.h"

namespace qx::internal {

/// Lets the bounds of a graph rest while its contents change; the last to let go brings them to
/// what the graph covers then. The bounds of an invisible graph rest anyway, unless all its
/// contents change.
class [[nodiscard]] BoundsHold {
public:
    enum Extent { OfSome, OfAll };

    explicit BoundsHold(QxDGraph* graph, Extent contents = OfSome)
        : m_graph(mayHold(graph, contents) ? graph : nullptr) {
        if (m_graph) {
            m_graph->holdBounds();
        }
    }
    ~BoundsHold() {
        if (m_graph) {
            m_graph->letGoOfBounds();
        }
    }
    BoundsHold(const BoundsHold&) = delete;
    BoundsHold& operator=(const BoundsHold&) = delete;

private:
    /// Whoever holds the bounds already outlives what happens inside.
    static bool mayHold(const QxDGraph* graph, Extent contents) {
        return graph != nullptr && !graph->areBoundsHeld() &&
               (contents == OfAll || graph->isVisible() != 0);
    }

    Ref<QxDGraph> m_graph;
};

/// The same for the edges between the graphs of this one's manager.
class [[nodiscard]] BetweenHold {
public:
    explicit BetweenHold(const QxDGraph& graph) : m_hold(between(graph)) {}

    static QxDGraph* between(const QxDGraph& graph);

private:
    BoundsHold m_hold;
};

/// The one sequence that every change of a drawing runs through: the bounds of the graph, and those
/// of the edges between graphs, are held; the change is made by raw steps, which tell what they do
/// to the extents and to listeners; then the bounds are brought to what the graphs cover.
///
/// Nothing is asked to report what it covered before and covers after: the extents of the graph
/// know, whatever listeners have done meanwhile. The records exist for the hooks of subclasses.
class Change {
public:
    /// A change that is not one of place or size.
    template <class Object, class Act>
    static void run(Object& object, const Act& act) {
        const Ref alive(object);
        QxDGraph* const graph = graphOf(object);
        {
            const Holds holds(graph);
            act();
        }
        settleNewOwner(object, graph);
    }

    /// A change of what a graph contains: of some of it, or of everything.
    template <class Act>
    static void inGraph(QxDGraph& graph, const Act& act) {
        const Holds holds(&graph);
        act();
    }
    template <class Act>
    static void ofWholeGraph(QxDGraph& graph, const Act& act) {
        const Holds holds(&graph, BoundsHold::OfAll);
        act();
    }

    /// A change of place or size.
    template <class Act>
    static void ofGeometry(QxGNode& node, const Act& act) {
        const Ref alive(node);
        QxDGraph* const graph = node.pOwnerGraph();
        {
            Records records(graph);
            node.vActBeforeGeometryChanges(&records.own, &records.between);
            act();
            if (node.pOwnerGraph() == graph) {
                node.vActAfterGeometryChanges(&records.own, &records.between);
            }
        }
        settleNewOwner(node, graph);
    }

private:
    /// When a listener has carried the object off to another graph in the middle of a change, the
    /// rest of the change was made there.
    template <class Object>
    static void settleNewOwner(const Object& object, const QxDGraph* oldGraph) {
        QxDGraph* const graph = graphOf(object);
        if (graph != oldGraph && graph != nullptr) {
            const BoundsHold settled(graph);
        }
    }

    /// Those of a graph, and of the edges between graphs.
    struct Holds {
        explicit Holds(QxDGraph* graph, BoundsHold::Extent contents = BoundsHold::OfSome)
            : own(graph, contents),
              others(graph != nullptr ? BetweenHold::between(*graph) : nullptr) {}
        BoundsHold own;
        BoundsHold others;
    };
    struct Records {
        explicit Records(QxDGraph* graph) : own(graph, 0, 1), between(graph, 1, 1) {
            own.needsRecursiveUpdate(0);
            between.needsRecursiveUpdate(0);
        }
        QxGeometricUpdateInfo own;
        QxGeometricUpdateInfo between;
    };
};

}  // namespace qx::internal
