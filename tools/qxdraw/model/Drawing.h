// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "import/GraphDocument.h"
#include "model/TextLayout.h"
#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/foundation/util/QxText.h"

namespace qxdraw {

/// A label of the drawing, and its text as it is painted about the label's center.
struct DrawnLabel {
    QxLabel* label;
    TextBlock text;
    bool isInside;  ///< it belongs into its node; any other stands beside what it belongs to
};

/// A connector of the drawing.
struct DrawnPort {
    QxConnector* connector;
    std::size_t node;
    std::size_t port;  ///< among the ports of the node
    bool isInside;     ///< it lies within the node: edges there are painted over the node
};

/// A document as a drawing: one graph with the document's nodes and edges, in its order. Nested
/// graphs are flat in it. Connectors and labels are added by those who place them (Ports.h,
/// Labels.h).
class Drawing {
public:
    /// Every node of the document has a center and a size.
    explicit Drawing(const GraphDocument& document);
    ~Drawing();
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    QxDGraph& graph() const { return *m_graph; }
    QxDNode& node(std::size_t index) const { return *m_nodes[index]; }
    QxDEdge& edge(std::size_t index) const { return *m_edges[index]; }
    std::size_t numberOfNodes() const { return m_nodes.size(); }
    std::size_t numberOfEdges() const { return m_edges.size(); }
    const std::vector<DrawnLabel>& labels() const { return m_labels; }
    const std::vector<DrawnPort>& ports() const { return m_ports; }

    /// A new label of a node, edge or connector, as large as the painted text, at the place that
    /// the model gives it.
    template <class Owner>
    auto* addLabel(Owner& owner, const std::string& text, TextBlock painted,
                   bool isInside = false) {
        m_factory.sizeLabels(painted, isInside);
        auto* label = owner.addLabel(QxText::decodeUtf8(text).c_str(), 0);
        m_labels.push_back({label, std::move(painted), isInside});
        return label;
    }
    /// A new connector of that size, a rectangle, about a point.
    QxConnector& addPort(std::size_t node, std::size_t port, const DocumentPoint& center,
                         const QxSize& size, bool isInside);

private:
    /// Its labels have their size before their owner places them, its graphs keep connectors in
    /// their index.
    class DrawingFactory : public QxFactory {
    public:
        /// A label that stands beside something keeps a little distance from it.
        void sizeLabels(const TextBlock& text, bool isInside);

    protected:
        QxDGraph* vNewDGraph(QxOwnedObject* owner, int type) override;
        QxNodeLabel* vNewNodeLabel(QxOwnedObject* owner, int type) override;
        QxConnectorLabel* vNewConnectorLabel(QxOwnedObject* owner, int type) override;
        QxEdgeLabel* vNewEdgeLabel(QxOwnedObject* owner, int type) override;

    private:
        QxSize m_labelSize{40, 20};
    };

    void addNode(const DocumentNode& source);
    void addEdge(const DocumentEdge& source);

    DrawingFactory m_factory;
    QxDGraphManager* m_manager;
    QxDGraph* m_graph;
    std::vector<QxDNode*> m_nodes;
    std::vector<QxDEdge*> m_edges;
    std::vector<DrawnLabel> m_labels;
    std::vector<DrawnPort> m_ports;
};

/// The nearest point of the drawing's grid of whole units.
QxPoint toPoint(const DocumentPoint& point);
DocumentPoint toPlace(const QxPoint& point);

}  // namespace qxdraw
