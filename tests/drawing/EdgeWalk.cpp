// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "drawing/EdgeWalk.h"

#include <algorithm>
#include <cmath>

#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxEdgeVisiblePointDListIter.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/geometry/QxShape.h"

namespace qxtest {

namespace {

using Points = std::vector<QxPoint>;

/// Points are outside from half a unit beyond the outline on, measured across it: a slanting way
/// meets them later.
constexpr double Slack = 12.0;

/// The way from the center of a clipped end to the center of the other end.
class Walk {
public:
    Walk(const QxDNode& start, const QxDNode& end, Points bends)
        : m_start(start), m_stations(std::move(bends)) {
        m_stations.insert(m_stations.begin(), start.iCenter());
        m_stations.push_back(end.iCenter());
    }
    /// The segment, counted from the start, that gets out of the node; -1 when none does.
    int segmentOut() const {
        const auto out = std::find_if(m_stations.begin() + 1, m_stations.end(),
                                      [this](const QxPoint& point) { return !contains(point); });
        return out != m_stations.end() ? static_cast<int>(out - m_stations.begin()) - 1 : -1;
    }
    /// Whether the clip point lies on the outline, about where the walk gets out on that segment.
    bool isWayOut(int segment, const QxPoint& clip) const {
        const double outside = wayOut(segment, 0);
        if (outside <= 0) {
            return true;  // it starts outside, or never comes out
        }
        const QxPoint& from = m_stations[static_cast<std::size_t>(segment)];
        const double clipped = from.distance(clip);
        const double wellOutside = wayOut(segment, 1);
        // Notches of a polygon may be too narrow for the steps, and a bend may lie on the outline.
        const bool tooEarly = isConvex() && clip != from && clipped <= outside - Slack;
        const bool tooLate = wellOutside >= 0 && clipped >= wellOutside + Slack;
        return isOnOutline(clip) && !tooEarly && !tooLate;
    }
    /// How far along the segment it is first outside by more than `margin`; negative for never.
    double wayOut(int segment, int margin) const {
        const QxPoint& from = m_stations[static_cast<std::size_t>(segment)];
        const QxPoint& to = m_stations[static_cast<std::size_t>(segment) + 1];
        const double length = std::hypot(to.x() - from.x(), to.y() - from.y());
        constexpr int Steps = 400;
        for (int i = 0; i <= Steps; ++i) {
            const double t = static_cast<double>(i) / Steps;
            if (isOutside(from.x() + t * (to.x() - from.x()), from.y() + t * (to.y() - from.y()),
                          margin)) {
                return t * length;
            }
        }
        return -1;
    }
    bool isConvex() const { return m_start.pShape()->type() != QxShapeTypePolygon; }
    bool isOnOutline(const QxPoint& point) const {
        return m_start.pShape()->onBoundary(point, m_start.iCenter(), m_start.iSize()) != 0;
    }

private:
    /// Also at four points that far away: just grazing the node does not count.
    bool isOutside(double x, double y, int margin) const {
        static const Points Around{{0, 0}, {-1, -1}, {-1, 1}, {1, -1}, {1, 1}};
        const QxPoint at(qx::floorHalfUp(x), qx::floorHalfUp(y));
        return std::none_of(Around.begin(), Around.end(), [&](const QxPoint& step) {
            return contains({at.x() + margin * step.x(), at.y() + margin * step.y()});
        });
    }
    bool contains(const QxPoint& point) const { return m_start.within(point, 1) != 0; }

    const QxDNode& m_start;
    Points m_stations;
};

/// Whether the only segment left is seen where the nodes leave a gap between them; true, too, where
/// the steps are too coarse to tell.
bool isSeenInGap(const QxDNode& source, const QxDNode& target, bool seen) {
    const Walk there(source, target, {});
    const Walk back(target, source, {});
    const double out = there.wayOut(0, 0);
    const double in = back.wayOut(0, 0);
    if (!there.isConvex() || !back.isConvex() || out <= 0 || in <= 0 ||
        there.isOnOutline(source.iCenter()) || back.isOnOutline(target.iCenter())) {
        return true;
    }
    const double gap = source.iCenter().distance(target.iCenter()) - out - in;
    return std::abs(gap) <= Slack || seen == (gap > 0);
}

Points pointsSeen(QxDEdge& edge) {
    Points points;
    for (QxEdgeVisiblePointDListIter it(&edge, 1); it; ++it) {
        it.getPoint(points.emplace_back());
    }
    return points;
}

/// Whether just the segments from `out` to `in` are flagged as seen, and the bends between them.
bool areFlagged(const QxDEdge& edge, bool seen, int out, int in) {
    int index = 0;
    for (QxPathIter it(&edge); it; ++it, ++index) {
        const bool flagged = it.pEdge()->inVisiblePart() != 0;
        const bool flaggedBend = it.pNode() != nullptr && it.pNode()->inVisiblePart() != 0;
        if (flagged != (seen && index >= out && index <= in) ||
            flaggedBend != (seen && index >= out && index < in)) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::string visiblePartDifference(QxDEdge& edge, const Points& bends, bool withFlags) {
    const QxDNode& source = *edge.pSourceNode();
    const QxDNode& target = *edge.pTargetNode();
    const int last = static_cast<int>(bends.size());
    const Walk there(source, target, bends);
    const Walk back(target, source, Points(bends.rbegin(), bends.rend()));
    const bool clipsThere = edge.clipSourceSide() != 0 || source.forceClipping() != 0;
    const bool clipsBack = edge.clipTargetSide() != 0 || target.forceClipping() != 0;
    const int out = clipsThere ? there.segmentOut() : 0;
    const int in = clipsBack ? last - back.segmentOut() : last;
    const bool reaches = out >= 0 && in <= last && out <= in;
    const bool isOneSegment = out == in && clipsThere && clipsBack;

    const QxPoint from = edge.ntFromPoint(1);
    const QxPoint to = edge.ntToPoint(1);
    const bool seen = edge.hasVisiblePart() != 0;
    if (reaches && isOneSegment ? !isSeenInGap(source, target, seen) : seen != reaches) {
        return seen ? "is seen" : "is not seen";
    }
    Points drawn;
    if (seen && edge.isVisible() != 0) {
        drawn.assign(bends.begin() + out, bends.begin() + in);
        drawn.insert(drawn.begin(), from);
        drawn.push_back(to);
    }
    return !seen && (from != source.iCenter() || to != target.iCenter()) ? "is cut though not seen"
           : seen && (clipsThere ? !there.isWayOut(out, from) : from != source.iCenter())
               ? "is cut at the source"
           : seen && (clipsBack ? !back.isWayOut(last - in, to) : to != target.iCenter())
               ? "is cut at the target"
           : pointsSeen(edge) != drawn                     ? "points that are seen"
           : withFlags && !areFlagged(edge, seen, out, in) ? "flags of its path"
                                                           : "";
}

}  // namespace qxtest
