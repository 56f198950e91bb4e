// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <array>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/QxLabelIters.h"
#include "qx/events/QxDEventManager.h"
#include "qx/events/QxDrawingChangeEventData.h"
#include "qx/events/QxDrawingChangeListener.h"
#include "support/GraphTesting.h"

namespace qxtest {

/// A rectangle as left, bottom, right and top: for comparisons that print what they compared.
using Box = std::array<std::int32_t, 4>;

inline Box boxOf(const QxRect& rect) {
    return {rect.left(), rect.bottom(), rect.right(), rect.top()};
}

inline Box boundsOf(const QxDGraph* graph) {
    return boxOf(*graph->pBoundingRect());
}

/// Whether a connected edge within the graph ends at the connector.
inline bool isUsedInGraph(const QxConnector& connector) {
    QxDEdgeDList users;
    connector.buildIncidentEdgeList(&users, QxEdgeDirectionBoth, QxEdgeConnectionConnected);
    const auto edges = objectsOf<QxDEdge>(users);
    return std::any_of(edges.begin(), edges.end(),
                       [](const QxDEdge* edge) { return edge->intergraphEdge() == 0; });
}

/// The bounds by the long way, over everything that the graph lists; false when there is nothing.
inline bool walkBounds(const QxDGraph& graph, QxRect& bounds) {
    bool any = false;
    const auto add = [&](const QxRect& rect) {
        bounds = any ? bounds |= rect : rect;
        any = true;
    };
    const auto addLabels = [&](auto labels) {
        for (; labels; ++labels) {
            QxRect rect;
            labels.pLabel()->ntBoundingRect(rect);
            add(rect);
        }
    };
    for (const QxDNode* node : QxDNodeIter(&graph)) {
        add(*node->pIRect());
        addLabels(QxNodeLabelIter(node));
        for (const QxConnector* connector : QxInternalConnectorIter(node)) {
            QxRect rect(connector->ntCenter(), QxSize(0, 0));
            if (connector->specified() != 0) {
                connector->ntBoundingRect(rect);
                addLabels(QxConnectorLabelIter(connector));
            }
            if (connector->specified() != 0 || isUsedInGraph(*connector)) {
                add(rect);
            }
        }
    }
    for (const QxDEdge* edge : QxDEdgeIter(&graph)) {
        if (graph.isIntergraph() != 0 && edge->isVisible() == 0) {
            continue;
        }
        QxPNodeDList bends;
        edge->buildPathNodeList(bends);
        for (const QxPNode* bend : QxPNodeDListIter(&bends)) {
            add(QxRect(bend->iCenter(), QxSize(0, 0)));
        }
        addLabels(QxEdgeLabelIter(edge));
        if (graph.isIntergraph() != 0) {
            add(QxRect(edge->ntFromPoint(0), edge->ntToPoint(0)));
        }
    }
    return any;
}

/// One drawing change as it was heard.
struct HeardChange {
    std::int32_t type;
    const QxObject* source;
    Box oldBounds{};
    Box newBounds{};

    bool operator==(const HeardChange&) const = default;
};

inline void PrintTo(const HeardChange& change, std::ostream* out) {
    *out << std::hex << "{0x" << change.type << std::dec << " of " << change.source;
    for (const Box& box : {change.oldBounds, change.newBounds}) {
        *out << (&box == &change.oldBounds ? "" : " ->");
        for (const std::int32_t side : box) {
            *out << ' ' << side;
        }
    }
    *out << '}';
}

/// Keeps the drawing changes that it hears, in order.
class EventRecorder : public QxDrawingChangeListener {
public:
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override {
        const QxRect* before = data->pOldBounds();
        const QxRect* after = data->pNewBounds();
        changes.push_back({data->type(), data->pSource(),
                           before != nullptr ? boxOf(*before) : Box{},
                           after != nullptr ? boxOf(*after) : Box{}});
    }
    /// What was heard since the last call.
    std::vector<HeardChange> take() { return std::exchange(changes, {}); }
    std::vector<std::int32_t> takeTypes() {
        std::vector<std::int32_t> types;
        for (const HeardChange& change : take()) {
            types.push_back(change.type);
        }
        return types;
    }

    std::vector<HeardChange> changes;
};

/// A drawing of one graph and a recorder of all its changes.
class SmallDrawing {
public:
    explicit SmallDrawing(QxFactory& made)
        : factory(made), manager(made.newDGraphManager()), graph(manager->addGraph(0)) {
        factory.pEventManager()->addDrawingChangeListener(manager.get(), &events);
    }
    QxDNode* addNode(std::int32_t x, std::int32_t y, std::int32_t width = 10,
                     std::int32_t height = 10) {
        return graph->addNodeWithCoordinates(x, y, width, height, 1, 0);
    }
    QxDEdge* addEdge(QxDNode* source, QxDNode* target) {
        return manager->addEdge(source, target, 0);
    }
    QxPNode* addBend(QxDEdge* edge, std::int32_t x, std::int32_t y) {
        return edge->addBend(edge->pTargetOrPathEdge(), QxPoint(x, y), 1);
    }

    QxFactory& factory;
    EventRecorder events;
    Ref<QxDGraphManager> manager;
    QxDGraph* graph;
};

using Points = std::vector<QxPoint>;

/// The ends and bends of an edge, where the way is not cut off.
inline Points pathOf(const QxDEdge& edge) {
    QxPointDList list;
    edge.buildPointList(list);
    Points points;
    for (const QxDListCell* cell = list.pFirstCell(); cell; cell = cell->pNextCell()) {
        points.push_back(*QxPointDList::pPoint(cell));
    }
    return points;
}

}  // namespace qxtest
