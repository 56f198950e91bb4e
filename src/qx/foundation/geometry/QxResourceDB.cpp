// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxResourceDB.h"

QxResourceDB::~QxResourceDB() {
    for (const auto& [hash, resource] : m_resources) {
        resource->m_pDB = nullptr;
    }
    if (m_default != nullptr && m_default->m_useCount == 0) {
        m_default->vRelease();
    }
}

QxResource* QxResourceDB::insert(QxResource* resource) {
    if (resource == nullptr) {
        return nullptr;
    }
    const bool isRegistered = resource->m_isRegistered;
    if (isRegistered && resource->m_pDB == this) {
        ++resource->m_useCount;
        return resource;
    }
    const std::size_t hash = resource->hashCode();
    QxResource* kept = findEqual(*resource, hash);
    if (kept == nullptr) {
        kept = isRegistered ? resource->cloneObject() : resource;
        registerNew(kept, hash);
    } else if (!isRegistered) {
        resource->vRelease();
    }
    ++kept->m_useCount;
    return kept;
}

QxResource* QxResourceDB::remove(QxResource* resource) {
    if (resource == nullptr) {
        return nullptr;
    }
    if (!resource->m_isRegistered) {
        return resource;
    }
    if (resource->m_pDB != this || resource->m_useCount == 0 || --resource->m_useCount > 0 ||
        resource == m_default) {
        return nullptr;
    }
    unregister(resource);
    return resource;
}

QxResource* QxResourceDB::madePrivate(QxResource* resource) {
    if (resource == nullptr) {
        return nullptr;
    }
    QxResource* own = detached(resource);
    return own != nullptr ? own : resource->cloneObject();
}

QxResource* QxResourceDB::updated(QxResource* resource) {
    if (resource == nullptr || resource->m_isRegistered || resource->m_pDB == nullptr) {
        return resource;
    }
    return resource->m_pDB->insert(resource);
}

void QxResourceDB::dropped(QxResource* resource) {
    QxResource* own = resource != nullptr ? detached(resource) : nullptr;
    if (own != nullptr) {
        own->vRelease();
    }
}

// Drops one reference, also after the database is gone; null while others hold the resource.
QxResource* QxResourceDB::detached(QxResource* resource) {
    if (!resource->m_isRegistered) {
        return resource;
    }
    if (resource->m_pDB != nullptr) {
        return resource->m_pDB->remove(resource);
    }
    if (--resource->m_useCount > 0) {
        return nullptr;
    }
    resource->m_isRegistered = false;
    return resource;
}

void QxResourceDB::registerDefault(QxResource* resource) {
    registerNew(resource, resource->hashCode());
    m_default = resource;
}

QxResource* QxResourceDB::findEqual(const QxResource& resource, std::size_t hash) const {
    const auto [first, last] = m_resources.equal_range(hash);
    for (auto entry = first; entry != last; ++entry) {
        if (entry->second->equals(&resource) != 0) {
            return entry->second;
        }
    }
    return nullptr;
}

void QxResourceDB::registerNew(QxResource* resource, std::size_t hash) {
    m_resources.emplace(hash, resource);
    resource->m_registeredHash = hash;
    resource->m_pDB = this;
    resource->m_isRegistered = true;
}

void QxResourceDB::unregister(QxResource* resource) {
    resource->m_isRegistered = false;
    const auto [first, last] = m_resources.equal_range(resource->m_registeredHash);
    for (auto entry = first; entry != last; ++entry) {
        if (entry->second == resource) {
            m_resources.erase(entry);
            return;
        }
    }
}
