// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Arranging.h"

#include <algorithm>

#include "model/EdgeSpreading.h"
#include "model/LabelMoving.h"
#include "model/Labels.h"
#include "model/NodeSizing.h"
#include "model/Ports.h"
#include "model/SpringLayout.h"
#include "model/StartPlacement.h"

namespace qxdraw {

namespace {

/// A layout moves the nodes, and bends that belong to their old places would lie anywhere.
void forgetBends(GraphDocument& document) {
    for (DocumentEdge& edge : document.edges) {
        edge.bends.clear();
    }
}

}  // namespace

bool usesSpring(const ArrangingOptions& options, const GraphDocument& document) {
    if (!options.layout.empty()) {
        return options.layout == "spring";
    }
    return std::none_of(document.nodes.begin(), document.nodes.end(),
                        [](const DocumentNode& node) { return node.center.has_value(); });
}

std::unique_ptr<Drawing> arrange(GraphDocument& document, const ArrangingOptions& options,
                                 std::function<void(double)> onProgress) {
    const bool spring = usesSpring(options, document);
    sizeNodes(document);
    SpringLayoutOptions layout;
    layout.edgeLength =
        options.edgeLength > 0 ? options.edgeLength : comfortableEdgeLength(document);
    layout.keepOverlaps = options.keepOverlaps;
    layout.onProgress = std::move(onProgress);
    placeNodes(document, layout.edgeLength);
    if (spring) {
        forgetBends(document);
        layOut(document, layout);
    }
    auto drawing = std::make_unique<Drawing>(document);
    connectPorts(*drawing, document);
    spreadEdges(*drawing);
    addLabels(*drawing, document);
    moveLabelsApart(*drawing, document);
    return drawing;
}

}  // namespace qxdraw
