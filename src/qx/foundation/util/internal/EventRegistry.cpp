// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/internal/EventRegistry.h"

#include <bit>
#include <iterator>

#include "qx/foundation/util/QxEvent.h"
#include "qx/foundation/util/QxEventData.h"
#include "qx/foundation/util/QxEventListener.h"

namespace qx::internal {

std::size_t EventRegistry::KeyHash::operator()(const Key& key) const noexcept {
    // Addresses are multiples of 16: multiplying by an odd number spreads them over all bits.
    constexpr std::uint64_t Odd = 0x9E3779B97F4A7C15U;
    std::uint64_t hash = reinterpret_cast<std::uintptr_t>(key.source) * Odd;
    hash = (hash ^ (hash >> 32) ^ reinterpret_cast<std::uintptr_t>(key.listener)) * Odd;
    return static_cast<std::size_t>(hash ^ (hash >> 32)) + static_cast<std::size_t>(key.category);
}

EventRegistry::~EventRegistry() {
    freeRetired();
    for (auto& [source, registrations] : m_atSource) {
        for (EventRegistration& registration : registrations) {
            unlink(registration);
        }
    }
}

void EventRegistry::add(const QxObject* source, QxEventListener* listener, std::uint32_t mask,
                        std::int32_t category) {
    const auto [at, isNew] = m_index.try_emplace(Key{source, listener, category});
    if (isNew) {
        Registrations& registrations = m_atSource[source];
        registrations.push_back(EventRegistration{&m_manager, source, listener, category, 0,
                                                  ++m_lastSequence, nullptr, nullptr});
        link(registrations.back());
        at->second = std::prev(registrations.end());
    }
    EventRegistration& registration = *at->second;
    count(registration, mask & ~registration.mask, +1);
    registration.mask |= mask;
}

int EventRegistry::remove(const QxObject* source, const QxEventListener* listener,
                          std::uint32_t mask, std::int32_t category) {
    const auto atSource = m_atSource.find(source);
    if (atSource == m_atSource.end()) {
        return 0;
    }
    Registrations& registrations = atSource->second;
    int changed = 0;
    if (listener != nullptr) {
        const auto found = m_index.find(Key{source, listener, category});
        changed = found != m_index.end() ? narrow(registrations, found->second, mask) : 0;
    } else {
        for (auto next = registrations.begin(); next != registrations.end();) {
            const auto each = next++;
            changed |= each->category == category ? narrow(registrations, each, mask) : 0;
        }
    }
    if (registrations.empty()) {
        m_atSource.erase(atSource);
    }
    return changed;
}

int EventRegistry::narrow(Registrations& registrations, Registrations::iterator which,
                          std::uint32_t mask) {
    const std::uint32_t taken = which->mask & mask;
    count(*which, taken, -1);
    which->mask &= ~mask;
    if (which->mask == 0) {
        m_index.erase(Key{which->source, which->listener, which->category});
        unlink(*which);
        registrations.erase(which);
    }
    return taken != 0 ? 1 : 0;
}

int EventRegistry::retireSource(const QxObject* source) {
    const auto found = m_atSource.find(source);
    if (found == m_atSource.end()) {
        return 0;
    }
    for (EventRegistration& registration : found->second) {
        m_index.erase(Key{source, registration.listener, registration.category});
        count(registration, registration.mask, -1);
        registration.mask = 0;
    }
    m_retired.splice(m_retired.end(), found->second);
    m_atSource.erase(found);
    return 1;
}

void EventRegistry::freeRetired() {
    for (EventRegistration& registration : m_retired) {
        if (registration.listener != nullptr) {
            unlink(registration);
        }
    }
    m_retired.clear();
}

void EventRegistry::removeListener(QxEventListener* listener) {
    EventRegistration* registration = listener->m_registrations;
    while (registration != nullptr) {
        EventRegistration* const next = registration->next;
        if (registration->manager == &m_manager && registration->mask == 0) {
            unlink(*registration);
            registration->listener = nullptr;
        } else if (registration->manager == &m_manager) {
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
        for (const EventRegistration& registration : found->second) {
            QxEventListener* const listener = registration.listener;
            if (registration.category == event.eventCategoryID() &&
                (registration.mask & type) != 0 && !listener->m_isCollected) {
                listener->m_isCollected = true;
                hearings.push_back({source, listener, registration.sequence, 0});
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
