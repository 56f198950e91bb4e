// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxDirectionEnum.h"
#include "qx/foundation/geometry/QxTuple.h"

/// A position in world units; y grows upward.
class QX_API QxPoint : public QxValueObject<QxPoint, QxTuple> {
public:
    QxPoint() noexcept = default;
    QxPoint(std::int32_t x, std::int32_t y) noexcept : QxValueObject(x, y) {}
    QxPoint(const QxPoint& other, QxDeepFlagEnum) noexcept : QxPoint(other) {}

    /// Moves the point to (x, y).
    void moveTo(std::int32_t newX, std::int32_t newY) noexcept {
        x(newX);
        y(newY);
    }

    /// Euclidean distance.
    double distance(const QxPoint& other) const noexcept;

    /// The axis direction in which `other` lies exactly; QxDirectionNone when it differs in both
    /// coordinates or in none.
    QxDirectionEnum direction(const QxPoint& other) const noexcept;
    /// The direction of the axis along which `other` is farther away, the x axis when both are
    /// equal; QxDirectionNone for the same point.
    QxDirectionEnum roughDirection(const QxPoint& other) const noexcept;

    friend QxPoint operator+(const QxPoint& a, const QxPoint& b) noexcept {
        return {qx::saturatingAdd(a.x(), b.x()), qx::saturatingAdd(a.y(), b.y())};
    }
    friend QxPoint operator-(const QxPoint& a, const QxPoint& b) noexcept {
        return {qx::saturatingSub(a.x(), b.x()), qx::saturatingSub(a.y(), b.y())};
    }

    void debugOutput(int depth) const override;
};

static_assert(sizeof(QxPoint) == 24);
