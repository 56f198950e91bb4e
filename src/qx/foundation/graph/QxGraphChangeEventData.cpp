// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxGraphChangeEventData.h"

#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraphManager.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/foundation/graph/internal/ObjectOfKind.h"

using qx::internal::objectOfKind;

namespace {

constexpr std::int32_t Insertions = GraphInserted | NodeInserted | EdgeInserted;
constexpr std::int32_t Removals =
    GraphRemoved | NodeRemoved | EdgeRemoved | GraphDiscarded | NodeDiscarded | EdgeDiscarded;
constexpr std::int32_t Departures = Removals | Insertions;  // from one owner straight to another
constexpr std::int32_t EdgeDepartures = EdgeInserted | EdgeRemoved | EdgeDiscarded;
constexpr std::int32_t States = EdgeConnected | EdgeDisconnected | EdgeActivated | EdgeDeactivated;
constexpr std::int32_t Ends = EdgeEndsChanged | EdgeReversed;

QxGraph* graphIn(QxGraphObject* object) {
    return objectOfKind<QxGraph>(object, &QxGraphObject::isGraph);
}

QxGraphManager* managerIn(QxGraphObject* object) {
    return objectOfKind<QxGraphManager>(object, &QxGraphObject::isGraphManager);
}

const wchar_t* pointerTo(const std::optional<std::wstring>& name) {
    return name.has_value() ? name->c_str() : nullptr;
}

}  // namespace

QxGraphChangeEventData::QxGraphChangeEventData(QxGraphObject* source) : QxSingleEventData(source) {}

QxGraphChangeEventData::QxGraphChangeEventData(QxGraphObject* source, const Standing& before,
                                               const Standing& after)
    : QxSingleEventData(source), m_before(before), m_after(after) {}

QxGraphChangeEventData::QxGraphChangeEventData(QxGraphObject* source, QxGraphListEnum list,
                                               const QxDList& order)
    : QxSingleEventData(source), m_list(list), m_order(order) {}

QxGraphChangeEventData::QxGraphChangeEventData(const QxGraphChangeEventData& source,
                                               QxDeepFlagEnum deep)
    : QxSingleEventData(source, deep),
      m_before(source.m_before),
      m_after(source.m_after),
      m_list(source.m_list),
      m_order(source.m_order) {}

QxGraphChangeEventData& QxGraphChangeEventData::operator=(const QxGraphChangeEventData& source) {
    copyObject(&source);
    return *this;
}

void QxGraphChangeEventData::copyObject(const QxObject* source) {
    copyAttributes(source);
}

void QxGraphChangeEventData::copyAttributes(const QxObject* source) {
    const auto* data = dynamic_cast<const QxGraphChangeEventData*>(source);
    if (data != nullptr && data != this) {
        QxSingleEventData::copyAttributes(data);
        m_before = data->m_before;
        m_after = data->m_after;
        m_list = data->m_list;
        m_order = data->m_order;
    }
}

const QxGraphChangeEventData::Standing& QxGraphChangeEventData::before(std::int32_t types) const {
    static const Standing nothing;
    return isOfType(types) ? m_before : nothing;
}

const QxGraphChangeEventData::Standing& QxGraphChangeEventData::after(std::int32_t types) const {
    static const Standing nothing;
    return isOfType(types) ? m_after : nothing;
}

QxNode* QxGraphChangeEventData::pSourceNode() const {
    return objectOfKind<QxNode>(static_cast<QxGraphObject*>(pSource()), &QxGraphObject::isNode);
}

QxEdge* QxGraphChangeEventData::pSourceEdge() const {
    return objectOfKind<QxEdge>(static_cast<QxGraphObject*>(pSource()), &QxGraphObject::isEdge);
}

QxGraph* QxGraphChangeEventData::pSourceGraph() const {
    return graphIn(static_cast<QxGraphObject*>(pSource()));
}

QxGraphManager* QxGraphChangeEventData::pSourceGraphManager() const {
    return managerIn(static_cast<QxGraphObject*>(pSource()));
}

QxGraph* QxGraphChangeEventData::pOldOwnerGraph() const {
    return graphIn(before(Departures).owner);
}

QxGraph* QxGraphChangeEventData::pNewOwnerGraph() const {
    return graphIn(after(Insertions).owner);
}

QxGraphManager* QxGraphChangeEventData::pOldOwnerManager() const {
    return managerIn(before(Departures).owner);
}

QxGraphManager* QxGraphChangeEventData::pNewOwnerManager() const {
    return managerIn(after(Insertions).owner);
}

QxGraphObject* QxGraphChangeEventData::pOldPrevious() const {
    return before(Departures | States).previous;
}

QxGraphObject* QxGraphChangeEventData::pOldNext() const {
    return before(Departures | States).next;
}

QxGraphObject* QxGraphChangeEventData::pNewPrevious() const {
    return after(Insertions | States).previous;
}

QxGraphObject* QxGraphChangeEventData::pNewNext() const {
    return after(Insertions | States).next;
}

QxNode* QxGraphChangeEventData::pOldSourceNode() const {
    return before(EdgeDepartures | Ends).source;
}

QxNode* QxGraphChangeEventData::pOldTargetNode() const {
    return before(EdgeDepartures | Ends).target;
}

QxNode* QxGraphChangeEventData::pNewSourceNode() const {
    return after(EdgeInserted | Ends).source;
}

QxNode* QxGraphChangeEventData::pNewTargetNode() const {
    return after(EdgeInserted | Ends).target;
}

QxEdgeStateEnum QxGraphChangeEventData::oldEdgeState() const {
    return before(EdgeDepartures | States).state;
}

QxEdgeStateEnum QxGraphChangeEventData::newEdgeState() const {
    return after(EdgeInserted | States).state;
}

QxGraph* QxGraphChangeEventData::pOldChildGraph() const {
    return before(ChildGraphChanged).childGraph;
}

QxGraph* QxGraphChangeEventData::pNewChildGraph() const {
    return after(ChildGraphChanged).childGraph;
}

const wchar_t* QxGraphChangeEventData::pOldNameString() const {
    return pointerTo(before(NameChanged).name);
}

const wchar_t* QxGraphChangeEventData::pNewNameString() const {
    return pointerTo(after(NameChanged).name);
}

QxGraphListEnum QxGraphChangeEventData::changedList() const {
    return isOfType(GraphOrderChanged) ? m_list : QxNoList;
}

const QxDList* QxGraphChangeEventData::pOrder() const {
    return isOfType(GraphOrderChanged) ? &m_order : nullptr;
}

QxObject* QxGraphChangeEventData::pFormerParentEventSource() const {
    return before(Departures).owner;
}

void QxGraphChangeEventData::appendNamedObjects(std::vector<QxObject*>& objects) const {
    QxSingleEventData::appendNamedObjects(objects);
    for (const Standing* standing : {&m_before, &m_after}) {
        objects.insert(objects.end(), {standing->owner, standing->previous, standing->next,
                                       standing->source, standing->target, standing->childGraph});
    }
    for (const QxDListCell* cell = m_order.pFirstCell(); cell != nullptr;
         cell = cell->pNextCell()) {
        objects.push_back(cell->pObject());
    }
}

QxObject* QxGraphChangeEventData::vCloneObject() const {
    return new QxGraphChangeEventData(*this, QxDeepCopy);
}

QxObject* QxGraphChangeEventData::vCloneAttributes() const {
    return new QxGraphChangeEventData(*this, QxAttributeCopy);
}
