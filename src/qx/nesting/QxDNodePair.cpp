// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/nesting/QxDNodePair.h"

QxDNodePair::QxDNodePair(const QxDNodePair* source) {
    if (source != nullptr) {
        *this = *source;
    }
}

void QxDNodePair::copyObject(const QxObject* source) {
    if (source != nullptr && source != this) {
        *this = *static_cast<const QxDNodePair*>(source);
    }
}

void QxDNodePair::copyAttributes(const QxObject* source) {
    QxDNodePair::copyObject(source);
}

void QxDNodePair::init() {
    *this = QxDNodePair();
}

QxObject* QxDNodePair::vCloneObject() const {
    return new QxDNodePair(this);
}

QxObject* QxDNodePair::vCloneAttributes() const {
    return new QxDNodePair(this);
}
