// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/internal/ComplexityReading.h"

#include <cmath>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/QxExpandedNodeExtension.h"
#include "qx/xml/QxDEdgeXMLReader.h"
#include "qx/xml/QxDGraphManagerXMLReader.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/ElementKind.h"
#include "qx/xml/internal/GraphSpacings.h"
#include "qx/xml/internal/Names.h"
#include "qx/xml/internal/SharedShapes.h"

namespace qx::internal {

using Utilities = QxXMLUtilities;

ComplexityReading::ComplexityReading(QxDGraphManagerXMLReader& reader,
                                     const QxDOMElement* complexity)
    : m_reader(reader), m_complexity(complexity) {
    collectHidden();
    eachChild(names::NestingRelations, names::NestingRelation,
              [this](const QxDOMElement& element) { m_relations.push_back(&element); });
}

template <class Act>
void ComplexityReading::eachChild(Utilities::Name section, Utilities::Name name,
                                  const Act& act) const {
    const QxDOMElement* const list =
        m_complexity != nullptr ? Utilities::pChild(*m_complexity, section) : nullptr;
    for (const QxDOMElement* child = list != nullptr ? Utilities::pFirst(*list) : nullptr;
         child != nullptr; child = Utilities::pNext(*child)) {
        if (Utilities::hasName(*child, name) != 0) {
            act(*child);
        }
    }
}

void ComplexityReading::collectHidden() {
    eachChild(names::HiddenObjects, names::Hidden, [this](const QxDOMElement& element) {
        m_hidden.insert(Utilities::attribute(element, names::Id));
    });
}

bool ComplexityReading::isHidden(const QxDOMElement& element) const {
    return !m_hidden.empty() && m_hidden.count(Utilities::attribute(element, names::Id)) != 0;
}

void ComplexityReading::process() {
    collectRelations();
    expandHidden();
    hide();
    expandRest();
    settleAll();
    processMetaEdges();
    processFolders();
}

void ComplexityReading::collectRelations() {
    for (const QxDOMElement* element : m_relations) {
        auto* const member = static_cast<QxGraphMember*>(m_reader.pElementObject(
            *element, names::ChildGraphRelation, ElementKind::ChildGraphRelation));
        if (member == nullptr) {
            continue;
        }
        if (member->isNode() == 0 ||
            !m_relationOf.emplace(static_cast<QxDNode*>(member), element).second) {
            m_reader.repair(*element, "the relation is not that of a node, or is told twice");
        }
    }
}

const QxDOMElement* ComplexityReading::pElementOf(const QxDNode& node) const {
    const auto found = m_relationOf.find(&node);
    return found != m_relationOf.end() ? found->second : nullptr;
}

/// Outer ones first.
std::vector<QxDGraph*> ComplexityReading::childGraphs() const {
    std::vector<QxDGraph*> graphs;
    for (const QxDGraph* graph : each<QxDGraph>(*m_reader.pGraphManager()->pGraphList())) {
        if (graph->isChildGraph() == 0) {
            QxGraphDList below;
            graph->buildAllChildGraphList(&below);
            for (QxDGraph* child : each<QxDGraph>(below)) {
                graphs.push_back(child);
            }
        }
    }
    return graphs;
}

void ComplexityReading::expandHidden() {
    eachChild(names::HiddenObjects, names::Hidden, [this](const QxDOMElement& element) {
        auto* const node = static_cast<QxDNode*>(
            m_reader.pObject(Utilities::attribute(element, names::Id), ElementKind::Node));
        const QxDOMElement* const relation = node != nullptr ? pElementOf(*node) : nullptr;
        if (relation != nullptr) {
            m_reader.processNestingRelation(*node, *relation);
        }
    });
}

void ComplexityReading::expandRest() {
    for (QxDGraph* graph : childGraphs()) {
        QxDNode* const node = graph->pParentNode();
        const QxDOMElement* const relation = node != nullptr ? pElementOf(*node) : nullptr;
        if (relation != nullptr && node->hidden() == 0) {
            m_reader.processNestingRelation(*node, *relation);
        }
    }
}

// --- Hiding

void ComplexityReading::hide() {
    struct Lists {
        QxDNodeDList nodes;
        QxDEdgeDList edges;
    };
    std::unordered_map<const QxGraph*, Lists> lists;
    std::vector<QxDEdge*> stranded;
    eachChild(names::HiddenObjects, names::Hidden, [&](const QxDOMElement& element) {
        const std::u16string_view id = Utilities::attribute(element, names::Id);
        auto* const node = static_cast<QxDNode*>(m_reader.pObject(id, ElementKind::Node));
        auto* const edge = static_cast<QxDEdge*>(m_reader.pObject(id, ElementKind::Edge));
        if (node == nullptr && edge == nullptr) {
            m_reader.repair(element, "it names no node and no edge, which alone can be hidden");
            return;
        }
        QxDGraph* const graph = node != nullptr ? node->pOwnerGraph() : edge->pOwnerGraph();
        if (graph == nullptr || graph->isIntergraph() != 0) {
            m_reader.repair(element, "an edge between graphs cannot be hidden; it shows");
        } else if (node != nullptr) {
            lists[graph].nodes.appendNode(node);
        } else if (m_reader.drawingEdgeReader().isStranded(*edge) != 0) {
            stranded.push_back(edge);
        } else {
            lists[graph].edges.appendEdge(edge);
        }
    });
    // Hiding adds to the list of graphs.
    for (QxDGraph* graph : Snapshot<QxDGraph>(m_reader.pGraphManager()->pGraphList())) {
        const auto found = lists.find(graph);
        if (found != lists.end()) {
            graph->hide(&found->second.nodes, &found->second.edges, nullptr, nullptr);
        }
    }
    hideStranded(stranded);
}

/// Hidden edges with an end in another graph, which came there after the edge was hidden. They go
/// straight to where they were, so that they come back connected.
void ComplexityReading::hideStranded(const std::vector<QxDEdge*>& edges) {
    for (QxDEdge* edge : edges) {
        QxDGraph* const graph = edge->pOwnerGraph();
        QxDNode* const source = edge->pSourceNode();
        QxDNode* const target = edge->pTargetNode();
        if (graph == nullptr || source == nullptr || target == nullptr) {
            continue;
        }
        const bool isNew = graph->pHideGraph() == nullptr;
        QxDGraph* const hidden =
            isNew ? m_reader.pDGraphManager()->addGraph(0) : graph->pHideGraph();
        if (hidden == nullptr || graph->removeEdge(edge) == nullptr) {
            continue;
        }
        if (isNew) {
            graph->setHideLink(hidden);
        }
        if (hidden->insertEdge(edge, source, target) == nullptr) {
            edge->vRelease();
        }
    }
}

// --- Expanded nodes

void ComplexityReading::settleAll() {
    const std::vector<QxDGraph*> graphs = childGraphs();
    for (auto graph = graphs.rbegin(); graph != graphs.rend(); ++graph) {
        QxDNode* const node = (*graph)->pNestedWithinNode();
        const QxDOMElement* const relation = node != nullptr ? pElementOf(*node) : nullptr;
        if (relation != nullptr) {
            settle(*node, *relation);
        }
    }
}

namespace {

/// The look of an expanded node as one of our own documents tells it.
void takeLook(QxDNode& node, const QxDOMElement& look, QxTopLevelXMLReader& reader) {
    QxExpandedNodeExtension& kept = *node.pExpandedNodeExtension();
    if (const auto size = QxDXMLHelper::pParseSize(look)) {
        node.ntResize(*size);
    }
    if (const auto size =
            QxDXMLHelper::pParseWidthAndHeight(Utilities::pChild(look, names::OriginalSize))) {
        node.originalSize(*size);
    }
    if (const auto forced = Utilities::parseBooleanValue(look, names::ForceClipping)) {
        node.forceClipping(*forced);
    }
    giveShape(node, look, reader);
    if (const auto ratio = Utilities::parseDoubleValue(look, names::AspectRatio)) {
        kept.aspectRatio(*ratio);
    }
    if (const QxDOMElement* touches = Utilities::pChild(look, names::Touches)) {
        const auto touch = [&](Utilities::Name side) {
            return Utilities::parseBoolean(*touches, side).value_or(1);
        };
        kept.touchesNestedGraphOnLeft(touch(names::Left));
        kept.touchesNestedGraphOnRight(touch(names::Right));
        kept.touchesNestedGraphOnTop(touch(names::Upper));
        kept.touchesNestedGraphOnBottom(touch(names::Bottom));
    }
}

std::int32_t marginOf(const QxDOMElement& margins, Utilities::Name side) {
    return Utilities::toInt32(
        std::floor(Utilities::parseDouble(margins, side).value_or(0.0) + 0.5));
}

/// The size that leaves these margins around the contents, and the place of the contents in it.
void takeMargins(QxDNode& node, QxDGraph& nested, const QxDOMElement& margins) {
    QxRect bounds;
    nested.ntUpdatedBoundingRectWithIntergraphEdges(bounds);
    QxSize extent = bounds.size();
    nested.expandedTransformSize(node.pOwnerGraph(), extent);
    const std::int32_t width = saturatingAdd(
        extent.width(),
        saturatingAdd(marginOf(margins, names::Left), marginOf(margins, names::Right)));
    const std::int32_t height = saturatingAdd(
        extent.height(),
        saturatingAdd(marginOf(margins, names::Upper), marginOf(margins, names::Bottom)));
    const QxRect view = nested.ntViewRectInNodeCoordSystem();
    if (view.width() != width || view.height() != height) {
        node.ntResize(QxSpacing::calculateOuterSize(*nested.pNestedViewLeftSpacing(),
                                                    *nested.pNestedViewRightSpacing(), width),
                      QxSpacing::calculateOuterSize(*nested.pNestedViewBottomSpacing(),
                                                    *nested.pNestedViewTopSpacing(), height));
        node.originalSize(node.iSize());
    }
    const QxRect area = nested.ntViewRectInNodeCoordSystem();
    QxTransform& transform = *nested.pChangeableTransform();
    transform.sourceOrigin(QxDTuple(1.0 * bounds.left(), 1.0 * bounds.bottom()));
    transform.targetOrigin(QxDTuple(1.0 * area.left() + marginOf(margins, names::Left),
                                    1.0 * area.bottom() + marginOf(margins, names::Bottom)));
}

}  // namespace

void ComplexityReading::settle(QxDNode& node, const QxDOMElement& relation) {
    QxDGraph& nested = *node.pNestedGraph();
    const QxDOMElement* const element = m_reader.pElementOf(node);
    const QxDOMElement* const more = element != nullptr ? QxXMLHelper::pMore(*element) : nullptr;
    const QxDOMElement* const look =
        more != nullptr ? Utilities::pChild(*more, names::Expanded) : nullptr;
    const QxPoint center = node.iCenter();
    if (look != nullptr) {
        takeLook(node, *look, m_reader);
        *nested.pChangeableTransform() = m_reader.transformOf(nested);
        return;
    }
    nested.calculateGraphBounds(0);
    if (const QxDOMElement* margins = Utilities::pChild(relation, names::CalculatedMargins)) {
        takeMargins(node, nested, *margins);
    } else {
        node.fitToNestedGraph(1, 0, 1);
        nested.updateTransform();
    }
    if (!(node.iCenter() == center)) {
        node.ntMoveTo(center);
    }
    node.updateTouchingBits();
}

// --- Marks

void ComplexityReading::processMetaEdges() {
    eachChild(names::MetaEdges, names::MetaEdge, [this](const QxDOMElement& element) {
        if (auto* edge = static_cast<QxDEdge*>(
                m_reader.pElementObject(element, names::Id, ElementKind::Edge))) {
            edge->setMetaEdge(1);
        }
    });
}

void ComplexityReading::processFolders() {
    eachChild(names::Folders, names::Folder, [this](const QxDOMElement& element) {
        auto* const node =
            static_cast<QxDNode*>(m_reader.pElementObject(element, names::Id, ElementKind::Node));
        if (node == nullptr) {
            return;
        }
        node->setFolderNode(1);
        if (node->pChildGraph() == nullptr) {
            m_reader.note(element, "the folder holds no graph");
        }
    });
}

}  // namespace qx::internal
