// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What the tree holds, compared with the graph.

#include <ostream>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/spatial/QxQTree.h"
#include "qx/spatial/internal/IndexStore.h"

using qx::internal::countsInIndex;
using qx::internal::indexGraphOf;
using qx::internal::IndexKind;
using qx::internal::indexKindOf;
using qx::internal::indexShapeOf;
using qx::internal::QuadShape;
using qx::internal::recordKindOf;

namespace {

int complain(const char* what) {
    qxDebugStream() << "index: " << what << '\n';
    return 0;
}

bool equal(const QuadShape& a, const QuadShape& b) {
    const bool isPoint = a.box.minX == a.box.maxX || a.box.minY == a.box.maxY;
    return a.box == b.box && (a.form == b.form || (isPoint && a.isSegment() == b.isSegment()));
}

}  // namespace

int QxQTree::isConsistentObject(QxGraphObject* object, std::size_t& counted) {
    const auto kind = object != nullptr ? indexKindOf(*object) : std::nullopt;
    if (!kind || indexGraphOf(*object, *kind) != m_graph) {
        return 1;
    }
    const bool isWanted = !m_store->isExcluded(*kind) && countsInIndex(*object, *kind);
    const bool isHeld = m_store->holds(*object, *kind);
    if (isWanted != isHeld && !m_store->isBehind()) {
        return complain(isWanted ? "an object is not registered" : "an object is registered");
    }
    if (!isHeld) {
        return 1;
    }
    ++counted;
    const auto slot = static_cast<std::uint32_t>(m_store->slotOf(*object, *kind));
    if (m_store->engine().payload(slot) != reinterpret_cast<std::uintptr_t>(object)) {
        return complain("an object's slot is another's");
    }
    return m_store->isBehind() || equal(m_store->engine().shape(slot), indexShapeOf(*object, *kind))
               ? 1
               : complain("an object is registered where it is not");
}

int QxQTree::isConsistent() {
    m_store->settle();
    if (!m_store->engine().checkInvariants(qxDebugStream())) {
        return 0;
    }
    std::size_t counted = 0;
    int sound = 1;
    m_store->visitAll(
        [&](QxGraphObject& object, IndexKind) { sound &= isConsistentObject(&object, counted); });
    if (sound != 0 && counted != m_store->engine().objectCount()) {
        return complain("something is registered that is not in the graph");
    }
    return sound;
}

int QxQTree::isConsistentPath(QxDEdge* edge, std::size_t& counted) {
    if (edge->isPathImplied()) {
        return isConsistentObject(edge, counted);
    }
    int sound = 1;
    for (QxDisconnectedPathIter part(edge); part; ++part) {
        sound &= isConsistentObject(part.pEdge(), counted);
        sound &= isConsistentObject(part.pNode(), counted);
    }
    return sound;
}

int QxQTree::isConsistentNow(QxGraphObject* object) {
    m_store->settle();
    std::size_t counted = 0;
    return isConsistentObject(object, counted);
}

int QxQTree::isConsistentDNode(QxDNode* node) {
    return isConsistentNow(node);
}

int QxQTree::isConsistentPathNode(QxPNode* bend) {
    return isConsistentNow(bend);
}

int QxQTree::isConsistentPathEdge(QxPEdge* segment) {
    return isConsistentNow(segment);
}

int QxQTree::isConsistentDEdge(QxDEdge* edge) {
    m_store->settle();
    std::size_t counted = 0;
    return edge != nullptr ? isConsistentPath(edge, counted) : 1;
}

QxQTreeObject* QxQTree::findObjInQTree(QxGraphObject* object) {
    const auto kind = object != nullptr ? indexKindOf(*object) : std::nullopt;
    if (!kind || indexGraphOf(*object, *kind) != m_graph) {
        return nullptr;
    }
    m_store->settle();
    if (!m_store->holds(*object, *kind)) {
        return nullptr;
    }
    const QuadShape shape =
        m_store->engine().shape(static_cast<std::uint32_t>(m_store->slotOf(*object, *kind)));
    const bool falls = shape.form == qx::internal::QuadForm::Falling;
    return new QxQTreeObject(recordKindOf(*object, *kind),
                             QxPoint(shape.box.minX, falls ? shape.box.maxY : shape.box.minY),
                             QxPoint(shape.box.maxX, falls ? shape.box.minY : shape.box.maxY),
                             object);
}

int QxQTree::isObjectInsideRect(QxGraphObject* object, const QxRect* rect) {
    const auto kind = object != nullptr ? indexKindOf(*object) : std::nullopt;
    if (!kind || rect == nullptr || indexGraphOf(*object, *kind) != m_graph) {
        return 0;
    }
    m_store->settle();
    if (!m_store->holds(*object, *kind)) {
        return 0;
    }
    const qx::internal::QuadBox box{rect->left(), rect->bottom(), rect->right(), rect->top()};
    const QuadShape shape =
        m_store->engine().shape(static_cast<std::uint32_t>(m_store->slotOf(*object, *kind)));
    return shape.box.meets(box) && (!shape.isSegment() || shape.diagonalMeets(box)) ? 1 : 0;
}

void QxQTree::debugOutputTree() {
    m_store->settle();
    m_store->engine().print(qxDebugStream());
}

void QxQTree::debugOutputRect(const QxRect* rect) const {
    if (rect != nullptr) {
        qxDebugStream() << rect->left() << ' ' << rect->bottom() << ' ' << rect->right() << ' '
                        << rect->top() << '\n';
    }
}

void QxQTree::debugOutputGObject(const QxGraphObject* object) const {
    if (object != nullptr) {
        object->debugOutput(0);
    }
}
