// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/util/QxDListCell.h"

class QxChildGraphForestEdge;

namespace qx::internal {
class GraphChange;
}

/// A node or an edge: what a graph owns and lists.
///
/// A member that has been made for a graph but not inserted, or that has been removed from it, is
/// detached: that graph is still its (invalid) owner and forgets nothing but may be destroyed
/// first; then the factory takes the owner's place.
class QX_API QxGraphMember : public QxExtendableGraphObject {
public:
    explicit QxGraphMember(QxOwnedObject* owner);
    ~QxGraphMember() override;

    /// Called once before a discarded member is released.
    virtual void actOnDiscard();

    /// The graph that lists this member; null while it is detached.
    QxGraph* pOwnerGraph() const { return ownerValid() != 0 ? pUnverifiedOwnerGraph() : nullptr; }
    /// The graph that made the member or listed it last, valid or not; null when that is gone.
    QxGraph* pUnverifiedOwnerGraph() const {
        QxOwnedObject* const owner = pOwner();
        return owner != nullptr && (owner->flagWord() & qx::flags::IsGraph) != 0
                   ? static_cast<QxGraph*>(owner)
                   : nullptr;
    }

    /// The graph nested in this member; null when there is none. The manager owns it.
    QxGraph* pChildGraph() const;
    /// Nests `graph` in this member, or ends the relation (null). Both must belong to graphs of one
    /// manager and the nesting must stay a forest; returns the child graph afterwards.
    QxGraph* pChildGraph(QxGraph* graph) { return vSetChildGraph(graph); }
    /// The relation of the nesting forest that holds the child graph, connected or not.
    QxChildGraphForestEdge* pChildGraphForestEdge() const;

    /// Grows along each list of the graph: of two nodes, or two edges in the same state, the one
    /// with the smaller stamp stands first.
    std::uint64_t listStamp() const { return m_listStamp; }

protected:
    virtual QxGraph* vSetChildGraph(QxGraph* graph);

    /// Tells the member, and what hangs on it, who its owner is and whether that owner lists it.
    virtual void actOnChangeOwner(QxOwnedObject* owner, int valid);

    /// Ends the relation to the child graph; for destructors, while the kind of member is known.
    void endNesting();

    /// The cell by which the member sits in its owner's lists.
    QxDListCell* pOwnerCell() { return &m_ownerCell; }
    const QxDListCell* pOwnerCell() const { return &m_ownerCell; }

private:
    friend class QxEdge;
    friend class qx::internal::GraphChange;
    friend class QxGraph;
    friend class QxGraphManager;
    friend class QxChildGraphForest;
    friend class QxChildGraphForestEdge;

    QxDListCell m_ownerCell;
    std::uint64_t m_listStamp = 0;
};
