// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxNode.h"

/// Stands for one graph in the nesting forest.
class QX_API QxChildGraphForestNode : public QxNode {
public:
    explicit QxChildGraphForestNode(QxOwnedObject* owner) : QxNode(owner) {}

    QxGraph* pGraph() const { return m_graph; }

private:
    friend class QxChildGraphForest;

    QxGraph* m_graph = nullptr;
};
