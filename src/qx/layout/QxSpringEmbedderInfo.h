// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxSize.h"
#include "qx/foundation/graph/QxGraphAlgInfo.h"

/// What a spring embedder notes about a node: where the present round moves it.
class QX_API QxSpringEmbedderInfo : public QxGraphAlgInfo {
public:
    /// The move of this round in world units; (0, 0) at first.
    const QxSize& displacement() const { return m_displacement; }
    const QxSize& displacement(const QxSize& value) { return m_displacement = value; }

private:
    QxSize m_displacement;
};
