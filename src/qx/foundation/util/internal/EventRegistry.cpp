// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/internal/EventRegistry.h"

#include <algorithm>
#include <bit>

#include "qx/foundation/util/QxEvent.h"
#include "qx/foundation/util/QxEventData.h"
#include "qx/foundation/util/QxEventListener.h"

namespace qx::internal {

EventRegistry::~EventRegistry() {
    freeRetired();
    for (auto& [source, registrations] : m_atSource) {
        for (auto& registration : registrations) {
            unlink(*registration);
        }
    }
}

void EventRegistry::add(const QxObject* source, QxEventListener* listener, std::uint32_t mask,
                        std::int32_t category) {
    Registrations& registrations = m_atSource[source];
    auto found =
        std::find_if(registrations.begin(), registrations.end(), [&](const auto& registration) {
            return registration->listener == listener && registration->category == category;
        });
    if (found == registrations.end()) {
        registrations.push_back(std::make_unique<EventRegistration>(EventRegistration{
            &m_manager, source, listener, category, 0, ++m_lastSequence, nullptr, nullptr}));
        found = std::prev(registrations.end());
        link(**found);
    }
    EventRegistration& registration = **found;
    count(registration, mask & ~registration.mask, +1);
    registration.mask |= mask;
}

int EventRegistry::remove(const QxObject* source, const QxEventListener* listener,
                          std::uint32_t mask, std::int32_t category) {
    const auto found = m_atSource.find(source);
    if (found == m_atSource.end()) {
        return 0;
    }
    int changed = 0;
    std::erase_if(found->second, [&](const auto& registration) {
        const bool isMeant = (listener == nullptr || registration->listener == listener) &&
                             registration->category == category;
        if (!isMeant || (registration->mask & mask) == 0) {
            return false;
        }
        changed = 1;
        count(*registration, registration->mask & mask, -1);
        registration->mask &= ~mask;
        if (registration->mask == 0) {
            unlink(*registration);
        }
        return registration->mask == 0;
    });
    if (found->second.empty()) {
        m_atSource.erase(found);
    }
    return changed;
}

int EventRegistry::retireSource(const QxObject* source) {
    const auto found = m_atSource.find(source);
    if (found == m_atSource.end()) {
        return 0;
    }
    for (auto& registration : found->second) {
        count(*registration, registration->mask, -1);
        registration->mask = 0;
        m_retired.push_back(std::move(registration));
    }
    m_atSource.erase(found);
    return 1;
}

void EventRegistry::freeRetired() {
    for (auto& registration : m_retired) {
        unlink(*registration);
    }
    m_retired.clear();
}

void EventRegistry::removeListener(QxEventListener* listener) {
    std::erase_if(m_retired, [&](const auto& registration) {
        if (registration->listener != listener) {
            return false;
        }
        unlink(*registration);
        return true;
    });
    EventRegistration* registration = listener->m_registrations;
    while (registration != nullptr) {
        EventRegistration* const next = registration->next;
        if (registration->manager == &m_manager) {
            // Frees this registration alone: a listener has one per source and category.
            remove(registration->source, listener, registration->mask, registration->category);
        }
        registration = next;
    }
}

std::uint32_t EventRegistry::heard(std::int32_t category) const {
    const auto& counts = m_counts[static_cast<std::size_t>(category)];
    std::uint32_t types = 0;
    for (std::size_t bit = 0; bit < counts.size(); ++bit) {
        types |= counts[bit] != 0 ? 1U << bit : 0U;
    }
    return types;
}

void EventRegistry::collect(const QxEvent& event, std::vector<EventHearing>& hearings) const {
    const std::size_t first = hearings.size();
    if (const QxEventData* data = event.pData()) {
        collectAlong(data->pSource(), event, hearings);
        collectAlong(data->pFormerParentEventSource(), event, hearings);
    }
    for (std::size_t i = first; i < hearings.size(); ++i) {
        hearings[i].listener->m_isCollected = false;
    }
}

void EventRegistry::collectAlong(const QxObject* source, const QxEvent& event,
                                 std::vector<EventHearing>& hearings) const {
    const auto type = static_cast<std::uint32_t>(event.type());
    for (; source != nullptr; source = source->pParentEventSource()) {
        const auto found = m_atSource.find(source);
        if (found == m_atSource.end()) {
            continue;
        }
        for (const auto& registration : found->second) {
            QxEventListener* const listener = registration->listener;
            if (registration->category == event.eventCategoryID() &&
                (registration->mask & type) != 0 && !listener->m_isCollected) {
                listener->m_isCollected = true;
                hearings.push_back({source, listener, registration->sequence, 0});
            }
        }
    }
}

void EventRegistry::count(const EventRegistration& registration, std::uint32_t types, int step) {
    auto& counts = m_counts[static_cast<std::size_t>(registration.category)];
    for (; types != 0; types &= types - 1) {
        counts[static_cast<std::size_t>(std::countr_zero(types))] +=
            static_cast<std::uint32_t>(step);
    }
}

void EventRegistry::link(EventRegistration& registration) {
    EventRegistration*& head = registration.listener->m_registrations;
    registration.next = head;
    if (head != nullptr) {
        head->previous = &registration;
    }
    head = &registration;
}

void EventRegistry::unlink(EventRegistration& registration) {
    EventRegistration*& towards = registration.previous != nullptr
                                      ? registration.previous->next
                                      : registration.listener->m_registrations;
    towards = registration.next;
    if (registration.next != nullptr) {
        registration.next->previous = registration.previous;
    }
}

}  // namespace qx::internal
