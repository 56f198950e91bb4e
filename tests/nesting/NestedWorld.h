// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxFactory.h"
#include "support/GraphTesting.h"
#include "support/TestRandom.h"

namespace qxtest {

/// A drawing of graphs in nodes, edges within and between them, and random changes of all that.
/// Listeners may edit it from inside any change, except while `isBusy`.
class NestedWorld {
public:
    /// Graphs lie one in the other, as many as `levels` and more.
    NestedWorld(QxFactory& factory, std::uint32_t seed, int levels = 0)
        : random(seed), manager(factory.newDGraphManager()), m_levels(levels) {
        for (int i = 0; i < 6; ++i) {
            addGraph();
        }
        deepen();
        for (int i = 0; i < 30; ++i) {
            addEdge();
        }
    }

    std::vector<QxDGraph*> graphs() const { return objectsOf<QxDGraph>(*manager->pGraphList()); }
    /// Those in hide graphs included.
    std::vector<QxDNode*> nodes() const {
        std::vector<QxDNode*> all;
        for (const QxDGraph* graph : graphs()) {
            const auto some = objectsOf<QxDNode>(*graph->pNodeList());
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }
    /// In whatever state, those between graphs included.
    std::vector<QxDEdge*> edges() const {
        std::vector<QxDEdge*> all;
        std::vector<QxDGraph*> places = graphs();
        if (QxDGraph* between = manager->pQueryIntergraph()) {
            places.push_back(between);
        }
        for (const QxDGraph* graph : places) {
            QxEdgeDList list;
            graph->buildAllEdgeList(&list);
            const auto some = objectsOf<QxDEdge>(list);
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }

    /// One change, which may find nothing to do.
    void step() {
        if (nodes().size() < 10U) {
            addGraph();
        }
        if (nodes().size() < 6U * static_cast<unsigned>(m_levels)) {
            deepen();
        }
        while (edges().size() < 10U) {
            addEdge();
        }
        switch (random.below(16)) {
            case 0:
                addGraph();
                break;
            case 1:
            case 2:
                addEdge();
                break;
            case 3:
                changeEdge(random.pick(edges()));
                break;
            case 4:
                moveNode();
                break;
            case 5:
                discardSomething();
                break;
            case 6:
                random.pick(nodes())->pChildGraph(random.chance(50) ? random.pick(graphs())
                                                                    : nullptr);
                break;
            case 7:
                manager->pAnchorGraph(random.pick(graphs()));
                break;
            case 8:
            case 9:
                hideOrFold();
                break;
            default:
                openOrShut(*random.pick(nodes()));
        }
    }

    /// A node of this world comes to the graph, which may be one of another.
    void moveNodeTo(QxDGraph& to) {
        const auto node = hold(random.pick(nodes()));
        const auto graph = hold(&to);
        if (node->hidden() != 0 || graph->isHideGraph() != 0) {
            return;
        }
        if (node->pOwnerGraph()->removeNode(node.get()) != nullptr &&
            graph->insertNode(node.get()) == nullptr && node->ownerValid() == 0) {
            node->vRelease();
        }
    }

    Ref<QxDGraph> addFoldGraph() {
        ++isBusy;
        auto graph = hold(manager->addGraph(0));
        --isBusy;
        return graph;
    }

    TestRandom random;
    Ref<QxDGraphManager> manager;
    int isBusy = 0;  ///< what has just come is not in its place yet

private:
    void addGraph() { addGraphIn(nodes().empty() ? nullptr : random.pick(nodes())); }

    void deepen() {
        for (int i = 0; i < m_levels; ++i) {
            addGraphIn(manager->pLastGraph()->pFirstNode());
        }
    }

    void addGraphIn(QxDNode* around) {
        ++isBusy;
        QxDGraph* const graph = manager->addGraph(0);
        if (around != nullptr) {
            around->pChildGraph(graph);
        }
        for (int i = 0; i < 5; ++i) {
            QxDNode* node = graph->addNodeWithCoordinates(random.below(300), random.below(300),
                                                          20 + random.below(20), 20, 1, 0);
            node->addConnector(1000, 0, 0, 0, 1, 0);
        }
        --isBusy;
    }

    void addEdge() {
        ++isBusy;
        const auto all = nodes();
        QxDEdge* edge = manager->addEdge(random.pick(all), random.pick(all), 0);
        if (random.chance(30)) {
            attach(*edge);
        }
        --isBusy;
    }

    void changeEdge(QxDEdge* edge) {
        switch (edge->isMetaEdge() != 0 ? 5 : random.below(6)) {
            case 0:
                edge->disconnect();
                break;
            case 1:
                edge->deactivate();
                break;
            case 2:
                edge->reverse();
                break;
            case 3:
                edge->changeTargetNode(random.pick(nodes()));
                break;
            case 4:
                attach(*edge);
                break;
            default:
                edge->activate();
                edge->connect();
        }
    }

    static void attach(QxDEdge& edge) {
        const QxDNode* node = edge.pSourceNode();
        if (node != nullptr && node->hasConnectors() != 0) {
            edge.pSourceConnector(node->pQueryConnectorManager()->pFirstConnector());
        }
    }

    void moveNode() { moveNodeTo(*random.pick(graphs())); }

    void discardSomething() {
        if (random.chance(30) && manager->numberOfGraphs() > 4) {
            const auto graph = hold(random.pick(graphs()));
            const auto shown =
                hold(graph->isHideGraph() != 0 ? graph->pHideFromGraph() : graph.get());
            if (manager->removeGraph(shown.get()) == nullptr) {
                return;
            }
            if (random.chance(50)) {
                manager->insertGraph(shown.get());
                manager->discardGraph(random.chance(50) ? shown.get() : nullptr);
            } else {
                shown->vRelease();
            }
        } else if (random.chance(30)) {
            QxDNode* node = random.pick(nodes());
            node->pOwnerGraph()->discardNode(node);
        } else {
            manager->discardEdge(random.pick(edges()));
        }
    }

    void hideOrFold() {
        QxDGraph* const graph = random.pick(graphs());
        QxDNodeDList some;
        for (QxDNode* node : objectsOf<QxDNode>(*graph->pNodeList())) {
            if (random.chance(30)) {
                some.appendNode(node);
            }
        }
        QxDNode* const folder = random.pick(nodes());
        switch (random.below(4)) {
            case 0:
                graph->hide(&some, nullptr, nullptr, nullptr);
                break;
            case 1:
                graph->unhideAll();
                break;
            case 2:
                if (folder->pOwnerGraph() == graph && folder->pChildGraph() == nullptr) {
                    graph->fold(folder, addFoldGraph().get(), &some, nullptr, nullptr,
                                random.below(2));
                }
                break;
            default:
                folder->unfold(nullptr, nullptr, random.below(2));
        }
    }

    void openOrShut(QxDNode& node) {
        if (node.collapsed() != 0) {
            node.expand();
        } else {
            node.collapse();
        }
    }

    int m_levels;
};

}  // namespace qxtest
