// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxRectangularObjectLabel.h"

/// A label of a whole graph, placed relative to the bounds of the graph. It does not count for
/// these bounds, but lies within the margin bounding rectangle.
class QX_API QxGraphLabel : public QxRectangularObjectLabel {
public:
    explicit QxGraphLabel(QxOwnedObject* owner, std::int16_t perMilX = 0, std::int16_t perMilY = 0);
    /// A free copy in the factory of `source`.
    QxGraphLabel(const QxGraphLabel& source, QxDeepFlagEnum depth);

    int isGraphLabel() const override;
    QxDGraph* pOwnerGraph() const override;
    QxGraphLabel* cloneObject() const { return static_cast<QxGraphLabel*>(vCloneObject()); }
    QxGraphLabel* cloneAttributes() const { return static_cast<QxGraphLabel*>(vCloneAttributes()); }
    /// Makes the label a copy of `source`, in the same place of its owner's list; listeners hear of
    /// a removal and an insertion.
    void copyLabel(const QxGraphLabel* source, int deep);

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;
};
