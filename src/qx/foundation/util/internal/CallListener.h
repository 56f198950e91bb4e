// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxEventListener.h"

namespace qx::internal {

/// Calls the listener's slot, provided that listener and argument are of the slot's classes: the
/// category alone does not tell, for any listener may have been registered under any category.
template <class Listener, class Result, class Argument, class Base>
Result callListener(QxEventListener* listener, Base* base, Result (Listener::*slot)(Argument*)) {
    auto* const target = dynamic_cast<Listener*>(listener);
    auto* const argument = dynamic_cast<Argument*>(base);
    return target != nullptr && argument != nullptr ? (target->*slot)(argument) : Result();
}

}  // namespace qx::internal
