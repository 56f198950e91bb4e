// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Bends: adding, removing, listing.
//
// Adding or removing one bend costs the same whatever the length of the path: the path is not
// walked, and the visible part is only marked outdated. Events about bends follow the change and
// come before the one about the bounds. Listeners may do anything then, so the edge is kept alive,
// and what is told afterwards is only what is still true.

#include <algorithm>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/clipping/internal/EdgeEnd.h"
#include "qx/drawing/path/internal/Bend.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/util/internal/Ref.h"

using qx::internal::Change;
using qx::internal::isBend;
using qx::internal::Ref;
using qx::internal::Snapshot;

QxPNode* QxDEdge::addBend(QxPEdge* segment, const QxPoint& point, int inOwnGraph) {
    QxDGraph* graph = pOwnerGraph();
    if (graph == nullptr) {
        return nullptr;
    }
    QxPoint place = point;
    if (inOwnGraph == 0) {
        graph->inverseExpandedTransformPoint(place);
    }
    QxPNode* bend = nullptr;
    const Ref alive(*this);
    Change::run(*this, [&] { bend = ntAddBend(segment, place); });
    return bend;
}

QxPNode* QxDEdge::addBendAfter(QxPNode* bend, const QxPoint& point, int inOwnGraph) {
    if (bend == nullptr) {
        return addBend(pSourceOrPathEdge(), point, inOwnGraph);
    }
    return bend->outDegree() == 1
               ? addBend(static_cast<QxPEdge*>(bend->pFirstOutEdge()), point, inOwnGraph)
               : nullptr;
}

QxPNode* QxDEdge::ntAddBend(QxPEdge* segment, const QxPoint& point) {
    const Ref alive(*this);
    const Ref bend(splitSegment(segment, point));
    if (!bend) {
        return nullptr;
    }
    tellBendAdded(bend.get());
    return bend->pOwnerEdge() == this ? bend.get() : nullptr;
}

QxPNode* QxDEdge::ntAppendBend(const QxPoint& point) {
    const Ref alive(*this);
    QxPEdge* const last = pTargetOrPathEdge();
    const Ref bend(last != nullptr ? breakSegment(last, point) : nullptr);
    if (!bend) {
        return nullptr;
    }
    tellBendAdded(bend.get());
    return bend->pOwnerEdge() == this ? bend.get() : nullptr;
}

QxPNode* QxDEdge::splitSegment(QxPEdge* segment, const QxPoint& point) {
    if (connected() == 0 || segment == nullptr || segment->connected() == 0 ||
        segment->pOwnerEdge() != this) {
        return nullptr;
    }
    return breakSegment(segment, point);
}

QxPNode* QxDEdge::breakSegment(QxPEdge* segment, const QxPoint& point) {
    Ref rest = Ref<QxPEdge>::adopt(vNewPEdge());
    QxPNode* bend = rest ? addPNode(point) : nullptr;
    if (bend != nullptr) {
        QxNode* end = segment->QxEdge::pTargetNode();
        segment->setEnds(segment->QxEdge::pSourceNode(), bend);
        link(rest.handOver(), bend, end);
    }
    return bend;
}

void QxDEdge::tellBendAdded(QxPNode* bend) {
    if (bend->pOwnerEdge() == this) {
        qx::internal::fireDrawingChange(
            *this, BendAdded, [&] { return new QxDrawingChangeEventData(bend, nullptr, this); });
    }
}

int QxDEdge::discardBend(QxPNode* bend) {
    if (!canMergeAt(bend)) {
        return 0;
    }
    Change::run(*this, [&] {
        mergeSegmentsAt(bend);
        discardDetached({bend});
    });
    return 1;
}

bool QxDEdge::canMergeAt(const QxPNode* bend) const {
    return connected() != 0 && bend != nullptr && bend->pOwnerEdge() == this &&
           bend->inDegree() == 1 && bend->outDegree() == 1;
}

void QxDEdge::mergeSegmentsAt(QxPNode* bend) {
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
}

void QxDEdge::discardBends(std::int32_t n, int fromSource) {
    std::vector<QxPNode*> bends;
    for (QxPathIter it(this, fromSource != 0 ? QxIterForward : QxIterBackward);
         n > 0 && it.pNode() != nullptr; ++it, --n) {
        bends.push_back(it.pNode());
    }
    if (fromSource == 0) {
        std::reverse(bends.begin(), bends.end());
    }
    Snapshot<QxPNode> doomed;
    for (QxPNode* bend : bends) {
        doomed.add(bend);
    }
    Change::run(*this, [&] {
        for (QxPNode* bend : doomed) {
            discardBend(bend);  // refused when a listener was faster
        }
    });
}

void QxDEdge::discardAllBends() {
    if (m_sourcePathEdge == m_targetPathEdge) {
        return;
    }
    Change::run(*this, [&] { discardDetached(straighten()); });
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
    Change::run(*this, [&] {
        const std::vector<QxPNode*> oldBends = straighten();
        Snapshot<QxPNode> newBends;
        for (const QxDListCell* cell = points.pFirstCell(); cell; cell = cell->pNextCell()) {
            QxPoint point = *QxPointDList::pPoint(cell);
            if (inOwnGraph == 0) {
                graph->inverseExpandedTransformPoint(point);
            }
            if (QxPNode* bend = splitSegment(pTargetOrPathEdge(), point)) {
                newBends.add(bend);
            }
        }
        discardDetached(oldBends);
        for (QxPNode* bend : newBends) {
            tellBendAdded(bend);
        }
    });
    return 1;
}

void QxDEdge::discardOverlappedBendsForClipping(int source, int target) {
    std::vector<QxPNode*> bends;
    const int inOwnGraph = intergraphEdge() != 0 ? 0 : 1;
    const auto discardWithin = [&](const QxDNode* node, QxIterDirectionEnum direction) {
        while (QxPNode* bend = QxPathIter(this, direction).pNode()) {
            if (!qx::internal::nodeContains(*node, bend->iCenter(), inOwnGraph) ||
                !canMergeAt(bend)) {
                return;
            }
            mergeSegmentsAt(bend);
            bends.push_back(bend);
        }
    };
    Change::run(*this, [&] {
        if (source != 0) {
            discardWithin(pSourceNode(), QxIterForward);
        }
        if (target != 0) {
            discardWithin(pTargetNode(), QxIterBackward);
        }
        discardDetached(bends);
    });
}

std::int32_t QxDEdge::numberOfBends() const {
    if (isPathImplied()) {
        return isActive() ? 0 : -1;
    }
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
    for (auto it = madeParts(); it && it.pNode() != nullptr; ++it) {
        list.appendNode(it.pNode());
    }
}

void QxDEdge::buildPointList(QxPointDList& list) const {
    list.appendPoint(ntFromPoint(0));
    for (auto it = madeParts(); it && it.pNode() != nullptr; ++it) {
        list.appendPoint(it.pNode()->iCenter());
    }
    list.appendPoint(ntToPoint(0));
}

void QxDEdge::buildEdgePointList(QxPointDList& list) const {
    list.discardAllPoints();
    buildPointList(list);
}

int QxDEdge::isCurvedEdge() const {
    return 0;
}
