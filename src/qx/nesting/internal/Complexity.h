// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>

#include "qx/events/QxComplexityChangeEvent.h"
#include "qx/events/QxComplexityChangeEventData.h"
#include "qx/foundation/graph/QxAFactory.h"
#include "qx/foundation/graph/QxEventManager.h"
#include "qx/foundation/graph/QxGraphObject.h"
#include "qx/foundation/util/internal/Suspension.h"

namespace qx::internal {

/// Tells that `object`, a node or an edge, shows more or less than before. Nothing is built when
/// nobody hears it.
inline void fireComplexityChange(QxGraphObject& object, QxComplexityChangeEventTypeEnum type) {
    const QxAFactory* const factory = object.pFactory();
    QxEventManager* const manager = factory != nullptr ? factory->pQueryEventManager() : nullptr;
    if (manager != nullptr && manager->hears(QxComplexityChangeEvent::CategoryID, type) != 0) {
        manager->fireEvent(
            new QxComplexityChangeEvent(type, new QxComplexityChangeEventData(&object)), 0);
    }
}

/// While it lasts nobody hears anything. Silences nest.
class [[nodiscard]] Silence {
public:
    explicit Silence(const QxGraphObject& object) {
        const QxAFactory* const factory = object.pFactory();
        if (QxEventManager* manager =
                factory != nullptr ? factory->pQueryEventManager() : nullptr) {
            m_suspension.emplace(Access{manager});
        }
    }
    /// Whether events were delivered before.
    bool wasHeard() const { return m_suspension && m_suspension->found() != 0; }

private:
    struct Access {
        QxEventManager* manager;
        int operator()() const { return manager->fireEvents(); }
        int operator()(int value) const { return manager->fireEvents(value); }
    };
    std::optional<Suspension<Access>> m_suspension;
};

}  // namespace qx::internal
