// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxDebugStream.h"

#include <iostream>

namespace {
thread_local std::ostream* redirected = nullptr;
}

std::ostream& qxDebugStream() {
    return redirected != nullptr ? *redirected : std::cerr;
}

void qxSetDebugStream(std::ostream* stream) {
    redirected = stream;
}

std::ostream& qxDebugIndent(int depth) {
    std::ostream& out = qxDebugStream();
    for (int i = 0; i < depth; ++i) {
        out << "  ";
    }
    return out;
}
