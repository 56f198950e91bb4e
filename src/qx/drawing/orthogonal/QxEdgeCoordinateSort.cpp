// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxEdgeCoordinateSort.h"

#include <algorithm>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/util/QxDebugStream.h"

namespace {

std::int32_t halfway(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(a + (std::int64_t{b} - a) / 2);
}

QxPoint halfway(const QxPoint& a, const QxPoint& b) {
    return {halfway(a.x(), b.x()), halfway(a.y(), b.y())};
}

QxPoint from(const QxDEdge& edge) {
    return edge.ntFromPoint(1);
}

QxPoint to(const QxDEdge& edge) {
    return edge.ntToPoint(1);
}

QxPoint middle(const QxDEdge& edge) {
    return halfway(from(edge), to(edge));
}

QxPoint unclippedMiddle(const QxDEdge& edge) {
    QxPoint source;
    QxPoint target;
    edge.getSourcePoint(source, 0);
    edge.getTargetPoint(target, 0);
    return halfway(source, target);
}

QxPoint centerOf(const QxDNode* node) {
    return node != nullptr ? node->iCenter() : QxPoint();
}

QxPoint least(const QxDEdge& edge) {
    const QxPoint a = centerOf(edge.pSourceNode());
    const QxPoint b = centerOf(edge.pTargetNode());
    return {std::min(a.x(), b.x()), std::min(a.y(), b.y())};
}

QxPoint greatest(const QxDEdge& edge) {
    const QxPoint a = centerOf(edge.pSourceNode());
    const QxPoint b = centerOf(edge.pTargetNode());
    return {std::max(a.x(), b.x()), std::max(a.y(), b.y())};
}

int sign(std::int64_t a, std::int64_t b) {
    return (a > b ? 1 : 0) - (a < b ? 1 : 0);
}

const QxDEdge& edgeOf(const QxDListCell* cell) {
    return *static_cast<const QxDEdge*>(cell->pObject());
}

std::int32_t factorOf(QxSortTypeEnum type) {
    return type == QxSortAscending ? 1 : -1;
}

}  // namespace

QxEdgeCoordinateSort::QxEdgeCoordinateSort(const QxEdgeCoordinateSort& source)
    : m_firstFactor(source.m_firstFactor),
      m_secondFactor(source.m_secondFactor),
      m_edgePoint(source.m_edgePoint),
      m_coordinate(source.m_coordinate) {}

QxSortTypeEnum QxEdgeCoordinateSort::firstSortType(QxSortTypeEnum type) {
    m_firstFactor = factorOf(type);
    return type;
}

QxSortTypeEnum QxEdgeCoordinateSort::secondSortType(QxSortTypeEnum type) {
    m_secondFactor = factorOf(type);
    return type;
}

QxSortTypeEnum QxEdgeCoordinateSort::sortType(QxSortTypeEnum type) {
    firstSortType(type);
    return secondSortType(type);
}

int QxEdgeCoordinateSort::comparePoints(const QxPoint& a, const QxPoint& b, int sense) const {
    const bool isByX = m_coordinate == QxSortByX || m_coordinate == QxSortByXThenY;
    const int x = sign(a.x(), b.x()) * sense;
    const int y = sign(a.y(), b.y()) * sense;
    // Factors may be any numbers.
    const int first = sign(std::int64_t{isByX ? x : y} * m_firstFactor, 0);
    if (first != 0 || m_coordinate == QxSortByX || m_coordinate == QxSortByY) {
        return first;
    }
    return sign(std::int64_t{isByX ? y : x} * m_secondFactor, 0);
}

int QxEdgeCoordinateSort::virtualCompare(const QxDListCell* first, const QxDListCell* second) {
    const QxDEdge& a = edgeOf(first);
    const QxDEdge& b = edgeOf(second);
    int result = 0;
    const auto compare = [&](QxPoint (*keyOf)(const QxDEdge&), int sense = 1) {
        if (result == 0) {
            result = comparePoints(keyOf(a), keyOf(b), sense);
        }
    };
    switch (m_edgePoint) {
        case QxSortByMiddle:
            compare(middle);
            break;
        case QxSortByUnclippedMiddle:
            compare(unclippedMiddle);
            break;
        case QxSortByFrom:
            compare(from);
            break;
        case QxSortByTo:
            compare(to);
            break;
        case QxSortByFromThenTo:
            compare(from);
            compare(to);
            break;
        case QxSortByToThenFrom:
            compare(to);
            compare(from);
            break;
        case QxSortByLeastThenGreatest:
            compare(least);
            compare(greatest, -1);
            break;
        case QxSortByMiddleThenEnds:
            compare(middle);
            compare(from);
            compare(to);
            break;
        default:
            compare(greatest);
            compare(least, -1);
    }
    return result;
}

void QxEdgeCoordinateSort::virtualDebugOutputElement(const QxDListCell* cell) {
    const QxPoint start = from(edgeOf(cell));
    const QxPoint end = to(edgeOf(cell));
    qxDebugIndent(0) << "edge from (" << start.x() << ", " << start.y() << ") to (" << end.x()
                     << ", " << end.y() << ")\n";
}
