// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/internal/ObjectNumbers.h"

#include "qx/foundation/graph/QxChildGraphForestEdge.h"
#include "qx/foundation/graph/QxGraphObject.h"

namespace qx::internal {

namespace {

char letterOf(const QxObject& object) {
    if (object.isOwnedObject() == 0) {
        return 's';  // a shape
    }
    const auto& one = static_cast<const QxGraphObject&>(object);
    if (one.isNode() != 0) {
        return 'n';
    }
    if (one.isEdge() != 0) {
        const bool isRelation =
            one.levelNumber() == 0 && dynamic_cast<const QxChildGraphForestEdge*>(&one) != nullptr;
        return isRelation ? 'r' : 'e';
    }
    return one.isConnector() != 0 ? 'c' : one.isLabel() != 0 ? 'l' : 'g';
}

}  // namespace

std::size_t ObjectNumbers::placeOf(const QxObject& object) const {
    const std::size_t mask = m_slots.size() - 1;
    auto hash = reinterpret_cast<std::uintptr_t>(&object) * 0x9E3779B97F4A7C15ULL;
    std::size_t place = static_cast<std::size_t>(hash >> 20) & mask;
    while (m_slots[place].object != nullptr && m_slots[place].object != &object) {
        place = (place + 1) & mask;
    }
    return place;
}

const ObjectNumbers::Number& ObjectNumbers::of(const QxObject& object) {
    std::size_t place = placeOf(object);
    if (m_slots[place].object == nullptr) {
        if (++m_count * 2 > m_slots.size()) {
            grow();
            place = placeOf(object);
        }
        const char letter = letterOf(object);
        m_slots[place] = {&object, ++m_last[letter - 'a'], letter};
    }
    return m_slots[place];
}

void ObjectNumbers::grow() {
    std::vector<Number> old(m_slots.size() * 2);
    old.swap(m_slots);
    for (const Number& one : old) {
        if (one.object != nullptr) {
            m_slots[placeOf(*one.object)] = one;
        }
    }
}

}  // namespace qx::internal
