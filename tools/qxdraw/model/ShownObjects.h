// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "model/Drawing.h"

namespace qxdraw {

/// What lies in a region of a placed drawing, in all graphs that are shown there. Asks the spatial
/// indexes of the graphs, from the outermost inward: only nodes in the region are looked into.
class ShownObjects {
public:
    /// Makes the indexes.
    explicit ShownObjects(const Drawing& drawing);

    /// Fills the lists below anew with what has a point in common with the rectangle, which is in
    /// the coordinates of the whole drawing: outer graphs before inner ones, edges between graphs
    /// last. With `inOrder` what is in front comes last, within each graph.
    void find(const QxRect& region, bool inOrder);
    /// How many objects the last question has found.
    std::size_t count() const;

    std::vector<QxDNode*> nodes;
    std::vector<QxPEdge*> segments;
    std::vector<QxConnector*> connectors;
    std::vector<QxLabel*> nodeLabels;
    std::vector<QxLabel*> edgeLabels;
    std::vector<QxLabel*> connectorLabels;
    std::vector<QxLabel*> graphLabels;

private:
    void findIn(const QxDGraph& graph, const QxRect& region, bool inOrder);

    const Drawing& m_drawing;
    QxDNodeDList m_nodes;
    QxPEdgeDList m_segments;
    QxConnectorDList m_connectors;
    QxNodeLabelDList m_nodeLabels;
    QxEdgeLabelDList m_edgeLabels;
    QxConnectorLabelDList m_connectorLabels;
    QxGraphLabelDList m_graphLabels;
};

}  // namespace qxdraw
