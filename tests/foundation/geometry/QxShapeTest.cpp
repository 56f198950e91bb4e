// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string_view>
#include <vector>

#include "foundation/geometry/GeometryRandom.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxShape.h"

namespace {

QxPointDList outlineOf(std::initializer_list<QxPoint> points) {
    QxPointDList outline;
    for (const QxPoint& point : points) {
        outline.appendPoint(point);
    }
    return outline;
}

QxShape polygon(std::initializer_list<QxPoint> points) {
    return QxShape::fromOutline(outlineOf(points));
}

QxShape diamond() {
    return polygon({{0, -5}, {5, 0}, {0, 5}, {-5, 0}});
}
/// An L: the upper right quarter of the frame is missing.
QxShape angle() {
    return polygon({{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}});
}
/// A W-like concave outline with a repeated point and a spike that runs back along itself.
QxShape ragged() {
    return polygon({{0, 0}, {10, 7}, {20, 0}, {20, 0}, {20, 20}, {20, 12}, {10, 16}, {0, 20}});
}
/// An outline that leaves some of the frame free on every side.
QxShape inset() {
    return QxShape(outlineOf({{-600, -500}, {800, -700}, {300, 900}}));
}

struct NamedShape {
    std::string_view name;
    QxShape shape;
};

std::vector<NamedShape> shapes() {
    return {{"rectangle", QxShape()}, {"oval", QxShape(QxShapeTypeOval)},
            {"diamond", diamond()},   {"angle", angle()},
            {"ragged", ragged()},     {"inset", inset()}};
}

/// Densely spaced points of the outline placed in a rectangle; independent of the tested code but
/// for the frame's points.
std::vector<QxDTuple> sampleOutline(const QxShape& shape, const QxRect& rect) {
    const double halfX = (static_cast<double>(rect.right()) - rect.left()) / 2.0;
    const double halfY = (static_cast<double>(rect.top()) - rect.bottom()) / 2.0;
    const double x = rect.left() + halfX;
    const double y = rect.bottom() + halfY;
    std::vector<QxDTuple> samples;
    if (shape.type() == QxShapeTypeOval) {
        for (int i = 0; i < 4000; ++i) {
            const double a = i * 2.0 * std::numbers::pi / 4000;
            samples.emplace_back(x + halfX * std::cos(a), y + halfY * std::sin(a));
        }
        return samples;
    }
    QxPointDList corners;
    shape.getOutline(corners);
    if (corners.isEmpty() != 0) {
        corners.appendPoint({-1000, -1000});
        corners.appendPoint({1000, -1000});
        corners.appendPoint({1000, 1000});
        corners.appendPoint({-1000, 1000});
    }
    for (std::int32_t i = 1; i <= corners.count(); ++i) {
        const QxPoint& a = *corners.pPointInPosition(i);
        const QxPoint& b = *corners.pPointInPosition(i % corners.count() + 1);
        for (int k = 0; k < 600; ++k) {
            const double t = k / 600.0;
            samples.emplace_back(x + halfX * (a.x() + t * (b.x() - a.x())) / 1000.0,
                                 y + halfY * (a.y() + t * (b.y() - a.y())) / 1000.0);
        }
    }
    return samples;
}

double distanceTo(const std::vector<QxDTuple>& samples, double x, double y) {
    double smallest = 1e300;
    for (const QxDTuple& sample : samples) {
        smallest = std::min(smallest, std::hypot(sample.x() - x, sample.y() - y));
    }
    return smallest;
}

/// Whether an odd number of the outline's turns surrounds the point.
bool isSurrounded(const std::vector<QxDTuple>& samples, double x, double y) {
    bool isInside = false;
    for (std::size_t i = 0, j = samples.size() - 1; i < samples.size(); j = i++) {
        const QxDTuple& a = samples[i];
        const QxDTuple& b = samples[j];
        if ((a.y() > y) != (b.y() > y) &&
            x < a.x() + (b.x() - a.x()) * (y - a.y()) / (b.y() - a.y())) {
            isInside = !isInside;
        }
    }
    return isInside;
}

}  // namespace

TEST(QxShape, WithinAgreesWithTheSampledOutline) {
    for (const NamedShape& named : shapes()) {
        for (const std::uint32_t seed : geometry_test::Seeds) {
            GeometryRandom random(seed);
            const QxPoint center = random.point(300);
            const QxSize size(random.between(1, 90), random.between(1, 90));
            const QxRect rect(center, size);
            const std::vector<QxDTuple> outline = sampleOutline(named.shape, rect);
            for (int round = 0; round < 150; ++round) {
                const QxPoint p = center + random.point(60);
                const double gap = distanceTo(outline, p.x(), p.y());
                SCOPED_TRACE(testing::Message()
                             << named.name << " seed " << seed << " at " << p.x() - center.x()
                             << ' ' << p.y() - center.y() << " size " << size.width() << ' '
                             << size.height());
                if (gap > 0.2) {
                    ASSERT_EQ(named.shape.within(p, center, size),
                              isSurrounded(outline, p.x(), p.y()) ? 1 : 0);
                }
                const int onBoundary = named.shape.onBoundary(p, center, size);
                ASSERT_TRUE(onBoundary == 0 || gap < 0.95);
                if (named.shape.isRectangular() == 0) {
                    ASSERT_TRUE(onBoundary == 1 || gap > 0.45);
                }
                QxPoint nearest;
                ASSERT_EQ(named.shape.nearestPoint(nearest, p, center, size), 1);
                ASSERT_EQ(rect.within(nearest), 1);
                ASSERT_EQ(named.shape.onBoundary(nearest, center, size), 1);
                ASSERT_LE(p.distance(nearest), gap + 0.75);
            }
        }
    }
}

TEST(QxShape, ClippingFindsTheFirstOutlinePointOnTheSegment) {
    for (const NamedShape& named : shapes()) {
        for (const std::uint32_t seed : geometry_test::Seeds) {
            GeometryRandom random(seed);
            const QxPoint center = random.point(300);
            const QxSize size(random.between(10, 90), random.between(10, 90));
            const std::vector<QxDTuple> outline = sampleOutline(named.shape, {center, size});
            for (int round = 0; round < 60; ++round) {
                const QxPoint from = center + random.point(80);
                const QxPoint to = center + random.point(80);
                SCOPED_TRACE(testing::Message()
                             << named.name << " seed " << seed << " round " << round << " from "
                             << from.x() - center.x() << ' ' << from.y() - center.y() << " to "
                             << to.x() - center.x() << ' ' << to.y() - center.y() << " size "
                             << size.width() << ' ' << size.height());
                // Walk along the segment until the side of the outline changes.
                bool wasInside = isSurrounded(outline, from.x(), from.y());
                double closest = distanceTo(outline, from.x(), from.y());
                double change = -1.0;
                for (int step = 1; step <= 400 && change < 0.0; ++step) {
                    const double t = step / 400.0;
                    const double x = from.x() + t * (to.x() - from.x());
                    const double y = from.y() + t * (to.y() - from.y());
                    if (step % 8 == 0) {
                        closest = std::min(closest, distanceTo(outline, x, y));
                    }
                    if (isSurrounded(outline, x, y) != wasInside) {
                        change = t;
                    }
                }
                QxPoint result(-9999, -9999);
                const int isMet = named.shape.intersectsSegment(result, from, to, center, size);
                if (isMet != 0) {
                    ASSERT_EQ(QxRect(center, size).within(result), 1);
                    ASSERT_EQ(named.shape.onBoundary(result, center, size), 1);
                }
                if (change > 0.0) {
                    ASSERT_EQ(isMet, 1);
                    // Nothing earlier was missed; what comes earlier is a touch of the outline.
                    ASSERT_LE(from.distance(result), change * from.distance(to) + 1.5);
                } else if (closest > 3.0) {
                    ASSERT_EQ(isMet, 0);
                }
                // The other forms agree.
                std::int32_t x = from.x();
                std::int32_t y = from.y();
                ASSERT_EQ(named.shape.intersectsSegment(x, y, to.x(), to.y(), center.x(),
                                                        center.y(), size.width(), size.height()),
                          isMet);
                ASSERT_EQ(QxPoint(x, y), isMet != 0 ? result : from);
                QxPoint relative;
                ASSERT_EQ(named.shape.intersectsSegment(relative, from - center, to - center, size),
                          isMet);
                ASSERT_TRUE(isMet == 0 || relative + center == result);
            }
        }
    }
}

TEST(QxShape, NoCoordinateOrSizeIsTooLargeOrTooSmall) {
    for (const NamedShape& named : shapes()) {
        for (const std::uint32_t seed : geometry_test::Seeds) {
            GeometryRandom random(seed);
            for (int round = 0; round < 4000; ++round) {
                const QxPoint center = random.point();
                const QxSize size(random.coordinate(), random.coordinate());
                const QxPoint from = random.between(0, 3) == 0 ? center : random.point();
                const QxPoint to = random.point();
                const QxRect rect(center, size);
                SCOPED_TRACE(testing::Message()
                             << named.name << " seed " << seed << " round " << round << " center "
                             << center.x() << ' ' << center.y() << " size " << size.width() << ' '
                             << size.height() << " from " << from.x() << ' ' << from.y());
                QxPoint result;
                if (named.shape.intersectsSegment(result, from, to, center, size) != 0) {
                    ASSERT_EQ(rect.within(result), 1);
                    ASSERT_EQ(named.shape.onBoundary(result, center, size), 1);
                } else if (from == center && named.shape.within(from, center, size) != 0 &&
                           rect.within(to) == 0 && size.width() > 2 && size.height() > 2) {
                    ADD_FAILURE() << "a segment left the shape without crossing its outline";
                }
                if (named.shape.nearestPoint(result, from, center, size) != 0) {
                    ASSERT_EQ(rect.within(result), 1);
                    ASSERT_EQ(named.shape.onBoundary(result, center, size), 1);
                }
                const double chord =
                    named.shape.maxAvailableDiagonalLengthAtShape(center, to, size);
                ASSERT_TRUE(chord >= 0.0 && std::isfinite(chord));
                QxRect inner;
                named.shape.getCurrentInnerRect(inner, center, size);
                named.shape.fitBoundingRectToInnerRect(inner, rect);
            }
        }
    }
}

TEST(QxShape, DegenerateSizesAndOutlines) {
    const QxPoint origin;
    for (const NamedShape& named : shapes()) {
        SCOPED_TRACE(named.name);
        EXPECT_EQ(named.shape.within(origin, origin, QxSize(0, 0)), 1);
        EXPECT_EQ(named.shape.within(origin, origin, QxSize(-4, 10)), 0);
        QxPoint p(7, 7);
        EXPECT_EQ(named.shape.nearestPoint(p, p, origin, QxSize(-1, 2)), 0);
        EXPECT_EQ(named.shape.intersectsSegment(p, {-9, 0}, {9, 0}, QxSize(10, -3)), 0);
        EXPECT_EQ(p, QxPoint(7, 7));
        EXPECT_EQ(named.shape.intersectsSegment(p, {-9, 0}, {9, 0}, QxSize(0, 10)), 1);
        EXPECT_EQ(p, origin);
    }
    EXPECT_EQ(polygon({{1, 1}, {2, 2}}).isRectangular(), 1);
    const QxShape line = polygon({{0, 0}, {5, 5}, {10, 10}, {10, 10}});
    EXPECT_EQ(line.within({5, 5}, origin, QxSize(20, 20)), 1);
    EXPECT_EQ(line.within({5, 4}, origin, QxSize(20, 20)), 0);
    QxPoint p;
    EXPECT_EQ(line.intersectsSegment(p, {-10, 6}, {10, 6}, QxSize(20, 20)), 1);
    EXPECT_EQ(p, QxPoint(6, 6));
    const QxShape dot = polygon({{3, 3}, {3, 3}, {3, 3}});
    EXPECT_EQ(dot.within(origin, origin, QxSize(20, 20)), 1);
    EXPECT_EQ(dot.within({1, 0}, origin, QxSize(20, 20)), 0);
}

TEST(QxShape, OutlinesInTheFrameStayAsGivenAndOthersFillIt) {
    const QxPointDList given = outlineOf({{-600, -500}, {800, -700}, {300, 900}});
    const QxShape shape(given);
    QxPointDList outline;
    shape.getOutline(outline);
    EXPECT_EQ(outline.equals(&given), 1);
    EXPECT_EQ(shape.isRectangular(), 0);
    // Stretched, it is the shape that a larger copy of it makes, which reaches beyond the frame.
    const QxShape stretched = QxShape::fromOutline(given);
    EXPECT_FALSE(stretched == shape);
    EXPECT_TRUE(QxShape(outlineOf({{-6000, -5000}, {8000, -7000}, {3000, 9000}})) == stretched);
    polygon({{17, 3}, {117, 3}, {67, 90}}).getOutline(outline);
    EXPECT_EQ(*outline.pFirstPoint(), QxPoint(-1000, -1000));
    EXPECT_EQ(*outline.pLastPoint(), QxPoint(0, 1000));
    EXPECT_EQ(QxShape(outline).hashCode(), polygon({{17, 3}, {117, 3}, {67, 90}}).hashCode());
    EXPECT_EQ(polygon({{0, 0}, {4, 0}, {8, 0}, {8, 2}, {0, 2}}).isRectangular(), 1);
}

TEST(QxShape, InnerRectanglesLieInsideAndFitTheirContents) {
    for (const NamedShape& named : shapes()) {
        SCOPED_TRACE(named.name);
        QxRect inner;
        const QxSize size(401, 203);
        named.shape.getCurrentInnerRect(inner, QxPoint(-50, 70), size);
        if (named.shape.within(QxPoint(-50, 70), QxPoint(-50, 70), size) != 0 &&
            named.name != "angle") {
            for (const QxPoint& corner : {inner.topLeft(), inner.bottomRight()}) {
                EXPECT_TRUE(named.shape.within(corner, QxPoint(-50, 70), size) != 0 ||
                            named.shape.onBoundary(corner, QxPoint(-50, 70), size) != 0);
            }
        }
        GeometryRandom random(77);
        for (int round = 0; round < 500; ++round) {
            const QxRect wanted(random.point(5000), random.point(5000));
            QxRect bounds;
            named.shape.fitBoundingRectToInnerRect(bounds, wanted);
            named.shape.getCurrentInnerRect(inner, bounds.center(), bounds.size());
            ASSERT_EQ(inner.encloses(wanted), 1) << round;
            ASSERT_LE(inner.width(), wanted.width() + 2);
            ASSERT_LE(inner.height(), wanted.height() + 2);
        }
    }
}

TEST(QxShape, RoomAcrossALineIsTheChordThroughTheCenter) {
    const QxPoint center(10, 20);
    const QxSize size(60, 40);
    const QxPoint right(500, 20);
    const QxPoint above(10, 500);
    for (const NamedShape& named : shapes()) {
        SCOPED_TRACE(named.name);
        const bool isCut = named.name == "ragged" || named.name == "angle" || named.name == "inset";
        if (!isCut) {
            EXPECT_NEAR(named.shape.maxAvailableDiagonalLengthAtShape(center, right, size), 40,
                        1e-9);
            EXPECT_NEAR(named.shape.maxAvailableDiagonalLengthAtShape(center, above, size), 60,
                        1e-9);
        }
    }
    const double slanted = QxShape().maxAvailableDiagonalLengthAtShape(center, {13, 24}, size);
    EXPECT_NEAR(slanted, 40 / 0.6, 1e-9);
    EXPECT_NEAR(ragged().maxAvailableDiagonalLengthAtShape(center, right, size), 18, 1e-9);
}
