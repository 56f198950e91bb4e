// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/internal/GraphChange.h"

#include <utility>

#include "qx/foundation/graph/QxAFactory.h"
#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxEventManager.h"
#include "qx/foundation/graph/QxGraphChangeEvent.h"
#include "qx/foundation/graph/QxGraphChangeEventData.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/foundation/util/internal/Ref.h"

namespace qx::internal {

namespace {

using Standing = QxGraphChangeEventData::Standing;

constexpr std::int32_t Insertions = GraphInserted | NodeInserted | EdgeInserted;
constexpr std::int32_t Removals =
    GraphRemoved | NodeRemoved | EdgeRemoved | GraphDiscarded | NodeDiscarded | EdgeDiscarded;
constexpr std::int32_t States = EdgeConnected | EdgeDisconnected | EdgeActivated | EdgeDeactivated;

QxEventManager* managerThatHears(const QxGraphObject& at, QxGraphChangeEventTypeEnum type) {
    const QxAFactory* const factory = at.pFactory();
    // Nobody can listen before the event manager has been asked for.
    QxEventManager* const manager = factory != nullptr ? factory->pQueryEventManager() : nullptr;
    return manager != nullptr && manager->hears(QxGraphChangeEvent::CategoryID, type) != 0
               ? manager
               : nullptr;
}

QxGraphObject* objectIn(const QxDListCell* cell) {
    return cell != nullptr ? static_cast<QxGraphObject*>(cell->pObject()) : nullptr;
}

QxEdgeStateEnum stateOf(const QxEdge& edge) {
    return edge.deactivated() != 0 ? QxEdgeIsDeactivated
           : edge.connected() != 0 ? QxEdgeIsConnected
                                   : QxEdgeIsDisconnected;
}

/// Whether the change is (still) one, as things stand.
bool stands(QxGraphChangeEventTypeEnum type, const QxGraphObject& at, const Standing& before,
            const Standing& after) {
    if ((type & Insertions) != 0) {
        return after.owner == &at;
    }
    if ((type & Removals) != 0) {
        // Into a graph that no manager lists is out, as far as anybody hears.
        return after.owner == nullptr ||
               (after.owner != before.owner && after.owner->pFactory() == nullptr);
    }
    if ((type & States) != 0) {
        const QxEdgeStateEnum wanted = type == EdgeDisconnected  ? QxEdgeIsDisconnected
                                       : type == EdgeDeactivated ? QxEdgeIsDeactivated
                                                                 : QxEdgeIsConnected;
        return after.owner == before.owner && after.state == wanted;
    }
    if (type == EdgeReversed) {
        return after.owner == before.owner;
    }
    if (type == EdgeEndsChanged) {
        return after.owner == before.owner &&
               (after.source != before.source || after.target != before.target);
    }
    return before.childGraph != after.childGraph || before.name != after.name;
}

/// Labels, connectors and the parts of paths have events of their own layer.
bool belongsToGraph(const QxGraphObject& object) {
    return object.isGraph() != 0 || object.isGraphManager() != 0 ||
           ((object.isNode() != 0 || object.isEdge() != 0) &&
            (object.flagWord() & qx::flags::PathObject) == 0);
}

}  // namespace

Standing GraphChange::standingOf(const QxGraphObject& object, QxGraphChangeEventTypeEnum type) {
    Standing standing;
    if (object.ownerValid() != 0) {
        standing.owner = static_cast<QxGraphObject*>(object.pOwner());
        if (object.isGraphManager() == 0) {
            const QxDListCell& cell = object.isGraph() != 0
                                          ? static_cast<const QxGraph&>(object).m_managerCell
                                          : static_cast<const QxGraphMember&>(object).m_ownerCell;
            standing.previous = objectIn(cell.pPreviousCell());
            standing.next = objectIn(cell.pNextCell());
        }
    }
    if (object.isEdge() != 0) {
        const auto& edge = static_cast<const QxEdge&>(object);
        standing.source = edge.pSourceNode();
        standing.target = edge.pTargetNode();
        standing.state = stateOf(edge);
    }
    if (type == ChildGraphChanged) {
        standing.childGraph = static_cast<const QxGraphMember&>(object).pChildGraph();
    }
    if (const wchar_t* name = type == NameChanged ? object.pNameString() : nullptr) {
        standing.name = name;
    }
    return standing;
}

struct GraphChange::Story {
    QxEventManager* manager;
    QxGraphChangeEventTypeEnum type;
    Ref<const QxGraphObject> at;
    Ref<QxGraphObject> object;
    Standing before;
    /// What `before` names.
    Snapshot<QxGraphObject> alive;
};

GraphChange::GraphChange() noexcept = default;
GraphChange::GraphChange(GraphChange&& other) noexcept = default;
GraphChange& GraphChange::operator=(GraphChange&& other) noexcept = default;
GraphChange::~GraphChange() = default;

GraphChange::GraphChange(const QxGraphObject& at, QxGraphObject& object,
                         QxGraphChangeEventTypeEnum type) {
    QxEventManager* const manager = managerThatHears(at, type);
    if (manager == nullptr || !belongsToGraph(object)) {
        return;
    }
    m_story = std::make_unique<Story>(
        Story{manager, type, Ref<const QxGraphObject>(at), Ref<QxGraphObject>(object), {}, {}});
    Standing& before = m_story->before = standingOf(object, type);
    if ((type & Insertions) != 0 && before.owner == &at) {
        before.owner = nullptr;  // an intergraph is made as what it is
    }
    for (QxGraphObject* named :
         {before.owner, before.previous, before.next, static_cast<QxGraphObject*>(before.source),
          static_cast<QxGraphObject*>(before.target),
          static_cast<QxGraphObject*>(before.childGraph)}) {
        m_story->alive.add(named);
    }
}

void GraphChange::tell() {
    const std::unique_ptr<Story> story = std::move(m_story);
    if (!story || story->manager->hears(QxGraphChangeEvent::CategoryID, story->type) == 0) {
        return;
    }
    const Standing after = standingOf(*story->object, story->type);
    if (stands(story->type, *story->at, story->before, after)) {
        auto* data = new QxGraphChangeEventData(story->object.get(), story->before, after);
        story->manager->fireEvent(new QxGraphChangeEvent(story->type, data), 0);
    }
}

bool hearsGraphChange(const QxGraphObject& at, QxGraphChangeEventTypeEnum type) {
    return managerThatHears(at, type) != nullptr;
}

void tellOrderChanged(QxGraphObject& object, QxGraphListEnum which, const QxDList& list) {
    if (QxEventManager* const manager = managerThatHears(object, GraphOrderChanged)) {
        auto* data = new QxGraphChangeEventData(&object, which, list);
        manager->fireEvent(new QxGraphChangeEvent(GraphOrderChanged, data), 0);
    }
}

}  // namespace qx::internal
