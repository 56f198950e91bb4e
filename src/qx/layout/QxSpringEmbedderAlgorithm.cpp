// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/layout/QxSpringEmbedderAlgorithm.h"

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxGNode.h"
#include "qx/layout/QxSpringEmbedderInfo.h"

QxSpringEmbedderAlgorithm::QxSpringEmbedderAlgorithm(QxDGraph* graph,
                                                     QxGNodeDList* constrainedNodes,
                                                     QxGNodeDList* unconstrainedNodes,
                                                     std::int32_t desiredEdgeLength)
    : QxGraphAlgorithm(graph),
      m_constrainedNodes(constrainedNodes),
      m_unconstrainedNodes(unconstrainedNodes),
      m_desiredEdgeLength(desiredEdgeLength) {}

void QxSpringEmbedderAlgorithm::algorithmBody() {
    while (terminationCondition() == 0) {
        optimize();
    }
    // Nodes have been moved by raw moves, which leave the bounds alone.
    if (QxDGraph* graph = pGraph()) {
        graph->refreshGraphBounds();
    }
}

QxDGraph* QxSpringEmbedderAlgorithm::pGraph() const {
    return static_cast<QxDGraph*>(QxGraphAlgorithm::pGraph());
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
