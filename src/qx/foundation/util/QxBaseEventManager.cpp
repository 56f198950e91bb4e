// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxBaseEventManager.h"

#include <bit>
#include <utility>

#include "qx/foundation/util/QxEventListener.h"
#include "qx/foundation/util/QxGroupEventData.h"
#include "qx/foundation/util/internal/EventDelivery.h"

using qx::internal::EventDelivery;
using qx::internal::EventHearing;
using qx::internal::Ref;

/// Lets the manager know a delivery while listeners are called from it, so that those who leave
/// meanwhile are not called any more.
class QxBaseEventManager::RunningDelivery {
public:
    RunningDelivery(QxBaseEventManager& manager, EventDelivery& delivery) : m_manager(manager) {
        delivery.outer = std::exchange(m_manager.m_running, &delivery);
    }
    RunningDelivery(const RunningDelivery&) = delete;
    RunningDelivery& operator=(const RunningDelivery&) = delete;
    ~RunningDelivery() {
        m_manager.m_running = m_manager.m_running->outer;
        m_manager.freeRetiredWhenIdle();
    }

private:
    QxBaseEventManager& m_manager;
};

QxBaseEventManager::QxBaseEventManager()
    : m_registry(std::make_unique<qx::internal::EventRegistry>(*this)),
      m_pending(std::make_unique<EventDelivery>()) {}

QxBaseEventManager::~QxBaseEventManager() {
    // Objects that only the batch kept alive go while the manager can still be asked.
    m_firesEvents = false;
    EventDelivery forgotten;
    forgotten.append(*m_pending, 0);
}

void QxBaseEventManager::registerDefaultEventClasses() {}

int QxBaseEventManager::registerEventClass(std::int32_t category) {
    if (category < 0 || category >= qx::internal::EventRegistry::CategoryLimit) {
        return 0;
    }
    m_categories |= 1U << category;
    return 1;
}

bool QxBaseEventManager::isRegistered(std::int32_t category) {
    if (!m_hasDefaults) {
        m_hasDefaults = true;
        registerDefaultEventClasses();
    }
    return category >= 0 && category < qx::internal::EventRegistry::CategoryLimit &&
           (m_categories >> category & 1U) != 0;
}

int QxBaseEventManager::addListener(const QxObject* source, QxEventListener* listener,
                                    std::int32_t typeMask, std::int32_t category) {
    if (source == nullptr || listener == nullptr || typeMask == 0 || !isRegistered(category)) {
        return 0;
    }
    m_registry->add(source, listener, static_cast<std::uint32_t>(typeMask), category);
    refreshHeard(category);
    return 1;
}

int QxBaseEventManager::removeListener(const QxObject* source, const QxEventListener* listener,
                                       std::int32_t typeMask, std::int32_t category) {
    return listener != nullptr ? removeListeners(source, listener, typeMask, category) : 0;
}

int QxBaseEventManager::removeAllListeners(const QxObject* source, std::int32_t typeMask,
                                           std::int32_t category) {
    return removeListeners(source, nullptr, typeMask, category);
}

/// A null listener stands for all. Registrations at a discarded source are gone already, but what
/// was fired before still waits for their listeners.
int QxBaseEventManager::removeListeners(const QxObject* source, const QxEventListener* listener,
                                        std::int32_t typeMask, std::int32_t category) {
    if (!isRegistered(category)) {
        return 0;
    }
    const int removed =
        m_registry->remove(source, listener, static_cast<std::uint32_t>(typeMask), category);
    if (removed != 0) {
        refreshHeard(category);
    }
    const int silenced = silence([&](const EventHearing& hearing, const QxEvent& event) {
        return (listener == nullptr || hearing.listener == listener) && hearing.at == source &&
               event.eventCategoryID() == category && (event.type() & typeMask) != 0;
    });
    return removed | silenced;
}

void QxBaseEventManager::eventSourceDiscarded(const QxObject* source) {
    if (m_registry->isEmpty() != 0 || m_registry->retireSource(source) == 0) {
        return;
    }
    refreshAllHeard();
    freeRetiredWhenIdle();
}

void QxBaseEventManager::listenerDestroyed(QxEventListener* listener) {
    m_registry->removeListener(listener);
    refreshAllHeard();
    silence(
        [&](const EventHearing& hearing, const QxEvent&) { return hearing.listener == listener; });
}

/// Returns 1 when it kept anyone from being called.
template <class Matches>
int QxBaseEventManager::silence(const Matches& matches) {
    int silenced = 0;
    const auto silenceIn = [&](EventDelivery& delivery) {
        for (EventHearing& hearing : delivery.hearings) {
            if (hearing.listener != nullptr && matches(hearing, *delivery.events[hearing.event])) {
                hearing.listener = nullptr;
                silenced = 1;
            }
        }
    };
    silenceIn(*m_pending);
    for (EventDelivery* delivery = m_running; delivery != nullptr; delivery = delivery->outer) {
        silenceIn(*delivery);
    }
    return silenced;
}

int QxBaseEventManager::fireEvent(QxEvent* event, int) {
    if (event == nullptr) {
        return 0;
    }
    EventDelivery delivery;
    delivery.events.push_back(Ref<QxEvent>::adopt(event));
    if (!m_firesEvents || !isRegistered(event->eventCategoryID())) {
        return 0;
    }
    if (hears(event->eventCategoryID(), event->type()) != 0) {
        m_registry->collect(*event, delivery.hearings);
    }
    if (delivery.hearings.empty()) {
        return 1;
    }
    const bool canWait = event->pData()->retainObjects() != 0;
    const std::size_t vetoable = delivery.putVetoableFirst();
    const RunningDelivery running(*this, delivery);
    if (isVetoed(delivery, vetoable)) {
        return 0;
    }
    if (vetoable == delivery.hearings.size()) {
        return 1;
    }
    if (isCollecting() != 0 && canWait) {
        m_pending->append(delivery, vetoable);
    } else {
        // An event that cannot wait for the end of the batch must not overtake what waits.
        tellPending();
        tell(delivery, vetoable);
    }
    return 1;
}

bool QxBaseEventManager::isVetoed(EventDelivery& delivery, std::size_t vetoable) {
    for (std::size_t i = 0; i < vetoable; ++i) {
        QxEventListener* const listener = std::exchange(delivery.hearings[i].listener, nullptr);
        if (listener != nullptr && fireVeto(listener, delivery.events.front().get()) != 0) {
            return true;
        }
    }
    return false;
}

void QxBaseEventManager::tell(EventDelivery& delivery, std::size_t first) {
    for (std::size_t i = first; i < delivery.hearings.size(); ++i) {
        if (auto* const listener = std::exchange(delivery.hearings[i].listener, nullptr)) {
            fireNotification(listener, delivery.events.front().get());
        }
    }
}

void QxBaseEventManager::tellPending() {
    if (m_pending->events.empty()) {
        return;
    }
    EventDelivery batch;
    batch.append(*m_pending, 0);
    const RunningDelivery running(*this, batch);
    for (const qx::internal::EventGroup& group : groupHearings(batch, m_preservesOrder)) {
        tellGroup(batch, group);
    }
}

void QxBaseEventManager::tellGroup(EventDelivery& batch, const qx::internal::EventGroup& group) {
    const auto data = Ref<QxGroupEventData>::adopt(new QxGroupEventData);
    const QxEvent* first = nullptr;
    QxEventListener* listener = nullptr;
    std::int32_t types = 0;
    for (const std::size_t index : group.hearings) {
        EventHearing& hearing = batch.hearings[index];
        if (hearing.listener == nullptr) {
            continue;
        }
        const QxEvent& event = *batch.events[hearing.event];
        listener = std::exchange(hearing.listener, nullptr);
        first = first != nullptr ? first : &event;
        types |= event.type();
        data->appendData(event.pData());
    }
    if (listener == nullptr) {
        return;
    }
    const auto told = Ref<QxEvent>::adopt(first->cloneAttributes());
    told->pData(Ref<QxGroupEventData>(data).handOver());
    told->type(types);
    fireNotification(listener, told.get());
}

int QxBaseEventManager::coalesce(int value) {
    m_coalesces = value != 0;
    tellPendingUnlessCollecting();
    return coalesce();
}

int QxBaseEventManager::coalescingDisabled(int value) {
    m_coalescingDisabled = value != 0;
    tellPendingUnlessCollecting();
    return coalescingDisabled();
}

int QxBaseEventManager::closeBatch() {
    if (m_batchDepth > 0) {
        --m_batchDepth;
        tellPendingUnlessCollecting();
    }
    return m_batchDepth;
}

void QxBaseEventManager::tellPendingUnlessCollecting() {
    if (isCollecting() == 0) {
        tellPending();
    }
}

void QxBaseEventManager::fireNotification(QxEventListener*, QxEvent*) {}

int QxBaseEventManager::fireVeto(QxEventListener*, QxEvent*) {
    return 0;
}

void QxBaseEventManager::refreshHeard(std::int32_t category) {
    m_heard[static_cast<std::size_t>(category)] = m_registry->heard(category);
}

void QxBaseEventManager::refreshAllHeard() {
    for (std::uint32_t rest = m_categories; rest != 0; rest &= rest - 1) {
        refreshHeard(std::countr_zero(rest));
    }
}

void QxBaseEventManager::freeRetiredWhenIdle() {
    if (m_running == nullptr && m_pending->events.empty()) {
        m_registry->freeRetired();
    }
}
