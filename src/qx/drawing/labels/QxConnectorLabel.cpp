// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxConnectorLabel.h"

#include "qx/drawing/QxConnector.h"

QxConnectorLabel::QxConnectorLabel(QxOwnedObject* owner, std::int16_t perMilX, std::int16_t perMilY)
    : QxRectangularObjectLabel(owner, perMilX, perMilY) {}

QxConnectorLabel::QxConnectorLabel(const QxConnectorLabel& source, QxDeepFlagEnum)
    : QxConnectorLabel(source.pOwner()) {
    QxConnectorLabel::copyAttributes(&source);
}

int QxConnectorLabel::isConnectorLabel() const {
    return 1;
}

QxConnector* QxConnectorLabel::pOwnerConnector() const {
    return static_cast<QxConnector*>(pValidOwner());
}

void QxConnectorLabel::copyLabel(const QxConnectorLabel* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    if (QxConnector* owner = pOwnerConnector()) {
        owner->copyIntoLabel(*this, *source, deep);
    } else {
        copyAttributes(source);
    }
}

QxObject* QxConnectorLabel::vCloneObject() const {
    return new QxConnectorLabel(*this, QxDeepCopy);
}

QxObject* QxConnectorLabel::vCloneAttributes() const {
    return new QxConnectorLabel(*this, QxAttributeCopy);
}
