// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class QxObject;

namespace qx::internal {

/// The identifiers of the objects in a document: a letter for the kind and a number. A table by
/// address that is only asked, never walked, so that nothing depends on addresses.
class ObjectNumbers {
public:
    struct Number {
        const QxObject* object = nullptr;
        std::uint32_t number = 0;
        char letter = 0;
    };

    ObjectNumbers() : m_slots(1024) {}
    /// Gives the object the next number of its kind, unless it has one.
    const Number& of(const QxObject& object);
    bool has(const QxObject& object) const { return m_slots[placeOf(object)].object != nullptr; }

private:
    std::size_t placeOf(const QxObject& object) const;
    void grow();

    std::vector<Number> m_slots;
    std::size_t m_count = 0;
    std::uint32_t m_last[26] = {};
};

}  // namespace qx::internal
