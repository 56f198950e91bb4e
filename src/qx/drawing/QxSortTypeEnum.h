// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

enum QxSortTypeEnum : int { QxSortAscending = 0, QxSortDescending = 1 };
