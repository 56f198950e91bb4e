// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/foundation/graph/internal/EachObject.h"

namespace qx::internal {

/// The objects of a list as they stand now, each kept alive: for walks that tell listeners, who may
/// take out or discard whatever comes next. Whether an object is still where it was is for the
/// walk to ask.
template <class T>
class [[nodiscard]] HeldObjects {
public:
    /// A null list is held like an empty one.
    explicit HeldObjects(const QxDList* list) {
        if (list == nullptr) {
            return;
        }
        m_objects.reserve(static_cast<std::size_t>(list->count()));
        for (T* object : each<T>(*list)) {
            object->vAddRef();
            m_objects.push_back(object);
        }
    }
    ~HeldObjects() {
        for (T* object : m_objects) {
            object->vRelease();
        }
    }
    HeldObjects(const HeldObjects&) = delete;
    HeldObjects& operator=(const HeldObjects&) = delete;

    auto begin() const { return m_objects.begin(); }
    auto end() const { return m_objects.end(); }
    std::size_t size() const { return m_objects.size(); }
    T* operator[](std::size_t index) const { return m_objects[index]; }

private:
    std::vector<T*> m_objects;
};

}  // namespace qx::internal
