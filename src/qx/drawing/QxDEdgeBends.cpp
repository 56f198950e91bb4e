// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Bends: adding, removing, listing.
//
// Adding or removing one bend costs the same whatever the length of the path: the segments next to
// it report, the path is not walked, and the visible part is only marked outdated. Events follow
// the change; listeners may do anything then, so nothing is done to the edge after them.

#include <algorithm>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/internal/EdgeEnd.h"
#include "qx/drawing/internal/GeometryBracket.h"
#include "qx/drawing/internal/KeepAlive.h"
#include "qx/events/internal/FireDrawingChange.h"

using qx::internal::replaceEdge;

namespace {

bool isBend(const QxNode* node) {
    return (node->flagWord() & qx::flags::PathObject) != 0;
}

}  // namespace

QxPNode* QxDEdge::addBend(QxPEdge* segment, const QxPoint& point, int inOwnGraph) {
    QxDGraph* graph = pOwnerGraph();
    if (graph == nullptr || segment == nullptr || segment->pOwnerEdge() != this) {
        return nullptr;
    }
    QxPoint place = point;
    if (inOwnGraph == 0) {
        graph->inverseExpandedTransformPoint(place);
    }
    QxGeometricUpdateInfo record(graph, 0, 1);
    segment->actBeforeRemove(&record, 1);
    QxPNode* bend = splitSegment(segment, place);
    if (bend != nullptr) {
        bend->actAfterInsert(&record, 1, 1);
    } else {
        segment->actAfterInsert(&record, 1);
    }
    record.enableAndRestoreState();
    tellBendAdded(bend);
    return bend;
}

QxPNode* QxDEdge::addBendAfter(QxPNode* bend, const QxPoint& point, int inOwnGraph) {
    if (bend == nullptr) {
        return addBend(m_sourcePathEdge, point, inOwnGraph);
    }
    return bend->outDegree() == 1
               ? addBend(static_cast<QxPEdge*>(bend->pFirstOutEdge()), point, inOwnGraph)
               : nullptr;
}

QxPNode* QxDEdge::ntAddBend(QxPEdge* segment, const QxPoint& point) {
    QxPNode* bend = splitSegment(segment, point);
    tellBendAdded(bend);
    return bend;
}

QxPNode* QxDEdge::splitSegment(QxPEdge* segment, const QxPoint& point) {
    if (connected() == 0 || segment == nullptr || segment->connected() == 0 ||
        segment->pOwnerEdge() != this) {
        return nullptr;
    }
    QxPNode* bend = addPNode(point);
    if (bend != nullptr) {
        QxNode* end = segment->QxEdge::pTargetNode();
        segment->setEnds(segment->QxEdge::pSourceNode(), bend);
        linkNewSegment(bend, end);
    }
    return bend;
}

void QxDEdge::tellBendAdded(QxPNode* bend) {
    if (bend != nullptr) {
        qx::internal::fireDrawingChange(
            *this, BendAdded, [&] { return new QxDrawingChangeEventData(bend, nullptr, this); });
    }
}

int QxDEdge::discardBend(QxPNode* bend) {
    if (!canMergeAt(bend)) {
        return 0;
    }
    QxGeometricUpdateInfo record(pOwnerGraph(), 0, 1);
    bend->actBeforeRemove(&record, 1, 1);
    mergeSegmentsAt(bend)->actAfterInsert(&record, 1);
    record.enableAndRestoreState();
    discardDetached({bend});
    return 1;
}

bool QxDEdge::canMergeAt(const QxPNode* bend) const {
    return connected() != 0 && bend != nullptr && bend->pOwnerEdge() == this &&
           bend->inDegree() == 1 && bend->outDegree() == 1;
}

QxPEdge* QxDEdge::mergeSegmentsAt(QxPNode* bend) {
    auto* in = static_cast<QxPEdge*>(bend->pFirstInEdge());
    auto* out = static_cast<QxPEdge*>(bend->pFirstOutEdge());
    QxNode* from = in->QxEdge::pSourceNode();
    QxNode* end = out->QxEdge::pTargetNode();
    discardPEdge(out);
    if (!isBend(end)) {
        m_targetPathEdge = in;
    }
    in->setEnds(from, end);
    detachPNode(bend);
    return in;
}

void QxDEdge::discardBends(std::int32_t n, int fromSource) {
    std::vector<QxPNode*> bends;
    for (QxPathNodeIter it(this); it; ++it) {
        bends.push_back(it.pNode());
    }
    const auto surplus = static_cast<std::int64_t>(bends.size()) - std::max(n, 0);
    if (surplus > 0) {
        const auto first = fromSource != 0 ? bends.end() - surplus : bends.begin();
        bends.erase(first, first + surplus);
    }
    const qx::internal::KeepAlive alive(*this);
    for (QxPNode* bend : bends) {
        bend->vAddRef();
    }
    for (QxPNode* bend : bends) {
        discardBend(bend);  // refused when a listener was faster
        bend->vRelease();
    }
}

void QxDEdge::discardAllBends() {
    if (m_sourcePathEdge == m_targetPathEdge) {
        return;
    }
    std::vector<QxPNode*> bends;
    replaceEdge(*this, [&] { bends = straighten(); });
    discardDetached(bends);
}

std::vector<QxPNode*> QxDEdge::straighten() {
    Path path = collectPath();
    if (path.bends.empty()) {
        return {};
    }
    QxPEdge* first = path.segments.front();
    for (QxPEdge* segment : path.segments) {
        if (segment != first) {
            discardPEdge(segment);
        }
    }
    m_targetPathEdge = first;
    first->setEnds(pSourceNode(), pTargetNode());
    for (QxPNode* bend : path.bends) {
        detachPNode(bend);
    }
    return std::move(path.bends);
}

int QxDEdge::reroute(const QxPointDList& points, int inOwnGraph) {
    const QxDGraph* graph = pOwnerGraph();
    if (graph == nullptr || !isActive()) {
        return 0;
    }
    std::vector<QxPNode*> oldBends;
    std::vector<QxPNode*> newBends;
    replaceEdge(*this, [&] {
        oldBends = straighten();
        for (const QxDListCell* cell = points.pFirstCell(); cell; cell = cell->pNextCell()) {
            QxPoint point = *QxPointDList::pPoint(cell);
            if (inOwnGraph == 0) {
                graph->inverseExpandedTransformPoint(point);
            }
            if (QxPNode* bend = splitSegment(m_targetPathEdge, point)) {
                bend->vAddRef();
                newBends.push_back(bend);
            }
        }
    });
    const qx::internal::KeepAlive alive(*this);
    discardDetached(oldBends);
    for (QxPNode* bend : newBends) {
        if (bend->pOwnerEdge() == this) {
            tellBendAdded(bend);
        }
        bend->vRelease();
    }
    return 1;
}

void QxDEdge::discardOverlappedBendsForClipping(int source, int target) {
    std::vector<QxPNode*> bends;
    const auto discardHiddenAt = [&](bool atSource) {
        const qx::internal::EdgeEnd end(*this, atSource);
        while (QxPNode* bend =
                   QxPathIter(this, atSource ? QxIterForward : QxIterBackward).pNode()) {
            if (!end || !end.contains(bend->iCenter()) || !canMergeAt(bend)) {
                return;
            }
            mergeSegmentsAt(bend);
            bends.push_back(bend);
        }
    };
    replaceEdge(*this, [&] {
        if (source != 0) {
            discardHiddenAt(true);
        }
        if (target != 0) {
            discardHiddenAt(false);
        }
    });
    discardDetached(bends);
}

std::int32_t QxDEdge::numberOfBends() const {
    std::int32_t segments = 0;
    for (QxPathIter it(this); it; ++it) {
        ++segments;
    }
    return segments - 1;
}

int QxDEdge::hasBends() const {
    return connected() != 0 && m_sourcePathEdge != m_targetPathEdge ? 1 : 0;
}

std::int32_t QxDEdge::indexOfPathEdge(const QxPEdge* segment) const {
    std::int32_t index = 0;
    if (segment != nullptr) {
        for (QxPathIter it(this); it; ++it) {
            ++index;
            if (it.pEdge() == segment) {
                break;
            }
        }
    }
    return index;
}

void QxDEdge::buildPathNodeList(QxPNodeDList& list) const {
    for (QxDisconnectedPathIter it(this); it && it.pNode() != nullptr; ++it) {
        list.appendNode(it.pNode());
    }
}

void QxDEdge::buildPointList(QxPointDList& list) const {
    list.appendPoint(ntFromPoint(1));
    for (QxDisconnectedPathIter it(this); it && it.pNode() != nullptr; ++it) {
        list.appendPoint(it.pNode()->iCenter());
    }
    list.appendPoint(ntToPoint(1));
}

int QxDEdge::isCurvedEdge() const {
    return 0;
}
