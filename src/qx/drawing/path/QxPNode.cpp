// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxPNode.h"

#include <ostream>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxGeometricUpdateInfo.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/bounds/internal/ExtentTree.h"
#include "qx/drawing/bounds/internal/Moment.h"
#include "qx/drawing/internal/FreeOwner.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/update/internal/MoveReactions.h"

using qx::internal::Coverage;
using qx::internal::Moment;

QxPNode::QxPNode(QxOwnedObject* owner) : QxGNode(nullptr) {
    // The owner is set only now: the graph would list the bend among its own members.
    pOwner(qx::internal::ownerWhileFree(owner));
    setFlag(qx::flags::PathObject, 1);
}

QxPNode::QxPNode(const QxPNode& source, QxDeepFlagEnum depth) : QxPNode(source.pOwner()) {
    QxPNode::copyNode(&source, depth == QxDeepCopy ? 1 : 0);
}

QxPNode::~QxPNode() {
    if (QxDEdge* edge = pOwnerEdge()) {
        edge->detachPNode(this);
    }
    detachEdges();
    // The next object in this place must not inherit what listens here.
    qx::internal::endEventSource(*this);
}

QxObject* QxPNode::pParentEventSource() const {
    return pOwnerEdge();
}

int QxPNode::isPathNode() const {
    return 1;
}

int QxPNode::vIsVisible() const {
    const QxDEdge* edge = pOwnerEdge();
    return edge != nullptr && edge->isVisible() != 0 ? QxGNode::vIsVisible() : 0;
}

std::size_t QxPNode::sizeOf() const {
    return QxGNode::sizeOf() + sizeof(QxPNode) - sizeof(QxGNode);
}

int QxPNode::checkInvariants() const {
    if (QxGNode::checkInvariants() == 0) {
        return 0;
    }
    const QxDEdge* edge = pOwnerEdge();
    const bool counts = edge != nullptr && Coverage::counts(*edge);
    if (counts != (m_extentSlot != qx::internal::ExtentTree::NoSlot)) {
        qxDebugStream() << "bend: just those of connected edges have a place in graph extents\n";
        return 0;
    }
    return 1;
}

int QxPNode::levelNumber() const {
    return 1;
}

void QxPNode::actOnDiscard() {
    qx::internal::endEventSource(*this);
    QxGNode::actOnDiscard();
}

void QxPNode::innerDebugOutput(int depth) const {
    qxDebugIndent(depth) << "bend: " << m_x << ' ' << m_y << '\n';
}

QxObject* QxPNode::vCloneObject() const {
    return new QxPNode(*this, QxDeepCopy);
}

QxObject* QxPNode::vCloneAttributes() const {
    return new QxPNode(*this, QxAttributeCopy);
}

void QxPNode::copyNode(const QxNode* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    const bool isBend = source->isPathNode() != 0;
    const QxPoint center = isBend ? static_cast<const QxPNode*>(source)->iCenter() : iCenter();
    QxGNode::copyNode(source, deep);
    if (center != iCenter()) {
        qx::internal::Change::ofGeometry(*this, [&] { vMoveTo(center); });
    }
}

void QxPNode::restoreMovedNode() {
    moveBack();
}

void QxPNode::vMoveTo(const QxPoint& center) {
    const QxPoint old = iCenter();
    m_x = center.x();
    m_y = center.y();
    QxDEdge* edge = pOwnerEdge();
    if (edge == nullptr) {
        return;
    }
    edge->actOnEndObjectChange();
    Coverage::changed(*this);
    qx::internal::fireDrawingChange(*this, PathNodeMoved, [&] {
        const QxRect oldRect(old, old);
        const QxRect newRect(center, center);
        return new QxDrawingChangeEventData(this, &oldRect, &newRect);
    });
}

void QxPNode::updateForDiagramming(const QxPoint& center) {
    if (center == iCenter()) {
        return;
    }
    qx::internal::Change::ofGeometry(*this, [&] {
        if (!qx::internal::dragBend(*this, center)) {
            vMoveTo(center);
        }
    });
}

int QxPNode::isUsable() const {
    const QxDEdge* edge = pOwnerEdge();
    return edge != nullptr && edge->canUsePart(*this, hasFlag(qx::flags::BendVisible)) ? 1 : 0;
}

int QxPNode::inVisiblePart() const {
    if (const QxDEdge* edge = pOwnerEdge()) {
        edge->refreshVisiblePart();
    }
    return hasFlag(qx::flags::BendVisible);
}

int QxPNode::inVisiblePart(int value) {
    inVisiblePart();  // or the next reader would bring it up to date
    setFlag(qx::flags::BendVisible, value);
    if (QxDEdge* edge = pOwnerEdge()) {
        edge->tellOfLabels();
    }
    return value;
}

int QxPNode::inNewVisiblePart(int value) {
    setFlag(qx::flags::BendNewVisible, value);
    return value;
}

void QxPNode::actOnChangeOwner(QxOwnedObject* owner, int valid) {
    Coverage::ended(*this);
    QxGNode::actOnChangeOwner(owner, valid);
    Coverage::changed(*this);
}

void QxPNode::report(Moment moment, QxGeometricUpdateInfo* info, int recurse, int labels) {
    const QxDEdge* edge = pOwnerEdge();
    if (edge == nullptr || !edge->reportsTo(info)) {
        return;
    }
    // Whether the bend is drawn may not be known at the moment. One that is not lies within a node,
    // so that reporting it does no harm.
    qx::internal::collect(*info, moment, *this, QxRect(m_x, m_y, m_x, m_y));
    if (labels != 0) {
        edge->reportLabels(moment, info);
    }
    if (recurse != 0) {
        for (QxEdge* segment : {pFirstInEdge(), pFirstOutEdge()}) {
            if (segment != nullptr) {
                static_cast<QxPEdge*>(segment)->report(moment, info);
            }
        }
    }
}

void QxPNode::actAfterInsert(QxGeometricUpdateInfo* info, int recurse, int labels) {
    report(Moment::AfterInsert, info, recurse, labels);
}

void QxPNode::actBeforeRemove(QxGeometricUpdateInfo* info, int recurse, int labels) {
    report(Moment::BeforeRemove, info, recurse, labels);
}

void QxPNode::actBeforeGeometryChanges(QxGeometricUpdateInfo* info, int recurse, int labels) {
    report(Moment::BeforeChange, info, recurse, labels);
}

void QxPNode::actAfterGeometryChanges(QxGeometricUpdateInfo* info, int recurse, int labels) {
    report(Moment::AfterChange, info, recurse, labels);
}

void QxPNode::vActBeforeGeometryChanges(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo*) {
    actBeforeGeometryChanges(own, 1, 1);
}

void QxPNode::vActAfterGeometryChanges(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo*) {
    actAfterGeometryChanges(own, 1, 1);
}
