// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "foundation/geometry/GeometryRandom.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxShapeResourceDB.h"

namespace {

/// A holder as nodes and connectors are.
struct Holder {
    QxShapeResource* resource = nullptr;

    void change(const QxShape& shape) {
        resource = QxShapeResourceDB::madePrivate(resource);
        EXPECT_EQ(resource->isRegistered(), 0);
        EXPECT_EQ(resource->shape(&shape), 1);
        resource = QxShapeResourceDB::updated(resource);
    }
    void drop() {
        QxResourceDB::dropped(resource);
        resource = nullptr;
    }
};

QxShape triangle(std::int32_t tip) {
    QxPointDList outline;
    outline.appendPoint({0, 0});
    outline.appendPoint({1000, 0});
    outline.appendPoint({tip, 500});
    return QxShape(outline);
}

}  // namespace

TEST(QxShapeResourceDB, EqualShapesShareOneResource) {
    QxShapeResourceDB db;
    QxShapeResource* oval = db.insert(new QxShapeResource(&db, QxShape(QxShapeTypeOval)));
    EXPECT_EQ(oval->useCount(), 1);
    EXPECT_EQ(db.insert(new QxShapeResource(&db, QxShape(QxShapeTypeOval))), oval);
    EXPECT_EQ(db.insert(oval), oval);
    EXPECT_EQ(oval->useCount(), 3);
    EXPECT_EQ(db.numberOfResources(), 2U);
    EXPECT_EQ(oval->shape(nullptr), 0) << "a shared shape must not change";
    EXPECT_EQ(db.remove(oval), nullptr);
    EXPECT_EQ(db.remove(oval), nullptr);
    ASSERT_EQ(db.remove(oval), oval);
    EXPECT_EQ(oval->useCount(), 0);
    EXPECT_EQ(db.numberOfResources(), 1U);
    EXPECT_EQ(db.remove(oval), oval) << "a private resource is its holder's to destroy";
    oval->vRelease();
}

TEST(QxShapeResourceDB, TheDefaultOutlivesItsHolders) {
    QxShapeResourceDB db;
    QxShapeResource* first = db.insert(db.pDefaultResource());
    EXPECT_EQ(first, db.pDefaultResource());
    EXPECT_EQ(db.insert(new QxShapeResource(&db)), first) << "equal to the default";
    EXPECT_EQ(first->useCount(), 2);
    EXPECT_EQ(db.remove(first), nullptr);
    EXPECT_EQ(db.remove(first), nullptr);
    EXPECT_EQ(db.remove(first), nullptr);
    EXPECT_EQ(db.pDefaultResource()->useCount(), 0);
    QxShapeResource* oval = db.pDefaultResource()->cloneObject();
    const QxShape ovalShape(QxShapeTypeOval);
    EXPECT_EQ(oval->shape(&ovalShape), 1);
    oval = db.insert(oval);
    EXPECT_NE(oval, db.pDefaultResource());
    QxResourceDB::dropped(oval);
}

TEST(QxShapeResourceDB, ResourcesOfAnotherDatabaseAreCopied) {
    QxShapeResourceDB here;
    QxShapeResourceDB there;
    QxShapeResource* foreign = there.insert(new QxShapeResource(&there, triangle(300)));
    QxShapeResource* own = here.insert(foreign);
    EXPECT_NE(own, foreign);
    EXPECT_TRUE(own->equals(foreign));
    EXPECT_EQ(own->pShapeResourceDB(), &here);
    EXPECT_EQ(here.remove(foreign), nullptr);
    EXPECT_EQ(foreign->useCount(), 1);
    QxResourceDB::dropped(foreign);
    QxResourceDB::dropped(own);
    EXPECT_EQ(here.numberOfResources() + there.numberOfResources(), 2U);
}

TEST(QxShapeResourceDB, HoldersMayOutliveTheDatabase) {
    auto db = std::make_unique<QxShapeResourceDB>();
    Holder oval{db->insert(new QxShapeResource(db.get(), QxShape(QxShapeTypeOval)))};
    Holder same{db->insert(oval.resource)};
    Holder standard{db->insert(db->pDefaultResource())};
    db.reset();
    oval.change(triangle(1));
    EXPECT_EQ(same.resource->pShape()->type(), QxShapeTypeOval);
    oval.drop();
    same.drop();
    standard.drop();
}

TEST(QxShapeResourceDB, ChangesNeverReachOtherHolders) {
    for (const std::uint32_t seed : geometry_test::Seeds) {
        GeometryRandom random(seed);
        QxShapeResourceDB db;
        std::vector<Holder> holders(8);
        std::vector<QxShape> model(holders.size());
        for (int round = 0; round < 3000; ++round) {
            const auto i = static_cast<std::size_t>(random.between(0, 7));
            Holder& holder = holders[i];
            if (holder.resource == nullptr) {
                holder.resource = db.insert(db.pDefaultResource());
                model[i] = QxShape();
            } else if (random.between(0, 3) == 0) {
                holder.drop();
            } else if (random.between(0, 3) == 0) {
                const std::size_t from = (i + 1) % holders.size();
                if (holders[from].resource != nullptr) {
                    holder.drop();
                    holder.resource = db.insert(holders[from].resource);
                    model[i] = model[from];
                }
            } else {
                model[i] = triangle(random.between(0, 4) * 250);
                holder.change(model[i]);
            }
            std::size_t uses = 0;
            for (std::size_t k = 0; k < holders.size(); ++k) {
                if (holders[k].resource != nullptr) {
                    ++uses;
                    ASSERT_TRUE(*holders[k].resource->pShape() == model[k])
                        << "seed " << seed << " round " << round;
                    for (std::size_t j = 0; j < k; ++j) {
                        ASSERT_EQ(holders[j].resource == holders[k].resource,
                                  holders[j].resource != nullptr && model[j] == model[k]);
                    }
                }
            }
            ASSERT_LE(db.numberOfResources(), uses + 1);
        }
        for (Holder& holder : holders) {
            holder.drop();
        }
        EXPECT_EQ(db.numberOfResources(), 1U);
        EXPECT_EQ(db.pDefaultResource()->useCount(), 0);
    }
}
