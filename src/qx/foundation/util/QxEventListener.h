// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxObject.h"

namespace qx::internal {
class EventRegistry;
struct EventRegistration;
}  // namespace qx::internal

/// Hears of events once it is registered with an event manager. Each category of events has its
/// own listener class, from which applications derive.
///
/// A listener belongs to the application. It may be destroyed at any time, from inside a
/// notification too: it then leaves the managers it is registered with.
class QX_API QxEventListener : public QxObject {
public:
    QxEventListener() noexcept = default;
    /// A copy is not registered anywhere.
    QxEventListener(const QxEventListener& source) noexcept : QxObject(source) {}
    QxEventListener& operator=(const QxEventListener&) noexcept { return *this; }
    ~QxEventListener() override;

    /// 1 for listeners that are asked whether a change may be told (QxVetoableChangeListener).
    virtual int isVetoableListener() const;

private:
    friend class qx::internal::EventRegistry;

    qx::internal::EventRegistration* m_registrations = nullptr;
    bool m_isCollected = false;
};
