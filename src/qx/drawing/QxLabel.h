// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDrawingFlags.h"
#include "qx/drawing/QxGraphObjectStatusEnum.h"
#include "qx/drawing/QxPlacedRectOf.h"
#include "qx/events/QxDrawingChangeEventTypeEnum.h"
#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/geometry/QxSize.h"
#include "qx/foundation/graph/QxExtendableGraphObject.h"
#include "qx/foundation/util/QxDListCell.h"
#include "qx/foundation/util/QxText.h"

class QxConnector;
class QxDEdge;
class QxDGraph;
class QxDNode;
class QxGeometricUpdateInfo;

namespace qx::internal {
class Coverage;
enum class Moment : unsigned char;
struct LabelExtras;
}  // namespace qx::internal

/// A rectangle of text that belongs to one node, edge, connector or graph, and follows it.
///
/// A label stores its place relative to its owner: a proportional part, which its class defines,
/// and a constant offset. While it is in no owner's list it has no owner (its factory takes the
/// owner's place), is not visible, and its center is (0, 0).
///
/// Coordinates and the coordinate flag are those of QxGNode: `nt...` values and a nonzero flag are
/// in the coordinates of the graph that the owner lies in, and the raw setters (`nt...`) leave the
/// bounds of that graph to their caller. Sizes below 0 count as 0.
class QX_API QxLabel : public QxExtendableGraphObject, public QxPlacedRectOf<QxLabel> {
public:
    ~QxLabel() override;

    /// Both make the label's name, place and size those of `source`, as far as the two are of one
    /// kind. A label in an owner's list is copied in place; copyLabel of its class tells it as a
    /// removal and an insertion.
    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;
    void debugOutput(int depth) const override;
    QxLabel* cloneObject() const { return static_cast<QxLabel*>(vCloneObject()); }
    QxLabel* cloneAttributes() const { return static_cast<QxLabel*>(vCloneAttributes()); }
    int isLabel() const override;

    /// The text; null while the label has none.
    const QxText* pNameText() const override;
    int vIsVisible() const override;
    std::size_t sizeOf() const override;
    int checkInvariants() const override;
    int levelNumber() const override;

protected:
    /// Fires LabelTextChanged, unless no text becomes an empty one.
    const wchar_t* vSetNameString(const wchar_t* name) override;

public:
    /// Gets off the owner when the label hides it; 1 when it moved.
    virtual int adjustOnOwnerOverlap();
    /// @name The owner, when it is of that kind; null otherwise, and while there is none
    /// @{
    virtual QxDEdge* pOwnerEdge() const;
    virtual QxDNode* pOwnerNode() const;
    virtual QxDGraph* pOwnerGraph() const;
    virtual QxConnector* pOwnerConnector() const;
    /// @}
    /// The rectangle that a user would point at: the bounding rectangle.
    virtual int getUserBoundingRect(QxRect& rect, int inOwnGraph) const;
    /// The point where a line from the label to its owner meets the owner, in anchor coordinates
    /// when `inOwnGraph` is 0 and the label is visible. Returns the visibility.
    virtual int vGetAttachmentPoint(QxPoint& point, int inOwnGraph) const = 0;
    /// The center, in the coordinates of the label's graph.
    virtual void ntCenter(QxPoint& center) const;
    virtual QxPoint ntCenter() const;
    virtual void innerDebugOutput(int depth) const;

protected:
    /// The raw steps behind the setters of place and size: they fire LabelOffsetChanged or
    /// LabelResized when something changed.
    virtual void vMoveTo(const QxPoint& center);
    virtual void vResize(const QxSize& size);
    virtual void vSetOffset(const QxSize& offset);

public:
    /// The graph that the label lies in: that of its owner, or the graph that owns it; null while
    /// there is none.
    QxDGraph* pGraph() const;
    /// The owner, whatever it is.
    QxGraphObject* pOwnerGraphObject() const;

    /// @name Geometry in the coordinates of the label's graph
    /// @{
    /// The offset as center, the size as size.
    const QxRect* pIRect() const { return &m_rect; }
    std::int32_t ntWidth() const { return m_rect.width(); }
    std::int32_t ntHeight() const { return m_rect.height(); }
    using QxPlacedRectOf::ntSize;
    void ntSize(QxSize& size) const { size = m_rect.size(); }
    void ntBoundingRect(QxRect& rect) const;
    /// The constant part of the place: the width is the offset in x, the height that in y.
    QxSize ntOffset() const { return {m_rect.x(), m_rect.y()}; }
    void ntOffset(QxSize& offset) const { offset = ntOffset(); }
    std::int32_t ntOffsetX() const { return m_rect.x(); }
    std::int32_t ntOffsetY() const { return m_rect.y(); }
    /// @}

    /// @name Geometry in the asked-for coordinates
    /// 1, or 0 and no change of the output when anchor coordinates are asked of a label that is
    /// not visible.
    /// @{
    int getCenter(QxPoint& center, int inOwnGraph) const;
    int getSize(QxSize& size, int inOwnGraph) const;
    int getOffset(QxSize& offset, int inOwnGraph) const;
    int getBoundingRect(QxRect& rect, int inOwnGraph) const;
    /// @}

    /// @name Full changes: the bounds of the graph are brought up to date
    /// They return 1, also when nothing changes (nothing is fired then); 0 for anchor coordinates
    /// of a label that is not visible.
    /// @{
    int moveTo(const QxPoint& center, int inOwnGraph);
    int resize(const QxSize& size, int inOwnGraph);
    int setOffset(const QxSize& offset, int inOwnGraph);
    int move(const QxSize& offset, int inOwnGraph);
    using QxPlacedRectOf::move;
    using QxPlacedRectOf::moveTo;
    using QxPlacedRectOf::resize;
    using QxPlacedRectOf::setOffset;
    /// @}

    /// @name The raw changes, in the coordinates of the label's graph
    /// @{
    void ntMoveTo(const QxPoint& center) { vMoveTo(center); }
    void ntResize(const QxSize& size) { vResize(size); }
    void ntSetOffset(const QxSize& offset) { vSetOffset(offset); }
    using QxPlacedRectOf::ntMoveTo;
    using QxPlacedRectOf::ntResize;
    using QxPlacedRectOf::ntSetOffset;
    /// @}

    /// @name State
    /// @{

    /// Whether the label keeps its place relative to its owner when that moves; 1 at first. The
    /// setter returns its argument.
    int moveLabelOnOwnerMove() const { return hasFlag(qx::flags::LabelMovesWithOwner); }
    int moveLabelOnOwnerMove(int value) {
        setFlag(qx::flags::LabelMovesWithOwner, value);
        return value;
    }
    /// Saves where the label is, for restoreMovedLabel.
    void storeMovedLabel();
    /// Forgets the saved place; with `move` nonzero the label returns there first, by a raw move:
    /// to the very proportion and offset that it had, unless these lead elsewhere by now.
    void restoreMovedLabel(int move);
    /// The saved center; null when none is saved.
    const QxPoint* pStoredCenter() const;
    /// What the running change has done to the label; the setter returns its argument.
    QxGraphObjectStatusEnum graphObjectStatus() const { return m_status; }
    QxGraphObjectStatusEnum graphObjectStatus(QxGraphObjectStatusEnum value) {
        return m_status = value;
    }
    /// The copy made of this label while its manager stored clones; not owned.
    QxLabel* pClonedLabel() const;
    QxLabel* pClonedLabel(QxLabel* label);
    /// @}

    /// @name Reports to an update record
    /// They do nothing for a graph label, and for a label of an edge that is not connected and
    /// active or, between graphs, not visible.
    /// @{
    void actBeforeGeometryChanges(QxGeometricUpdateInfo* info) const;
    void actAfterGeometryChanges(QxGeometricUpdateInfo* info) const;
    void actBeforeRemove(QxGeometricUpdateInfo* info) const;
    void actAfterInsert(QxGeometricUpdateInfo* info) const;
    void actAfterRemove(QxGeometricUpdateInfo* info) const;
    /// @}

protected:
    /// An object that owns nothing yet; of `owner` only its factory is kept until it inserts the
    /// label.
    explicit QxLabel(QxOwnedObject* owner);

    qx::internal::GraphObjectExtras* vNewExtras() const override;
    const qx::internal::LabelExtras* pQueryLabelExtras() const;
    qx::internal::LabelExtras& labelExtras();

    /// The owner while it lists the label; else null.
    QxOwnedObject* pValidOwner() const { return ownerValid() != 0 ? pOwner() : nullptr; }
    /// Gives the stored rectangle an offset and a size; it stays inside the coordinate range.
    void placeRect(const QxPoint& offset, const QxSize& size);
    /// The proportional parts of the place as its class has them; 0 for the second of one.
    struct Proportion {
        std::int16_t x = 0;
        std::int16_t y = 0;
        bool operator==(const Proportion&) const = default;
    };
    /// The raw change of the whole place: tells what the label covers, and fires once; nothing
    /// when it has that place already.
    void place(Proportion proportion, const QxPoint& offset);
    /// The same without a word to listeners.
    void placeQuietly(Proportion proportion, const QxPoint& offset);
    /// The point of the owner that the proportion names, in the coordinates of the label's graph;
    /// (0, 0) without an owner.
    QxPoint referenceAt(Proportion proportion) const;
    /// The bounding rectangle of an owner that is like a rectangle; false without one.
    bool getOwnerRect(QxRect& rect) const;
    /// Makes a raw change of what the label covers, and fires (labels/internal/LabelChange.h).
    template <class Act>
    void changeGeometry(QxDrawingChangeEventTypeEnum type, const Act& act);

private:
    friend class qx::internal::Coverage;
    friend struct qx::internal::IndexSlot;
    template <class Owner, class Label>
    friend class QxLabelOwnerOf;

    QxRect boundsToTell() const;
    void copyLabelAttributes(const QxLabel& source);
    void report(qx::internal::Moment moment, QxGeometricUpdateInfo* info) const;
    /// The label comes to (`valid` 1) or leaves a list of `owner`.
    void actOnChangeOwner(QxOwnedObject* owner, int valid);

    QxDListCell m_ownerCell;
    QxRect m_rect{40, 20};
    QxText m_text;
    QxGraphObjectStatusEnum m_status = QxStatusUnchanged;

protected:
    /// Kept here, where there is room: the proportional place of a rectangular object's label; of
    /// an edge's label its thousandths along the edge.
    Proportion m_proportion;
    /// Where the label stands in the extents and in the index of its graph.
    std::int32_t m_extentSlot = -1;
    std::int32_t m_indexSlot = -1;
};
