// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Repulsion between all pairs of nodes, the costly half of a spring embedder's round
// (P. Eades, "A heuristic for graph drawing", Congressus Numerantium 42, 1984).
//
// Every node pushes every other with the vector between their centers times 100 L^2 / n^2, n being
// the distance rounded down. Each push is truncated to whole units before it is added, so the sum
// of a node is a sum of integers: it comes out the same in whatever order, by however many threads
// and lanes the pushes are added. And truncation is odd: what i does to j is exactly the opposite
// of what j does to i, so each pair is worked out once. No push exceeds 100 L^2, the strength.
//
// Two paths give those sums. The vector path (AVX2, chosen when the program runs) takes four
// columns at a time against one row: the row's sum stays in registers, the reaction goes into the
// columns' accumulators. Rows go in groups of four against column tiles that fit the first-level
// cache; the few pairs inside a group are taken row by row without reaction. Everything is computed
// in doubles, and every step is exact or rounded as in the plain loop:
//   - differences and their squares are whole numbers below 2^51, given that the drawing spans less
//     than 2^25 units; a fused multiply-add would not change them;
//   - the square root, rounded correctly by the hardware, has the right whole part below 2^52;
//   - the quotient and the product are rounded once each, in the same order as in the plain loop;
//   - the sums are whole numbers below 2^53 as long as the strength times the number of nodes is.
//     Larger ones, of up to 63 bits, are kept in integers: a truncated push, a whole number below
//     2^51, stands in the low bits of the double that adding 1.5 * 2^52 makes of it.
// The arrays are filled up to whole groups with nodes so far away that their pushes truncate to 0,
// which spares all special cases at the ends.
// The scalar path takes any coordinates, with integers for distances and sums; it serves drawings
// beyond those limits and processors without the vector unit. It sums in 64 bits where that is
// enough, and in 128 for desired lengths of many millions.
//
// Cost: n (n - 1) / 2 + n f pairs for n moving and f fixed nodes, each one division and one square
// root: these two bound the speed, at about 0.8 ns a pair on one core of a current processor. A
// square root in single precision, corrected to the exact whole part, is no faster: the correction
// costs what the shorter root saves. Threads take every k-th group of rows, with accumulators of
// their own that are added at the end; memory is 16 bytes a node and thread.

#include "qx/layout/internal/QxRepulsion.h"

#include <algorithm>
#include <limits>
#include <system_error>
#include <thread>

#include "qx/foundation/geometry/QxArithmetic.h"

#if defined(__x86_64__) && defined(__GNUC__)
#define QX_HAS_AVX2_PATH 1
#include <immintrin.h>
#else
#define QX_HAS_AVX2_PATH 0
#endif

namespace qx::internal {

namespace {

/// What sums of whole numbers may come to in 64-bit integers, and in doubles.
constexpr double MaxIntegerSum = 0x1p62;
constexpr double MaxDoubleSum = 0x1p52;

/// What one thread works on: every `step`-th group of rows, beginning with group `first`.
struct Share {
    std::size_t first;
    std::size_t step;
};

/// Adds to `row` the push of a node at (columnX, columnY) on one at (rowX, rowY) and, with Mirror,
/// to `column` the push the other way. The scalar path's inner step.
template <bool Mirror, class Sum>
void addPair(std::int64_t rowX, std::int64_t rowY, std::int64_t columnX, std::int64_t columnY,
             double length, ForceTotal<Sum>& row, ForceTotal<Sum>& column) {
    const std::int64_t dx = rowX - columnX;
    const std::int64_t dy = rowY - columnY;
    const std::int64_t n = qx::lengthOf(dx, dy);
    if (n == 0) {
        return;
    }
    ForceTotal<Sum> push;
    push.add(dx, dy, repulsionScale(length, static_cast<double>(n)));
    row.x += push.x;
    row.y += push.y;
    if constexpr (Mirror) {
        column.x -= push.x;
        column.y -= push.y;
    }
}

/// The scalar path: any coordinates, one pair at a time; the sums have to fit their type.
template <class Sum>
class ScalarRepulsion {
public:
    ScalarRepulsion(const CenterArrays& moving, const CenterArrays& fixed, double length,
                    std::size_t threads)
        : m_moving(moving),
          m_fixed(fixed),
          m_length(length),
          m_sums(threads, std::vector<ForceTotal<Sum>>(moving.count())) {}

    void addShare(Share share) {
        std::vector<ForceTotal<Sum>>& sums = m_sums[share.first];
        const std::size_t count = m_moving.count();
        for (std::size_t i = share.first; i < count; i += share.step) {
            const std::int32_t x = m_moving.x[i];
            const std::int32_t y = m_moving.y[i];
            ForceTotal<Sum> row;
            for (std::size_t j = i + 1; j < count; ++j) {
                addPair<true>(x, y, m_moving.x[j], m_moving.y[j], m_length, row, sums[j]);
            }
            for (std::size_t j = 0; j < m_fixed.count(); ++j) {
                addPair<false>(x, y, m_fixed.x[j], m_fixed.y[j], m_length, row, row);
            }
            sums[i].x += row.x;
            sums[i].y += row.y;
        }
    }

    void collect(ForceArrays& forces) const {
        for (const std::vector<ForceTotal<Sum>>& sums : m_sums) {
            for (std::size_t i = 0; i < sums.size(); ++i) {
                forces.x[i] += sums[i].x;
                forces.y[i] += sums[i].y;
            }
        }
    }

private:
    const CenterArrays& m_moving;
    const CenterArrays& m_fixed;
    double m_length;
    std::vector<std::vector<ForceTotal<Sum>>> m_sums;
};

#if QX_HAS_AVX2_PATH

#define QX_AVX2 __attribute__((target("avx2")))

constexpr std::size_t Lanes = 4;
constexpr std::size_t TileColumns = 1024;
/// Where the nodes stand that fill the last group up: so far off that any push truncates to 0, and
/// near enough that the square of the distance is still a double.
constexpr double FarAway = 0x1p200;

/// 1.5 * 2^52: added to a whole number below 2^51, it leaves the number in the low bits.
constexpr double WholeBits = 0x1.8p52;

struct DoubleArrays {
    std::vector<double> x;
    std::vector<double> y;
};

template <class Value>
struct SumArrays {
    explicit SumArrays(std::size_t count) : x(count), y(count) {}

    std::vector<Value> x;
    std::vector<Value> y;
};

std::size_t wholeGroups(std::size_t count) {
    return (count + Lanes - 1) / Lanes * Lanes;
}

DoubleArrays spreadOut(const CenterArrays& centers) {
    DoubleArrays result{{centers.x.begin(), centers.x.end()}, {centers.y.begin(), centers.y.end()}};
    result.x.resize(wholeGroups(centers.count()), FarAway);
    result.y.resize(wholeGroups(centers.count()), FarAway);
    return result;
}

QX_AVX2 inline __m256d truncated(__m256d lanes) {
    return _mm256_round_pd(lanes, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
}

/// Sums that stay below 2^53, in doubles.
struct DoubleLanes {
    using Value = double;
    using Lanes = __m256d;

    QX_AVX2 static Lanes zero() { return _mm256_setzero_pd(); }
    QX_AVX2 static Lanes load(const Value* values) { return _mm256_loadu_pd(values); }
    QX_AVX2 static void store(Value* values, Lanes a) { _mm256_storeu_pd(values, a); }
    QX_AVX2 static Lanes of(__m256d push) { return truncated(push); }
    QX_AVX2 static Lanes add(Lanes a, Lanes b) { return _mm256_add_pd(a, b); }
    QX_AVX2 static Lanes subtract(Lanes a, Lanes b) { return _mm256_sub_pd(a, b); }
};

/// Larger ones, in integers; each push is below 2^51.
struct IntegerLanes {
    using Value = std::int64_t;
    using Lanes = __m256i;

    QX_AVX2 static Lanes zero() { return _mm256_setzero_si256(); }
    QX_AVX2 static Lanes load(const Value* values) {
        return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(values));
    }
    QX_AVX2 static void store(Value* values, Lanes a) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(values), a);
    }
    QX_AVX2 static Lanes of(__m256d push) {
        const __m256d bits = _mm256_set1_pd(WholeBits);
        return _mm256_sub_epi64(_mm256_castpd_si256(_mm256_add_pd(truncated(push), bits)),
                                _mm256_castpd_si256(bits));
    }
    QX_AVX2 static Lanes add(Lanes a, Lanes b) { return _mm256_add_epi64(a, b); }
    QX_AVX2 static Lanes subtract(Lanes a, Lanes b) { return _mm256_sub_epi64(a, b); }
};

template <class Sums>
QX_AVX2 inline typename Sums::Value sumOfLanes(typename Sums::Lanes lanes) {
    typename Sums::Value values[Lanes];
    Sums::store(values, lanes);
    return (values[0] + values[1]) + (values[2] + values[3]);
}

/// Adds to row `row` the pushes of the columns `from` to `to` and, with Mirror, to the columns what
/// the row does to them.
template <class Sums, bool Mirror>
QX_AVX2 void addRow(const DoubleArrays& rows, std::size_t row,
                    SumArrays<typename Sums::Value>& rowSums, const DoubleArrays& columns,
                    std::size_t from, std::size_t to, double strength) {
    const __m256d rowX = _mm256_set1_pd(rows.x[row]);
    const __m256d rowY = _mm256_set1_pd(rows.y[row]);
    const __m256d one = _mm256_set1_pd(1.0);
    const __m256d dividend = _mm256_set1_pd(strength);
    const double* const columnX = columns.x.data();
    const double* const columnY = columns.y.data();
    auto* const backX = rowSums.x.data();
    auto* const backY = rowSums.y.data();
    auto sumX = Sums::zero();
    auto sumY = Sums::zero();
    for (std::size_t j = from; j < to; j += Lanes) {
        const __m256d dx = _mm256_sub_pd(rowX, _mm256_loadu_pd(columnX + j));
        const __m256d dy = _mm256_sub_pd(rowY, _mm256_loadu_pd(columnY + j));
        const __m256d square = _mm256_add_pd(_mm256_mul_pd(dx, dx), _mm256_mul_pd(dy, dy));
        const __m256d n = _mm256_floor_pd(_mm256_sqrt_pd(square));
        // n is 0 only for equal centers, whose difference makes a push of 0 with any divisor.
        const __m256d divisor = _mm256_max_pd(_mm256_mul_pd(n, n), one);
        const __m256d scale = _mm256_div_pd(dividend, divisor);
        const auto pushX = Sums::of(_mm256_mul_pd(dx, scale));
        const auto pushY = Sums::of(_mm256_mul_pd(dy, scale));
        sumX = Sums::add(sumX, pushX);
        sumY = Sums::add(sumY, pushY);
        if constexpr (Mirror) {
            Sums::store(backX + j, Sums::subtract(Sums::load(backX + j), pushX));
            Sums::store(backY + j, Sums::subtract(Sums::load(backY + j), pushY));
        }
    }
    backX[row] += sumOfLanes<Sums>(sumX);
    backY[row] += sumOfLanes<Sums>(sumY);
}

/// The vector path: coordinates as doubles, four pairs at a time.
template <class Sums>
class VectorRepulsion {
public:
    VectorRepulsion(const CenterArrays& moving, const CenterArrays& fixed, double length,
                    std::size_t threads)
        : m_moving(spreadOut(moving)),
          m_fixed(spreadOut(fixed)),
          m_strength(repulsionScale(length, 1.0)),
          m_sums(threads, Arrays(m_moving.x.size())) {}

    void addShare(Share share) {
        Arrays& sums = m_sums[share.first];
        const std::size_t rows = m_moving.x.size();
        const std::size_t start = share.first * Lanes;
        const std::size_t step = share.step * Lanes;
        for (std::size_t tile = 0; tile < rows; tile += TileColumns) {
            const std::size_t tileEnd = std::min(rows, tile + TileColumns);
            for (std::size_t group = start; group < tileEnd; group += step) {
                if (group >= tile) {
                    addGroup<false>(group, sums, m_moving, group, group + Lanes);
                }
                addGroup<true>(group, sums, m_moving, std::max(tile, group + Lanes), tileEnd);
            }
        }
        const std::size_t columns = m_fixed.x.size();
        for (std::size_t tile = 0; tile < columns; tile += TileColumns) {
            const std::size_t tileEnd = std::min(columns, tile + TileColumns);
            for (std::size_t group = start; group < rows; group += step) {
                addGroup<false>(group, sums, m_fixed, tile, tileEnd);
            }
        }
    }

    void collect(ForceArrays& forces) const {
        for (const Arrays& sums : m_sums) {
            for (std::size_t i = 0; i < forces.x.size(); ++i) {
                forces.x[i] += static_cast<std::int64_t>(sums.x[i]);
                forces.y[i] += static_cast<std::int64_t>(sums.y[i]);
            }
        }
    }

private:
    using Arrays = SumArrays<typename Sums::Value>;

    template <bool Mirror>
    void addGroup(std::size_t group, Arrays& sums, const DoubleArrays& columns, std::size_t from,
                  std::size_t to) const {
        for (std::size_t row = group; row < group + Lanes; ++row) {
            addRow<Sums, Mirror>(m_moving, row, sums, columns, from, to, m_strength);
        }
    }

    DoubleArrays m_moving;
    DoubleArrays m_fixed;
    double m_strength;
    std::vector<Arrays> m_sums;
};

/// The smallest and largest coordinate seen.
struct Range {
    std::int64_t low = std::numeric_limits<std::int64_t>::max();
    std::int64_t high = std::numeric_limits<std::int64_t>::min();

    void include(const std::vector<std::int32_t>& values) {
        for (const std::int32_t value : values) {
            low = std::min<std::int64_t>(low, value);
            high = std::max<std::int64_t>(high, value);
        }
    }
    bool spansLessThan(std::int64_t extent) const { return low > high || high - low < extent; }
};

/// Whether the distances of the nodes and the pushes between them are exact in doubles.
bool fitsDoubles(const CenterArrays& moving, const CenterArrays& fixed, double strength) {
    constexpr double MaxStrength = 0x1p50;
    constexpr std::int64_t MaxExtent = std::int64_t{1} << 25U;
    Range x;
    Range y;
    x.include(moving.x);
    x.include(fixed.x);
    y.include(moving.y);
    y.include(fixed.y);
    return strength < MaxStrength && x.spansLessThan(MaxExtent) && y.spansLessThan(MaxExtent);
}

#endif

/// How many threads the work is shared among: a thread should have a good half million pairs.
std::size_t threadsFor(const CenterArrays& moving, const CenterArrays& fixed, int wanted) {
    constexpr double PairsPerThread = 5e5;
    constexpr std::size_t MaxThreads = 64;
    const auto count = static_cast<double>(moving.count());
    const double pairs = count * (count / 2 + static_cast<double>(fixed.count()));
    const auto worth = static_cast<std::size_t>(pairs / PairsPerThread);
    const std::size_t automatic = std::min<std::size_t>(worth, std::thread::hardware_concurrency());
    const std::size_t threads = wanted > 0 ? static_cast<std::size_t>(wanted) : automatic;
    return std::clamp<std::size_t>(threads, 1, MaxThreads);
}

/// Runs `work(share)` for each share, all but the first on threads of their own; where the system
/// has no thread left, on this one.
template <class Work>
void shareOut(std::size_t threads, const Work& work) {
    std::vector<std::thread> workers;
    workers.reserve(threads);
    for (std::size_t k = 1; k < threads; ++k) {
        try {
            workers.emplace_back(work, Share{k, threads});
        } catch (const std::system_error&) {
            work(Share{k, threads});
        }
    }
    work(Share{0, threads});
    for (std::thread& worker : workers) {
        worker.join();
    }
}

template <class Path>
ForceArrays repulsionOn(const CenterArrays& moving, const CenterArrays& fixed, double length,
                        std::size_t threads) {
    Path path(moving, fixed, length, threads);
    shareOut(threads, [&path](Share share) { path.addShare(share); });
    ForceArrays forces(moving.count());
    path.collect(forces);
    return forces;
}

template <class Sum>
ForceArrays byAllPairs(const CenterArrays& moving, const CenterArrays& fixed, double length) {
    ForceArrays forces(moving.count());
    for (std::size_t i = 0; i < moving.count(); ++i) {
        ForceTotal<Sum> sum;
        for (const CenterArrays* others : {&fixed, &moving}) {
            for (std::size_t j = 0; j < others->count(); ++j) {
                addPair<false>(moving.x[i], moving.y[i], others->x[j], others->y[j], length, sum,
                               sum);
            }
        }
        forces.x[i] = sum.x;
        forces.y[i] = sum.y;
    }
    return forces;
}

}  // namespace

bool hasRepulsionVectorUnit() {
#if QX_HAS_AVX2_PATH
    return __builtin_cpu_supports("avx2") != 0;
#else
    return false;
#endif
}

ForceArrays repulsion(const CenterArrays& moving, const CenterArrays& fixed, std::int32_t length,
                      const RepulsionOptions& options) {
    const std::size_t threads = threadsFor(moving, fixed, options.threads);
    const double strength = repulsionScale(length, 1.0);
    const double largestSum = strength * static_cast<double>(moving.count() + fixed.count());
    if (largestSum > MaxIntegerSum) {
        return repulsionOn<ScalarRepulsion<ForceSum>>(moving, fixed, length, threads);
    }
#if QX_HAS_AVX2_PATH
    if (options.vectorUnit && hasRepulsionVectorUnit() && fitsDoubles(moving, fixed, strength)) {
        return largestSum < MaxDoubleSum
                   ? repulsionOn<VectorRepulsion<DoubleLanes>>(moving, fixed, length, threads)
                   : repulsionOn<VectorRepulsion<IntegerLanes>>(moving, fixed, length, threads);
    }
#endif
    return repulsionOn<ScalarRepulsion<std::int64_t>>(moving, fixed, length, threads);
}

ForceArrays repulsionByAllPairs(const CenterArrays& moving, const CenterArrays& fixed,
                                std::int32_t length) {
    const double largestSum =
        repulsionScale(length, 1.0) * static_cast<double>(moving.count() + fixed.count());
    return largestSum > MaxIntegerSum ? byAllPairs<ForceSum>(moving, fixed, length)
                                      : byAllPairs<std::int64_t>(moving, fixed, length);
}

}  // namespace qx::internal
