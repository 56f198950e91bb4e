// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/layout/QxSpringEmbedderAlgorithm.h"

#include "qx/drawing/QxGNode.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/layout/QxSpringEmbedderInfo.h"

QxSpringEmbedderAlgorithm::QxSpringEmbedderAlgorithm(QxDGraph* graph,
                                                     QxGNodeDList* constrainedNodes,
                                                     QxGNodeDList* unconstrainedNodes,
                                                     std::int32_t desiredEdgeLength)
    : QxDGraphAlgorithm(graph),
      m_constrainedNodes(constrainedNodes),
      m_unconstrainedNodes(unconstrainedNodes),
      m_desiredEdgeLength(desiredEdgeLength) {}

void QxSpringEmbedderAlgorithm::algorithmBody() {
    const qx::internal::Snapshot<QxGNode> constrained(m_constrainedNodes);
    const qx::internal::Snapshot<QxGNode> unconstrained(m_unconstrainedNodes);
    while (terminationCondition() == 0) {
        optimize();
    }
    // Nodes have been moved by raw moves, which leave the bounds alone.
    if (QxDGraph* graph = pGraph()) {
        graph->refreshGraphBounds();
    }
}

QxGraphAlgInfo* QxSpringEmbedderAlgorithm::newGraphAlgNodeInfo() {
    return new QxSpringEmbedderInfo;
}

int QxSpringEmbedderAlgorithm::terminationCondition() {
    return 1;
}

void QxSpringEmbedderAlgorithm::optimize() {}

QxSpringEmbedderInfo* QxSpringEmbedderAlgorithm::pSpringEmbedderInfo(const QxGNode* node) {
    return static_cast<QxSpringEmbedderInfo*>(pGraphAlgNodeInfo(node));
}
