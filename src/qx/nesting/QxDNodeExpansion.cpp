// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Nodes that show their child graph in themselves, and cease to.

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/QxDChildGraphForest.h"
#include "qx/nesting/QxDChildGraphForestEdge.h"
#include "qx/nesting/QxExpandedNodeExtension.h"
#include "qx/nesting/internal/Complexity.h"
#include "qx/nesting/internal/ManagerExtras.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"

using qx::internal::Change;
using qx::internal::MetaEdgeHold;
using qx::internal::Ref;
using qx::internal::Silence;

namespace {

const QxDChildGraphForestEdge* relationOf(const QxDNode& node) {
    return static_cast<const QxDChildGraphForestEdge*>(node.pChildGraphForestEdge());
}

QxDTuple exact(const QxPoint& point) {
    return {1.0 * point.x(), 1.0 * point.y()};
}

bool canExpand(const QxDNode& node) {
    const QxDGraph* graph = node.pOwnerGraph();
    const QxDGraph* child = node.pChildGraph();
    if (child == nullptr || graph == nullptr || node.expanded() != 0) {
        return false;
    }
    const QxDGraphManager* manager = graph->pOwnerGraphManager();
    return graph->isHideGraph() == 0 && graph->isIntergraph() == 0 && manager != nullptr &&
           manager == child->pOwnerGraphManager();
}

}  // namespace

QxDGraph* QxDNode::pChildGraph() const {
    return static_cast<QxDGraph*>(QxGraphMember::pChildGraph());
}

QxDGraph* QxDNode::pChildGraph(QxDGraph* graph) {
    const QxDGraph* const around = pOwnerGraph();
    const MetaEdgeHold held(around != nullptr ? around->pOwnerGraphManager() : nullptr);
    return static_cast<QxDGraph*>(QxGraphMember::pChildGraph(graph));
}

QxExpandedNodeExtension* QxDNode::pExpandedNodeExtension() const {
    const QxDChildGraphForestEdge* relation = relationOf(*this);
    return relation != nullptr ? relation->pExpandedNodeExtension() : nullptr;
}

int QxDNode::collapsed() const {
    return pChildGraphForestEdge() != nullptr && expanded() == 0 ? 1 : 0;
}

int QxDNode::expand() {
    if (!canExpand(*this)) {
        return 0;
    }
    const Ref alive(*this);
    const MetaEdgeHold held(*pOwnerGraph());
    const Ref child(*pChildGraph());
    bool isDone = false;
    {
        const Silence silent(*this);
        Change::ofGeometry(*this, [&] { isDone = showChildGraph(*child); });
    }
    if (isDone) {
        qx::internal::fireComplexityChange(*this, NodeExpanded);
    }
    return isDone ? 1 : 0;
}

bool QxDNode::showChildGraph(QxDGraph& child) {
    const QxPoint center = iCenter();
    QxDChildGraphForest* const forest = pOwnerGraph()->pOwnerGraphManager()->pChildGraphForest();
    if (child.isAnchorGraph() == 0) {
        child.vUpdateTransform(QxTransform());  // so that what is shown now has not been shifted
    }
    if (forest->actOnExpand(this, &child, 1) == 0) {
        return false;
    }
    if (child.isVisible() == 0) {
        // They rest while nobody sees them. The fit comes once the graph has its place.
        const qx::internal::Refits::Hold held(
            pOwnerGraph()->pOwnerGraphManager()->managerExtras().refits, child);
        child.calculateGraphBounds(0);
    }
    QxRect contents;
    child.ntUpdatedBoundingRect(contents);
    child.vUpdateTransform(QxTransform(exact(contents.center()), exact(center)));
    fitToNestedGraph(1, 0, 0);
    if (!(iCenter() == center)) {
        vMoveTo(center);
    }
    originalSize(iSize());
    child.tellContainedEdges();
    return true;
}

int QxDNode::collapse() {
    if (pNestedGraph() == nullptr) {
        return 0;
    }
    const Ref alive(*this);
    const Ref child(*pNestedGraph());
    const MetaEdgeHold held(*child);
    bool isDone = false;
    {
        const Silence silent(*this);
        Change::ofGeometry(*this, [&] { isDone = hideChildGraph(*child); });
    }
    if (isDone) {
        qx::internal::fireComplexityChange(*this, NodeCollapsed);
    }
    return isDone ? 1 : 0;
}

bool QxDNode::hideChildGraph(QxDGraph& child) {
    if (child.isAnchorGraph() == 0) {
        child.vUpdateTransform(QxTransform());
    }
    QxDChildGraphForest* const forest = relationOf(*this)->pOwnerGraph();
    if (forest == nullptr || forest->actOnCollapse(this, 1) == 0) {
        return false;
    }
    child.tellContainedEdges();
    return true;
}

void QxDNode::expandLike(const QxDNode& original, QxDGraph& child) {
    const QxDGraphManager* manager = child.pOwnerGraphManager();
    const QxDGraph* shown = original.pNestedGraph();
    if (manager == nullptr || shown == nullptr || expanded() != 0 ||
        manager->pChildGraphForest()->actOnExpand(this, &child, 0) == 0) {
        return;
    }
    const QxExpandedNodeExtension& remembered = *original.pExpandedNodeExtension();
    QxExpandedNodeExtension& own = *pExpandedNodeExtension();
    own.copyObject(&remembered);
    own.touchesNestedGraphOnLeft(remembered.touchesNestedGraphOnLeft());
    own.touchesNestedGraphOnRight(remembered.touchesNestedGraphOnRight());
    own.touchesNestedGraphOnBottom(remembered.touchesNestedGraphOnBottom());
    own.touchesNestedGraphOnTop(remembered.touchesNestedGraphOnTop());
    Change::ofGeometry(*this, [&] {
        forceClipping(original.forceClipping());
        ntResize(original.iSize());
        originalSize(original.originalSize());
        pChangeShape(original.pShape(), 0);
        child.vUpdateTransform(*shown->pTransform());
    });
}

QxSize QxDNode::collapsedSize() const {
    const QxExpandedNodeExtension* extension = pExpandedNodeExtension();
    return extension != nullptr ? *extension->pPreExpandSize() : iSize();
}

int QxDNode::collapsedForceClipping() const {
    const QxExpandedNodeExtension* extension = pExpandedNodeExtension();
    return extension != nullptr ? extension->preExpandForceClipping() : forceClipping();
}

QxShapeResource* QxDNode::pCollapsedShapeResource() const {
    const QxExpandedNodeExtension* extension = pExpandedNodeExtension();
    return extension != nullptr ? extension->pShapeResource() : m_shapeResource;
}

void QxDNode::exchangeLook() {
    if (QxExpandedNodeExtension* extension = pExpandedNodeExtension()) {
        extension->exchangeContents(0, 0);
    }
}

void QxDNode::tellNestedGraphOfOwner() {
    QxDGraph* nested = pNestedGraph();
    QxDGraphManager* manager = nested != nullptr ? nested->pOwnerGraphManager() : nullptr;
    if (manager == nullptr) {
        return;
    }
    manager->nestingChanged();
    nested->disableNestingGraphBoundsAndQuadTree(nested->isVisible() != 0 ? 0 : 1, 0);
    nested->tellContainedEdges();
}
