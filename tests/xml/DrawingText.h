// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <map>
#include <sstream>
#include <string>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxLabelManager.h"
#include "qx/drawing/QxPNode.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxShapeResource.h"
#include "qx/nesting/QxExpandedNodeExtension.h"
#include "support/GraphTesting.h"

namespace qxtest {

/// Everything about a drawing that a document has to carry, as text. Objects are called by their
/// place in the drawing, so that two drawings that are alike give the same text.
class DrawingText {
public:
    explicit DrawingText(const QxDGraphManager& manager) : m_manager(manager) {
        for (const QxDGraph* graph : objectsOf<QxDGraph>(*manager.pGraphList())) {
            if (graph->isHideGraph() == 0) {
                nameContents(*graph);
            }
        }
        if (const QxDGraph* between = manager.pQueryIntergraph()) {
            nameContents(*between);
        }
        tellAll();
    }
    std::string text() const { return m_out.str(); }

private:
    void nameContents(const QxDGraph& graph) {
        m_names[&graph] = "g" + std::to_string(m_names.size());
        for (const QxDGraph* part : {&graph, static_cast<const QxDGraph*>(graph.pHideGraph())}) {
            if (part == nullptr) {
                continue;
            }
            for (const QxDNode* node : objectsOf<QxDNode>(*part->pNodeList())) {
                m_names[node] = "n" + std::to_string(m_names.size());
                if (const QxConnectorManager* all = node->pQueryConnectorManager()) {
                    for (const QxConnector* one : objectsOf<QxConnector>(*all)) {
                        m_names[one] = "c" + std::to_string(m_names.size());
                    }
                }
            }
            for (const QxDEdge* edge : edgesOf(*part)) {
                m_names[edge] = "e" + std::to_string(m_names.size());
            }
        }
    }
    static std::vector<QxDEdge*> edgesOf(const QxDGraph& graph) {
        std::vector<QxDEdge*> all = objectsOf<QxDEdge>(*graph.pEdgeList());
        for (const QxEdgeDList* list :
             {graph.pDisconnectedEdgeList(), graph.pDeactivatedEdgeList()}) {
            const auto some = objectsOf<QxDEdge>(*list);
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }
    std::string name(const QxObject* object) const {
        const auto found = m_names.find(object);
        return found != m_names.end() ? found->second : "-";
    }

    void tellAll() {
        m_out << "anchor " << name(m_manager.pAnchorGraph()) << " switches "
              << m_manager.compressMetaEdges() << m_manager.reflexiveMetaEdgeReplacement()
              << m_manager.ignoreConnectorsForMetaEdges() << m_manager.updatesMetaEdges();
        tellCommon(m_manager);
        for (const QxDGraph* graph : objectsOf<QxDGraph>(*m_manager.pGraphList())) {
            if (graph->isHideGraph() == 0) {
                tell(*graph);
            }
        }
        if (const QxDGraph* between = m_manager.pQueryIntergraph()) {
            tell(*between);
        }
    }
    void tellCommon(const QxGraphObject& object) {
        const wchar_t* const called = object.pNameString();
        m_out << " '" << (called != nullptr ? QxText(called).toUtf8() : "(none)") << "' "
              << object.objectType() << ' ' << object.userField() << ' ' << object.isReadOnly()
              << '\n';
    }
    void tell(const QxSpacing& spacing) {
        m_out << ' ' << spacing.constant() << '+' << spacing.proportional();
    }
    void tell(const QxDGraph& graph) {
        m_out << name(&graph);
        tellCommon(graph);
        for (const QxSpacing* spacing :
             {graph.pLeftMarginSpacing(), graph.pRightMarginSpacing(), graph.pTopMarginSpacing(),
              graph.pBottomMarginSpacing(), graph.pNestedViewLeftSpacing(),
              graph.pNestedViewRightSpacing(), graph.pNestedViewTopSpacing(),
              graph.pNestedViewBottomSpacing()}) {
            tell(*spacing);
        }
        const QxTransform& t = *graph.pTransform();
        m_out << " min " << graph.minWidthOfMarginBoundingRect() << 'x'
              << graph.minHeightOfMarginBoundingRect() << " routing " << graph.orthogonalRouting()
              << " spacing " << graph.diagrammingMultiEdgeSpacing() << " bounds "
              << (graph.flagWord() & qx::flags::GraphNeedsBounds) << " transform "
              << t.targetOrigin().x() - t.sourceOrigin().x() << ','
              << t.targetOrigin().y() - t.sourceOrigin().y() << " scale " << t.scaleX() << ','
              << t.scaleY() << " children";
        QxGraphDList children;
        graph.buildChildGraphList(&children);
        for (const QxGraph* child : objectsOf<QxGraph>(children)) {
            m_out << ' ' << name(child);
        }
        if (graph.isVisible() != 0 && graph.boundsInitialized() != 0 &&
            graph.needsUpdateGraphBounds() != 0) {
            tell("\n bounds", *graph.pBoundingRect());
        }
        m_out << '\n';
        tellLabels(graph.pQueryLabelManager());
        for (const QxDGraph* part : {&graph, static_cast<const QxDGraph*>(graph.pHideGraph())}) {
            if (part == nullptr) {
                continue;
            }
            for (const QxDNode* node : objectsOf<QxDNode>(*part->pNodeList())) {
                tell(*node);
            }
            for (const QxDEdge* edge : edgesOf(*part)) {
                tell(*edge);
            }
        }
    }
    void tell(const char* what, const QxRect& r) {
        m_out << what << ' ' << r.left() << ' ' << r.bottom() << ' ' << r.right() << ' ' << r.top();
    }
    void tell(const QxShapeResource* resource) {
        if (resource == nullptr) {
            m_out << " no shape";
            return;
        }
        const QxShape& shape = *resource->pShape();
        QxRect inner;
        shape.getInnerRect(inner);
        m_out << " shape " << shape.type();
        tell("", inner);
        QxPointDList points;
        shape.getOutline(points);
        for (const QxPoint* p : objectsOf<QxPoint>(points)) {
            m_out << ' ' << p->x() << ',' << p->y();
        }
    }
    void tell(const QxDNode& node) {
        m_out << name(&node) << (node.hidden() != 0 ? " hidden" : "")
              << (node.isFolderNode() != 0 ? " folder" : "") << " child "
              << name(node.pChildGraph()) << (node.expanded() != 0 ? " expanded" : "");
        tellCommon(node);
        tell("", *node.pIRect());
        m_out << " original " << node.originalWidth() << 'x' << node.originalHeight() << " force "
              << node.forceClipping();
        tell(node.pQueryShapeResource());
        if (const QxExpandedNodeExtension* kept = node.pExpandedNodeExtension()) {
            m_out << " kept " << kept->pPreExpandSize()->width() << 'x'
                  << kept->pPreExpandSize()->height() << ' '
                  << kept->pPreExpandOriginalSize()->width() << 'x'
                  << kept->pPreExpandOriginalSize()->height() << ' '
                  << kept->preExpandForceClipping() << ' ' << kept->aspectRatio() << ' '
                  << kept->touchesNestedGraphOnLeft() << kept->touchesNestedGraphOnRight()
                  << kept->touchesNestedGraphOnBottom() << kept->touchesNestedGraphOnTop();
            tell(kept->pShapeResource());
        }
        for (const QxEdgeDList* list :
             {node.pInEdgeList(), node.pOutEdgeList(), node.pDisconnectedEdgeList(),
              node.pDeactivatedEdgeList()}) {
            m_out << " |";
            for (const QxEdge* edge : objectsOf<QxEdge>(*list)) {
                m_out << ' ' << name(edge);
            }
        }
        m_out << '\n';
        if (const QxConnectorManager* all = node.pQueryConnectorManager()) {
            for (const QxConnector* one : objectsOf<QxConnector>(*all)) {
                tell(*one);
            }
        }
        tellLabels(node.pQueryLabelManager());
    }
    void tell(const QxConnector& one) {
        m_out << " connector " << name(&one) << ' ' << one.specified() << ' ' << one.ntWidth()
              << 'x' << one.ntHeight() << ' ' << one.ntOffsetX() << ',' << one.ntOffsetY() << ' '
              << one.perMilX() << ',' << one.perMilY() << ' ' << one.hasRoutingDirection()
              << one.routingDirection();
        tell(one.pQueryShapeResource());
        tellCommon(one);
        tellLabels(one.pQueryLabelManager());
    }
    void tell(const QxDEdge& edge) {
        const std::uint32_t flags = edge.flagWord();
        m_out << name(&edge) << ' ' << name(edge.pSourceNode()) << "->" << name(edge.pTargetNode())
              << (edge.hidden() != 0 ? " hidden" : "") << " state " << edge.connected()
              << edge.deactivated()
              << ((flags & qx::flags::EdgeReturnsDisconnected) != 0 && edge.hidden() != 0)
              << ((flags & qx::flags::EdgeReturnsDeactivated) != 0 && edge.hidden() != 0)
              << " meta " << edge.isMetaEdge() << " multi " << edge.multiEdge() << " routing "
              << edge.internalOrthogonalRouting() << " clip " << edge.clipSourceSide()
              << edge.clipTargetSide() << " at " << name(edge.pInternalSourceConnector()) << ' '
              << name(edge.pInternalTargetConnector()) << " child "
              << name(static_cast<const QxEdge&>(edge).pChildGraph()) << " bends";
        QxPNodeDList bends;
        edge.buildPathNodeList(bends);
        for (const QxPNode* bend : objectsOf<QxPNode>(bends)) {
            m_out << ' ' << bend->iX() << ',' << bend->iY();
        }
        tellCommon(edge);
        tellLabels(edge.pQueryLabelManager());
    }
    void tellLabels(const QxLabelManager* labels) {
        if (labels == nullptr) {
            return;
        }
        for (const QxLabel* label : objectsOf<QxLabel>(*labels->pLabelList())) {
            m_out << " label " << label->ntWidth() << 'x' << label->ntHeight() << ' '
                  << label->ntOffsetX() << ',' << label->ntOffsetY() << " moves "
                  << label->moveLabelOnOwnerMove() << " at ";
            if (label->isEdgeLabel() != 0) {
                const auto& one = static_cast<const QxEdgeLabel&>(*label);
                m_out << one.perMilDistanceFromSource();
                if (one.globalOffsetMode() != 0) {
                    m_out << " pinned " << one.ntCenter().x() << ',' << one.ntCenter().y();
                }
            } else {
                const auto& one = static_cast<const QxRectangularObjectLabel&>(*label);
                m_out << one.perMilX() << ',' << one.perMilY();
            }
            tellCommon(*label);
        }
    }

    const QxDGraphManager& m_manager;
    std::map<const QxObject*, std::string> m_names;
    std::ostringstream m_out;
};

}  // namespace qxtest
