// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxGraphDLists.h"
#include "qx/foundation/graph/QxGraphMember.h"

class QxEdge;
class QxFindChilPar;

namespace qx::internal {
struct IdleEdges;
}

/// An abstract node: the lists of its incident edges and the hooks through which edges tell it
/// what happens to them.
class QX_API QxNode : public QxGraphMember {
public:
    explicit QxNode(QxOwnedObject* owner);
    /// Leaves the owner graph and nulls the ends of every edge that still points here.
    ~QxNode() override;

    int isNode() const override;
    std::size_t sizeOf() const override;
    int checkInvariants() const override;
    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;
    void debugOutput(int depth) const override;

    /// Removes and destroys what the node contains; its edges stay.
    virtual void emptyTopology();
    /// Makes the contents of this node a duplicate of those of `source`, then clears the scratch
    /// fields of the source.
    virtual void duplicateTopology(QxNode* source);
    virtual void internalDuplicateTopology(QxNode* source);
    virtual void innerDebugOutput(int depth) const;
    virtual void debugOutputEdges(int depth) const;

    /// @name Hooks: called on a node when an end of `edge` comes to, leaves or stays at it
    /// @{
    /// The node has become an end of an edge that is being inserted.
    virtual void actOnInitEndNode(QxEdge* edge);
    /// The source (target) of the edge has changed from or to this node.
    virtual void actOnChangeSourceNode(QxEdge* edge, QxNode* oldNode, QxNode* newNode);
    virtual void actOnChangeTargetNode(QxEdge* edge, QxNode* oldNode, QxNode* newNode);
    virtual void actOnConnectEdge(QxEdge* edge);
    virtual void actOnDisconnectEdge(QxEdge* edge);
    virtual void actOnActivateEdge(QxEdge* edge);
    virtual void actOnDeactivateEdge(QxEdge* edge);
    /// @}

    /// Takes over the attributes of `source`; with `deep` nonzero its contents, too. Null or this
    /// node: no change.
    virtual void copyNode(const QxNode* source, int deep);

    /// Whether the node belongs to an edge between graphs: a bend of one.
    int intergraphNode() const;

    /// @name Incident edges
    /// A self-loop is in the in- and in the out-edge list, and twice, once for each end, in the
    /// lists of disconnected and of deactivated edges.
    /// @{
    const QxEdgeDList* pInEdgeList() const { return &m_inEdges; }
    const QxEdgeDList* pOutEdgeList() const { return &m_outEdges; }
    const QxEdgeDList* pDisconnectedEdgeList() const;
    const QxEdgeDList* pDeactivatedEdgeList() const;
    QxEdge* pFirstInEdge() const;
    QxEdge* pFirstOutEdge() const;
    /// The first disconnected edge that ends at this node; null when there is none.
    QxEdge* pDisconnectedInEdge() const;
    std::int32_t inDegree() const { return m_inEdges.count(); }
    std::int32_t outDegree() const { return m_outEdges.count(); }
    std::int32_t degree() const { return inDegree() + outDegree(); }
    std::int32_t disconnectedInDegree() const;
    std::int32_t disconnectedOutDegree() const;
    /// At a node with at most two ends of edges, connected or not: the edge other than `edge`;
    /// null when there is none or when the node has more.
    QxEdge* pDegreeTwoOrLessNodeOtherEdge(const QxEdge* edge) const;
    /// Connects every disconnected edge here that can be connected; returns how many were.
    std::int32_t connectDisconnectedEdges();
    /// Disconnects every connected edge here.
    void disconnectEdges();
    /// Moves all incoming (outgoing) edges of this node to `node`; an edge that cannot end there
    /// stays. Returns how many moved.
    std::int32_t transferInEdges(QxNode* node);
    std::int32_t transferOutEdges(QxNode* node);
    /// Moves one end of an edge, the source (target) when `atTarget` is 0 (1), to the back of that
    /// list of this node which holds it; listeners are not told. 1, or 0 when the end is not here.
    int moveEndToBack(QxEdge* edge, int atTarget);
    /// @}

protected:
    /// Nulls the ends of every edge that still points here; for destructors, while the class that
    /// reacts to it still exists.
    void detachEdges();
    /// Whether no edge in whatever state ends here, told at a glance; false says nothing.
    bool isPlainlyBare() const {
        return m_inEdges.isEmpty() != 0 && m_outEdges.isEmpty() != 0 && pQueryExtras() == nullptr;
    }

private:
    friend class QxEdge;
    friend class QxFindChilPar;
    friend class QxGraph;

    /// The edges that are not connected; null while there have never been any.
    qx::internal::IdleEdges* pIdleEdges() const;
    qx::internal::IdleEdges& idleEdges();
    std::int32_t countDisconnected(bool incoming) const;
    void orderEdgesLike(const QxNode* source);

    QxEdgeDList m_inEdges;
    QxEdgeDList m_outEdges;
};
