// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <algorithm>

#include "drawing/EditWorld.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/geometry/QxPointDList.h"

namespace qxtest {

namespace {

/// Null when there are not so many.
QxPNode* bendAt(const QxDEdge& edge, int index) {
    QxPNodeDList bends;
    edge.buildPathNodeList(bends);
    return bends.pNodeInPosition(index + 1);
}

}  // namespace

/// What changes no path: where it is cut off, and whether its parts exist as objects.
void EditWorld::stepClipping() {
    if (m_model.edges().empty()) {
        return;
    }
    ModelEdge& model = anyEdge();
    QxDEdge& edge = *drawn(model);
    note("clip");
    switch (m_random.below(4)) {
        case 0:
            edge.clipSourceSide(m_random.below(2));
            edge.clipTargetSide(m_random.below(2));
            break;
        case 1:
            edge.clipSourceSide(0);
            for (int force = 3; force > 0 && model.source != nullptr; --force) {
                drawn(*model.source)->forceClipping(force % 2);
                m_complaint = m_complaint.empty() ? visibleDifference(model) : m_complaint;
            }
            edge.clipSourceSide(m_random.below(2));
            break;
        case 2:
            edge.pTargetOrPathEdge();
            break;
        default:
            edge.indexOfPathEdge(edge.pSourceOrPathEdge());
    }
}

void EditWorld::stepBend() {
    if (m_model.edges().empty()) {
        return;
    }
    // Mostly one that has bends and may be edited, so that not nearly all calls are refused.
    ModelEdge* picked = &anyEdge();
    for (int i = 0;
         i < 8 && (picked->state != EdgeState::Connected || m_bends[picked->object].empty()); ++i) {
        picked = &anyEdge();
    }
    ModelEdge& model = *picked;
    const bool active = model.graph != nullptr && model.state == EdgeState::Connected;
    m_complaint = m_story.hear(m_events.take());
    const int kind = m_random.below(14);
    kind < 5    ? addBend(model, active)
    : kind < 6  ? discardBend(model, active)
    : kind < 9  ? moveBend(model)
    : kind < 11 ? reroute(model, active)
    : kind < 13 ? discardBends(model, active)
                : copyEdge(model);
}

/// In or near a node half the time: many bends are hidden, some in two nodes at once.
QxPoint EditWorld::anyPlace() {
    if (m_random.chance(50)) {
        return {anyCoordinate(), anyCoordinate()};
    }
    const QxPoint center = drawn(anyNode())->iCenter();
    return {qx::saturatingAdd(center.x(), m_random.below(5) * 10 - 20),
            qx::saturatingAdd(center.y(), m_random.below(5) * 10 - 20)};
}

/// All of these events have come since the step began, and before those about bounds.
void EditWorld::expectTold(const ModelEdge& edge, const BendEvents& wanted) {
    const bool isHeard = edge.graph != nullptr && edge.graph->manager != nullptr;
    BendEvents heard;
    bool late = false;
    bool boundsTold = false;
    for (const HeardChange& change : m_events.changes) {
        heard.added += change.type == BendAdded ? 1 : 0;
        heard.moved += change.type == PathNodeMoved ? 1 : 0;
        heard.discarded += change.type == PathNodeDiscarded ? 1 : 0;
        heard.removed += change.type == PathNodeRemoved ? 1 : 0;
        late = late || (boundsTold && change.type != GraphBoundsChanged);
        boundsTold = boundsTold || change.type == GraphBoundsChanged;
    }
    if (heard != (isHeard ? wanted : BendEvents{})) {
        m_complaint = "events of bends";
    } else if (late) {
        m_complaint = "events of bends came after those of the bounds";
    }
}

void EditWorld::addBend(ModelEdge& model, bool active) {
    QxDEdge& edge = *drawn(model);
    Bends& bends = m_bends[&edge];
    const int count = static_cast<int>(bends.size());
    if (count > 6) {
        return;
    }
    const QxPoint place = anyPlace();
    const int at = m_random.below(count + 1);
    QxPNode* bend = nullptr;
    if (m_random.chance(50)) {
        bend = edge.addBendAfter(at > 0 ? bendAt(edge, at - 1) : nullptr, place, 1);
    } else {
        QxDisconnectedPathIter segment(&edge);
        for (int i = 0; i < at; ++i) {
            ++segment;
        }
        bend = edge.addBend(segment.pEdge(), place, 1);
    }
    agree({"add a bend", bend != nullptr, active});
    if (active) {
        bends.insert(bends.begin() + at, place);
    }
    expectTold(model, {active ? 1 : 0, 0, 0, 0});
}

void EditWorld::discardBend(ModelEdge& model, bool active) {
    QxDEdge& edge = *drawn(model);
    Bends& bends = m_bends[&edge];
    const bool foreign = bends.empty() || m_random.chance(20);
    const QxDEdge& giver = foreign ? *drawn(anyEdge()) : edge;
    const int count = static_cast<int>(m_bends[&giver].size());
    const int at = count > 0 ? m_random.below(count) : 0;
    QxPNode* bend = bendAt(giver, at);
    const bool can = active && bend != nullptr && &giver == &edge;
    agree({"discardBend", edge.discardBend(bend) != 0, can});
    if (can) {
        bends.erase(bends.begin() + at);
    }
    expectTold(model, {0, 0, can ? 1 : 0, can ? 1 : 0});
}

void EditWorld::moveBend(ModelEdge& model) {
    Bends& bends = m_bends[model.object];
    if (bends.empty()) {
        return;
    }
    const int inOwnGraph = m_random.below(2);
    const bool can = inOwnGraph != 0 || isVisible(model);
    const int at = m_random.below(static_cast<int>(bends.size()));
    const QxPoint place = anyPlace();
    QxPoint& held = bends[static_cast<std::size_t>(at)];
    agree({"moveTo of a bend", bendAt(*drawn(model), at)->moveTo(place, inOwnGraph) != 0, can});
    const bool moves = can && held != place;
    held = can ? place : held;
    expectTold(model, {0, moves ? 1 : 0, 0, 0});
}

void EditWorld::reroute(ModelEdge& model, bool active) {
    Bends& bends = m_bends[model.object];
    Bends wanted(static_cast<std::size_t>(m_random.below(5)));
    QxPointDList points;
    for (QxPoint& point : wanted) {
        point = anyPlace();
        points.appendPoint(point);
    }
    agree({"reroute", drawn(model)->reroute(points, 1) != 0, active});
    const int gone = static_cast<int>(bends.size());
    if (active) {
        bends = wanted;
    }
    const int come = static_cast<int>(wanted.size());
    expectTold(model, active ? BendEvents{come, 0, gone, gone} : BendEvents{});
}

void EditWorld::discardBends(ModelEdge& model, bool active) {
    QxDEdge& edge = *drawn(model);
    Bends& bends = m_bends[&edge];
    const int before = static_cast<int>(bends.size());
    switch (m_random.below(3)) {
        case 0: {
            note("discardBends");
            const int count = m_random.below(4) - 1;
            const int fromSource = m_random.below(2);
            edge.discardBends(count, fromSource);
            for (int i = 0; active && i < count && !bends.empty(); ++i) {
                bends.erase(fromSource != 0 ? bends.begin() : bends.end() - 1);
            }
            break;
        }
        case 1:
            note("discardAllBends");
            edge.discardAllBends();  // also of an edge that is not connected
            bends.clear();
            break;
        default:
            note("discardOverlappedBendsForClipping");
            discardHiddenBends(model, active);
    }
    const int gone = before - static_cast<int>(bends.size());
    expectTold(model, {0, 0, gone, gone});
}

void EditWorld::discardHiddenBends(ModelEdge& model, bool active) {
    QxDEdge& edge = *drawn(model);
    Bends& bends = m_bends[&edge];
    const int source = m_random.below(2);
    edge.discardOverlappedBendsForClipping(source, 1);
    const auto isHidden = [&](const ModelNode* node, const QxPoint& bend) {
        return active && drawn(*node)->within(bend, model.graph->isBetween ? 0 : 1) != 0;
    };
    while (source != 0 && !bends.empty() && isHidden(model.source, bends.front())) {
        bends.erase(bends.begin());
    }
    while (!bends.empty() && isHidden(model.target, bends.back())) {
        bends.pop_back();
    }
}

void EditWorld::copyEdge(ModelEdge& model) {
    const QxDEdge& source = *drawn(anyEdge());
    note("copy an edge");
    if (m_random.chance(50)) {
        drawn(model)->copyObject(Ref<QxDEdge>(source.cloneObject()).get());
        m_bends[model.object] = m_bends[&source];
    } else {
        drawn(model)->copyAttributes(&source);
    }
}

}  // namespace qxtest
