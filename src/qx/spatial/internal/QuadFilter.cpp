// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Which of many boxes meet a rectangle: four compares a box. A query has some fifty hits among a
// few hundred boxes, and any branch that depends on one of them is a coin that the processor cannot
// guess; so all questions about a block's records are answered for all of them, as bits of words.
//
// The vector path (AVX2, chosen when the program runs) takes eight boxes at a time, at about two
// nanoseconds, and gives the answer of the plain loop.

#include "qx/spatial/internal/QuadFilter.h"

#if defined(__x86_64__) && defined(__GNUC__)
#define QX_HAS_AVX2_PATH 1
#include <immintrin.h>
#else
#define QX_HAS_AVX2_PATH 0
#endif

namespace qx::internal {

namespace {

std::uint64_t meetOneByOne(const QuadColumns& boxes, const QuadBox& rect) {
    std::uint64_t hits = 0;
    for (std::uint32_t i = 0; i < boxes.count; ++i) {
        const std::size_t at = i / QuadEight::Lanes * boxes.stride + i % QuadEight::Lanes;
        const QuadBox box{boxes.minX[at], boxes.minY[at], boxes.maxX[at], boxes.maxY[at]};
        hits |= std::uint64_t{rect.meets(box)} << i;
    }
    return hits;
}

QuadMatch matchOneByOne(const QuadBlock& block, const QuadBox& rect, unsigned kinds) {
    QuadMatch match{0, 0, 0};
    for (std::uint64_t left = block.taken; left != 0; left &= left - 1) {
        const auto i = static_cast<std::uint32_t>(std::countr_zero(left));
        const std::uint8_t bits = block.bits[i];
        const bool isHit = (kinds >> (bits & QuadBits::Kind) & 1U) != 0 && rect.meets(block.box(i));
        const bool isUnsure =
            isHit && (bits & QuadBits::Segment) != 0 && !rect.encloses(block.box(i));
        match.hits |= std::uint64_t{isHit} << i;
        match.unsure |= std::uint64_t{isUnsure} << i;
        match.shared |= std::uint64_t{(bits & QuadBits::Shared) != 0} << i;
    }
    return match;
}

#if QX_HAS_AVX2_PATH

#define QX_AVX2 __attribute__((target("avx2")))

constexpr std::uint32_t Lanes = QuadEight::Lanes;

struct RectLanes {
    __m256i minX;
    __m256i minY;
    __m256i maxX;
    __m256i maxY;
};

QX_AVX2 inline RectLanes spread(const QuadBox& rect) {
    return {_mm256_set1_epi32(rect.minX), _mm256_set1_epi32(rect.minY),
            _mm256_set1_epi32(rect.maxX), _mm256_set1_epi32(rect.maxY)};
}

QX_AVX2 inline __m256i load(const void* values) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(values));
}

/// One bit for each lane in which one of the four compares holds.
QX_AVX2 inline std::uint64_t anyGreater(__m256i a, __m256i b, __m256i c, __m256i d, __m256i e,
                                        __m256i f, __m256i g, __m256i h) {
    const __m256i x = _mm256_or_si256(_mm256_cmpgt_epi32(a, b), _mm256_cmpgt_epi32(c, d));
    const __m256i y = _mm256_or_si256(_mm256_cmpgt_epi32(e, f), _mm256_cmpgt_epi32(g, h));
    const __m256 any = _mm256_castsi256_ps(_mm256_or_si256(x, y));
    return static_cast<std::uint64_t>(static_cast<unsigned>(_mm256_movemask_ps(any)));
}

QX_AVX2 inline std::uint64_t missesOf(const RectLanes& box, const RectLanes& rect) {
    return anyGreater(box.minX, rect.maxX, rect.minX, box.maxX, box.minY, rect.maxY, rect.minY,
                      box.maxY);
}

QX_AVX2 inline std::uint64_t reachingOut(const RectLanes& box, const RectLanes& rect) {
    return anyGreater(rect.minX, box.minX, box.maxX, rect.maxX, rect.minY, box.minY, box.maxY,
                      rect.maxY);
}

QX_AVX2 std::uint64_t meetByEights(const QuadColumns& boxes, const QuadBox& rect) {
    const RectLanes wanted = spread(rect);
    std::uint64_t misses = 0;
    for (std::size_t group = (boxes.count + Lanes - 1) / Lanes; group-- > 0;) {
        const std::size_t at = group * boxes.stride;
        const RectLanes eight{load(boxes.minX + at), load(boxes.minY + at), load(boxes.maxX + at),
                              load(boxes.maxY + at)};
        misses = misses << Lanes | missesOf(eight, wanted);
    }
    return boxes.count == 0 ? 0 : ~misses & ~std::uint64_t{0} >> (64 - boxes.count);
}

/// The highest bits of 64 bytes.
QX_AVX2 inline std::uint64_t highBits(__m256i low, __m256i high) {
    const auto lower = static_cast<unsigned>(_mm256_movemask_epi8(low));
    const auto upper = static_cast<unsigned>(_mm256_movemask_epi8(high));
    return lower | static_cast<std::uint64_t>(upper) << 32U;
}

/// Bytes whose highest bits tell, for the kind in the low bits of an index, whether it is wanted.
/// Above the kind, the index has the bit Segment: the table is there twice.
QX_AVX2 inline __m256i tableOf(unsigned kinds) {
    const __m256i bits = _mm256_set1_epi64x(static_cast<std::int64_t>(0x8040201008040201));
    const __m256i chosen = _mm256_and_si256(_mm256_set1_epi8(static_cast<char>(kinds)), bits);
    return _mm256_cmpeq_epi8(chosen, bits);
}

QX_AVX2 QuadMatch matchByEights(const QuadBlock& block, const QuadBox& rect, unsigned kinds) {
    const RectLanes wanted = spread(rect);
    std::uint64_t misses = 0;
    std::uint64_t crossing = 0;
    for (std::uint32_t group = (block.end() + Lanes - 1) / Lanes; group-- > 0;) {
        const QuadEight& boxes = block.boxes[group];
        const RectLanes eight{load(boxes.minX.data()), load(boxes.minY.data()),
                              load(boxes.maxX.data()), load(boxes.maxY.data())};
        misses = misses << Lanes | missesOf(eight, wanted);
        crossing = crossing << Lanes | reachingOut(eight, wanted);
    }
    const __m256i low = load(block.bits.data());
    const __m256i high = load(block.bits.data() + 32);
    const __m256i table = tableOf(kinds);
    const std::uint64_t ofKind =
        highBits(_mm256_shuffle_epi8(table, low), _mm256_shuffle_epi8(table, high));
    const std::uint64_t segments = highBits(_mm256_slli_epi16(low, 4), _mm256_slli_epi16(high, 4));
    const std::uint64_t shared = highBits(_mm256_slli_epi16(low, 1), _mm256_slli_epi16(high, 1));
    const std::uint64_t hits = ~misses & ofKind & block.taken;
    return {hits, hits & segments & crossing, shared};
}

static_assert(QuadBits::Kind == 0x07 && QuadBits::Segment == 0x08 && QuadBits::Shared == 0x40,
              "the shifts above bring these bits to the top");

#endif

}  // namespace

QuadFilter QuadFilter::choose(bool vectorUnit) {
#if QX_HAS_AVX2_PATH
    if (vectorUnit && __builtin_cpu_supports("avx2") != 0) {
        return {meetByEights, matchByEights};
    }
#else
    static_cast<void>(vectorUnit);
#endif
    return {meetOneByOne, matchOneByOne};
}

}  // namespace qx::internal
