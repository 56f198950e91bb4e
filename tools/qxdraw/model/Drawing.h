// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
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
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/foundation/util/QxText.h"

namespace qxdraw {

/// A label of the drawing, and its text as it is painted about the label's center.
struct DrawnLabel {
    QxLabel* label;
    TextBlock text;
    bool isInside;         ///< it belongs into its node; any other stands beside what it belongs to
    bool isTitle = false;  ///< of a graph
};

/// A connector of the drawing.
struct DrawnPort {
    QxConnector* connector;
    std::size_t node;
    std::size_t port;  ///< among the ports of the node
    bool isInside;     ///< it lies within the node: edges there are painted over the node
};

/// A document as a drawing: its graphs, nodes and edges, in its order. Each nested graph is the
/// child graph of its node and shown in it; edges between graphs run across.
///
/// Once it has been placed, every shown graph has the coordinates of the whole drawing: the
/// transforms of nested graphs change nothing. That of a graph without anything in it is the
/// exception. Connectors and labels are added by those who place them (Ports.h, Labels.h).
class Drawing {
public:
    /// Every node of the document has a size; nested graphs have nodes (Nesting.h). A drawing
    /// without nested graphs whose nodes have centers is placed already.
    explicit Drawing(const GraphDocument& document);
    ~Drawing();
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    QxDGraphManager& manager() const { return *m_manager; }
    QxDGraph& graph(std::size_t index = 0) const { return *m_graphs[index]; }
    QxDNode& node(std::size_t index) const { return *m_nodes[index]; }
    QxDEdge& edge(std::size_t index) const { return *m_edges[index]; }
    std::size_t numberOfGraphs() const { return m_graphs.size(); }
    std::size_t numberOfNodes() const { return m_nodes.size(); }
    std::size_t numberOfEdges() const { return m_edges.size(); }
    const std::vector<DrawnLabel>& labels() const { return m_labels; }
    const std::vector<DrawnPort>& ports() const { return m_ports; }
    /// The index of a node or edge of this drawing.
    std::size_t indexOf(const QxGraphMember& member) const { return m_indexOf.at(&member); }
    /// The same; nothing for what the drawing does not know.
    std::optional<std::size_t> findIndex(const QxGraphMember& member) const;
    QxDEventManager* events() const { return m_factory.pEventManager(); }

    /// Moves the shown nodes to the centers that the document gives them, and fits each node that
    /// shows a graph around that, or the box that the document gives the graph, whatever is larger;
    /// the document gets the place and size of these nodes.
    void place(GraphDocument& document);

    /// Folds nodes, all of one graph and none of them hidden, into a new folder node, which the
    /// document gets as its last node, with its last graph in it.
    void fold(const std::vector<int>& nodes, const std::string& name, GraphDocument& document);
    /// Brings the meta-edges up to date; the document gets each new one as one of its last edges,
    /// and loses those that nothing needs any more.
    void addMetaEdges(GraphDocument& document);

    /// Takes the labels of a node that stand in it, or those of an edge, away.
    void discardLabels(QxDNode& node);
    void discardLabels(QxDEdge& edge);
    /// The title of a graph, above what is in it.
    void addTitle(std::size_t graph, const std::string& text, TextBlock painted);
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
    /// A new connector of that size, a rectangle, about a point; that of a port is listed with the
    /// ports.
    QxConnector& addConnector(QxDNode& node, const DocumentPoint& center, const QxSize& size);
    QxConnector& addPort(std::size_t node, std::size_t port, const DocumentPoint& center,
                         const QxSize& size, bool isInside);

private:
    friend class BoundsRest;

    /// Its labels have their size before their owner places them, its graphs keep connectors in
    /// their index.
    class DrawingFactory : public QxFactory {
    public:
        /// A label that stands beside something keeps a little distance from it.
        void sizeLabels(const TextBlock& text, bool isInside);
        void sizeTitle(const TextBlock& text);

    protected:
        QxDGraph* vNewDGraph(QxOwnedObject* owner, int type) override;
        QxNodeLabel* vNewNodeLabel(QxOwnedObject* owner, int type) override;
        QxConnectorLabel* vNewConnectorLabel(QxOwnedObject* owner, int type) override;
        QxEdgeLabel* vNewEdgeLabel(QxOwnedObject* owner, int type) override;
        QxGraphLabel* vNewGraphLabel(QxOwnedObject* owner, int type) override;

    private:
        QxSize m_labelSize{40, 20};
    };

    void addGraph(const DocumentGraph& source);
    void addNode(const DocumentNode& source);
    void nestGraphs(const GraphDocument& document);
    void addEdge(const DocumentEdge& source);
    void placeNested(std::size_t index, GraphDocument& document);
    void standTitles(const QxDGraph& graph, const DocumentBox* box) const;
    void fitToBox(std::size_t index) const;

    /// Forgets edges that are about to go, and what the document says of them.
    void forgetEdges(const QxDEdgeDList& edges, GraphDocument& document);

    mutable DrawingFactory m_factory;
    QxDGraphManager* m_manager;
    std::vector<QxDGraph*> m_graphs;
    std::vector<std::optional<DocumentBox>> m_boxes;  ///< that the file gives the graphs
    std::vector<QxDNode*> m_nodes;
    std::vector<QxDEdge*> m_edges;
    std::unordered_map<const QxGraphMember*, std::size_t> m_indexOf;
    std::vector<DrawnLabel> m_labels;
    std::vector<DrawnPort> m_ports;
};

/// The same constant margin on all sides of a graph.
void setMargins(QxDGraph& graph, std::int32_t margin);

/// Whether a node lies, at any depth, in the graph that another one shows.
bool isShownIn(const QxDNode& inner, const QxDNode& outer);

/// Lets the bounds of all graphs rest while many things in them change, and brings them up to date
/// at its end, inner graphs first; nodes that show graphs are fitted then.
class BoundsRest {
public:
    explicit BoundsRest(const Drawing& drawing);
    ~BoundsRest();
    BoundsRest(const BoundsRest&) = delete;
    BoundsRest& operator=(const BoundsRest&) = delete;

private:
    const Drawing& m_drawing;
};

/// The outline as the model knows it.
QxShape toShape(const DocumentShape& source);

/// The nearest point of the drawing's grid of whole units.
QxPoint toPoint(const DocumentPoint& point);
DocumentPoint toPlace(const QxPoint& point);

}  // namespace qxdraw
