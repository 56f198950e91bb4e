// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/SpringLayout.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "model/Drawing.h"
#include "model/StartPlacement.h"
#include "model/Stretching.h"
#include "qx/layout/QxEadesAlgorithm.h"
#include "qx/layout/QxForceScan.h"

namespace qxdraw {

namespace {

/// Tells how much of the pushing and pulling is done: a round of n nodes is n^2 of it.
class Work {
public:
    Work(const std::vector<std::vector<int>>& parts, const std::function<void(double)>& onProgress)
        : m_onProgress(onProgress) {
        for (const std::vector<int>& part : parts) {
            m_all += part.size() > 1 ? roundOf(part) * Rounds : 0;
        }
    }

    static double roundOf(const std::vector<int>& part) {
        return static_cast<double>(part.size()) * static_cast<double>(part.size());
    }

    void add(double amount) {
        m_done += amount;
        if (m_onProgress) {
            m_onProgress(m_done / m_all);
        }
    }

private:
    static constexpr double Rounds = 31;  // that a run of the embedder makes

    const std::function<void(double)>& m_onProgress;
    double m_all = 0;
    double m_done = 0;
};

class ReportingEmbedder : public QxEadesAlgorithm {
public:
    ReportingEmbedder(QxDGraph& graph, QxGNodeDList& nodes, double edgeLength, Work& work,
                      double amountOfRound)
        : QxEadesAlgorithm(&graph, nullptr, &nodes,
                           static_cast<std::int32_t>(std::lround(edgeLength)), 0, 0),
          m_work(work),
          m_amountOfRound(amountOfRound) {}

protected:
    void optimize() override {
        QxEadesAlgorithm::optimize();
        m_work.add(m_amountOfRound);
    }

private:
    Work& m_work;
    double m_amountOfRound;
};

void readCenters(const Drawing& drawing, GraphDocument& document) {
    for (std::size_t i = 0; i < document.nodes.size(); ++i) {
        const QxPoint center = drawing.node(i).ntCenter();
        document.nodes[i].center = {static_cast<double>(center.x()),
                                    static_cast<double>(center.y())};
    }
}

void moveToCenters(Drawing& drawing, const GraphDocument& document) {
    for (std::size_t i = 0; i < document.nodes.size(); ++i) {
        drawing.node(i).ntMoveTo(toPoint(*document.nodes[i].center));
    }
}

/// The document as one graph with at most one edge between two nodes. Each edge pulls, and a bundle
/// would pull its ends so close together that nobody could tell its edges apart.
GraphDocument withoutBundles(const GraphDocument& document) {
    GraphDocument result = document;
    result.edges.clear();
    result.graphs.resize(1);
    for (DocumentNode& node : result.nodes) {
        node.graph = 0;
    }
    std::set<std::pair<int, int>> joined;
    for (const DocumentEdge& edge : document.edges) {
        if (edge.source != edge.target &&
            joined.emplace(std::minmax(edge.source, edge.target)).second) {
            DocumentEdge& copy = result.edges.emplace_back();
            copy.source = edge.source;
            copy.target = edge.target;
        }
    }
    return result;
}

void embed(Drawing& drawing, const std::vector<std::vector<int>>& parts,
           const SpringLayoutOptions& options) {
    Work work(parts, options.onProgress);
    for (const std::vector<int>& part : parts) {
        if (part.size() < 2) {
            continue;
        }
        QxGNodeDList nodes;
        for (const int index : part) {
            nodes.appendNode(&drawing.node(static_cast<std::size_t>(index)));
        }
        ReportingEmbedder(drawing.graph(), nodes, options.edgeLength, work, Work::roundOf(part))
            .run();
    }
}

}  // namespace

void layOut(GraphDocument& document, const SpringLayoutOptions& options) {
    const std::vector<std::vector<int>> parts = connectedParts(document);
    Drawing drawing(withoutBundles(document));
    drawing.graph().disableGraphBounds(1, 0);
    embed(drawing, parts, options);
    readCenters(drawing, document);
    if (!options.keepOverlaps) {
        for (const std::vector<int>& part : parts) {
            stretchUntilRoomy(document, part);
        }
    }
    packParts(document, parts, options.edgeLength / 2);
    moveToCenters(drawing, document);
    drawing.graph().disableGraphBounds(0, 1);
    if (!options.keepOverlaps) {
        QxForceScan(&drawing.graph()).run();
        readCenters(drawing, document);
    }
}

void pushApart(GraphDocument& document) {
    const Drawing drawing(withoutBundles(document));
    QxForceScan(&drawing.graph()).run();
    readCenters(drawing, document);
}

}  // namespace qxdraw
