// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/spatial/internal/QuadEngine.h"

#include <gtest/gtest.h>

#include <sstream>

#include "spatial/QuadTwin.h"
#include "support/TestRandom.h"

namespace {

using namespace qxtest;
using namespace qx::internal;

constexpr std::int32_t Low = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t High = std::numeric_limits<std::int32_t>::max();

template <class Tree>
std::string printed(const Tree& tree) {
    std::ostringstream out;
    tree.print(out);
    return out.str();
}

std::vector<std::uint32_t> slotsOf(const std::vector<QuadHit>& hits) {
    std::vector<std::uint32_t> slots;
    for (const QuadHit& hit : hits) {
        slots.push_back(hit.slot);
    }
    return slots;
}

std::vector<QuadHit> found(const QuadEngine& engine, const QuadBox& rect, unsigned kinds) {
    std::vector<QuadHit> hits;
    engine.collect(rect, kinds, hits);
    return hits;
}

QuadShape box(std::int32_t left, std::int32_t bottom, std::int32_t width, std::int32_t height) {
    return {{left, bottom, left + width, bottom + height}, QuadForm::Box};
}

/// How the objects of one random world lie.
struct World {
    const char* name;
    int extent;        ///< objects lie up to this far from the origin
    int size;          ///< and most are no longer than this
    int atTheEnds;     ///< percent of coordinates at the ends of the 32-bit range
    int onRoundSpots;  ///< percent of coordinates that are multiples of 1,024
    int objects;
};

/// One engine with the vector unit, one without, and the twin.
class EnginesAndTwin {
public:
    EnginesAndTwin(const World& world, std::uint32_t seed) : m_world(world), m_random(seed) {}

    void insert() {
        const QuadShape shape = randomShape();
        const auto kind = static_cast<unsigned>(m_random.below(8));
        const std::uint32_t slot = m_engine.insert(shape, kind, m_nextPayload);
        ASSERT_EQ(m_plain.insert(shape, kind, m_nextPayload), slot);
        ASSERT_EQ(m_twin.objects().count(slot), 0U);
        m_twin.insert(slot, shape, kind);
        m_payloads[slot] = m_nextPayload++;
    }
    void update() {
        const std::uint32_t slot = anySlot();
        QuadShape shape = m_twin.objects().at(slot).shape;
        if (m_random.chance(70) && m_world.atTheEnds == 0) {
            const int by = m_random.below(61) - 30;
            shape.box.minX += by;
            shape.box.maxX += by;
            shape.box.maxY += m_random.below(3);
        } else {
            shape = randomShape();
        }
        m_engine.update(slot, shape);
        m_plain.update(slot, shape);
        m_twin.update(slot, shape);
    }
    void remove() {
        const std::uint32_t slot = anySlot();
        m_engine.remove(slot);
        m_plain.remove(slot);
        m_twin.remove(slot);
    }
    std::size_t size() const { return m_twin.objects().size(); }
    int below(int bound) { return m_random.below(bound); }

    void expectSameTree() const {
        std::ostringstream faults;
        ASSERT_TRUE(m_engine.checkInvariants(faults)) << faults.str();
        ASSERT_EQ(m_engine.objectCount(), size());
        ASSERT_EQ(printed(m_engine), printed(m_twin));
    }
    void expectSameAnswers() {
        const QuadBox rect = randomShape().box;
        const unsigned kinds =
            m_random.chance(50) ? QuadEngine::AllKinds : static_cast<unsigned>(m_random.below(256));
        const std::vector<QuadHit> hits = found(m_engine, rect, kinds);
        std::vector<std::uint32_t> slots = slotsOf(hits);
        ASSERT_EQ(slotsOf(found(m_plain, rect, kinds)), slots);
        for (const QuadHit& hit : hits) {
            ASSERT_EQ(hit.kind, m_twin.objects().at(hit.slot).kind);
            ASSERT_EQ(hit.payload, m_payloads.at(hit.slot));
        }
        std::sort(slots.begin(), slots.end());
        ASSERT_EQ(slots, m_twin.query(rect, kinds));
        ASSERT_EQ(m_engine.overlaps(rect, kinds), !slots.empty());
    }
    /// A tree built at once from the same objects, which must be numbered from 0 in their order.
    void expectSameTreeInBulk() const {
        std::vector<QuadItem> items;
        for (const auto& [slot, object] : m_twin.objects()) {
            ASSERT_EQ(slot, items.size());
            items.push_back({object.shape, object.kind, m_payloads.at(slot)});
        }
        QuadEngine built;
        built.build(items);
        std::ostringstream faults;
        ASSERT_TRUE(built.checkInvariants(faults)) << faults.str();
        ASSERT_EQ(printed(built), printed(m_engine));
        for (std::uint32_t slot = 0; slot < items.size(); slot += 7) {
            ASSERT_EQ(built.payload(slot), m_payloads.at(slot));
            ASSERT_EQ(built.kind(slot), items[slot].kind);
            ASSERT_EQ(built.shape(slot).box, items[slot].shape.box);
        }
    }

private:
    std::int32_t coordinate() {
        if (m_random.chance(m_world.atTheEnds)) {
            return m_random.chance(50) ? Low + m_random.below(3) : High - m_random.below(3);
        }
        const std::int32_t value = m_random.below(2 * m_world.extent) - m_world.extent;
        return m_random.chance(m_world.onRoundSpots) ? value / 1024 * 1024 : value;
    }
    std::int32_t near(std::int32_t value) {
        if (m_random.chance(m_world.atTheEnds)) {
            return coordinate();
        }
        const int most = m_random.chance(5) ? m_world.extent : m_world.size;
        return std::clamp<std::int32_t>(m_random.below(2 * most) - most, Low - std::min(value, 0),
                                        High - std::max(value, 0)) +
               value;
    }
    QuadShape randomShape() {
        const std::int32_t x = coordinate();
        const std::int32_t y = coordinate();
        QuadShape shape = QuadShape::segment(x, y, near(x), near(y));
        if (m_random.chance(50)) {
            shape.form = QuadForm::Box;
        }
        return shape;
    }
    std::uint32_t anySlot() {
        const auto& objects = m_twin.objects();
        const auto wanted = static_cast<std::uint32_t>(
            m_random.below(static_cast<int>(objects.rbegin()->first) + 1));
        return objects.lower_bound(wanted)->first;
    }

    World m_world;
    TestRandom m_random;
    QuadEngine m_engine{true};
    QuadEngine m_plain{false};
    QuadTwin m_twin;
    std::map<std::uint32_t, std::uint64_t> m_payloads;
    std::uint64_t m_nextPayload = 1000;
};

class QuadEngineWorld : public testing::TestWithParam<World> {};

TEST_P(QuadEngineWorld, IsTheTwinsTreeWithTheTwinsAnswers) {
    const World& world = GetParam();
    const std::uint32_t seed = testSeed(23);
    SCOPED_TRACE(seedTrace(seed));
    EnginesAndTwin all(world, seed);
    for (int step = 0; step < world.objects; ++step) {
        ASSERT_NO_FATAL_FAILURE(all.insert());
        ASSERT_NO_FATAL_FAILURE(all.expectSameAnswers()) << "insertion " << step;
        if (step % 200 == 130) {
            ASSERT_NO_FATAL_FAILURE(all.expectSameTree()) << "insertion " << step;
        }
    }
    ASSERT_NO_FATAL_FAILURE(all.expectSameTree());
    ASSERT_NO_FATAL_FAILURE(all.expectSameTreeInBulk());
    // Up and down around the same number, then down to nothing.
    for (int step = 0; all.size() > 0; ++step) {
        const bool shrinks = step > world.objects;
        const int dice = all.below(shrinks ? 60 : 100);
        if (dice < 30) {
            all.update();
        } else if (dice < 65) {
            all.remove();
        } else {
            ASSERT_NO_FATAL_FAILURE(all.insert());
        }
        ASSERT_NO_FATAL_FAILURE(all.expectSameAnswers()) << "step " << step;
        if (step % 50 == 0 || all.size() < 20) {
            ASSERT_NO_FATAL_FAILURE(all.expectSameTree()) << "step " << step;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Worlds, QuadEngineWorld,
    testing::Values(World{"Dense", 1200, 60, 0, 5, 2000}, World{"Wide", 60'000, 300, 0, 5, 1500},
                    World{"HalfALeaf", 6000, 2500, 0, 20, 900}, World{"OneSpot", 1, 1, 0, 0, 600},
                    World{"EndsOfTheRange", 1'000'000'000, 400'000'000, 25, 0, 500}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(QuadEngine, QueriesNestAndStop) {
    QuadEngine engine;
    for (std::int32_t i = 0; i < 400; ++i) {
        engine.insert(box(i % 20 * 500, i / 20 * 500, 600, 600), 0, 0);
    }
    const QuadBox all{Low, Low, High, High};
    int outer = 0;
    engine.visit(all, 1, [&](const QuadHit&) {
        const bool isLast = ++outer == 10;
        EXPECT_EQ(found(engine, all, 1).size(), 400U);
        return isLast;
    });
    EXPECT_EQ(outer, 10);
    EXPECT_EQ(found(engine, {10, 10, 9, 20}, 1).size(), 0U);
    EXPECT_FALSE(engine.overlaps(all, 1, [](const QuadHit& hit) { return hit.slot == 400; }));
}

/// Large boxes let the bounds of all blocks be wide, so that records wander without changing their
/// block; the blocks that are then split must stay in order.
TEST(QuadEngine, FindsItsBlocksAfterRecordsWandered) {
    TestRandom random(5);
    const auto anywhere = [&random] {
        return box(random.below(2000) - 1000, random.below(2000) - 1000, 3, 3);
    };
    QuadEngine engine;
    engine.insert(box(0, 0, 0, 0), 0, 0);
    for (int i = 1; i < 300; ++i) {
        engine.insert(i % 5 == 0 ? box(-1000 + i, -1000 + i, 1020, 1000) : anywhere(), 0, 0);
    }
    for (std::uint32_t slot = 1; slot < 300; ++slot) {
        if (slot % 5 != 0) {
            engine.update(slot, box(slot % 2 == 0 ? 0 : 20, slot % 2 == 0 ? 15 : 0, 3, 3));
        }
    }
    for (int i = 0; i < 900; ++i) {
        engine.insert(anywhere(), 0, 0);
    }
    for (std::uint32_t slot = 0; slot < 1200; slot += 2) {
        engine.remove(slot);
    }
    std::ostringstream faults;
    EXPECT_TRUE(engine.checkInvariants(faults)) << faults.str();
    EXPECT_EQ(found(engine, {Low, Low, High, High}, 1).size(), 600U);
}

TEST(QuadEngine, TakesLittleMemory) {
    QuadEngine engine;
    constexpr std::uint32_t Count = 50'000;
    for (std::uint32_t i = 0; i < Count; ++i) {
        engine.insert(box(7, 7, 40, 30), 0, i);
    }
    EXPECT_LT(engine.sizeOf(), Count * 50);
    const std::size_t bytes = engine.sizeOf();
    for (std::uint32_t i = 0; i < Count; ++i) {
        engine.remove(i);
    }
    EXPECT_TRUE(engine.isEmpty());
    for (std::uint32_t i = 0; i < Count; ++i) {
        engine.insert(box(7, 7, 40, 30), 0, i);
    }
    EXPECT_LE(engine.sizeOf(), bytes + bytes / 2);
}

}  // namespace
