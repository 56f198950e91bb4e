// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The labels of a connector.

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/internal/Extras.h"

using qx::internal::ConnectorExtras;
using qx::internal::Ref;

const Ref<QxLabelManager>* QxConnector::pQueryLabelSlot() const {
    const auto* extras = static_cast<const ConnectorExtras*>(pQueryExtras());
    return extras != nullptr ? &extras->labels : nullptr;
}

Ref<QxLabelManager>& QxConnector::labelSlot() {
    return static_cast<ConnectorExtras&>(extras()).labels;
}

QxConnectorLabel* QxConnector::vNewLabel(int flag) {
    auto* factory = static_cast<QxFactory*>(pUnverifiedFactory());
    return factory != nullptr ? factory->qxNewConnectorLabel(this, flag) : nullptr;
}

QxConnectorLabel* QxConnector::vAddLabel(const wchar_t* name, int flag) {
    return addPlacedLabel(name, flag);
}

QxConnectorLabel* QxConnector::vInsertLabel(QxConnectorLabel* label) {
    return linkLabel(label);
}

QxConnectorLabel* QxConnector::vRemoveLabel(QxConnectorLabel* label) {
    return unlinkLabel(label);
}

int QxConnector::vDiscardLabel(QxConnectorLabel* label) {
    return destroyLabel(label);
}

void QxConnector::debugOutputLabels(int depth) const {
    debugOutputOwnLabels(depth);
}

int QxConnector::userFieldsInUse() const {
    return QxExtendableGraphObject::userFieldsInUse() | labelUserFieldsInUse(false);
}

void QxConnector::nullUserFields() {
    QxExtendableGraphObject::nullUserFields();
    nullLabelUserFields(false);
}

int QxConnector::internalUserFieldsInUse() const {
    return QxExtendableGraphObject::internalUserFieldsInUse() | labelUserFieldsInUse(true);
}

void QxConnector::nullInternalUserFields() {
    QxExtendableGraphObject::nullInternalUserFields();
    nullLabelUserFields(true);
}
