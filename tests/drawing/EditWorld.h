// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <map>
#include <set>

#include "drawing/WorldFactory.h"
#include "foundation/graph/TopologyDriver.h"
#include "qx/foundation/geometry/QxShape.h"

namespace qxtest {

/// What the listeners of a drawing know of it from events alone.
class HeardStory {
public:
    /// Goes on with the story; answers which event does not fit what was heard before.
    std::string hear(const std::vector<HeardChange>& changes);
    /// What nobody tells: how a node or graph looked that has just come in.
    void look(const QxObject* object, const Box& box) { m_boxes[object] = box; }
    void forget(const QxObject* object) { m_boxes.erase(object); }
    bool knows(const QxObject* object) const { return m_boxes.count(object) != 0; }
    Box boxOf(const QxObject* object) const { return m_boxes.at(object); }
    /// How many changes of the type the object has told since the last call.
    int takeCount(const QxObject* object, std::int32_t type);

private:
    std::map<const QxObject*, Box> m_boxes;
    std::map<std::pair<const QxObject*, std::int32_t>, int> m_counts;
};

/// Several drawings that are edited at random, legally and illegally, and naive twins of all that
/// is expected of them.
class EditWorld : public TopologyDriver {
public:
    explicit EditWorld(std::uint32_t seed);
    ~EditWorld() override { releaseAll(); }

    /// Runs one operation; answers what went wrong, or nothing.
    std::string step();

private:
    /// How a node has to look.
    struct Look {
        Box box;
        int shape = 0;
    };
    struct Attributes {
        std::array<std::int32_t, 4> constant{20, 20, 20, 20};
        std::array<std::int16_t, 4> proportional{};
        int changes = 0;  ///< that were worth an event
        bool rests = false;
        bool isLoose = false;  ///< no manager had it at the last look
    };
    using Bends = std::vector<QxPoint>;
    struct BendEvents {
        int added = 0;
        int moved = 0;
        int discarded = 0;
        int removed = 0;
        bool operator==(const BendEvents&) const = default;
    };

    // What is expected (EditWorldCheck.cpp).
    std::string difference();
    std::string differenceAt(const ModelNode& node);
    std::string differenceAt(const ModelEdge& edge);
    std::string differenceAt(const ModelGraph& graph);
    std::string visibleDifference(const ModelEdge& edge);
    std::string marginDifference(const ModelGraph& graph);
    std::string shapeDifference() const;
    void forgetWhatIsGone();
    void settleAnchors();
    bool isVisible(const ModelGraph* graph) const;
    bool isVisible(const ModelEdge& edge) const;

    // What is done (EditWorld.cpp, EditWorldEdges.cpp, EditWorldGeometry.cpp).
    ModelGraph& anyGraph() override;
    ModelNode& anyNode() override;
    ModelEdge& anyEdge() { return *m_random.pick(m_model.edges()); }
    std::int32_t anyCoordinate();
    std::int32_t anyExtent();
    QxPoint anyPlace();
    QxGraph* newGraph(QxGraphManager& manager) override;
    void addNode(ModelGraph& graph) override;
    void reverse(ModelEdge& edge) override;
    void transfer(ModelManager& to, ModelManager& from) override;
    void stepAttributes();
    void stepMove();
    void stepResize();
    void stepReshape();
    void stepClipping();
    void stepBend();
    void addBend(ModelEdge& edge, bool active);
    void discardBend(ModelEdge& edge, bool active);
    void moveBend(ModelEdge& edge);
    void reroute(ModelEdge& edge, bool active);
    void discardBends(ModelEdge& edge, bool active);
    void discardHiddenBends(ModelEdge& edge, bool active);
    void copyEdge(ModelEdge& edge);
    void expectTold(const ModelEdge& edge, const BendEvents& wanted);
    void stepRaw();
    void stepWholeGraph();
    void stepSuspended();
    void stepCopy();
    void expectBox(ModelNode& node, const std::array<std::int64_t, 4>& box);
    void expectMoved(ModelNode& node, std::int64_t x, std::int64_t y);
    void expectResized(ModelNode& node, std::int64_t width, std::int64_t height);
    std::string copyDifference(const QxDGraph& copy, const QxDGraph& original) const;

    WorldFactory m_home;
    WorldFactory m_foreign;
    std::map<const QxObject*, Look> m_looks;
    std::map<const QxObject*, Bends> m_bends;
    std::map<const QxObject*, Attributes> m_attributes;
    std::map<const ModelManager*, ModelGraph*> m_anchors;
    EventRecorder m_events;
    HeardStory m_story;
    std::set<const QxObject*> m_knownBends;
    std::vector<QxShape> m_shapes;
};

inline QxDNode* drawn(const ModelNode& node) {
    return static_cast<QxDNode*>(node.object);
}
inline QxDEdge* drawn(const ModelEdge& edge) {
    return static_cast<QxDEdge*>(edge.object);
}
inline QxDGraph* drawn(const ModelGraph& graph) {
    return static_cast<QxDGraph*>(graph.object);
}
inline QxDGraphManager* drawn(const ModelManager& manager) {
    return static_cast<QxDGraphManager*>(manager.object);
}

inline std::vector<QxPoint> bendsOf(const QxDEdge& edge) {
    QxPNodeDList list;
    edge.buildPathNodeList(list);
    std::vector<QxPoint> points;
    for (const QxPNode* bend : QxPNodeDListIter(&list)) {
        points.push_back(bend->iCenter());
    }
    return points;
}

}  // namespace qxtest
