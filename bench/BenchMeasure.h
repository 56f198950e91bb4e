// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

/// What the benchmarks measure with, beside the benchmark library itself.
namespace qx::bench {

/// Adds up the time that one step of a benchmark takes over all iterations, and tells it in
/// nanoseconds per item. Benchmarks that time more than one step, or a step that can only be done
/// once per drawing, use it together with manual time.
class StepTimer {
public:
    /// Runs `step`, which handles `items` items; returns the seconds it took.
    template <class Step>
    double time(std::int64_t items, const Step& step) {
        const auto start = std::chrono::steady_clock::now();
        step();
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        m_seconds += taken.count();
        m_items += items;
        return taken.count();
    }

    /// Adds the counter `name`: nanoseconds per item.
    void tell(benchmark::State& state, const std::string& name) const {
        state.counters[name] = m_items > 0 ? m_seconds * 1e9 / static_cast<double>(m_items) : 0.0;
    }

private:
    double m_seconds = 0.0;
    std::int64_t m_items = 0;
};

/// Lets the process keep the memory that it frees, so that no benchmark pays for giving back what
/// another one before it has used, nor for getting it again.
inline void keepFreedMemory() {
    mallopt(M_TRIM_THRESHOLD, -1);
    mallopt(M_MMAP_THRESHOLD, 32 << 20);
}

/// Bytes that the process has allocated on the heap, mapped blocks included.
inline double heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

/// The same items in an order that is random but the same in each run.
template <class T>
std::vector<T> shuffled(std::vector<T> items) {
    std::mt19937 random(7);
    std::shuffle(items.begin(), items.end(), random);
    return items;
}

/// Goes round a sequence for ever.
template <class T>
class Round {
public:
    explicit Round(const std::vector<T>& items) : m_items(items) {}
    const T& next() {
        const T& item = m_items[m_position];
        m_position = m_position + 1 < m_items.size() ? m_position + 1 : 0;
        return item;
    }

private:
    const std::vector<T>& m_items;
    std::size_t m_position = 0;
};

}  // namespace qx::bench
