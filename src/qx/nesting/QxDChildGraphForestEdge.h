// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxChildGraphForestEdge.h"

class QxDChildGraphForest;
class QxDChildGraphForestNode;
class QxDEdge;
class QxDGraph;
class QxDNode;
class QxExpandedNodeExtension;

/// One nesting relation between drawing graphs. While the node that owns the child graph is
/// expanded, it holds what that node remembers of its collapsed look.
class QX_API QxDChildGraphForestEdge : public QxChildGraphForestEdge {
public:
    explicit QxDChildGraphForestEdge(QxOwnedObject* owner) : QxChildGraphForestEdge(owner) {}
    ~QxDChildGraphForestEdge() override;

    /// The owner of the child graph when it is a node (an edge); else null.
    QxDNode* pNode() const;
    QxDEdge* pEdge() const;
    QxDGraph* pChildGraph() const;
    QxDChildGraphForestNode* pSourceNode() const;
    QxDChildGraphForestNode* pTargetNode() const;
    QxDChildGraphForest* pOwnerGraph() const;

    /// @name The expanded node extension; the relation owns it
    /// @{
    int hasExpandedNodeExtension() const { return m_extension != nullptr ? 1 : 0; }
    QxExpandedNodeExtension* pExpandedNodeExtension() const { return m_extension; }
    /// Makes a new one, through the factory, in place of the present one; null when there is none.
    QxExpandedNodeExtension* allocateExpandedNodeExtension();
    void discardExpandedNodeExtension();
    /// @}

protected:
    void vFollowState() override;
    void vFollowEnds() override;

private:
    QxExpandedNodeExtension* m_extension = nullptr;
};
