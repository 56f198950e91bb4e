// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <initializer_list>
#include <unordered_set>
#include <utility>
#include <vector>

#include "qx/foundation/util/QxDList.h"
#include "qx/foundation/util/QxObject.h"

namespace qx::internal {

/// A counted reference to an object: the one way in which the library keeps objects alive, while it
/// tells listeners, who may discard anything, or for as long as something names the object.
///
/// An object that is being destroyed already is named but not kept: its count is over.
template <class T>
class [[nodiscard]] Ref {
public:
    Ref() noexcept = default;
    explicit Ref(T* object)
        : m_object(object), m_counts(object != nullptr && object->referenceCount() > 0) {
        if (m_counts) {
            counted()->vAddRef();
        }
    }
    explicit Ref(T& object) : Ref(&object) {}
    Ref(const Ref& other) : Ref(other.m_object) {}
    Ref(Ref&& other) noexcept
        : m_object(std::exchange(other.m_object, nullptr)),
          m_counts(std::exchange(other.m_counts, false)) {}
    Ref& operator=(Ref other) noexcept {
        std::swap(m_object, other.m_object);
        std::swap(m_counts, other.m_counts);
        return *this;
    }
    ~Ref() {
        if (m_counts) {
            counted()->vRelease();
        }
    }

    /// Takes over a reference that the caller holds.
    static Ref adopt(T* object) noexcept {
        Ref ref;
        ref.m_object = object;
        ref.m_counts = object != nullptr;
        return ref;
    }
    /// Hands the reference to the caller, who releases it.
    T* handOver() noexcept {
        m_counts = false;
        return std::exchange(m_object, nullptr);
    }

    T* get() const noexcept { return m_object; }
    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

private:
    // Counting is no change of the object.
    QxObject* counted() const noexcept {
        return const_cast<QxObject*>(static_cast<const QxObject*>(m_object));
    }

    T* m_object = nullptr;
    bool m_counts = false;
};

template <class T>
Ref(T&) -> Ref<T>;
template <class T>
Ref(T*) -> Ref<T>;

/// The objects of lists as they stand now, each kept alive until the walk is over: for every walk
/// that runs a virtual step or tells listeners, who may take out or discard what comes next.
/// Whether an object is still where it was is for the walk to ask. Null lists are walked like empty
/// ones.
template <class T>
class [[nodiscard]] Snapshot {
public:
    class Iterator {
    public:
        explicit Iterator(const Ref<T>* at) : m_at(at) {}
        T* operator*() const { return m_at->get(); }
        Iterator& operator++() {
            ++m_at;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return m_at != other.m_at; }

    private:
        const Ref<T>* m_at;
    };

    Snapshot() = default;
    explicit Snapshot(const QxDList* list) { add(list); }
    Snapshot(std::initializer_list<const QxDList*> lists) {
        for (const QxDList* list : lists) {
            add(list);
        }
    }

    /// Of the lists only what suits.
    template <class Suits>
    Snapshot(std::initializer_list<const QxDList*> lists, const Suits& suits) {
        for (const QxDList* list : lists) {
            for (const QxDListCell* cell = list->pFirstCell(); cell; cell = cell->pNextCell()) {
                if (auto* object = static_cast<T*>(cell->pObject()); suits(*object)) {
                    add(object);
                }
            }
        }
    }

    void reserve(std::size_t count) { m_objects.reserve(m_objects.size() + count); }
    void add(const QxDList* list) {
        if (list == nullptr || list->pFirstCell() == nullptr) {
            return;
        }
        reserve(static_cast<std::size_t>(list->count()));
        for (const QxDListCell* cell = list->pFirstCell(); cell; cell = cell->pNextCell()) {
            add(static_cast<T*>(cell->pObject()));
        }
    }
    void add(T* object) { m_objects.emplace_back(object); }

    Iterator begin() const { return Iterator(m_objects.data()); }
    Iterator end() const { return Iterator(m_objects.data() + m_objects.size()); }
    std::size_t size() const { return m_objects.size(); }
    bool isEmpty() const { return m_objects.empty(); }
    T* operator[](std::size_t index) const { return m_objects[index].get(); }

private:
    std::vector<Ref<T>> m_objects;
};

/// Takes over one reference of each object and drops it, in order; nulls and repetitions are passed
/// over.
inline void releaseOnce(const std::vector<QxObject*>& objects) {
    std::unordered_set<const QxObject*> released(objects.size());
    for (QxObject* object : objects) {
        if (released.insert(object).second) {
            const auto last = Ref<QxObject>::adopt(object);
        }
    }
}

}  // namespace qx::internal
