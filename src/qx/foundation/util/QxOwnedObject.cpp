// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxOwnedObject.h"

int QxOwnedObject::isFactory() const {
    return 0;
}

std::int32_t QxOwnedObject::objectType() const {
    return 0;
}

QxOwnedObject* QxOwnedObject::pOwnerObject() const {
    return m_owner;
}

int QxOwnedObject::isOwnedObject() const {
    return 1;
}
