// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/GraphTesting.h"

namespace qxtest {

/// What was called, in order: "G.actOnConnectEdge(e)". Objects appear by the names given to them.
class CallLog {
public:
    void name(const QxObject* object, const std::string& text) { m_names[object] = text; }
    std::string nameOf(const QxObject* object) const {
        const auto found = m_names.find(object);
        return object == nullptr ? "-" : found != m_names.end() ? found->second : "?";
    }
    void add(const QxObject* whom, const char* what, const QxObject* object = nullptr) {
        m_calls.push_back(nameOf(whom) + "." + what +
                          (object != nullptr ? "(" + nameOf(object) + ")" : ""));
    }
    /// The calls since the last time.
    std::vector<std::string> take() { return std::exchange(m_calls, {}); }

private:
    std::map<const QxObject*, std::string> m_names;
    std::vector<std::string> m_calls;
};

class RecordingEdge : public QxEdge {
public:
    RecordingEdge(QxOwnedObject* owner, CallLog& log) : QxEdge(owner), m_log(log) {}
    ~RecordingEdge() override { m_log.add(this, "destroyed"); }
    void actOnDiscard() override { m_log.add(this, "actOnDiscard"); }

private:
    CallLog& m_log;
};

class RecordingNode : public QxNode {
public:
    RecordingNode(QxOwnedObject* owner, CallLog& log) : QxNode(owner), m_log(log) {}
    ~RecordingNode() override { m_log.add(this, "destroyed"); }
    void actOnDiscard() override { m_log.add(this, "actOnDiscard"); }
    void actOnInitEndNode(QxEdge* e) override { m_log.add(this, "init", e); }
    void actOnChangeSourceNode(QxEdge* e, QxNode*, QxNode*) override {
        m_log.add(this, "changeSource", e);
    }
    void actOnChangeTargetNode(QxEdge* e, QxNode*, QxNode*) override {
        m_log.add(this, "changeTarget", e);
    }
    void actOnConnectEdge(QxEdge* e) override { m_log.add(this, "connect", e); }
    void actOnDisconnectEdge(QxEdge* e) override { m_log.add(this, "disconnect", e); }
    void actOnActivateEdge(QxEdge* e) override { m_log.add(this, "activate", e); }
    void actOnDeactivateEdge(QxEdge* e) override { m_log.add(this, "deactivate", e); }

private:
    CallLog& m_log;
};

class RecordingGraph : public QxGraph {
public:
    RecordingGraph(QxOwnedObject* owner, CallLog& log) : QxGraph(owner), m_log(log) {}
    void actOnDiscard() override { m_log.add(this, "actOnDiscard"); }
    void actOnConnectEdge(QxEdge* e) override { m_log.add(this, "connect", e); }
    void actOnDisconnectEdge(QxEdge* e) override {
        m_log.add(this, pEdgeList()->searchObject(e) ? "disconnect when listed" : "disconnect", e);
    }
    void actOnActivateEdge(QxEdge* e) override { m_log.add(this, "activate", e); }
    void actOnDeactivateEdge(QxEdge* e) override { m_log.add(this, "deactivate", e); }
    void actOnConnectIntergraphEdge(QxEdge* e) override {
        m_log.add(this, "connectBetween", e);
        QxGraph::actOnConnectIntergraphEdge(e);
    }
    void actOnDisconnectIntergraphEdge(QxEdge* e) override {
        m_log.add(this, "disconnectBetween", e);
        QxGraph::actOnDisconnectIntergraphEdge(e);
    }
    void actOnActivateIntergraphEdge(QxEdge* e) override {
        m_log.add(this, "activateBetween", e);
        QxGraph::actOnActivateIntergraphEdge(e);
    }
    void actOnDeactivateIntergraphEdge(QxEdge* e) override {
        m_log.add(this, "deactivateBetween", e);
        QxGraph::actOnDeactivateIntergraphEdge(e);
    }
    void actOnChangeSourceNodeAtIntergraphEdge(QxEdge* e, QxNode* from, QxNode* to) override {
        m_log.add(this, "changeSourceBetween", e);
        QxGraph::actOnChangeSourceNodeAtIntergraphEdge(e, from, to);
    }
    void actOnChangeTargetNodeAtIntergraphEdge(QxEdge* e, QxNode* from, QxNode* to) override {
        m_log.add(this, "changeTargetBetween", e);
        QxGraph::actOnChangeTargetNodeAtIntergraphEdge(e, from, to);
    }
    void actOnInitNodeAtIntergraphEdge(QxEdge* e, QxNode* node) override {
        m_log.add(this, "initNodeBetween", e);
        QxGraph::actOnInitNodeAtIntergraphEdge(e, node);
    }

protected:
    QxNode* vNewNode(int) override { return new RecordingNode(this, m_log); }
    QxEdge* vNewEdge(int) override { return new RecordingEdge(this, m_log); }
    QxNode* vInsertNode(QxNode* node) override {
        m_log.add(this, "vInsertNode", node);
        return QxGraph::vInsertNode(node);
    }
    QxNode* vRemoveNode(QxNode* node) override {
        m_log.add(this, "vRemoveNode", node);
        return QxGraph::vRemoveNode(node);
    }
    int vDiscardNode(QxNode* node) override {
        m_log.add(this, "vDiscardNode", node);
        return QxGraph::vDiscardNode(node);
    }
    QxEdge* vInsertEdge(QxEdge* edge, QxNode* source, QxNode* target) override {
        m_log.add(this, "vInsertEdge", edge);
        return QxGraph::vInsertEdge(edge, source, target);
    }
    QxEdge* vRemoveEdge(QxEdge* edge) override {
        m_log.add(this, "vRemoveEdge", edge);
        return QxGraph::vRemoveEdge(edge);
    }
    int vDiscardEdge(QxEdge* edge) override {
        m_log.add(this, "vDiscardEdge", edge);
        return QxGraph::vDiscardEdge(edge);
    }
    void actAfterInsertEdgeBeforeConnect(QxEdge* edge) override {
        m_log.add(this, edge->connected() != 0 ? "afterInsert when connected" : "afterInsert",
                  edge);
    }
    void actAfterRemoveEdge(QxEdge* edge) override {
        m_log.add(this, edge->ownerValid() != 0 ? "afterRemove when owned" : "afterRemove", edge);
    }

private:
    CallLog& m_log;
};

class RecordingFactory : public GraphFactory {
public:
    CallLog log;

protected:
    QxGraph* vNewGraph(QxOwnedObject* owner, int) override {
        return new RecordingGraph(owner, log);
    }
    QxGraph* vNewIntergraph(QxOwnedObject* owner, int) override {
        return new RecordingGraph(owner, log);
    }
};

}  // namespace qxtest
