// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Arranging.h"

#include <algorithm>

#include "model/Detours.h"
#include "model/EdgeSpreading.h"
#include "model/LabelMoving.h"
#include "model/Labels.h"
#include "model/NestedLayout.h"
#include "model/Nesting.h"
#include "model/NodeSizing.h"
#include "model/Ports.h"

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

std::unique_ptr<Drawing> nestedDrawing(GraphDocument& document, const ViewOptions& view) {
    nestDocument(document);
    sizeNodes(document);
    auto drawing = std::make_unique<Drawing>(document);
    applyView(*drawing, document, view);
    return drawing;
}

std::unique_ptr<Drawing> arrange(GraphDocument& document, const ArrangingOptions& options,
                                 std::function<void(double)> onProgress) {
    NestedLayoutOptions layout;
    layout.spring = usesSpring(options, document);
    layout.edgeLength = options.edgeLength;
    layout.keepOverlaps = options.keepOverlaps;
    layout.onProgress = std::move(onProgress);
    if (layout.spring || options.orthogonal) {
        forgetBends(document);
    }
    auto drawing = nestedDrawing(document, options.view);
    addTitles(*drawing, document);
    layOutNested(document, *drawing, layout);
    drawing->place(document);
    connectPorts(*drawing, document);
    spreadEdges(*drawing, {bundleMode(options.bundles), options.orthogonal});
    if (layout.spring && !options.orthogonal) {
        leadAroundNodes(*drawing);  // else all stays as the file has it
    }
    addLabels(*drawing, document);
    moveLabelsApart(*drawing);
    if (layout.spring) {
        renewLoopsOfBoxes(*drawing);
    }
    return drawing;
}

}  // namespace qxdraw
