// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxRectangularObjectLabel.h"

/// A label of a connector. It counts for the bounds of the graph together with the node, while its
/// connector is a specified one.
class QX_API QxConnectorLabel : public QxRectangularObjectLabel {
public:
    explicit QxConnectorLabel(QxOwnedObject* owner, std::int16_t perMilX = 0,
                              std::int16_t perMilY = 0);
    /// A free copy in the factory of `source`.
    QxConnectorLabel(const QxConnectorLabel& source, QxDeepFlagEnum depth);

    int isConnectorLabel() const override;
    QxConnector* pOwnerConnector() const override;
    QxConnectorLabel* cloneObject() const { return static_cast<QxConnectorLabel*>(vCloneObject()); }
    QxConnectorLabel* cloneAttributes() const {
        return static_cast<QxConnectorLabel*>(vCloneAttributes());
    }
    /// Makes the label a copy of `source`, in the same place of its owner's list; listeners hear of
    /// a removal and an insertion.
    void copyLabel(const QxConnectorLabel* source, int deep);

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;
};
