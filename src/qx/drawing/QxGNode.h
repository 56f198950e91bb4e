// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/geometry/QxSize.h"
#include "qx/foundation/graph/QxNode.h"

class QxDGraph;
class QxGeometricUpdateInfo;

namespace qx::internal {
class Change;
struct NodeExtras;
}  // namespace qx::internal

/// A node with a center and a size: drawing nodes and bends.
///
/// Operations named `nt...` and `i...` use the coordinates of the owner graph. The others take a
/// coordinate flag: nonzero for the owner graph's coordinates, 0 for those of the anchor graph,
/// which an application sees; then the node must be visible, or they return 0 and change nothing of
/// the node (a query leaves the value in own coordinates in its output). World units; y upward.
class QX_API QxGNode : public QxNode {
public:
    explicit QxGNode(QxOwnedObject* owner) : QxNode(owner) {}

    int vIsVisible() const override;
    void copyNode(const QxNode* source, int deep) override;
    std::size_t sizeOf() const override;

    /// Moves back to where storeMovedNode saw the node, and forgets that place.
    virtual void restoreMovedNode();

protected:
    /// Report the node, with what hangs on it, to the records of its graph and of the intergraph.
    virtual void vActBeforeGeometryChanges(QxGeometricUpdateInfo* own,
                                           QxGeometricUpdateInfo* intergraph) = 0;
    virtual void vActAfterGeometryChanges(QxGeometricUpdateInfo* own,
                                          QxGeometricUpdateInfo* intergraph) = 0;

public:
    /// The rectangle that a user would point at: the bounding rectangle.
    virtual int getUserBoundingRect(QxRect& rect, int inOwnGraph) const;

protected:
    /// The raw move: the center becomes `center`, in owner-graph coordinates.
    virtual void vMoveTo(const QxPoint& center);

public:
    /// @name Stored geometry, in owner-graph coordinates
    /// @{
    virtual QxPoint iCenter() const = 0;
    virtual void iCenter(QxPoint& center) const = 0;
    virtual QxSize iSize() const = 0;
    virtual void iSize(QxSize& size) const = 0;
    /// @}

    /// Called after a move outside any managed drawing.
    virtual void actOnMoveTo(const QxPoint& oldCenter);

    virtual std::int32_t iX() const = 0;
    virtual std::int32_t iY() const = 0;
    virtual std::int32_t iWidth() const = 0;
    virtual std::int32_t iHeight() const = 0;

    /// @name Geometry in owner-graph coordinates
    /// @{
    QxPoint ntCenter() const { return iCenter(); }
    void ntCenter(QxPoint& center) const { iCenter(center); }
    QxSize ntSize() const { return iSize(); }
    void ntSize(QxSize& size) const { iSize(size); }
    std::int32_t ntX() const { return iX(); }
    std::int32_t ntY() const { return iY(); }
    std::int32_t ntWidth() const { return iWidth(); }
    std::int32_t ntHeight() const { return iHeight(); }
    std::int32_t ntLeftHalfWidth() const { return qx::lowerHalf(iWidth()); }
    std::int32_t ntRightHalfWidth() const { return qx::upperHalf(iWidth()); }
    std::int32_t ntBottomHalfHeight() const { return qx::lowerHalf(iHeight()); }
    std::int32_t ntTopHalfHeight() const { return qx::upperHalf(iHeight()); }
    std::int32_t ntLeft() const { return qx::saturatingSub(iX(), ntLeftHalfWidth()); }
    std::int32_t ntRight() const { return qx::saturatingAdd(iX(), ntRightHalfWidth()); }
    std::int32_t ntBottom() const { return qx::saturatingSub(iY(), ntBottomHalfHeight()); }
    std::int32_t ntTop() const { return qx::saturatingAdd(iY(), ntTopHalfHeight()); }
    void ntBoundingRect(QxRect& rect) const {
        rect.setCorners(ntLeft(), ntBottom(), ntRight(), ntTop());
    }
    /// @}

    /// @name Geometry in the asked-for coordinates
    /// @{
    int getCenter(QxPoint& center, int inOwnGraph) const;
    int getSize(QxSize& size, int inOwnGraph) const;
    int getBoundingRect(QxRect& rect, int inOwnGraph) const;
    /// @}

    /// @name Moves
    /// @{

    /// Moves the node so that its center lies at `center`, and repairs what is attached: paths and
    /// labels of incident edges follow, graph bounds grow or shrink. Fires NodeMoved, or
    /// PathNodeMoved for a bend, and what follows tells of itself. Returns 1, also when the node is
    /// there already (nothing is fired then). A bend that comes to lie straight between its
    /// neighbours is discarded. O(degree + log n), and the bends of incident edges that follow.
    int moveTo(const QxPoint& center, int inOwnGraph);
    int moveTo(std::int32_t x, std::int32_t y, int inOwnGraph) {
        return moveTo(QxPoint(x, y), inOwnGraph);
    }
    /// The same by an offset; the zero offset only asks whether the node could move.
    int move(std::int32_t dx, std::int32_t dy, int inOwnGraph);
    int move(const QxSize& offset, int inOwnGraph) {
        return move(offset.width(), offset.height(), inOwnGraph);
    }
    /// The raw move, in owner-graph coordinates: no bounds, no repair of what is attached.
    void ntMoveTo(const QxPoint& center) { vMoveTo(center); }
    void ntMoveTo(std::int32_t x, std::int32_t y) { vMoveTo(QxPoint(x, y)); }
    void ntMove(std::int32_t dx, std::int32_t dy);
    void ntMove(const QxSize& offset) { ntMove(offset.width(), offset.height()); }
    /// @}

    /// @name The place before a move
    /// The saved rectangle belongs to the node; a new one replaces and frees the former.
    /// @{
    void storeMovedNode();
    const QxRect* pRectBeforeMove() const;
    /// Takes over a rectangle made with new (null forgets the place); returns it.
    const QxRect* pRectBeforeMove(const QxRect* rect);
    /// @}

    /// Whether the node lies in a graph of hidden objects.
    int hidden() const;
    QxDGraph* pOwnerGraph() const;

protected:
    /// Moves back to the center of the saved rectangle, if there is one, and forgets it.
    void moveBack();
    qx::internal::GraphObjectExtras* vNewExtras() const override;
    const qx::internal::NodeExtras* pQueryNodeExtras() const;
    qx::internal::NodeExtras& nodeExtras();

private:
    friend class qx::internal::Change;
};
