// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/DotReader.h"

#include <graphviz/cgraph.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "import/DotClusters.h"
#include "import/DotLabels.h"
#include "import/DotParsing.h"
#include "import/DotPorts.h"
#include "import/DotScanner.h"
#include "import/DotSplines.h"
#include "import/HtmlLabels.h"
#include "import/ImportError.h"
#include "import/Numbers.h"
#include "import/RecordLabels.h"
#include "import/Shapes.h"
#include "import/SourceText.h"

namespace qxdraw {

namespace {

bool saysLatin1(Agraph_t* graph) {
    const char* charset = agget(graph, const_cast<char*>("charset"));
    if (charset == nullptr) {
        return false;
    }
    const std::string name = toLowerAscii(charset);
    return name == "latin-1" || name == "latin1" || name == "l1" || name == "iso-8859-1" ||
           name == "iso_8859-1" || name == "iso8859-1" || name == "iso-ir-100";
}

bool isAscii(std::string_view text) {
    return std::none_of(text.begin(), text.end(),
                        [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

/// Tells objects of one graph apart: nodes among nodes, edges among edges.
std::uint64_t sequenceOf(void* object) {
    return AGSEQ(object);
}

/// Attributes of one kind of object, by name.
class Attributes {
public:
    Attributes(Agraph_t* graph, int kind) : m_graph(graph), m_kind(kind) {}

    /// Empty when the attribute is not set.
    std::string_view get(void* object, const char* name) const {
        const char* value = raw(object, name);
        return value == nullptr ? std::string_view{} : std::string_view(value);
    }

    /// Null when the graph has no such attribute.
    char* raw(void* object, const char* name) const {
        Agsym_t* symbol = agattr(m_graph, m_kind, const_cast<char*>(name), nullptr);
        return symbol == nullptr ? nullptr : agxget(object, symbol);
    }

private:
    Agraph_t* m_graph;
    int m_kind;
};

class DotGraphReader {
public:
    DotGraphReader(Agraph_t* graph, std::string_view text)
        : m_graph(graph),
          m_text(text),
          m_nodeAttributes(graph, AGNODE),
          m_edgeAttributes(graph, AGEDGE) {}

    GraphDocument read() {
        m_document.format = "DOT";
        m_document.directed = agisdirected(m_graph) != 0;
        m_document.graphs.front().label = graphLabel(m_graph);
        const char* rankdir = agget(m_graph, const_cast<char*>("rankdir"));
        m_stacksRecords = rankdir != nullptr &&
                          (rankdir == std::string_view("LR") || rankdir == std::string_view("RL"));
        for (Agnode_t* node = agfstnode(m_graph); node != nullptr;
             node = agnxtnode(m_graph, node)) {
            readNode(node);
        }
        readEdges();
        readClusters();
        return std::move(m_document);
    }

private:
    /// Line of the first `name=value` in the text, for messages; 0 when there is none.
    int lineOfAttribute(std::string_view name, std::string_view value) const {
        for (std::size_t at = m_text.find(value); at != std::string_view::npos;
             at = m_text.find(value, at + 1)) {
            const std::size_t last =
                at == 0 ? std::string_view::npos : m_text.find_last_not_of("=\" \t\r\n", at - 1);
            if (last != std::string_view::npos && m_text.substr(0, last + 1).ends_with(name)) {
                return lineOfOffset(m_text, at);
            }
        }
        return 0;
    }

    /// Runs `read`; an error from it gets the line of the attribute. The line is looked up only
    /// then, because that means a walk over the text.
    template <class Read>
    auto located(std::string_view name, std::string_view value, Read read) const {
        try {
            return read();
        } catch (const ImportError& error) {
            throw ImportError(error.what(), lineOfAttribute(name, value));
        }
    }

    std::string text(char* value, const DotLabelNames& names, bool record = false) const {
        if (value == nullptr) {
            return {};
        }
        if (aghtmlstr(value) != 0) {
            return plainHtmlLabel(value);
        }
        return plainDotLabel(record ? flattenRecordLabel(value) : value, names);
    }

    std::string graphLabel(Agraph_t* graph) const {
        DotLabelNames names;
        names.graph = agnameof(graph);
        return text(agget(graph, const_cast<char*>("label")), names);
    }

    void readNode(Agnode_t* source) {
        m_indexOfNode.emplace(sequenceOf(source), static_cast<int>(m_document.nodes.size()));
        DocumentNode& node = m_document.nodes.emplace_back();
        node.id = agnameof(source);
        readNodeShape(source, node);
        readNodePlace(source, node);
        DotLabelNames names;
        names.graph = agnameof(m_graph);
        names.object = node.id;
        node.outerLabel = text(m_nodeAttributes.raw(source, "xlabel"), names);
        const std::string_view shape = m_nodeAttributes.get(source, "shape");
        char* label = m_nodeAttributes.raw(source, "label");
        if (shape == "point") {
            return;
        }
        const bool isRecord = shape == "record" || shape == "Mrecord";
        node.label = text(label, names, isRecord);
        readFields(label, names, isRecord, node);
    }

    void readFields(char* label, const DotLabelNames& names, bool isRecord, DocumentNode& node) {
        std::optional<DocumentField> fields;
        if (label != nullptr && aghtmlstr(label) != 0) {
            fields = parseHtmlTable(label);
        } else if (label != nullptr && isRecord) {
            fields = parseRecordLabel(label, m_stacksRecords);
            if (fields) {
                replaceEscapes(*fields, names);
            } else {
                m_document.warnings.push_back({"the label of node '" + node.id +
                                               "' is no record; it is shown as plain text"});
            }
        }
        if (fields) {
            m_ports.addFields(static_cast<int>(m_document.nodes.size()) - 1, *fields);
            node.fields = std::make_shared<const DocumentField>(std::move(*fields));
        }
    }

    static void replaceEscapes(DocumentField& field, const DotLabelNames& names) {
        field.text = plainDotLabel(field.text, names);
        for (DocumentField& part : field.parts) {
            replaceEscapes(part, names);
        }
    }

    void readNodeShape(Agnode_t* source, DocumentNode& node) const {
        const std::string_view name = m_nodeAttributes.get(source, "shape");
        if (name == "polygon") {
            const double sides = parseNumber(m_nodeAttributes.get(source, "sides")).value_or(4);
            node.shape = sides == 4
                             ? DocumentShape{}
                             : regularPolygon(static_cast<int>(std::clamp(sides, 3.0, 100.0)));
        } else {
            node.shape = shapeFromName(name.empty() ? "ellipse" : name);
        }
        if (m_nodeAttributes.get(source, "regular") == "true") {
            node.shape.square = true;
        }
        if (name == "point") {
            node.width = node.height = 0.05 * DotInch;
        }
    }

    void readNodePlace(Agnode_t* source, DocumentNode& node) const {
        node.width = inches(source, "width", node.width);
        node.height = inches(source, "height", node.height);
        const std::string_view pos = m_nodeAttributes.get(source, "pos");
        if (!pos.empty()) {
            node.center = located("pos", pos, [&] { return position(pos, node.id); });
        }
        const std::string_view fixed = m_nodeAttributes.get(source, "fixedsize");
        node.growsWithLabel = !node.center && (fixed.empty() || fixed == "false");
    }

    static DocumentPoint position(std::string_view pos, const std::string& id) {
        const auto numbers = parseNumbers(pos.ends_with('!') ? pos.substr(0, pos.size() - 1) : pos);
        if (!numbers || numbers->size() < 2) {
            throw ImportError("the pos of node '" + id + "' is no position");
        }
        return {checkedCoordinate((*numbers)[0] * DotPoint, "pos", 0),
                checkedCoordinate((*numbers)[1] * DotPoint, "pos", 0)};
    }

    double inches(Agnode_t* node, const char* name, double otherwise) const {
        const std::string_view value = m_nodeAttributes.get(node, name);
        if (value.empty()) {
            return otherwise;
        }
        return located(name, value, [&] {
            return checkedExtent(readExtent(value, name, 0) * DotInch, name, 0);
        });
    }

    void readEdges() {
        for (Agnode_t* node = agfstnode(m_graph); node != nullptr;
             node = agnxtnode(m_graph, node)) {
            for (Agedge_t* edge = agfstout(m_graph, node); edge != nullptr;
                 edge = agnxtout(m_graph, edge)) {
                m_edges.push_back(edge);
            }
        }
        std::sort(m_edges.begin(), m_edges.end(),
                  [](Agedge_t* a, Agedge_t* b) { return sequenceOf(a) < sequenceOf(b); });
        for (Agedge_t* edge : m_edges) {
            readEdge(edge);
        }
    }

    void readEdge(Agedge_t* source) {
        DocumentEdge& edge = m_document.edges.emplace_back();
        edge.source = m_indexOfNode.at(sequenceOf(agtail(source)));
        edge.target = m_indexOfNode.at(sequenceOf(aghead(source)));
        const std::string& tail = m_document.nodes[static_cast<std::size_t>(edge.source)].id;
        const std::string& head = m_document.nodes[static_cast<std::size_t>(edge.target)].id;
        const std::string name = tail + (m_document.directed ? "->" : "--") + head;
        readEdgeLabels(source, {agnameof(m_graph), name, tail, head}, edge);
        edge.sourcePort = m_ports.portOf(edge.source, m_edgeAttributes.get(source, "tailport"));
        edge.targetPort = m_ports.portOf(edge.target, m_edgeAttributes.get(source, "headport"));
        readArrows(source, edge);
        const std::string_view pos = m_edgeAttributes.get(source, "pos");
        if (!pos.empty()) {
            edge.bends = located("pos", pos, [&] { return bends(pos, name); });
        }
    }

    void readEdgeLabels(Agedge_t* source, const DotLabelNames& names, DocumentEdge& edge) const {
        using Place = DocumentEdgeLabel::Place;
        edge.label = text(m_edgeAttributes.raw(source, "label"), names);
        for (const auto& [name, place] :
             {std::pair("taillabel", Place::Source), std::pair("headlabel", Place::Target),
              std::pair("xlabel", Place::Anywhere)}) {
            std::string label = text(m_edgeAttributes.raw(source, name), names);
            if (!label.empty()) {
                edge.moreLabels.push_back({place, std::move(label)});
            }
        }
    }

    void readArrows(Agedge_t* source, DocumentEdge& edge) const {
        const std::string_view dir = m_edgeAttributes.get(source, "dir");
        edge.arrowAtTarget = dir.empty() ? m_document.directed : dir == "forward" || dir == "both";
        edge.arrowAtSource = dir == "back" || dir == "both";
        if (m_edgeAttributes.get(source, "arrowhead") == "none") {
            edge.arrowAtTarget = false;
        }
        if (m_edgeAttributes.get(source, "arrowtail") == "none") {
            edge.arrowAtSource = false;
        }
    }

    static std::vector<DocumentPoint> bends(std::string_view pos, const std::string& name) {
        auto bends = bendsOfSpline(pos);
        if (!bends) {
            throw ImportError("the pos of edge " + name + " is no spline");
        }
        for (const DocumentPoint& bend : *bends) {
            checkedCoordinate(bend.x, "pos", 0);
            checkedCoordinate(bend.y, "pos", 0);
        }
        return std::move(*bends);
    }

    void readClusters() {
        DotClusters clusters(
            m_document, [this](Agnode_t* node) { return m_indexOfNode.at(sequenceOf(node)); },
            [this](Agraph_t* graph) { return graphLabel(graph); });
        clusters.read(m_graph);
        for (std::size_t i = 0; i < m_edges.size(); ++i) {
            DocumentEdge& edge = m_document.edges[i];
            clusters.endAtCluster(edge, true, m_edgeAttributes.get(m_edges[i], "ltail"));
            clusters.endAtCluster(edge, false, m_edgeAttributes.get(m_edges[i], "lhead"));
        }
        clusters.addWarnings();
    }

    Agraph_t* m_graph;
    std::string_view m_text;
    Attributes m_nodeAttributes;
    Attributes m_edgeAttributes;
    GraphDocument m_document;
    DotPorts m_ports{m_document};
    bool m_stacksRecords = false;  ///< the outermost fields lie under each other
    std::unordered_map<std::uint64_t, int> m_indexOfNode;
    std::vector<Agedge_t*> m_edges;  ///< in document order
};

}  // namespace

GraphDocument readDot(std::string_view source) {
    std::string text(withoutByteOrderMark(source));
    const DotScan scan = scanDot(text);
    text.resize(scan.graphEnd);  // the parser would keep what follows for its next text
    if (text.find('\0') != std::string::npos) {
        requireUtf8Text(text);
    }
    std::vector<DocumentWarning> warnings;
    ParsedDot graph = parseDot(text, warnings);
    if (!isAscii(text) && saysLatin1(graph.get())) {
        text = latin1ToUtf8(text);
        warnings.clear();
        graph = parseDot(text, warnings);
    }
    requireUtf8Text(text);
    GraphDocument document = DotGraphReader(graph.get(), text).read();
    document.warnings.insert(document.warnings.begin(), warnings.begin(), warnings.end());
    if (scan.lineAfterGraph != 0) {
        document.warnings.push_back({"only the first graph is read", scan.lineAfterGraph});
    }
    return document;
}

}  // namespace qxdraw
