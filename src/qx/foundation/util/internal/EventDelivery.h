// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <vector>

#include "qx/foundation/util/QxEvent.h"
#include "qx/foundation/util/internal/EventRegistry.h"
#include "qx/foundation/util/internal/Ref.h"

namespace qx::internal {

/// Events on their way, and who is to hear them: one event being told at once, or the events of a
/// batch. Hearings of one event stand together, in the order in which the listeners are told.
struct EventDelivery {
    std::vector<Ref<QxEvent>> events;
    std::vector<EventHearing> hearings;
    /// The delivery from inside which this one runs.
    EventDelivery* outer = nullptr;

    /// Lets the vetoable listeners stand first, in the order of their registration; returns how
    /// many there are.
    std::size_t putVetoableFirst();
    /// Appends another delivery's events and those of its hearings that start at `first`.
    void append(EventDelivery& other, std::size_t first);
};

/// The hearings of one listener that are told as one group.
struct EventGroup {
    std::int32_t bundle;
    std::vector<std::size_t> hearings;
};

/// Divides the delivery into groups: by listener and category, the categories in ascending order;
/// or, with `keepOrder`, by listener and run of events of one category, in firing order. Within
/// that, listeners stand in the order in which they would have heard their first event.
std::vector<EventGroup> groupHearings(const EventDelivery& delivery, bool keepOrder);

}  // namespace qx::internal
