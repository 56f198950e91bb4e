// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Where new labels go: the numbers below are the whole rule. Nothing here looks at what else lies
// there; O(1), for labels of edges O(bends).

#include "qx/drawing/labels/internal/DefaultPlaces.h"

#include <algorithm>
#include <array>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/drawing/QxPEdge.h"

namespace qx::internal {

namespace {

/// A side on one axis: before the owner, in its middle, behind it.
struct Slot {
    int x;
    int y;
};
constexpr std::array<Slot, 8> Around{
    {{-1, 0}, {1, 0}, {0, 1}, {0, -1}, {-1, -1}, {1, 1}, {-1, 1}, {1, -1}}};
constexpr std::int32_t RingWidth = 30;

/// How far the center of a label is from that of its owner: touching it, and a step further out for
/// each ring.
std::int32_t displacement(int side, std::int32_t ring, std::int32_t ownerLower,
                          std::int32_t ownerUpper, std::int32_t labelLower,
                          std::int32_t labelUpper) {
    if (side == 0) {
        return 0;
    }
    const std::int64_t out = std::int64_t{RingWidth} * ring;
    return side < 0 ? clampToInt32(-(out + ownerLower + labelUpper))
                    : clampToInt32(out + ownerUpper + labelLower);
}

std::int16_t proportionOf(std::int32_t way, std::int32_t half) {
    const double perMil = way * 1000.0 / std::max(half, 1);
    return truncToInt16(std::clamp(perMil, -3000.0, 3000.0));
}

/// Around a rectangle of the owner.
void placeAround(const QxRect& rect, QxRectangularObjectLabel& label, std::int32_t count) {
    if (count == 0) {
        return;
    }
    const Slot slot = Around[static_cast<std::size_t>((count - 1) % 8)];
    const std::int32_t ring = (count - 1) / 8;
    const std::int32_t dx = displacement(slot.x, ring, rect.leftHalfWidth(), rect.rightHalfWidth(),
                                         label.ntLeftHalfWidth(), label.ntRightHalfWidth());
    const std::int32_t dy =
        displacement(slot.y, ring, rect.bottomHalfHeight(), rect.topHalfHeight(),
                     label.ntBottomHalfHeight(), label.ntTopHalfHeight());
    label.ntSetPerMil(proportionOf(dx, rect.rightHalfWidth()),
                      proportionOf(dy, rect.topHalfHeight()));
}

/// The rectangle of the segment at a distance along the edge.
QxRect segmentRectAt(const QxDEdge& edge, std::int32_t distance) {
    QxRect rect;
    if (edge.hasBends() == 0) {
        edge.ntBoundingRect(rect, 1);
    } else if (const QxPEdge* segment = edge.pPathEdgeAtDistance(distance)) {
        segment->ntBoundingRect(rect, 1);
    }
    return rect;
}

}  // namespace

QxDGraph* graphAround(const QxDNode& owner) {
    return owner.pOwnerGraph();
}

QxDGraph* graphAround(const QxDEdge& owner) {
    return owner.pOwnerGraph();
}

QxDGraph* graphAround(const QxConnector& owner) {
    return owner.pGraph();
}

QxDGraph* graphAround(QxDGraph& owner) {
    return &owner;
}

void placeByDefault(const QxDNode& owner, QxNodeLabel& label, std::int32_t count) {
    placeAround(*owner.pIRect(), label, count);
}

void placeByDefault(const QxConnector& owner, QxConnectorLabel& label, std::int32_t count) {
    QxRect rect;
    owner.ntBoundingRect(rect);
    placeAround(rect, label, count);
}

void placeByDefault(const QxDEdge& owner, QxEdgeLabel& label, std::int32_t count) {
    if (owner.connected() == 0 || owner.deactivated() != 0) {
        return;
    }
    const std::int32_t half = count / 2;
    const std::int32_t step = half % 2 != 0 ? -(half / 2) - 1 : half / 2;
    const std::int64_t wanted = 500 + std::int64_t{150} * step;
    const auto perMil = static_cast<std::int16_t>(std::clamp<std::int64_t>(wanted, 0, 1000));
    const std::int64_t length = owner.ntEdgeLength();
    const QxRect rect = segmentRectAt(owner, clampToInt32(length * perMil / 1000));
    const bool isEven = count % 2 == 0;
    label.ntPerMilDistanceFromSource(perMil);
    if (rect.width() > rect.height()) {
        label.ntSetOffset(0, isEven ? -label.ntBottomHalfHeight() : label.ntTopHalfHeight());
    } else {
        label.ntSetOffset(isEven ? label.ntLeftHalfWidth() : -label.ntRightHalfWidth(), 0);
    }
}

void placeByDefault(const QxDGraph&, QxGraphLabel& label, std::int32_t count) {
    const int slot = count % 6;
    const std::int64_t row = count / 6;
    const std::int64_t height = label.ntHeight();
    const int side = slot < 2 ? 0 : (slot < 4 ? -1 : 1);
    const bool isAbove = slot % 2 == 0;
    const std::int32_t dx = side == 0  ? 0
                            : side < 0 ? label.ntLeftHalfWidth() + 2
                                       : -2 - label.ntRightHalfWidth();
    const std::int64_t dy = isAbove ? (height + 2) * row + 2 + label.ntBottomHalfHeight()
                                    : -(height + 2) * row + 2 - label.ntTopHalfHeight();
    label.ntSetPerMil(static_cast<std::int16_t>(1000 * side), isAbove ? 1000 : -1000);
    label.ntSetOffset(dx, clampToInt32(dy));
}

void placeAt(const QxDNode& owner, QxNodeLabel& label, const QxPoint& center) {
    label.setOffsetAndPerMil(center, *owner.pIRect());
}

void placeAt(const QxConnector& owner, QxConnectorLabel& label, const QxPoint& center) {
    QxRect rect;
    owner.ntBoundingRect(rect);
    label.setOffsetAndPerMil(center, rect);
}

void placeAt(const QxDEdge& owner, QxEdgeLabel& label, const QxPoint& center) {
    const QxEdgeLabel::Spot spot = QxEdgeLabel::spotOn(owner, center, 500);
    label.ntPerMilDistanceFromSource(spot.perMil);
    label.ntSetOffset(spot.offset.x(), spot.offset.y());
}

void placeAt(const QxDGraph& owner, QxGraphLabel& label, const QxPoint& center) {
    QxRect rect;
    owner.ntUpdatedBoundingRect(rect);
    QxPerMil perMil(label.perMilX(), label.perMilY());
    const QxPoint way = center - rect.center();
    if (rect.width() == 0 || rect.height() == 0) {
        label.ntSetOffset(saturatingSub(way.x(), perMil.getOffsetX(rect)),
                          saturatingSub(way.y(), perMil.getOffsetY(rect)));
        return;
    }
    perMil.compute(saturatingSub(way.x(), label.ntOffsetX()),
                   saturatingSub(way.y(), label.ntOffsetY()), rect);
    label.ntSetPerMil(perMil);
}

}  // namespace qx::internal
