// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The chain of segments and bends that makes the path of an edge.
//
// The bends list the segments at them, so the chain holds together in every state of the edge. The
// nodes at its ends list only the edge itself: that the path starts and ends there is known to the
// first and last segment alone, and the edge tells them when an end changes or goes.

#include <ostream>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/drawing/labels/internal/LabelPresence.h"
#include "qx/drawing/path/internal/Bend.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"

using qx::internal::Coverage;
using qx::internal::EdgeExtras;
using qx::internal::isBend;
using qx::internal::LabelPresence;
using qx::internal::MetaEdgeUpkeep;
using qx::internal::Ref;
using qx::internal::Snapshot;

namespace {

int complain(const char* what) {
    qxDebugStream() << "edge path: " << what << '\n';
    return 0;
}

}  // namespace

void QxDEdge::ntFromPoint(QxPoint& point, int clipped) const {
    readEnd(point, clipped, true);
}

QxPoint QxDEdge::ntFromPoint(int clipped) const {
    QxPoint point;
    readEnd(point, clipped, true);
    return point;
}

void QxDEdge::ntToPoint(QxPoint& point, int clipped) const {
    readEnd(point, clipped, false);
}

QxPoint QxDEdge::ntToPoint(int clipped) const {
    QxPoint point;
    readEnd(point, clipped, false);
    return point;
}

int QxDEdge::getSourcePoint(QxPoint& point, int inOwnGraph) const {
    return getEnd(point, inOwnGraph, true);
}

int QxDEdge::getTargetPoint(QxPoint& point, int inOwnGraph) const {
    return getEnd(point, inOwnGraph, false);
}

int QxDEdge::getEnd(QxPoint& point, int inOwnGraph, bool atSource) const {
    readEnd(point, 0, atSource);
    if (const QxDGraph* graph = inOwnGraph == 0 ? pOwnerGraph() : nullptr) {
        graph->expandedTransformPoint(point);
    }
    return 1;
}

QxDisconnectedPathIter QxDEdge::madeParts(QxIterDirectionEnum direction) const {
    return isPathImplied() ? QxDisconnectedPathIter() : QxDisconnectedPathIter(this, direction);
}

QxPEdge* QxDEdge::pEndSegment(QxPEdge* const& segment) const {
    if (isPathImplied()) {
        // What is made here says nothing that the edge does not say already.
        const_cast<QxDEdge*>(this)->makePath();
    }
    return segment;
}

void QxDEdge::makePath() {
    QxPEdge* segment = vNewPEdge();
    if (segment == nullptr) {
        return;
    }
    setFlag(qx::flags::EdgePathImplied, 0);
    takeOver(segment, pSourceNode(), pTargetNode());
    Coverage::segmentMade(*this, *segment);
    segment->setFlag(qx::flags::SegmentVisible | qx::flags::SegmentNewVisible,
                     hasFlag(qx::flags::EdgeHasVisiblePart));
}

int QxDEdge::vNeedsPathAtOnce() const {
    return 0;
}

QxDEdge::Path QxDEdge::collectPath(QxIterDirectionEnum direction) const {
    Path path;
    for (auto it = madeParts(direction); it; ++it) {
        path.segments.push_back(it.pEdge());
        // In an open path a segment may still end at a bend that has been taken out.
        if (it.pNode() != nullptr && it.pNode()->m_ownerEdge == this) {
            path.bends.push_back(it.pNode());
        }
    }
    return path;
}

void QxDEdge::connectPath() {
    if (m_sourcePathEdge != nullptr) {
        for (auto it = madeParts(); it; ++it) {
            it.pEdge()->connect();
        }
    }
    isUpdatedVisiblePart(0);
    Coverage::countChanged(*this);
    LabelPresence::changed(*this);
}

void QxDEdge::disconnectPath() {
    if (m_sourcePathEdge != nullptr) {
        for (auto it = madeParts(); it; ++it) {
            it.pEdge()->disconnect();
        }
    }
    isUpdatedVisiblePart(0);
    Coverage::countChanged(*this);
    LabelPresence::changed(*this);
}

void QxDEdge::destroyPath() {
    setFlag(qx::flags::EdgeHasVisiblePart, 0);
    Coverage::impliedSegmentEnds(*this);
    setFlag(qx::flags::EdgePathImplied, 0);
    if (pParts() == nullptr) {
        return;
    }
    // Segments first: a bend without any leaves the path at no cost.
    for (const bool segments : {true, false}) {
        for (QxGraphMember* part : Snapshot<QxGraphMember>(pParts())) {
            if (segments && part->isPathEdge() != 0) {
                discardPEdge(static_cast<QxPEdge*>(part));
            } else if (!segments) {
                detachPNode(static_cast<QxPNode*>(part));
                part->vRelease();
            }
        }
    }
}

const QxDList* QxDEdge::pParts() const {
    const auto* extras = static_cast<const EdgeExtras*>(pQueryExtras());
    return extras != nullptr ? &extras->parts : nullptr;
}

void QxDEdge::attachPath(QxNode* source, QxNode* target) {
    QxPEdge* first = m_sourcePathEdge;
    QxPEdge* last = m_targetPathEdge;
    if (first == nullptr && last == nullptr) {
        setFlag(qx::flags::EdgePathImplied, 1);
        tellCoverage();
        if (vNeedsPathAtOnce() != 0) {
            makePath();
        }
    }
    if (first != nullptr) {
        first->setEnds(source, first == last ? target : first->QxEdge::pTargetNode());
    }
    if (last != nullptr && last != first) {
        last->setEnds(last->QxEdge::pSourceNode(), target);
    }
    actOnEndObjectChange();
}

QxPEdge* QxDEdge::linkNewSegment(QxNode* from, QxNode* to) {
    QxPEdge* segment = vNewPEdge();
    if (segment != nullptr) {
        link(segment, from, to);
    }
    return segment;
}

void QxDEdge::link(QxPEdge* segment, QxNode* from, QxNode* to) {
    takeOver(segment, from, to);
    actOnEndObjectChange();
}

void QxDEdge::takeOver(QxPEdge* segment, QxNode* from, QxNode* to) {
    segment->m_ownerEdge = this;
    static_cast<EdgeExtras&>(extras()).parts.appendCell(segment->pOwnerCell());
    segment->actOnChangeOwner(pOwner(), ownerValid());
    if (!isBend(from)) {
        m_sourcePathEdge = segment;
    }
    if (!isBend(to)) {
        m_targetPathEdge = segment;
    }
    segment->setFlag(qx::flags::EdgeConnected, isActive() ? 1 : 0);
    segment->setEnds(from, to);
}

void QxDEdge::detachPNode(QxPNode* node) {
    node->disconnectEdges();
    static_cast<EdgeExtras&>(extras()).parts.removeCell(node->pOwnerCell());
    node->actOnChangeOwner(pUnverifiedFactory(), 0);
    node->m_ownerEdge = nullptr;
    actOnEndObjectChange();
}

void QxDEdge::detachPEdge(QxPEdge* segment) {
    segment->nullEndNodes();
    static_cast<EdgeExtras&>(extras()).parts.removeCell(segment->pOwnerCell());
    segment->actOnChangeOwner(pUnverifiedFactory(), 0);
    segment->m_ownerEdge = nullptr;
    if (segment == m_sourcePathEdge) {
        m_sourcePathEdge = nullptr;
    }
    if (segment == m_targetPathEdge) {
        m_targetPathEdge = nullptr;
    }
    actOnEndObjectChange();
}

QxPNode* QxDEdge::addPNode(const QxPoint& point) {
    QxPNode* node = vNewPNode();
    if (node != nullptr) {
        node->vMoveTo(point);
        insertPNode(node);
    }
    return node;
}

QxPNode* QxDEdge::insertPNode(QxPNode* node) {
    if (node == nullptr || node->m_ownerEdge != nullptr) {
        return nullptr;
    }
    node->m_ownerEdge = this;
    static_cast<EdgeExtras&>(extras()).parts.appendCell(node->pOwnerCell());
    node->actOnChangeOwner(pOwner(), ownerValid());
    node->connectDisconnectedEdges();
    actOnEndObjectChange();
    return node;
}

QxPNode* QxDEdge::removePNode(QxPNode* node) {
    if (node == nullptr || node->m_ownerEdge != this) {
        return nullptr;
    }
    detachPNode(node);
    qx::internal::fireDrawingChange(
        *this, PathNodeRemoved, [&] { return new QxDrawingChangeEventData(node, this, nullptr); });
    return node;
}

void QxDEdge::discardPNode(QxPNode* node) {
    if (node != nullptr && node->m_ownerEdge == this) {
        detachPNode(node);
        discardDetached({node});
    }
}

void QxDEdge::discardDetached(const std::vector<QxPNode*>& bends) {
    // A listener may discard the edge.
    const Ref alive(*this);
    for (QxPNode* bend : bends) {
        for (const QxDrawingChangeEventTypeEnum type : {PathNodeDiscarded, PathNodeRemoved}) {
            qx::internal::fireDrawingChange(
                *this, type, [&] { return new QxDrawingChangeEventData(bend, this, nullptr); });
        }
        bend->actOnDiscard();
        bend->vRelease();
    }
}

QxPEdge* QxDEdge::addPEdge(QxNode* from, QxNode* to) {
    QxPEdge* segment = vNewPEdge();
    if (segment != nullptr && insertPEdge(segment, from, to) == nullptr) {
        segment->vRelease();
        return nullptr;
    }
    return segment;
}

QxPEdge* QxDEdge::insertPEdge(QxPEdge* segment, QxNode* from, QxNode* to) {
    const auto canJoin = [this](const QxNode* node) {
        if (isBend(node)) {
            return static_cast<const QxPNode*>(node)->m_ownerEdge == this &&
                   node->degree() + node->pDisconnectedEdgeList()->count() < 3;
        }
        return node != nullptr && (node == pSourceNode() || node == pTargetNode());
    };
    if (segment == nullptr || segment->m_ownerEdge != nullptr || !canJoin(from) || !canJoin(to)) {
        return nullptr;
    }
    if (isPathImplied()) {
        makePath();
    }
    if (isPathImplied() || (!isBend(from) && m_sourcePathEdge != nullptr) ||
        (!isBend(to) && m_targetPathEdge != nullptr)) {
        return nullptr;
    }
    link(segment, from, to);
    return segment;
}

QxPEdge* QxDEdge::removePEdge(QxPEdge* segment) {
    if (segment == nullptr || segment->m_ownerEdge != this) {
        return nullptr;
    }
    detachPEdge(segment);
    return segment;
}

void QxDEdge::discardPEdge(QxPEdge* segment) {
    if (removePEdge(segment) != nullptr) {
        segment->vRelease();
    }
}

bool QxDEdge::followsEdge(const QxGraphMember& part) const {
    return part.pOwner() == pOwner() && part.ownerValid() == ownerValid();
}

void QxDEdge::actOnChangeOwner(QxOwnedObject* owner, int valid) {
    const bool isPlain = pQueryExtras() == nullptr;
    Coverage::ended(*this);
    MetaEdgeUpkeep::leaves(*this);
    if (!isPlain) {
        LabelPresence::ended(*this);
    }
    QxGEdge::actOnChangeOwner(owner, valid);
    graphObjectStatus(QxStatusUnchanged);  // a copy may bring that of a move along
    MetaEdgeUpkeep::changed(*this);
    Coverage::changed(*this);
    if (isPlain) {
        return;
    }
    LabelPresence::changed(*this);
    Coverage::labelsChanged(*this);
    for (QxGraphMember* part : Snapshot<QxGraphMember>(pParts())) {
        giveOwner(*part);
    }
}

void QxDEdge::giveOwner(QxGraphMember& part) {
    if (part.isPathEdge() != 0) {
        static_cast<QxPEdge&>(part).actOnChangeOwner(pOwner(), ownerValid());
    } else {
        static_cast<QxPNode&>(part).actOnChangeOwner(pOwner(), ownerValid());
    }
}

void QxDEdge::updatePathOwnership() {
    QxNode* source = pSourceNode();
    QxNode* target = pTargetNode();
    const auto isAttached = [&] {
        return m_sourcePathEdge != nullptr && m_targetPathEdge != nullptr &&
               m_sourcePathEdge->QxEdge::pSourceNode() == source &&
               m_targetPathEdge->QxEdge::pTargetNode() == target;
    };
    if (source != nullptr && target != nullptr && !isPathImplied() && !isAttached()) {
        attachPath(source, target);
    }
    for (QxGraphMember* part : Snapshot<QxGraphMember>(pParts())) {
        if (followsEdge(*part)) {
            break;  // all follow the edge, or none
        }
        giveOwner(*part);
    }
}

bool QxDEdge::isPathWhole() const {
    const QxPEdge* last = nullptr;
    for (auto it = madeParts(); it; ++it) {
        last = it.pEdge();
    }
    return last == m_targetPathEdge;
}

int QxDEdge::checkPath() const {
    if (!isActive()) {
        return complain("the edge is not connected");
    }
    if (isPathImplied()) {
        return 1;
    }
    if (m_sourcePathEdge == nullptr || m_targetPathEdge == nullptr) {
        return complain("there is no path");
    }
    const QxNode* reached = pSourceNode();
    const QxPEdge* last = nullptr;
    for (QxPathIter it(this); it; ++it) {
        last = it.pEdge();
        const QxPNode* bend = it.pNode();
        if (last->QxEdge::pSourceNode() != reached || last->connected() == 0) {
            return complain("a segment does not start where the one before ends");
        }
        if (last->pOwnerEdge() != this || !followsEdge(*last)) {
            return complain("a segment has another owner");
        }
        if (bend != nullptr && (bend->pOwnerEdge() != this || !followsEdge(*bend))) {
            return complain("a bend has another owner");
        }
        if (bend != nullptr && (bend->inDegree() != 1 || bend->outDegree() != 1 ||
                                bend->pDisconnectedEdgeList()->isEmpty() == 0)) {
            return complain("a bend does not join just two segments");
        }
        reached = last->QxEdge::pTargetNode();
    }
    if (last != m_targetPathEdge || reached != pTargetNode()) {
        return complain("it does not reach the target");
    }
    return 1;
}
