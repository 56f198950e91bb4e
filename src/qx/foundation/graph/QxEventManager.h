// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxBaseEventManager.h"

/// The event manager of a factory of graph objects. Abstract graphs have no events of their own;
/// layers built on them register the categories of theirs.
class QX_API QxEventManager : public QxBaseEventManager {
public:
    QxEventManager();
    ~QxEventManager() override;
};
