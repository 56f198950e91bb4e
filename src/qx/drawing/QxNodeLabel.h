// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxRectangularObjectLabel.h"

/// A label of a drawing node. It counts for the bounds of the graph together with its node.
class QX_API QxNodeLabel : public QxRectangularObjectLabel {
public:
    explicit QxNodeLabel(QxOwnedObject* owner, std::int16_t perMilX = 0, std::int16_t perMilY = 0);
    /// A free copy in the factory of `source`.
    QxNodeLabel(const QxNodeLabel& source, QxDeepFlagEnum depth);

    int isNodeLabel() const override;
    QxDNode* pOwnerNode() const override;
    QxNodeLabel* cloneObject() const { return static_cast<QxNodeLabel*>(vCloneObject()); }
    QxNodeLabel* cloneAttributes() const { return static_cast<QxNodeLabel*>(vCloneAttributes()); }
    /// Makes the label a copy of `source`, in the same place of its owner's list; listeners hear of
    /// a removal and an insertion.
    void copyLabel(const QxNodeLabel* source, int deep);

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;
};
