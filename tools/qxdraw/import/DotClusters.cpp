// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/DotClusters.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

#include "import/DotSplines.h"
#include "import/ImportLimits.h"
#include "import/Numbers.h"

namespace qxdraw {

namespace {

/// In document order; cgraph itself has them in an order that depends on addresses.
std::vector<Agraph_t*> subgraphsOf(Agraph_t* graph) {
    std::vector<Agraph_t*> subgraphs;
    for (Agraph_t* sub = agfstsubg(graph); sub != nullptr; sub = agnxtsubg(sub)) {
        subgraphs.push_back(sub);
    }
    std::sort(subgraphs.begin(), subgraphs.end(),
              [](Agraph_t* a, Agraph_t* b) { return AGSEQ(a) < AGSEQ(b); });
    return subgraphs;
}

const char* boxText(Agraph_t* graph) {
    const char* const value = agget(graph, const_cast<char*>("bb"));
    return value == nullptr ? "" : value;
}

/// Where a layout has put the cluster; nothing for what is no rectangle within range, and for one
/// that is only inherited from the whole graph.
std::optional<DocumentBox> boxOf(Agraph_t* cluster) {
    const std::string_view text = boxText(cluster);
    const auto sides = text == boxText(agroot(cluster)) ? std::nullopt : parseNumbers(text);
    if (!sides || sides->size() != 4) {
        return {};
    }
    const DocumentBox box{(*sides)[0] * DotPoint, (*sides)[1] * DotPoint, (*sides)[2] * DotPoint,
                          (*sides)[3] * DotPoint};
    const auto isFar = [](double side) { return std::abs(side) > ImportLimits::Coordinate; };
    const bool isGood = box.width() > 0 && box.height() > 0 && !isFar(box.left) &&
                        !isFar(box.right) && !isFar(box.bottom) && !isFar(box.top) &&
                        box.width() <= ImportLimits::Extent && box.height() <= ImportLimits::Extent;
    return isGood ? std::optional(box) : std::nullopt;
}

}  // namespace

void DotClusters::read(Agraph_t* graph) {
    readClustersOf(graph, 0);
}

void DotClusters::readClustersOf(Agraph_t* graph, int parent) {
    for (Agraph_t* sub : subgraphsOf(graph)) {
        int index = parent;
        const std::string name = agnameof(sub);
        if (name.starts_with("cluster")) {
            index = static_cast<int>(m_document.graphs.size());
            m_document.graphs.push_back({m_labelOf(sub), parent, -1, name, boxOf(sub)});
            m_indexOfName.emplace(name, index);
            readNodes(sub, parent, index);
        }
        readClustersOf(sub, index);
    }
}

void DotClusters::readNodes(Agraph_t* cluster, int parent, int index) {
    for (Agnode_t* node = agfstnode(cluster); node != nullptr; node = agnxtnode(cluster, node)) {
        DocumentNode& member = m_document.nodes[static_cast<std::size_t>(m_indexOf(node))];
        if (member.graph == parent) {
            member.graph = index;
        } else {
            note(m_sharedNodes,
                 "node '" + member.id + "' stands in several clusters; it is shown in '" +
                     m_document.graphs[static_cast<std::size_t>(member.graph)].id + "'");
        }
    }
}

bool DotClusters::isWithin(int graph, int around) const {
    while (graph > around) {  // what is around has the smaller index
        graph = m_document.graphs[static_cast<std::size_t>(graph)].parent;
    }
    return graph == around;
}

void DotClusters::endAtCluster(DocumentEdge& edge, bool atSource, std::string_view name) {
    if (name.empty()) {
        return;
    }
    const auto nodeAt = [&](int index) -> const DocumentNode& {
        return m_document.nodes[static_cast<std::size_t>(index)];
    };
    const DocumentNode& here = nodeAt(atSource ? edge.source : edge.target);
    const DocumentNode& there = nodeAt(atSource ? edge.target : edge.source);
    const auto found = m_indexOfName.find(std::string(name));
    if (found != m_indexOfName.end() && isWithin(here.graph, found->second) &&
        !isWithin(there.graph, found->second)) {
        (atSource ? edge.sourceGraph : edge.targetGraph) = found->second;
        return;
    }
    const bool isKnown = found != m_indexOfName.end();
    note(m_wrongEnds, std::string(atSource ? "ltail" : "lhead") + " of the edge from '" +
                          nodeAt(edge.source).id + "' to '" + nodeAt(edge.target).id +
                          "' is passed over: " +
                          (!isKnown                               ? "there is no cluster '"
                           : !isWithin(here.graph, found->second) ? "its end does not lie in '"
                                                                  : "both its ends lie in '") +
                          std::string(name) + "'");
}

void DotClusters::addWarnings() {
    warn(m_sharedNodes, "such nodes");
    warn(m_wrongEnds, "such edges");
}

void DotClusters::note(Fault& fault, std::string text) {
    if (fault.count++ == 0) {
        fault.first = std::move(text);
    }
}

void DotClusters::warn(const Fault& fault, const char* what) {
    if (fault.count > 0) {
        m_document.warnings.push_back(
            {fault.first + (fault.count == 1
                                ? ""
                                : " (" + std::to_string(fault.count) + " " + what + " in all)"),
             0});
    }
}

}  // namespace qxdraw
