// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The chain of segments and bends that makes the path of an edge.
//
// The bends list the segments at them, so the chain holds together in every state of the edge. The
// nodes at its ends list only the edge itself: that the path starts and ends there is known to the
// first and last segment alone, and the edge tells them when an end changes or goes.

#include <ostream>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/path/internal/Bend.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/foundation/util/internal/KeepAlive.h"

using qx::internal::isBend;

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
    if (m_sourcePathEdge != nullptr) {
        m_sourcePathEdge->getSourcePoint(point, inOwnGraph);
    }
    return 1;
}

int QxDEdge::getTargetPoint(QxPoint& point, int inOwnGraph) const {
    if (m_targetPathEdge != nullptr) {
        m_targetPathEdge->getTargetPoint(point, inOwnGraph);
    }
    return 1;
}

QxDEdge::Path QxDEdge::collectPath(QxIterDirectionEnum direction) const {
    Path path;
    for (QxDisconnectedPathIter it(this, direction); it; ++it) {
        path.segments.push_back(it.pEdge());
        if (it.pNode() != nullptr) {
            path.bends.push_back(it.pNode());
        }
    }
    return path;
}

void QxDEdge::connectPath() {
    for (QxDisconnectedPathIter it(this); it; ++it) {
        it.pEdge()->connect();
        if (it.pNode() != nullptr) {
            it.pNode()->refreshExtent();
        }
    }
    actOnEndObjectChange();
}

void QxDEdge::disconnectPath() {
    for (QxDisconnectedPathIter it(this); it; ++it) {
        it.pEdge()->disconnect();
        if (it.pNode() != nullptr) {
            it.pNode()->clearExtent();
        }
    }
    actOnEndObjectChange();
}

void QxDEdge::destroyPath() {
    // The second walk finds what is left of a path that is open.
    for (const QxIterDirectionEnum direction : {QxIterForward, QxIterBackward}) {
        const Path path = collectPath(direction);
        for (QxPEdge* segment : path.segments) {
            discardPEdge(segment);
        }
        for (QxPNode* bend : path.bends) {
            detachPNode(bend);
            bend->vRelease();
        }
    }
}

void QxDEdge::attachPath(QxNode* source, QxNode* target) {
    if (m_sourcePathEdge == nullptr) {
        linkNewSegment(source, target);
    } else if (m_sourcePathEdge == m_targetPathEdge) {
        m_sourcePathEdge->setEnds(source, target);
    } else {
        m_sourcePathEdge->setEnds(source, m_sourcePathEdge->QxEdge::pTargetNode());
        m_targetPathEdge->setEnds(m_targetPathEdge->QxEdge::pSourceNode(), target);
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
    segment->m_ownerEdge = this;
    segment->actOnChangeOwner(pOwner(), ownerValid());
    if (!isBend(from)) {
        m_sourcePathEdge = segment;
    }
    if (!isBend(to)) {
        m_targetPathEdge = segment;
    }
    segment->setFlag(qx::flags::EdgeConnected, isActive() ? 1 : 0);
    segment->setEnds(from, to);
    setFlag(qx::flags::EdgeShownWhole, 0);
    actOnEndObjectChange();
}

void QxDEdge::detachPNode(QxPNode* node) {
    node->disconnectEdges();
    node->actOnChangeOwner(pUnverifiedFactory(), 0);
    node->m_ownerEdge = nullptr;
    actOnEndObjectChange();
}

void QxDEdge::detachPEdge(QxPEdge* segment) {
    segment->nullEndNodes();
    segment->actOnChangeOwner(pUnverifiedFactory(), 0);
    segment->m_ownerEdge = nullptr;
    setFlag(qx::flags::EdgeShownWhole, 0);
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
    const qx::internal::KeepAlive alive(*this);
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
    if ((!isBend(from) && m_sourcePathEdge != nullptr) ||
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
    QxGEdge::actOnChangeOwner(owner, valid);
    for (QxDisconnectedPathIter it(this); it; ++it) {
        it.pEdge()->actOnChangeOwner(owner, valid);
        if (it.pNode() != nullptr) {
            it.pNode()->actOnChangeOwner(owner, valid);
        }
    }
}

void QxDEdge::updatePathOwnership() {
    QxNode* source = pSourceNode();
    QxNode* target = pTargetNode();
    if (source != nullptr && target != nullptr &&
        (m_sourcePathEdge == nullptr || m_sourcePathEdge->QxEdge::pSourceNode() != source ||
         m_targetPathEdge->QxEdge::pTargetNode() != target)) {
        attachPath(source, target);
    }
    for (const QxIterDirectionEnum direction : {QxIterForward, QxIterBackward}) {
        for (QxDisconnectedPathIter it(this, direction); it && !followsEdge(*it.pEdge()); ++it) {
            it.pEdge()->actOnChangeOwner(pOwner(), ownerValid());
            if (it.pNode() == nullptr || followsEdge(*it.pNode())) {
                break;
            }
            it.pNode()->actOnChangeOwner(pOwner(), ownerValid());
        }
    }
}

bool QxDEdge::isPathWhole() const {
    const QxPEdge* last = nullptr;
    for (QxDisconnectedPathIter it(this); it; ++it) {
        last = it.pEdge();
    }
    return last == m_targetPathEdge;
}

int QxDEdge::checkPath() const {
    if (!isActive()) {
        return complain("the edge is not connected");
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
