// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/util/QxIterSources.h"

/// Walks the paths of all connected edges of a graph, edge by edge, each path from source to
/// target. The direction is that of the walk over the edges. A null graph is walked like an empty
/// one.
template <class PathIter>
class QxPathObjectIterOf : public QxOwnerListIter<QxDGraph, &QxDGraph::pEdgeList> {
public:
    using Edges = QxOwnerListIter<QxDGraph, &QxDGraph::pEdgeList>;

    QxPathObjectIterOf() noexcept = default;
    explicit QxPathObjectIterOf(const QxDGraph* graph,
                                QxIterDirectionEnum direction = QxIterForward) {
        init(graph, direction);
    }

    void init(const QxDGraph* graph, QxIterDirectionEnum direction = QxIterForward) {
        Edges::init(graph, direction);
        startPath();
    }

    QxPathObjectIterOf& operator++() override {
        ++m_path;
        goOnToNextEdge();
        return *this;
    }

protected:
    const PathIter& path() const { return m_path; }

private:
    void startPath() {
        m_path.init(static_cast<const QxDEdge*>(this->pObject()));
        goOnToNextEdge();
    }
    void goOnToNextEdge() {
        while (!m_path && this->pCell() != nullptr) {
            Edges::operator++();
            m_path.init(static_cast<const QxDEdge*>(this->pObject()));
        }
    }

    PathIter m_path;
};

/// Every bend of a graph's edges.
class QX_API QxPNodeIter : public QxPathObjectIterOf<QxPathNodeIter> {
public:
    using QxPathObjectIterOf::QxPathObjectIterOf;
    /// Null when the walk is over.
    QxPNode* pNode() const { return path().pNode(); }
};

/// Every segment of a graph's edges.
class QX_API QxPEdgeIter : public QxPathObjectIterOf<QxPathEdgeIter> {
public:
    using QxPathObjectIterOf::QxPathObjectIterOf;
    /// Null when the walk is over.
    QxPEdge* pEdge() const { return path().pEdge(); }
};
