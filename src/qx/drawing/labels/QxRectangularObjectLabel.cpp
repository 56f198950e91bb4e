// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Labels of nodes, connectors and graphs.

#include "qx/drawing/QxRectangularObjectLabel.h"

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/foundation/geometry/QxShape.h"

namespace {

/// One axis of a place: a proportion (thousandths) and the offset beyond it.
struct AxisPlace {
    std::int16_t perMil;
    std::int32_t offset;
};

/// Where a point lies that is `d` away from the center of an extent with these halves; `inside` is
/// its proportion within the extent.
AxisPlace axisPlace(std::int64_t d, std::int32_t lower, std::int32_t upper, std::int16_t inside) {
    const std::int64_t extent = std::int64_t{lower} + upper;
    if (2 * (d < 0 ? -d : d) <= extent) {
        return {inside, 0};
    }
    return d > 0 ? AxisPlace{1000, qx::clampToInt32(d - upper)}
                 : AxisPlace{-1000, qx::clampToInt32(d + lower)};
}

}  // namespace

QxRectangularObjectLabel::QxRectangularObjectLabel(QxOwnedObject* owner, std::int16_t perMilX,
                                                   std::int16_t perMilY)
    : QxLabel(owner) {
    m_proportion = {perMilX, perMilY};
}

int QxRectangularObjectLabel::isRectangularObjectLabel() const {
    return 1;
}

int QxRectangularObjectLabel::vIsVisible() const {
    const QxGraphObject* owner = pOwnerGraphObject();
    return owner != nullptr ? owner->isVisible() : 0;
}

QxPoint QxRectangularObjectLabel::ntCenter() const {
    return pValidOwner() != nullptr ? referenceAt(m_proportion) + pIRect()->center() : QxPoint();
}

void QxRectangularObjectLabel::ntCenter(QxPoint& center) const {
    center = QxRectangularObjectLabel::ntCenter();
}

void QxRectangularObjectLabel::setOffsetAndPerMil(const QxPoint& center, const QxRect& ownerRect) {
    QxPerMil inside;
    inside.compute(qx::saturatingSub(center.x(), ownerRect.x()),
                   qx::saturatingSub(center.y(), ownerRect.y()), ownerRect);
    const AxisPlace x =
        axisPlace(std::int64_t{center.x()} - ownerRect.x(), ownerRect.leftHalfWidth(),
                  ownerRect.rightHalfWidth(), inside.x());
    const AxisPlace y =
        axisPlace(std::int64_t{center.y()} - ownerRect.y(), ownerRect.bottomHalfHeight(),
                  ownerRect.topHalfHeight(), inside.y());
    place({x.perMil, y.perMil}, QxPoint(x.offset, y.offset));
}

void QxRectangularObjectLabel::vMoveTo(const QxPoint& center) {
    if (QxRect rect; getOwnerRect(rect)) {
        setOffsetAndPerMil(center, rect);
    }
}

void QxRectangularObjectLabel::vSetPerMil(const QxPerMil& perMil) {
    place({perMil.x(), perMil.y()}, pIRect()->center());
}

void QxRectangularObjectLabel::setPerMil(const QxPerMil& perMil) {
    if (perMil == QxPerMil(perMilX(), perMilY())) {
        return;
    }
    qx::internal::Change::run(*this, [&] { vSetPerMil(perMil); });
}

int QxRectangularObjectLabel::vGetAttachmentPoint(QxPoint& point, int inOwnGraph) const {
    QxRect rect;
    if (!getOwnerRect(rect)) {
        return 0;
    }
    point = rect.center();
    const QxPoint center = ntCenter();
    const QxDNode* node = pOwnerNode();
    const QxConnector* connector = pOwnerConnector();
    const QxShape* shape = node != nullptr        ? node->pShape()
                           : connector != nullptr ? connector->pShape()
                                                  : nullptr;
    if (shape != nullptr) {
        shape->intersectsSegment(point, rect.center(), center, rect.center(), rect.size());
    } else if (isGraphLabel() == 0 && !(point == center)) {
        QxPoint far = center;
        rect.intersectsSegment(point, far);
    }
    const int visible = isVisible();
    if (inOwnGraph == 0 && visible != 0) {
        pGraph()->expandedTransformPoint(point);
    }
    return visible;
}
