// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxNodeLabel.h"

#include "qx/drawing/QxDNode.h"

QxNodeLabel::QxNodeLabel(QxOwnedObject* owner, std::int16_t perMilX, std::int16_t perMilY)
    : QxRectangularObjectLabel(owner, perMilX, perMilY) {}

QxNodeLabel::QxNodeLabel(const QxNodeLabel& source, QxDeepFlagEnum) : QxNodeLabel(source.pOwner()) {
    QxNodeLabel::copyAttributes(&source);
}

int QxNodeLabel::isNodeLabel() const {
    return 1;
}

QxDNode* QxNodeLabel::pOwnerNode() const {
    return static_cast<QxDNode*>(pValidOwner());
}

void QxNodeLabel::copyLabel(const QxNodeLabel* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    if (QxDNode* owner = pOwnerNode()) {
        owner->copyIntoLabel(*this, *source, deep);
    } else {
        copyAttributes(source);
    }
}

QxObject* QxNodeLabel::vCloneObject() const {
    return new QxNodeLabel(*this, QxDeepCopy);
}

QxObject* QxNodeLabel::vCloneAttributes() const {
    return new QxNodeLabel(*this, QxAttributeCopy);
}
