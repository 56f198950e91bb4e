// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What a label of an edge does when the path of its edge changes.
//
// Before the change it notes the segment that it lies at, where on that, on which side and how
// near. After the change there are two ways to follow: to stay at the same proportion of that
// segment, so that the label is found where one looks for it; or to slide along it until the label
// touches it with a corner, on the side that it was on.

#include <algorithm>
#include <array>
#include <cstdlib>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxLabelInfoEdgeMoved.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/foundation/util/internal/Ref.h"

using qx::internal::Ref;

QxLabelInfoEdgeMoved::~QxLabelInfoEdgeMoved() {
    pPathEdge(nullptr, 0);
}

QxPEdge* QxLabelInfoEdgeMoved::pPathEdge(QxPEdge* segment, std::int32_t index) {
    if (segment != nullptr) {
        segment->vAddRef();
    }
    if (m_pathEdge != nullptr) {
        m_pathEdge->vRelease();
    }
    m_index = index;
    return m_pathEdge = segment;
}

QxPEdge* QxEdgeLabel::pPathEdgeOfAttachmentPoint() const {
    const QxDEdge* edge = pOwnerEdge();
    if (edge == nullptr) {
        return nullptr;
    }
    const std::int64_t length = edge->ntEdgeLength();
    return edge->pPathEdgeAtDistance(qx::clampToInt32(length * m_proportion.x / 1000));
}

std::int16_t QxEdgeLabel::perMilOfAttachPointOnPathEdge() const {
    const QxDEdge* edge = pOwnerEdge();
    return edge != nullptr ? edge->perMilOnSegmentAt(m_proportion.x) : std::int16_t{500};
}

const QxLabelInfoEdgeMoved* QxEdgeLabel::pFirstMoveInfo() const {
    const auto* extras = pQueryLabelExtras();
    return extras != nullptr && !extras->moves.empty() ? extras->moves.front().get() : nullptr;
}

void QxEdgeLabel::cleanUpLabelMoveControlInfo() {
    if (pFirstMoveInfo() != nullptr) {
        labelExtras().moves.clear();
    }
}

void QxEdgeLabel::noteRelation(QxLabelInfoEdgeMoved& info, const QxPEdge& segment) const {
    constexpr std::int32_t Tolerance = 5;
    if (labelTouchesPathEdge(&segment, Tolerance) != 0) {
        info.relation(QxLabelInfoEdgeMoved::Touches);
    } else if (labelOverlapsPathEdge(&segment) != 0) {
        info.relation(QxLabelInfoEdgeMoved::Overlaps);
    }
}

void QxEdgeLabel::collectInitInfoOwnerEdgeMoved() {
    auto info = Ref<QxLabelInfoEdgeMoved>::adopt(new QxLabelInfoEdgeMoved);
    QxPEdge* segment = moveLabelOnOwnerMove() != 0 ? pPathEdgeOfAttachmentPoint() : nullptr;
    if (segment != nullptr) {
        info->pPathEdge(segment, pOwnerEdge()->indexOfPathEdge(segment));
        info->perMilOnPathEdge(perMilOfAttachPointOnPathEdge());
        info->relation(QxLabelInfoEdgeMoved::Apart);
        noteRelation(*info, *segment);
        info->endMoved(whichEndPointMoved(segment));
        const QxPoint from = segment->ntFromPoint(1);
        const QxPoint to = segment->ntToPoint(1);
        const auto side = whichSideOfEdge(from, to, getAngleOfEdgeSegment(from, to));
        const bool isSeenFromTarget = info->endMoved() == QxEdgeSourceMoved;
        info->side((side == QxEdgeLabelLeftSide) != isSeenFromTarget ? QxEdgeLabelLeftSide
                                                                     : QxEdgeLabelRightSide);
    }
    info->oldCenter(ntCenter());
    labelExtras().moves.push_back(std::move(info));
}

void QxEdgeLabel::collectInfoOwnerEdgeMoved() {
    if (pFirstMoveInfo() == nullptr || moveLabelOnOwnerMove() == 0) {
        return;
    }
    QxLabelInfoEdgeMoved& info = *labelExtras().moves.front();
    const QxPEdge* segment = getPathEdgeOfOldAttachPoint(&info);
    if (info.relation() != QxLabelInfoEdgeMoved::Touches && segment != nullptr) {
        noteRelation(info, *segment);
    }
}

void QxEdgeLabel::actOnLabelEdgeMoved() {
    const QxLabelInfoEdgeMoved* first = pFirstMoveInfo();
    if (first == nullptr) {
        return;
    }
    const Ref alive(*this);
    const Ref info(*first);
    if (moveLabelOnOwnerMove() != 0) {
        actOnAdjustPerMilFromSource(first);
    } else if (first->pOldCenter() != nullptr) {
        updateOffset(*first->pOldCenter());
    }
}

void QxEdgeLabel::actOnAdjustPerMilFromSource(const QxLabelInfoEdgeMoved* info) {
    const QxDEdge* edge = pOwnerEdge();
    const std::int64_t total = edge != nullptr ? edge->ntEdgeLength() : 0;
    if (info == nullptr || info->pPathEdge() == nullptr || total == 0) {
        return;
    }
    // On a straight edge the proportion of the edge and that of its segment are the same.
    const QxPEdge* wanted = info->pPathEdge()->pOwnerEdge() == edge ? info->pPathEdge() : nullptr;
    std::int64_t before = 0;
    std::int32_t index = 0;
    for (QxPathIter it(edge); it; ++it) {
        const std::int64_t length = it.pEdge()->ntEdgeLength();
        ++index;
        if (wanted != nullptr ? it.pEdge() == wanted : index == info->pathEdgeIndex()) {
            const std::int64_t along = before * 1000 + length * info->perMilOnPathEdge();
            vSetPerMilDistanceFromSource(static_cast<std::int16_t>(
                std::clamp<std::int64_t>((along + total / 2) / total, 0, 1000)));
            return;
        }
        before += length;
    }
}

QxPEdge* QxEdgeLabel::getPathEdgeOfOldAttachPoint(const QxLabelInfoEdgeMoved* info) const {
    QxDEdge* edge = pOwnerEdge();
    if (edge == nullptr) {
        return nullptr;
    }
    QxPEdge* noted = info != nullptr ? info->pPathEdge() : nullptr;
    return noted != nullptr && noted->pOwnerEdge() == edge ? noted : edge->pSourceOrPathEdge();
}

std::int32_t QxEdgeLabel::slideAt(std::int32_t angle) const {
    if (angle % 45 == 0) {
        return 0;
    }
    const int eighth = angle / 45;
    const bool isFlat = eighth == 0 || eighth == 3 || eighth == 4 || eighth == 7;
    const std::int64_t extent = isFlat ? ntWidth() : ntHeight();
    const std::int64_t back = eighth % 2 == 0 ? extent / 2 : 0;
    return qx::clampToInt32((angle - 45 * eighth) * extent / 90 - back);
}

QxPoint QxEdgeLabel::centerBeside(const QxPoint& point, std::int32_t angle,
                                  QxEdgeLabelToWhichSideOfEdgeEnum side) const {
    // For each eighth of the circle the direction of the label from the segment, on its right.
    constexpr std::array<std::array<int, 2>, 8> Right{
        {{0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}}};
    const int eighth = angle % 45 == 0 ? angle / 45 : 2 * (angle / 90) + 1;
    const auto& way = Right[static_cast<std::size_t>(eighth)];
    const int sign = side == QxEdgeLabelRightSide ? 1 : -1;
    return point + QxPoint(sign * way[0] * (ntWidth() / 2), sign * way[1] * (ntHeight() / 2));
}

void QxEdgeLabel::updateOffsetOfEdgeLabelSmoothly(const QxLabelInfoEdgeMoved* info) {
    const QxPEdge* segment = getPathEdgeOfOldAttachPoint(info);
    if (info == nullptr || segment == nullptr) {
        return;
    }
    const bool sourceMoved = info->endMoved() == QxEdgeSourceMoved;
    const QxPoint from = segment->ntFromPoint(1);
    const QxPoint to = segment->ntToPoint(1);
    const QxPoint& fixed = sourceMoved ? to : from;
    const QxPoint& moved = sourceMoved ? from : to;
    const std::int32_t angle = getAngleOfEdgeSegment(fixed, moved);
    const std::int32_t slide = slideAt(angle);
    QxPoint corner = pointOnEdge();
    if (slide != 0) {
        const QxPoint start = corner;
        pointOnEdgeFromDistance(&corner, start.x(), start.y(), moved.x(), moved.y(),
                                info->side() == QxEdgeLabelRightSide ? slide : -slide);
    }
    updateOffset(centerBeside(corner, angle, info->side()));
}

std::int32_t QxEdgeLabel::offsetOfSlidingPoint(const QxPEdge* segment, std::int32_t angle,
                                               QxEdgeLabelToWhichSideOfEdgeEnum side) const {
    if (segment == nullptr || labelTouchesPathEdge(segment, 5) == 0) {
        return 0;
    }
    const QxPoint center = ntCenter();
    const QxPoint start = pointOnEdge();
    if (angle % 45 == 0) {
        const QxPoint way = center - start;
        switch (angle) {
            case 0:
                return way.x();
            case 90:
                return way.y();
            case 180:
                return qx::saturatingSub(0, way.x());
            case 270:
                return qx::saturatingSub(0, way.y());
            default:
                return 0;
        }
    }
    const std::int32_t slide = slideAt(angle);
    const bool goesOn = (side == QxEdgeLabelRightSide) == (angle < 180 || angle > 315);
    const QxPoint end = segment->ntToPoint(1);
    QxPoint slid;
    pointOnEdgeFromDistance(&slid, start.x(), start.y(), end.x(), end.y(), goesOn ? slide : -slide);
    const std::int32_t length = qx::floorHalfUp(start.distance(slid));
    const bool isAhead = angle < 180 ? start.y() < slid.y() : start.y() >= slid.y();
    return isAhead ? length : -length;
}
