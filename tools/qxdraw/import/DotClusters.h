// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <graphviz/cgraph.h>

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

/// The clusters of a DOT graph, as nested graphs of its document. Clusters nest in clusters;
/// subgraphs that are none only pass on what is in them. A node belongs to the innermost cluster
/// that names it first.
class DotClusters {
public:
    /// Both functions have to outlive the reading.
    DotClusters(GraphDocument& document, std::function<int(Agnode_t*)> indexOf,
                std::function<std::string(Agraph_t*)> labelOf)
        : m_document(document), m_indexOf(std::move(indexOf)), m_labelOf(std::move(labelOf)) {}

    /// Nodes and edges have been read.
    void read(Agraph_t* graph);
    /// Lets an end of an edge be seen at the border of the cluster of that name, when the end lies
    /// in it and the other end does not; else the document gets a warning. No name: nothing
    /// happens.
    void endAtCluster(DocumentEdge& edge, bool atSource, std::string_view name);
    /// Tells of what was passed over, in few words however much it was. To be called last.
    void addWarnings();

private:
    /// Of many similar faults the first is told, and how many there are.
    struct Fault {
        std::string first;
        int count = 0;
    };

    void readClustersOf(Agraph_t* graph, int parent);
    void readNodes(Agraph_t* cluster, int parent, int index);
    bool isWithin(int graph, int around) const;
    static void note(Fault& fault, std::string text);
    void warn(const Fault& fault, const char* what);

    GraphDocument& m_document;
    std::function<int(Agnode_t*)> m_indexOf;
    std::function<std::string(Agraph_t*)> m_labelOf;
    std::unordered_map<std::string, int> m_indexOfName;
    Fault m_sharedNodes;
    Fault m_wrongEnds;
};

}  // namespace qxdraw
