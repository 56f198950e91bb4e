// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The size and place that an expanded node has around its nested graph.

#include <cstdlib>

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/QxExpandedNodeExtension.h"
#include "qx/nesting/internal/ManagerExtras.h"
#include "qx/update/internal/MoveReactions.h"

using qx::internal::Change;
using qx::internal::MoveKind;
using qx::internal::Ref;

namespace {

/// What the nested graph needs, and what its node offers, in the coordinates of the node's graph.
struct NestedView {
    NestedView(const QxDNode& node, const QxDGraph& nested)
        : offered(nested.ntViewRectInNodeCoordSystem()) {
        nested.ntMarginBoundingRect(needed);
        nested.expandedTransformRect(node.pOwnerGraph(), needed);
    }

    QxRect needed;
    QxRect offered;
};

/// A side of the offered area, leftward or downward negative: it follows the contents where it
/// touches them, and where they stick out.
std::int32_t lowerSide(int touches, std::int32_t needed, std::int32_t offered) {
    return touches != 0 || needed < offered ? needed : offered;
}

std::int32_t upperSide(int touches, std::int32_t needed, std::int32_t offered) {
    return touches != 0 || needed > offered ? needed : offered;
}

QxRect wantedView(const NestedView& view, const QxExpandedNodeExtension& touching) {
    const QxRect& m = view.needed;
    const QxRect& v = view.offered;
    return {lowerSide(touching.touchesNestedGraphOnLeft(), m.left(), v.left()),
            lowerSide(touching.touchesNestedGraphOnBottom(), m.bottom(), v.bottom()),
            upperSide(touching.touchesNestedGraphOnRight(), m.right(), v.right()),
            upperSide(touching.touchesNestedGraphOnTop(), m.top(), v.top())};
}

int isClose(std::int32_t a, std::int32_t b) {
    return std::llabs(static_cast<std::int64_t>(a) - b) < 2 ? 1 : 0;
}

}  // namespace

int QxDNode::vFitToNestedGraph(const QxRect&) {
    return 1;
}

int QxDNode::fitToNestedGraph(int keepNodeInPlace, int onlyTouchingBits, int fitToMargins) {
    if (expanded() == 0) {
        return 0;
    }
    const Ref alive(*this);
    const Ref<QxDGraphManager> manager(pNestedGraph()->pOwnerGraphManager());
    if (!manager) {
        return 0;
    }
    const qx::internal::Refits::Fit fit(manager->managerExtras().refits);
    QxRect rect;
    getNewBoundingRectOnFitToNestedGraph(rect, 0, fitToMargins);
    if (vFitToNestedGraph(rect) == 0 || expanded() == 0) {
        return 0;
    }
    if (isVisible() != 0 && manager->isReading() != 0) {
        updateExpandedNodeForLayout(rect);
    } else {
        updateExpandedNodeForDiagramming(rect, keepNodeInPlace, onlyTouchingBits);
    }
    return 1;
}

void QxDNode::getNewBoundingRectOnFitToNestedGraph(QxRect& result, int, int fitToMargins) const {
    const QxDGraph* nested = pNestedGraph();
    if (nested == nullptr) {
        return;
    }
    const NestedView view(*this, *nested);
    const QxRect wanted =
        fitToMargins != 0 ? view.needed : wantedView(view, *pExpandedNodeExtension());
    QxSize size = iSize();
    if (!(wanted.size() == view.offered.size())) {
        size = QxSize(
            QxSpacing::calculateOuterSize(*nested->pNestedViewLeftSpacing(),
                                          *nested->pNestedViewRightSpacing(), wanted.width()),
            QxSpacing::calculateOuterSize(*nested->pNestedViewBottomSpacing(),
                                          *nested->pNestedViewTopSpacing(), wanted.height()));
    }
    // Placed so that the view area begins where the wanted one does.
    const std::int32_t left =
        qx::saturatingSub(wanted.left(), nested->pNestedViewLeftSpacing()->spacing(size.width()));
    const std::int32_t bottom = qx::saturatingSub(
        wanted.bottom(), nested->pNestedViewBottomSpacing()->spacing(size.height()));
    result = QxRect(left, bottom, qx::saturatingAdd(left, size.width()),
                    qx::saturatingAdd(bottom, size.height()));
}

void QxDNode::updateExpandedNodeForDiagramming(const QxRect& rect, int keepNodeInPlace,
                                               int onlyTouchingBits) {
    if (expanded() == 0) {
        return;
    }
    const Ref alive(*this);
    const auto apply = [&] {
        const Ref nested(*pNestedGraph());
        const QxTransform placed = *nested->pTransform();
        const QxPoint center = iCenter();
        if (!(rect.size() == iSize())) {
            vResizeAdjustConnectors(rect.size());
        }
        // Listeners that hear of the new size may move the node or what is nested in it.
        if (pNestedGraph() != nested.get() || !(iCenter() == center) ||
            !(*nested->pTransform() == placed)) {
            nested->refitAround(keepNodeInPlace);
        } else if (keepNodeInPlace != 0) {
            updateTransformForExpandedNode(rect.center());
        } else if (!(rect.center() == center)) {
            vMoveTo(rect.center());
        }
    };
    const bool isOnlyNoted = keepNodeInPlace != 0 && onlyTouchingBits != 0;
    if (!isOnlyNoted && !(rect == m_rect)) {
        const MoveKind kind = keepNodeInPlace != 0 ? MoveKind::FitInside : MoveKind::FitAround;
        qx::internal::withReactions(*this, kind, apply);
    }
    updateTouchingBits();
}

void QxDNode::updateExpandedNodeForLayout(const QxRect& rect) {
    if (expanded() == 0) {
        return;
    }
    Change::ofGeometry(*this, [&] {
        vResizeAdjustConnectors(rect.size());
        updateTransformForExpandedNode(rect.center());
        if (QxDGraph* nested = pNestedGraph()) {
            nested->actAfterFit();
        }
    });
}

void QxDNode::updateTransformForExpandedNode(const QxPoint& newCenter) {
    shiftNestedGraph(static_cast<std::int64_t>(iX()) - newCenter.x(),
                     static_cast<std::int64_t>(iY()) - newCenter.y());
}

void QxDNode::shiftNestedGraph(std::int64_t dx, std::int64_t dy) {
    QxDGraph* nested = pNestedGraph();
    if (nested == nullptr || (dx == 0 && dy == 0)) {
        return;
    }
    QxTransform shifted = *nested->pTransform();
    const QxDTuple target = shifted.targetOrigin();
    shifted.targetOrigin(
        QxDTuple(target.x() + static_cast<double>(dx), target.y() + static_cast<double>(dy)));
    nested->vUpdateTransform(shifted);
}

void QxDNode::followWithNestedGraph(const QxPoint& oldCenter) {
    shiftNestedGraph(static_cast<std::int64_t>(iX()) - oldCenter.x(),
                     static_cast<std::int64_t>(iY()) - oldCenter.y());
}

void QxDNode::actOnMoveTo(const QxPoint& oldCenter) {
    followWithNestedGraph(oldCenter);
}

void QxDNode::updateTouchingBits() {
    const QxDGraph* nested = pNestedGraph();
    if (nested == nullptr) {
        return;
    }
    const NestedView view(*this, *nested);
    QxExpandedNodeExtension& touching = *pExpandedNodeExtension();
    touching.touchesNestedGraphOnLeft(isClose(view.offered.left(), view.needed.left()));
    touching.touchesNestedGraphOnRight(isClose(view.offered.right(), view.needed.right()));
    touching.touchesNestedGraphOnBottom(isClose(view.offered.bottom(), view.needed.bottom()));
    touching.touchesNestedGraphOnTop(isClose(view.offered.top(), view.needed.top()));
}
