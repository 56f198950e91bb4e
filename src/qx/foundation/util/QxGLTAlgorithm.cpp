// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxGLTAlgorithm.h"

void QxGLTAlgorithm::run() {
    initialize();
    try {
        algorithmBody();
    } catch (...) {
        finalize();
        throw;
    }
    finalize();
}

void QxGLTAlgorithm::initialize() {}

void QxGLTAlgorithm::finalize() {}
