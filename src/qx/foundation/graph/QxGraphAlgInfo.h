// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxObject.h"

/// What a graph algorithm notes about one node while it runs; each algorithm derives its own.
class QX_API QxGraphAlgInfo : public QxObject {};
