// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxPEdge.h"

#include <array>
#include <ostream>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxGeometricUpdateInfo.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/bounds/internal/Moment.h"
#include "qx/drawing/clipping/internal/EdgeEnd.h"
#include "qx/drawing/internal/FreeOwner.h"
#include "qx/drawing/path/internal/Bend.h"
#include "qx/foundation/util/QxDebugStream.h"

using qx::internal::Change;
using qx::internal::Coverage;
using qx::internal::isBend;
using qx::internal::Moment;
using qx::internal::Ref;

namespace {

/// The bends at the ends of a segment that is about to change: they count while they join segments.
class EndBends {
public:
    explicit EndBends(const QxPEdge& segment) : m_segment(segment) { note(m_before); }
    ~EndBends() {
        Ends after;
        note(after);
        for (const Ends* ends : {&m_before, &after}) {
            for (const Ref<QxPNode>& bend : *ends) {
                if (bend) {
                    Coverage::changed(*bend);
                }
            }
        }
    }
    EndBends(const EndBends&) = delete;
    EndBends& operator=(const EndBends&) = delete;

private:
    using Ends = std::array<Ref<QxPNode>, 2>;

    void note(Ends& ends) const {
        QxNode* const nodes[] = {m_segment.QxEdge::pSourceNode(), m_segment.QxEdge::pTargetNode()};
        for (std::size_t i = 0; i < 2; ++i) {
            if (isBend(nodes[i])) {
                ends[i] = Ref<QxPNode>(static_cast<QxPNode*>(nodes[i]));
            }
        }
    }

    const QxPEdge& m_segment;
    Ends m_before;
};

}  // namespace

QxPEdge::QxPEdge(QxOwnedObject* owner) : QxGEdge(nullptr) {
    // The owner is set only now: the graph would list the segment among its own members.
    pOwner(qx::internal::ownerWhileFree(owner));
    setFlag(qx::flags::PathObject, 1);
}

QxPEdge::QxPEdge(const QxPEdge& source, QxDeepFlagEnum depth) : QxPEdge(source.pOwner()) {
    QxPEdge::copyEdge(&source, depth == QxDeepCopy ? 1 : 0);
}

QxPEdge::~QxPEdge() {
    if (QxDEdge* edge = pOwnerEdge()) {
        edge->detachPEdge(this);
    }
}

int QxPEdge::isPathEdge() const {
    return 1;
}

int QxPEdge::vIsVisible() const {
    const QxDEdge* edge = pOwnerEdge();
    return edge != nullptr && edge->isVisible() != 0 ? QxGEdge::vIsVisible() : 0;
}

std::size_t QxPEdge::sizeOf() const {
    return QxGEdge::sizeOf() + sizeof(QxPEdge) - sizeof(QxGEdge);
}

int QxPEdge::checkInvariants() const {
    return QxGEdge::checkInvariants();
}

int QxPEdge::levelNumber() const {
    return 1;
}

QxEdge* QxPEdge::pOriginalEdge() {
    QxDEdge* edge = pOwnerEdge();
    return edge != nullptr ? static_cast<QxEdge*>(edge) : this;
}

const QxEdge* QxPEdge::pOriginalEdge() const {
    const QxDEdge* edge = pOwnerEdge();
    return edge != nullptr ? static_cast<const QxEdge*>(edge) : this;
}

void QxPEdge::innerDebugOutput(int depth) const {
    const QxPoint from = ntFromPoint(0);
    const QxPoint to = ntToPoint(0);
    qxDebugIndent(depth) << "segment: " << from.x() << ' ' << from.y() << " to " << to.x() << ' '
                         << to.y() << (connected() != 0 ? "" : ", disconnected") << '\n';
}

int QxPEdge::isCurvedEdge() const {
    const QxDEdge* edge = pOwnerEdge();
    return edge != nullptr ? edge->isCurvedEdge() : 0;
}

int QxPEdge::canEnd(const QxNode* node) const {
    if (QxGEdge::canEnd(node) == 0) {
        return 0;
    }
    const QxDEdge* edge = pOwnerEdge();
    if (edge == nullptr) {
        return 1;
    }
    if (isBend(node)) {
        return node->degree() + node->pDisconnectedEdgeList()->count() < 3 ? 1 : 0;
    }
    const bool isAtEnd = edge->m_sourcePathEdge == this || edge->m_targetPathEdge == this;
    return isAtEnd && (node == edge->pSourceNode() || node == edge->pTargetNode()) ? 1 : 0;
}

int QxPEdge::canConnect(const QxNode* node) const {
    const QxDEdge* edge = pOwnerEdge();
    if (edge == nullptr || edge->connected() == 0 || QxGEdge::canConnect(node) == 0) {
        return 0;
    }
    return !isBend(node) || static_cast<const QxPNode*>(node)->pOwnerEdge() == edge ? 1 : 0;
}

QxObject* QxPEdge::vCloneObject() const {
    return new QxPEdge(*this, QxDeepCopy);
}

QxObject* QxPEdge::vCloneAttributes() const {
    return new QxPEdge(*this, QxAttributeCopy);
}

void QxPEdge::copyEdge(const QxEdge* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    QxGEdge::copyEdge(source, deep);
    if (QxDEdge* edge = pOwnerEdge()) {
        edge->actOnEndObjectChange();
    }
}

template <class Act>
int QxPEdge::changeEnd(const Act& act) {
    int changed = 0;
    Change::run(*this, [&] {
        const EndBends bends(*this);
        changed = act();
        if (QxDEdge* edge = changed != 0 ? pOwnerEdge() : nullptr) {
            edge->actOnEndObjectChange();
            Coverage::changed(*this);
        }
    });
    return changed;
}

int QxPEdge::changeSourceNodeWithoutConnect(QxNode* node) {
    return changeEnd([&] { return QxGEdge::changeSourceNodeWithoutConnect(node); });
}

int QxPEdge::changeTargetNodeWithoutConnect(QxNode* node) {
    return changeEnd([&] { return QxGEdge::changeTargetNodeWithoutConnect(node); });
}

void QxPEdge::setEnds(QxNode* source, QxNode* target) {
    // The lists of the bends hold the path together in every state, that of a detached edge too,
    // and that of an edge between graphs whose node is on its way from one graph to another.
    const EndBends bends(*this);
    placeEnds(source, target);
    Coverage::changed(*this);
}

void QxPEdge::nullEndNodes() {
    const EndBends bends(*this);
    QxGEdge::nullEndNodes();
    Coverage::changed(*this);
}

void QxPEdge::vFollowState() {
    Coverage::changed(*this);
}

void QxPEdge::actOnChangeOwner(QxOwnedObject* owner, int valid) {
    Coverage::ended(*this);
    QxGEdge::actOnChangeOwner(owner, valid);
    Coverage::changed(*this);
}

void QxPEdge::readEnd(QxPoint& point, int clipped, bool atSource) const {
    const QxDEdge* edge = pUnverifiedOwnerEdge();
    const QxNode* node = atSource ? QxEdge::pSourceNode() : QxEdge::pTargetNode();
    if (edge == nullptr || node == nullptr) {
        // Of a removed edge the bends are left.
        const QxNode* other = atSource ? QxEdge::pTargetNode() : QxEdge::pSourceNode();
        if (edge != nullptr && isBend(other)) {
            static_cast<const QxPNode*>(other)->iCenter(point);
        }
        return;
    }
    const bool isClipped = clipped != 0 && edge->ownerValid() != 0 && inVisiblePart() != 0 &&
                           edge->isUpdatedVisiblePart() != 0 && edge->isClippedAt(atSource);
    if (isBend(node)) {
        const auto* bend = static_cast<const QxPNode*>(node);
        if (!isClipped || bend->inVisiblePart() != 0) {
            bend->iCenter(point);
            return;
        }
    }
    if (isClipped) {
        edge->readClipPoint(point, *this, atSource);
    } else if (const qx::internal::EdgeEnd end(*edge, atSource); end) {
        point = end.center();
    }
}

void QxPEdge::ntFromPoint(QxPoint& point, int clipped) const {
    readEnd(point, clipped, true);
}

QxPoint QxPEdge::ntFromPoint(int clipped) const {
    QxPoint point;
    readEnd(point, clipped, true);
    return point;
}

void QxPEdge::ntToPoint(QxPoint& point, int clipped) const {
    readEnd(point, clipped, false);
}

QxPoint QxPEdge::ntToPoint(int clipped) const {
    QxPoint point;
    readEnd(point, clipped, false);
    return point;
}

int QxPEdge::getSourcePoint(QxPoint& point, int inOwnGraph) const {
    return getEnd(point, inOwnGraph, true);
}

int QxPEdge::getTargetPoint(QxPoint& point, int inOwnGraph) const {
    return getEnd(point, inOwnGraph, false);
}

int QxPEdge::getEnd(QxPoint& point, int inOwnGraph, bool atSource) const {
    readEnd(point, 0, atSource);
    if (const QxDGraph* graph = inOwnGraph == 0 ? pOwnerGraph() : nullptr) {
        graph->expandedTransformPoint(point);
    }
    return 1;
}

int QxPEdge::getUserBoundingRect(QxRect& rect, int inOwnGraph) const {
    QxPoint from;
    QxPoint to;
    if (getSourcePoint(from, inOwnGraph) == 0 || getTargetPoint(to, inOwnGraph) == 0) {
        return 0;
    }
    rect = QxRect(from, to);
    return 1;
}

int QxPEdge::isSlope() const {
    const QxPoint from = ntFromPoint(1);
    const QxPoint to = ntToPoint(1);
    return from.x() != to.x() && from.y() != to.y() ? 1 : 0;
}

QxDirectionEnum QxPEdge::direction() const {
    return ntFromPoint(1).direction(ntToPoint(1));
}

int QxPEdge::isUsable() const {
    const QxDEdge* edge = pOwnerEdge();
    return edge != nullptr && edge->canUsePart(*this, hasFlag(qx::flags::SegmentVisible)) ? 1 : 0;
}

int QxPEdge::inVisiblePart() const {
    if (const QxDEdge* edge = pOwnerEdge()) {
        edge->refreshVisiblePart();
    }
    return hasFlag(qx::flags::SegmentVisible);
}

int QxPEdge::inVisiblePart(int value) {
    inVisiblePart();  // or the next reader would bring it up to date
    setFlag(qx::flags::SegmentVisible, value);
    if (QxDEdge* edge = pOwnerEdge()) {
        edge->tellOfLabels();
    }
    return value;
}

int QxPEdge::inNewVisiblePart(int value) {
    if (QxDEdge* edge = pOwnerEdge()) {
        edge->invalidateEndPoints();
    }
    setFlag(qx::flags::SegmentNewVisible, value);
    return value;
}

void QxPEdge::report(Moment moment, QxGeometricUpdateInfo* info) {
    const QxDEdge* edge = pOwnerEdge();
    if (edge != nullptr && edge->reportsTo(info) && !edge->liesWithinItsEnds()) {
        QxRect rect;
        ntBoundingRect(rect, 0);
        qx::internal::collect(*info, moment, *this, rect);
    }
}

void QxPEdge::actAfterInsert(QxGeometricUpdateInfo* info, int) {
    report(Moment::AfterInsert, info);
}

void QxPEdge::actBeforeRemove(QxGeometricUpdateInfo* info, int) {
    report(Moment::BeforeRemove, info);
}

void QxPEdge::actBeforeGeometryChanges(QxGeometricUpdateInfo* info, int) {
    report(Moment::BeforeChange, info);
}

void QxPEdge::actAfterGeometryChanges(QxGeometricUpdateInfo* info, int) {
    report(Moment::AfterChange, info);
}
