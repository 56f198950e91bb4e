// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "qx/drawing/QxEdgeEndPointMovedEnum.h"
#include "qx/drawing/QxEdgeLabelToWhichSideOfEdgeEnum.h"
#include "qx/foundation/geometry/QxPoint.h"

class QxPEdge;

/// How a label of an edge lies at its path, noted before the path changes.
class QX_API QxLabelInfoEdgeMoved : public QxObject {
public:
    QxLabelInfoEdgeMoved() = default;
    QxLabelInfoEdgeMoved(const QxLabelInfoEdgeMoved&) = delete;
    QxLabelInfoEdgeMoved& operator=(const QxLabelInfoEdgeMoved&) = delete;
    ~QxLabelInfoEdgeMoved() override;

    enum Relation : int { Overlaps = 0, Touches = 1, Apart = 2 };

    /// The segment that held the point of the label, kept alive here; null at first. And its
    /// position on the path, counted from 1; 0 for none.
    QxPEdge* pPathEdge() const { return m_pathEdge; }
    std::int32_t pathEdgeIndex() const { return m_index; }
    QxPEdge* pPathEdge(QxPEdge* segment, std::int32_t index);
    /// Where on that segment, in thousandths; 500 at first.
    std::int16_t perMilOnPathEdge() const { return m_perMil; }
    std::int16_t perMilOnPathEdge(std::int16_t value) { return m_perMil = value; }
    /// How the label lies at that segment.
    Relation relation() const { return m_relation; }
    Relation relation(Relation value) { return m_relation = value; }
    /// On which side of that segment, seen toward the end that moves.
    QxEdgeLabelToWhichSideOfEdgeEnum side() const { return m_side; }
    QxEdgeLabelToWhichSideOfEdgeEnum side(QxEdgeLabelToWhichSideOfEdgeEnum value) {
        return m_side = value;
    }
    QxEdgeEndPointMovedEnum endMoved() const { return m_endMoved; }
    QxEdgeEndPointMovedEnum endMoved(QxEdgeEndPointMovedEnum value) { return m_endMoved = value; }
    /// The center of the label; null at first.
    const QxPoint* pOldCenter() const { return m_hasOldCenter ? &m_oldCenter : nullptr; }
    void oldCenter(const QxPoint& center) {
        m_oldCenter = center;
        m_hasOldCenter = true;
    }

private:
    QxPEdge* m_pathEdge = nullptr;
    std::int32_t m_index = 0;
    std::int16_t m_perMil = 500;
    bool m_hasOldCenter = false;
    Relation m_relation = Touches;
    QxEdgeLabelToWhichSideOfEdgeEnum m_side = QxEdgeLabelRightSide;
    QxEdgeEndPointMovedEnum m_endMoved = QxEdgeEndMovedUnknown;
    QxPoint m_oldCenter;
};
