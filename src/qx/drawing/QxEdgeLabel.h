// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxEdgeEndPointMovedEnum.h"
#include "qx/drawing/QxEdgeLabelToWhichSideOfEdgeEnum.h"
#include "qx/drawing/QxLabel.h"

class QxLabelInfoEdgeMoved;
class QxPEdge;

/// A label of a drawing edge. Its center is a point of the edge, so many thousandths of the drawn
/// length from the source, plus a constant offset; or, in global offset mode, a fixed point.
class QX_API QxEdgeLabel : public QxLabel {
public:
    explicit QxEdgeLabel(QxOwnedObject* owner);
    /// A free copy in the factory of `source`; where that is pinned, the copy is at the same place
    /// of its edge.
    QxEdgeLabel(const QxEdgeLabel& source, QxDeepFlagEnum depth);

    int isEdgeLabel() const override;
    /// Whether there is an edge and it is visible.
    int vIsVisible() const override;
    /// Gets off the path of its edge when that runs through the label: by the full move, to where
    /// the label touches the first segment that did; 1 when it moved.
    int adjustOnOwnerOverlap() override;
    QxDEdge* pOwnerEdge() const override;
    /// The point of the edge that is nearest to the label's center.
    int vGetAttachmentPoint(QxPoint& point, int inOwnGraph) const override;
    void ntCenter(QxPoint& center) const override;
    QxPoint ntCenter() const override;
    QxEdgeLabel* cloneObject() const { return static_cast<QxEdgeLabel*>(vCloneObject()); }
    QxEdgeLabel* cloneAttributes() const { return static_cast<QxEdgeLabel*>(vCloneAttributes()); }
    /// As for other labels. Whether the label is pinned, and where, is not copied; what it has
    /// noted about a move is forgotten.
    void copyLabel(const QxEdgeLabel* source, int deep);

    /// @name The place along the edge
    /// @{
    /// Thousandths of the edge's length, 500 at first.
    std::int16_t perMilDistanceFromSource() const { return m_proportion.x; }
    /// The full change; other values than 0 to 1000 are ignored. Returns the value afterwards.
    std::int16_t perMilDistanceFromSource(std::int16_t value);
    /// The raw change.
    void ntPerMilDistanceFromSource(std::int16_t value) { vSetPerMilDistanceFromSource(value); }
    /// Whether the label is pinned: it stays where it is, whatever its edge does. A change does not
    /// move it. The setter returns its argument.
    int globalOffsetMode() const { return hasFlag(qx::flags::LabelPinned); }
    int globalOffsetMode(int mode);
    /// @}

    /// @name Geometry of segments
    /// @{
    /// The point at a distance from (x1, y1) toward (x2, y2), or, negative, away from there;
    /// straight down from equal points.
    static void pointOnEdgeFromDistance(QxPoint* out, std::int32_t x1, std::int32_t y1,
                                        std::int32_t x2, std::int32_t y2, std::int32_t distance);
    /// The direction of a segment in whole degrees, 0 to 359; 0 is to the right, 90 up.
    static std::int32_t getAngleOfEdgeSegment(const QxPoint& from, const QxPoint& to);
    /// On which side of a segment the label's center lies; the right side when it lies on it. The
    /// angle is not needed.
    QxEdgeLabelToWhichSideOfEdgeEnum whichSideOfEdge(const QxPoint& from, const QxPoint& to,
                                                     std::int32_t angle) const;
    /// @}

    /// @name The label and the segments of its edge
    /// @{
    /// The end of the segment's edge that the running change has moved; an edge between graphs
    /// moves with the nodes around its ends, too.
    QxEdgeEndPointMovedEnum whichEndPointMoved(const QxPEdge* segment) const;
    /// Whether a corner of the label is within the tolerance of the segment.
    int labelTouchesPathEdge(const QxPEdge* segment, std::int32_t tolerance) const;
    /// Whether the segment runs through the label; not one that ends in it.
    int labelOverlapsPathEdge(const QxPEdge* segment) const;
    /// Whether the label, enlarged by 5 on every side, keeps clear of the segment, or holds an end
    /// of it.
    int labelAwayFromPathEdge(const QxPEdge* segment) const;
    /// The segment at the label's place along the edge, and where on it, in thousandths.
    QxPEdge* pPathEdgeOfAttachmentPoint() const;
    std::int16_t perMilOfAttachPointOnPathEdge() const;
    /// How far along the segment, of that angle, the label's touching corner would slide on that
    /// side; 0 for a label that does not touch the segment.
    std::int32_t offsetOfSlidingPoint(const QxPEdge* segment, std::int32_t angle,
                                      QxEdgeLabelToWhichSideOfEdgeEnum side) const;
    /// @}

    /// @name Following a change of the path
    /// Before the change the label notes how it lies at its edge (collectInit...), during a drag it
    /// may note again how it touches it (collect...), after the change it acts on the first note,
    /// and finally forgets its notes (cleanUp...).
    /// @{
    void collectInitInfoOwnerEdgeMoved();
    void collectInfoOwnerEdgeMoved();
    /// A label that moves with its owner stays on its segment; any other stays where it was.
    void actOnLabelEdgeMoved();
    /// The label keeps its proportion of the segment that was noted; when that has left the path,
    /// of the one in its position, and of the whole edge when there is none.
    void actOnAdjustPerMilFromSource(const QxLabelInfoEdgeMoved* info);
    /// Lets the label touch the segment that was noted, on the side that was noted.
    void updateOffsetOfEdgeLabelSmoothly(const QxLabelInfoEdgeMoved* info);
    /// The segment that was noted while it is on the path of the edge, else the first one.
    QxPEdge* getPathEdgeOfOldAttachPoint(const QxLabelInfoEdgeMoved* info) const;
    void cleanUpLabelMoveControlInfo();
    /// The first note, the label's own; null when there is none.
    const QxLabelInfoEdgeMoved* pFirstMoveInfo() const;
    /// @}

    /// A place at an edge: thousandths along it, and the offset from there.
    struct Spot {
        std::int16_t perMil;
        QxPoint offset;
    };
    /// The place at the edge's nearest point that centers a label at `center`. On an edge without
    /// length the thousandths are `perMil`.
    static Spot spotOn(const QxDEdge& edge, const QxPoint& center, std::int16_t perMil);

protected:
    void vMoveTo(const QxPoint& center) override;
    virtual void vSetPerMilDistanceFromSource(std::int16_t value);
    /// Move the label to `center`, by the raw change: relative to the nearest point of the edge, or
    /// to the point that it has there now.
    void updatePerMil(const QxPoint& center);
    void updateOffset(const QxPoint& center);
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    friend class QxLabel;

    Spot spotAt(const QxPoint& center) const;
    QxPoint pointOnEdge() const;
    void pinAt(const QxPoint& center);
    /// How far the touching corner slides along a segment of that angle.
    std::int32_t slideAt(std::int32_t angle) const;
    QxPoint centerBeside(const QxPoint& point, std::int32_t angle,
                         QxEdgeLabelToWhichSideOfEdgeEnum side) const;
    void noteRelation(QxLabelInfoEdgeMoved& info, const QxPEdge& segment) const;
};
