// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/nesting/internal/Frame.h"

#include <cmath>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/path/internal/TakeBends.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/QxDChildGraphForest.h"

namespace qx::internal {

const QxDGraph* frameOf(const QxDGraph* graph) {
    if (graph == nullptr) {
        return nullptr;
    }
    if (graph->isHideGraph() != 0 && graph->pHideFromGraph() != nullptr) {
        return graph->pHideFromGraph();
    }
    return graph->isIntergraph() != 0 ? graph->pAnchorGraph() : graph;
}

namespace {

/// x' = x * scale + offset, on each axis.
struct Climb {
    double offsetX = 0.0;
    double scaleX = 1.0;
    double offsetY = 0.0;
    double scaleY = 1.0;

    Climb(const QxDGraph* graph, const QxDGraph* last) {
        while (graph != last) {
            const QxDNode* node = graph->pParentNode();
            if (node != nullptr && node->expanded() != 0) {
                follow(*graph->pTransform());
            }
            const QxGraphMember* member = graph->pParentGraphMember();
            const auto* around = static_cast<const QxDGraph*>(member->pOwnerGraph());
            graph = frameOf(around);
        }
    }
    void follow(const QxTransform& step) {
        QxDTuple offset;
        step.transformPoint(QxDTuple(offsetX, offsetY), offset);
        offsetX = offset.x();
        offsetY = offset.y();
        scaleX *= step.scaleX();
        scaleY *= step.scaleY();
    }
};

/// The graph around, whether it is shown there or not; null at the top.
const QxDGraph* parentFrame(const QxDGraph* graph) {
    const QxGraphMember* member = graph->pParentGraphMember();
    return member != nullptr ? frameOf(static_cast<const QxDGraph*>(member->pOwnerGraph()))
                             : nullptr;
}

std::int32_t depthOf(const QxDGraph* graph) {
    std::int32_t depth = 0;
    for (; graph != nullptr; graph = parentFrame(graph)) {
        ++depth;
    }
    return depth;
}

const QxDGraph* commonFrame(const QxDGraph* a, const QxDGraph* b) {
    std::int32_t depthA = depthOf(a);
    std::int32_t depthB = depthOf(b);
    while (a != b) {
        if (depthA >= depthB) {
            a = parentFrame(a);
            --depthA;
        } else {
            b = parentFrame(b);
            --depthB;
        }
    }
    return a;
}

}  // namespace

FrameMap::FrameMap(const QxDGraph* from, const QxDGraph* to) {
    from = frameOf(from);
    to = frameOf(to);
    if (from == nullptr || to == nullptr || from == to) {
        return;
    }
    const QxDGraph* const common = commonFrame(from, to);
    if (common == nullptr) {
        return;
    }
    const Climb up(from, common);
    const Climb down(to, common);
    m_scaleX = up.scaleX / down.scaleX;
    m_scaleY = up.scaleY / down.scaleY;
    m_offsetX = (up.offsetX - down.offsetX) / down.scaleX;
    m_offsetY = (up.offsetY - down.offsetY) / down.scaleY;
}

bool FrameMap::isIdentity() const {
    return m_offsetX == 0.0 && m_offsetY == 0.0 && m_scaleX == 1.0 && m_scaleY == 1.0;
}

std::int32_t roundedShift(double shift) {
    return qx::truncToInt32(std::round(shift));
}

QxPoint FrameMap::operator()(const QxPoint& point) const {
    const auto mapped = [](std::int32_t value, double scale, double offset) {
        return scale == 1.0 ? qx::saturatingAdd(value, roundedShift(offset))
                            : qx::floorHalfUp(value * scale + offset);
    };
    return {mapped(point.x(), m_scaleX, m_offsetX), mapped(point.y(), m_scaleY, m_offsetY)};
}

void mapBends(QxDEdge& edge, const FrameMap& map) {
    if (map.isIdentity()) {
        return;
    }
    for (QxPNode* bend : heldBends(edge)) {
        if (bend->pOwnerEdge() == &edge) {
            bend->ntMoveTo(map(bend->iCenter()));
        }
    }
}

}  // namespace qx::internal
