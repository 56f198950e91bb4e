// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <random>
#include <utility>
#include <vector>

#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxFactory.h"
#include "qx/events/QxDEventManager.h"
#include "qx/events/QxDrawingChangeEventData.h"
#include "qx/events/QxDrawingChangeListener.h"

/// A drawing of one graph, to be laid out.
class LayoutTestGraph {
public:
    LayoutTestGraph() : m_manager(m_factory.newDGraphManager()), m_graph(m_manager->addGraph(0)) {}
    LayoutTestGraph(const LayoutTestGraph&) = delete;
    LayoutTestGraph& operator=(const LayoutTestGraph&) = delete;
    ~LayoutTestGraph() { m_manager->vRelease(); }

    QxDNode* addNode(std::int32_t x, std::int32_t y, std::int32_t width = 40,
                     std::int32_t height = 40) {
        m_nodes.push_back(m_graph->addNodeWithCoordinates(x, y, width, height, 1, 0));
        return m_nodes.back();
    }
    QxDEdge* addEdge(QxDNode* source, QxDNode* target) {
        return m_graph->addEdge(source, target, 0);
    }
    /// Nodes in a square, each with an edge to an earlier one.
    void addRandomTree(std::mt19937& random, std::size_t count, std::int32_t extent) {
        std::uniform_int_distribution<std::int32_t> coordinate(0, extent);
        for (std::size_t i = 0; i < count; ++i) {
            const std::int32_t x = coordinate(random);
            QxDNode* const node = addNode(x, coordinate(random));
            if (i > 0) {
                addEdge(m_nodes[random() % i], node);
            }
        }
    }

    void discardNode(QxDNode* node) {
        std::erase(m_nodes, node);
        m_graph->discardNode(node);
    }

    QxDGraphManager* manager() const { return m_manager; }
    QxDEventManager& events() { return *m_factory.pEventManager(); }
    QxDGraph* graph() const { return m_graph; }
    const std::vector<QxDNode*>& nodes() const { return m_nodes; }
    std::vector<QxPoint> centers() const {
        std::vector<QxPoint> result;
        for (const QxDNode* node : m_nodes) {
            result.push_back(node->iCenter());
        }
        return result;
    }

private:
    QxFactory m_factory;
    QxDGraphManager* m_manager;
    QxDGraph* m_graph;
    std::vector<QxDNode*> m_nodes;
};

/// Does something at the first move of a node.
class OnFirstMove : public QxDrawingChangeListener {
public:
    OnFirstMove(LayoutTestGraph& drawing, std::function<void(const QxGNode*)> action)
        : m_action(std::move(action)) {
        drawing.events().addDrawingChangeListener(drawing.manager(), this, NodeMoved);
    }
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override {
        if (const auto action = std::exchange(m_action, nullptr)) {
            action(data->pSourceNode());
        }
    }
    bool hasActed() const { return m_action == nullptr; }

private:
    std::function<void(const QxGNode*)> m_action;
};
