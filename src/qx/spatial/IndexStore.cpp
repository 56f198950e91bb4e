// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/spatial/internal/IndexStore.h"

#include <algorithm>
#include <utility>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/graph/internal/EachObject.h"

namespace qx::internal {

namespace {

QxGraphObject* objectOf(std::uint64_t payload) {
    return reinterpret_cast<QxGraphObject*>(static_cast<std::uintptr_t>(payload));
}

std::uint64_t payloadOf(const QxGraphObject& object) {
    return reinterpret_cast<std::uintptr_t>(&object);
}

template <class Owner, class Act>
void eachLabel(const Owner& owner, const Act& act) {
    if (const QxDList* labels = owner.pLabelList()) {
        for (QxLabel* label : each<QxLabel>(*labels)) {
            act(*label, *indexKindOf(*label));
        }
    }
}

}  // namespace

template <class Act>
void IndexStore::eachObject(const Act& act) const {
    for (QxDNode* node : each<QxDNode>(*m_graph.pNodeList())) {
        act(*node, IndexKind::Node);
        eachLabel(*node, act);
        for (QxInternalConnectorIter connector(node); connector; ++connector) {
            act(*connector.pConnector(), IndexKind::Connector);
            eachLabel(*connector.pConnector(), act);
        }
    }
    eachLabel(m_graph, act);
    for (const QxEdgeDList* list :
         {m_graph.pEdgeList(), m_graph.pDisconnectedEdgeList(), m_graph.pDeactivatedEdgeList()}) {
        for (QxDEdge* edge : each<QxDEdge>(*list)) {
            eachLabel(*edge, act);
            // A client's tree does not hear when a segment is made: there it is made at once.
            if (isOwn() && (edge->flagWord() & flags::EdgePathImplied) != 0) {
                act(*edge, IndexKind::PathEdge);
                continue;
            }
            for (QxDisconnectedPathIter part(edge); part; ++part) {
                act(*part.pEdge(), IndexKind::PathEdge);
                if (part.pNode() != nullptr) {
                    act(*part.pNode(), IndexKind::PathNode);
                }
            }
        }
    }
}

void IndexStore::visitAll(const std::function<void(QxGraphObject&, IndexKind)>& act) const {
    eachObject(act);
}

bool IndexStore::isOwn() const {
    return m_graph.pQuadTree() == &m_tree;
}

std::int32_t IndexStore::slotOf(QxGraphObject& object, IndexKind kind) const {
    if (isOwn()) {
        return IndexSlot::of(object, kind);
    }
    const auto found = m_slots.find(&object);
    return found != m_slots.end() ? found->second : NoIndexSlot;
}

void IndexStore::setSlot(QxGraphObject& object, IndexKind kind, std::int32_t slot) {
    if (isOwn()) {
        m_hasGivenSlots |= slot != NoIndexSlot;
        IndexSlot::of(object, kind) = slot;
        IndexSlot::isRegistered(object, slot != NoIndexSlot);
        if (kind == IndexKind::PathEdge && slot != NoIndexSlot) {
            IndexSlot::trackEdgeOf(object);
        }
    } else if (slot != NoIndexSlot) {
        m_slots[&object] = slot;
    } else {
        m_slots.erase(&object);
    }
}

void IndexStore::takeAll() {
    if (isOwn()) {
        m_engine.clear();
        m_moved.clear();
        m_isPending = true;
    } else {
        build();
    }
}

void IndexStore::clear() {
    m_isPending = false;
    m_hasMissed = false;
    m_moved.clear();
    m_isMoved.clear();
    m_engine.clear();
    m_slots.clear();
    if (isOwn() && std::exchange(m_hasGivenSlots, false)) {
        eachObject(
            [&](QxGraphObject& object, IndexKind kind) { setSlot(object, kind, NoIndexSlot); });
    }
}

void IndexStore::build() {
    // To ask a label of an edge where it is may bring the edge up to date, which tells of its
    // labels.
    m_isPending = true;
    m_hasMissed = false;
    m_slots.clear();
    std::vector<QuadItem> items;
    eachObject([&](QxGraphObject& object, IndexKind kind) {
        if (isExcluded(kind) || !countsInIndex(object, kind)) {
            setSlot(object, kind, NoIndexSlot);
            return;
        }
        setSlot(object, kind, static_cast<std::int32_t>(items.size()));
        items.push_back(
            {indexShapeOf(object, kind), static_cast<unsigned>(kind), payloadOf(object)});
    });
    m_engine.build(items);
    m_moved.clear();
    m_isMoved.clear();
    m_isPending = false;
}

void IndexStore::settle() {
    const bool isLate = isOwn() && m_hasMissed && m_tree.follows();
    if (m_isPending || isLate || m_moved.size() > m_engine.objectCount() / 4 + 64) {
        build();
    } else {
        placeMoved();
    }
    m_changesSinceQuestion = 0;
}

/// Asks the memory for what the moved objects from here on touch, in steps, for what one step
/// brings tells where the next one looks.
void IndexStore::fetchMoved(std::size_t from) const {
    const std::size_t end = std::min(m_moved.size(), from + FetchedAtOnce);
    const auto eachSlot = [&](const auto& act) {
        for (std::size_t i = from; i < end; ++i) {
            if (m_isMoved[m_moved[i]]) {
                act(m_moved[i]);
            }
        }
    };
    eachSlot([&](std::uint32_t slot) { m_engine.fetchSlot(slot); });
    eachSlot([&](std::uint32_t slot) { m_engine.fetchRecord(slot); });
    eachSlot([&](std::uint32_t slot) {
        fetchForShape(*objectOf(m_engine.payload(slot)),
                      static_cast<IndexKind>(m_engine.kind(slot)));
    });
}

void IndexStore::placeMoved() {
    for (std::size_t i = 0; i < m_moved.size(); ++i) {  // which may grow, see build()
        if (i % FetchedAtOnce == 0) {
            fetchMoved(i);
        }
        const std::uint32_t slot = m_moved[i];
        if (m_isMoved[slot]) {
            m_isMoved[slot] = false;
            const auto kind = static_cast<IndexKind>(m_engine.kind(slot));
            const QuadShape shape = indexShapeOf(*objectOf(m_engine.payload(slot)), kind);
            m_engine.update(slot, shape);
        }
    }
    m_moved.clear();
}

bool IndexStore::holds(QxGraphObject& object, IndexKind kind) {
    return !m_isPending && slotOf(object, kind) != NoIndexSlot;
}

void IndexStore::add(QxGraphObject& object, IndexKind kind) {
    if (isExcluded(kind) || holds(object, kind) || !countsInIndex(object, kind)) {
        return;
    }
    const QuadShape shape = indexShapeOf(object, kind);
    if (holds(object, kind)) {
        return;  // see build()
    }
    const std::uint32_t slot =
        m_engine.insert(shape, static_cast<unsigned>(kind), payloadOf(object));
    if (slot < m_isMoved.size()) {
        m_isMoved[slot] = false;
    }
    setSlot(object, kind, static_cast<std::int32_t>(slot));
}

void IndexStore::remove(QxGraphObject& object, IndexKind kind) {
    if (holds(object, kind)) {
        const auto slot = static_cast<std::uint32_t>(slotOf(object, kind));
        m_engine.remove(slot);
        if (slot < m_isMoved.size()) {
            m_isMoved[slot] = false;
        }
        setSlot(object, kind, NoIndexSlot);
    }
}

void IndexStore::markMoved(std::int32_t slot) {
    const auto index = static_cast<std::size_t>(slot);
    if (index >= m_isMoved.size()) {
        m_isMoved.resize(m_engine.objectCount() + index + 1);
    }
    if (!m_isMoved[index]) {
        m_isMoved[index] = true;
        m_moved.push_back(static_cast<std::uint32_t>(slot));
    }
}

void IndexStore::countChange() {
    // So many changes between two questions cost more one by one than a new tree.
    if (++m_changesSinceQuestion > m_engine.objectCount() / 2 + 4096) {
        takeAll();
    }
}

void IndexStore::changed(QxGraphObject& object, IndexKind kind, bool follows) {
    if (m_isPending || isExcluded(kind)) {
        return;
    }
    const std::int32_t slot = IndexSlot::of(object, kind);
    const bool counts = countsInIndex(object, kind);
    if (!follows) {
        m_hasMissed = true;  // questions pass over what has ceased to count
    } else if (slot != NoIndexSlot && !counts) {
        ended(object, kind);
    } else if (slot != NoIndexSlot) {
        markMoved(slot);
    } else if (counts) {
        add(object, kind);
        countChange();
    }
}

void IndexStore::ended(QxGraphObject& object, IndexKind kind) {
    if (m_isPending) {
        setSlot(object, kind, NoIndexSlot);
    } else if (IndexSlot::of(object, kind) != NoIndexSlot) {
        remove(object, kind);
        countChange();
    }
}

void IndexStore::replace(QxGraphObject& object, QxGraphObject& by, IndexKind kind) {
    const std::int32_t slot = IndexSlot::of(object, kind);
    if (m_isPending || slot == NoIndexSlot) {
        setSlot(object, kind, NoIndexSlot);
        return;
    }
    remove(by, kind);
    m_engine.rename(static_cast<std::uint32_t>(slot), payloadOf(by));
    setSlot(object, kind, NoIndexSlot);
    setSlot(by, kind, slot);
}

void IndexStore::becomeOwn() {
    for (const auto& [object, slot] : std::exchange(m_slots, {})) {
        const auto kind = static_cast<IndexKind>(m_engine.kind(static_cast<std::uint32_t>(slot)));
        setSlot(*const_cast<QxGraphObject*>(object), kind, slot);
    }
}

std::size_t IndexStore::sizeOf() const {
    return sizeof(*this) - sizeof(m_engine) + m_engine.sizeOf() +
           m_moved.capacity() * sizeof(std::uint32_t) + m_isMoved.capacity() / 8 +
           m_slots.size() * (sizeof(decltype(m_slots)::value_type) + 2 * sizeof(void*));
}

}  // namespace qx::internal
