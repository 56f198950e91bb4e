// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxHashMap.h"

#include <gtest/gtest.h>

#include "foundation/util/UtilTestObjects.h"
#include "qx/foundation/util/QxHashSet.h"
#include "qx/foundation/util/QxText.h"

namespace {

using namespace utiltest;

using Numbers = std::vector<int>;

TEST(QxHashMap, MapsByIdentityAndListsValuesInTheOrderOfTheirKeys) {
    QxText keys[] = {QxText(L"same"), QxText(L"same"), QxText(L"other")};
    Item values[] = {Item(1), Item(2), Item(3), Item(4)};
    QxHashMap map(1);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(map.put(&keys[i], &values[i]), nullptr);
    }
    EXPECT_EQ(map.get(&keys[1]), &values[1]);
    EXPECT_EQ(map.put(&keys[0], &values[3]), &values[0]);
    EXPECT_EQ(map.put(nullptr, &values[0]), nullptr);
    EXPECT_EQ(map.put(&keys[1], nullptr), nullptr);
    EXPECT_EQ(map.get(nullptr), nullptr);
    ItemNodes list;
    list.appendNode(&values[0]);
    map.buildObjectList(&list);
    map.buildObjectList(nullptr);
    EXPECT_EQ(numbersOf(list), (Numbers{4, 2, 3}));
    EXPECT_EQ(map.remove(&keys[1], 0), &values[1]);
    EXPECT_EQ(map.remove(&keys[1], 1), nullptr);
    map.put(&keys[1], &values[1]);
    map.buildObjectList(&list);
    EXPECT_EQ(numbersOf(list), (Numbers{4, 3, 2}));
}

TEST(QxHashMap, ReleasesWhatItIsTold) {
    auto* const a = new Item(1);
    auto* const b = new Item(2);
    auto* const shared = new Item(3);
    QxHashMap map;
    map.put(a, shared);
    map.put(b, shared);
    map.put(shared, shared);
    EXPECT_EQ(map.remove(a, 1), shared);
    EXPECT_EQ(Item::alive, 2);
    map.empty(0, 1);
    EXPECT_EQ(map.count(), 0);
    EXPECT_EQ(Item::alive, 1);
    map.put(b, b);
    map.empty(0, 0);
    EXPECT_EQ(Item::alive, 1);
    map.put(b, b);
    map.empty(1, 1);
    EXPECT_EQ(Item::alive, 0);
}

TEST(QxHashSet, HoldsEachObjectOnceByIdentity) {
    auto* const item = new Item(1);
    QxText same[] = {QxText(L"x"), QxText(L"x")};
    QxHashSet set(-4);
    EXPECT_EQ(set.add(&same[0]), 1);
    EXPECT_EQ(set.contains(&same[1]), 0);
    EXPECT_EQ(set.add(&same[1]), 1);
    EXPECT_EQ(set.add(&same[0]), 0);
    EXPECT_EQ(set.add(nullptr), 0);
    set.clear(0);
    EXPECT_EQ(set.contains(&same[0]), 0);
    set.add(item);
    set.add(item);
    EXPECT_EQ(set.count(), 1);
    set.clear(1);
    EXPECT_EQ(Item::alive, 0);
}

}  // namespace
