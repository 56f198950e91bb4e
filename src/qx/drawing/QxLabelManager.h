// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDrawingDLists.h"
#include "qx/foundation/graph/QxGraphObject.h"

namespace qx::internal {
class Coverage;
class LabelPresence;
}  // namespace qx::internal

/// Keeps the labels of one owner in the order in which they were inserted. An owner makes it for
/// its first label.
class QX_API QxLabelManager : public QxObject {
public:
    /// The labels; the list belongs to the manager, and only the owner's operations change it.
    const QxLabelDList* pLabelList() const { return &m_labels; }

private:
    friend class qx::internal::Coverage;
    friend class qx::internal::LabelPresence;
    template <class Owner, class Label>
    friend class QxLabelOwnerOf;

    explicit QxLabelManager(QxGraphObject* owner) : m_outdatedCell(owner) {}

    QxLabelDList m_labels;
    /// How many of them the graph of the owner counts.
    std::int32_t m_counted = 0;
    /// By it the graph lists an edge whose labels have moved since it looked last.
    QxDListCell m_outdatedCell;
    /// The only label that has moved, while that is all; else null.
    QxLabel* m_outdated = nullptr;
};
