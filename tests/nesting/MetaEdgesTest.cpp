// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "nesting/NestedWorld.h"
#include "qx/drawing/QxConnector.h"
#include "qx/events/QxComplexityChangeListener.h"
#include "qx/nesting/QxDNodePair.h"

namespace {

using namespace qxtest;

using Ends = std::array<const QxObject*, 4>;

/// What is to be done, found by plain searches.
struct PlainCheck {
    explicit PlainCheck(const QxDGraphManager& manager) : m_manager(manager) {
        QxDEdgeDList list;
        manager.buildAllMetaEdges(list, 1, 0);
        unneeded = objectsOf<QxDEdge>(list);
        const QxDGraph* between = manager.pQueryIntergraph();
        if (between == nullptr) {
            return;
        }
        for (const QxDEdge* edge : objectsOf<QxDEdge>(*between->pEdgeList())) {
            const Ends ends = edge->isMetaEdge() == 0 ? neededFor(*edge) : Ends{};
            const bool isLoop = ends[0] == ends[1];
            const bool isKnown = std::count(missing.begin(), missing.end(), ends) != 0;
            if (ends[0] != nullptr && (!isLoop || manager.reflexiveMetaEdgeReplacement() != 0) &&
                (!isKnown || manager.compressMetaEdges() == 0)) {
                missing.push_back(ends);
            }
        }
        const auto needed = std::exchange(missing, {});
        for (const Ends& ends : needed) {
            const auto found =
                std::find_if(unneeded.begin(), unneeded.end(),
                             [&](const QxDEdge* edge) { return joinedBy(*edge) == ends; });
            if (found == unneeded.end()) {
                missing.push_back(ends);
            } else {
                unneeded.erase(found);
            }
        }
    }

    std::vector<Ends> missing;
    std::vector<QxDEdge*> unneeded;

private:
    Ends withConnectors(const QxDEdge& edge, const QxDNode* first, const QxDNode* second) const {
        const bool ignored = m_manager.ignoreConnectorsForMetaEdges() != 0;
        return {first, second,
                !ignored && first == edge.pSourceNode() ? edge.pSourceConnector() : nullptr,
                !ignored && second == edge.pTargetNode() ? edge.pTargetConnector() : nullptr};
    }
    Ends joinedBy(const QxDEdge& edge) const {
        return withConnectors(edge, edge.pSourceNode(), edge.pTargetNode());
    }
    Ends neededFor(const QxDEdge& edge) const {
        const auto* common = static_cast<const QxDGraph*>(edge.pNearestCommonGraph());
        if (edge.pNearestCommonNestedGraph() != nullptr || common == nullptr ||
            common->isHideGraph() != 0) {
            return {};
        }
        return withConnectors(edge, edge.pSourceNode()->pNearestCollapsedNode(common),
                              edge.pTargetNode()->pNearestCollapsedNode(common));
    }

    const QxDGraphManager& m_manager;
};

/// The lists of the manager, to be compared with the plain ones.
struct Check {
    explicit Check(const QxDGraphManager& manager) { manager.checkMetaEdges(pairs, edges); }
    ~Check() { pairs.deleteAllCellsAndNodePairs(); }

    std::vector<Ends> missing() const {
        std::vector<Ends> all;
        for (const QxDNodePair* pair : objectsOf<QxDNodePair>(pairs)) {
            all.push_back({pair->pFirstNode(), pair->pSecondNode(), pair->pFirstConnector(),
                           pair->pSecondConnector()});
        }
        return all;
    }

    QxDNodePairDList pairs;
    QxDEdgeDList edges;
};

TEST(MetaEdges, FollowRandomChangesOrAreFoundByACheck) {
    QxFactory factory;
    for (std::uint32_t seed = testSeed(1); seed < testSeed(1) + 12; ++seed) {
        SCOPED_TRACE(seedTrace(seed));
        NestedWorld world(factory, seed);
        QxDGraphManager& manager = *world.manager;
        for (int i = 0; i < 150 && !testing::Test::HasFailure(); ++i) {
            SCOPED_TRACE(i);
            world.step();
            switch (world.random.below(12)) {
                case 0:
                    manager.updatesMetaEdges(world.random.below(2));
                    break;
                case 1:
                    manager.compressMetaEdges(world.random.below(2));
                    break;
                case 2:
                    manager.reflexiveMetaEdgeReplacement(world.random.below(2));
                    break;
                case 3:
                    manager.ignoreConnectorsForMetaEdges(world.random.below(2));
                    break;
                default:
                    break;
            }
            const PlainCheck plain(manager);
            Check check(manager);
            ASSERT_EQ(check.missing(), plain.missing);
            ASSERT_EQ(objectsOf<QxDEdge>(check.edges), plain.unneeded);
            if (manager.updatesMetaEdges() != 0) {
                ASSERT_EQ(plain.missing.size() + plain.unneeded.size(), 0U);
            } else if (world.random.chance(30)) {
                const auto missing = check.missing();
                QxDEdgeDList inserted;
                manager.updateMetaEdges(&check.pairs, &check.edges, &inserted, 0);
                ASSERT_EQ(static_cast<std::size_t>(inserted.count()), missing.size());
                ASSERT_TRUE(Check(manager).missing().empty());
                ASSERT_EQ(Check(manager).edges.count(), 0);
            }
            ASSERT_EQ(manager.checkInvariants(), 1);
        }
    }
}

}  // namespace
