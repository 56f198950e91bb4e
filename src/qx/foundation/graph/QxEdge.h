// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxGraphDLists.h"
#include "qx/foundation/graph/QxGraphMember.h"

class QxNode;

namespace qx::internal {
struct GraphCells;
}

/// An abstract edge from a source to a target node.
///
/// An edge is in one of three states. Connected: in the graph's edge list, the out-edge list of its
/// source and the in-edge list of its target. Disconnected: in the disconnected lists of the graph
/// and of its ends. Deactivated: in the deactivated lists; activation brings it back to what it
/// was. Leaving any of these lists costs constant time, since the edge holds its cells.
class QX_API QxEdge : public QxGraphMember {
public:
    explicit QxEdge(QxOwnedObject* owner);
    ~QxEdge() override;

    int isEdge() const override;
    std::size_t sizeOf() const override;
    int checkInvariants() const override;
    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;
    void debugOutput(int depth) const override;

    /// Takes a connected edge into the disconnected state. 0 when it is not connected.
    virtual int disconnect();
    /// Brings a deactivated edge back, or, where an end no longer allows a connection, makes it a
    /// disconnected one. Nonzero when the edge is active afterwards.
    virtual int activate();
    /// Takes a connected edge into the deactivated state. Nonzero when it is deactivated
    /// afterwards.
    virtual int deactivate();
    /// Lets the edge start (end) at another node without a change of its state. 0, and no change,
    /// when the edge cannot end there; an edge that no graph lists gets its ends on insertion.
    virtual int changeSourceNodeWithoutConnect(QxNode* node);
    virtual int changeTargetNodeWithoutConnect(QxNode* node);
    /// Exchanges source and target; 0 when an end is missing.
    virtual int reverse();
    /// The edge that a client drew: for a segment of a path the edge it belongs to, else itself.
    virtual QxEdge* pOriginalEdge();
    virtual const QxEdge* pOriginalEdge() const;
    virtual void emptyTopology();
    virtual void duplicateTopology(QxEdge* source);
    virtual void innerDebugOutput(int depth) const;

protected:
    /// The step behind connect.
    virtual int vConnect();

    /// @name Steps of a change, taken before anybody is told of it; they do nothing here
    /// What belongs to the edge follows its state, its ends, or its reversal.
    /// @{
    virtual void vFollowState();
    virtual void vFollowEnds();
    virtual void vFollowReversal();
    /// @}

public:
    /// Detaches the edge from both ends without a word to anybody; it is disconnected then.
    virtual void nullEndNodes();
    /// Whether the edge may have `node` as an end at all.
    virtual int canEnd(const QxNode* node) const;
    /// Whether the edge may be connected to `node` as both stand now.
    virtual int canConnect(const QxNode* node) const;
    /// Takes over the attributes of `source`; with `deep` nonzero what it contains, too. Null or
    /// this edge: no change.
    virtual void copyEdge(const QxEdge* source, int deep);

    /// Connects a disconnected edge to its ends. 0, and no change, when it is connected or
    /// deactivated already or an end does not allow it.
    int connect() { return vConnect(); }
    /// Sets both ends of an edge that is not connected, then connects it.
    int connect(QxNode* source, QxNode* target);
    /// Disconnects, changes the source (target), connects again. 0, and no change, when the edge
    /// cannot end or cannot be connected there.
    int changeSourceNode(QxNode* node) { return changeEndNodes(node, m_target); }
    int changeTargetNode(QxNode* node) { return changeEndNodes(m_source, node); }
    int changeEndNodes(QxNode* source, QxNode* target);

    QxNode* pSourceNode() const { return m_source; }
    QxNode* pTargetNode() const { return m_target; }
    /// The end that is not `node`; `node` itself for a self-loop; null when it is no end.
    QxNode* pOtherNode(const QxNode* node) const;
    int connected() const { return hasFlag(qx::flags::EdgeConnected); }
    int disconnected() const {
        return hasFlag(qx::flags::EdgeConnected | qx::flags::EdgeDeactivated) == 0 ? 1 : 0;
    }
    int deactivated() const { return hasFlag(qx::flags::EdgeDeactivated); }
    int reflexive() const { return m_source != nullptr && m_source == m_target ? 1 : 0; }
    /// Whether the edge runs between graphs: the intergraph lists it, or, while it is detached, its
    /// ends lie in different graphs.
    int intergraphEdge() const;
    /// The graph that holds both ends; for ends in different graphs the innermost graph in whose
    /// nesting both lie, null when there is none.
    QxGraph* pNearestCommonGraph() const;

protected:
    /// Sets both ends of an edge that is in no list of its ends, and tells the nodes.
    void initEndNodes(QxNode* source, QxNode* target);
    /// Sets both ends in whatever state, without asking or telling anybody; null takes an end away.
    /// For segments, whose edge knows what it does.
    void placeEnds(QxNode* source, QxNode* target);

private:
    friend class QxNode;
    friend class QxGraph;
    friend class QxGraphManager;

    /// Where the graphs of its ends list an edge between graphs; null while none has.
    qx::internal::GraphCells* pGraphCells() const;
    static constexpr std::uint32_t BeingInserted = qx::flags::EdgeBeingInserted;

    using NodeHook = void (QxNode::*)(QxEdge*);
    using GraphHook = void (QxGraph::*)(QxEdge*);

    bool listsAt(const QxNode* node) const;
    QxEdgeDList& endList(QxNode* node, QxEdgeDList QxNode::*active) const;
    void enterEndLists();
    void leaveEndLists();
    enum class AtEnds { Listed, Unlisted };
    void changeState(std::uint32_t setBits, std::uint32_t clearBits,
                     AtEnds atEnds = AtEnds::Listed);
    void settleAsDisconnected();
    void settleBetweenManagers();
    void loseEnds();
    void tellEnds(GraphHook ownGraphHook, GraphHook endGraphHook, NodeHook nodeHook);
    std::uint32_t stateBits() const;
    int changeEnd(QxNode*& end, QxNode* node, bool source);
    void tellOfChangedEnd(QxNode* oldNode, QxNode* node, bool source);
    void updateGraphCells();
    void leaveGraphLists();

    QxNode* m_source = nullptr;
    QxNode* m_target = nullptr;
    QxDListCell m_sourceCell;
    QxDListCell m_targetCell;
};
