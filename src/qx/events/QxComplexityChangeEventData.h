// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxSingleEventData.h"

class QxDEdge;
class QxDNode;
class QxGraphObject;

/// Names the node or edge that was affected; it has reached its new place already.
class QX_API QxComplexityChangeEventData : public QxSingleEventData {
public:
    explicit QxComplexityChangeEventData(QxGraphObject* source);
    QxComplexityChangeEventData(const QxComplexityChangeEventData& source,
                                QxDeepFlagEnum deep = QxDeepCopy);
    QxComplexityChangeEventData& operator=(const QxComplexityChangeEventData& source) = default;

    QxComplexityChangeEventData* cloneObject() const {
        return static_cast<QxComplexityChangeEventData*>(vCloneObject());
    }
    QxComplexityChangeEventData* cloneAttributes() const {
        return static_cast<QxComplexityChangeEventData*>(vCloneAttributes());
    }

    /// The source when it is a node, an edge; else null.
    QxDNode* pSourceNode() const;
    QxDEdge* pSourceEdge() const;

    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;
};
