// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxGraphAlgorithm.h"

QxGraphAlgorithm::QxGraphAlgorithm(QxGraph* graph) : m_graph(graph) {}

QxGraphAlgorithm::~QxGraphAlgorithm() = default;

/// Notes asked for before the run, or left by an outer one, say nothing about this run.
void QxGraphAlgorithm::initialize() {
    QxGLTAlgorithm::initialize();
    m_nodeInfos.clear();
}

void QxGraphAlgorithm::finalize() {
    m_nodeInfos.clear();
    QxGLTAlgorithm::finalize();
}

QxGraphAlgInfo* QxGraphAlgorithm::newGraphAlgNodeInfo() {
    return new QxGraphAlgInfo;
}

QxGraphAlgInfo* QxGraphAlgorithm::pGraphAlgNodeInfo(const QxNode* node) {
    if (node == nullptr) {
        return nullptr;
    }
    std::unique_ptr<QxGraphAlgInfo>& info = m_nodeInfos[node];
    if (info == nullptr) {
        info.reset(newGraphAlgNodeInfo());
    }
    return info.get();
}
