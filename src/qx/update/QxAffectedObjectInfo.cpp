// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What a move affects, and its phases.
//
// What is affected is found at what moves: the edges at the moved connectors and nodes, and the
// edges between graphs at the graphs that move along inside a node; the graphs around what moves,
// on the way from each to the outermost. Nothing else of the drawing is looked at.

#include "qx/update/QxAffectedObjectInfo.h"

#include <algorithm>

#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/events/QxDEventManager.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Suspension.h"
#include "qx/update/internal/AffectedState.h"
#include "qx/update/internal/EdgeEnds.h"

using qx::internal::AffectedState;
using qx::internal::each;
using qx::internal::Reactions;
using qx::internal::Ref;

QxAffectedObjectInfo::QxAffectedObjectInfo() : m_state(std::make_unique<AffectedState>()) {}

QxAffectedObjectInfo::~QxAffectedObjectInfo() {
    finish();
}

QxDGraphManager* QxAffectedObjectInfo::pGraphManager() const {
    return m_state->manager.get();
}

// --- What moves -------------------------------------------------------------------------------

void QxAffectedObjectInfo::init(QxDGraphManager* manager, const QxDNodeDList* nodes,
                                const QxDEdgeDList* edges, const QxConnectorDList* connectors,
                                const QxEdgeLabelDList* edgeLabels,
                                const QxNodeLabelDList* nodeLabels,
                                const QxConnectorLabelDList* connectorLabels,
                                const QxGraphLabelDList* graphLabels, int onlySelected) {
    finish();
    forgetInputs();
    m_inputs = {nodes, edges, connectors, edgeLabels, nodeLabels, connectorLabels, graphLabels};
    m_onlySelected = onlySelected;
    m_changesEdge = 0;
    start(manager);
}

void QxAffectedObjectInfo::init(QxDNode* node) {
    begin(node != nullptr ? node->pOwnerGraph() : nullptr, node, 0);
    m_inputNode = node;
    computeAffectedObjectLists();
}

void QxAffectedObjectInfo::init(QxConnector* connector) {
    begin(connector != nullptr ? connector->pGraph() : nullptr, connector, 0);
    m_inputConnector = connector;
    computeAffectedObjectLists();
}

void QxAffectedObjectInfo::init(QxPNode* bend) {
    const QxDEdge* edge = bend != nullptr ? bend->pOwnerEdge() : nullptr;
    begin(edge != nullptr ? edge->pOwnerGraph() : nullptr, bend, 1);
    m_inputBend = bend;
    computeAffectedObjectLists();
}

void QxAffectedObjectInfo::init(QxPEdge* segment) {
    const QxDEdge* edge = segment != nullptr ? segment->pOwnerEdge() : nullptr;
    begin(edge != nullptr ? edge->pOwnerGraph() : nullptr, segment, 1);
    m_inputSegment = segment;
    computeAffectedObjectLists();
}

void QxAffectedObjectInfo::init(QxLabel* label) {
    begin(label != nullptr ? label->pGraph() : nullptr, label, 0);
    m_inputLabel = label;
    m_onlySelected = 1;
    computeAffectedObjectLists();
}

void QxAffectedObjectInfo::init(QxDGraph* graph) {
    begin(graph, graph, 0);
    m_inputGraph = graph;
    m_onlySelected = 1;
    computeAffectedObjectLists();
}

void QxAffectedObjectInfo::begin(QxDGraph* graph, QxGraphObject* input, int changesEdge) {
    finish();
    forgetInputs();
    m_input = input;
    m_changesEdge = changesEdge;
    QxDGraphManager* manager = graph != nullptr ? graph->pOwnerGraphManager() : nullptr;
    m_state->manager = Ref<QxDGraphManager>(manager);
    if (manager != nullptr) {
        m_state->foundControl = manager->controlStarted();
        manager->controlStarted(1);
    }
}

void QxAffectedObjectInfo::start(QxDGraphManager* manager) {
    m_state->manager = Ref<QxDGraphManager>(manager);
    if (manager != nullptr) {
        m_state->foundControl = manager->controlStarted();
        manager->controlStarted(1);
    }
    computeAffectedObjectLists();
}

void QxAffectedObjectInfo::forgetInputs() {
    m_input = nullptr;
    m_inputNode = nullptr;
    m_inputConnector = nullptr;
    m_inputBend = nullptr;
    m_inputSegment = nullptr;
    m_inputLabel = nullptr;
    m_inputGraph = nullptr;
    m_inputs = Inputs();
    m_initialRect = QxRect();
    m_currentRect = QxRect();
    m_hasInitialRect = false;
    m_hasCurrentRect = false;
}

void QxAffectedObjectInfo::finish() {
    if (!m_state->records.empty() || m_state->reactions || m_state->fitsWait) {
        updateAffectedGraphs(0);
        notifySpecChanges();
        deallocateGeometricUpdateInfos();
    }
    clearLists();
    if (m_state->manager) {
        m_state->manager->controlStarted(m_state->foundControl);
    }
    m_state->manager = Ref<QxDGraphManager>();
}

// --- What is affected -------------------------------------------------------------------------

void QxAffectedObjectInfo::hold(QxObject& object) {
    m_state->held.emplace_back(object);
}

template <class Act>
void QxAffectedObjectInfo::eachMovedLabel(const Act& act) {
    for (const QxDList* list : {static_cast<const QxDList*>(&m_movedEdgeLabels),
                                static_cast<const QxDList*>(&m_movedNodeLabels),
                                static_cast<const QxDList*>(&m_movedConnectorLabels)}) {
        for (QxLabel* label : each<QxLabel>(*list)) {
            act(*label);
        }
    }
}

void QxAffectedObjectInfo::clearStatuses() {
    for (QxDNode* node : each<QxDNode>(m_movedNodes)) {
        node->graphObjectStatus(QxStatusUnchanged);
    }
    for (QxConnector* connector : each<QxConnector>(m_movedConnectors)) {
        connector->graphObjectStatus(QxStatusUnchanged);
    }
    for (const QxDEdgeDList* list : {&m_movedEdges, &m_reroutedEdges}) {
        for (QxDEdge* edge : each<QxDEdge>(*list)) {
            edge->graphObjectStatus(QxStatusUnchanged);
        }
    }
    const auto clear = [](QxLabel& label) { label.graphObjectStatus(QxStatusUnchanged); };
    eachMovedLabel(clear);
    for (QxLabel* label : each<QxLabel>(m_movedGraphLabels)) {
        clear(*label);
    }
}

void QxAffectedObjectInfo::clearLists() {
    clearStatuses();
    for (QxDList* list :
         {static_cast<QxDList*>(&m_movedNodes), static_cast<QxDList*>(&m_movedConnectors),
          static_cast<QxDList*>(&m_movedEdges), static_cast<QxDList*>(&m_movedEdgeLabels),
          static_cast<QxDList*>(&m_movedNodeLabels), static_cast<QxDList*>(&m_movedConnectorLabels),
          static_cast<QxDList*>(&m_movedGraphLabels), static_cast<QxDList*>(&m_affectedGraphs),
          static_cast<QxDList*>(&m_reroutedEdges), static_cast<QxDList*>(&m_resizedNodes)}) {
        list->deleteAllCells();
    }
    m_processed.clear(0);
    m_state->held.clear();
}

void QxAffectedObjectInfo::computeAffectedObjectLists() {
    clearLists();
    if (!m_state->manager) {
        return;
    }
    markInputGraphs();
    collectMoved();
    collectEdges();
    collectLabels<QxEdgeLabelDList, QxEdgeLabel>(m_inputs.edgeLabels, m_movedEdgeLabels);
    collectLabels<QxNodeLabelDList, QxNodeLabel>(m_inputs.nodeLabels, m_movedNodeLabels);
    collectLabels<QxConnectorLabelDList, QxConnectorLabel>(m_inputs.connectorLabels,
                                                           m_movedConnectorLabels);
    collectLabels<QxGraphLabelDList, QxGraphLabel>(m_inputs.graphLabels, m_movedGraphLabels);
    computeAffectedGraphs();
}

namespace {

/// Calls `act` with the single object, if there is one, and with those of the list.
template <class T, class Act>
void eachInput(T* single, const QxDList* list, const Act& act) {
    if (single != nullptr) {
        act(*single);
    }
    if (list != nullptr) {
        for (T* object : each<T>(*list)) {
            act(*object);
        }
    }
}

QxDEdge* ownerOf(const QxPNode* bend, const QxPEdge* segment) {
    return bend != nullptr ? bend->pOwnerEdge()
                           : (segment != nullptr ? segment->pOwnerEdge() : nullptr);
}

}  // namespace

void QxAffectedObjectInfo::markGraph(QxDGraph* graph) {
    if (graph != nullptr && graph->isIntergraph() == 0 && graph->isVisible() != 0 &&
        graph->pOwnerGraphManager() == m_state->manager.get() &&
        graph->graphObjectStatus() == QxStatusUnchanged) {
        graph->graphObjectStatus(QxStatusGraphContentsMoved);
        m_state->marked.push_back(graph);
    }
}

void QxAffectedObjectInfo::markSuccessors(QxDGraph& nested) {
    QxDGraphDList inside;
    inside.appendGraph(&nested);
    nested.buildAllNestedGraphList(inside);
    for (QxDGraph* graph : each<QxDGraph>(inside)) {
        if (graph->graphObjectStatus() == QxStatusUnchanged) {
            m_state->marked.push_back(graph);
        }
        graph->graphObjectStatus(QxStatusMoved);
    }
}

void QxAffectedObjectInfo::markInputGraphs() {
    eachInput(m_inputNode, m_inputs.nodes,
              [this](const QxDNode& node) { markGraph(node.pOwnerGraph()); });
    eachInput(m_inputConnector, m_inputs.connectors,
              [this](const QxConnector& connector) { markGraph(connector.pGraph()); });
    eachInput(ownerOf(m_inputBend, m_inputSegment), m_inputs.edges,
              [this](const QxDEdge& edge) { markGraph(edge.pOwnerGraph()); });
    for (const QxDList* labels : {static_cast<const QxDList*>(m_inputs.edgeLabels),
                                  static_cast<const QxDList*>(m_inputs.nodeLabels),
                                  static_cast<const QxDList*>(m_inputs.connectorLabels),
                                  static_cast<const QxDList*>(m_inputs.graphLabels)}) {
        eachInput<QxLabel>(nullptr, labels,
                           [this](const QxLabel& label) { markGraph(label.pGraph()); });
    }
    markGraph(m_inputLabel != nullptr ? m_inputLabel->pGraph() : m_inputGraph);
    eachInput(m_inputNode, m_inputs.nodes, [this](const QxDNode& node) {
        QxDGraph* nested = node.isVisible() != 0 ? node.pNestedGraph() : nullptr;
        if (nested != nullptr) {
            markSuccessors(*nested);
        }
    });
}

void QxAffectedObjectInfo::collectMoved() {
    const auto isAffected = [](const QxDGraph* graph) {
        return graph != nullptr && graph->graphObjectStatus() == QxStatusGraphContentsMoved;
    };
    eachInput(m_inputNode, m_inputs.nodes, [&](QxDNode& node) {
        if (isAffected(node.pOwnerGraph()) && node.graphObjectStatus() == QxStatusUnchanged) {
            node.graphObjectStatus(QxStatusMoved);
            m_movedNodes.appendNode(&node);
            hold(node);
        }
    });
    eachInput(m_inputConnector, m_inputs.connectors, [&](QxConnector& connector) {
        const QxDNode* node = connector.pOwnerNode();
        if (node != nullptr && connector.graphObjectStatus() == QxStatusUnchanged &&
            (node->graphObjectStatus() == QxStatusMoved || isAffected(connector.pGraph()))) {
            connector.graphObjectStatus(QxStatusMoved);
            m_movedConnectors.appendConnector(&connector);
            hold(connector);
        }
    });
}

void QxAffectedObjectInfo::collectEdges() {
    if (m_onlySelected == 0) {
        for (const QxConnector* connector : each<QxConnector>(m_movedConnectors)) {
            QxDEdgeDList users;
            connector->buildIncidentEdgeList(&users, QxEdgeDirectionBoth,
                                             QxEdgeConnectionConnected);
            for (QxDEdge* edge : each<QxDEdge>(users)) {
                testAndAddAffectedEdge(*edge);
            }
        }
        for (const QxDNode* node : each<QxDNode>(m_movedNodes)) {
            for (const QxEdgeDList* list : {node->pInEdgeList(), node->pOutEdgeList()}) {
                for (QxDEdge* edge : each<QxDEdge>(*list)) {
                    testAndAddAffectedEdge(*edge);
                }
            }
        }
        collectNestedEdges();
    }
    const auto collect = [this](QxDEdge& edge, bool mayLeadBetween) {
        const QxDGraph* graph = edge.pOwnerGraph();
        const bool isAffected =
            edge.intergraphEdge() != 0
                ? mayLeadBetween
                : graph != nullptr && graph->graphObjectStatus() == QxStatusGraphContentsMoved;
        if (isAffected && edge.isVisible() != 0 && edge.graphObjectStatus() == QxStatusUnchanged) {
            collectInputEdge(edge);
        }
    };
    if (QxDEdge* edge = ownerOf(m_inputBend, m_inputSegment)) {
        collect(*edge, true);
    }
    eachInput<QxDEdge>(nullptr, m_inputs.edges, [&](QxDEdge& edge) { collect(edge, false); });
}

void QxAffectedObjectInfo::collectInputEdge(QxDEdge& edge) {
    edge.graphObjectStatus(QxStatusRerouted);
    m_reroutedEdges.appendEdge(&edge);
    m_processed.add(&edge);
    hold(edge);
}

/// Edges between graphs of which an end moves along inside a node, in the order of their list.
void QxAffectedObjectInfo::collectNestedEdges() {
    const QxDGraph* between = m_state->manager->pQueryIntergraph();
    if (between == nullptr || between->numberOfEdges() == 0) {
        return;
    }
    std::vector<QxDEdge*> found;
    for (const QxDGraph* graph : m_state->marked) {
        if (graph->graphObjectStatus() == QxStatusMoved) {
            for (const QxEdgeDList* list :
                 {static_cast<const QxEdgeDList*>(graph->pLeavingIntergraphEdgeList()),
                  static_cast<const QxEdgeDList*>(graph->pEnteringIntergraphEdgeList())}) {
                for (QxDEdge* edge : each<QxDEdge>(*list)) {
                    found.push_back(edge);
                }
            }
        }
    }
    std::sort(found.begin(), found.end(),
              [](const QxDEdge* a, const QxDEdge* b) { return a->listStamp() < b->listStamp(); });
    for (QxDEdge* edge : found) {
        testAndAddAffectedEdge(*edge);
    }
}

int QxAffectedObjectInfo::endMoves(const QxDEdge& edge, bool atSource) const {
    const QxDNode* node = qx::internal::nodeAt(edge, atSource);
    const QxConnector* connector = qx::internal::connectorAt(edge, atSource);
    const QxDGraph* graph = node != nullptr ? node->pOwnerGraph() : nullptr;
    const bool moves = node != nullptr && (node->graphObjectStatus() == QxStatusMoved ||
                                           (edge.intergraphEdge() != 0 && graph != nullptr &&
                                            graph->graphObjectStatus() == QxStatusMoved) ||
                                           (connector != nullptr && connector->specified() != 0 &&
                                            connector->graphObjectStatus() == QxStatusMoved));
    return moves ? 1 : 0;
}

void QxAffectedObjectInfo::testAndAddAffectedEdge(QxDEdge& edge) {
    if (m_processed.contains(&edge) != 0 || edge.isVisible() == 0) {
        return;
    }
    switch (endMoves(edge, true) + endMoves(edge, false)) {
        case 2:
            edge.graphObjectStatus(QxStatusMoved);
            m_movedEdges.appendEdge(&edge);
            m_processed.add(&edge);
            hold(edge);
            break;
        case 1:
            collectInputEdge(edge);
            break;
        default:
            break;
    }
}

template <class List, class Label>
void QxAffectedObjectInfo::collectLabels(const QxDList* inputs, List& moved) {
    auto* single = dynamic_cast<Label*>(m_inputLabel);
    QxHashSet listed;
    eachInput(single, inputs, [&](Label& label) {
        const QxDGraph* graph = label.pGraph();
        if (label.isVisible() != 0 && graph->pOwnerGraphManager() == m_state->manager.get() &&
            graph->graphObjectStatus() != QxStatusMoved && listed.add(&label) != 0) {
            label.graphObjectStatus(QxStatusMoved);
            moved.appendLabel(&label);
            hold(label);
        }
    });
}

void QxAffectedObjectInfo::computeAffectedGraphs() {
    auto& marked = m_state->marked;
    QxDGraph* const root = m_state->manager->pAnchorGraph();
    for (std::size_t i = marked.size(); i-- > 0;) {
        QxDGraph* graph = marked[i];
        if (graph->graphObjectStatus() != QxStatusGraphContentsMoved) {
            continue;
        }
        while (graph != root && graph->nested() != 0) {
            if (graph->graphObjectStatus() == QxStatusUnchanged) {
                marked.push_back(graph);
            }
            graph->graphObjectStatus(QxStatusGraphRefitted);
            graph = graph->pNestedWithinGraph();
            if (graph->graphObjectStatus() == QxStatusGraphRefitted) {
                break;
            }
        }
        if (graph == root && root->graphObjectStatus() == QxStatusUnchanged) {
            root->graphObjectStatus(QxStatusGraphRefitted);
            marked.push_back(root);
        }
    }
    const auto isAffected = [](const QxDGraph* graph) {
        return graph->graphObjectStatus() > QxStatusMoved;
    };
    if (QxDGraph* between = m_state->manager->pQueryIntergraph()) {
        m_affectedGraphs.appendGraph(between);
    }
    const auto affected =
        static_cast<std::size_t>(std::count_if(marked.begin(), marked.end(), isAffected));
    std::vector<QxDGraph*> toOpen;
    if (root != nullptr && isAffected(root)) {
        m_affectedGraphs.appendGraph(root);
        toOpen.push_back(root);
    }
    // From each graph to those in it on the way to what moves: their order is that of the nesting.
    std::size_t listed = toOpen.size();
    while (!toOpen.empty() && listed < affected) {
        const QxDGraph* graph = toOpen.back();
        toOpen.pop_back();
        std::vector<QxDGraph*> inner;
        for (QxDGraph* one : marked) {
            if (isAffected(one) && one != root && one->pNestedWithinGraph() == graph) {
                inner.push_back(one);
            }
        }
        if (inner.size() > 1) {
            QxDGraphDList all;
            graph->buildNestedGraphList(all);
            inner.clear();
            for (QxDGraph* one : each<QxDGraph>(all)) {
                if (isAffected(one)) {
                    inner.push_back(one);
                }
            }
        }
        for (QxDGraph* one : inner) {
            m_affectedGraphs.appendGraph(one);
            ++listed;
        }
        toOpen.insert(toOpen.end(), inner.rbegin(), inner.rend());
    }
    for (QxDGraph* graph : marked) {
        graph->graphObjectStatus(QxStatusUnchanged);
    }
    marked.clear();
    for (QxDGraph* graph : each<QxDGraph>(m_affectedGraphs)) {
        hold(*graph);
    }
}

// --- The phases -------------------------------------------------------------------------------

void QxAffectedObjectInfo::actBeforeGeometryChange() {
    if (!m_state->manager) {
        return;
    }
    allocateGeometricUpdateInfos();
    storeInitialPositions();
    actBeforeMove();
}

void QxAffectedObjectInfo::actAfterGeometryChange(int force) {
    actAfterMove();
    updateAffectedGraphs(force);
    notifySpecChanges();
    deallocateGeometricUpdateInfos();
    clearStatuses();
}

void QxAffectedObjectInfo::actAfterInsertRemove() {
    updateAffectedGraphs(0);
    notifySpecChanges();
}

void QxAffectedObjectInfo::notifySpecChanges() {
    deleteInitialPositions();
}

void QxAffectedObjectInfo::allocateGeometricUpdateInfos() {
    if (m_state->manager && !m_state->fitsWait) {
        m_state->fitsWait =
            std::make_unique<qx::internal::Refits::Wait>(Reactions::refitsOf(*m_state->manager));
    }
    for (QxDGraph* graph : each<QxDGraph>(m_affectedGraphs)) {
        if (graph->pGeometricUpdateInfo() == nullptr) {
            auto info = std::make_unique<QxGeometricUpdateInfo>(graph, graph->isIntergraph(), 1);
            info->needsRecursiveUpdate(0);  // the extents of the graph know what it covers
            graph->pGeometricUpdateInfo(info.get());
            m_state->records.push_back({Ref(*graph), std::move(info)});
        }
    }
}

void QxAffectedObjectInfo::deallocateGeometricUpdateInfos() {
    auto records = std::move(m_state->records);
    m_state->records.clear();
    for (auto record = records.rbegin(); record != records.rend(); ++record) {
        if (record->graph->pGeometricUpdateInfo() == record->info.get()) {
            record->graph->pGeometricUpdateInfo(nullptr);
        }
        record->info->isDragging(0);
        record->info.reset();
    }
    m_state->fitsWait.reset();
}

void QxAffectedObjectInfo::enableAndRestoreStateByGeometricUpdateInfos() {
    for (QxDGraph* graph : qx::internal::Snapshot<QxDGraph>(&m_affectedGraphs)) {
        if (QxGeometricUpdateInfo* info = graph->pGeometricUpdateInfo()) {
            info->enableAndRestoreState();
        }
    }
}

void QxAffectedObjectInfo::notifyDraggingToGeometricUpdateInfos(int dragging) {
    for (QxDGraph* graph : each<QxDGraph>(m_affectedGraphs)) {
        if (QxGeometricUpdateInfo* info = graph->pGeometricUpdateInfo()) {
            info->isDragging(dragging);
        }
    }
}

namespace {

/// The record that a client keeps at the graph, if it wants reports; null otherwise.
QxGeometricUpdateInfo* reportingRecord(const QxDGraph* graph) {
    QxGeometricUpdateInfo* info = graph != nullptr ? graph->pGeometricUpdateInfo() : nullptr;
    return info != nullptr && info->needsRecursiveUpdate() != 0 ? info : nullptr;
}

}  // namespace

void QxAffectedObjectInfo::actBeforeMove() {
    for (QxDNode* node : each<QxDNode>(m_movedNodes)) {
        if (QxGeometricUpdateInfo* info = reportingRecord(node->pOwnerGraph())) {
            node->actBeforeRemove(info, nullptr, 1, 0, 1, 1);
        }
    }
    for (const QxConnector* connector : each<QxConnector>(m_movedConnectors)) {
        if (QxGeometricUpdateInfo* info = reportingRecord(connector->pGraph())) {
            QxPEdgeDList segments;
            const_cast<QxConnector*>(connector)->actBeforeRemove(info, nullptr, segments, 1, 0);
        }
    }
    for (const QxDEdgeDList* list : {&m_movedEdges, &m_reroutedEdges}) {
        for (QxDEdge* edge : each<QxDEdge>(*list)) {
            edge->actBeforeRemove(reportingRecord(edge->pOwnerGraph()), 1, 1);
        }
    }
    eachMovedLabel(
        [](const QxLabel& label) { label.actBeforeRemove(reportingRecord(label.pGraph())); });
}

void QxAffectedObjectInfo::actAfterMove() {
    for (QxDNode* node : each<QxDNode>(m_movedNodes)) {
        if (QxGeometricUpdateInfo* info = reportingRecord(node->pOwnerGraph())) {
            node->actAfterInsert(info, nullptr, 1, 0, 1, 1);
        }
    }
    for (QxConnector* connector : each<QxConnector>(m_movedConnectors)) {
        if (QxGeometricUpdateInfo* info = reportingRecord(connector->pGraph())) {
            const QxPEdgeDList segments;
            connector->actAfterInsert(info, nullptr, &segments, 1, 0);
        }
    }
    for (QxDEdge* edge : each<QxDEdge>(m_movedEdges)) {
        edge->actAfterInsert(reportingRecord(edge->pOwnerGraph()), 1, 1);
    }
    eachMovedLabel(
        [](const QxLabel& label) { label.actAfterInsert(reportingRecord(label.pGraph())); });
}

void QxAffectedObjectInfo::actAfterRoute() {
    for (QxDEdge* edge : each<QxDEdge>(m_reroutedEdges)) {
        edge->actAfterInsert(reportingRecord(edge->pOwnerGraph()), 1, 1);
    }
}

void QxAffectedObjectInfo::updateAffectedGraphs(int force) {
    if (!m_state->manager || m_state->manager->pAnchorGraph() == nullptr) {
        return;
    }
    const Ref manager(*m_state->manager);
    const auto updating = qx::internal::suspend(
        [manager](auto... value) { return manager->isUpdatingAffectedGraphs(value...); }, 1);
    auto* factory = static_cast<QxFactory*>(manager->pFactory());
    QxDEventManager* events = factory != nullptr && (m_input == nullptr || m_changesEdge != 0)
                                  ? factory->pEventManager()
                                  : nullptr;
    const Ref<QxDEventManager> told(events);
    if (events != nullptr) {
        events->openBatch();
    }
    if (m_state->reactions) {
        m_state->reactions->askAgain();
        m_state->reactions->run();
    }
    noteFits();
    closeRecords();
    if (force != 0) {
        forceFits();
    }
    if (m_state->reactions) {
        m_state->reactions->run();
        for (const Ref<QxDEdge>& edge : m_state->reactions->edges()) {
            if (m_processed.add(edge.get()) != 0) {
                m_reroutedEdges.appendEdge(edge.get());
                hold(*edge);
            }
        }
    }
    tellAffectedRects();
    if (events != nullptr) {
        events->closeBatch();
    }
}

/// Inner graphs first: what a node around becomes counts for the graph around that.
void QxAffectedObjectInfo::closeRecords() {
    const qx::internal::Snapshot<QxDGraph> graphs(&m_affectedGraphs);
    for (std::size_t i = graphs.size(); i-- > 0;) {
        QxDGraph* const graph = graphs[i];
        if (QxGeometricUpdateInfo* info = graph->pGeometricUpdateInfo()) {
            info->isDragging(0);
            info->enableAndRestoreState();
        }
        if (m_state->fitsWait) {
            m_state->fitsWait->serve(*graph);
        }
        if (m_state->reactions) {
            m_state->reactions->run();
        }
    }
}
