// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Life, state and reports of drawing edges.

#include "qx/drawing/QxDEdge.h"

#include <ostream>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/QxGeometricUpdateInfo.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/bounds/internal/ExtentTree.h"
#include "qx/drawing/bounds/internal/Moment.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/util/QxDebugStream.h"

using qx::internal::EdgeExtras;
using qx::internal::Moment;

namespace {

/// Calls `act` with every segment and bend on the way, in their order.
template <class Act>
void eachPart(QxDisconnectedPathIter it, const Act& act) {
    for (; it; ++it) {
        act(*it.pEdge());
        if (it.pNode() != nullptr) {
            act(*it.pNode());
        }
    }
}

}  // namespace

QxDEdge::QxDEdge(QxOwnedObject* owner, int, QxFactory*) : QxGEdge(owner) {
    setFlag(qx::flags::EdgeClipSource | qx::flags::EdgeClipTarget, 1);
}

QxDEdge::QxDEdge(const QxDEdge& source, QxDeepFlagEnum depth)
    : QxDEdge(source.pOwner(), 0, nullptr) {
    QxDEdge::copyEdge(&source, depth == QxDeepCopy ? 1 : 0);
}

QxDEdge::~QxDEdge() {
    // The hooks of this class have to run before it is gone.
    if (QxDGraph* graph = pOwnerGraph()) {
        graph->removeEdge(this);
    }
    dropLabels();
    loseConnectors();
    destroyPath();
    qx::internal::endEventSource(*this);
}

int QxDEdge::userFieldsInUse() const {
    int used = QxGEdge::userFieldsInUse() | labelUserFieldsInUse(false);
    eachPart(madeParts(), [&](const QxGraphObject& part) { used |= part.userFieldsInUse(); });
    return used;
}

void QxDEdge::nullUserFields() {
    QxGEdge::nullUserFields();
    nullLabelUserFields(false);
    eachPart(madeParts(), [](QxGraphObject& part) { part.nullUserFields(); });
}

int QxDEdge::internalUserFieldsInUse() const {
    int used = QxGEdge::internalUserFieldsInUse() | labelUserFieldsInUse(true);
    eachPart(madeParts(),
             [&](const QxGraphObject& part) { used |= part.internalUserFieldsInUse(); });
    return used;
}

void QxDEdge::nullInternalUserFields() {
    QxGEdge::nullInternalUserFields();
    nullLabelUserFields(true);
    eachPart(madeParts(), [](QxGraphObject& part) { part.nullInternalUserFields(); });
}

std::size_t QxDEdge::sizeOf() const {
    return QxGEdge::sizeOf() + sizeof(QxDEdge) - sizeof(QxGEdge);
}

int QxDEdge::levelNumber() const {
    return 2;
}

int QxDEdge::checkInvariants() const {
    if (QxGEdge::checkInvariants() == 0 || (isActive() && checkPath() == 0)) {
        return 0;
    }
    if (!isPathWhole()) {
        qxDebugStream() << "drawing edge: the path does not lead from end to end\n";
        return 0;
    }
    for (const bool atSource : {true, false}) {
        const QxConnector* connector = pNotedConnector(atSource);
        const QxDNode* node = pConnectorAt(atSource) != nullptr ? connector->pOwnerNode() : nullptr;
        if (connector != nullptr && node != (atSource ? pSourceNode() : pTargetNode())) {
            qxDebugStream() << "drawing edge: an end is assigned to a connector elsewhere\n";
            return 0;
        }
    }
    for (auto it = madeParts(); it; ++it) {
        const QxPNode* bend = it.pNode();
        if (!followsEdge(*it.pEdge()) || (bend != nullptr && !followsEdge(*bend))) {
            qxDebugStream() << "drawing edge: a part of the path has another owner\n";
            return 0;
        }
        if (it.pEdge()->checkInvariants() == 0 ||
            (bend != nullptr && bend->checkInvariants() == 0)) {
            return 0;
        }
    }
    return checkOwnLabels();
}

void QxDEdge::actOnDiscard() {
    discardAllLabels();
    for (auto it = madeParts(); it; ++it) {
        if (it.pNode() != nullptr) {
            it.pNode()->actOnDiscard();
        }
    }
    qx::internal::endEventSource(*this);
    QxGEdge::actOnDiscard();
}

void QxDEdge::innerDebugOutput(int depth) const {
    QxGEdge::innerDebugOutput(depth);
    debugOutputPath(depth + 1);
    debugOutputLabels(depth + 1);
}

void QxDEdge::debugOutputPath(int depth) const {
    eachPart(QxDisconnectedPathIter(this), [&](const auto& part) { part.innerDebugOutput(depth); });
}

QxDNode* QxDEdge::pSourceNode() const {
    return static_cast<QxDNode*>(QxEdge::pSourceNode());
}

QxDNode* QxDEdge::pTargetNode() const {
    return static_cast<QxDNode*>(QxEdge::pTargetNode());
}

QxPEdge* QxDEdge::vNewPEdge() {
    auto* factory = static_cast<QxFactory*>(pUnverifiedFactory());
    return factory != nullptr ? factory->qxNewPEdge(factory) : new QxPEdge(nullptr);
}

QxPNode* QxDEdge::vNewPNode() {
    auto* factory = static_cast<QxFactory*>(pUnverifiedFactory());
    return factory != nullptr ? factory->qxNewPNode(factory) : new QxPNode(nullptr);
}

QxObject* QxDEdge::vCloneObject() const {
    return new QxDEdge(*this, QxDeepCopy);
}

QxObject* QxDEdge::vCloneAttributes() const {
    return new QxDEdge(*this, QxAttributeCopy);
}

bool QxDEdge::liesWithinItsEnds() const {
    return m_sourcePathEdge == m_targetPathEdge && intergraphEdge() == 0 &&
           !hasCalculatedConnector();
}

bool QxDEdge::canUsePart(const QxGraphObject& part, int inVisiblePart) const {
    constexpr std::uint32_t SetAside = qx::flags::TemporarilyInvisible | qx::flags::Processing;
    return isActive() && (part.flagWord() & SetAside) == 0 &&
           (isUpdatedVisiblePart() == 0 || inVisiblePart != 0);
}

QxDEdge* QxDEdge::pClonedEdge() const {
    const auto* extras = static_cast<const EdgeExtras*>(pQueryExtras());
    return extras != nullptr ? extras->clone : nullptr;
}

QxDEdge* QxDEdge::pClonedEdge(QxDEdge* edge) {
    if (edge != pClonedEdge()) {
        static_cast<EdgeExtras&>(extras()).clone = edge;
    }
    return edge;
}

qx::internal::GraphObjectExtras* QxDEdge::vNewExtras() const {
    return new EdgeExtras;
}

void QxDEdge::tellCoverage() {
    // While an edge does not count, nobody knows anything of it that could have changed.
    if (isActive() || m_extentSlot != qx::internal::ExtentTree::NoSlot ||
        hasFlag(qx::flags::InQuadTree) != 0) {
        qx::internal::Coverage::changed(*this);
    }
}

void QxDEdge::outdateLabels() {
    qx::internal::Coverage::labelsChanged(*this);
}

bool QxDEdge::reportsTo(const QxGeometricUpdateInfo* info) const {
    return info != nullptr && info->needsRecursiveUpdate() != 0 && info->pGraph() != nullptr &&
           isActive() && (intergraphEdge() == 0 || isVisible() != 0);
}

void QxDEdge::report(Moment moment, QxGeometricUpdateInfo* info, int labels) {
    if (!reportsTo(info)) {
        return;
    }
    if (labels != 0) {
        reportLabels(moment, info);
    }
    if (isAfter(moment)) {
        // What has come to show reports, and what has ceased to.
        if (liesWithinItsEnds()) {
            updateVisiblePart();
        } else if (moment == Moment::AfterInsert) {
            updateVisiblePartAfterInsert(info);
        } else {
            updateVisiblePartAfterGeometryChanges(info);
        }
    } else if (!liesWithinItsEnds()) {
        QxRect rect;
        ntBoundingRectWithPathNodes(rect);
        qx::internal::collect(*info, moment, *this, rect);
    }
}

void QxDEdge::actAfterInsert(QxGeometricUpdateInfo* info, int, int labels) {
    report(Moment::AfterInsert, info, labels);
}

void QxDEdge::actBeforeRemove(QxGeometricUpdateInfo* info, int, int labels) {
    report(Moment::BeforeRemove, info, labels);
}

void QxDEdge::actBeforeGeometryChanges(QxGeometricUpdateInfo* info, int, int labels) {
    report(Moment::BeforeChange, info, labels);
}

void QxDEdge::actAfterGeometryChanges(QxGeometricUpdateInfo* info, int, int labels) {
    report(Moment::AfterChange, info, labels);
}
