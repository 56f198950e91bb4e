// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <unordered_map>
#include <vector>

class QxBaseEventManager;
class QxEvent;
class QxEventListener;
class QxObject;

namespace qx::internal {

/// One listener's wish to hear the events of one source and category whose type is in the mask.
/// It stands in the list of its source and, linked both ways, among those of its listener. Once its
/// source is discarded, the mask is 0.
struct EventRegistration {
    QxBaseEventManager* manager;
    const QxObject* source;
    QxEventListener* listener;
    std::int32_t category;
    std::uint32_t mask;
    std::uint64_t sequence;
    EventRegistration* previous;
    EventRegistration* next;
};

/// A listener that is to hear an event, through its registration at the object `at`; the listener
/// is null once it has been told, or removed. `event` counts within the delivery.
struct EventHearing {
    const QxObject* at;
    QxEventListener* listener;
    std::uint64_t sequence;
    std::size_t event;
};

/// Who listens where, for one event manager. However many listen at one source, or one at many,
/// each of them comes and goes in O(1); whoever removes all pays for those that go.
class EventRegistry {
public:
    /// Categories count from 0 up to this.
    static constexpr std::int32_t CategoryLimit = 32;

    explicit EventRegistry(QxBaseEventManager& manager) noexcept : m_manager(manager) {}
    EventRegistry(const EventRegistry&) = delete;
    EventRegistry& operator=(const EventRegistry&) = delete;
    ~EventRegistry();

    /// Widens the mask of the registration when there is one.
    void add(const QxObject* source, QxEventListener* listener, std::uint32_t mask,
             std::int32_t category);
    /// Takes the types in `mask` from the listener's registration at the source, or from all there
    /// when `listener` is null; returns 1 when one became narrower or went.
    int remove(const QxObject* source, const QxEventListener* listener, std::uint32_t mask,
               std::int32_t category);
    /// Ends all registrations at the source. Their listeners still know the manager, because a
    /// delivery may be about to call them, until freeRetired. Returns 1 when there were any.
    int retireSource(const QxObject* source);
    void freeRetired();
    /// Ends all registrations of the listener.
    void removeListener(QxEventListener* listener);

    int isEmpty() const noexcept { return m_atSource.empty() ? 1 : 0; }
    /// The union of the masks registered for the category.
    std::uint32_t heard(std::int32_t category) const;

    /// Appends everyone who hears the event, once each: listeners of its source, then of the
    /// objects that the source reports to, then of what the source has just left.
    void collect(const QxEvent& event, std::vector<EventHearing>& hearings) const;

private:
    using Registrations = std::list<EventRegistration>;
    struct Key {
        const QxObject* source;
        const QxEventListener* listener;
        std::int32_t category;
        bool operator==(const Key&) const = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const noexcept;
    };

    /// Takes types from one of a source's registrations and ends it when none are left; 1 when it
    /// had any of them.
    int narrow(Registrations& registrations, Registrations::iterator which, std::uint32_t mask);
    void count(const EventRegistration& registration, std::uint32_t types, int step);
    static void link(EventRegistration& registration);
    static void unlink(EventRegistration& registration);
    void collectAlong(const QxObject* source, const QxEvent& event,
                      std::vector<EventHearing>& hearings) const;

    QxBaseEventManager& m_manager;
    /// In the order of registration.
    std::unordered_map<const QxObject*, Registrations> m_atSource;
    std::unordered_map<Key, Registrations::iterator, KeyHash> m_index;
    Registrations m_retired;
    std::uint64_t m_lastSequence = 0;
    /// How many registrations ask for each bit of each category.
    std::array<std::array<std::uint32_t, 32>, CategoryLimit> m_counts{};
};

}  // namespace qx::internal
