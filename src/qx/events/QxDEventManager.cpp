// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/events/QxDEventManager.h"

#include "qx/events/QxComplexityChangeEvent.h"
#include "qx/events/QxComplexityChangeEventData.h"
#include "qx/events/QxComplexityChangeListener.h"
#include "qx/events/QxDrawingChangeEvent.h"
#include "qx/events/QxDrawingChangeEventData.h"
#include "qx/events/QxDrawingChangeListener.h"
#include "qx/events/QxVetoableComplexityChangeListener.h"
#include "qx/events/QxVetoableDrawingChangeListener.h"
#include "qx/foundation/util/internal/CallListener.h"

using qx::internal::callListener;

namespace {

constexpr std::int32_t Drawing = QxDrawingChangeEvent::CategoryID;
constexpr std::int32_t Complexity = QxComplexityChangeEvent::CategoryID;

}  // namespace

QxDEventManager::QxDEventManager() = default;

QxDEventManager::~QxDEventManager() = default;

void QxDEventManager::registerDefaultEventClasses() {
    QxEventManager::registerDefaultEventClasses();
    registerEventClass(Drawing);
    registerEventClass(Complexity);
}

int QxDEventManager::addDrawingChangeListener(const QxObject* source,
                                              QxDrawingChangeListener* listener,
                                              std::int32_t typeMask) {
    return addListener(source, listener, typeMask, Drawing);
}

int QxDEventManager::addDrawingChangeListener(const QxObject* source,
                                              QxVetoableDrawingChangeListener* listener,
                                              std::int32_t typeMask) {
    return addListener(source, listener, typeMask, Drawing);
}

int QxDEventManager::removeDrawingChangeListener(const QxObject* source, QxEventListener* listener,
                                                 std::int32_t typeMask) {
    return removeListener(source, listener, typeMask, Drawing);
}

int QxDEventManager::removeAllDrawingChangeListeners(const QxObject* source,
                                                     std::int32_t typeMask) {
    return removeAllListeners(source, typeMask, Drawing);
}

int QxDEventManager::addComplexityChangeListener(const QxObject* source,
                                                 QxComplexityChangeListener* listener,
                                                 std::int32_t typeMask) {
    return addListener(source, listener, typeMask, Complexity);
}

int QxDEventManager::addComplexityChangeListener(const QxObject* source,
                                                 QxVetoableComplexityChangeListener* listener,
                                                 std::int32_t typeMask) {
    return addListener(source, listener, typeMask, Complexity);
}

int QxDEventManager::removeComplexityChangeListener(const QxObject* source,
                                                    QxEventListener* listener,
                                                    std::int32_t typeMask) {
    return removeListener(source, listener, typeMask, Complexity);
}

int QxDEventManager::removeAllComplexityChangeListeners(const QxObject* source,
                                                        std::int32_t typeMask) {
    return removeAllListeners(source, typeMask, Complexity);
}

void QxDEventManager::fireNotification(QxEventListener* listener, QxEvent* event) {
    using DrawingSlot = void (QxDrawingChangeListener::*)(QxDrawingChangeEvent*);
    using ComplexitySlot = void (QxComplexityChangeListener::*)(QxComplexityChangeEvent*);
    switch (event->eventCategoryID()) {
        case Drawing:
            callListener(listener, event, DrawingSlot(&QxDrawingChangeListener::drawingChanged));
            break;
        case Complexity:
            callListener(listener, event,
                         ComplexitySlot(&QxComplexityChangeListener::complexityChanged));
            break;
        default:
            QxEventManager::fireNotification(listener, event);
    }
}

int QxDEventManager::fireVeto(QxEventListener* listener, QxEvent* event) {
    switch (event->eventCategoryID()) {
        case Drawing:
            return callListener(listener, event->pData(),
                                &QxVetoableDrawingChangeListener::vetoDrawingChange);
        case Complexity:
            return callListener(listener, event->pData(),
                                &QxVetoableComplexityChangeListener::vetoComplexityChange);
        default:
            return QxEventManager::fireVeto(listener, event);
    }
}
