// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxEdge.h"

class QxChildGraphForest;

/// One nesting relation: from the forest node of the graph that lists a member to the forest node
/// of the graph nested in that member.
class QX_API QxChildGraphForestEdge : public QxEdge {
public:
    explicit QxChildGraphForestEdge(QxOwnedObject* owner) : QxEdge(owner) {}
    ~QxChildGraphForestEdge() override;

    /// The member forgets its child graph.
    void actOnDiscard() override;

    QxGraphMember* pGraphMember() const { return m_member; }
    QxGraph* pChildGraph() const;
    QxChildGraphForest* pForest() const;

private:
    friend class QxChildGraphForest;

    void forgetGraphMember();

    QxGraphMember* m_member = nullptr;
};
