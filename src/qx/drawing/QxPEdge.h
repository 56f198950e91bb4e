// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDrawingFlags.h"
#include "qx/drawing/QxGEdge.h"
#include "qx/foundation/geometry/QxDirectionEnum.h"

class QxDEdge;
class QxGeometricUpdateInfo;

namespace qx::internal {
struct IndexSlot;
enum class Moment : unsigned char;
}  // namespace qx::internal

/// A segment: a straight piece of the path of a drawing edge, which owns it. It runs between two
/// bends, or from the edge's source or to its target.
class QX_API QxPEdge : public QxGEdge {
public:
    /// A segment in no path yet. A graph as owner stands for its factory.
    explicit QxPEdge(QxOwnedObject* owner);
    /// A copy in no path and without ends, in the factory of `source`.
    QxPEdge(const QxPEdge& source, QxDeepFlagEnum depth);
    ~QxPEdge() override;

    int isPathEdge() const override;
    int vIsVisible() const override;
    std::size_t sizeOf() const override;
    int checkInvariants() const override;
    int levelNumber() const override;
    void nullEndNodes() override;
    int changeSourceNodeWithoutConnect(QxNode* node) override;
    int changeTargetNodeWithoutConnect(QxNode* node) override;
    QxEdge* pOriginalEdge() override;
    const QxEdge* pOriginalEdge() const override;
    void innerDebugOutput(int depth) const override;
    /// Whether the segment may have this end: a bend that joins fewer than three segments or, for
    /// the first and last segment, an end node of the edge. In no path, what any edge may have.
    int canEnd(const QxNode* node) const override;
    /// Whether the segment may be connected there: just while its edge is, and to no bend of
    /// another edge.
    int canConnect(const QxNode* node) const override;
    /// Takes over the attributes; the segment keeps its ends and its place in the path. Nothing
    /// happens for null and the segment itself.
    void copyEdge(const QxEdge* source, int deep) override;
    QxPEdge* cloneObject() const { return static_cast<QxPEdge*>(vCloneObject()); }
    QxPEdge* cloneAttributes() const { return static_cast<QxPEdge*>(vCloneAttributes()); }
    /// The rectangle of the unclipped ends.
    int getUserBoundingRect(QxRect& rect, int inOwnGraph) const override;
    void ntFromPoint(QxPoint& point, int clipped) const override;
    QxPoint ntFromPoint(int clipped) const override;
    void ntToPoint(QxPoint& point, int clipped) const override;
    QxPoint ntToPoint(int clipped) const override;
    QxPEdge* pSourceOrPathEdge() override { return this; }
    const QxPEdge* pSourceOrPathEdge() const override { return this; }
    QxPEdge* pTargetOrPathEdge() override { return this; }
    const QxPEdge* pTargetOrPathEdge() const override { return this; }
    virtual int isCurvedEdge() const;

    /// The edge whose segment this is; null while it is in no path.
    QxDEdge* pOwnerEdge() const { return ownerValid() != 0 ? m_ownerEdge : nullptr; }
    /// The same for a segment whose edge is in no graph at the moment, too.
    QxDEdge* pUnverifiedOwnerEdge() const { return m_ownerEdge; }
    /// Whether the segment counts for drawing: not set aside, and in the visible part or that part
    /// not computed.
    int isUsable() const;
    /// Whether the segment is in the visible part, and in that computed by updateNewVisiblePart.
    /// Setters return the argument.
    int inVisiblePart() const;
    int inVisiblePart(int value);
    int inNewVisiblePart() const { return hasFlag(qx::flags::SegmentNewVisible); }
    int inNewVisiblePart(int value);
    /// The unclipped end points; 1.
    int getSourcePoint(QxPoint& point, int inOwnGraph) const;
    int getTargetPoint(QxPoint& point, int inOwnGraph) const;
    /// Whether the clipped ends differ in both coordinates.
    int isSlope() const;
    /// The direction from the clipped start to the clipped end.
    QxDirectionEnum direction() const;

    /// @name Reports to an update record
    /// Nothing is reported of a segment that lies within the rectangles of its ends.
    /// @{
    void actAfterInsert(QxGeometricUpdateInfo* info, int recurse);
    void actBeforeRemove(QxGeometricUpdateInfo* info, int recurse);
    void actBeforeGeometryChanges(QxGeometricUpdateInfo* info, int recurse);
    void actAfterGeometryChanges(QxGeometricUpdateInfo* info, int recurse);
    /// @}

protected:
    void vFollowState() override;
    void actOnChangeOwner(QxOwnedObject* owner, int valid) override;
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    friend class QxDEdge;
    friend struct qx::internal::IndexSlot;
    friend class QxDGraph;
    friend class QxPNode;

    void report(qx::internal::Moment moment, QxGeometricUpdateInfo* info);
    template <class Act>
    int changeEnd(const Act& act);
    void readEnd(QxPoint& point, int clipped, bool atSource) const;
    int getEnd(QxPoint& point, int inOwnGraph, bool atSource) const;
    /// Sets both ends without a word to the graph; null leaves an end open. The segment keeps its
    /// state.
    void setEnds(QxNode* source, QxNode* target);

    QxDEdge* m_ownerEdge = nullptr;
    std::int32_t m_indexSlot = -1;
};
