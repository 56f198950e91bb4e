// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxLabel.h"
#include "qx/foundation/geometry/QxPerMil.h"

/// A label of an object that is like a rectangle R: a node, a connector or a graph.
///
/// Its center is that of R, plus a proportional part in thousandths of R's half extents (+1000 is
/// the right or top border, values beyond lie outside), plus a constant offset. So it follows R
/// when that moves or changes its size.
class QX_API QxRectangularObjectLabel : public QxLabel {
public:
    int isRectangularObjectLabel() const override;
    int vIsVisible() const override;
    int vGetAttachmentPoint(QxPoint& point, int inOwnGraph) const override;
    void ntCenter(QxPoint& center) const override;
    QxPoint ntCenter() const override;

    /// @name The proportional part of the place
    /// @{
    std::int16_t perMilX() const { return m_proportion.x; }
    std::int16_t perMilY() const { return m_proportion.y; }
    void getPerMil(QxPerMil& perMil) const { perMil = QxPerMil(perMilX(), perMilY()); }
    /// The full change: the bounds of the graph follow.
    void setPerMil(const QxPerMil& perMil);
    void setPerMil(std::int16_t x, std::int16_t y) { setPerMil(QxPerMil(x, y)); }
    /// The raw change.
    void ntSetPerMil(const QxPerMil& perMil) { vSetPerMil(perMil); }
    void ntSetPerMil(std::int16_t x, std::int16_t y) { vSetPerMil(QxPerMil(x, y)); }
    /// Places the label at `center` relative to an owner of that rectangle, by the raw change: on
    /// each axis by a proportion alone within the owner's extent, outside of it by the border that
    /// is nearer and the distance beyond that.
    void setOffsetAndPerMil(const QxPoint& center, const QxRect& ownerRect);
    /// @}

protected:
    QxRectangularObjectLabel(QxOwnedObject* owner, std::int16_t perMilX, std::int16_t perMilY);

    void vMoveTo(const QxPoint& center) override;
    virtual void vSetPerMil(const QxPerMil& perMil);
};
