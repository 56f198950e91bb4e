// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <unordered_map>

#include "qx/foundation/graph/QxGraphAlgInfo.h"
#include "qx/foundation/util/QxGLTAlgorithm.h"

class QxGraph;
class QxNode;

/// An algorithm on one graph that keeps notes about nodes while it runs.
class QX_API QxGraphAlgorithm : public QxGLTAlgorithm {
public:
    /// The graph is not owned and must outlive the run.
    explicit QxGraphAlgorithm(QxGraph* graph);
    QxGraphAlgorithm(const QxGraphAlgorithm&) = delete;
    QxGraphAlgorithm& operator=(const QxGraphAlgorithm&) = delete;
    ~QxGraphAlgorithm() override;

    QxGraph* pGraph() const { return m_graph; }

protected:
    /// Runs the algorithm on another graph from now on; returns it.
    QxGraph* pGraph(QxGraph* graph) { return m_graph = graph; }
    void initialize() override;
    /// Destroys the notes about all nodes.
    void finalize() override;
    /// Creates the notes about one node; the algorithm owns them.
    virtual QxGraphAlgInfo* newGraphAlgNodeInfo();

    /// The notes about the node, made when it is first asked for: a run pays for the nodes that it
    /// visits, whatever the size of the graph, and bends and nodes of further graphs have notes
    /// like any other. They live until the run ends. Null for null. O(1).
    QxGraphAlgInfo* pGraphAlgNodeInfo(const QxNode* node);

private:
    QxGraph* m_graph;
    // Only ever searched, never walked: its order depends on addresses.
    std::unordered_map<const QxNode*, std::unique_ptr<QxGraphAlgInfo>> m_nodeInfos;
};
