// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// Marks what the shared library exports; everything else stays hidden inside it.
#if defined(_WIN32)
#ifdef QXDRAW_BUILDING
#define QX_API __declspec(dllexport)
#else
#define QX_API __declspec(dllimport)
#endif
#else
#define QX_API __attribute__((visibility("default")))
#endif
