// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <graphviz/cgraph.h>

#include <memory>
#include <string>
#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

struct CloseGraph {
    void operator()(Agraph_t* graph) const { agclose(graph); }
};
using ParsedDot = std::unique_ptr<Agraph_t, CloseGraph>;

/// Has Graphviz parse the one graph that `text` holds, in time linear in its length, and adds what
/// the parser warns of. Throws ImportError with the line, std::bad_alloc when memory ends.
ParsedDot parseDot(const std::string& text, std::vector<DocumentWarning>& warnings);

}  // namespace qxdraw
