// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

/// One of the eight ways to mirror a drawing and turn it by quarter turns.
struct Turn {
    int xx;
    int xy;
    int yx;
    int yy;

    DocumentPoint operator()(const DocumentPoint& p) const {
        return {xx * p.x + xy * p.y, yx * p.x + yy * p.y};
    }
    bool isQuarter() const { return xx == 0; }
    bool isNone() const { return xx == 1 && yy == 1; }
};

/// An edge that leads out of a drawing, as seen from the middle of that.
struct Crossing {
    DocumentPoint member;  ///< the center of what is turned about the middle
    DocumentPoint end;     ///< where the edge ends, as seen from that center; it does not turn
    DocumentPoint other;   ///< the far end
};

/// The turn that makes the crossing edges shortest, all together; none where that would not shorten
/// them notably.
Turn bestTurn(const std::vector<Crossing>& crossings);

}  // namespace qxdraw
