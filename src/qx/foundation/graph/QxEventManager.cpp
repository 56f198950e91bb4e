// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxEventManager.h"

QxEventManager::QxEventManager() = default;

QxEventManager::~QxEventManager() = default;
