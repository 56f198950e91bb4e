// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Turning.h"

#include <cmath>

namespace qxdraw {

namespace {

constexpr std::array<Turn, 8> Turns = {{{1, 0, 0, 1},
                                        {-1, 0, 0, 1},
                                        {1, 0, 0, -1},
                                        {-1, 0, 0, -1},
                                        {0, -1, 1, 0},
                                        {0, 1, -1, 0},
                                        {0, 1, 1, 0},
                                        {0, -1, -1, 0}}};

double lengthWith(const Turn& turn, const std::vector<Crossing>& crossings) {
    double length = 0;
    for (const Crossing& crossing : crossings) {
        const DocumentPoint member = turn(crossing.member);
        length += std::hypot(member.x + crossing.end.x - crossing.other.x,
                             member.y + crossing.end.y - crossing.other.y);
    }
    return length;
}

}  // namespace

Turn bestTurn(const std::vector<Crossing>& crossings) {
    constexpr double Notably = 0.97;
    Turn best = Turns.front();
    double bestLength = lengthWith(best, crossings) * Notably;
    for (const Turn& turn : Turns) {
        const double length = lengthWith(turn, crossings);
        if (length < bestLength) {
            best = turn;
            bestLength = length;
        }
    }
    return best;
}

}  // namespace qxdraw
