// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Where an edge is cut off, and what is seen of its path.
//
// The path runs between the centers of the end objects. At an end that is clipped, the segments up
// to the first bend outside the end object's outline are hidden, and the next one is cut where it
// crosses the outline. What is left, the visible part, is a run of segments; each segment and bend
// in it carries a flag. The flags come in two stages: the new ones are computed first, then those
// that differ are taken over and reported.
//
// The run and the clip points are computed when somebody asks. A change only marks them outdated.

#include <cstdint>
#include <cstdlib>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxGeometricUpdateInfo.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Moment.h"
#include "qx/drawing/clipping/internal/EdgeEnd.h"

using qx::internal::EdgeEnd;
using qx::internal::Moment;

namespace {

/// Both stages at once.
constexpr std::uint32_t AllSegmentBits = qx::flags::SegmentNewVisible | qx::flags::SegmentVisible;

/// Whether `last` is `first` or comes after it, on the way from the source.
bool comesInOrder(const QxDEdge& edge, const QxPEdge* first, const QxPEdge* last) {
    for (QxDisconnectedPathIter it(&edge); it; ++it) {
        if (it.pEdge() == first) {
            return true;
        }
        if (it.pEdge() == last) {
            return false;
        }
    }
    return false;
}

/// Whether a clipped line still runs in its direction along an axis: from `start` to `end`, where
/// the line between the centers runs from `from` to `to`.
bool keepsDirection(std::int32_t from, std::int32_t to, std::int32_t start, std::int32_t end) {
    return (from < to && start <= end) || (from > to && start >= end);
}

}  // namespace

int QxDEdge::changeClipping(std::uint32_t bit, int value) {
    if (hasFlag(bit) == (value != 0 ? 1 : 0)) {
        return value;
    }
    setFlag(bit, value);
    actOnEndObjectChange();  // what a graph covers does not depend on where its edges are cut off
    return value;
}

int QxDEdge::clipSourceSide(int value) {
    return changeClipping(qx::flags::EdgeClipSource, value);
}

int QxDEdge::clipTargetSide(int value) {
    return changeClipping(qx::flags::EdgeClipTarget, value);
}

bool QxDEdge::isClippedAt(bool atSource) const {
    if (hasFlag(atSource ? qx::flags::EdgeClipSource : qx::flags::EdgeClipTarget) != 0) {
        return true;
    }
    const EdgeEnd end(*this, atSource);
    return end && end.forcesClipping();
}

int QxDEdge::useFromClipping() const {
    return isClippedAt(true) ? 1 : 0;
}

int QxDEdge::useToClipping() const {
    return isClippedAt(false) ? 1 : 0;
}

QxPEdge* QxDEdge::findClipPathEdge(int fromSource, int clip) const {
    QxPEdge* const segment = pEndSegment(fromSource != 0 ? m_sourcePathEdge : m_targetPathEdge);
    if (clip == 0) {
        return segment;
    }
    const EdgeEnd end(*this, fromSource != 0);
    if (!end) {
        return nullptr;
    }
    QxDisconnectedPathIter it(this, fromSource != 0 ? QxIterForward : QxIterBackward);
    for (; it && it.pNode() != nullptr; ++it) {
        if (!end.contains(it.pNode()->iCenter())) {
            return it.pEdge();
        }
    }
    const EdgeEnd otherEnd(*this, fromSource == 0);
    return otherEnd && !end.contains(otherEnd.center()) ? it.pEdge() : nullptr;
}

int QxDEdge::getVisiblePart(QxPEdge*& first, QxPEdge*& last, int forceSource,
                            int forceTarget) const {
    const int clipSource = forceSource != 0 ? 1 : useFromClipping();
    const int clipTarget = forceTarget != 0 ? 1 : useToClipping();
    first = findClipPathEdge(1, clipSource);
    last = findClipPathEdge(0, clipTarget);
    bool visible = first != nullptr && last != nullptr;
    if (clipSource == 0 && clipTarget == 0) {
        return visible ? 1 : 0;
    }
    if (visible && clipSource != 0 && clipTarget != 0) {
        visible = first == last ? showsBetweenEnds() : comesInOrder(*this, first, last);
    }
    if (!visible) {
        first = nullptr;
        last = nullptr;
    }
    return visible ? 1 : 0;
}

bool QxDEdge::showsStraight(bool clipSource, bool clipTarget) const {
    const EdgeEnd source(*this, true);
    const EdgeEnd target(*this, false);
    const auto leaves = [](const EdgeEnd& end, const EdgeEnd& other) {
        return end && other && !end.contains(other.center());
    };
    return (!clipSource || leaves(source, target)) && (!clipTarget || leaves(target, source)) &&
           (!clipSource || !clipTarget || showsBetweenEnds());
}

bool QxDEdge::showsBetweenEnds() const {
    const EdgeEnd source(*this, true);
    const EdgeEnd target(*this, false);
    const QxPoint from = source.center();
    const QxPoint to = target.center();
    QxPoint start = from;
    QxPoint end = to;
    source.clip(start, to);
    target.clip(end, from);
    const std::int64_t dx = std::abs(std::int64_t{from.x()} - to.x());
    const std::int64_t dy = std::abs(std::int64_t{from.y()} - to.y());
    if (dx > dy) {
        return keepsDirection(from.x(), to.x(), start.x(), end.x());
    }
    // Coinciding clip points are nothing to see, here, but they are along the other axis.
    return start.y() != end.y() && keepsDirection(from.y(), to.y(), start.y(), end.y());
}

bool QxDEdge::showsWhole() const {
    const QxDNode* source = pSourceNode();
    const QxDNode* target = pTargetNode();
    if (source == nullptr || target == nullptr || hasConnectors() || !liesWithinItsEnds()) {
        return false;
    }
    const QxRect& a = *source->pIRect();
    const QxRect& b = *target->pIRect();
    const std::int64_t dx = std::abs(std::int64_t{a.x()} - b.x());
    const std::int64_t dy = std::abs(std::int64_t{a.y()} - b.y());
    return dx > dy ? a.right() < b.left() || b.right() < a.left()
                   : a.top() < b.bottom() || b.top() < a.bottom();
}

template <class Walk>
void QxDEdge::markVisiblePart(std::uint32_t segmentBits, std::uint32_t bendBits) {
    invalidateEndPoints();
    setFlag(qx::flags::EdgeVisiblePartUpdated, 1);
    tellOfLabels();
    if (isPathImplied()) {
        const bool shows = showsWhole() || showsStraight(isClippedAt(true), isClippedAt(false));
        setFlag(qx::flags::EdgeHasVisiblePart, shows ? 1 : 0);
        return;
    }
    QxPEdge* first = nullptr;
    QxPEdge* last = nullptr;
    const int shows = getVisiblePart(first, last, 0, 0);
    setFlag(qx::flags::EdgeHasVisiblePart, shows);
    bool inside = false;
    for (Walk it(this); it; ++it) {
        inside = inside || (it.pEdge() == first && shows != 0);
        it.pEdge()->setFlag(segmentBits, inside ? 1 : 0);
        inside = inside && it.pEdge() != last;
        if (it.pNode() != nullptr) {
            it.pNode()->setFlag(bendBits, inside ? 1 : 0);
        }
    }
}

void QxDEdge::updateNewVisiblePart() {
    pSourceOrPathEdge();
    markVisiblePart<QxPathIter>(qx::flags::SegmentNewVisible, qx::flags::BendNewVisible);
}

void QxDEdge::updateNewVisiblePartDisconnected() {
    pSourceOrPathEdge();
    markVisiblePart<QxDisconnectedPathIter>(qx::flags::SegmentNewVisible,
                                            qx::flags::BendNewVisible);
}

void QxDEdge::updateVisiblePart() {
    constexpr std::uint32_t BendBits = qx::flags::BendNewVisible | qx::flags::BendVisible;
    if (isActive()) {
        markVisiblePart<QxPathIter>(AllSegmentBits, BendBits);
    } else {
        markVisiblePart<QxDisconnectedPathIter>(AllSegmentBits, BendBits);
    }
}

void QxDEdge::refreshVisiblePart() const {
    if (isUpdatedVisiblePart() == 0 && isActive()) {
        // The flags are a cache: they say nothing that the geometry does not say.
        const_cast<QxDEdge*>(this)->updateVisiblePart();
    }
}

void QxDEdge::reportVisiblePart(Moment moment, QxGeometricUpdateInfo* info) {
    const Moment gone = goneAt(moment);
    tellOfLabels();
    for (auto it = madeParts(); it; ++it) {
        QxPEdge* segment = it.pEdge();
        const int sawSegment = segment->hasFlag(qx::flags::SegmentVisible);
        segment->setFlag(qx::flags::SegmentVisible, segment->inNewVisiblePart());
        if (sawSegment != 0 || segment->inNewVisiblePart() != 0) {
            segment->report(segment->inNewVisiblePart() != 0 ? moment : gone, info);
        }
        QxPNode* bend = it.pNode();
        if (bend == nullptr) {
            continue;
        }
        const int sawBend = bend->hasFlag(qx::flags::BendVisible);
        bend->setFlag(qx::flags::BendVisible, bend->inNewVisiblePart());
        if (sawBend != 0 || bend->inNewVisiblePart() != 0) {
            bend->report(bend->inNewVisiblePart() != 0 ? moment : gone, info, 0);
        }
    }
    if (reportsTo(info) && !liesWithinItsEnds()) {
        QxRect rect;
        ntBoundingRectWithPathNodes(rect);
        qx::internal::collect(*info, moment, *this, rect);
    }
}

void QxDEdge::updateVisiblePartAfterGeometryChanges(QxGeometricUpdateInfo* info) {
    updateNewVisiblePart();
    reportVisiblePart(Moment::AfterChange, info);
}

void QxDEdge::updateVisiblePartAfterInsert(QxGeometricUpdateInfo* info) {
    updateNewVisiblePartDisconnected();
    reportVisiblePart(Moment::AfterInsert, info);
}

QxPEdge* QxDEdge::pFromClippingEdge() const {
    return pEndOfVisiblePart(QxIterForward);
}

QxPEdge* QxDEdge::pToClippingEdge() const {
    return pEndOfVisiblePart(QxIterBackward);
}

QxPEdge* QxDEdge::pEndOfVisiblePart(QxIterDirectionEnum direction) const {
    if (hasVisiblePart() == 0) {
        return nullptr;
    }
    QxPathIter it(this, direction);
    while (it && it.pEdge()->hasFlag(qx::flags::SegmentVisible) == 0) {
        ++it;
    }
    return it.pEdge();
}

int QxDEdge::hasVisiblePart() const {
    refreshVisiblePart();
    return isUpdatedVisiblePart() != 0 ? hasFlag(qx::flags::EdgeHasVisiblePart) : 0;
}

int QxDEdge::hasVisiblePart(int value) {
    refreshVisiblePart();  // or the next reader would
    invalidateEndPoints();
    setFlag(qx::flags::EdgeHasVisiblePart, value);
    setFlag(qx::flags::EdgeVisiblePartUpdated, 1);
    tellOfLabels();
    return value;
}

int QxDEdge::isUpdatedVisiblePart(int value) {
    invalidateEndPoints();
    setFlag(qx::flags::EdgeVisiblePartUpdated, value);
    tellOfLabels();
    return value;
}

int QxDEdge::usePartiallyUpdated(int value) {
    invalidateEndPoints();
    setFlag(qx::flags::EdgePartiallyUpdated, value);
    return value;
}

void QxDEdge::readClipPoint(QxPoint& point, const QxGEdge& line, bool atSource) const {
    ClipPoint& cached = atSource ? m_fromClip : m_toClip;
    if (!cached.isKnown()) {
        QxPoint from = atSource ? line.ntFromPoint(0) : line.ntToPoint(0);
        const QxPoint toward = atSource ? line.ntToPoint(0) : line.ntFromPoint(0);
        if (const EdgeEnd end(*this, atSource); end) {
            end.clip(from, toward);
        }
        cached = {from.x(), from.y()};
    }
    point.moveTo(cached.x, cached.y);
}

void QxDEdge::readEnd(QxPoint& point, int clipped, bool atSource) const {
    if (clipped != 0) {
        const ClipPoint& cached = atSource ? m_fromClip : m_toClip;
        if (cached.isKnown()) {
            point.moveTo(cached.x, cached.y);
            return;
        }
        clipped = isActive() ? hasVisiblePart() : 0;
    }
    if (isPathImplied()) {
        if (clipped != 0 && isClippedAt(atSource)) {
            readClipPoint(point, *this, atSource);
        } else if (const EdgeEnd end(*this, atSource); end) {
            point = end.center();
        }
        return;
    }
    const QxPEdge* segment = atSource ? m_sourcePathEdge : m_targetPathEdge;
    if (clipped != 0) {
        const QxPEdge* shown = pEndOfVisiblePart(atSource ? QxIterForward : QxIterBackward);
        clipped = shown != nullptr ? 1 : 0;
        segment = shown != nullptr ? shown : segment;
    }
    if (segment != nullptr) {
        segment->readEnd(point, clipped, atSource);
    }
}
