// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "qx/layout/QxDGraphAlgorithm.h"

class QxGNode;
class QxGNodeDList;
class QxSpringEmbedderInfo;

/// The frame of force-directed placements: which nodes move, which only exert forces, and the
/// rounds of the run. By itself it makes no round; subclasses say what one does and when to stop.
///
/// The lists are not owned and may be null, which is like empty. They must stay as they are while
/// the algorithm runs. Their nodes need not: a listener may take them out of their graph or discard
/// them. They live until the run ends, but neither move nor exert forces any more.
class QX_API QxSpringEmbedderAlgorithm : public QxDGraphAlgorithm {
public:
    /// `constrainedNodes` stay and `unconstrainedNodes` move; `desiredEdgeLength` is in world
    /// units.
    QxSpringEmbedderAlgorithm(QxDGraph* graph, QxGNodeDList* constrainedNodes,
                              QxGNodeDList* unconstrainedNodes, std::int32_t desiredEdgeLength);

    /// The length, in world units, that edges should come near to.
    std::int32_t desiredEdgeLength() const { return m_desiredEdgeLength; }
    std::int32_t desiredEdgeLength(std::int32_t value) { return m_desiredEdgeLength = value; }
    /// Nodes that exert forces but never move.
    QxGNodeDList* pConstrainedNodeList() const { return m_constrainedNodes; }
    QxGNodeDList* pConstrainedNodeList(QxGNodeDList* list) { return m_constrainedNodes = list; }
    /// Nodes that move.
    QxGNodeDList* pUnconstrainedNodeList() const { return m_unconstrainedNodes; }
    QxGNodeDList* pUnconstrainedNodeList(QxGNodeDList* list) { return m_unconstrainedNodes = list; }

    /// How many threads may work out the forces between nodes. 0, the default: one per processor
    /// core, where the number of nodes makes that worth it; negative values are stored as 0. The
    /// result does not depend on it, and nodes are moved on the calling thread only.
    int numberOfThreads() const { return m_numberOfThreads; }
    int numberOfThreads(int value) { return m_numberOfThreads = value > 0 ? value : 0; }

protected:
    /// Makes rounds until the condition holds.
    void algorithmBody() override;
    QxGraphAlgInfo* newGraphAlgNodeInfo() override;
    /// Nonzero when no more rounds are to be made; here always.
    virtual int terminationCondition();
    /// Makes one round.
    virtual void optimize();

    /// The notes about the node; null for null.
    QxSpringEmbedderInfo* pSpringEmbedderInfo(const QxGNode* node);

private:
    QxGNodeDList* m_constrainedNodes;
    QxGNodeDList* m_unconstrainedNodes;
    std::int32_t m_desiredEdgeLength;
    int m_numberOfThreads = 0;
};
