// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "drawing/EdgeWalk.h"
#include "drawing/EditWorld.h"
#include "qx/foundation/geometry/QxShapeResource.h"

namespace qxtest {

std::string HeardStory::hear(const std::vector<HeardChange>& changes) {
    constexpr std::int32_t Boxed = NodeMoved | NodeResized | GraphBoundsChanged | PathNodeMoved;
    for (const HeardChange& change : changes) {
        ++m_counts[{change.source, change.type}];
        if ((change.type & Boxed) == 0) {
            continue;
        }
        const auto known = m_boxes.find(change.source);
        if (known != m_boxes.end() && known->second != change.oldBounds) {
            return "an event starts from another place: " + testing::PrintToString(change) +
                   " but known was " + testing::PrintToString(known->second);
        }
        if (change.type == GraphBoundsChanged && change.oldBounds == change.newBounds) {
            return "an event tells of no change: " + testing::PrintToString(change);
        }
        m_boxes[change.source] = change.newBounds;
    }
    return "";
}

int HeardStory::takeCount(const QxObject* object, std::int32_t type) {
    return std::exchange(m_counts[{object, type}], 0);
}

void EditWorld::forgetWhatIsGone() {
    const auto nodes = m_model.nodes();
    const auto edges = m_model.edges();
    const auto graphs = m_model.graphs();
    const auto isGone = [](const auto& models, const QxObject* object) {
        return std::none_of(models.begin(), models.end(),
                            [&](const auto* model) { return model->object == object; });
    };
    std::erase_if(m_looks, [&](const auto& entry) {
        const bool gone = isGone(nodes, entry.first);
        if (gone) {
            m_story.forget(entry.first);
        }
        return gone;
    });
    std::set<const QxObject*> bends;
    for (const ModelEdge* edge : edges) {
        QxPNodeDList list;
        drawn(*edge)->buildPathNodeList(list);
        for (const QxPNode* bend : QxPNodeDListIter(&list)) {
            bends.insert(bend);
        }
    }
    std::erase_if(m_knownBends, [&](const QxObject* bend) {
        const bool gone = bends.count(bend) == 0;
        if (gone) {
            m_story.forget(bend);
        }
        return gone;
    });
    std::erase_if(m_bends, [&](const auto& entry) { return isGone(edges, entry.first); });
    std::erase_if(m_attributes, [&](const auto& entry) {
        const bool gone = isGone(graphs, entry.first);
        if (gone) {
            m_story.forget(entry.first);
        }
        return gone;
    });
}

void EditWorld::settleAnchors() {
    for (const ModelManager* manager : m_model.managers()) {
        ModelGraph*& anchor = m_anchors[manager];
        const auto& graphs = manager->graphs;
        if (std::find(graphs.begin(), graphs.end(), anchor) == graphs.end()) {
            anchor = graphs.empty() ? nullptr : graphs.front();
        }
    }
}

bool EditWorld::isVisible(const ModelGraph* graph) const {
    return graph != nullptr && (graph->manager == nullptr || graph->isBetween ||
                                m_anchors.at(graph->manager) == graph ||
                                dynamic_cast<const ShownGraph*>(graph->object) != nullptr);
}

bool EditWorld::isVisible(const ModelEdge& edge) const {
    if (edge.state != EdgeState::Connected) {
        return false;
    }
    return edge.graph->isBetween ? isVisible(edge.source->graph) && isVisible(edge.target->graph)
                                 : isVisible(edge.graph);
}

std::string EditWorld::difference() {
    // Before anything is forgotten: some events were told by what is gone now.
    std::string wrong = m_story.hear(m_events.take());
    settleAnchors();
    forgetWhatIsGone();
    const std::string topology = m_model.difference();
    if (!topology.empty()) {
        return topology;
    }
    for (const ModelManager* manager : m_model.managers()) {
        const ModelGraph* anchor = m_anchors[manager];
        if (drawn(*manager)->pAnchorGraph() != (anchor ? anchor->object : nullptr)) {
            return "another anchor graph";
        }
    }
    const auto check = [&](const auto& models, const char* kind) {
        for (const auto* model : models) {
            if (wrong.empty()) {
                wrong = differenceAt(*model);
                wrong = wrong.empty() ? "" : kind + wrong;
            }
        }
    };
    check(m_model.nodes(), "node: ");
    check(m_model.edges(), "edge: ");
    check(m_model.graphs(), "graph: ");
    for (int i = 0; i < 3 && wrong.empty() && !m_model.edges().empty(); ++i) {
        wrong = visibleDifference(anyEdge());
    }
    return wrong.empty() ? shapeDifference() : wrong;
}

std::string EditWorld::differenceAt(const ModelNode& node) {
    const QxDNode& real = *drawn(node);
    const Look& wanted = m_looks.at(&real);
    const Box box = boxOf(*real.pIRect());
    if (box != wanted.box) {
        return "lies at " + testing::PrintToString(box) + " instead of " +
               testing::PrintToString(wanted.box);
    }
    const bool isHeard = node.graph != nullptr && node.graph->manager != nullptr;
    if (!isHeard || !m_story.knows(&real)) {
        m_story.look(&real, box);
    }
    return m_story.boxOf(&real) != box                        ? "its events tell another story"
           : (real.isVisible() != 0) != isVisible(node.graph) ? "visibility"
           : real.referenceCount() != 1                       ? "reference count"
           : !(*real.pShape() == m_shapes[static_cast<std::size_t>(wanted.shape)]) ? "shape"
                                                                                   : "";
}

std::string EditWorld::differenceAt(const ModelEdge& edge) {
    const QxDEdge& real = *drawn(edge);
    if (bendsOf(real) != m_bends[&real]) {
        return "bends";
    }
    QxPNodeDList bends;
    real.buildPathNodeList(bends);
    for (const QxPNode* bend : QxPNodeDListIter(&bends)) {
        if (bend->referenceCount() != 1 || bend->pUnverifiedOwnerEdge() != &real) {
            return "a bend is not its own alone";
        }
        const Box box = boxOf(QxRect(bend->iCenter(), QxSize(0, 0)));
        const bool isHeard = edge.graph != nullptr && edge.graph->manager != nullptr;
        if (!isHeard || m_knownBends.count(bend) == 0) {
            m_knownBends.insert(bend);
            m_story.look(bend, box);
        }
        if (m_story.boxOf(bend) != box) {
            return "the events of a bend tell another story";
        }
    }
    return real.referenceCount() != 1                   ? "reference count"
           : (real.isVisible() != 0) != isVisible(edge) ? "visibility"
           : real.numberOfBends() != (edge.state == EdgeState::Connected ? bends.count() : -1)
               ? "number of bends"
               : "";
}

/// Only of what is so small that it can be walked along in short steps.
std::string EditWorld::visibleDifference(const ModelEdge& edge) {
    constexpr std::int32_t Far = 2000;
    const auto isNear = [](std::int64_t value) { return value > -Far && value < Far; };
    if (edge.state != EdgeState::Connected || (edge.graph->isBetween && !isVisible(edge))) {
        return "";
    }
    const Bends& bends = m_bends[edge.object];
    const auto ends = {boxOf(*drawn(*edge.source)->pIRect()),
                       boxOf(*drawn(*edge.target)->pIRect())};
    if (!std::all_of(bends.begin(), bends.end(),
                     [&](const QxPoint& bend) { return isNear(bend.x()) && isNear(bend.y()); }) ||
        !std::all_of(ends.begin(), ends.end(),
                     [&](const Box& box) { return std::all_of(box.begin(), box.end(), isNear); })) {
        return "";
    }
    const std::string wrong = visiblePartDifference(*drawn(edge), bends, m_random.chance(20));
    return wrong.empty() ? "" : "edge: " + wrong;
}

std::string EditWorld::marginDifference(const ModelGraph& graph) {
    const QxDGraph& real = *drawn(graph);
    const Attributes& wanted = m_attributes[&real];
    QxRect bounds;
    QxRect margins;
    real.ntBoundingRectWithIntergraphEdges(bounds);
    real.ntMarginBoundingRect(margins);
    const Box inner = boxOf(bounds);
    QxRect all = real.boundsInitialized() != 0 ? *real.pBoundingRect() : QxRect();
    const ModelGraph* between = graph.manager->between;
    if (m_anchors[graph.manager] == &graph && between != nullptr &&
        drawn(*between)->boundsInitialized() != 0) {
        const QxRect& others = *drawn(*between)->pBoundingRect();
        all = real.boundsInitialized() != 0 ? all |= others : others;
    }
    if (inner != boxOf(all)) {
        return "bounds with the edges between graphs";
    }
    const std::array<std::int64_t, 2> extents{bounds.width(), bounds.height()};
    Box outer;
    for (std::size_t side = 0; side < 4; ++side) {
        const double margin = wanted.constant[side] + wanted.proportional[side] / 1000.0 *
                                                          static_cast<double>(extents[side % 2]);
        const auto whole = qx::clampToInt32(static_cast<std::int64_t>(margin));
        outer[side] =
            qx::clampToInt32(std::int64_t{inner[side]} + (side < 2 ? -1 : 1) * std::int64_t{whole});
    }
    return boxOf(margins) == outer ? "" : "margins";
}

std::string EditWorld::differenceAt(const ModelGraph& graph) {
    const QxDGraph& real = *drawn(graph);
    Attributes& attributes = m_attributes[&real];
    if (real.referenceCount() != 1) {
        return "reference count";
    }
    if ((real.isVisible() != 0) != isVisible(&graph)) {
        return "visibility";
    }
    const Box stored = boundsOf(&real);
    if (graph.manager == nullptr) {
        m_story.look(&real, stored);
        attributes.changes = 0;
        attributes.isLoose = true;
    } else {
        attributes.rests &= !std::exchange(attributes.isLoose, false);
        if (!m_story.knows(&real)) {
            m_story.look(&real, Box{});
        }
        if (m_story.boxOf(&real) != stored) {
            return "its events tell another story";
        }
        if (m_story.takeCount(&real, MarginsChanged) != std::exchange(attributes.changes, 0)) {
            return "events of margins";
        }
    }
    // A graph outside a drawing, and one that nobody sees, may have been left behind by moves.
    if (graph.manager == nullptr || !isVisible(&graph) || attributes.rests) {
        return "";
    }
    QxRect walked;
    const bool any = walkBounds(real, walked);
    if (any != (real.boundsInitialized() != 0)) {
        return any ? "bounds are missing" : "bounds of nothing";
    }
    if (any && stored != boxOf(walked)) {
        return "bounds are " + testing::PrintToString(stored) + " instead of " +
               testing::PrintToString(boxOf(walked));
    }
    return marginDifference(graph);
}

/// Every node that holds a shape counts, and equal shapes of one factory are held as one.
std::string EditWorld::shapeDifference() const {
    std::map<const QxShapeResource*, int> holders;
    for (const ModelNode* node : m_model.nodes()) {
        if (const QxShapeResource* resource = drawn(*node)->pQueryShapeResource()) {
            ++holders[resource];
        }
    }
    for (const auto& [resource, count] : holders) {
        if (resource->useCount() != count) {
            return "shape: " + std::to_string(resource->useCount()) + " holders counted, " +
                   std::to_string(count) + " there";
        }
        for (const auto& [other, ignored] : holders) {
            if (other != resource && other->pResourceDB() == resource->pResourceDB() &&
                other->equals(resource) != 0) {
                return "shape: not shared";
            }
        }
    }
    return "";
}

}  // namespace qxtest
