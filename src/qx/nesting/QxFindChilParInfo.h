// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "qx/foundation/graph/QxGraphAlgInfo.h"

/// What a search of a neighbourhood notes about a node.
class QX_API QxFindChilParInfo : public QxGraphAlgInfo {
public:
    /// How many levels were left when the search last went on from the node; 0 at first. The setter
    /// returns its argument.
    std::int32_t depth() const { return m_depth; }
    std::int32_t depth(std::int32_t value) { return m_depth = value; }

private:
    std::int32_t m_depth = 0;
};
