// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

#include "qx/foundation/util/QxApi.h"
#include "qx/foundation/util/QxObjectFlags.h"
#include "qx/foundation/util/QxOleTypes.h"

/// How much of a source a copy takes over.
enum QxDeepFlagEnum : int {
    QxDeepCopy = 0,      ///< the copy gets its own copies of everything the source contains
    QxAttributeCopy = 1  ///< only the source's own attributes
};

/// Root of all classes: one reference count, one flag word, copying, and the slots through which
/// an automation layer reaches the object.
///
/// An object starts with one reference. Objects on the stack, or embedded in others, keep that one
/// for life; objects on the heap are destroyed by the vRelease that drops the last.
class QX_API QxObject {
public:
    QxObject() noexcept = default;
    /// A copy is a new object: one reference, no flags.
    QxObject(const QxObject&) noexcept {}
    /// Assignment takes over what subclasses add; identity (references, flags) stays.
    QxObject& operator=(const QxObject&) noexcept { return *this; }

    /// @name Pairing with automation objects
    /// Without an automation layer there is nothing to pair with: null, or E_NOTIMPL.
    /// @{
    virtual IDispatch* pVInterface();
    virtual void allocateCOMObjects();
    virtual void deallocateCOMObjects();
    /// Takes one more reference; returns the new count.
    virtual std::uint32_t vAddRef();
    /// Drops one reference and destroys the object when none is left; returns the new count.
    virtual std::uint32_t vRelease();
    virtual HRESULT vQueryInterface(REFIID riid, void** ppv);
    virtual HRESULT vInvoke(DISPID member, REFIID riid, LCID locale, WORD flags, DISPPARAMS* params,
                            VARIANT* result, EXCEPINFO* exception, UINT* argumentError);
    virtual HRESULT vGetIDsOfName(REFIID riid, OLECHAR** names, UINT count, LCID locale,
                                  DISPID* ids);
    virtual HRESULT interfaceSupportsErrorInfo(REFIID riid);
    /// @}

    /// Makes this object a deep copy of `source`; null or the object itself changes nothing.
    virtual void copyObject(const QxObject* source);
    /// Takes over only the attributes of `source`; null or the object itself changes nothing.
    virtual void copyAttributes(const QxObject* source);
    /// The object that hears this object's change events next; null at the end of the way.
    virtual QxObject* pParentEventSource() const;

    virtual ~QxObject() = default;

    /// Identities within a saved document; 0 when the object has none.
    virtual std::int32_t graphFileID() const;
    virtual std::int32_t localID() const;
    /// 1 for objects that have an owner (QxOwnedObject), else 0.
    virtual int isOwnedObject() const;
    /// Equal objects have equal hash codes. By default identity decides.
    virtual std::size_t hashCode() const;
    /// 1 when the two count as equal; 0 for null.
    virtual int equals(const QxObject* other) const;
    /// 1 for objects that are contexts; 0 here.
    virtual int isContext() const;
    /// Describes the object on the diagnostic stream, indented by `depth` steps.
    virtual void debugOutput(int depth) const;
    /// The number by which an automation layer knows the object; 0 when there is none.
    virtual std::int32_t activeXID() const;

    /// A new deep copy (attribute copy); the caller owns the one reference it starts with.
    QxObject* cloneObject() const { return vCloneObject(); }
    QxObject* cloneAttributes() const { return vCloneAttributes(); }

    /// Number of references held on this object.
    std::uint32_t referenceCount() const noexcept { return m_references; }

    /// Read-only objects are refused by the automation layer wherever they would be changed.
    /// The setter returns what it stored.
    int isReadOnly() const noexcept { return hasFlag(qx::flags::ReadOnly); }
    int isReadOnly(int value) noexcept {
        setFlag(qx::flags::ReadOnly, value);
        return isReadOnly();
    }

    /// The state bits of the object; each class family names its own.
    std::uint32_t flagWord() const noexcept { return m_flags; }

protected:
    /// Creates a new object of the same class; null for classes that cannot be cloned.
    virtual QxObject* vCloneObject() const;
    virtual QxObject* vCloneAttributes() const;

    int hasFlag(std::uint32_t bit) const noexcept { return (m_flags & bit) != 0 ? 1 : 0; }
    void setFlag(std::uint32_t bit, int value) noexcept {
        m_flags = value != 0 ? (m_flags | bit) : (m_flags & ~bit);
    }

private:
    std::uint32_t m_references = 1;
    std::uint32_t m_flags = 0;
};
