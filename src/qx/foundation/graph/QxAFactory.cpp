// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxAFactory.h"

#include "qx/foundation/graph/QxEventManager.h"

QxUFactory::QxUFactory() {
    setFlag(qx::flags::IsFactory, 1);
}

int QxUFactory::isFactory() const {
    return 1;
}

QxAFactory::~QxAFactory() {
    if (m_eventManager != nullptr) {
        m_eventManager->vRelease();
    }
}

QxEventManager* QxAFactory::pEventManager() {
    if (m_eventManager == nullptr) {
        m_eventManager = vNewEventManager();
    }
    return m_eventManager;
}
