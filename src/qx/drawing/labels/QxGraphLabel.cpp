// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxGraphLabel.h"

#include "qx/drawing/QxDGraph.h"

QxGraphLabel::QxGraphLabel(QxOwnedObject* owner, std::int16_t perMilX, std::int16_t perMilY)
    : QxRectangularObjectLabel(owner, perMilX, perMilY) {}

QxGraphLabel::QxGraphLabel(const QxGraphLabel& source, QxDeepFlagEnum)
    : QxGraphLabel(source.pOwner()) {
    QxGraphLabel::copyAttributes(&source);
}

int QxGraphLabel::isGraphLabel() const {
    return 1;
}

QxDGraph* QxGraphLabel::pOwnerGraph() const {
    return static_cast<QxDGraph*>(pValidOwner());
}

void QxGraphLabel::copyLabel(const QxGraphLabel* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    if (QxDGraph* owner = pOwnerGraph()) {
        owner->copyIntoLabel(*this, *source, deep);
    } else {
        copyAttributes(source);
    }
}

QxObject* QxGraphLabel::vCloneObject() const {
    return new QxGraphLabel(*this, QxDeepCopy);
}

QxObject* QxGraphLabel::vCloneAttributes() const {
    return new QxGraphLabel(*this, QxAttributeCopy);
}
