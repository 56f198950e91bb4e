// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxGraphObject.h"

namespace qx::internal {

/// The object as a T when it says that it is of the kind whose class is T; else null.
template <class T>
T* objectOfKind(QxGraphObject* object, int (QxGraphObject::*isOfKind)() const) {
    return object != nullptr && (object->*isOfKind)() != 0 ? static_cast<T*>(object) : nullptr;
}

}  // namespace qx::internal
