// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>

#include "qx/drawing/QxDrawingDLists.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/util/QxObject.h"

class QxGraphObject;

namespace qx::internal {
class IndexStore;
class IndexUpkeep;
}  // namespace qx::internal

/// What a spatial index holds of one object: the kind of the record and the corners of its
/// rectangle, or the ends of its segment. World units, coordinates of the graph.
class QX_API QxQTreeObject : public QxObject {
public:
    enum Kind : std::int32_t {
        PathEdgeRect = 0x1,
        PathEdgeSegment = 0x8,
        PathNode = 0x10,
        Node = 0x20,
        NodeLabel = 0x40,
        ConnectorLabel = 0x80,
        EdgeLabel = 0x100,
        GraphLabel = 0x200,
        Connector = 0x400,
    };

    QxQTreeObject(Kind kind, const QxPoint& first, const QxPoint& second, QxGraphObject* object)
        : m_kind(kind), m_first(first), m_second(second), m_object(object) {}

    std::int32_t kind() const { return m_kind; }
    const QxPoint& firstPoint() const { return m_first; }
    const QxPoint& secondPoint() const { return m_second; }
    QxGraphObject* pGraphObject() const { return m_object; }

private:
    Kind m_kind;
    QxPoint m_first;
    QxPoint m_second;
    QxGraphObject* m_object;
};

/// A spatial index of one drawing graph: which of its nodes, bends, segments, connectors and labels
/// lie in a rectangle, without a walk over the graph.
///
/// The tree of a graph (QxDGraph::pQuadTree) follows every change. It is built in one pass when it
/// is first asked, and so is one whose graph has changed in most of its objects since; other
/// changes are taken in at the next question. Questions change no registration and may be asked
/// from inside each other. A tree that a client makes holds what the client puts into it.
///
/// A client that makes a tree of its own takes objects out of it before they go.
///
/// Rectangles are in the coordinates of the graph, world units. Null objects, objects of other
/// graphs and excluded kinds are passed over everywhere.
class QX_API QxQTree : public QxObject {
public:
    /// Kinds that a tree can leave out.
    enum ExcludedEnum : unsigned short {
        ExcludePathEdges = 0x1,
        ExcludePathNodes = 0x2,
        ExcludeNodes = 0x4,
        ExcludeNodeLabels = 0x8,
        ExcludeConnectorLabels = 0x10,
        ExcludeEdgeLabels = 0x20,
        ExcludeGraphLabels = 0x40,
        ExcludeConnectors = 0x80,
    };

    /// An empty tree over the graph, which has to outlive it.
    QxQTree(QxDGraph* graph, unsigned short excluded);
    ~QxQTree() override;
    QxQTree(const QxQTree&) = delete;
    QxQTree& operator=(const QxQTree&) = delete;

    QxDGraph* pOwnerGraph() const { return m_graph; }
    unsigned short excludedObjectTypes() const { return m_excluded; }

    /// @name Flags; a setter returns its argument
    /// @{
    /// Whether an update record lets the tree be; cleared while one is open.
    int needsUpdate() const { return hasTreeFlag(NeedsUpdate); }
    int needsUpdate(int value) { return setTreeFlag(NeedsUpdate, value); }
    int needsUpdateCopy() const { return hasTreeFlag(NeedsUpdateCopy); }
    int needsUpdateCopy(int value) { return setTreeFlag(NeedsUpdateCopy, value); }
    /// Whether queries use the tree although its upkeep is suspended.
    int useSpecial() const { return hasTreeFlag(UseSpecial); }
    int useSpecial(int value) { return setTreeFlag(UseSpecial, value); }
    int dirty() const { return hasTreeFlag(Dirty); }
    int dirty(int value) { return setTreeFlag(Dirty, value); }
    /// Whether the upkeep is suspended: what comes or changes meanwhile is taken in afterwards,
    /// what goes is taken out at once.
    int updateDisabled() const { return hasTreeFlag(UpdateDisabled); }
    int updateDisabled(int value) { return setTreeFlag(UpdateDisabled, value); }
    /// @}

    /// @name Registration of single objects
    /// Bends count while they join segments, segments and edge labels while their edge is connected
    /// and active, connectors when they are specified. An object that is registered is not
    /// registered again.
    /// @{
    void addInfo(QxGraphObject* object);
    void discardInfo(QxGraphObject* object);
    /// Takes the object out and puts it in anew.
    void updateInfo(QxGraphObject* object);
    /// Takes the object of the record out, and the root when nothing is left.
    void discardObject(QxQTreeObject* record);
    /// @}

    /// @name Registration of objects with what hangs on them
    /// A node with its labels, connectors and edges, each in the tree of its own graph; an edge
    /// with its path and labels; a bend with the segments at it and the labels of its edge.
    /// @{
    void addDNodeInfo(QxDNode* node);
    void updateDNodeInfo(QxDNode* node);
    void discardDNodeInfo(QxDNode* node);
    void updateGNodeInfo(QxGNode* node);
    void addDEdgeInfo(QxDEdge* edge);
    void updateDEdgeInfo(QxDEdge* edge);
    void discardDEdgeInfo(QxDEdge* edge);
    void addPNodeInfo(QxPNode* bend);
    void updatePNodeInfo(QxPNode* bend);
    void discardPNodeInfo(QxPNode* bend);
    void updatePEdgeInfo(QxPEdge* segment);
    /// Everything in the graph.
    void addDGraphInfo();
    void updateDGraphInfo();
    void discardDGraphInfo();
    /// @}

    /// @name Questions
    /// @{

    /// Collects the objects that have a point in common with the rectangle: those of each kind
    /// whose list is given. Lists are emptied first. Objects and paths that are set aside (marked,
    /// or temporarily invisible) and what is cut off of edges do not count. With `drawingOrder`
    /// nonzero each list is in the order of the graph, front last; else the order is any.
    void buildLists(const QxRect* rect, QxDNodeDList* nodes, QxNodeLabelDList* nodeLabels,
                    QxPNodeDList* pathNodes, QxPEdgeDList* pathEdges, QxEdgeLabelDList* edgeLabels,
                    QxGraphLabelDList* graphLabels, QxConnectorDList* connectors,
                    QxConnectorLabelDList* connectorLabels, int drawingOrder);
    /// Whether there is such an object of one of the kinds asked for.
    int overlaps(const QxRect* rect, int nodes, int pathNodes, int pathEdges, int nodeLabels,
                 int connectorLabels, int edgeLabels, int graphLabels, int connectors);
    /// Kept for objects that were marked by a question: there are no such marks.
    void resetQuadTreeFlags(QxDList* list);
    /// @}

    /// @name State
    /// @{

    /// Gives up a root that holds nothing.
    void tryToCurtailRoot();
    /// A tree that needs no update is built anew and needs updates from then on.
    void update();
    /// Lets changes of geometry pass the tree by, or ends that.
    void ignoreGeometryChanges(int on);
    int isIgnoringGeometryChanges() const { return m_ignoring ? 1 : 0; }
    /// Takes over the excluded kinds and flags of another tree and registers its own graph.
    void duplicateTopology(QxQTree* source);
    /// Bytes of memory the tree takes.
    std::size_t sizeOf() const;
    /// @}

    /// @name Diagnostics
    /// Those that test compare with the graph and answer 1, or 0 after describing the first fault.
    /// A tree whose upkeep is suspended may hold, and lack, what has changed since.
    /// @{
    int isConsistent();
    int isConsistentDNode(QxDNode* node);
    int isConsistentDEdge(QxDEdge* edge);
    int isConsistentPathNode(QxPNode* bend);
    int isConsistentPathEdge(QxPEdge* segment);
    int testDGraphInfo() { return isConsistent(); }
    int testDNodeInfo(QxDNode* node) { return isConsistentDNode(node); }
    int testDEdgeInfo(QxDEdge* edge) { return isConsistentDEdge(edge); }
    /// What the tree holds of the object; the caller owns it. Null when it is not registered.
    QxQTreeObject* findObjInQTree(QxGraphObject* object);
    /// Whether the object is registered and has a point in common with the rectangle.
    int isObjectInsideRect(QxGraphObject* object, const QxRect* rect);
    int testObjectInRectangle(QxGraphObject* object, const QxRect* rect) {
        return isObjectInsideRect(object, rect);
    }
    void debugOutputTree();
    void printTree() { debugOutputTree(); }
    void debugOutputRect(const QxRect* rect) const;
    void debugOutputGObject(const QxGraphObject* object) const;
    /// @}

private:
    friend class QxDGraph;
    friend class qx::internal::IndexStore;
    friend class qx::internal::IndexUpkeep;

    enum TreeFlag : std::uint16_t {
        NeedsUpdate = 0x1,
        NeedsUpdateCopy = 0x2,
        UseSpecial = 0x4,
        Dirty = 0x8,
        UpdateDisabled = 0x20,
    };

    int hasTreeFlag(TreeFlag bit) const { return (m_flags & bit) != 0 ? 1 : 0; }
    int setTreeFlag(TreeFlag bit, int value) {
        m_flags = static_cast<std::uint16_t>(value != 0 ? m_flags | bit : m_flags & ~bit);
        return value;
    }
    /// Whether changes are taken in at the moment.
    bool follows() const;
    /// Calls the operation with every object that hangs on the node, edge or bend.
    using Registration = void (QxQTree::*)(QxGraphObject*);
    void eachOfNode(QxDNode* node, Registration act);
    void eachOfEdge(QxDEdge* edge, Registration act);
    void eachOfBend(QxPNode* bend, Registration act);
    /// Whether the object is registered just when it counts, and where it is; counts it then.
    int isConsistentObject(QxGraphObject* object, std::size_t& counted);
    int isConsistentNow(QxGraphObject* object);
    int isConsistentPath(QxDEdge* edge, std::size_t& counted);

    QxDGraph* m_graph;
    std::uint16_t m_flags = NeedsUpdate | Dirty;
    std::uint16_t m_excluded;
    bool m_ignoring = false;
    std::unique_ptr<qx::internal::IndexStore> m_store;
};
