// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/DrawCommand.h"

#include <algorithm>
#include <cmath>
#include <iostream>

#include "commands/Messages.h"
#include "commands/Progress.h"
#include "import/DocumentReader.h"
#include "import/SourceText.h"
#include "model/Drawing.h"
#include "model/EdgeSpreading.h"
#include "model/NodeSizing.h"
#include "model/SpringLayout.h"
#include "model/StartPlacement.h"
#include "picture/OutputFile.h"
#include "picture/PictureError.h"
#include "picture/SceneBuilder.h"
#include "picture/SvgWriter.h"
#ifdef QXDRAW_WITH_RSVG
#include "picture/PngWriter.h"
#endif

namespace qxdraw {

namespace {

bool endsIn(const std::string& path, std::string_view ending) {
    return toLowerAscii(path).ends_with(ending);
}

#ifndef QXDRAW_WITH_RSVG
std::string writePng(const std::string&, double, double) {
    throw PictureError("this qxdraw was built without librsvg and cannot write PNG; use .svg");
}
#endif

bool usesSpring(const DrawOptions& options, const GraphDocument& document) {
    if (!options.layout.empty()) {
        return options.layout == "spring";
    }
    return std::none_of(document.nodes.begin(), document.nodes.end(),
                        [](const DocumentNode& node) { return node.center.has_value(); });
}

/// A layout moves the nodes, and bends that belong to their old places would lie anywhere.
void forgetBends(GraphDocument& document) {
    for (DocumentEdge& edge : document.edges) {
        edge.bends.clear();
    }
}

Scene makeScene(const DrawOptions& options, GraphDocument& document, bool spring,
                Progress& progress) {
    sizeNodes(document);
    SpringLayoutOptions layout;
    layout.edgeLength =
        options.edgeLength > 0 ? options.edgeLength : comfortableEdgeLength(document);
    layout.keepOverlaps = options.keepOverlaps;
    layout.onProgress = [&](double part) { progress.report("laying out", part); };
    placeNodes(document, layout.edgeLength);
    if (spring) {
        forgetBends(document);
        layOut(document, layout);
    }
    Drawing drawing(document);
    spreadEdges(drawing);
    Scene scene = buildScene(drawing, document);
    if (options.showBends) {
        addPaths(scene, drawing);
    }
    return scene;
}

/// Says what was read, moved and written.
void tellResult(const DrawOptions& options, const GraphDocument& document, bool spring,
                const Scene& scene) {
    const std::size_t nodes = document.nodes.size();
    std::cout << "read " << nodes << " nodes and " << document.edges.size() << " edges from "
              << options.input << '\n';
    if (spring) {
        std::cout << "moved " << nodes << " nodes by the spring embedder"
                  << (options.keepOverlaps ? "" : " and apart where they overlapped") << '\n';
    } else {
        std::cout << "moved no nodes\n";
    }
    std::cout << "wrote " << options.output << ", " << std::lround(scene.width()) << " x "
              << std::lround(scene.height()) << " units\n";
}

}  // namespace

bool isPictureName(const std::string& path) {
    return endsIn(path, ".svg") || endsIn(path, ".png");
}

void runDraw(const DrawOptions& options) {
    Progress progress(options.quiet);
    GraphDocument document = readDocument(options.input);
    if (!options.quiet) {
        tellWarnings(options.input, document);
    }
    const bool spring = usesSpring(options, document);
    const Scene scene = makeScene(options, document, spring, progress);
    progress.report("writing", 1);
    const std::string svg = writeSvg(scene);
    writeOutputFile(options.output, endsIn(options.output, ".svg")
                                        ? svg
                                        : writePng(svg, scene.width(), scene.height()));
    if (!options.quiet) {
        tellResult(options, document, spring, scene);
    }
}

}  // namespace qxdraw
