// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxObject.h"

namespace qx::internal {

/// Holds a reference to an object while its scope tells listeners, who may discard it. An object
/// that is being destroyed already is left alone.
class [[nodiscard]] KeepAlive {
public:
    explicit KeepAlive(QxObject& object)
        : m_object(object.referenceCount() > 0 ? &object : nullptr) {
        if (m_object != nullptr) {
            m_object->vAddRef();
        }
    }
    ~KeepAlive() {
        if (m_object != nullptr) {
            m_object->vRelease();
        }
    }
    KeepAlive(const KeepAlive&) = delete;
    KeepAlive& operator=(const KeepAlive&) = delete;

private:
    QxObject* m_object;
};

}  // namespace qx::internal
