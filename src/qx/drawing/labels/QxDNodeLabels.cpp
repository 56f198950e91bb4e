// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The labels of a drawing node, and what the node itself does for them.

#include <vector>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/foundation/geometry/QxShape.h"

using qx::internal::Change;
using qx::internal::Ref;
using qx::internal::Snapshot;

const Ref<QxLabelManager>* QxDNode::pQueryLabelSlot() const {
    const auto* extras = pQueryNodeExtras();
    return extras != nullptr ? &extras->labels : nullptr;
}

Ref<QxLabelManager>& QxDNode::labelSlot() {
    return nodeExtras().labels;
}

QxNodeLabel* QxDNode::vNewLabel(int flag) {
    auto* factory = static_cast<QxFactory*>(pUnverifiedFactory());
    return factory != nullptr ? factory->qxNewNodeLabel(this, flag) : nullptr;
}

QxNodeLabel* QxDNode::vAddLabel(const wchar_t* name, int flag) {
    return addPlacedLabel(name, flag);
}

QxNodeLabel* QxDNode::vInsertLabel(QxNodeLabel* label) {
    return linkLabel(label);
}

QxNodeLabel* QxDNode::vRemoveLabel(QxNodeLabel* label) {
    return unlinkLabel(label);
}

int QxDNode::vDiscardLabel(QxNodeLabel* label) {
    return destroyLabel(label);
}

void QxDNode::debugOutputLabels(int depth) const {
    debugOutputOwnLabels(depth);
}

void QxDNode::discardAllNodeLabels() {
    QxLabelOwnerOf::discardAllLabels();
}

void QxDNode::discardAllLabels() {
    const Ref alive(*this);
    discardAllNodeLabels();
    discardAllConnectorLabels();
}

void QxDNode::discardAllConnectorLabels() {
    const Ref alive(*this);
    for (QxConnector* connector : Snapshot<QxConnector>(pQueryConnectorManager())) {
        connector->discardAllLabels();
    }
}

int QxDNode::hasConnectorLabels() const {
    for (QxInternalConnectorIter it(this); it; ++it) {
        if (it.pConnector()->hasLabels() != 0) {
            return 1;
        }
    }
    return 0;
}

void QxDNode::centerLabels(const QxNodeLabelDList* labels) {
    Snapshot<QxNodeLabel> own;
    std::int64_t height = 0;
    for (QxNodeLabel* label : Snapshot<QxNodeLabel>(labels)) {
        if (label->pOwnerNode() == this) {
            own.add(label);
            height += label->ntHeight();
        }
    }
    if (own.isEmpty()) {
        return;
    }
    QxRect room = m_rect;
    if (const QxShape* shape = pShape()) {
        shape->getCurrentInnerRect(room, iCenter(), iSize());
    }
    Change::run(*this, [&] {
        std::int64_t above = qx::upperHalf(height);
        for (QxNodeLabel* label : own) {
            const std::int32_t extent = label->ntHeight();
            const std::int64_t y = room.y() + above - qx::upperHalf(extent);
            if (label->pOwnerNode() == this) {
                label->ntMoveTo(room.x(), qx::clampToInt32(y));
            }
            above -= extent;
        }
    });
}

void QxDNode::resizeToLabels(int all) {
    Snapshot<QxNodeLabel> labels(pLabelList());
    if (labels.isEmpty()) {
        return;
    }
    std::vector<QxPoint> centers;
    QxRect needed;
    labels[0]->ntBoundingRect(needed);
    for (const QxNodeLabel* label : labels) {
        centers.push_back(label->ntCenter());
        QxRect one;
        label->ntBoundingRect(one);
        if (all != 0) {
            needed |= one;
        }
    }
    QxRect around = needed;
    if (const QxShape* shape = pShape()) {
        shape->fitBoundingRectToInnerRect(around, needed);
    }
    Change::ofGeometry(*this, [&] {
        vResize(around.size());
        vMoveTo(needed.center());
        for (std::size_t i = 0; i < labels.size(); ++i) {
            if (labels[i]->pOwnerNode() == this) {
                labels[i]->ntMoveTo(centers[i]);
            }
        }
    });
}
