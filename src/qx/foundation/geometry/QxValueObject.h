// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "qx/foundation/util/QxObject.h"

/// What every geometry value does the same way: cloning, copying and comparing by value.
///
/// `T` is the class that derives from it, `Base` the class it extends. `T` supplies operator== and
/// valueHash(). Values contain nothing that a copy could share, so deep copies and attribute
/// copies are the same.
template <class T, class Base = QxObject>
class QX_API QxValueObject : public Base {
public:
    using Base::Base;
    QxValueObject() noexcept = default;

    /// A new copy; the caller owns the one reference it starts with.
    T* cloneObject() const { return static_cast<T*>(this->vCloneObject()); }
    T* cloneAttributes() const { return static_cast<T*>(this->vCloneAttributes()); }

    /// Takes over the value of `source`; null or an object of another class changes nothing.
    void copyObject(const QxObject* source) override { assignFrom(source); }
    void copyAttributes(const QxObject* source) override { assignFrom(source); }

    /// 1 when `other` is of this class and has the same value. Where one class of values extends
    /// another, what the first of them compares counts, so that both sides answer alike: a point
    /// equals the tuple of its coordinates.
    int equals(const QxObject* other) const override {
        if constexpr (std::is_same_v<Base, QxObject>) {
            const auto* value = dynamic_cast<const T*>(other);
            return value != nullptr && self() == *value ? 1 : 0;
        } else {
            return Base::equals(other);
        }
    }
    std::size_t hashCode() const override { return self().valueHash(); }

protected:
    QxObject* vCloneObject() const override { return new T(self()); }
    QxObject* vCloneAttributes() const override { return new T(self()); }

    /// Mixes one more number into a hash code.
    static constexpr std::size_t mixHash(std::size_t hash, std::int64_t number) noexcept {
        hash = (hash ^ static_cast<std::size_t>(number)) * 0x9E3779B97F4A7C15U;
        return hash ^ (hash >> 29);
    }

private:
    const T& self() const noexcept { return static_cast<const T&>(*this); }
    void assignFrom(const QxObject* source) {
        const auto* value = dynamic_cast<const T*>(source);
        if (value != nullptr && value != this) {
            static_cast<T&>(*this) = *value;
        }
    }
};
