// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDrawingFlags.h"
#include "qx/drawing/QxGNode.h"

class QxDEdge;

namespace qx::internal {
class Coverage;
struct IndexSlot;
enum class Moment : unsigned char;
}  // namespace qx::internal

/// A bend: a point on the path of a drawing edge, which owns it. It has one incoming and one
/// outgoing segment and belongs to the graph of its edge without being listed there.
class QX_API QxPNode : public QxGNode {
public:
    /// A bend in no path yet. A graph as owner stands for its factory.
    explicit QxPNode(QxOwnedObject* owner);
    /// A copy in no path, in the factory of `source`.
    QxPNode(const QxPNode& source, QxDeepFlagEnum depth);
    ~QxPNode() override;

    QxObject* pParentEventSource() const override;
    int isPathNode() const override;
    int vIsVisible() const override;
    std::size_t sizeOf() const override;
    int checkInvariants() const override;
    int levelNumber() const override;
    void actOnDiscard() override;
    void innerDebugOutput(int depth) const override;
    /// Takes over the place of `source`, when that is a bend; a bend that is in a path is dragged
    /// there. Nothing happens for null and the bend itself.
    void copyNode(const QxNode* source, int deep) override;
    QxPNode* cloneObject() const { return static_cast<QxPNode*>(vCloneObject()); }
    QxPNode* cloneAttributes() const { return static_cast<QxPNode*>(vCloneAttributes()); }
    void restoreMovedNode() override;

    QxPoint iCenter() const override { return {m_x, m_y}; }
    void iCenter(QxPoint& center) const override { center.moveTo(m_x, m_y); }
    QxSize iSize() const override { return {0, 0}; }
    void iSize(QxSize& size) const override { size.resize(0, 0); }
    std::int32_t iX() const override { return m_x; }
    std::int32_t iY() const override { return m_y; }
    std::int32_t iWidth() const override { return 0; }
    std::int32_t iHeight() const override { return 0; }

    /// The edge whose bend this is; null while it is in no path.
    QxDEdge* pOwnerEdge() const { return ownerValid() != 0 ? m_ownerEdge : nullptr; }
    /// The same for a bend whose edge is in no graph at the moment, too.
    QxDEdge* pUnverifiedOwnerEdge() const { return m_ownerEdge; }
    /// Whether the bend counts for drawing: not set aside, and in the visible part or that part
    /// not computed.
    int isUsable() const;
    /// Whether the bend is in the visible part, and in that computed by updateNewVisiblePart.
    /// Setters return the argument.
    int inVisiblePart() const;
    int inVisiblePart(int value);
    int inNewVisiblePart() const { return hasFlag(qx::flags::BendNewVisible); }
    int inNewVisiblePart(int value);
    /// Drags the bend to a point in owner-graph coordinates. On a path along the axes the bends
    /// beside it follow; bends at which the way goes straight on are discarded, this one, too.
    /// O(bends).
    void updateForDiagramming(const QxPoint& center);

    /// @name Reports to an update record; `recurse` also of its segments, `labels` of edge labels
    /// @{
    void actAfterInsert(QxGeometricUpdateInfo* info, int recurse, int labels);
    void actBeforeRemove(QxGeometricUpdateInfo* info, int recurse, int labels);
    void actBeforeGeometryChanges(QxGeometricUpdateInfo* info, int recurse, int labels);
    void actAfterGeometryChanges(QxGeometricUpdateInfo* info, int recurse, int labels);
    /// @}

protected:
    void vActBeforeGeometryChanges(QxGeometricUpdateInfo* own,
                                   QxGeometricUpdateInfo* intergraph) override;
    void vActAfterGeometryChanges(QxGeometricUpdateInfo* own,
                                  QxGeometricUpdateInfo* intergraph) override;
    void vMoveTo(const QxPoint& center) override;
    void actOnChangeOwner(QxOwnedObject* owner, int valid) override;
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    friend class QxDEdge;
    friend class QxDGraph;
    friend class qx::internal::Coverage;
    friend struct qx::internal::IndexSlot;

    void report(qx::internal::Moment moment, QxGeometricUpdateInfo* info, int recurse,
                int labels = 0);

    QxDEdge* m_ownerEdge = nullptr;
    std::int32_t m_x = 0;
    std::int32_t m_y = 0;
    std::int32_t m_extentSlot = -1;
    std::int32_t m_indexSlot = -1;
};
