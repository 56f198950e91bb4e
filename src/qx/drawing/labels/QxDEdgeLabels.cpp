// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The labels of a drawing edge, and how several of them are laid out about its middle.

#include <cmath>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/QxGeometricUpdateInfo.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Moment.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/foundation/graph/internal/EachObject.h"

using qx::internal::Change;
using qx::internal::each;
using qx::internal::EdgeExtras;
using qx::internal::Ref;
using qx::internal::Snapshot;

const Ref<QxLabelManager>* QxDEdge::pQueryLabelSlot() const {
    const auto* extras = static_cast<const EdgeExtras*>(pQueryExtras());
    return extras != nullptr ? &extras->labels : nullptr;
}

Ref<QxLabelManager>& QxDEdge::labelSlot() {
    return static_cast<EdgeExtras&>(extras()).labels;
}

QxEdgeLabel* QxDEdge::vNewLabel(int flag) {
    auto* factory = static_cast<QxFactory*>(pUnverifiedFactory());
    return factory != nullptr ? factory->qxNewEdgeLabel(this, flag) : nullptr;
}

QxEdgeLabel* QxDEdge::vAddLabel(const wchar_t* name, int flag) {
    return addPlacedLabel(name, flag);
}

QxEdgeLabel* QxDEdge::vInsertLabel(QxEdgeLabel* label) {
    return linkLabel(label);
}

QxEdgeLabel* QxDEdge::vRemoveLabel(QxEdgeLabel* label) {
    return unlinkLabel(label);
}

int QxDEdge::vDiscardLabel(QxEdgeLabel* label) {
    return destroyLabel(label);
}

void QxDEdge::debugOutputLabels(int depth) const {
    debugOutputOwnLabels(depth);
}

void QxDEdge::reportLabels(qx::internal::Moment moment, QxGeometricUpdateInfo* info) const {
    const QxEdgeLabelDList* labels = pLabelList();
    if (labels == nullptr) {
        return;
    }
    for (const QxEdgeLabel* label : each<QxEdgeLabel>(*labels)) {
        QxRect rect;
        label->ntBoundingRect(rect);
        qx::internal::collect(*info, moment, *label, rect);
    }
}

namespace {

/// Goes along an edge from its middle in turns, to give each pair of labels a place; and answers
/// where beside the edge a label of that pair is centered.
class PairsAboutMiddle {
public:
    explicit PairsAboutMiddle(const QxDEdge& edge)
        : m_edge(edge), m_from(edge.ntFromPoint(1)), m_to(edge.ntToPoint(1)) {
        const double dx = static_cast<double>(m_from.x()) - m_to.x();
        m_slope = dx != 0 ? (static_cast<double>(m_from.y()) - m_to.y()) / dx : 0.0;
    }

    /// The center of the next label.
    QxPoint centerOf(const QxEdgeLabel& label) const {
        QxPoint p;
        m_edge.pointOnEdge(&p, static_cast<std::int16_t>(m_isBackward ? m_back : m_forth));
        const int side = m_isFirst ? 1 : -1;
        if (isVertical()) {
            return p + QxPoint(m_isFirst ? label.ntLeftHalfWidth() : -label.ntRightHalfWidth(), 0);
        }
        if (isHorizontal()) {
            return p +
                   QxPoint(0, m_isFirst ? label.ntBottomHalfHeight() : -label.ntTopHalfHeight());
        }
        return centerAtSlope(p, label, side);
    }

    /// Goes on; `next` is the size of the label that follows.
    void advance(const QxSize& size, const QxSize& next) {
        m_isFirst = !m_isFirst;
        if (!m_isFirst) {
            return;
        }
        const std::int32_t step = stepFor(size, next);
        if (m_isBackward) {
            m_forth = m_back == 500 ? beyond(m_forth + std::int64_t{step}) : m_forth;
            m_back = beyond(m_back - std::int64_t{step});
        } else {
            m_forth = beyond(m_forth + std::int64_t{step});
        }
        m_isBackward = !m_isBackward;
    }

private:
    bool isVertical() const { return m_from.x() == m_to.x(); }
    bool isHorizontal() const { return m_from.y() == m_to.y(); }

    /// A place that has left the edge starts again a little beside the middle.
    static std::int32_t beyond(std::int64_t perMil) {
        return perMil < 0 || perMil > 1000 ? 510 : static_cast<std::int32_t>(perMil);
    }

    /// Right (`side` 1) or left of a slanted edge, touching the line with one corner. When the
    /// label would have to go aside by more than its width, it keeps its plain place beside the
    /// point and goes up or down, away from the line, until that corner touches.
    QxPoint centerAtSlope(const QxPoint& p, const QxEdgeLabel& label, int side) const {
        const bool touchesAbove = (m_slope > 0) == (side > 0);
        const std::int32_t halfHeight =
            touchesAbove ? label.ntTopHalfHeight() : -label.ntBottomHalfHeight();
        const std::int32_t halfWidth =
            side > 0 ? label.ntLeftHalfWidth() : -label.ntRightHalfWidth();
        const double cornerY = static_cast<double>(p.y()) + halfHeight;
        const std::int32_t onLine = qx::truncToInt32((cornerY - intercept()) / m_slope);
        const std::int64_t aside = side * (std::int64_t{onLine} - p.x());
        if (aside <= label.ntWidth()) {
            return {qx::saturatingAdd(onLine, halfWidth), p.y()};
        }
        // The near corner is above (below) the point p of the line, at its x.
        return p + QxPoint(halfWidth, -halfHeight);
    }
    double intercept() const { return m_from.y() - m_slope * m_from.x(); }

    std::int32_t stepFor(const QxSize& size, const QxSize& next) const {
        const std::int64_t length = m_edge.ntEdgeLength();
        const std::int64_t a = (std::int64_t{size.width()} + next.width()) / 2;
        const std::int64_t c = (std::int64_t{size.height()} + next.height()) / 2;
        if (length == 0) {
            return 0;
        }
        if (isHorizontal()) {
            return qx::clampToInt32(a * 1000 / length);
        }
        if (isVertical()) {
            return qx::clampToInt32(c * 1000 / length);
        }
        double x = qx::truncToInt32(static_cast<double>(c) / m_slope);
        double y = static_cast<double>(c);
        if (x > static_cast<double>(a)) {
            x = static_cast<double>(a);
            y = qx::truncToInt32(static_cast<double>(a) * m_slope);
        }
        return qx::truncToInt32(std::sqrt(x * x + y * y) * 1000.0 / static_cast<double>(length));
    }

    const QxDEdge& m_edge;
    QxPoint m_from;
    QxPoint m_to;
    double m_slope;
    std::int32_t m_forth = 500;
    std::int32_t m_back = 500;
    bool m_isBackward = true;
    bool m_isFirst = true;
};

}  // namespace

int QxDEdge::centerLabels(const QxEdgeLabelDList* labels) {
    const Snapshot<QxEdgeLabel> list(labels);
    if (list.isEmpty() || pOwnerGraph() == nullptr) {
        return 0;
    }
    const Ref alive(*this);
    int placed = 0;
    Change::run(*this, [&] {
        PairsAboutMiddle places(*this);
        QxSize next(0, 0);
        for (std::size_t i = 0; i < list.size(); ++i) {
            QxEdgeLabel* const label = list[i];
            if (label->pOwnerEdge() != this) {
                continue;
            }
            if (i + 1 < list.size()) {
                next = list[i + 1]->ntSize();
            }
            const QxPoint center = places.centerOf(*label);
            places.advance(label->ntSize(), next);
            label->moveTo(center, 1);
            placed = 1;
        }
    });
    return placed;
}
