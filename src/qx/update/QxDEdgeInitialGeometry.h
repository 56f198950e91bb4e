// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <memory>

#include "qx/foundation/geometry/QxDirectionEnum.h"
#include "qx/foundation/geometry/QxPerMil.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/geometry/QxSize.h"
#include "qx/update/QxEdgeInitialGeometryStatusEnum.h"

class QxConnector;
class QxDEdge;
class QxDNode;
class QxPEdge;
class QxPNode;

namespace qx::internal {
class Reactions;
class Route;
struct InitialPath;
struct RoutePoint;
}  // namespace qx::internal

/// What an edge looked like when a move began: its points, its calculated connectors, and whether
/// it ran along the axes. The path after the move is worked out from that, not from what earlier
/// steps of the same move have made of it; and the edge can be put back.
///
/// Bends stay where they are when an end moves, but those beside the ends of a path along the axes,
/// which follow so far that the end segments keep their direction. Coordinates are those of the
/// edge: of its graph or, between graphs, of the anchor graph. An edge owns its record
/// (QxDEdge::pEdgeInitialGeometry). A setter returns its argument, and is for what a client knows
/// better.
class QX_API QxDEdgeInitialGeometry : public QxObject {
public:
    /// For moves of the ends; of a segment; of a bend, by the segment that leaves it. Null, and a
    /// bend that none leaves, make a record that does nothing.
    explicit QxDEdgeInitialGeometry(QxDEdge* edge);
    explicit QxDEdgeInitialGeometry(QxPEdge* segment);
    explicit QxDEdgeInitialGeometry(QxPNode* bend);
    QxDEdgeInitialGeometry(const QxDEdgeInitialGeometry& source);
    QxDEdgeInitialGeometry& operator=(const QxDEdgeInitialGeometry& source);
    ~QxDEdgeInitialGeometry() override;

    /// Take the record anew.
    void init(QxDEdge* edge);
    void init(QxPEdge* segment);

    /// Works the path out for the ends as they are now. Where both are what they were, so is the
    /// edge. Else a path along the axes keeps to them, its calculated connectors with it; any other
    /// loses its calculated connectors, and bends at which it goes straight on. Bends that need no
    /// change are left alone, unheard. What somebody else has done to the bends since stays.
    /// Nothing happens to an edge that is not connected and active. O(bends).
    void reroute();
    /// Puts the edge back as it was, bends and calculated connectors, and ends the record.
    void restoreEdge();
    /// Moves the bend or segment that the record was made from so far from where it was then; a
    /// segment along an axis only across. What coincides then is merged, and the ends of the path
    /// stay at their nodes. Nothing happens for a record made from an edge.
    void moveBy(std::int32_t dx, std::int32_t dy);

    /// @name What was saved
    /// @{
    QxDEdge* pEdge() const { return m_edge; }
    QxDEdge* pEdge(QxDEdge* edge) { return m_edge = edge; }
    /// The unclipped ends and, between them, the bends; the record owns them.
    QxPointDList* pPointList() { return &m_points; }
    const QxPointDList* pPointList() const { return &m_points; }
    /// The calculated connectors at the source and at the target.
    int hasFromConnector() const { return m_from.isSaved; }
    int hasFromConnector(int value) { return m_from.isSaved = value; }
    int hasToConnector() const { return m_to.isSaved; }
    int hasToConnector(int value) { return m_to.isSaved = value; }
    const QxPerMil& fromPerMil() const { return m_from.perMil; }
    const QxPerMil& fromPerMil(const QxPerMil& value) { return m_from.perMil = value; }
    const QxPerMil& toPerMil() const { return m_to.perMil; }
    const QxPerMil& toPerMil(const QxPerMil& value) { return m_to.perMil = value; }
    const QxSize& fromOffset() const { return m_from.offset; }
    const QxSize& fromOffset(const QxSize& value) { return m_from.offset = value; }
    const QxSize& toOffset() const { return m_to.offset; }
    const QxSize& toOffset(const QxSize& value) { return m_to.offset = value; }
    /// The offsets as resizes of the nodes have scaled them since.
    const QxSize& fromNewOffset() const { return m_from.newOffset; }
    const QxSize& fromNewOffset(const QxSize& value) { return m_from.newOffset = value; }
    const QxSize& toNewOffset() const { return m_to.newOffset; }
    const QxSize& toNewOffset(const QxSize& value) { return m_to.newOffset = value; }
    QxSize* pFromNewOffset() { return &m_from.newOffset; }
    QxSize* pToNewOffset() { return &m_to.newOffset; }
    QxDirectionEnum fromRoutingDirection() const { return m_from.direction; }
    QxDirectionEnum fromRoutingDirection(QxDirectionEnum value) { return m_from.direction = value; }
    QxDirectionEnum toRoutingDirection() const { return m_to.direction; }
    QxDirectionEnum toRoutingDirection(QxDirectionEnum value) { return m_to.direction = value; }
    /// The rectangle of the node at that end, in the coordinates of its graph.
    const QxRect& nodeRectAtStart(bool atSource) const { return end(atSource).nodeRect; }
    /// Whether the path ran along the axes, and, if so, its first segment along the x axis.
    int asOrthogonalRouted() const { return m_isOrthogonal; }
    int asOrthogonalRouted(int value) { return m_isOrthogonal = value; }
    int horizontal() const { return m_isHorizontal; }
    int horizontal(int value) { return m_isHorizontal = value; }
    /// The position of the segment that is moved or, of a moved bend, of the one that leaves it,
    /// counted from 1; 1 for a record made from an edge.
    std::int32_t index() const { return m_index; }
    std::int32_t index(std::int32_t value) { return m_index = value; }
    QxEdgeInitialGeometryStatusEnum status() const { return m_status; }
    QxEdgeInitialGeometryStatusEnum status(QxEdgeInitialGeometryStatusEnum value) {
        return m_status = value;
    }
    /// @}

    /// @name Limits
    /// @{
    /// The sine of the angle up to which a path goes straight on: of 2 degrees.
    double eps() const { return m_eps; }
    double eps(double value) { return m_eps = value; }
    /// Segments of a path along the axes that are shorter are taken out; 1.
    std::int32_t delta() const { return m_delta; }
    std::int32_t delta(std::int32_t value) { return m_delta = value; }
    /// For clients; the library neither sets nor reads it.
    int isMultiEdge() const { return m_isMultiEdge; }
    int isMultiEdge(int value) { return m_isMultiEdge = value; }
    /// @}

private:
    friend class qx::internal::Reactions;

    /// One end of the edge.
    struct End {
        int isSaved = 0;
        QxPerMil perMil;
        QxSize offset;
        QxSize newOffset;
        QxDirectionEnum direction = QxDirectionNone;
        /// By which it is told whether the end is back where it was.
        const QxDNode* node = nullptr;
        const QxConnector* specified = nullptr;
        QxRect nodeRect;
        QxRect seenRect;
        QxPoint seenAt;
    };

    End& end(bool atSource) { return atSource ? m_from : m_to; }
    const End& end(bool atSource) const { return atSource ? m_from : m_to; }
    void initEnd(bool atSource);
    void initAxes();
    void initPath();
    /// Whether there is something to work out, and an edge for it.
    bool isUsable() const;
    bool isBack(bool atSource) const;
    /// Whether something has been done to the bends since.
    bool isPathEdited() const;
    void adoptEditedPath();
    qx::internal::Route savedRoute() const;

    /// @name Steps of working the path out (QxDEdgeInitialGeometry.cpp)
    /// @{
    QxPoint endPoint(bool atSource) const;
    QxConnector* savedConnector(bool atSource);
    void resetConnector(bool atSource);
    void restoreConnector(bool atSource);
    void restorePath();
    /// How far the point beside an end follows it.
    QxSize correction(bool atSource, const qx::internal::Route& route, const QxPoint& now) const;
    void simplifyAfterMove(qx::internal::Route& route);
    void cutWithin(qx::internal::Route& route, bool atSource) const;
    /// Places the calculated connector straight across from the first bend; false when it cannot.
    bool placeConnector(const qx::internal::Route& route, bool atSource);
    void layPath(const qx::internal::Route& route);
    void finish(qx::internal::Route& route);
    /// @}

    /// @name Steps of a drag (EdgeDrag.cpp)
    /// @{
    void moveSegment(std::int32_t dx, std::int32_t dy);
    void moveBend(std::int32_t dx, std::int32_t dy);
    bool moveEndSegment(qx::internal::Route& route, std::size_t& index, bool atSource);
    /// @}

    QxDEdge* m_edge = nullptr;
    QxPointDList m_points;
    End m_from;
    End m_to;
    double m_eps;
    std::int32_t m_delta = 1;
    std::int32_t m_index = 1;
    QxEdgeInitialGeometryStatusEnum m_status = QxGeometryOfEdge;
    int m_isOrthogonal = 0;
    int m_isHorizontal = 0;
    int m_isMultiEdge = 0;
    /// The bends behind the points, and those that the path consists of now.
    std::unique_ptr<qx::internal::InitialPath> m_path;
    /// Of the reactions that have made the record.
    qx::internal::Reactions* m_reactions = nullptr;
    bool m_isWaiting = false;
    /// Of a straight edge that has nothing to follow but its ends.
    bool m_isPlain = false;
};
