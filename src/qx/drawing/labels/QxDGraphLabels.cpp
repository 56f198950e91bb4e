// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The labels of a graph, and what it knows of those of its objects.

#include <ostream>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/QxDebugStream.h"

using qx::internal::Change;
using qx::internal::each;
using qx::internal::GraphExtras;
using qx::internal::Ref;
using qx::internal::Snapshot;

const Ref<QxLabelManager>* QxDGraph::pQueryLabelSlot() const {
    const GraphExtras* extras = pQueryGraphExtras();
    return extras != nullptr ? &extras->labels : nullptr;
}

Ref<QxLabelManager>& QxDGraph::labelSlot() {
    return graphExtras().labels;
}

QxGraphLabel* QxDGraph::vNewLabel(int flag) {
    auto* factory = static_cast<QxFactory*>(pUnverifiedFactory());
    return factory != nullptr ? factory->qxNewGraphLabel(this, flag) : nullptr;
}

QxGraphLabel* QxDGraph::vAddLabel(const wchar_t* name, int flag) {
    return addPlacedLabel(name, flag);
}

QxGraphLabel* QxDGraph::vInsertLabel(QxGraphLabel* label) {
    return linkLabel(label);
}

QxGraphLabel* QxDGraph::vRemoveLabel(QxGraphLabel* label) {
    return unlinkLabel(label);
}

int QxDGraph::vDiscardLabel(QxGraphLabel* label) {
    return destroyLabel(label);
}

void QxDGraph::debugOutputLabels(int depth) const {
    debugOutputOwnLabels(depth);
}

int QxDGraph::userFieldsInUse() const {
    return QxGraph::userFieldsInUse() | labelUserFieldsInUse(false);
}

void QxDGraph::nullUserFields() {
    QxGraph::nullUserFields();
    nullLabelUserFields(false);
}

int QxDGraph::internalUserFieldsInUse() const {
    return QxGraph::internalUserFieldsInUse() | labelUserFieldsInUse(true);
}

void QxDGraph::nullInternalUserFields() {
    QxGraph::nullInternalUserFields();
    nullLabelUserFields(true);
}

void QxDGraph::resetLabelStates() {
    const GraphExtras* extras = pQueryGraphExtras();
    const auto stateOf = [&](std::int32_t GraphExtras::*count) {
        return extras != nullptr && extras->*count > 0 ? QxTriStateYes : QxTriStateNo;
    };
    hasNodeLabelsState(stateOf(&GraphExtras::nodeLabels));
    hasEdgeLabelsState(stateOf(&GraphExtras::edgeLabels));
    hasConnectorLabelsState(stateOf(&GraphExtras::connectorLabels));
}

int QxDGraph::answerLabels(std::uint32_t lowBit, std::int32_t count) const {
    if (labelState(lowBit) == QxTriStateUnknown) {
        countLabels(lowBit, count);
    }
    return labelState(lowBit) == QxTriStateYes ? 1 : 0;
}

std::int32_t QxDGraph::countLabels(std::uint32_t lowBit, std::int32_t count) const {
    if (labelState(lowBit) == QxTriStateNo) {
        return 0;
    }
    // What is noted is only what the graph holds anyway.
    const_cast<QxDGraph*>(this)->labelState(lowBit, count > 0 ? QxTriStateYes : QxTriStateNo);
    return count;
}

int QxDGraph::hasNodeLabels() const {
    const GraphExtras* extras = pQueryGraphExtras();
    return answerLabels(qx::flags::GraphNodeLabels, extras != nullptr ? extras->nodeLabels : 0);
}

int QxDGraph::hasEdgeLabels() const {
    const GraphExtras* extras = pQueryGraphExtras();
    return answerLabels(qx::flags::GraphEdgeLabels, extras != nullptr ? extras->edgeLabels : 0);
}

int QxDGraph::hasConnectorLabels() const {
    const GraphExtras* extras = pQueryGraphExtras();
    return answerLabels(qx::flags::GraphConnectorLabels,
                        extras != nullptr ? extras->connectorLabels : 0);
}

int QxDGraph::hasGraphLabels() const {
    return numberOfGraphLabels() > 0 ? 1 : 0;
}

std::int32_t QxDGraph::numberOfGraphLabels() const {
    return QxLabelOwnerOf::numberOfLabels();
}

std::int32_t QxDGraph::numberOfNodeLabels() const {
    const GraphExtras* extras = pQueryGraphExtras();
    return countLabels(qx::flags::GraphNodeLabels, extras != nullptr ? extras->nodeLabels : 0);
}

std::int32_t QxDGraph::numberOfEdgeLabels() const {
    const GraphExtras* extras = pQueryGraphExtras();
    return countLabels(qx::flags::GraphEdgeLabels, extras != nullptr ? extras->edgeLabels : 0);
}

std::int32_t QxDGraph::numberOfConnectorLabels() const {
    const GraphExtras* extras = pQueryGraphExtras();
    return countLabels(qx::flags::GraphConnectorLabels,
                       extras != nullptr ? extras->connectorLabels : 0);
}

std::int32_t QxDGraph::numberOfLabels() const {
    return numberOfGraphLabels() + numberOfNodeLabels() + numberOfConnectorLabels() +
           numberOfEdgeLabels();
}

void QxDGraph::discardAllGraphLabels() {
    QxLabelOwnerOf::discardAllLabels();
}

void QxDGraph::discardAllNodeLabels() {
    const Ref alive(*this);
    Change::inGraph(*this, [&] {
        for (QxDNode* node : Snapshot<QxDNode>(pNodeList())) {
            if (node->pOwnerGraph() == this) {
                node->discardAllLabels();
            }
        }
        hasNodeLabelsState(numberOfNodeLabels() > 0 ? QxTriStateYes : QxTriStateNo);
    });
}

void QxDGraph::discardAllEdgeLabels() {
    const Ref alive(*this);
    Change::inGraph(*this, [&] {
        for (QxDEdge* edge : Snapshot<QxDEdge>(pEdgeList())) {
            if (edge->pOwnerGraph() == this) {
                edge->discardAllLabels();
            }
        }
    });
}

void QxDGraph::discardAllLabels() {
    const Ref alive(*this);
    Change::inGraph(*this, [&] {
        discardAllGraphLabels();
        discardAllNodeLabels();
        discardAllConnectorLabels();
        discardAllEdgeLabels();
    });
}

void QxDGraph::discardAllConnectorLabels() {
    const Ref alive(*this);
    Change::inGraph(*this, [&] {
        for (QxDNode* node : Snapshot<QxDNode>(pNodeList())) {
            if (node->pOwnerGraph() == this) {
                node->discardAllConnectorLabels();
            }
        }
        hasConnectorLabelsState(numberOfConnectorLabels() > 0 ? QxTriStateYes : QxTriStateNo);
    });
}

int QxDGraph::calculateGraphLabelBounds(QxRect& rect) const {
    const QxGraphLabelDList* labels = pLabelList();
    if (labels == nullptr) {
        return 0;
    }
    labels->pFirstLabel()->ntBoundingRect(rect);
    for (const QxGraphLabel* label : each<QxGraphLabel>(*labels)) {
        QxRect one;
        label->ntBoundingRect(one);
        rect |= one;
    }
    return 1;
}

int QxDGraph::takeOverGraphLabels(QxDGraph& other) {
    int moved = 1;
    for (QxGraphLabel* label : Snapshot<QxGraphLabel>(other.pLabelList())) {
        if (other.removeLabel(label) == nullptr || insertLabel(label) == nullptr) {
            moved = 0;
        }
    }
    return moved;
}

int QxDGraph::checkLabelCounts() const {
    std::int32_t nodes = 0;
    std::int32_t edges = 0;
    std::int32_t connectors = 0;
    for (const QxDNode* node : each<QxDNode>(*pNodeList())) {
        nodes += node->numberOfLabels();
        for (QxConnectorIter it(node); it; ++it) {
            connectors += it.pConnector()->numberOfLabels();
        }
    }
    for (const QxDEdge* edge : each<QxDEdge>(*pEdgeList())) {
        edges += edge->numberOfLabels();
    }
    const GraphExtras* extras = pQueryGraphExtras();
    if ((extras != nullptr ? extras->nodeLabels : 0) != nodes ||
        (extras != nullptr ? extras->edgeLabels : 0) != edges ||
        (extras != nullptr ? extras->connectorLabels : 0) != connectors) {
        qxDebugStream() << "graph: it does not count the labels that its objects have\n";
        return 0;
    }
    return 1;
}
