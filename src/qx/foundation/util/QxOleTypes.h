// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// The platform types that the automation slots of QxObject name: the real ones on Windows, our
/// own with the same names and values elsewhere.

#ifdef _WIN32

#include <oaidl.h>

#else

#include <cstdint>

using HRESULT = std::int32_t;
using UINT = std::uint32_t;
using ULONG = std::uint32_t;
using WORD = std::uint16_t;
using LCID = std::uint32_t;
using DISPID = std::int32_t;
using OLECHAR = wchar_t;

struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};
using IID = GUID;
using REFIID = const IID&;

struct IUnknown;
struct IDispatch;
struct DISPPARAMS;
struct VARIANT;
struct EXCEPINFO;

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001U);
inline constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002U);
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005U);
inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057U);

#endif
