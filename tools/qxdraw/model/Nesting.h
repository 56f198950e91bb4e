// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "import/GraphDocument.h"
#include "model/TextLayout.h"

namespace qxdraw {

/// Gives each nested graph that stands in no node a node of its own, after all others, and lets
/// edges end there that are to be seen ending at its border. What the file tells of a node with a
/// nested graph in it becomes the box and the title of that graph; the node itself is sized anew,
/// as it looks when it is closed. Nodes have not been sized yet.
void nestDocument(GraphDocument& document);

/// The place of a node that has a center.
DocumentBox boxOf(const DocumentNode& node);

/// The smallest box around both; `box` may be missing yet.
DocumentBox united(const std::optional<DocumentBox>& box, const DocumentBox& more);

/// How many graphs lie around each graph.
std::vector<int> depthsOf(const GraphDocument& document);

/// The graphs, outer ones before inner ones.
std::vector<int> outsideIn(const GraphDocument& document);

/// The graph shown in each node; -1: none.
std::vector<int> graphsInNodes(const GraphDocument& document);

/// An edge as it is seen from the innermost graph that holds both ends: it joins two members there.
struct CommonView {
    int graph;
    int source;  ///< index into GraphDocument::nodes
    int target;
};

/// `onCross` hears of each graph that the edge leaves on the way from an end to that graph: the
/// graph, the member of it in which the end lies, and whether the end is the source.
CommonView commonViewOf(const GraphDocument& document, const std::vector<int>& depths, int source,
                        int target,
                        const std::function<void(int graph, int member, bool atSource)>& onCross);

/// Distances inside the boxes of nested graphs, world units.
struct BoxSpacing {
    static constexpr double Padding = 16;    ///< between the border and what is in the box
    static constexpr double TitleGap = 8;    ///< between the title and what is under it
    static constexpr double Neighbour = 22;  ///< left free between members of a graph
};

/// The title of a graph as it is painted; without lines when it has none.
TextBlock titleOf(const GraphDocument& document, int graph);

}  // namespace qxdraw
