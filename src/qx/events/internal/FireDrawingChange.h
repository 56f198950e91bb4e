// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/events/QxDrawingChangeEvent.h"
#include "qx/events/QxDrawingChangeEventData.h"
#include "qx/foundation/graph/QxAFactory.h"
#include "qx/foundation/graph/QxEventManager.h"
#include "qx/foundation/graph/QxGraphObject.h"

namespace qx::internal {

/// The event manager of the object's factory, when somebody hears such drawing changes; else null.
inline QxEventManager* drawingChangeManager(const QxGraphObject& object,
                                            QxDrawingChangeEventTypeEnum type) {
    const QxAFactory* const factory = object.pFactory();
    // Nobody can listen before the event manager has been asked for.
    QxEventManager* const manager = factory != nullptr ? factory->pQueryEventManager() : nullptr;
    return manager != nullptr && manager->hears(QxDrawingChangeEvent::CategoryID, type) != 0
               ? manager
               : nullptr;
}

/// Tells the drawing that it has changed: the one way in which its objects fire events.
///
/// `build` makes the data, `new QxDrawingChangeEventData(...)`; it is called only when somebody
/// hears the type. `object` is any object that still belongs to the factory: for something that
/// has just been removed, its former owner.
template <class Build>
void fireDrawingChange(const QxGraphObject& object, QxDrawingChangeEventTypeEnum type,
                       const Build& build) {
    if (QxEventManager* const manager = drawingChangeManager(object, type)) {
        manager->fireEvent(new QxDrawingChangeEvent(type, build()), 0);
    }
}

/// Tells the event manager, if there is one, that the object goes for good: ends what listens
/// there. To be called once the last event about the object has been fired.
inline void endEventSource(const QxGraphObject& object) {
    const QxAFactory* const factory = object.pUnverifiedFactory();
    if (QxEventManager* const manager =
            factory != nullptr ? factory->pQueryEventManager() : nullptr) {
        manager->eventSourceDiscarded(&object);
    }
}

}  // namespace qx::internal
