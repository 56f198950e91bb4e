// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// Answers about a set that is counted lazily.
enum QxTriStateEnum : int { QxTriStateYes = 2, QxTriStateNo = 3, QxTriStateUnknown = 4 };
