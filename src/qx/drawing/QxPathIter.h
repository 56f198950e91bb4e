// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/foundation/util/QxDListIter.h"

class QxDEdge;

/// Walks the path of an edge as pairs of a segment and the bend at its far end:
///
///     for (QxPathIter it(edge); it; ++it) { use(it.pEdge(), it.pNode()); }
///
/// Backward it starts at the last segment, and the bend is the one where the segment starts. The
/// last pair has no bend: the node is null. The path of an edge that is not connected, or is
/// deactivated, yields nothing. The current pair must stay in the path until the walk has moved on.
class QX_API QxPathIter : public QxObject {
public:
    QxPathIter() noexcept = default;
    explicit QxPathIter(const QxDEdge* edge, QxIterDirectionEnum direction = QxIterForward) {
        init(edge, direction);
    }
    /// Starts anew; null is walked like an edge without a path.
    void init(const QxDEdge* edge, QxIterDirectionEnum direction = QxIterForward);

    /// Both move on in the direction of the walk; a walk that is over stays so.
    QxPathIter& operator++();
    QxPathIter& operator--() { return ++*this; }

    explicit operator bool() const noexcept { return m_edge != nullptr; }
    explicit operator int() const noexcept { return m_edge != nullptr ? 1 : 0; }
    /// The current segment; null when the walk is over.
    QxPEdge* pEdge() const noexcept { return m_edge; }
    /// The bend at its far end; null at the last segment.
    QxPNode* pNode() const noexcept { return m_node; }

private:
    void goTo(QxPEdge* edge);

    QxPEdge* m_edge = nullptr;
    QxPNode* m_node = nullptr;
    QxIterDirectionEnum m_direction = QxIterForward;
};

/// Walks the bends of an edge from source to target.
class QX_API QxPathNodeIter : public QxPathIter {
public:
    QxPathNodeIter() noexcept = default;
    explicit QxPathNodeIter(const QxDEdge* edge) : QxPathIter(edge) {}
    void init(const QxDEdge* edge) { QxPathIter::init(edge); }
    QxPathNodeIter& operator++() {
        QxPathIter::operator++();
        return *this;
    }
    explicit operator bool() const noexcept { return pNode() != nullptr; }
    explicit operator int() const noexcept { return pNode() != nullptr ? 1 : 0; }
};

/// Walks the segments of an edge from source to target.
class QX_API QxPathEdgeIter : public QxPathIter {
public:
    QxPathEdgeIter() noexcept = default;
    explicit QxPathEdgeIter(const QxDEdge* edge) : QxPathIter(edge) {}
    void init(const QxDEdge* edge) { QxPathIter::init(edge); }
    QxPathEdgeIter& operator++() {
        QxPathIter::operator++();
        return *this;
    }
};

/// Walks the same pairs, whatever the state of the edge: it needs no directions of the segments,
/// only that each bend joins two.
class QX_API QxDisconnectedPathIter : public QxObject {
public:
    QxDisconnectedPathIter() noexcept = default;
    explicit QxDisconnectedPathIter(const QxDEdge* edge,
                                    QxIterDirectionEnum direction = QxIterForward) {
        init(edge, direction);
    }
    /// Starts anew; null is walked like an edge without a path.
    void init(const QxDEdge* edge, QxIterDirectionEnum direction = QxIterForward);

    QxDisconnectedPathIter& operator++();
    QxDisconnectedPathIter& operator--() { return ++*this; }

    explicit operator bool() const noexcept { return m_edge != nullptr; }
    explicit operator int() const noexcept { return m_edge != nullptr ? 1 : 0; }
    QxPEdge* pEdge() const noexcept { return m_edge; }
    QxPNode* pNode() const noexcept { return m_node; }

private:
    QxPEdge* m_edge = nullptr;
    QxPNode* m_node = nullptr;
};
