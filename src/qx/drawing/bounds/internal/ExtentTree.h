// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <vector>

#include "qx/foundation/geometry/QxRect.h"

namespace qx::internal {

/// The union of many rectangles that come, change and go: a tree of unions over numbered slots, 16
/// to a block. A change costs O(log n), and mostly far less: it stops at the first block whose
/// union it leaves alone, and looks at a block's other members only when it takes away the side
/// that the block's union rested on.
class QX_API ExtentTree {
public:
    static constexpr std::int32_t NoSlot = -1;

    /// Gives `slot` the rectangle; NoSlot is replaced by a new slot first.
    void set(std::int32_t& slot, const QxRect& rect) {
        if (slot == NoSlot) {
            slot = acquire();
        }
        assign(slot, Box(rect));
    }
    /// Takes the slot's rectangle out; the slot becomes NoSlot. Nothing for NoSlot.
    void clear(std::int32_t& slot) {
        if (slot != NoSlot) {
            assign(slot, Box());
            m_free.push_back(slot);
            slot = NoSlot;
            --m_used;
        }
    }
    /// The union of all rectangles into `rect`; false, and no change, when there is none.
    bool unite(QxRect& rect) const {
        if (m_used == 0) {
            return false;
        }
        m_levels.back()[0].get(rect);
        return true;
    }
    bool isEmpty() const { return m_used == 0; }
    /// Bytes of memory it takes.
    std::size_t sizeOf() const;

private:
    static constexpr std::size_t Fanout = 16;

    /// Lower sides are kept complemented, so that the union is the maximum in every lane.
    struct Box {
        std::array<std::int32_t, 4> lanes;

        Box() { lanes.fill(std::numeric_limits<std::int32_t>::min()); }
        explicit Box(const QxRect& r) : lanes{~r.left(), ~r.bottom(), r.right(), r.top()} {}
        void get(QxRect& r) const { r.setCorners(~lanes[0], ~lanes[1], lanes[2], lanes[3]); }
        void unite(const Box& other) {
            for (std::size_t i = 0; i < 4; ++i) {
                lanes[i] = std::max(lanes[i], other.lanes[i]);
            }
        }
        /// Whether this union may rest on a side that `before` has and `after` lacks.
        bool restsOn(const Box& before, const Box& after) const {
            bool rests = false;
            for (std::size_t i = 0; i < 4; ++i) {
                rests |= before.lanes[i] == lanes[i] && after.lanes[i] < lanes[i];
            }
            return rests;
        }
        bool operator==(const Box& other) const { return lanes == other.lanes; }
    };

    std::int32_t acquire();
    void assign(std::int32_t slot, Box box);

    std::vector<std::vector<Box>> m_levels;
    std::vector<std::int32_t> m_free;
    std::int32_t m_used = 0;
};

}  // namespace qx::internal
