// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "qx/foundation/util/QxApi.h"

namespace qx::internal {

/// Centers of nodes, gathered from their objects; the i-th node is (x[i], y[i]).
struct CenterArrays {
    std::vector<std::int32_t> x;
    std::vector<std::int32_t> y;

    std::size_t count() const { return x.size(); }
    void add(std::int32_t centerX, std::int32_t centerY) {
        x.push_back(centerX);
        y.push_back(centerY);
    }
};

/// A sum of force components, exact for all coordinates and lengths: a term has up to 104 bits.
using ForceSum = __int128;

/// A force in the making. Terms are truncated to integers one by one.
template <class Sum>
struct ForceTotal {
    Sum x = 0;
    Sum y = 0;

    /// Adds the vector (dx, dy) times the scale.
    void add(std::int64_t dx, std::int64_t dy, double scale) {
        x += static_cast<Sum>(static_cast<double>(dx) * scale);
        y += static_cast<Sum>(static_cast<double>(dy) * scale);
    }
};

/// Sums of forces; the i-th node is pushed by (x[i], y[i]).
struct ForceArrays {
    explicit ForceArrays(std::size_t count) : x(count), y(count) {}

    std::vector<ForceSum> x;
    std::vector<ForceSum> y;
};

/// How the sums are computed, never what they are.
struct RepulsionOptions {
    /// Number of threads; 0 or less: as many as the processor has and the work is worth.
    int threads = 0;
    /// Whether the vector unit may be used where there is one.
    bool vectorUnit = true;
};

/// The push between two nodes at a rounded distance n: their difference times this.
/// One definition for all paths, for its rounding decides every force.
inline double repulsionScale(double length, double n) {
    return 100.0 * (length * length) / (n * n);
}

/// The pull along an edge of rounded length n: the difference of its ends times this. A desired
/// length of 0 counts as 1.
inline double attractionScale(double length, double n) {
    return 100.0 * (n * n) / std::max(length * length, 1.0);
}

/// For every moving node, the sum of the pushes it gets from all fixed and all moving nodes:
/// each difference of centers times repulsionScale, both components truncated. Nodes at the same
/// center do not push each other.
QX_API ForceArrays repulsion(const CenterArrays& moving, const CenterArrays& fixed,
                             std::int32_t length, const RepulsionOptions& options);

/// The same by the plain loop over all ordered pairs, in the words of the definition: the yardstick
/// that `repulsion` is held against.
QX_API ForceArrays repulsionByAllPairs(const CenterArrays& moving, const CenterArrays& fixed,
                                       std::int32_t length);

/// Whether this processor has the vector unit that `repulsion` makes use of.
QX_API bool hasRepulsionVectorUnit();

}  // namespace qx::internal
