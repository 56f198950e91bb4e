// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxHashMap.h"

#include <utility>
#include <vector>

#include "qx/foundation/util/QxDList.h"
#include "qx/foundation/util/internal/Ref.h"

QxHashMap::QxHashMap(std::int32_t capacity) {
    if (capacity > 0) {
        m_index.reserve(static_cast<std::size_t>(capacity));
    }
}

QxObject* QxHashMap::put(QxObject* key, QxObject* value) {
    if (key == nullptr || value == nullptr) {
        return nullptr;
    }
    const auto found = m_index.find(key);
    if (found != m_index.end()) {
        return std::exchange(found->second->value, value);
    }
    m_index.emplace(key, m_entries.insert(m_entries.end(), Entry{key, value}));
    return nullptr;
}

QxObject* QxHashMap::get(const QxObject* key) const {
    const auto found = m_index.find(key);
    return found != m_index.end() ? found->second->value : nullptr;
}

QxObject* QxHashMap::remove(const QxObject* key, int releaseKey) {
    const auto found = m_index.find(key);
    if (found == m_index.end()) {
        return nullptr;
    }
    const Entry entry = *found->second;
    m_entries.erase(found->second);
    m_index.erase(found);
    if (releaseKey != 0) {
        entry.key->vRelease();
    }
    return entry.value;
}

void QxHashMap::empty(int releaseKeys, int releaseValues) {
    std::vector<QxObject*> released;
    for (const Entry& entry : m_entries) {
        if (releaseKeys != 0) {
            released.push_back(entry.key);
        }
        if (releaseValues != 0) {
            released.push_back(entry.value);
        }
    }
    m_index.clear();
    m_entries.clear();
    qx::internal::releaseOnce(released);
}

void QxHashMap::buildObjectList(QxDList* list) const {
    if (list == nullptr) {
        return;
    }
    list->deleteAllCells();
    for (const Entry& entry : m_entries) {
        list->appendObject(entry.value);
    }
}
