// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxEventManager.h"

#include "qx/foundation/graph/QxGraphChangeEvent.h"
#include "qx/foundation/graph/QxGraphChangeEventData.h"
#include "qx/foundation/graph/QxGraphChangeListener.h"
#include "qx/foundation/graph/QxVetoableGraphChangeListener.h"
#include "qx/foundation/util/internal/CallListener.h"

using qx::internal::callListener;

namespace {

constexpr std::int32_t Category = QxGraphChangeEvent::CategoryID;

}

QxEventManager::QxEventManager() = default;

QxEventManager::~QxEventManager() = default;

void QxEventManager::registerDefaultEventClasses() {
    QxBaseEventManager::registerDefaultEventClasses();
    registerEventClass(Category);
}

int QxEventManager::addGraphChangeListener(const QxObject* source, QxGraphChangeListener* listener,
                                           std::int32_t typeMask) {
    return addListener(source, listener, typeMask, Category);
}

int QxEventManager::addGraphChangeListener(const QxObject* source,
                                           QxVetoableGraphChangeListener* listener,
                                           std::int32_t typeMask) {
    return addListener(source, listener, typeMask, Category);
}

int QxEventManager::removeGraphChangeListener(const QxObject* source, QxEventListener* listener,
                                              std::int32_t typeMask) {
    return removeListener(source, listener, typeMask, Category);
}

int QxEventManager::removeAllGraphChangeListeners(const QxObject* source, std::int32_t typeMask) {
    return removeAllListeners(source, typeMask, Category);
}

void QxEventManager::fireNotification(QxEventListener* listener, QxEvent* event) {
    using Slot = void (QxGraphChangeListener::*)(QxGraphChangeEvent*);
    if (event->eventCategoryID() == Category) {
        callListener(listener, event, Slot(&QxGraphChangeListener::graphChanged));
    } else {
        QxBaseEventManager::fireNotification(listener, event);
    }
}

int QxEventManager::fireVeto(QxEventListener* listener, QxEvent* event) {
    return event->eventCategoryID() == Category
               ? callListener(listener, event->pData(),
                              &QxVetoableGraphChangeListener::vetoGraphChange)
               : QxBaseEventManager::fireVeto(listener, event);
}
