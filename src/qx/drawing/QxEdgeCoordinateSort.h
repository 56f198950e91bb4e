// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxSortCoordinateEnum.h"
#include "qx/drawing/QxSortEdgePointEnum.h"
#include "qx/drawing/QxSortTypeEnum.h"
#include "qx/foundation/util/QxDListSort.h"

class QxDEdge;
class QxPoint;

/// Sorts lists of drawing edges by where they run, for callers that distribute them along the sides
/// of nodes. At first: ascending by the x coordinate of the middle between the ends.
///
/// Setters return their argument. The first factor (1 or -1) turns the order of the coordinate that
/// is compared first around, the second that of the other one; the types set them.
class QX_API QxEdgeCoordinateSort : public QxDListSort {
public:
    QxEdgeCoordinateSort() = default;
    QxEdgeCoordinateSort(const QxEdgeCoordinateSort& source);
    QxEdgeCoordinateSort& operator=(const QxEdgeCoordinateSort&) = delete;
    ~QxEdgeCoordinateSort() override = default;

    QxSortCoordinateEnum sortCoordinate() const { return m_coordinate; }
    QxSortCoordinateEnum sortCoordinate(QxSortCoordinateEnum value) { return m_coordinate = value; }
    QxSortEdgePointEnum sortEdgePoint() const { return m_edgePoint; }
    QxSortEdgePointEnum sortEdgePoint(QxSortEdgePointEnum value) { return m_edgePoint = value; }
    QxSortTypeEnum firstSortType() const { return typeOf(m_firstFactor); }
    QxSortTypeEnum firstSortType(QxSortTypeEnum type);
    QxSortTypeEnum secondSortType() const { return typeOf(m_secondFactor); }
    QxSortTypeEnum secondSortType(QxSortTypeEnum type);
    /// That of the first factor; the setter sets both.
    QxSortTypeEnum sortType() const { return firstSortType(); }
    QxSortTypeEnum sortType(QxSortTypeEnum type);
    std::int32_t firstSortFactor() const { return m_firstFactor; }
    std::int32_t firstSortFactor(std::int32_t value) { return m_firstFactor = value; }
    std::int32_t secondSortFactor() const { return m_secondFactor; }
    std::int32_t secondSortFactor(std::int32_t value) { return m_secondFactor = value; }

protected:
    int virtualCompare(const QxDListCell* first, const QxDListCell* second) override;
    void virtualDebugOutputElement(const QxDListCell* cell) override;

private:
    static QxSortTypeEnum typeOf(std::int32_t factor) {
        return factor == 1 ? QxSortAscending : QxSortDescending;
    }
    /// By one point of each edge; `sense` -1 turns both factors around.
    int comparePoints(const QxPoint& a, const QxPoint& b, int sense) const;

    std::int32_t m_firstFactor = 1;
    std::int32_t m_secondFactor = 1;
    QxSortEdgePointEnum m_edgePoint = QxSortByMiddle;
    QxSortCoordinateEnum m_coordinate = QxSortByX;
};
