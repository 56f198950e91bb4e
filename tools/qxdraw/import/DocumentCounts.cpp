// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/DocumentCounts.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace qxdraw {

DocumentCounts countDocument(const GraphDocument& document) {
    DocumentCounts counts;
    counts.nestedGraphs = static_cast<int>(document.graphs.size()) - 1;
    std::vector<int> depths(document.graphs.size(), 0);
    for (std::size_t i = 1; i < depths.size(); ++i) {  // parents stand before their children
        depths[i] = depths[static_cast<std::size_t>(document.graphs[i].parent)] + 1;
        counts.nestingDepth = std::max(counts.nestingDepth, depths[i]);
    }
    std::vector<std::pair<int, int>> pairs;
    pairs.reserve(document.edges.size());
    for (const DocumentEdge& edge : document.edges) {
        if (edge.source == edge.target) {
            ++counts.selfLoops;
        } else {
            pairs.push_back(std::minmax(edge.source, edge.target));
        }
    }
    const std::size_t all = pairs.size();
    std::sort(pairs.begin(), pairs.end());
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
    counts.extraParallelEdges = static_cast<int>(all - pairs.size());
    return counts;
}

}  // namespace qxdraw
