// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <unordered_map>

#include "qx/foundation/geometry/QxResource.h"

/// Keeps one resource for every value in use and counts its holders.
///
/// A registered resource lives until its last holder removes it; one resource may be the default,
/// which the database owns and which stays registered without holders. A holder's way with its
/// resource is `updated`, `madePrivate`, `dropped`; they keep the count right in every case:
///
///     m_resource = QxResourceDB::madePrivate(m_resource);  // nobody else sees the change
///     m_resource->shape(&shape);
///     m_resource = QxResourceDB::updated(m_resource);      // share again
///
/// A holder that outlives the database keeps a valid resource and may still drop it.
class QX_API QxResourceDB {
public:
    QxResourceDB() = default;
    QxResourceDB(const QxResourceDB&) = delete;
    QxResourceDB& operator=(const QxResourceDB&) = delete;
    /// Destroys the default resource unless it is held; what is held is left to its holders.
    virtual ~QxResourceDB();

    /// Registers the resource, or takes one more reference to the equal one that is registered;
    /// returns the registered resource, which the caller then holds (null for null).
    ///
    /// A private resource is given away by this: it is registered itself, or destroyed when
    /// another stands for its value. One that is registered already keeps its holders: here it
    /// gains one, and a database that does not know it registers a copy.
    QxResource* insert(QxResource* resource);
    /// Drops one reference. Returns the resource when none is left: it is then private and the
    /// caller owns it. A private resource is returned as it is. Null, with nothing to destroy,
    /// while others hold it, for the default resource, and for resources of other databases (whose
    /// count stays).
    QxResource* remove(QxResource* resource);

    /// The number of values registered, the default included.
    std::size_t numberOfResources() const noexcept { return m_resources.size(); }

    /// @name What a holder does with its resource: null stays null
    /// @{
    /// A resource with the same value that only the caller holds, to be changed: the resource
    /// itself when the caller was its last holder, otherwise a copy.
    static QxResource* madePrivate(QxResource* resource);
    /// The resource to hold after the change: registered again, shared with its equals. Without a
    /// database, and when it is registered already, the resource itself.
    static QxResource* updated(QxResource* resource);
    /// Gives up the caller's hold and destroys the resource when it was the last.
    static void dropped(QxResource* resource);
    /// @}

protected:
    /// Registers a resource that the database keeps without holders. Once, with a private one.
    void registerDefault(QxResource* resource);
    QxResource* pDefault() const noexcept { return m_default; }

private:
    QxResource* findEqual(const QxResource& resource, std::size_t hash) const;
    void registerNew(QxResource* resource, std::size_t hash);
    void unregister(QxResource* resource);
    static QxResource* detached(QxResource* resource);

    std::unordered_multimap<std::size_t, QxResource*> m_resources;
    QxResource* m_default = nullptr;
};
