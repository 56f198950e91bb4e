// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <utility>

namespace qx::internal {

/// Keeps a switch in one position for the length of a scope, then restores what it found, on every
/// way out. Suspensions of one switch nest.
///
/// `Access` reads the switch when called without arguments and sets it when called with a value,
/// as the pairs of accessors of this library do; it holds what it needs (a Ref, when the object may
/// be discarded meanwhile):
///
///     const auto silent = suspend([&](auto... value) { return manager->fireEvents(value...); });
///
/// The switch is only set when that changes it, for setting may have effects of its own.
template <class Access>
class [[nodiscard]] Suspension {
public:
    /// `during` is the position while the suspension lasts.
    explicit Suspension(Access access, int during = 0)
        : m_access(std::move(access)), m_found(m_access()) {
        set(during);
    }
    Suspension(const Suspension&) = delete;
    Suspension& operator=(const Suspension&) = delete;
    ~Suspension() { set(m_found); }

    /// What the switch stood at before.
    int found() const noexcept { return m_found; }

private:
    void set(int value) {
        if (m_access() != value) {
            m_access(value);
        }
    }

    Access m_access;
    int m_found;
};

template <class Access>
[[nodiscard]] Suspension<Access> suspend(Access access, int during = 0) {
    return Suspension<Access>(std::move(access), during);
}

}  // namespace qx::internal
