// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <set>

#include "foundation/geometry/GeometryRandom.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxShapeResourceDB.h"

namespace {

QxShape triangle(std::int32_t tip) {
    QxPointDList outline;
    outline.appendPoint({0, 0});
    outline.appendPoint({1000, 0});
    outline.appendPoint({tip, 500});
    return QxShape(outline);
}

/// Holders as nodes and connectors are, of shapes in two databases, each beside the shape that it
/// should show.
class HolderWorld {
public:
    struct Holder {
        QxShapeResource* resource = nullptr;
        QxShapeResourceDB* db = nullptr;
        QxShape shape;
    };

    explicit HolderWorld(std::uint32_t seed) : m_random(seed) {}
    ~HolderWorld() {
        for (Holder& holder : m_holders) {
            QxResourceDB::dropped(holder.resource);
        }
        for (const QxShapeResourceDB& db : m_dbs) {
            EXPECT_EQ(db.numberOfResources(), 1U);
        }
    }

    void step() {
        Holder& holder = any();
        const Holder& other = any();
        switch (m_random.between(0, 4)) {
            case 0:
                return drop(holder);
            case 1:
                return change(holder, triangle(m_random.between(0, 4) * 250));
            case 2:
                return change(holder, QxShape());
            case 3:
                return take(holder, other.resource, other.shape);
            default:
                return take(holder, nullptr, QxShape());
        }
    }
    /// Equal shapes, and only they, share a resource, which counts its holders.
    void check() const {
        std::set<const QxResource*> used;
        for (const Holder& holder : m_holders) {
            if (holder.resource == nullptr) {
                continue;
            }
            used.insert(holder.resource);
            ASSERT_TRUE(*holder.resource->pShape() == holder.shape);
            ASSERT_EQ(holder.resource->pShapeResourceDB(), holder.db);
            std::int32_t sharing = 0;
            for (const Holder& other : m_holders) {
                const bool isAlike = other.resource != nullptr && other.db == holder.db &&
                                     other.shape == holder.shape;
                ASSERT_EQ(other.resource == holder.resource, isAlike);
                sharing += isAlike ? 1 : 0;
            }
            ASSERT_EQ(holder.resource->useCount(), sharing);
            ASSERT_EQ(holder.resource == holder.db->pDefaultResource(), holder.shape == QxShape());
        }
        for (const QxShapeResourceDB& db : m_dbs) {
            used.insert(db.pDefaultResource());
        }
        ASSERT_EQ(m_dbs[0].numberOfResources() + m_dbs[1].numberOfResources(), used.size());
    }

private:
    Holder& any() { return m_holders[static_cast<std::size_t>(m_random.between(0, 7))]; }
    void drop(Holder& holder) {
        if (holder.resource != nullptr) {
            const bool isLast = holder.resource->useCount() == 1 && !(holder.shape == QxShape());
            QxShapeResource* const rest = holder.db->remove(holder.resource);
            ASSERT_EQ(rest, isLast ? holder.resource : nullptr);
            QxResourceDB::dropped(rest);
            holder.resource = nullptr;
        }
    }
    void change(Holder& holder, const QxShape& shape) {
        if (holder.resource != nullptr) {
            ASSERT_EQ(holder.resource->shape(nullptr), 0) << "a shared shape must not change";
            holder.resource = QxShapeResourceDB::madePrivate(holder.resource);
            ASSERT_EQ(holder.resource->isRegistered(), 0);
            ASSERT_EQ(holder.resource->shape(&shape), 1);
            holder.resource = QxShapeResourceDB::updated(holder.resource);
            holder.shape = shape;
        }
    }
    /// Null: a new resource.
    void take(Holder& holder, QxShapeResource* resource, const QxShape& shape) {
        if (holder.resource == nullptr) {
            holder.db = &m_dbs[static_cast<std::size_t>(m_random.between(0, 1))];
            holder.resource = holder.db->insert(
                resource != nullptr ? resource : new QxShapeResource(holder.db, shape));
            holder.shape = shape;
        }
    }

    GeometryRandom m_random;
    std::array<QxShapeResourceDB, 2> m_dbs;
    std::array<Holder, 8> m_holders;
};

}  // namespace

TEST(QxShapeResourceDB, EqualShapesShareAResourceAndChangesReachNobodyElse) {
    for (const std::uint32_t seed : geometry_test::Seeds) {
        HolderWorld world(seed);
        for (int round = 0; round < 3000 && !testing::Test::HasFatalFailure(); ++round) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round);
            world.step();
            world.check();
        }
    }
}

TEST(QxShapeResourceDB, HoldersMayOutliveTheDatabase) {
    auto db = std::make_unique<QxShapeResourceDB>();
    QxShapeResource* const oval =
        db->insert(new QxShapeResource(db.get(), QxShape(QxShapeTypeOval)));
    QxShapeResource* const same = db->insert(oval);
    QxShapeResource* const standard = db->insert(db->pDefaultResource());
    db.reset();
    QxShapeResource* const changed = QxShapeResourceDB::madePrivate(oval);
    EXPECT_EQ(changed->shape(nullptr), 1);
    EXPECT_EQ(QxShapeResourceDB::updated(changed), changed);
    EXPECT_EQ(same->pShape()->type(), QxShapeTypeOval);
    for (QxShapeResource* resource : {changed, same, standard}) {
        QxResourceDB::dropped(resource);
    }
}
