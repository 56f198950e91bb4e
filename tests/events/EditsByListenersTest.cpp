// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// A listener may edit the drawing from inside any event, the object that has just changed and the
// graph around it included. Whoever goes on after the event must cope. Here a listener edits at
// random whatever there is while other edits are under way. No twin can follow that; but afterwards
// everything has to be sound, bounds have to be what a walk over everything finds, and the events
// must have told where everything is.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "drawing/EditWorld.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxShape.h"

namespace {

using namespace qxtest;

class SabotagedWorld : public QxDrawingChangeListener {
public:
    explicit SabotagedWorld(std::uint32_t seed);
    ~SabotagedWorld() override;
    SabotagedWorld(const SabotagedWorld&) = delete;
    SabotagedWorld& operator=(const SabotagedWorld&) = delete;

    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override;
    /// Runs an edit and those that the listener does meanwhile; answers what is wrong then.
    std::string step();
    /// Whether every switch has the effect again that it has to have.
    std::string settle();

private:
    using Edit = void (SabotagedWorld::*)();

    void edit();
    void editNode();
    void editEdge();
    void editBend();
    void editEnds();
    void place();
    void placeRaw();
    void moveGraph();
    void recompute();
    void switchBounds();
    void transfer();
    void editGraph();
    void changeListeners();
    void look();

    std::string difference();
    std::string differenceAt(QxDGraph& graph);
    std::string differenceAt(QxDEdge& edge);
    std::string storyDifference(const QxObject& object, const Box& box);

    bool keepsBounds(const QxDGraph& graph) const {
        return graph.isVisible() != 0 && m_off.count(&graph) == 0;
    }
    void willBeSettled(QxDGraph* graph);
    void willBeLeftBehind(const QxDGraph* graph);
    static QxDGraph* betweenAt(const QxDGraph& graph);
    std::vector<QxDGraph*> graphs() const;
    QxDGraph* anyGraph();
    QxDNode* anyNode();
    QxDEdge* anyEdge();
    QxPNode* anyBend(const QxDEdge& edge);
    void forget(const QxDNode& node) { m_story.forget(&node); }
    void forget(const QxDEdge& edge);
    void forget(const QxDGraph& graph);
    template <class T>
    T* take(std::vector<T*>& loose);
    std::int32_t anyCoordinate() { return 10 * (m_random.below(40) - 20); }
    QxPoint anyPlace() { return {anyCoordinate(), anyCoordinate()}; }

    WorldFactory m_factory;
    TestRandom m_random;
    HeardStory m_story;
    EventRecorder m_visitor;  ///< comes and goes
    std::vector<Ref<QxDGraphManager>> m_managers;
    std::vector<QxDNode*> m_looseNodes;
    std::vector<QxDEdge*> m_looseEdges;
    std::vector<QxDGraph*> m_looseGraphs;
    std::set<const QxObject*> m_off;     ///< keep no bounds
    std::set<const QxObject*> m_behind;  ///< with bounds that raw moves have left behind
    std::set<const QxObject*> m_stale;   ///< switched on again without a look at the contents
    int m_sabotagesLeft = 0;
    int m_edits = 0;
    std::string m_complaint;
};

SabotagedWorld::SabotagedWorld(std::uint32_t seed) : m_random(seed) {
    m_factory.onNew = [this](const QxObject* object) {
        m_story.forget(object);
        for (auto* marked : {&m_off, &m_behind, &m_stale}) {
            marked->erase(object);
        }
    };
    m_factory.pEventManager()->addDrawingChangeListener(&m_factory, this);
    for (int i = 0; i < 2; ++i) {
        m_managers.emplace_back(m_factory.newDGraphManager());
        for (const int type : {WorldFactory::Plain, WorldFactory::Shown, WorldFactory::Plain}) {
            m_managers.back()->addGraph(type);
        }
    }
}

SabotagedWorld::~SabotagedWorld() {
    const auto releaseAll = [](const auto& objects) {
        for (QxObject* object : objects) {
            object->vRelease();
        }
    };
    releaseAll(m_looseEdges);
    releaseAll(m_looseNodes);
    releaseAll(m_looseGraphs);
    m_managers.clear();
}

void SabotagedWorld::drawingChanged(QxDrawingChangeEventData* data) {
    const QxRect* before = data->pOldBounds();
    const QxRect* after = data->pNewBounds();
    const std::string wrong =
        m_story.hear({{data->type(), data->pSource(), before != nullptr ? boxOf(*before) : Box{},
                       after != nullptr ? boxOf(*after) : Box{}}});
    m_complaint = m_complaint.empty() ? wrong : m_complaint;
    if (data->pSource()->referenceCount() == 0) {
        m_complaint = "an event about an object that is gone";
    }
    if (m_sabotagesLeft > 0 && m_random.chance(30)) {
        --m_sabotagesLeft;
        edit();
    }
}

std::string SabotagedWorld::step() {
    m_sabotagesLeft = m_random.below(4);
    edit();
    m_sabotagesLeft = 0;
    return m_complaint.empty() ? difference() : m_complaint;
}

void SabotagedWorld::edit() {
    static const std::vector<Edit> edits{
        &SabotagedWorld::editNode,  &SabotagedWorld::editNode,  &SabotagedWorld::editNode,
        &SabotagedWorld::editEdge,  &SabotagedWorld::editEdge,  &SabotagedWorld::editEdge,
        &SabotagedWorld::editBend,  &SabotagedWorld::editBend,  &SabotagedWorld::editBend,
        &SabotagedWorld::editEnds,  &SabotagedWorld::place,     &SabotagedWorld::place,
        &SabotagedWorld::place,     &SabotagedWorld::placeRaw,  &SabotagedWorld::placeRaw,
        &SabotagedWorld::moveGraph, &SabotagedWorld::recompute, &SabotagedWorld::switchBounds,
        &SabotagedWorld::transfer,  &SabotagedWorld::editGraph, &SabotagedWorld::changeListeners,
        &SabotagedWorld::look};
    ++m_edits;
    (this->*m_random.pick(edits))();
}

std::vector<QxDGraph*> SabotagedWorld::graphs() const {
    std::vector<QxDGraph*> all;
    for (const auto& manager : m_managers) {
        for (QxDGraph* graph : QxDGraphIter(manager.get())) {
            all.push_back(graph);
        }
        if (QxDGraph* between = manager->pQueryIntergraph()) {
            all.push_back(between);
        }
    }
    return all;
}

QxDGraph* SabotagedWorld::anyGraph() {
    const auto all = graphs();
    return all.empty() ? nullptr : m_random.pick(all);
}

QxDNode* SabotagedWorld::anyNode() {
    const QxDGraph* graph = anyGraph();
    return graph == nullptr || graph->numberOfNodes() == 0
               ? nullptr
               : m_random.pick(objectsOf<QxDNode>(*graph->pNodeList()));
}

QxDEdge* SabotagedWorld::anyEdge() {
    const QxDGraph* graph = anyGraph();
    QxEdgeDList edges;
    if (graph != nullptr) {
        graph->buildAllEdgeList(&edges);
    }
    return edges.count() == 0 ? nullptr : m_random.pick(objectsOf<QxDEdge>(edges));
}

QxPNode* SabotagedWorld::anyBend(const QxDEdge& edge) {
    QxPNodeDList bends;
    edge.buildPathNodeList(bends);
    return bends.count() == 0 ? nullptr : bends.pNodeInPosition(1 + m_random.below(bends.count()));
}

void SabotagedWorld::forget(const QxDEdge& edge) {
    QxPNodeDList bends;
    edge.buildPathNodeList(bends);
    for (const QxPNode* bend : QxPNodeDListIter(&bends)) {
        m_story.forget(bend);
    }
}

void SabotagedWorld::forget(const QxDGraph& graph) {
    m_story.forget(&graph);
    for (const QxDNode* node : QxDNodeIter(&graph)) {
        forget(*node);
    }
    QxEdgeDList edges;
    graph.buildAllEdgeList(&edges);
    for (const QxDEdge* edge : objectsOf<QxDEdge>(edges)) {
        forget(*edge);
    }
}

/// One of those that belong to nobody, for somebody to take over; null when there is none.
template <class T>
T* SabotagedWorld::take(std::vector<T*>& loose) {
    if (loose.empty()) {
        return nullptr;
    }
    std::swap(loose.back(),
              loose[static_cast<std::size_t>(m_random.below(static_cast<int>(loose.size())))]);
    T* taken = loose.back();
    loose.pop_back();
    forget(*taken);  // the rest of a change may have come when nobody heard of it any more
    return taken;
}

/// A full change in a graph takes in what raw moves have done there, at its end at the latest.
void SabotagedWorld::willBeSettled(QxDGraph* graph) {
    if (graph->isIntergraph() == 0 && graph->needsUpdateGraphBounds() != 0 &&
        graph->isVisible() != 0) {
        m_behind.erase(graph);
    }
}

/// Unless a change is under way that brings the bounds up to date at its end.
void SabotagedWorld::willBeLeftBehind(const QxDGraph* graph) {
    if (graph != nullptr && graph->needsUpdateGraphBounds() != 0) {
        m_behind.insert(graph);
    }
}

QxDGraph* SabotagedWorld::betweenAt(const QxDGraph& graph) {
    const QxDGraphManager* manager = graph.pOwnerGraphManager();
    return manager != nullptr ? manager->pQueryIntergraph() : nullptr;
}

void SabotagedWorld::editNode() {
    QxDGraph* graph = anyGraph();
    QxDNode* node = anyNode();
    const int kind = m_random.below(10);
    if (graph != nullptr && kind < 4) {
        willBeSettled(graph);
        graph->addNodeWithCoordinates(anyPlace(), QxSize(m_random.below(60), 30), 1, 0);
    } else if (graph != nullptr && kind < 6) {
        if (QxDNode* loose = take(m_looseNodes);
            loose != nullptr && graph->insertNode(loose) == nullptr) {
            m_looseNodes.push_back(loose);
        }
    } else if (node != nullptr && kind < 8) {
        willBeSettled(node->pOwnerGraph());
        if (node->pOwnerGraph()->removeNode(node) != nullptr) {
            m_looseNodes.push_back(node);
        }
    } else if (node != nullptr) {
        willBeSettled(node->pOwnerGraph());
        node->pOwnerGraph()->discardNode(node);
    }
}

void SabotagedWorld::editEdge() {
    QxDEdge* edge = anyEdge();
    QxDNode* source = anyNode();
    QxDNode* target = anyNode();
    const int kind = m_random.below(14);
    if (source != nullptr && target != nullptr && kind < 5) {
        QxDGraphManager* manager = source->pOwnerGraph()->pOwnerGraphManager();
        QxDEdge* loose = take(m_looseEdges);
        if (loose == nullptr) {
            manager->addEdge(source, target, 0);
        } else if (manager->insertEdge(loose, source, target) == nullptr) {
            m_looseEdges.push_back(loose);
        }
        return;
    }
    if (edge == nullptr) {
        return;
    }
    switch (kind) {
        case 5:
        case 6:
            if (edge->pOwnerGraph()->removeEdge(edge) != nullptr) {
                m_looseEdges.push_back(edge);
            }
            break;
        case 7:
            edge->pOwnerGraph()->discardEdge(edge);
            break;
        case 8:
            edge->disconnect();
            break;
        case 9:
            edge->deactivate();
            break;
        case 10:
            edge->activate();
            break;
        default:
            edge->connect();
    }
}

void SabotagedWorld::editBend() {
    QxDEdge* edge = anyEdge();
    if (edge == nullptr) {
        return;
    }
    QxPNode* bend = anyBend(*edge);
    switch (m_random.below(7)) {
        case 0:
            edge->addBendAfter(bend, anyPlace(), 1);
            break;
        case 1:
            edge->addBend(edge->pSourceOrPathEdge(), anyPlace(), 1);
            break;
        case 2:
            edge->discardBend(bend);
            break;
        case 3: {
            QxPointDList points;
            for (int i = m_random.below(4); i > 0; --i) {
                points.appendPoint(anyPlace());
            }
            edge->reroute(points, 1);
            break;
        }
        case 4:
            m_random.chance(50) ? edge->discardAllBends()
                                : edge->discardBends(2, m_random.below(2));
            break;
        case 5:
            edge->discardOverlappedBendsForClipping(1, 1);
            break;
        default:
            if (bend != nullptr) {
                bend->moveTo(anyPlace(), 1);
            }
    }
}

void SabotagedWorld::editEnds() {
    QxDEdge* edge = anyEdge();
    QxDNode* node = anyNode();
    if (edge == nullptr || node == nullptr) {
        return;
    }
    switch (m_random.below(4)) {
        case 0:
            edge->changeSourceNodeWithoutConnect(node);
            break;
        case 1:
            edge->changeEndNodes(edge->pTargetNode(), node);
            break;
        case 2:
            edge->reverse();
            break;
        default:
            if (const QxDEdge* other = anyEdge()) {
                m_random.chance(50) ? edge->copyObject(other) : edge->duplicateTopology(anyEdge());
            }
    }
}

void SabotagedWorld::place() {
    QxDNode* node = anyNode();
    if (node == nullptr) {
        return;
    }
    const QxPoint center = anyPlace();
    const QxSize size(m_random.below(60), m_random.below(60));
    switch (m_random.below(4)) {
        case 0:
            node->resize(size, 1);
            break;
        case 1:
            node->updateForDiagramming(QxRect(center, size));
            break;
        case 2: {
            const QxShape oval(QxShapeTypeOval);
            node->pShape(m_random.chance(50) ? &oval : nullptr, 0);
            break;
        }
        default:
            if (node->iCenter() != center) {
                willBeSettled(node->pOwnerGraph());
                node->moveTo(center, 1);
            }
    }
}

void SabotagedWorld::placeRaw() {
    QxDNode* node = anyNode();
    if (node == nullptr) {
        return;
    }
    willBeLeftBehind(node->pOwnerGraph());
    willBeLeftBehind(betweenAt(*node->pOwnerGraph()));
    if (m_random.chance(50)) {
        node->ntMoveTo(anyPlace());
    } else {
        node->ntResize(QxSize(m_random.below(60), m_random.below(60)));
    }
}

void SabotagedWorld::moveGraph() {
    QxDGraph* graph = anyGraph();
    if (graph == nullptr) {
        return;
    }
    willBeLeftBehind(betweenAt(*graph));
    graph->ntMove(anyCoordinate(), anyCoordinate(), m_random.below(2));
    const auto present = graphs();
    if (std::find(present.begin(), present.end(), graph) != present.end()) {
        willBeLeftBehind(betweenAt(*graph));  // a listener may have taken it to another manager
    }
}

void SabotagedWorld::recompute() {
    QxDGraph* graph = anyGraph();
    if (graph == nullptr) {
        return;
    }
    const int edits = m_edits;
    if (m_random.chance(50)) {
        graph->calculateGraphBounds(0);
        return;
    }
    const bool keeps = keepsBounds(*graph);
    graph->refreshGraphBounds();
    QxRect covered;
    const bool any = graph->calculateGraphBounds(covered) != 0;
    // Also in the middle of a change, unless the listener went on at once.
    if (edits == m_edits && keeps && any && boundsOf(graph) != boxOf(covered)) {
        m_complaint = "bounds were not brought up to date";
    }
}

void SabotagedWorld::switchBounds() {
    QxDGraph* graph = anyGraph();
    if (graph == nullptr) {
        return;
    }
    if (m_random.chance(35)) {
        m_off.insert(graph);
        m_random.chance(50) ? graph->disableGraphBounds(1, 0) : graph->needsUpdateGraphBounds(0);
    } else if (m_random.chance(70)) {
        if (m_off.erase(graph) != 0) {
            m_stale.erase(graph);
            m_behind.erase(graph);
        }
        graph->disableGraphBounds(0, 0);
    } else if (m_off.erase(graph) != 0) {
        graph->needsUpdateGraphBounds(1);
        if (graph->needsUpdateGraphBounds() != 0) {
            m_stale.insert(graph);  // not in the middle of a change, which computes them
        }
    }
}

void SabotagedWorld::transfer() {
    QxDGraph* from = anyGraph();
    QxDGraph* to = anyGraph();
    if (from != nullptr) {
        to->transferTopology(from);
    }
}

void SabotagedWorld::editGraph() {
    QxDGraphManager& manager = *m_random.pick(
        m_managers[0].get() != nullptr ? std::vector{m_managers[0].get(), m_managers[1].get()}
                                       : std::vector<QxDGraphManager*>{});
    QxDGraph* graph = anyGraph();
    const int kind = m_random.below(12);
    if (kind < 3 && graphs().size() < 8) {
        manager.addGraph(m_random.below(2));
    } else if (kind < 7) {
        QxDGraph* loose = take(m_looseGraphs);
        m_off.erase(loose);  // insertion switches the bounds on
        if (loose != nullptr && manager.insertGraph(loose) == nullptr) {
            m_looseGraphs.push_back(loose);
        }
    } else if (graph != nullptr && kind < 9) {
        if (graph->pOwnerGraphManager()->removeGraph(graph) != nullptr) {
            m_looseGraphs.push_back(graph);
        }
    } else if (graph != nullptr && kind < 10) {
        graph->pOwnerGraphManager()->discardGraph(graph);
    } else if (graph != nullptr && kind < 11 && m_random.chance(30)) {
        graph->emptyTopology();
    } else if (m_random.chance(20)) {
        manager.transferTopology(m_managers[static_cast<std::size_t>(m_random.below(2))].get());
    }
}

void SabotagedWorld::changeListeners() {
    QxDEventManager& events = *m_factory.pEventManager();
    for (const QxObject* object :
         {static_cast<QxObject*>(anyNode()), static_cast<QxObject*>(anyGraph())}) {
        if (object != nullptr && m_random.chance(50)) {
            events.addDrawingChangeListener(object, &m_visitor);
        } else if (object != nullptr) {
            events.removeDrawingChangeListener(object, &m_visitor);
        }
    }
    m_visitor.take();
}

/// Asks for what is computed when somebody asks.
void SabotagedWorld::look() {
    if (QxDEdge* edge = anyEdge()) {
        edge->ntFromPoint(1);
        m_random.chance(50) ? edge->hasVisiblePart()
                            : edge->indexOfPathEdge(edge->pSourceOrPathEdge());
    }
}

std::string SabotagedWorld::storyDifference(const QxObject& object, const Box& box) {
    if (!m_story.knows(&object)) {
        m_story.look(&object, box);
    }
    return m_story.boxOf(&object) == box ? "" : "the events tell another story";
}

std::string SabotagedWorld::differenceAt(QxDEdge& edge) {
    const QxNode* at = edge.pSourceNode();
    for (QxDisconnectedPathIter it(&edge); it; ++it) {
        const QxPEdge& segment = *it.pEdge();
        const QxNode* end = it.pNode() != nullptr ? static_cast<QxNode*>(it.pNode()) : edge.pTargetNode();
        if (segment.QxEdge::pSourceNode() != std::exchange(at, end) ||
            segment.QxEdge::pTargetNode() != end) {
            return "edge: its path is broken";
        }
    }
    if (at != edge.pTargetNode()) {
        return "edge: its path does not reach its target";
    }
    for (QxPNode* bend : objectsOf<QxPNode>([&] {
             QxPNodeDList bends;
             edge.buildPathNodeList(bends);
             return bends;
         }())) {
        const QxPoint center = bend->iCenter();
        if (const auto wrong = storyDifference(*bend, boxOf(QxRect(center, center)));
            !wrong.empty()) {
            return "bend: " + wrong;
        }
    }
    const auto shown = [&] { return std::pair(edge.ntFromPoint(1), edge.ntToPoint(1)); };
    const auto known = shown();
    if (edge.intergraphEdge() != 0 && edge.isVisible() == 0) {
        return "";
    }
    edge.isUpdatedVisiblePart(0);
    return shown() == known ? "" : "edge: its visible part is outdated";
}

std::string SabotagedWorld::differenceAt(QxDGraph& graph) {
    QxEdgeDList edges;
    graph.buildAllEdgeList(&edges);
    for (QxDEdge* edge : objectsOf<QxDEdge>(edges)) {
        if (const auto wrong = differenceAt(*edge); !wrong.empty()) {
            return wrong;
        }
    }
    for (const QxDNode* node : QxDNodeIter(&graph)) {
        if (const auto wrong = storyDifference(*node, boxOf(*node->pIRect())); !wrong.empty()) {
            return "node: " + wrong;
        }
    }
    if (const auto wrong = storyDifference(graph, boundsOf(&graph)); !wrong.empty()) {
        return "graph: " + wrong;
    }
    if (!keepsBounds(graph) || m_stale.count(&graph) != 0) {
        return "";
    }
    QxRect walked;
    const bool any = walkBounds(graph, walked);
    const bool behind = m_behind.count(&graph) != 0;
    return !any && graph.boundsInitialized() != 0                ? "bounds of nothing"
           : any && !behind && graph.boundsInitialized() == 0    ? "bounds are missing"
           : any && !behind && boundsOf(&graph) != boxOf(walked) ? "bounds"
                                                                 : "";
}

std::string SabotagedWorld::difference() {
    for (const auto& manager : m_managers) {
        if (manager->checkInvariants() == 0) {
            return "manager: invariants";
        }
    }
    const auto present = graphs();
    for (QxDGraph* graph : present) {
        if (const auto wrong = differenceAt(*graph); !wrong.empty()) {
            return wrong;
        }
    }
    for (QxDGraph* graph : present) {
        if (m_random.chance(20)) {
            graph->refreshGraphBounds();
            m_behind.erase(graph);
            m_stale.erase(graph);
        }
    }
    return m_complaint;
}

std::string SabotagedWorld::settle() {
    for (QxDGraph* graph : graphs()) {
        graph->disableGraphBounds(1, 0);
        graph->disableGraphBounds(0, 0);
        if (graph->needsUpdateGraphBounds() == 0) {
            return "a graph does not keep its bounds any more";
        }
    }
    m_off.clear();
    m_stale.clear();
    m_behind.clear();
    return difference();
}

class EditsByListeners : public testing::TestWithParam<std::uint32_t> {};

TEST_P(EditsByListeners, LeaveEverythingSound) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    SabotagedWorld world(seed);
    for (int step = 0; step < 4000; ++step) {
        ASSERT_EQ(world.step(), "") << "at step " << step;
    }
    ASSERT_EQ(world.settle(), "");
}

INSTANTIATE_TEST_SUITE_P(Seeds, EditsByListeners, testing::Values(1U, 2U, 3U, 4U, 5U, 6U));

}  // namespace
