// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace qxtest {

/// Numbers that are the same for the same seed with every standard library.
class TestRandom {
public:
    explicit TestRandom(std::uint32_t seed) : m_engine(seed) {}

    /// From 0 to `bound` - 1.
    int below(int bound) { return static_cast<int>(m_engine() % static_cast<unsigned>(bound)); }
    bool chance(int percent) { return below(100) < percent; }
    template <class T>
    const T& pick(const std::vector<T>& choice) {
        return choice[static_cast<std::size_t>(below(static_cast<int>(choice.size())))];
    }

private:
    std::mt19937 m_engine;
};

/// The seed for a random test: `fallback`, unless the environment variable QX_TEST_SEED names one.
inline std::uint32_t testSeed(std::uint32_t fallback) {
    const char* wanted = std::getenv("QX_TEST_SEED");
    return wanted != nullptr ? static_cast<std::uint32_t>(std::strtoul(wanted, nullptr, 10))
                             : fallback;
}

/// For SCOPED_TRACE: how to repeat the run.
inline std::string seedTrace(std::uint32_t seed) {
    return "QX_TEST_SEED=" + std::to_string(seed);
}

}  // namespace qxtest
