// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// State and ends of an edge: what the graph layer does with the edge, its path follows. Copies.

#include <utility>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/internal/CloneLinks.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"

using qx::internal::Change;
using qx::internal::MetaEdgeUpkeep;
using qx::internal::Ref;

int QxDEdge::vConnect() {
    int connected = 0;
    Change::run(*this, [&] { connected = QxGEdge::vConnect(); });
    return connected;
}

int QxDEdge::disconnect() {
    int disconnected = 0;
    Change::run(*this, [&] { disconnected = QxGEdge::disconnect(); });
    return disconnected;
}

int QxDEdge::deactivate() {
    int idle = 0;
    Change::run(*this, [&] { idle = QxGEdge::deactivate(); });
    return idle;
}

int QxDEdge::activate() {
    int active = 0;
    Change::run(*this, [&] { active = QxGEdge::activate(); });
    return active;
}

void QxDEdge::vFollowState() {
    MetaEdgeUpkeep::changed(*this);
    if (isActive()) {
        connectPath();
    } else {
        disconnectPath();
    }
}

int QxDEdge::changeEnd(QxNode* node, bool atSource) {
    int changed = 0;
    Change::run(*this, [&] {
        changed = atSource ? QxGEdge::changeSourceNodeWithoutConnect(node)
                           : QxGEdge::changeTargetNodeWithoutConnect(node);
        if (changed != 0) {
            settleConnector(atSource);
        }
    });
    return changed;
}

void QxDEdge::vFollowEnds() {
    if (m_sourcePathEdge != nullptr || m_targetPathEdge != nullptr) {
        attachPath(pSourceNode(), pTargetNode());
    }
    actOnEndObjectChange();
    qx::internal::Coverage::countChanged(*this);
    MetaEdgeUpkeep::changed(*this);
}

int QxDEdge::changeSourceNodeWithoutConnect(QxNode* node) {
    return node == pSourceNode() ? 1 : changeEnd(node, true);
}

int QxDEdge::changeTargetNodeWithoutConnect(QxNode* node) {
    return node == pTargetNode() ? 1 : changeEnd(node, false);
}

int QxDEdge::reverse() {
    if (pSourceNode() == nullptr || pTargetNode() == nullptr) {
        return 0;
    }
    Change::run(*this, [&] { QxGEdge::reverse(); });
    return 1;
}

void QxDEdge::vFollowReversal() {
    const Path path = collectPath();
    for (QxPEdge* segment : path.segments) {
        segment->reverse();
    }
    std::swap(m_sourcePathEdge, m_targetPathEdge);
    exchangeConnectors();
    actOnEndObjectChange();
    MetaEdgeUpkeep::changed(*this);
}

void QxDEdge::nullEndNodes() {
    if (isActive()) {
        disconnectPath();
    } else {
        actOnEndObjectChange();
    }
    if (hasFlag(qx::flags::Discarding) != 0) {
        loseConnectors();
    } else {
        setConnectorsAside();
    }
    if (m_sourcePathEdge != nullptr) {
        attachPath(nullptr, nullptr);
    }
    QxGEdge::nullEndNodes();
    qx::internal::Coverage::countChanged(*this);
    MetaEdgeUpkeep::changed(*this);
}

int QxDEdge::canConnect(const QxNode* node) const {
    const std::uint32_t comesBackDisconnected =
        qx::flags::EdgeBeingInserted | qx::flags::EdgeReturnsDisconnected;
    return (flagWord() & comesBackDisconnected) == comesBackDisconnected
               ? 0
               : QxGEdge::canConnect(node);
}

void QxDEdge::emptyTopology() {
    Change::run(*this, [&] {
        discardAllBends();
        discardAllLabels();
    });
}

void QxDEdge::duplicateTopology(QxEdge* source) {
    if (source == nullptr || source == this) {
        return;
    }
    const Ref alive(*this);
    const Ref sourceAlive(*source);
    if (source->levelNumber() == levelNumber()) {
        discardAllBends();
        Change::run(*this, [&] {
            duplicatePath(*static_cast<QxDEdge*>(source));
            duplicateLabelsOf(*static_cast<QxDEdge*>(source));
            duplicateConnectors(*static_cast<QxDEdge*>(source));
        });
    }
    QxGEdge::duplicateTopology(source);
}

void QxDEdge::copyEdge(const QxEdge* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    if (source->levelNumber() != levelNumber()) {
        QxGEdge::copyEdge(source, deep);
        return;
    }
    const auto& drawn = *static_cast<const QxDEdge*>(source);
    const Ref alive(*this);
    const Ref sourceAlive(drawn);
    if (deep != 0) {
        emptyTopology();
    }
    Change::run(*this, [&] {
        setFlag(qx::flags::EdgeClipSource, drawn.clipSourceSide());
        setFlag(qx::flags::EdgeClipTarget, drawn.clipTargetSide());
        if (deep != 0) {
            duplicatePath(drawn);
        }
        QxGEdge::copyEdge(source, deep);
        copyDiagramming(drawn);
        actOnEndObjectChange();
        if (deep != 0) {
            duplicateLabelsOf(drawn);
            const_cast<QxDEdge&>(drawn).nullLabelUserFields(true);  // the links to the copies
        }
    });
}

void QxDEdge::copyDiagramming(const QxDEdge& source) {
    qx::internal::linkClone(source, *this, qx::internal::managerOf(source),
                            [](QxDEdge& edge, QxDEdge* clone) { edge.pClonedEdge(clone); });
    graphObjectStatus(source.graphObjectStatus());
    internalOrthogonalRouting(source.internalOrthogonalRouting());
}

void QxDEdge::duplicatePath(const QxDEdge& source) {
    destroyPath();
    setFlag(qx::flags::EdgePathImplied, source.isPathImplied() ? 1 : 0);
    const Path path = source.collectPath();
    QxPEdge* segment =
        path.segments.empty() ? nullptr : linkNewSegment(pSourceNode(), pTargetNode());
    if (segment == nullptr) {
        if (pSourceNode() != nullptr) {
            attachPath(pSourceNode(), pTargetNode());
        }
        return;
    }
    segment->copyEdge(path.segments.front(), 1);
    for (std::size_t i = 0; i < path.bends.size(); ++i) {
        // Where the factory makes no bend, the path runs on to the next one.
        if (QxPNode* bend = breakSegment(segment, path.bends[i]->iCenter())) {
            bend->copyNode(path.bends[i], 1);
            segment = m_targetPathEdge;
            if (i + 1 < path.segments.size()) {
                segment->copyEdge(path.segments[i + 1], 1);
            }
        }
    }
}
