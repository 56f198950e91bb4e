// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Labels of edges: place, pinning, copies.

#include "qx/drawing/QxEdgeLabel.h"

#include <algorithm>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxLabelInfoEdgeMoved.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/drawing/labels/internal/LabelChange.h"

QxEdgeLabel::QxEdgeLabel(QxOwnedObject* owner) : QxLabel(owner) {
    m_proportion = {500, 0};
}

QxEdgeLabel::QxEdgeLabel(const QxEdgeLabel& source, QxDeepFlagEnum) : QxEdgeLabel(source.pOwner()) {
    QxEdgeLabel::copyAttributes(&source);
}

QxObject* QxEdgeLabel::vCloneObject() const {
    return new QxEdgeLabel(*this, QxDeepCopy);
}

QxObject* QxEdgeLabel::vCloneAttributes() const {
    return new QxEdgeLabel(*this, QxAttributeCopy);
}

void QxEdgeLabel::copyLabel(const QxEdgeLabel* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    const qx::internal::Ref alive(*this);
    if (QxDEdge* owner = pOwnerEdge()) {
        owner->copyIntoLabel(*this, *source, deep);
    } else {
        copyAttributes(source);
    }
    cleanUpLabelMoveControlInfo();
}

int QxEdgeLabel::isEdgeLabel() const {
    return 1;
}

QxDEdge* QxEdgeLabel::pOwnerEdge() const {
    return static_cast<QxDEdge*>(pValidOwner());
}

int QxEdgeLabel::vIsVisible() const {
    const QxDEdge* edge = pOwnerEdge();
    return edge != nullptr && edge->pOwnerGraph() != nullptr ? edge->isVisible() : 0;
}

QxPoint QxEdgeLabel::pointOnEdge() const {
    return referenceAt(m_proportion);
}

QxPoint QxEdgeLabel::ntCenter() const {
    if (globalOffsetMode() != 0) {
        return pQueryLabelExtras()->pinnedAt;
    }
    return pOwnerEdge() != nullptr ? pointOnEdge() + pIRect()->center() : QxPoint();
}

void QxEdgeLabel::ntCenter(QxPoint& center) const {
    center = QxEdgeLabel::ntCenter();
}

int QxEdgeLabel::vGetAttachmentPoint(QxPoint& point, int inOwnGraph) const {
    const int visible = isVisible();
    const QxDEdge* edge = pOwnerEdge();
    if (edge == nullptr) {
        return visible;
    }
    const QxPoint center = ntCenter();
    std::int32_t distance = 0;
    edge->projectionPoint(&center, &point, &distance);
    if (inOwnGraph == 0 && visible != 0) {
        edge->pOwnerGraph()->expandedTransformPoint(point);
    }
    return visible;
}

QxEdgeLabel::Spot QxEdgeLabel::spotOn(const QxDEdge& edge, const QxPoint& center,
                                      std::int16_t perMil) {
    QxPoint nearest;
    std::int32_t distance = 0;
    edge.projectionPoint(&center, &nearest, &distance);
    if (const std::int64_t length = edge.ntEdgeLength(); length != 0) {
        const std::int64_t along = std::int64_t{distance} * 1000 / length;
        perMil = static_cast<std::int16_t>(std::clamp<std::int64_t>(along, 0, 1000));
    }
    QxPoint onEdge;
    edge.pointOnEdge(&onEdge, perMil);
    return {perMil, center - onEdge};
}

QxEdgeLabel::Spot QxEdgeLabel::spotAt(const QxPoint& center) const {
    const QxDEdge* edge = pOwnerEdge();
    return edge != nullptr ? spotOn(*edge, center, m_proportion.x)
                           : Spot{m_proportion.x, pIRect()->center()};
}

void QxEdgeLabel::updatePerMil(const QxPoint& center) {
    const Spot spot = spotAt(center);
    place({spot.perMil, 0}, spot.offset);
}

void QxEdgeLabel::updateOffset(const QxPoint& center) {
    if (pOwnerEdge() != nullptr) {
        place(m_proportion, center - pointOnEdge());
    }
}

void QxEdgeLabel::vMoveTo(const QxPoint& center) {
    if (globalOffsetMode() == 0) {
        updatePerMil(center);
    } else if (!(center == ntCenter())) {
        changeGeometry(LabelOffsetChanged, [&] { pinAt(center); });
    }
}

void QxEdgeLabel::pinAt(const QxPoint& center) {
    labelExtras().pinnedAt = center;
    setFlag(qx::flags::LabelPinned, 1);
}

int QxEdgeLabel::globalOffsetMode(int mode) {
    const QxPoint center = ntCenter();
    if (mode != 0) {
        pinAt(center);
        return mode;
    }
    setFlag(qx::flags::LabelPinned, 0);
    const Spot spot = spotAt(center);
    placeQuietly({spot.perMil, 0}, spot.offset);  // it stays where it is: nothing to tell
    return mode;
}

void QxEdgeLabel::vSetPerMilDistanceFromSource(std::int16_t value) {
    if (value >= 0 && value <= 1000) {
        place({value, 0}, pIRect()->center());
    }
}

std::int16_t QxEdgeLabel::perMilDistanceFromSource(std::int16_t value) {
    if (value >= 0 && value <= 1000 && value != m_proportion.x) {
        qx::internal::Change::run(*this, [&] { vSetPerMilDistanceFromSource(value); });
    }
    return m_proportion.x;
}
