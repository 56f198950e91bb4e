// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxRect.h"

class QxDGraph;
class QxGraphObject;
class QxQTree;

/// One change of geometry in one graph. It suspends the graph's bounds and spatial index, collects
/// what the changed objects covered before and after, and brings both up to date once, at the end.
///
/// Records nest: an inner one finds the bounds suspended already and collects nothing; only the
/// outermost brings them, when it is closed, to what the graph covers then, raw moves included and
/// whatever listeners have done meanwhile, united with what was reported as new. A record lives on
/// the stack of one operation, keeps its graph alive, and closes itself at the end of its life.
class QX_API QxGeometricUpdateInfo : public QxObject {
public:
    /// For `graph` (`selector` 0) or the intergraph of its manager (otherwise). The record is inert
    /// when the graph is null or invisible, or there is no intergraph.
    QxGeometricUpdateInfo(QxDGraph* graph, int selector, int notify);

    ~QxGeometricUpdateInfo() override;

    QxGeometricUpdateInfo(const QxGeometricUpdateInfo&) = delete;
    QxGeometricUpdateInfo& operator=(const QxGeometricUpdateInfo&) = delete;

    /// Suspends what is on, and remembers it. The argument has no meaning.
    void storeStateAndDisable(int);
    /// Resumes what was suspended and updates the graph's bounds; once, then the record is closed.
    void enableAndRestoreState();

    /// What an object covered before, and covers after, the change, in graph coordinates.
    void updateBeforeGeometryChanges(const QxGraphObject*, const QxRect& rect) {
        collect(rect, m_oldBoundingRect, m_hasOldBoundingRect);
    }
    void updateBeforeRemove(const QxGraphObject*, const QxRect& rect) {
        collect(rect, m_oldBoundingRect, m_hasOldBoundingRect);
    }
    void updateAfterGeometryChanges(const QxGraphObject*, const QxRect& rect) {
        collect(rect, m_newBoundingRect, m_hasNewBoundingRect);
    }
    void updateAfterInsert(const QxGraphObject*, const QxRect& rect) {
        collect(rect, m_newBoundingRect, m_hasNewBoundingRect);
    }

    QxDGraph* pGraph() const { return m_graph; }
    QxQTree* pQTree() const { return m_qTree; }
    QxQTree* pQTree(QxQTree* tree) { return m_qTree = tree; }
    QxRect* pOldBoundingRect() { return &m_oldBoundingRect; }
    QxRect* pNewBoundingRect() { return &m_newBoundingRect; }

    /// @name Flags; a setter returns its argument
    /// @{
    int hasOldBoundingRect() const { return m_hasOldBoundingRect ? 1 : 0; }
    int hasOldBoundingRect(int value) { return set(m_hasOldBoundingRect, value); }
    int hasNewBoundingRect() const { return m_hasNewBoundingRect ? 1 : 0; }
    int hasNewBoundingRect(int value) { return set(m_hasNewBoundingRect, value); }
    /// The graph's bounds were kept up to date and are suspended by this record. What is set here
    /// is how the graph is left.
    int needsUpdateGraphBounds() const { return m_needsUpdateGraphBounds ? 1 : 0; }
    int needsUpdateGraphBounds(int value) { return set(m_needsUpdateGraphBounds, value); }
    /// An interactive drag runs: reports are ignored, and the bounds of the graph are off until
    /// somebody switches them on there, or this record is closed after the drag.
    int isDragging() const { return m_isDragging ? 1 : 0; }
    int isDragging(int value);
    int needsUpdateQuadTree() const { return m_needsUpdateQuadTree ? 1 : 0; }
    int needsUpdateQuadTree(int value) { return set(m_needsUpdateQuadTree, value); }
    /// Something was suspended: objects report what they cover.
    int needsRecursiveUpdate() const { return m_needsRecursiveUpdate ? 1 : 0; }
    int needsRecursiveUpdate(int value) { return set(m_needsRecursiveUpdate, value); }
    /// @}

private:
    static int set(bool& flag, int value) {
        flag = value != 0;
        return value;
    }
    void collect(const QxRect& rect, QxRect& bounds, bool& has) {
        if (!m_needsUpdateGraphBounds || m_isDragging) {
            return;
        }
        if (has) {
            bounds.updateBounds(&rect);
        } else {
            bounds = rect;
            has = true;
        }
    }

    void leaveBoundsOff();

    QxDGraph* m_graph = nullptr;
    QxQTree* m_qTree = nullptr;
    QxRect m_oldBoundingRect;
    QxRect m_newBoundingRect;
    bool m_keepsGraph = false;
    bool m_holdsBounds = false;
    /// A drag has switched the bounds off; and whether they were on when the record was opened, or
    /// are so after the drag has begun.
    bool m_leftBoundsOff = false;
    bool m_foundBoundsOn = false;
    bool m_hasOldBoundingRect = false;
    bool m_hasNewBoundingRect = false;
    bool m_needsUpdateGraphBounds = false;
    bool m_isDragging = false;
    bool m_needsUpdateQuadTree = false;
    bool m_needsRecursiveUpdate = false;
};
