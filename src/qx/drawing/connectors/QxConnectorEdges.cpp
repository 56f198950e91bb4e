// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The edges at a connector: who they are, what they are told, and what they report.

#include <algorithm>
#include <unordered_set>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxGeometricUpdateInfo.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/bounds/internal/Moment.h"
#include "qx/drawing/connectors/internal/RoutingDirection.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/foundation/graph/internal/EachObject.h"

using qx::internal::each;
using qx::internal::Moment;

namespace {

/// Lists the edges of a node that use a connector, in the order of the node's lists.
class UserCollector {
public:
    UserCollector(const QxConnector& connector, QxEdgeDirectionEnum direction, QxDEdgeDList& list)
        : m_connector(&connector),
          m_wantsIn(direction != QxEdgeDirectionOut),
          m_wantsOut(direction != QxEdgeDirectionIn),
          m_list(list) {}

    void addConnected(const QxDNode& node) {
        for (QxDEdge* edge : each<QxDEdge>(*node.pInEdgeList())) {
            if (m_wantsIn && uses(edge, false)) {
                m_list.appendEdge(edge);
            }
        }
        for (QxDEdge* edge : each<QxDEdge>(*node.pOutEdgeList())) {
            if (m_wantsOut && uses(edge, true) && !uses(edge, false)) {
                m_list.appendEdge(edge);
            }
        }
    }
    /// Of a list that names a self-loop for each of its ends.
    void addIdle(const QxEdgeDList& idle) {
        for (QxDEdge* edge : each<QxDEdge>(idle)) {
            const bool isAsked =
                (m_wantsOut && uses(edge, true)) || (m_wantsIn && uses(edge, false));
            if (isAsked && (edge->reflexive() == 0 || m_loops.insert(edge).second)) {
                m_list.appendEdge(edge);
            }
        }
    }

private:
    bool uses(const QxDEdge* edge, bool atSource) const {
        const QxConnector* used =
            atSource ? edge->pInternalSourceConnector() : edge->pInternalTargetConnector();
        return used == m_connector;
    }

    const QxConnector* m_connector;
    bool m_wantsIn;
    bool m_wantsOut;
    QxDEdgeDList& m_list;
    std::unordered_set<const QxDEdge*> m_loops;
};

void reportSegment(Moment moment, QxPEdge& segment, QxGeometricUpdateInfo* info) {
    switch (moment) {
        case Moment::BeforeRemove:
            segment.actBeforeRemove(info, 1);
            break;
        case Moment::AfterInsert:
            segment.actAfterInsert(info, 1);
            break;
        case Moment::BeforeChange:
            segment.actBeforeGeometryChanges(info, 1);
            break;
        case Moment::AfterChange:
            segment.actAfterGeometryChanges(info, 1);
            break;
    }
}

bool isRecording(const QxGeometricUpdateInfo* own, const QxGeometricUpdateInfo* intergraph) {
    return own != nullptr && own->pGraph() != nullptr &&
           (own->needsRecursiveUpdate() != 0 ||
            (intergraph != nullptr && intergraph->needsRecursiveUpdate() != 0));
}

}  // namespace

std::size_t QxConnector::addUser(QxDEdge* edge, bool atSource) {
    m_users.push_back({edge, atSource});
    return m_users.size() - 1;
}

void QxConnector::dropUser(std::size_t index) {
    const User last = m_users.back();
    m_users.pop_back();
    if (index < m_users.size()) {
        m_users[index] = last;
        last.edge->connectorUse(last.atSource).number = index;
    }
}

bool QxConnector::isUsedWithinGraph() const {
    return std::any_of(m_users.begin(), m_users.end(), [](const User& user) {
        const QxDEdge& edge = *user.edge;
        return edge.connected() != 0 && edge.deactivated() == 0 && edge.intergraphEdge() == 0;
    });
}

void QxConnector::discardWhenUnused() {
    QxDNode* node = pOwnerNode();
    if (node != nullptr && specified() == 0 && m_users.empty() && inDiscard() == 0) {
        node->discardConnector(this);
    }
}

void QxConnector::invalidateIncidentEdgeEndPoints() {
    for (const User& user : m_users) {
        user.edge->actOnEndObjectChange();
    }
}

void QxConnector::actOnGeometryChanges() {
    for (const User& user : m_users) {
        user.edge->isUpdatedVisiblePart(0);
    }
}

void QxConnector::buildIncidentEdgeList(QxDEdgeDList* list, QxEdgeDirectionEnum direction,
                                        QxEdgeConnectionEnum connection) const {
    if (list == nullptr) {
        return;
    }
    list->deleteAllCells();
    const QxDNode* node = pOwnerNode();
    if (node == nullptr || m_users.empty()) {
        return;
    }
    UserCollector users(*this, direction, *list);
    const bool wantsAll = connection == QxEdgeConnectionAll;
    const bool wantsBoth = connection == QxEdgeConnectionNotDeactivated || wantsAll;
    if (connection == QxEdgeConnectionConnected || wantsBoth) {
        users.addConnected(*node);
    }
    if (connection == QxEdgeConnectionDisconnected || wantsBoth) {
        users.addIdle(*node->pDisconnectedEdgeList());
    }
    if (connection == QxEdgeConnectionDeactivated || wantsAll) {
        users.addIdle(*node->pDeactivatedEdgeList());
    }
}

void QxConnector::buildIncidentPEdgeList(QxPEdgeDList* list) const {
    if (list == nullptr) {
        return;
    }
    list->deleteAllCells();
    const QxDNode* node = pOwnerNode();
    if (node == nullptr || m_users.empty()) {
        return;
    }
    for (QxDEdge* edge : each<QxDEdge>(*node->pInEdgeList())) {
        if (edge->pInternalTargetConnector() == this) {
            list->appendEdge(edge->pTargetOrPathEdge());
        }
    }
    for (QxDEdge* edge : each<QxDEdge>(*node->pOutEdgeList())) {
        const bool isListed = edge->pInternalTargetConnector() == this && edge->hasBends() == 0;
        if (edge->pInternalSourceConnector() == this && !isListed) {
            list->appendEdge(edge->pSourceOrPathEdge());
        }
    }
}

void QxConnector::updateCalculatedConnector(const QxPEdge* segment) {
    const QxDEdge* edge = segment != nullptr ? segment->pOwnerEdge() : nullptr;
    if (edge == nullptr || specified() != 0) {
        return;
    }
    const bool startsHere =
        edge->pInternalSourceConnector() == this && segment == edge->pSourceOrPathEdge();
    if (!startsHere && edge->pInternalTargetConnector() != this) {
        return;
    }
    if (edge->desiredOrthogonalRouting() == 0) {
        routingDirection(QxDirectionNone);
    } else if (hasRoutingDirection() == 0) {
        const QxPoint here = startsHere ? segment->ntFromPoint(0) : segment->ntToPoint(0);
        const QxPoint there = startsHere ? segment->ntToPoint(0) : segment->ntFromPoint(0);
        routingDirection(qx::internal::directionLeaving(*pOwnerNode(), *edge, here, there));
    }
}

void QxConnector::report(Moment moment, QxGeometricUpdateInfo* own,
                         QxGeometricUpdateInfo* intergraph, const QxPEdgeDList* segments,
                         int labels) const {
    if (!isRecording(own, intergraph)) {
        return;
    }
    if (segments != nullptr) {
        for (QxPEdge* segment : each<QxPEdge>(*segments)) {
            const QxDEdge* edge = segment->pOwnerEdge();
            const bool isBetween = edge != nullptr && edge->intergraphEdge() != 0;
            reportSegment(moment, *segment, isBetween ? intergraph : own);
        }
    }
    if (specified() != 0 && pOwnerNode() != nullptr) {
        QxRect rect;
        if (labels != 0) {
            getBoundingRectWithSubObjects(rect, 1);
        } else {
            ntBoundingRect(rect);
        }
        qx::internal::collect(*own, moment, *this, rect);
    }
}

void QxConnector::actBeforeGeometryChanges(QxGeometricUpdateInfo* own,
                                           QxGeometricUpdateInfo* intergraph, int labels,
                                           int pathEdges) {
    QxPEdgeDList segments;
    buildIncidentPEdgeList(pathEdges != 0 ? &segments : nullptr);
    report(Moment::BeforeChange, own, intergraph, &segments, labels);
}

void QxConnector::actAfterGeometryChanges(QxGeometricUpdateInfo* own,
                                          QxGeometricUpdateInfo* intergraph, int labels,
                                          int pathEdges) {
    QxPEdgeDList segments;
    buildIncidentPEdgeList(pathEdges != 0 ? &segments : nullptr);
    report(Moment::AfterChange, own, intergraph, &segments, labels);
}

void QxConnector::actAfterInsert(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                                 const QxPEdgeDList* segments, int labels, int) {
    report(Moment::AfterInsert, own, intergraph, segments, labels);
}

void QxConnector::actBeforeRemove(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                                  QxPEdgeDList& segments, int labels, int) {
    buildIncidentPEdgeList(&segments);
    report(Moment::BeforeRemove, own, intergraph, &segments, labels);
}

void QxConnector::actAfterRemove(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                                 const QxPEdgeDList* segments, int labels, int) {
    report(Moment::AfterInsert, own, intergraph, segments, labels);
}
