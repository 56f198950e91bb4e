// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/GmlReader.h"

#include <charconv>
#include <cstdint>
#include <string>
#include <unordered_map>

#include "import/GmlParser.h"
#include "import/ImportError.h"
#include "import/Numbers.h"
#include "import/Shapes.h"

namespace qxdraw {

namespace {

class GmlGraphReader {
public:
    explicit GmlGraphReader(const GmlEntry& graph) : m_graph(graph) { m_document.format = "GML"; }

    GraphDocument read() {
        if (const GmlEntry* directed = m_graph.find("directed")) {
            m_document.directed = integer(*directed) != 0;
        }
        if (const GmlEntry* label = m_graph.find("label")) {
            m_document.graphs.front().label = label->text;
        }
        for (const GmlEntry& entry : m_graph.members) {
            if (entry.key == "node") {
                readNode(entry);
            }
        }
        for (const GmlEntry& entry : m_graph.members) {
            if (entry.key == "edge") {
                readEdge(entry);
            }
        }
        return std::move(m_document);
    }

private:
    static std::int64_t integer(const GmlEntry& entry) {
        std::int64_t value = 0;
        const char* const end = entry.text.data() + entry.text.size();
        const auto [stop, error] = std::from_chars(entry.text.data(), end, value);
        if (entry.kind != GmlEntry::Kind::Number || stop != end || error != std::errc{}) {
            throw ImportError("'" + entry.key + "' is not a whole number within range", entry.line);
        }
        return value;
    }

    static double coordinate(const GmlEntry& list, std::string_view key) {
        const GmlEntry* entry = list.find(key);
        return entry == nullptr ? 0 : readCoordinate(entry->text, key, entry->line);
    }

    static double extent(const GmlEntry& list, std::string_view key) {
        const GmlEntry* entry = list.find(key);
        return entry == nullptr ? 0 : readExtent(entry->text, key, entry->line);
    }

    static DocumentPoint point(const GmlEntry& list) {
        return {coordinate(list, "x"), -coordinate(list, "y")};
    }

    static std::vector<DocumentPoint> linePoints(const GmlEntry& graphics) {
        std::vector<DocumentPoint> points;
        const GmlEntry* line = graphics.find("Line");
        if (line == nullptr) {
            line = graphics.find("line");
        }
        if (line != nullptr) {
            for (const GmlEntry& entry : line->members) {
                if (entry.key == "point") {
                    points.push_back(point(entry));
                }
            }
        }
        return points;
    }

    void readNode(const GmlEntry& entry) {
        const GmlEntry* id = entry.find("id");
        if (id == nullptr) {
            throw ImportError("a node without id", entry.line);
        }
        const int index = static_cast<int>(m_document.nodes.size());
        if (!m_indexOfId.emplace(integer(*id), index).second) {
            throw ImportError("node id " + id->text + " is used twice", id->line);
        }
        DocumentNode& node = m_document.nodes.emplace_back();
        node.id = id->text;
        node.line = entry.line;
        const GmlEntry* label = entry.find("label");
        node.label = label == nullptr ? id->text : label->text;
        if (const GmlEntry* graphics = entry.find("graphics")) {
            readNodeGraphics(node, *graphics);
        }
    }

    static void readNodeGraphics(DocumentNode& node, const GmlEntry& graphics) {
        if (graphics.find("x") != nullptr && graphics.find("y") != nullptr) {
            node.center = point(graphics);
        }
        node.width = extent(graphics, "w");
        node.height = extent(graphics, "h");
        if (const GmlEntry* type = graphics.find("type")) {
            node.shape = type->text == "polygon" ? polygonFromCorners(linePoints(graphics))
                                                 : shapeFromName(type->text);
        }
    }

    int nodeIndex(const GmlEntry& edge, std::string_view end) const {
        const GmlEntry* id = edge.find(end);
        if (id == nullptr) {
            throw ImportError("an edge without " + std::string(end), edge.line);
        }
        const auto found = m_indexOfId.find(integer(*id));
        if (found == m_indexOfId.end()) {
            throw ImportError("an edge names node " + id->text + ", which does not exist",
                              id->line);
        }
        return found->second;
    }

    void readEdge(const GmlEntry& entry) {
        DocumentEdge edge;
        edge.source = nodeIndex(entry, "source");
        edge.target = nodeIndex(entry, "target");
        edge.arrowAtTarget = m_document.directed;
        if (const GmlEntry* label = entry.find("label")) {
            edge.label = label->text;
        }
        if (const GmlEntry* graphics = entry.find("graphics")) {
            readEdgeGraphics(edge, *graphics);
        }
        m_document.edges.push_back(std::move(edge));
    }

    static void readEdgeGraphics(DocumentEdge& edge, const GmlEntry& graphics) {
        const std::vector<DocumentPoint> points = linePoints(graphics);
        if (points.size() > 2) {  // the first and the last are the ends
            edge.bends.assign(points.begin() + 1, points.end() - 1);
        }
        if (const GmlEntry* arrow = graphics.find("arrow")) {
            edge.arrowAtSource = arrow->text == "first" || arrow->text == "both";
            edge.arrowAtTarget = arrow->text == "last" || arrow->text == "both";
        }
    }

    const GmlEntry& m_graph;
    GraphDocument m_document;
    std::unordered_map<std::int64_t, int> m_indexOfId;
};

}  // namespace

GraphDocument readGml(std::string_view text) {
    const GmlEntry top = parseGml(text);
    const GmlEntry* graph = nullptr;
    int furtherLine = 0;
    for (const GmlEntry& entry : top.members) {
        if (entry.key == "graph" && entry.kind == GmlEntry::Kind::List) {
            if (graph == nullptr) {
                graph = &entry;
            } else if (furtherLine == 0) {
                furtherLine = entry.line;
            }
        }
    }
    if (graph == nullptr) {
        throw ImportError("there is no graph in it");
    }
    GraphDocument document = GmlGraphReader(*graph).read();
    if (furtherLine != 0) {
        document.warnings.push_back({"only the first graph is read", furtherLine});
    }
    return document;
}

}  // namespace qxdraw
