// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Moves and resizes of connectors. The raw steps change the place, outdate the edges here and
// fire; the full ones bring the bounds of the graph up to date around them.

#include <algorithm>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/internal/AskedCoordinates.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/update/internal/MoveReactions.h"

using qx::internal::Change;
using qx::internal::withReactions;

namespace {

QxSize usableSize(const QxSize& size) {
    return {std::max(size.width(), 0), std::max(size.height(), 0)};
}

/// Splits a place on an axis with center 0 into a proportion of the extent, within it, and a
/// constant rest.
struct AxisPlace {
    std::int16_t perMil;
    std::int32_t offset;
};
template <class Proportion>
AxisPlace axisPlace(std::int32_t place, std::int32_t center, std::int32_t lower, std::int32_t upper,
                    const Proportion& proportion) {
    if (place >= upper) {
        return {1000, qx::saturatingSub(place, upper)};
    }
    if (place <= lower) {
        return {-1000, qx::saturatingSub(place, lower)};
    }
    return proportion(place - center);
}

void fireBoundsChange(QxConnector& connector, QxDrawingChangeEventTypeEnum type,
                      const QxRect& oldRect) {
    QxRect rect;
    connector.ntBoundingRect(rect);
    if (connector.specified() == 0 || rect == oldRect) {
        return;
    }
    qx::internal::fireDrawingChange(
        connector, type, [&] { return new QxDrawingChangeEventData(&connector, &oldRect, &rect); });
}

}  // namespace

void QxConnector::tellPlaceChange() {
    qx::internal::Coverage::changed(*this);
    invalidateIncidentEdgeEndPoints();
}

void QxConnector::vSetOffset(const QxSize& offset) {
    if (!(offset == ntOffset())) {
        m_offsetX = offset.width();
        m_offsetY = offset.height();
        tellPlaceChange();
    }
}

void QxConnector::vSetPerMil(const QxPerMil& perMil) {
    if (!(perMil == getPerMil())) {
        m_perMilX = perMil.x();
        m_perMilY = perMil.y();
        tellPlaceChange();
    }
}

void QxConnector::vMoveTo(const QxPoint& center) {
    const QxDNode* node = pOwnerNode();
    if (node == nullptr) {
        return;
    }
    QxRect oldRect;
    ntBoundingRect(oldRect);
    const QxRect& rect = *node->pIRect();
    const AxisPlace x =
        axisPlace(center.x(), rect.x(), rect.left(), rect.right(), [&](std::int32_t offset) {
            QxPerMil perMil;
            perMil.computeX(offset, rect);
            return AxisPlace{perMil.x(), offset - perMil.getOffsetX(rect)};
        });
    const AxisPlace y =
        axisPlace(center.y(), rect.y(), rect.bottom(), rect.top(), [&](std::int32_t offset) {
            QxPerMil perMil;
            perMil.computeY(offset, rect);
            return AxisPlace{perMil.y(), offset - perMil.getOffsetY(rect)};
        });
    vSetOffset(QxSize(x.offset, y.offset));
    vSetPerMil(QxPerMil(x.perMil, y.perMil));
    fireBoundsChange(*this, ConnectorMoved, oldRect);
}

void QxConnector::vResize(const QxSize& size) {
    const QxSize newSize = usableSize(size);
    if (newSize == ntSize()) {
        return;
    }
    QxRect oldRect;
    ntBoundingRect(oldRect);
    m_width = newSize.width();
    m_height = newSize.height();
    tellPlaceChange();
    fireBoundsChange(*this, ConnectorResized, oldRect);
}

int QxConnector::moveTo(const QxPoint& center, int inOwnGraph) {
    QxPoint place = center;
    if (pOwnerNode() == nullptr || qx::internal::fromAsked(*this, place, inOwnGraph) == 0) {
        return 0;
    }
    if (place != ntCenter()) {
        withReactions(*this, [&] { vMoveTo(place); });
    }
    return 1;
}

int QxConnector::move(const QxSize& offset, int inOwnGraph) {
    QxSize step = offset;
    if (pOwnerNode() == nullptr || qx::internal::fromAsked(*this, step, inOwnGraph) == 0) {
        return 0;
    }
    const QxPoint center = ntCenter();
    return moveTo(qx::saturatingAdd(center.x(), step.width()),
                  qx::saturatingAdd(center.y(), step.height()), 1);
}

int QxConnector::resize(const QxSize& size, int inOwnGraph) {
    QxSize newSize = size;
    if (qx::internal::fromAsked(*this, newSize, inOwnGraph) == 0) {
        return 0;
    }
    newSize = usableSize(newSize);
    if (!(newSize == ntSize())) {
        Change::run(*this, [&] { vResize(newSize); });
    }
    return 1;
}

int QxConnector::setOffset(const QxSize& offset, int inOwnGraph) {
    QxSize newOffset = offset;
    if (qx::internal::fromAsked(*this, newOffset, inOwnGraph) == 0) {
        return 0;
    }
    if (!(newOffset == ntOffset())) {
        withReactions(*this, [&] { vSetOffset(newOffset); });
    }
    return 1;
}

int QxConnector::setPerMil(const QxPerMil& perMil) {
    if (!(perMil == getPerMil())) {
        withReactions(*this, [&] { vSetPerMil(perMil); });
    }
    return 1;
}
