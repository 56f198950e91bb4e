// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "model/Drawing.h"

namespace qxdraw {

/// Whether something is shown in a drawing, why not, and what is shown in its place.
struct Explanation {
    std::string kind;  ///< "node", "nested graph" or "edge"
    std::string name;
    bool isShown = false;
    bool isClosed = false;    ///< a nested graph whose node is shown, but not what is in it
    std::string why;          ///< in one word; empty when it is shown
    std::string blame;        ///< the name of what is collapsed, folded or hidden; may be empty
    std::string standIn;      ///< the name of what is shown in its place; empty: nothing is
    std::string standInKind;  ///< "node", "nested graph", "edge" or "meta-edge"
    int standsFor = 0;        ///< a meta-edge in its place: for how many edges

    /// All of it in a sentence.
    std::string words() const;
};

/// The ends of the edges of a document that has not been nested yet.
std::vector<std::pair<int, int>> endsOfEdges(const GraphDocument& document);

/// What a name on the command line means: nodes, nested graphs, or edges as "A->B" or "A--B".
struct Explained {
    std::vector<int> nodes;
    std::vector<std::size_t> edges;
};

/// Looks for the name in a document that has been nested; `ends` are those of its edges before.
/// Throws NameError.
Explained findToExplain(const std::string& name, const GraphDocument& document,
                        const std::vector<std::pair<int, int>>& ends);

/// Asks the drawing about it. For edges it has to be placed.
std::vector<Explanation> explain(const Explained& explained, const Drawing& drawing,
                                 const GraphDocument& document);

}  // namespace qxdraw
