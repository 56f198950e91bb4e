// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxGraphObject.h"

#include "qx/foundation/graph/QxAFactory.h"
#include "qx/foundation/graph/internal/GraphChange.h"
#include "qx/foundation/graph/internal/GraphObjectExtras.h"
#include "qx/foundation/util/QxText.h"

QxGraphObject::QxGraphObject(QxOwnedObject* owner) {
    pOwner(owner);
}

QxGraphObject::~QxGraphObject() = default;

qx::internal::GraphObjectExtras& QxGraphObject::extras() {
    if (!m_extras) {
        m_extras.reset(vNewExtras());
    }
    return *m_extras;
}

qx::internal::GraphObjectExtras* QxGraphObject::vNewExtras() const {
    return new qx::internal::GraphObjectExtras;
}

QxObject* QxGraphObject::pParentEventSource() const {
    return ownerValid() != 0 ? pOwner() : nullptr;
}

QxOwnedObject* QxGraphObject::pOwnerObject() const {
    return pOwner();
}

int QxGraphObject::userFieldsInUse() const {
    return m_extras && (m_extras->userField != 0 || m_extras->userObject != nullptr) ? 1 : 0;
}

void QxGraphObject::nullUserFields() {
    if (m_extras) {
        m_extras->userField = 0;
        m_extras->userObject = nullptr;
    }
}

int QxGraphObject::isGraphManager() const {
    return 0;
}

int QxGraphObject::isGraph() const {
    return 0;
}

int QxGraphObject::isNode() const {
    return 0;
}

int QxGraphObject::isEdge() const {
    return 0;
}

int QxGraphObject::isLabel() const {
    return 0;
}

int QxGraphObject::isConnector() const {
    return 0;
}

int QxGraphObject::isEdgeLabel() const {
    return 0;
}

int QxGraphObject::isRectangularObjectLabel() const {
    return 0;
}

int QxGraphObject::isGraphLabel() const {
    return 0;
}

int QxGraphObject::isNodeLabel() const {
    return 0;
}

int QxGraphObject::isConnectorLabel() const {
    return 0;
}

int QxGraphObject::isPathNode() const {
    return 0;
}

int QxGraphObject::isPathEdge() const {
    return 0;
}

const QxText* QxGraphObject::pNameText() const {
    return m_extras && m_extras->named ? &m_extras->name : nullptr;
}

int QxGraphObject::vIsVisible() const {
    return 1;
}

int QxGraphObject::internalUserFieldsInUse() const {
    return m_extras && (m_extras->internalField != 0 || m_extras->internalObject != nullptr) ? 1
                                                                                             : 0;
}

void QxGraphObject::nullInternalUserFields() {
    if (m_extras) {
        m_extras->internalField = 0;
        m_extras->internalObject = nullptr;
        if (m_extras->isIdle()) {
            m_extras.reset();  // scratch fields are set on whole drawings; do not keep their memory
        }
    }
}

std::size_t QxGraphObject::sizeOf() const {
    return sizeof(QxGraphObject) + (m_extras ? sizeof(*m_extras) : 0);
}

int QxGraphObject::checkInvariants() const {
    return 1;
}

int QxGraphObject::levelNumber() const {
    return 0;
}

const wchar_t* QxGraphObject::pNameString() const {
    const QxText* text = pNameText();
    return text != nullptr ? text->pString() : nullptr;
}

const wchar_t* QxGraphObject::vSetNameString(const wchar_t* name) {
    qx::internal::GraphChange change(*this, *this, NameChanged);
    if (name != nullptr) {
        extras().name = QxText(name);
        m_extras->named = true;
    } else if (m_extras) {
        m_extras->name = QxText();
        m_extras->named = false;
    }
    change.tell();
    return pNameString();
}

void QxGraphObject::copyName(const QxGraphObject& source) {
    vSetNameString(source.pNameString());
}

QxAFactory* QxGraphObject::pFactory() const {
    for (const QxOwnedObject* o = this; o != nullptr && o->ownerValid() != 0;) {
        QxOwnedObject* owner = o->pOwner();
        if (owner != nullptr && (owner->flagWord() & qx::flags::IsFactory) != 0) {
            return static_cast<QxAFactory*>(owner);
        }
        o = owner;
    }
    return nullptr;
}

QxAFactory* QxGraphObject::pUnverifiedFactory() const {
    QxOwnedObject* owner = pOwner();
    while (owner != nullptr && (owner->flagWord() & qx::flags::IsFactory) == 0) {
        owner = owner->pOwner();
    }
    return static_cast<QxAFactory*>(owner);
}

std::int64_t QxGraphObject::userField() const {
    return m_extras ? m_extras->userField : 0;
}

std::int64_t QxGraphObject::userField(std::int64_t value) {
    return extras().userField = value;
}

QxObject* QxGraphObject::pUserField() const {
    return m_extras ? m_extras->userObject : nullptr;
}

QxObject* QxGraphObject::pUserField(QxObject* object) {
    return extras().userObject = object;
}

std::int64_t QxGraphObject::iUserField() const {
    return m_extras ? m_extras->internalField : 0;
}

std::int64_t QxGraphObject::iUserField(std::int64_t value) {
    return extras().internalField = value;
}

QxObject* QxGraphObject::pIUserField() const {
    return m_extras ? m_extras->internalObject : nullptr;
}

QxObject* QxGraphObject::pIUserField(QxObject* object) {
    return extras().internalObject = object;
}
