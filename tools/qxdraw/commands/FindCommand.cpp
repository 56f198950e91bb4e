// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/FindCommand.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <nlohmann/json.hpp>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "commands/OpenDrawing.h"
#include "commands/Progress.h"
#include "import/ImportLimits.h"
#include "import/Numbers.h"
#include "model/ShownObjects.h"
#include "qx/drawing/QxEdgeVisiblePointDListIter.h"
#include "qx/drawing/QxPEdge.h"

namespace qxdraw {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::int32_t PointReach = 3;  // how far from a line a point still counts as on it

std::string numbersFault(std::string_view text, std::size_t count, const char* form) {
    const auto numbers = parseNumbers(text);
    if (!numbers || numbers->size() != count) {
        return std::string("expected ") + form + ", separated by commas, but got '" +
               std::string(text) + "'";
    }
    const auto isFar = [](double value) { return std::abs(value) > ImportLimits::Coordinate; };
    return std::any_of(numbers->begin(), numbers->end(), isFar)
               ? "'" + std::string(text) + "' is out of the range of coordinates"
               : "";
}

/// The numbers of a text without fault, in whole units.
std::vector<std::int32_t> unitsOf(std::string_view text) {
    std::vector<std::int32_t> units;
    const auto numbers = parseNumbers(text);
    for (const double value : *numbers) {
        units.push_back(static_cast<std::int32_t>(std::lround(value)));
    }
    return units;
}

/// One thing that was found.
struct Found {
    std::string words;
    Json json;
    QxRect bounds;
};

/// Asks the index of a drawing, and tells what it answers in words and JSON.
class Finder {
public:
    Finder(const Drawing& drawing, const GraphDocument& document)
        : m_drawing(drawing), m_document(document), m_shown(drawing) {
        for (const DrawnPort& port : drawing.ports()) {
            m_ports.emplace(port.connector, &port);
        }
        for (const DrawnLabel& label : drawing.labels()) {
            m_labelsInNodes.insert(label.isInside ? label.label : nullptr);
        }
    }

    std::vector<Found> inRegion(const QxRect& region) { return find(region, nullptr); }

    std::vector<Found> at(const QxPoint& point) {
        return find(QxRect(point.x() - PointReach, point.y() - PointReach, point.x() + PointReach,
                           point.y() + PointReach),
                    &point);
    }

private:
    /// Front first, as pictures are painted: labels over ports over nodes over edges, but for edges
    /// that end within nodes, and for nodes that others lie in. With a point only what holds it.
    std::vector<Found> find(const QxRect& region, const QxPoint* point) {
        m_shown.find(region, true);
        std::vector<Found> found;
        addLabels(m_shown.edgeLabels, point, false, found);
        addLabels(m_shown.connectorLabels, point, false, found);
        addLabels(m_shown.nodeLabels, point, false, found);
        addLabels(m_shown.graphLabels, point, false, found);
        addLabels(m_shown.nodeLabels, point, true, found);
        for (const QxConnector* connector : frontFirst(m_shown.connectors)) {
            const bool isPort = m_ports.contains(connector);
            if (isPort && (point == nullptr || connector->within(*point, 1) != 0)) {
                found.push_back(described(*connector));
            }
        }
        const std::vector<QxDEdge*> edges = foundEdges();
        addEdges(edges, true, found);
        addNodes(point, false, found);
        addEdges(edges, false, found);
        addNodes(point, true, found);
        return found;
    }

    template <class Object>
    static std::vector<Object*> frontFirst(std::vector<Object*> objects) {
        std::reverse(objects.begin(), objects.end());
        return objects;
    }

    void addLabels(const std::vector<QxLabel*>& labels, const QxPoint* point, bool inNodes,
                   std::vector<Found>& found) const {
        for (const QxLabel* label : frontFirst(labels)) {
            QxRect rect;
            label->getBoundingRect(rect, 0);
            if (m_labelsInNodes.contains(label) == inNodes &&
                (point == nullptr || rect.within(*point) != 0)) {
                found.push_back(described(*label));
            }
        }
    }

    std::vector<QxDEdge*> foundEdges() const {
        std::vector<QxDEdge*> edges;
        for (const QxPEdge* segment : frontFirst(m_shown.segments)) {
            if (edges.empty() || edges.back() != segment->pOwnerEdge()) {
                edges.push_back(segment->pOwnerEdge());
            }
        }
        return edges;
    }

    void addEdges(const std::vector<QxDEdge*>& edges, bool overNodes,
                  std::vector<Found>& found) const {
        for (QxDEdge* edge : edges) {
            if ((endsInside(edge->pSourceConnector()) || endsInside(edge->pTargetConnector())) ==
                overNodes) {
                found.push_back(described(*edge));
            }
        }
    }

    bool endsInside(const QxConnector* connector) const {
        const auto port = m_ports.find(connector);
        return port != m_ports.end() && port->second->isInside;
    }

    void addNodes(const QxPoint* point, bool containers, std::vector<Found>& found) const {
        for (const QxDNode* node : frontFirst(m_shown.nodes)) {
            if ((node->expanded() != 0) == containers &&
                (point == nullptr || node->within(*point, 1) != 0)) {
                found.push_back(described(*node));
            }
        }
    }

    const DocumentNode& documentNode(const QxDNode& node) const {
        return m_document.nodes[m_drawing.indexOf(node)];
    }

    std::string nameOf(const QxDEdge& edge) const {
        return documentNode(*edge.pSourceNode()).id + (m_document.directed ? " -> " : " -- ") +
               documentNode(*edge.pTargetNode()).id;
    }

    static Found foundKind(const char* kind, const std::string& words) {
        Found found;
        found.words = std::string(kind) + " " + words;
        found.json["kind"] = kind;
        return found;
    }

    Found described(const QxDNode& node) const {
        const DocumentNode& source = documentNode(node);
        Found found = foundKind("node", source.id);
        found.json["id"] = source.id;
        found.json["label"] = source.label;
        found.bounds = *node.pIRect();
        return found;
    }

    Found described(QxDEdge& edge) const {
        QxRect bounds;
        QxPoint point;
        bool isFirst = true;
        for (QxEdgeVisiblePointDListIter it(&edge, 1); it; ++it) {
            it.getPoint(point);
            bounds = isFirst ? QxRect(point, point) : bounds;
            bounds |= QxRect(point, point);
            isFirst = false;
        }
        Found found = foundKind("edge", nameOf(edge));
        found.bounds = bounds;
        addEnds(found.json, edge);
        const DocumentEdge& source = m_document.edges[m_drawing.indexOf(edge)];
        found.json["label"] = source.label;
        if (source.standsFor > 0) {
            found.json["stands_for"] = source.standsFor;
        }
        return found;
    }

    void addEnds(Json& json, const QxDEdge& edge) const {
        json["source"] = documentNode(*edge.pSourceNode()).id;
        json["target"] = documentNode(*edge.pTargetNode()).id;
    }

    Found described(const QxConnector& connector) const {
        const DrawnPort& port = *m_ports.at(&connector);
        const DocumentNode& node = m_document.nodes[port.node];
        const std::string& name = node.ports[port.port].name;
        Found found = foundKind("connector", name + " of node " + node.id);
        found.json["node"] = node.id;
        found.json["port"] = name;
        connector.ntBoundingRect(found.bounds);
        return found;
    }

    Found described(const QxLabel& label) const {
        const std::string text = QxText::encodeUtf8(label.pNameString());
        Found found = foundKind("label", "'" + text + "' of ");
        found.json["text"] = text;
        label.getBoundingRect(found.bounds, 0);
        if (const QxDEdge* edge = label.pOwnerEdge()) {
            found.words += "edge " + nameOf(*edge);
            found.json["of"] = "edge";
            addEnds(found.json, *edge);
        } else if (const QxConnector* connector = label.pOwnerConnector()) {
            const Found owner = described(*connector);
            found.words += owner.words;
            found.json["of"] = "connector";
            found.json["node"] = owner.json["node"];
            found.json["port"] = owner.json["port"];
        } else {
            const QxDGraph* graph = label.pOwnerGraph();
            if (graph != nullptr && graph->pNestedWithinNode() == nullptr) {
                found.words += "the graph";
                found.json["of"] = "graph";
                return found;
            }
            const Found owner =
                described(graph != nullptr ? *graph->pNestedWithinNode() : *label.pOwnerNode());
            found.words += owner.words;
            found.json["of"] = "node";
            found.json["node"] = owner.json["id"];
        }
        return found;
    }

    const Drawing& m_drawing;
    const GraphDocument& m_document;
    ShownObjects m_shown;
    std::unordered_map<const QxConnector*, const DrawnPort*> m_ports;
    std::unordered_set<const QxLabel*> m_labelsInNodes;
};

Json jsonOf(const QxRect& rect) {
    return {{"left", rect.left()},
            {"bottom", rect.bottom()},
            {"right", rect.right()},
            {"top", rect.top()}};
}

void printJson(const FindOptions& options, const std::vector<Found>& found) {
    Json json;
    json["file"] = options.input;
    json[options.at.empty() ? "region" : "at"] =
        unitsOf(options.at.empty() ? options.region : options.at);
    json["found"] = Json::array();
    for (const Found& one : found) {
        json["found"].push_back(one.json);
        json["found"].back()["bounds"] = jsonOf(one.bounds);
    }
    std::cout << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void printText(const std::vector<Found>& found) {
    for (const Found& one : found) {
        std::string words = one.words;
        std::replace(words.begin(), words.end(), '\n', ' ');
        std::cout << words << ": x " << one.bounds.left() << " to " << one.bounds.right() << ", y "
                  << one.bounds.bottom() << " to " << one.bounds.top() << '\n';
    }
    if (found.empty()) {
        std::cout << "nothing lies there\n";
    }
}

}  // namespace

std::string regionFault(std::string_view text) {
    const std::string fault = numbersFault(text, 4, "LEFT,BOTTOM,RIGHT,TOP");
    if (!fault.empty()) {
        return fault;
    }
    const std::vector<std::int32_t> sides = unitsOf(text);
    return sides[0] > sides[2]   ? "the left side of the region lies right of the right one"
           : sides[1] > sides[3] ? "the bottom of the region lies above its top (y grows upward)"
                                 : "";
}

std::string pointFault(std::string_view text) {
    return numbersFault(text, 2, "X,Y");
}

void runFind(const FindOptions& options) {
    Progress progress(options.quiet);
    GraphDocument document = openDocument(options.input, options.quiet);
    const auto drawing = arrange(document, options.arranging, progress);
    Finder finder(*drawing, document);
    const std::vector<std::int32_t> units =
        unitsOf(options.at.empty() ? options.region : options.at);
    const std::vector<Found> found =
        options.at.empty() ? finder.inRegion(QxRect(units[0], units[1], units[2], units[3]))
                           : finder.at(QxPoint(units[0], units[1]));
    if (options.json) {
        printJson(options, found);
    } else {
        printText(found);
    }
}

}  // namespace qxdraw
