// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <list>
#include <unordered_map>

#include "qx/foundation/util/QxObject.h"

class QxDList;

/// Maps objects to objects. Identity decides which key is meant, not equals and hashCode: two equal
/// objects are different keys. The map owns nothing; it remembers the order in which keys came, so
/// that nothing it does depends on addresses.
class QX_API QxHashMap : public QxObject {
public:
    /// Room for `capacity` keys without growing; it grows beyond.
    explicit QxHashMap(std::int32_t capacity = 0);
    QxHashMap(const QxHashMap&) = delete;
    QxHashMap& operator=(const QxHashMap&) = delete;

    /// Maps the key to the value and returns the value that it had before, or null. A null key or
    /// value is refused: null, no change.
    QxObject* put(QxObject* key, QxObject* value);
    /// The value that the key is mapped to; null for an unknown key.
    QxObject* get(const QxObject* key) const;
    /// Forgets the key and returns the value it had, or null. Nonzero `releaseKey` drops one
    /// reference of the key, when the map knew it.
    QxObject* remove(const QxObject* key, int releaseKey);
    /// Forgets all; nonzero drops one reference of each key or value, in the order they came, each
    /// object once however often it occurs.
    void empty(int releaseKeys, int releaseValues);
    /// Fills the list with the values, in the order their keys came; the list is emptied first.
    void buildObjectList(QxDList* list) const;

    /// The number of keys.
    std::int32_t count() const noexcept { return static_cast<std::int32_t>(m_entries.size()); }

private:
    struct Entry {
        QxObject* key;
        QxObject* value;
    };
    using Entries = std::list<Entry>;

    Entries m_entries;
    std::unordered_map<const QxObject*, Entries::iterator> m_index;
};
