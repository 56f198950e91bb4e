// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxObject.h"

#include <ostream>
#include <typeinfo>

#include "qx/foundation/util/QxDebugStream.h"

IDispatch* QxObject::pVInterface() {
    return nullptr;
}

void QxObject::allocateCOMObjects() {}

void QxObject::deallocateCOMObjects() {}

std::uint32_t QxObject::vAddRef() {
    return ++m_references;
}

std::uint32_t QxObject::vRelease() {
    const std::uint32_t left = --m_references;
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT QxObject::vQueryInterface(REFIID, void** ppv) {
    if (ppv != nullptr) {
        *ppv = nullptr;
    }
    return E_NOINTERFACE;
}

HRESULT QxObject::vInvoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) {
    return E_NOTIMPL;
}

HRESULT QxObject::vGetIDsOfName(REFIID, OLECHAR**, UINT, LCID, DISPID*) {
    return E_NOTIMPL;
}

HRESULT QxObject::interfaceSupportsErrorInfo(REFIID) {
    return E_NOTIMPL;
}

void QxObject::copyObject(const QxObject*) {}

void QxObject::copyAttributes(const QxObject*) {}

QxObject* QxObject::pParentEventSource() const {
    return nullptr;
}

std::int32_t QxObject::graphFileID() const {
    return 0;
}

std::int32_t QxObject::localID() const {
    return 0;
}

int QxObject::isOwnedObject() const {
    return 0;
}

std::size_t QxObject::hashCode() const {
    return reinterpret_cast<std::size_t>(this) >> 4;
}

int QxObject::equals(const QxObject* other) const {
    return other == this ? 1 : 0;
}

int QxObject::isContext() const {
    return 0;
}

void QxObject::debugOutput(int depth) const {
    qxDebugIndent(depth) << typeid(*this).name() << '\n';
}

std::int32_t QxObject::activeXID() const {
    return 0;
}

QxObject* QxObject::vCloneObject() const {
    return nullptr;
}

QxObject* QxObject::vCloneAttributes() const {
    return nullptr;
}
