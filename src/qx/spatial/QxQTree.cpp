// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Registration: which objects go into the tree and out of it, and when.

#include "qx/spatial/QxQTree.h"

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/spatial/internal/IndexStore.h"

using qx::internal::each;
using qx::internal::indexGraphOf;
using qx::internal::IndexKind;
using qx::internal::indexKindOf;
using qx::internal::IndexStore;

QxQTree::QxQTree(QxDGraph* graph, unsigned short excluded)
    : m_graph(graph),
      m_excluded(excluded),
      m_store(std::make_unique<IndexStore>(*this, *graph, excluded)) {}

QxQTree::~QxQTree() = default;

bool QxQTree::follows() const {
    return updateDisabled() == 0 && !m_ignoring && m_graph->useQuadTree() != 0;
}

void QxQTree::addInfo(QxGraphObject* object) {
    const auto kind = object != nullptr ? indexKindOf(*object) : std::nullopt;
    if (kind && indexGraphOf(*object, *kind) == m_graph) {
        m_store->settle();
        m_store->add(*object, *kind);
    }
}

void QxQTree::discardInfo(QxGraphObject* object) {
    const auto kind = object != nullptr ? indexKindOf(*object) : std::nullopt;
    if (kind && (indexGraphOf(*object, *kind) == m_graph || !m_store->isOwn())) {
        m_store->settle();
        m_store->remove(*object, *kind);
    }
}

void QxQTree::updateInfo(QxGraphObject* object) {
    discardInfo(object);
    addInfo(object);
}

void QxQTree::discardObject(QxQTreeObject* record) {
    if (record != nullptr) {
        discardInfo(record->pGraphObject());
        tryToCurtailRoot();
    }
}

void QxQTree::tryToCurtailRoot() {}

void QxQTree::eachOfEdge(QxDEdge* edge, Registration act) {
    for (QxDisconnectedPathIter part(edge); part; ++part) {
        (this->*act)(part.pEdge());
        if (part.pNode() != nullptr) {
            (this->*act)(part.pNode());
        }
    }
}

void QxQTree::eachOfNode(QxDNode* node, Registration act) {
    for (const QxEdgeDList* list : {node->pInEdgeList(), node->pOutEdgeList()}) {
        for (QxDEdge* edge : each<QxDEdge>(*list)) {
            QxDGraph* graph = edge->pOwnerGraph();
            if (QxQTree* tree = graph == m_graph ? this : graph->pQuadTree()) {
                tree->eachOfEdge(edge, act);
            }
        }
    }
    (this->*act)(node);
}

void QxQTree::eachOfBend(QxPNode* bend, Registration act) {
    for (QxEdge* segment : {bend->pFirstInEdge(), bend->pFirstOutEdge()}) {
        (this->*act)(segment);
    }
    (this->*act)(bend);
}

void QxQTree::addDNodeInfo(QxDNode* node) {
    if (node != nullptr) {
        eachOfNode(node, &QxQTree::addInfo);
    }
}

void QxQTree::updateDNodeInfo(QxDNode* node) {
    if (node != nullptr) {
        eachOfNode(node, &QxQTree::updateInfo);
    }
}

void QxQTree::discardDNodeInfo(QxDNode* node) {
    if (node != nullptr) {
        eachOfNode(node, &QxQTree::discardInfo);
    }
}

void QxQTree::updateGNodeInfo(QxGNode* node) {
    if (node != nullptr && node->isPathNode() != 0) {
        updatePNodeInfo(static_cast<QxPNode*>(node));
    } else {
        updateDNodeInfo(static_cast<QxDNode*>(node));
    }
}

void QxQTree::addDEdgeInfo(QxDEdge* edge) {
    if (edge != nullptr) {
        eachOfEdge(edge, &QxQTree::addInfo);
    }
}

void QxQTree::updateDEdgeInfo(QxDEdge* edge) {
    if (edge != nullptr) {
        eachOfEdge(edge, &QxQTree::updateInfo);
    }
}

void QxQTree::discardDEdgeInfo(QxDEdge* edge) {
    if (edge != nullptr) {
        eachOfEdge(edge, &QxQTree::discardInfo);
    }
}

void QxQTree::addPNodeInfo(QxPNode* bend) {
    if (bend != nullptr && bend->degree() > 0) {
        eachOfBend(bend, &QxQTree::addInfo);
    }
}

void QxQTree::updatePNodeInfo(QxPNode* bend) {
    if (bend != nullptr) {
        eachOfBend(bend, &QxQTree::updateInfo);
    }
}

void QxQTree::discardPNodeInfo(QxPNode* bend) {
    if (bend != nullptr) {
        eachOfBend(bend, &QxQTree::discardInfo);
    }
}

void QxQTree::updatePEdgeInfo(QxPEdge* segment) {
    updateInfo(segment);
}

void QxQTree::addDGraphInfo() {
    dirty(0);
    m_store->takeAll();
}

void QxQTree::updateDGraphInfo() {
    m_store->takeAll();
}

void QxQTree::discardDGraphInfo() {
    m_store->clear();
}

void QxQTree::update() {
    if (needsUpdate() == 0) {
        m_ignoring = false;
        needsUpdateCopy(0);
        useSpecial(0);
        needsUpdate(1);
        addDGraphInfo();
    }
}

void QxQTree::ignoreGeometryChanges(int on) {
    m_ignoring = on != 0;
    if (m_ignoring) {
        needsUpdateCopy(needsUpdate());
        needsUpdate(0);
    } else {
        needsUpdate(needsUpdateCopy());
        needsUpdateCopy(0);
        useSpecial(0);
    }
}

void QxQTree::duplicateTopology(QxQTree* source) {
    if (source != nullptr && source != this) {
        m_flags = source->m_flags;
        m_ignoring = source->m_ignoring;
        m_excluded = source->m_excluded;
        m_store->clear();
        m_store = std::make_unique<IndexStore>(*this, *m_graph, m_excluded);
        addDGraphInfo();
    }
}

std::size_t QxQTree::sizeOf() const {
    return sizeof(*this) + m_store->sizeOf();
}

void QxQTree::resetQuadTreeFlags(QxDList*) {}
