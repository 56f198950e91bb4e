// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxEventListener.h"

#include "qx/foundation/util/QxBaseEventManager.h"
#include "qx/foundation/util/internal/EventRegistry.h"

QxEventListener::~QxEventListener() {
    while (m_registrations != nullptr) {
        m_registrations->manager->listenerDestroyed(this);
    }
}

int QxEventListener::isVetoableListener() const {
    return 0;
}
