// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/spatial/internal/IndexedObject.h"

#include <typeinfo>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxLabel.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"

namespace qx::internal {

namespace {

QuadShape boxOf(const QxRect& rect) {
    return {{rect.left(), rect.bottom(), rect.right(), rect.top()}};
}

bool isActive(const QxDEdge* edge) {
    return edge != nullptr && edge->connected() != 0 && edge->deactivated() == 0;
}

/// Whether the edge of a segment draws it as a curve, within that rectangle.
bool isCurved(const QxGEdge& segment, const QxDEdge* whole, QxRect& rect) {
    if (whole == nullptr || whole->isCurvedEdge() == 0) {
        return false;
    }
    if ((segment.flagWord() & flags::PathObject) != 0) {
        segment.getUserBoundingRect(rect, 1);
    } else {
        segment.ntBoundingRect(rect, 0);  // of the edge that would be with its labels
    }
    return true;
}

/// The edge that a segment, or an edge that stands for its segment, belongs to.
const QxDEdge* wholeEdge(const QxGraphObject& segment) {
    return (segment.flagWord() & flags::PathObject) != 0
               ? static_cast<const QxPEdge&>(segment).pOwnerEdge()
               : static_cast<const QxDEdge*>(&segment);
}

}  // namespace

std::optional<IndexKind> indexKindOf(const QxGraphObject& object) {
    if (object.isNode() != 0) {
        return object.isPathNode() != 0 ? IndexKind::PathNode : IndexKind::Node;
    }
    if (object.isConnector() != 0) {
        return IndexKind::Connector;
    }
    if (object.isLabel() != 0) {
        return object.isNodeLabel() != 0        ? IndexKind::NodeLabel
               : object.isEdgeLabel() != 0      ? IndexKind::EdgeLabel
               : object.isConnectorLabel() != 0 ? IndexKind::ConnectorLabel
                                                : IndexKind::GraphLabel;
    }
    if (object.isEdge() != 0) {
        const bool stands =
            object.isPathEdge() != 0 || (object.flagWord() & flags::EdgePathImplied) != 0;
        return stands ? std::optional(IndexKind::PathEdge) : std::nullopt;
    }
    return std::nullopt;
}

bool countsInIndex(const QxGraphObject& object, IndexKind kind) {
    switch (kind) {
        case IndexKind::PathEdge: {
            const auto& segment = static_cast<const QxEdge&>(object);
            return isActive(wholeEdge(object)) && segment.connected() != 0 &&
                   segment.deactivated() == 0 && segment.pSourceNode() != nullptr &&
                   segment.pTargetNode() != nullptr;
        }
        case IndexKind::PathNode: {
            const auto& bend = static_cast<const QxPNode&>(object);
            return isActive(bend.pOwnerEdge()) && bend.degree() > 0;
        }
        case IndexKind::EdgeLabel: {
            const auto& label = static_cast<const QxLabel&>(object);
            return label.ownerValid() != 0 && isActive(label.pOwnerEdge());
        }
        case IndexKind::Connector: {
            const auto& connector = static_cast<const QxConnector&>(object);
            return connector.specified() != 0 && connector.pGraph() != nullptr;
        }
        case IndexKind::ConnectorLabel: {
            const auto& label = static_cast<const QxLabel&>(object);
            const QxConnector* connector = label.pOwnerConnector();
            return label.ownerValid() != 0 && connector != nullptr &&
                   countsInIndex(*connector, IndexKind::Connector);
        }
        default:
            return object.ownerValid() != 0 && indexGraphOf(object, kind) != nullptr;
    }
}

namespace {

const char* addressOf(const void* object) {
    return static_cast<const char*>(object);
}

/// The distance of two fetches, which together reach the ends of an edge.
constexpr std::size_t Farther = 128;

}  // namespace

std::optional<QuadShape> IndexSlot::shapeOfPlainEdge(const QxGraphObject& segment) {
    const bool isMade = (segment.flagWord() & flags::PathObject) != 0;
    // A subclass may see things differently.
    if (typeid(segment) != (isMade ? typeid(QxPEdge) : typeid(QxDEdge))) {
        return std::nullopt;
    }
    const QxDEdge* edge = wholeEdge(segment);
    if (edge == nullptr || edge->hasConnectors() || typeid(*edge) != typeid(QxDEdge) ||
        edge->m_sourcePathEdge != edge->m_targetPathEdge ||
        (isMade && edge->m_sourcePathEdge != &segment)) {
        return std::nullopt;
    }
    const QxDGraph* graph = edge->pOwnerGraph();
    const QxDNode* source = edge->pSourceNode();
    const QxDNode* target = edge->pTargetNode();
    if (graph == nullptr || graph->isIntergraph() != 0 || source == nullptr || target == nullptr) {
        return std::nullopt;
    }
    const QxRect& from = *source->pIRect();
    const QxRect& to = *target->pIRect();
    return QuadShape::segment(from.x(), from.y(), to.x(), to.y());
}

void fetchForShape(const QxGraphObject& object, IndexKind kind) {
    if (kind == IndexKind::PathEdge) {
        const auto& edge = static_cast<const QxEdge&>(object);
        for (const QxNode* end : {edge.pSourceNode(), edge.pTargetNode()}) {
            __builtin_prefetch(addressOf(end));
            __builtin_prefetch(addressOf(end) + Farther);
        }
    }
}

QuadShape indexShapeOf(const QxGraphObject& object, IndexKind kind) {
    QxRect rect;
    switch (kind) {
        case IndexKind::PathEdge: {
            if (const std::optional<QuadShape> plain = IndexSlot::shapeOfPlainEdge(object)) {
                return *plain;
            }
            const auto& segment = static_cast<const QxGEdge&>(object);
            if (isCurved(segment, wholeEdge(object), rect)) {
                return boxOf(rect);
            }
            const QxPoint from = segment.ntFromPoint(0);
            const QxPoint to = segment.ntToPoint(0);
            return QuadShape::segment(from.x(), from.y(), to.x(), to.y());
        }
        case IndexKind::Node:
            if (typeid(object) == typeid(QxDNode)) {
                return boxOf(*static_cast<const QxDNode&>(object).pIRect());
            }
            [[fallthrough]];
        case IndexKind::PathNode:
            static_cast<const QxGNode&>(object).getUserBoundingRect(rect, 1);
            return boxOf(rect);
        case IndexKind::Connector:
            static_cast<const QxConnector&>(object).getUserBoundingRect(rect, 1);
            return boxOf(rect);
        default:
            static_cast<const QxLabel&>(object).getUserBoundingRect(rect, 1);
            return boxOf(rect);
    }
}

namespace {

/// What a mark sets aside.
constexpr std::uint32_t SetAside = flags::TemporarilyInvisible | flags::Processing;

}  // namespace

std::optional<bool> IndexSlot::showsAsKnown(const QxGraphObject& segment, const QxRect& rect) {
    const bool isMade = (segment.flagWord() & flags::PathObject) != 0;
    // A subclass may see things differently.
    if (typeid(segment) != (isMade ? typeid(QxPEdge) : typeid(QxDEdge))) {
        return std::nullopt;
    }
    const QxDEdge* edge = wholeEdge(segment);
    if (edge == nullptr || typeid(*edge) != typeid(QxDEdge) || !edge->isDrawnLineKnown() ||
        edge->pOwnerGraph()->isIntergraph() != 0 ||
        (isMade && (edge->m_sourcePathEdge != &segment ||
                    (segment.flagWord() & flags::SegmentVisible) == 0))) {
        return std::nullopt;
    }
    const auto isInside = [&](const auto& point) {
        return rect.left() <= point.x && point.x <= rect.right() && rect.bottom() <= point.y &&
               point.y <= rect.top();
    };
    return isInside(edge->m_fromClip) || isInside(edge->m_toClip) ||
           rect.overlapsSegment(edge->m_fromClip.x, edge->m_fromClip.y, edge->m_toClip.x,
                                edge->m_toClip.y) != 0;
}

bool showsIn(const QxGraphObject& object, IndexKind kind, const QxRect& rect) {
    // Of an edge that stands for its segment the marks are its own.
    const bool isItself =
        kind != IndexKind::PathEdge || (object.flagWord() & flags::PathObject) != 0;
    if (isItself && (object.flagWord() & SetAside) != 0) {
        return false;
    }
    const auto isSeen = [](const QxDEdge* edge) {
        return isActive(edge) && (edge->intergraphEdge() == 0 || edge->isVisible() != 0) &&
               edge->hasVisiblePart() != 0;
    };
    if (kind == IndexKind::PathNode) {
        const auto& bend = static_cast<const QxPNode&>(object);
        return isSeen(bend.pOwnerEdge()) && bend.isUsable() != 0;
    }
    if (kind == IndexKind::PathEdge) {
        if (const std::optional<bool> known = IndexSlot::showsAsKnown(object, rect)) {
            return *known;
        }
        const QxDEdge* edge = wholeEdge(object);
        const bool isMade = (object.flagWord() & flags::PathObject) != 0;
        const auto& segment = static_cast<const QxGEdge&>(object);
        if (!isSeen(edge) || (isMade && static_cast<const QxPEdge&>(object).isUsable() == 0)) {
            return false;
        }
        QxRect curve;
        return isCurved(segment, edge, curve) ? curve.intersectsRect(rect) != 0
                                              : segment.ntIntersectsRect(&rect, 1) != 0;
    }
    if (kind == IndexKind::EdgeLabel) {
        const QxDEdge* edge = static_cast<const QxLabel&>(object).pOwnerEdge();
        return isActive(edge) && (edge->intergraphEdge() == 0 || edge->isVisible() != 0);
    }
    return true;
}

QxGraphObject* reportedObject(QxGraphObject* object, IndexKind kind) {
    if (kind == IndexKind::PathEdge && (object->flagWord() & flags::PathObject) == 0) {
        return static_cast<QxDEdge*>(object)->pSourceOrPathEdge();
    }
    return object;
}

QxDGraph* indexGraphOf(const QxGraphObject& object, IndexKind kind) {
    if (kind == IndexKind::Connector) {
        return static_cast<const QxConnector&>(object).pGraph();
    }
    if (kind != IndexKind::Node && kind != IndexKind::PathNode && kind != IndexKind::PathEdge) {
        return static_cast<const QxLabel&>(object).pGraph();
    }
    // Nodes, edges and what is on their paths are members of the graph or have its owner.
    return static_cast<QxDGraph*>(static_cast<const QxGraphMember&>(object).pOwnerGraph());
}

QxQTreeObject::Kind recordKindOf(const QxGraphObject& object, IndexKind kind) {
    switch (kind) {
        case IndexKind::PathEdge:
            return indexShapeOf(object, kind).isSegment() ? QxQTreeObject::PathEdgeSegment
                                                          : QxQTreeObject::PathEdgeRect;
        case IndexKind::PathNode:
            return QxQTreeObject::PathNode;
        case IndexKind::Node:
            return QxQTreeObject::Node;
        case IndexKind::NodeLabel:
            return QxQTreeObject::NodeLabel;
        case IndexKind::ConnectorLabel:
            return QxQTreeObject::ConnectorLabel;
        case IndexKind::EdgeLabel:
            return QxQTreeObject::EdgeLabel;
        case IndexKind::GraphLabel:
            return QxQTreeObject::GraphLabel;
        case IndexKind::Connector:
            break;
    }
    return QxQTreeObject::Connector;
}

void IndexSlot::trackEdgeOf(QxGraphObject& segment) {
    if (const QxDEdge* edge = wholeEdge(segment)) {
        const_cast<QxDEdge*>(edge)->setFlag(flags::EdgeIsTracked, 1);
    }
}

std::int32_t& IndexSlot::of(QxGraphObject& object, IndexKind kind) {
    if (kind == IndexKind::Node) {
        return static_cast<QxDNode&>(object).m_indexSlot;
    }
    if (kind == IndexKind::PathNode) {
        return static_cast<QxPNode&>(object).m_indexSlot;
    }
    if (kind == IndexKind::Connector) {
        return static_cast<QxConnector&>(object).m_indexSlot;
    }
    if (kind != IndexKind::PathEdge) {
        return static_cast<QxLabel&>(object).m_indexSlot;
    }
    return (object.flagWord() & flags::PathObject) != 0 ? static_cast<QxPEdge&>(object).m_indexSlot
                                                        : static_cast<QxDEdge&>(object).m_indexSlot;
}

}  // namespace qx::internal
