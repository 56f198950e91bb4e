// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>

#include "qx/foundation/graph/QxGraphChangeEventData.h"

class QxGraphObject;

namespace qx::internal {

/// A change of the graph while it is being made: notes how the object stands before, and tells the
/// listeners when it is over. The one way in which the graph layer fires events.
///
/// It is told how things stand then, and only if they still do: what a hook or a listener has
/// undone meanwhile has told its own story. When nobody listens nothing is noted, and no object is
/// looked at again.
class [[nodiscard]] GraphChange {
public:
    /// Nothing to tell.
    GraphChange() noexcept;
    /// `at` belongs to the factory both before and after: the owner of what comes or goes.
    GraphChange(const QxGraphObject& at, QxGraphObject& object, QxGraphChangeEventTypeEnum type);
    GraphChange(GraphChange&& other) noexcept;
    GraphChange& operator=(GraphChange&& other) noexcept;
    ~GraphChange();

    /// Called once, with all lists in order.
    void tell();

private:
    struct Story;

    static QxGraphChangeEventData::Standing standingOf(const QxGraphObject& object,
                                                       QxGraphChangeEventTypeEnum type);

    std::unique_ptr<Story> m_story;
};

/// Tells that the order of a list of `object` has changed by itself.
void tellOrderChanged(QxGraphObject& object, QxGraphListEnum which, const QxDList& list);
/// Whether anybody hears such changes of objects of the factory that `at` belongs to.
bool hearsGraphChange(const QxGraphObject& at, QxGraphChangeEventTypeEnum type);

}  // namespace qx::internal
