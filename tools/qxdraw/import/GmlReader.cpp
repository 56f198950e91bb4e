// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/GmlReader.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>

#include "import/GmlGroups.h"
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
        m_groups.nest(m_indexOfId);
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
        if (const GmlEntry* gid = entry.find("gid")) {
            m_groups.addMember(index, integer(*gid), gid->line);
        }
        const GmlEntry* isGroup = entry.find("isGroup");
        if (isGroup != nullptr && integer(*isGroup) != 0) {
            m_groups.addGroup(index);
        }
        if (const GmlEntry* graphics = entry.find("graphics")) {
            readNodeGraphics(node, *graphics);
            readPorts(index, *graphics);
        }
        readPorts(index, entry);
    }

    /// The value as a part of the half extent of a node.
    static double part(const GmlEntry& list, std::string_view key) {
        return std::clamp(coordinate(list, key), -1.0, 1.0);
    }

    void readPorts(int node, const GmlEntry& around) {
        for (const GmlEntry& entry : around.members) {
            if (entry.key != "port" || entry.kind != GmlEntry::Kind::List) {
                continue;
            }
            const GmlEntry* name = entry.find("name");
            if (name == nullptr) {
                throw ImportError("a port without name", entry.line);
            }
            DocumentPort port;
            port.name = name->text;
            const GmlEntry* label = entry.find("label");
            port.label = label == nullptr ? name->text : label->text;
            port.isMarked = true;
            if (entry.find("x") != nullptr || entry.find("y") != nullptr) {
                port.place = {part(entry, "x"), -part(entry, "y")};
            }
            if (!m_indexOfPort.emplace(std::pair(node, port.name), portCount(node)).second) {
                throw ImportError("port '" + port.name + "' stands twice at one node", name->line);
            }
            addPort(node, std::move(port));
            ++m_document.ports;
        }
    }

    int portCount(int node) const {
        return static_cast<int>(m_document.nodes[static_cast<std::size_t>(node)].ports.size());
    }

    int addPort(int node, DocumentPort port) {
        m_document.nodes[static_cast<std::size_t>(node)].ports.push_back(std::move(port));
        return portCount(node) - 1;
    }

    /// The port that an edge names, or the place at the node where it says it ends.
    int readEnd(const GmlEntry& edge, int node, bool atSource) {
        const GmlEntry* name = edge.find(atSource ? "sourcePort" : "targetPort");
        name = name != nullptr ? name : edge.find(atSource ? "sourceport" : "targetport");
        if (name != nullptr) {
            const auto found = m_indexOfPort.find({node, name->text});
            if (found == m_indexOfPort.end()) {
                throw ImportError("an edge names port '" + name->text + "', which its node lacks",
                                  name->line);
            }
            return found->second;
        }
        const GmlEntry* anchor = edge.find("edgeAnchor");
        const char* const x = atSource ? "xSource" : "xTarget";
        const char* const y = atSource ? "ySource" : "yTarget";
        if (anchor == nullptr || (anchor->find(x) == nullptr && anchor->find(y) == nullptr)) {
            return -1;
        }
        DocumentPort port;
        port.place = {part(*anchor, x), -part(*anchor, y)};
        return addPort(node, std::move(port));
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
        edge.sourcePort = readEnd(entry, edge.source, true);
        edge.targetPort = readEnd(entry, edge.target, false);
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
    GmlGroups m_groups{m_document};
    std::unordered_map<std::int64_t, int> m_indexOfId;
    std::map<std::pair<int, std::string>, int> m_indexOfPort;  ///< by node and name
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
