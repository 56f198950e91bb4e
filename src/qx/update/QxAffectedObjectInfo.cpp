// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// A move of a selection: what it is given, and its phases.

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
    computeAffectedObjectLists();
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
    start(graph != nullptr ? graph->pOwnerGraphManager() : nullptr);
}

void QxAffectedObjectInfo::start(QxDGraphManager* manager) {
    m_state->manager = Ref<QxDGraphManager>(manager);
    if (manager != nullptr) {
        m_state->foundControl = manager->controlStarted();
        manager->controlStarted(1);
    }
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
