// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/internal/EventDelivery.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <unordered_map>

#include "qx/foundation/util/QxEventListener.h"

namespace qx::internal {

std::size_t EventDelivery::putVetoableFirst() {
    const auto plain = std::stable_partition(
        hearings.begin(), hearings.end(),
        [](const EventHearing& hearing) { return hearing.listener->isVetoableListener() != 0; });
    std::sort(hearings.begin(), plain,
              [](const EventHearing& a, const EventHearing& b) { return a.sequence < b.sequence; });
    return static_cast<std::size_t>(plain - hearings.begin());
}

void EventDelivery::append(EventDelivery& other, std::size_t first) {
    const std::size_t offset = events.size();
    std::move(other.events.begin(), other.events.end(), std::back_inserter(events));
    other.events.clear();
    for (std::size_t i = first; i < other.hearings.size(); ++i) {
        hearings.push_back(other.hearings[i]);
        hearings.back().event += offset;
    }
    other.hearings.clear();
}

namespace {

/// Numbers the bundle of each event.
std::vector<std::int32_t> bundlesOf(const EventDelivery& delivery, bool keepOrder) {
    std::vector<std::int32_t> bundles;
    std::int32_t runs = 0;
    std::int32_t lastCategory = -1;
    for (const auto& event : delivery.events) {
        const std::int32_t category = event->eventCategoryID();
        runs += category != lastCategory ? 1 : 0;
        lastCategory = category;
        bundles.push_back(keepOrder ? runs : category);
    }
    return bundles;
}

}  // namespace

std::vector<EventGroup> groupHearings(const EventDelivery& delivery, bool keepOrder) {
    const std::vector<std::int32_t> bundles = bundlesOf(delivery, keepOrder);
    std::vector<EventGroup> groups;
    std::map<std::int32_t, std::unordered_map<const QxEventListener*, std::size_t>> groupOf;
    for (std::size_t i = 0; i < delivery.hearings.size(); ++i) {
        const EventHearing& hearing = delivery.hearings[i];
        if (hearing.listener == nullptr) {
            continue;
        }
        const std::int32_t bundle = bundles[hearing.event];
        const auto [at, isNew] = groupOf[bundle].try_emplace(hearing.listener, groups.size());
        if (isNew) {
            groups.push_back({bundle, {}});
        }
        groups[at->second].hearings.push_back(i);
    }
    std::stable_sort(groups.begin(), groups.end(),
                     [](const EventGroup& a, const EventGroup& b) { return a.bundle < b.bundle; });
    return groups;
}

}  // namespace qx::internal
