// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

#include "qx/foundation/util/QxObject.h"

class QxResourceDB;

/// A value that objects share through a QxResourceDB. Subclasses define equals() and hashCode() by
/// the value. While a resource is registered its value must not change: make it private first.
class QX_API QxResource : public QxObject {
public:
    /// A private resource. The database is not owned and may be null: then it stays private.
    explicit QxResource(QxResourceDB* db) noexcept : m_pDB(db) {}
    /// A copy is private and belongs to the same database.
    QxResource(const QxResource& source) noexcept : QxObject(source), m_pDB(source.m_pDB) {}
    /// Assignment takes over what subclasses add; registration stays.
    QxResource& operator=(const QxResource&) noexcept { return *this; }

    /// How many holders the database counts; 0 while the resource is private to one of them (or
    /// is the default resource and nobody uses it).
    std::int32_t useCount() const noexcept { return m_useCount; }
    /// 1 while the database knows the resource.
    int isRegistered() const noexcept { return m_isRegistered ? 1 : 0; }
    /// The database that the resource is, or will be, registered with; null when there is none.
    QxResourceDB* pResourceDB() const noexcept { return m_pDB; }

    /// A new private copy; the caller owns the one reference it starts with.
    QxResource* cloneObject() const { return static_cast<QxResource*>(vCloneObject()); }

private:
    friend class QxResourceDB;

    QxResourceDB* m_pDB;
    std::size_t m_registeredHash = 0;
    std::int32_t m_useCount = 0;
    bool m_isRegistered = false;
};
