// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/geometry/QxPerMil.h"
#include "qx/foundation/geometry/QxRect.h"

namespace qx::internal {

/// The offset in thousandths of the half extent on its side, truncated; 500 without one, where no
/// thousandth is better than another.
inline std::int16_t proportionOf(std::int32_t offset, std::int32_t lower, std::int32_t upper) {
    const std::int32_t half = offset < 0 ? lower : upper;
    return half != 0 ? qx::clampToInt16(std::int64_t{offset} * 1000 / half) : std::int16_t{500};
}
inline QxPerMil proportionOf(const QxSize& offset, const QxRect& rect) {
    return {proportionOf(offset.width(), rect.leftHalfWidth(), rect.rightHalfWidth()),
            proportionOf(offset.height(), rect.bottomHalfHeight(), rect.topHalfHeight())};
}

/// Where a calculated connector lies on its node.
struct ConnectorPlace {
    QxPerMil perMil;
    QxSize offset;

    void giveTo(QxConnector& connector) const {
        connector.ntSetPerMil(perMil);
        connector.ntSetOffset(offset);
    }
    QxConnector* newConnector(QxDNode& node) const {
        return node.ntAddConnector(perMil.x(), perMil.y(), offset.width(), offset.height());
    }
    bool isPlaceOf(const QxConnector& connector) const {
        return connector.getPerMil() == perMil && connector.ntOffset() == offset;
    }
};

enum class Thousandths { Nearest, Truncated };

/// The place that a connector for an end of the edge takes to lie at a point, in the coordinates of
/// the node's graph: an offset; between graphs a proportion, and as an offset only what its
/// rounding leaves, so that the end lies on the line that was meant.
inline ConnectorPlace placeOnNode(const QxDEdge& edge, const QxRect& rect, const QxPoint& at,
                                  Thousandths thousandths) {
    ConnectorPlace place;
    rect.setOffset(at, place.offset);
    if (edge.intergraphEdge() == 0) {
        return place;
    }
    if (thousandths == Thousandths::Nearest) {
        rect.setPerMil(at, place.perMil);
    } else {
        place.perMil = proportionOf(place.offset, rect);
    }
    place.offset = QxSize(qx::saturatingSub(place.offset.width(), place.perMil.getOffsetX(rect)),
                          qx::saturatingSub(place.offset.height(), place.perMil.getOffsetY(rect)));
    return place;
}

}  // namespace qx::internal
