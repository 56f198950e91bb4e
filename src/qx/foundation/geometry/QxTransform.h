// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxDTuple.h"
#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/geometry/QxSize.h"

/// Maps coordinates of a nested graph into those of the graph around it: a position is taken
/// relative to the source origin, scaled by target extent / source extent, and placed relative to
/// the target origin; a size is only scaled. Integer results are truncated toward zero. An extent
/// that is zero or not finite makes the scale of its axis 1.
///
/// The identity at first.
class QX_API QxTransform : public QxValueObject<QxTransform> {
public:
    QxTransform() noexcept = default;
    /// Scale 1; maps `sourceOrigin` onto `targetOrigin`.
    QxTransform(const QxDTuple& sourceOrigin, const QxDTuple& targetOrigin) noexcept
        : m_sourceOrigin(sourceOrigin), m_targetOrigin(targetOrigin) {}
    /// Maps `sourceOrigin` onto `targetOrigin` and lengths of `sourceExtent` onto `targetExtent`.
    QxTransform(const QxDTuple& sourceOrigin, const QxDTuple& targetOrigin,
                const QxDTuple& sourceExtent, const QxDTuple& targetExtent) noexcept
        : m_sourceOrigin(sourceOrigin),
          m_targetOrigin(targetOrigin),
          m_sourceExtent(sourceExtent),
          m_targetExtent(targetExtent) {}
    QxTransform(const QxTransform& other, QxDeepFlagEnum) noexcept : QxTransform(other) {}

    /// @name Origins and extents
    /// The source origin is mapped onto the target origin; a length of the source extent becomes
    /// one of the target extent. World units.
    /// @{
    const QxDTuple& sourceOrigin() const noexcept { return m_sourceOrigin; }
    const QxDTuple& targetOrigin() const noexcept { return m_targetOrigin; }
    const QxDTuple& sourceExtent() const noexcept { return m_sourceExtent; }
    const QxDTuple& targetExtent() const noexcept { return m_targetExtent; }
    const QxDTuple& sourceOrigin(const QxDTuple& value) noexcept { return m_sourceOrigin = value; }
    const QxDTuple& targetOrigin(const QxDTuple& value) noexcept { return m_targetOrigin = value; }
    const QxDTuple& sourceExtent(const QxDTuple& value) noexcept { return m_sourceExtent = value; }
    const QxDTuple& targetExtent(const QxDTuple& value) noexcept { return m_targetExtent = value; }
    /// @}

    /// Target extent / source extent of the axis; 1 where that is no scale.
    double scaleX() const noexcept { return scaled(1.0, m_sourceExtent.x(), m_targetExtent.x()); }
    double scaleY() const noexcept { return scaled(1.0, m_sourceExtent.y(), m_targetExtent.y()); }

    /// Makes the scale 1; the origins stay.
    void normalizeExt() noexcept {
        m_sourceExtent = m_targetExtent = QxDTuple(UnitExtent, UnitExtent);
    }

    /// @name Mapping: from source to target, and back
    /// Argument and result may be the same object.
    /// @{
    void transformPoint(const QxDTuple& source, QxDTuple& target) const noexcept {
        target = mapped(source, m_sourceOrigin, m_sourceExtent, m_targetOrigin, m_targetExtent);
    }
    void transformPoint(const QxPoint& source, QxPoint& target) const noexcept {
        QxDTuple result;
        transformPoint(QxDTuple(source.x(), source.y()), result);
        target.moveTo(qx::truncToInt32(result.x()), qx::truncToInt32(result.y()));
    }
    void inverseTransformPoint(const QxDTuple& target, QxDTuple& source) const noexcept {
        source = mapped(target, m_targetOrigin, m_targetExtent, m_sourceOrigin, m_sourceExtent);
    }
    void inverseTransformPoint(const QxPoint& target, QxPoint& source) const noexcept {
        QxDTuple result;
        inverseTransformPoint(QxDTuple(target.x(), target.y()), result);
        source.moveTo(qx::truncToInt32(result.x()), qx::truncToInt32(result.y()));
    }
    void transformSize(const QxDTuple& source, QxDTuple& target) const noexcept {
        target = scaled(source, m_sourceExtent, m_targetExtent);
    }
    void transformSize(const QxSize& source, QxSize& target) const noexcept {
        const QxDTuple result =
            scaled({1.0 * source.width(), 1.0 * source.height()}, m_sourceExtent, m_targetExtent);
        target.resize(qx::truncToInt32(result.x()), qx::truncToInt32(result.y()));
    }
    void inverseTransformSize(const QxDTuple& target, QxDTuple& source) const noexcept {
        source = scaled(target, m_targetExtent, m_sourceExtent);
    }
    void inverseTransformSize(const QxSize& target, QxSize& source) const noexcept {
        const QxDTuple result =
            scaled({1.0 * target.width(), 1.0 * target.height()}, m_targetExtent, m_sourceExtent);
        source.resize(qx::truncToInt32(result.x()), qx::truncToInt32(result.y()));
    }
    /// @}

    friend bool operator==(const QxTransform& a, const QxTransform& b) noexcept {
        return a.m_sourceOrigin == b.m_sourceOrigin && a.m_targetOrigin == b.m_targetOrigin &&
               a.m_sourceExtent == b.m_sourceExtent && a.m_targetExtent == b.m_targetExtent;
    }
    std::size_t valueHash() const noexcept;

    void debugOutput(int depth) const override;

private:
    static constexpr double UnitExtent = 1000.0;

    /// Multiplies before it divides, so that whole results come out whole.
    static double scaled(double value, double fromExtent, double toExtent) noexcept {
        if (fromExtent == toExtent || fromExtent == 0.0 || toExtent == 0.0) {
            return value;
        }
        const double ratio = toExtent / fromExtent;
        return ratio - ratio == 0.0 ? value * toExtent / fromExtent : value;
    }
    static QxDTuple scaled(const QxDTuple& value, const QxDTuple& from,
                           const QxDTuple& to) noexcept {
        return {scaled(value.x(), from.x(), to.x()), scaled(value.y(), from.y(), to.y())};
    }
    static QxDTuple mapped(const QxDTuple& p, const QxDTuple& fromOrigin,
                           const QxDTuple& fromExtent, const QxDTuple& toOrigin,
                           const QxDTuple& toExtent) noexcept {
        const QxDTuple relative(p.x() - fromOrigin.x(), p.y() - fromOrigin.y());
        const QxDTuple placed = scaled(relative, fromExtent, toExtent);
        return {toOrigin.x() + placed.x(), toOrigin.y() + placed.y()};
    }

    QxDTuple m_sourceOrigin;
    QxDTuple m_targetOrigin;
    QxDTuple m_sourceExtent{UnitExtent, UnitExtent};
    QxDTuple m_targetExtent{UnitExtent, UnitExtent};
};
