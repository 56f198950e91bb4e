// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <algorithm>

#include "nesting/NestedWorld.h"
#include "qx/drawing/QxNodeLabel.h"

namespace {

using namespace qxtest;

bool isShut(const QxGraphMember& member) {
    return member.isNode() == 0 || static_cast<const QxDNode&>(member).expanded() == 0;
}

/// What stands for a node, by a walk from parent to parent; only nodes hold graphs here.
QxDNode* plainStandIn(const QxDGraphManager& manager, QxDNode* node) {
    if (node == nullptr || node->pOwnerGraph() == nullptr || node->hidden() != 0) {
        return nullptr;
    }
    QxDNode* standIn = node;
    for (QxDNode* at = node; at->pOwnerGraph() != manager.pAnchorGraph();) {
        at = at->pOwnerGraph()->pParentNode();
        if (at == nullptr || at->pOwnerGraph() == nullptr || at->hidden() != 0) {
            return nullptr;
        }
        standIn = isShut(*at) ? at : standIn;
    }
    return standIn;
}

/// What stands for everything, told by the plain walk and by the manager, forth and back.
void expectStandIns(const NestedWorld& world) {
    const QxDGraphManager& manager = *world.manager;
    std::vector<std::pair<QxGraphObject*, QxGraphObject*>> pairs;
    for (QxDNode* node : world.nodes()) {
        QxDNode* const standIn = plainStandIn(manager, node);
        ASSERT_EQ(manager.pVisibleRepresentative(node), standIn);
        ASSERT_EQ(standIn == node, node->isVisible() != 0);
        pairs.emplace_back(node, standIn);
    }
    for (QxDEdge* edge : world.edges()) {
        QxGraphObject* const standIn = manager.pVisibleRepresentative(edge);
        const QxDNode* const source = plainStandIn(manager, edge->pSourceNode());
        const QxDNode* const target = plainStandIn(manager, edge->pTargetNode());
        if (edge->isVisible() != 0) {
            ASSERT_EQ(standIn, edge);
        } else if (source == nullptr || target == nullptr || source == target) {
            ASSERT_EQ(standIn, source == target ? source : nullptr);
        } else if (edge->connected() == 0 || edge->deactivated() != 0 || edge->isMetaEdge() != 0) {
            ASSERT_EQ(standIn, nullptr);
        } else {
            // Meta-edges are current: exactly one of them is for this edge.
            ASSERT_TRUE(standIn != nullptr && standIn->isEdge() != 0);
            const auto& meta = *static_cast<QxDEdge*>(standIn);
            ASSERT_TRUE(meta.isMetaEdge() != 0 && meta.isVisible() != 0);
            ASSERT_EQ(meta.pSourceNode(), source);
            ASSERT_EQ(meta.pTargetNode(), target);
        }
        pairs.emplace_back(edge, standIn);
    }
    for (const auto& [standIn, same] : pairs) {
        std::vector<QxGraphObject*> expected;
        for (const auto& [object, itsStandIn] : pairs) {
            if (standIn == same && itsStandIn == standIn) {
                expected.push_back(object);
            }
        }
        QxDList list;
        manager.buildRepresentedObjectList(standIn, list);
        auto listed = objectsOf<QxGraphObject>(list);
        ASSERT_TRUE(listed.empty() || listed[0] == standIn);
        std::sort(listed.begin(), listed.end());
        std::sort(expected.begin(), expected.end());
        ASSERT_EQ(listed, expected);
    }
}

/// The reason that is given is one that is there.
void expectReason(const QxDGraphManager& manager, QxGraphObject* object) {
    QxGraphObject* blame = nullptr;
    const QxInvisibilityEnum why = manager.whyInvisible(object, &blame);
    const auto* edge = object->isEdge() != 0 ? static_cast<QxDEdge*>(object) : nullptr;
    const bool shows = object->isVisible() != 0 && (edge == nullptr || edge->hasVisiblePart() != 0);
    ASSERT_EQ(why == QxInvisibleNot, shows);
    ASSERT_EQ(blame == nullptr, shows);
    const auto* member = static_cast<QxGraphMember*>(blame);
    switch (why) {
        case QxInvisibleHidden:
            ASSERT_NE(member->pOwnerGraph()->isHideGraph(), 0);
            break;
        case QxInvisibleCollapsed:
        case QxInvisibleFolded:
            ASSERT_TRUE(isShut(*member) && member->isVisible() != 0);
            ASSERT_EQ(static_cast<const QxDNode*>(member)->isFolderNode() != 0,
                      why == QxInvisibleFolded);
            break;
        case QxInvisibleOutsideAnchor:
            ASSERT_TRUE(blame->isGraph() != 0 && blame->isVisible() == 0);
            break;
        case QxInvisibleNotConnected:
            ASSERT_TRUE(edge->connected() == 0 || edge->deactivated() != 0);
            break;
        case QxInvisibleUnowned:
            ASSERT_TRUE(edge != nullptr && member->pOwnerGraph() == nullptr);
            break;
        default:
            ASSERT_TRUE(shows || object->isVisible() != 0);
    }
}

/// Makes something visible, with no more than one step for each obstacle.
void expectShown(NestedWorld& world, QxGraphObject* object) {
    QxDGraphManager& manager = *world.manager;
    const QxInvisibilityEnum before = manager.whyInvisible(object, nullptr);
    QxDList touched;
    const int steps = manager.showObject(object, &touched);
    if (steps >= 0) {
        ASSERT_EQ(touched.count(), steps);
    }
    const QxInvisibilityEnum after = manager.whyInvisible(object, nullptr);
    if (steps < 0 && after != QxInvisibleEndsCoverEachOther) {
        ASSERT_EQ(after, before);
    } else if (steps >= 0) {
        ASSERT_EQ(after, QxInvisibleNot);
        ASSERT_EQ(steps == 0, before == QxInvisibleNot);
        ASSERT_EQ(manager.pVisibleRepresentative(object), object);
    }
}

TEST(Visibility, AgreesWithPlainWalks) {
    QxFactory factory;
    for (std::uint32_t seed = testSeed(1); seed < testSeed(1) + 10; ++seed) {
        SCOPED_TRACE(seedTrace(seed));
        NestedWorld world(factory, seed);
        world.manager->updatesMetaEdges(1);
        for (int i = 0; i < 100 && !testing::Test::HasFailure(); ++i) {
            SCOPED_TRACE(i);
            world.step();
            expectStandIns(world);
            for (QxDNode* node : world.nodes()) {
                expectReason(*world.manager, node);
            }
            for (QxDEdge* edge : world.edges()) {
                expectReason(*world.manager, edge);
            }
            if (world.random.chance(20)) {
                expectShown(world, world.random.pick(world.nodes()));
            } else if (world.random.chance(20)) {
                expectShown(world, world.random.pick(world.edges()));
            }
        }
    }
}

TEST(Visibility, ShowsInsideOutAndLeavesTheRestAlone) {
    QxFactory factory;
    const Ref<QxDGraphManager> manager(factory.newDGraphManager());
    QxDGraph* const root = manager->addGraph(0);
    QxDNode* const outer = root->addNode(0);
    QxDNode* const folder = root->addNode(0);
    QxDGraph* const inner = manager->addGraph(0);
    outer->pChildGraph(inner);
    QxDNode* const box = inner->addNode(0);
    QxDGraph* const innermost = manager->addGraph(0);
    box->pChildGraph(innermost);
    QxDNode* const node = innermost->addNode(0);
    QxDNode* const other = innermost->addNode(0);
    QxNodeLabel* const label = node->addLabel(L"deep", 0);
    const auto hide = [](QxDNode* one) {
        QxDNodeDList list;
        list.appendNode(one);
        one->pOwnerGraph()->hide(&list, nullptr, nullptr, nullptr);
    };
    hide(node);
    hide(other);
    hide(box);
    QxDNodeDList folded;
    folded.appendNode(outer);
    ASSERT_EQ(root->fold(folder, manager->addGraph(0), &folded, nullptr, nullptr, 1), 1);
    QxGraphObject* blame = nullptr;
    EXPECT_EQ(manager->whyInvisible(label, &blame), QxInvisibleFolded);
    EXPECT_EQ(blame, folder);
    EXPECT_EQ(manager->pVisibleRepresentative(label), nullptr);  // it is hidden, too
    EXPECT_EQ(manager->pVisibleRepresentative(innermost), nullptr);
    EXPECT_EQ(manager->pVisibleRepresentative(inner), folder);
    QxDList touched;
    EXPECT_EQ(manager->showObject(label, &touched), 5);
    EXPECT_EQ(objectsOf<QxDNode>(touched), (std::vector<QxDNode*>{node, box, box, outer, folder}));
    EXPECT_EQ(manager->pVisibleRepresentative(label), label);
    EXPECT_NE(other->hidden(), 0);
    EXPECT_EQ(outer->pOwnerGraph(), root);
}

}  // namespace
