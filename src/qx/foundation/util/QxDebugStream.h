// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <iosfwd>

#include "qx/foundation/util/QxApi.h"

/// The stream that debugOutput and checkInvariants write to on this thread; std::cerr at first.
QX_API std::ostream& qxDebugStream();

/// Redirects this thread's diagnostic stream; null restores std::cerr. The stream must outlive
/// the redirection.
QX_API void qxSetDebugStream(std::ostream* stream);

/// Writes two blanks per step of `depth` and returns the stream.
QX_API std::ostream& qxDebugIndent(int depth);
