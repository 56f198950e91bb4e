// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxObject.h"

/// An object that has an owner, another such object.
class QX_API QxOwnedObject : public QxObject {
public:
    QxOwnedObject() noexcept = default;
    /// A copy starts without an owner; assignment leaves the owner as it is.
    QxOwnedObject(const QxOwnedObject& source) noexcept : QxObject(source) {}
    QxOwnedObject& operator=(const QxOwnedObject&) noexcept { return *this; }

    /// 1 for factories, else 0.
    virtual int isFactory() const;
    /// What kind of object its class, or an application, says it is; 0 by default.
    virtual std::int32_t objectType() const;
    /// The owner as the class at hand defines it; here the same as pOwner().
    virtual QxOwnedObject* pOwnerObject() const;

    int isOwnedObject() const override;

    /// The owner that was set last; null at first.
    QxOwnedObject* pOwner() const noexcept { return m_owner; }
    /// 1 while the object is inserted in its owner.
    int ownerValid() const noexcept { return hasFlag(qx::flags::OwnerValid); }

protected:
    /// Both return what they stored.
    QxOwnedObject* pOwner(QxOwnedObject* owner) noexcept { return m_owner = owner; }
    int ownerValid(int valid) noexcept {
        setFlag(qx::flags::OwnerValid, valid);
        return ownerValid();
    }

private:
    QxOwnedObject* m_owner = nullptr;
};

static_assert(sizeof(void*) != 8 || sizeof(QxOwnedObject) == 24, "the base of every graph object");
