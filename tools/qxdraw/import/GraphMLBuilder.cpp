// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/GraphMLBuilder.h"

#include <algorithm>

#include "import/ImportError.h"
#include "import/ImportLimits.h"
#include "import/Numbers.h"
#include "import/Shapes.h"
#include "import/SourceText.h"

namespace qxdraw {

namespace {

/// Several data may name an object; the highest rank wins, the first among equals.
constexpr int NameRank = 1;
constexpr int LabelRank = 2;
constexpr int ElementRank = 3;

const std::string* find(const GraphMLAttributes& attributes, std::string_view name) {
    for (const auto& [key, value] : attributes) {
        if (key == name) {
            return &value;
        }
    }
    return nullptr;
}

std::string valueOr(const GraphMLAttributes& attributes, std::string_view name,
                    const std::string& otherwise) {
    const std::string* value = find(attributes, name);
    return value == nullptr ? otherwise : *value;
}

const std::string& required(const GraphMLAttributes& attributes, const char* name,
                            const char* element, int line) {
    const std::string* value = find(attributes, name);
    if (value == nullptr) {
        throw ImportError(std::string(element) + " without " + name, line);
    }
    return *value;
}

int labelRank(const std::string& attribute) {
    return attribute == "label" ? LabelRank : attribute == "name" ? NameRank : 0;
}

}  // namespace

GraphMLBuilder::GraphMLBuilder() {
    m_document.format = "GraphML";
}

void GraphMLBuilder::startElement(const std::string& name, const GraphMLAttributes& attributes,
                                  int line) {
    // Every nested graph takes a node element too, and data adds a few levels of its own.
    constexpr std::size_t DeepestElement = 2 * ImportLimits::NestingDepth + 100;
    if (m_open.size() == DeepestElement) {
        throw ImportError("elements nested too deep", line);
    }
    const Context context = contextOf(name, line);
    m_open.push_back({context, {}});
    switch (context) {
        case Context::Graph:
            return openGraph(attributes, line);
        case Context::Node:
            return openNode(attributes, line);
        case Context::Edge:
            return openEdge(attributes, line);
        case Context::Port:
            return openPort(attributes, line);
        case Context::Key:
            return openKey(attributes, line);
        case Context::Data:
            m_open.back().key = required(attributes, "key", "data", line);
            return;
        case Context::Path:
        case Context::Extension:
            return readExtension(name, attributes, line);
        default:
            return;
    }
}

GraphMLBuilder::Context GraphMLBuilder::contextOf(const std::string& name, int line) {
    if (m_open.empty()) {
        if (name == "qxdraw") {
            throw ImportError("a drawing document, which only `check` and `convert` read", line);
        }
        if (name != "graphml") {
            throw ImportError("the document element is '" + name + "', not 'graphml'", line);
        }
        return Context::Root;
    }
    switch (m_open.back().context) {
        case Context::Root:
            if (name == "graph" && m_hasGraph) {
                warnOnce("only the first graph is read", line);
                return Context::Ignored;
            }
            return name == "graph" ? Context::Graph
                   : name == "key" ? Context::Key
                                   : Context::Ignored;
        case Context::Key:
            return name == "default" ? Context::KeyDefault : Context::Ignored;
        case Context::Graph:
            return contextInGraph(name, line);
        case Context::Node:
            return name == "graph"  ? Context::Graph
                   : name == "port" ? Context::Port
                   : name == "data" ? Context::Data
                                    : Context::Ignored;
        case Context::Port:
            return name == "port"   ? Context::Port
                   : name == "data" ? Context::Data
                                    : Context::Ignored;
        case Context::Edge:
            return name == "data" ? Context::Data : Context::Ignored;
        case Context::Data:
        case Context::Path:
        case Context::Extension:
            return name == "NodeLabel" || name == "EdgeLabel" ? Context::Label
                   : name == "Path"                           ? Context::Path
                                                              : Context::Extension;
        default:
            return Context::Ignored;
    }
}

GraphMLBuilder::Context GraphMLBuilder::contextInGraph(const std::string& name, int line) {
    if (name == "hyperedge") {
        warnOnce("hyperedges are not read", line);
    }
    return name == "node" ? Context::Node : name == "edge" ? Context::Edge : Context::Ignored;
}

void GraphMLBuilder::openGraph(const GraphMLAttributes& attributes, int line) {
    const bool directed = valueOr(attributes, "edgedefault", "directed") != "undirected";
    if (!m_hasGraph) {
        m_hasGraph = true;
        m_document.directed = directed;
        m_openGraphs.push_back(0);
    } else {
        if (m_openGraphs.size() > ImportLimits::NestingDepth) {
            throw ImportError("more than " + std::to_string(ImportLimits::NestingDepth) +
                                  " graphs inside each other",
                              line);
        }
        m_openGraphs.push_back(graphIn(m_openNodes.back(), valueOr(attributes, "id", ""), line));
    }
    m_directed.push_back(directed);
}

/// The graph nested in a node; a node that holds several shows them as one.
int GraphMLBuilder::graphIn(int node, const std::string& id, int line) {
    NodeState& state = m_nodeStates[static_cast<std::size_t>(node)];
    if (state.nested < 0) {
        state.nested = static_cast<int>(m_document.graphs.size());
        m_document.graphs.push_back({"", m_openGraphs.back(), node, id, {}});
    } else {
        warnOnce("node '" + m_document.nodes[static_cast<std::size_t>(node)].id +
                     "' holds several graphs; they are shown as one",
                 line);
    }
    return state.nested;
}

void GraphMLBuilder::openNode(const GraphMLAttributes& attributes, int line) {
    DocumentNode node;
    node.id = required(attributes, "id", "a node", line);
    node.line = line;
    node.graph = m_openGraphs.back();
    const int index = static_cast<int>(m_document.nodes.size());
    if (!m_indexOfId.emplace(node.id, index).second) {
        throw ImportError("node id '" + node.id + "' is used twice", line);
    }
    m_document.nodes.push_back(std::move(node));
    m_nodeStates.emplace_back();
    m_openNodes.push_back(index);
}

void GraphMLBuilder::openEdge(const GraphMLAttributes& attributes, int line) {
    EdgeState& state = m_edgeStates.emplace_back();
    state.source = required(attributes, "source", "an edge", line);
    state.target = required(attributes, "target", "an edge", line);
    state.sourcePort = valueOr(attributes, "sourceport", "");
    state.targetPort = valueOr(attributes, "targetport", "");
    state.line = line;
    DocumentEdge& edge = m_document.edges.emplace_back();
    const std::string directed = valueOr(attributes, "directed", "");
    edge.arrowAtTarget = directed.empty() ? m_directed.back() : directed == "true";
}

void GraphMLBuilder::openPort(const GraphMLAttributes& attributes, int line) {
    ++m_document.ports;
    const std::string& name = required(attributes, "name", "a port", line);
    const int index = static_cast<int>(currentNode().ports.size());
    if (!currentNodeState().ports.emplace(name, index).second) {
        throw ImportError("port '" + name + "' stands twice at one node", line);
    }
    DocumentPort& port = currentNode().ports.emplace_back();
    port.name = port.label = name;
    port.isMarked = true;
    currentNodeState().portRanks.push_back(0);
    m_openPorts.push_back(index);
}

void GraphMLBuilder::openKey(const GraphMLAttributes& attributes, int line) {
    const std::string& id = required(attributes, "id", "a key", line);
    Key key;
    key.owner = valueOr(attributes, "for", "all");
    key.attribute = toLowerAscii(valueOr(attributes, "attr.name", ""));
    if (!m_keys.emplace(id, std::move(key)).second) {
        throw ImportError("key id '" + id + "' is used twice", line);
    }
    m_keyOrder.push_back(id);
    m_open.back().key = id;
}

void GraphMLBuilder::readExtension(const std::string& name, const GraphMLAttributes& attributes,
                                   int line) {
    if (owner() == Context::Port) {
        return;
    }
    if (owner() == Context::Node) {
        if (name == "Geometry") {
            readGeometry(attributes, line);
        } else if (name == "Shape") {
            currentNode().shape = shapeFromName(valueOr(attributes, "type", ""));
        }
        return;
    }
    DocumentEdge& edge = m_document.edges.back();
    if (name == "Point" && m_open[m_open.size() - 2].context == Context::Path) {
        edge.bends.push_back(
            {readCoordinate(required(attributes, "x", "a point", line), "x", line),
             -readCoordinate(required(attributes, "y", "a point", line), "y", line)});
    } else if (name == "Arrows") {
        edge.arrowAtSource = valueOr(attributes, "source", "none") != "none";
        edge.arrowAtTarget = valueOr(attributes, "target", "none") != "none";
    }
}

/// The first geometry counts: a node that can be shown in two ways tells the shown one first.
void GraphMLBuilder::readGeometry(const GraphMLAttributes& attributes, int line) {
    DocumentNode& node = currentNode();
    if (currentNodeState().absolute) {
        return;
    }
    const auto number = [&](const char* name, auto read) {
        const std::string* value = find(attributes, name);
        return value == nullptr ? 0 : read(*value, name, line);
    };
    node.width = number("width", readExtent);
    node.height = number("height", readExtent);
    if (find(attributes, "x") != nullptr && find(attributes, "y") != nullptr) {
        node.center = {number("x", readCoordinate) + node.width / 2,
                       -(number("y", readCoordinate) + node.height / 2)};
    }
    currentNodeState().absolute = true;
}

void GraphMLBuilder::endElement(const std::string& text, int line) {
    const Element element = std::move(m_open.back());
    m_open.pop_back();
    switch (element.context) {
        case Context::KeyDefault: {
            Key& key = m_keys.at(m_open.back().key);
            key.hasDefault = true;
            key.defaultText = text;
            return;
        }
        case Context::Graph:
            m_openGraphs.pop_back();
            m_directed.pop_back();
            return;
        case Context::Node:
            closeNode();
            m_openNodes.pop_back();
            return;
        case Context::Port:
            m_openPorts.pop_back();
            return;
        case Context::Edge:
            return closeEdge();
        case Context::Data:
            return readData(element.key, text, line);
        case Context::Label:
            return setLabel(text, ElementRank);
        default:
            return;
    }
}

void GraphMLBuilder::readData(const std::string& keyId, const std::string& text, int line) {
    const auto found = m_keys.find(keyId);
    if (found == m_keys.end()) {
        return;
    }
    const std::string& attribute = found->second.attribute;
    if (const int rank = labelRank(attribute); rank > 0) {
        setLabel(text, rank);
    } else if (owner() == Context::Node) {
        readNodeData(attribute, text, line);
    } else if (owner() == Context::Port) {
        readPortData(attribute, text, line);
    }
}

/// Ports are placed by thousandths of the extent of the node, from its center.
void GraphMLBuilder::readPortData(const std::string& attribute, const std::string& text, int line) {
    constexpr double Border = 500;
    auto& place = currentNode().ports[static_cast<std::size_t>(m_openPorts.back())].place;
    if (attribute == "per-mil-x" || attribute == "per-mil-y") {
        const double value = std::clamp(readCoordinate(text, attribute, line) / Border, -1.0, 1.0);
        place = place.value_or(DocumentPoint{});
        (attribute.ends_with('x') ? place->x : place->y) =
            attribute.ends_with('x') ? value : -value;
    }
}

void GraphMLBuilder::readNodeData(const std::string& attribute, const std::string& text, int line) {
    NodeState& state = currentNodeState();
    if (attribute == "x") {
        state.x = readCoordinate(text, "x", line);
        state.hasX = true;
    } else if (attribute == "y") {
        state.y = -readCoordinate(text, "y", line);
        state.hasY = true;
    } else if (attribute == "width") {
        currentNode().width = readExtent(text, "width", line);
    } else if (attribute == "height") {
        currentNode().height = readExtent(text, "height", line);
    }
}

void GraphMLBuilder::setLabel(const std::string& text, int rank) {
    const auto set = [&](int& current, std::string& label) {
        if (rank > current) {
            current = rank;
            label = text;
        }
    };
    switch (owner()) {
        case Context::Node:
            return set(currentNodeState().labelRank, currentNode().label);
        case Context::Port: {
            const auto port = static_cast<std::size_t>(m_openPorts.back());
            return set(currentNodeState().portRanks[port], currentNode().ports[port].label);
        }
        case Context::Edge:
            return set(m_edgeStates.back().labelRank, m_document.edges.back().label);
        default:
            return;
    }
}

void GraphMLBuilder::closeNode() {
    DocumentNode& node = currentNode();
    const NodeState& state = currentNodeState();
    if (state.labelRank == 0) {
        const Key* key = defaultLabel("node");
        node.label = key == nullptr ? node.id : key->defaultText;
    }
    if (state.hasX && state.hasY && !state.absolute) {
        node.center = DocumentPoint{state.x, state.y};
    }
}

void GraphMLBuilder::closeEdge() {
    if (m_edgeStates.back().labelRank == 0) {
        if (const Key* key = defaultLabel("edge")) {
            m_document.edges.back().label = key->defaultText;
        }
    }
}

/// Node, port or edge: whatever the data that is being read belongs to.
GraphMLBuilder::Context GraphMLBuilder::owner() const {
    for (auto element = m_open.rbegin(); element != m_open.rend(); ++element) {
        if (element->context == Context::Node || element->context == Context::Port ||
            element->context == Context::Edge) {
            return element->context;
        }
    }
    return Context::Ignored;
}

DocumentNode& GraphMLBuilder::currentNode() {
    return m_document.nodes[static_cast<std::size_t>(m_openNodes.back())];
}

GraphMLBuilder::NodeState& GraphMLBuilder::currentNodeState() {
    return m_nodeStates[static_cast<std::size_t>(m_openNodes.back())];
}

const GraphMLBuilder::Key* GraphMLBuilder::defaultLabel(std::string_view owner) const {
    for (const std::string& id : m_keyOrder) {
        const Key& key = m_keys.at(id);
        if (key.hasDefault && (key.owner == owner || key.owner == "all") &&
            labelRank(key.attribute) > 0) {
            return &key;
        }
    }
    return nullptr;
}

int GraphMLBuilder::resolvedNode(const std::string& id, int line) const {
    const auto found = m_indexOfId.find(id);
    if (found == m_indexOfId.end()) {
        throw ImportError("an edge names node '" + id + "', which does not exist", line);
    }
    return found->second;
}

int GraphMLBuilder::resolvedPort(int node, const std::string& port, int line) const {
    if (port.empty()) {
        return -1;
    }
    const auto& ports = m_nodeStates[static_cast<std::size_t>(node)].ports;
    const auto found = ports.find(port);
    if (found == ports.end()) {
        const std::string& id = m_document.nodes[static_cast<std::size_t>(node)].id;
        throw ImportError("an edge names port '" + port + "', which node '" + id + "' lacks", line);
    }
    return found->second;
}

/// Containers stand before what they contain, so their own centers are final already.
void GraphMLBuilder::placeNestedNodes() {
    for (std::size_t i = 0; i < m_document.nodes.size(); ++i) {
        DocumentNode& node = m_document.nodes[i];
        const int around = m_document.graphs[static_cast<std::size_t>(node.graph)].node;
        if (around < 0 || !node.center || m_nodeStates[i].absolute) {
            continue;
        }
        if (const auto& center = m_document.nodes[static_cast<std::size_t>(around)].center) {
            node.center->x = checkedCoordinate(node.center->x + center->x, "x", node.line);
            node.center->y = checkedCoordinate(node.center->y + center->y, "y", node.line);
        }
    }
}

void GraphMLBuilder::warnOnce(const std::string& text, int line) {
    const auto same = [&](const DocumentWarning& warning) { return warning.text == text; };
    if (std::none_of(m_document.warnings.begin(), m_document.warnings.end(), same)) {
        m_document.warnings.push_back({text, line});
    }
}

GraphDocument GraphMLBuilder::finish() {
    if (!m_hasGraph) {
        throw ImportError("there is no graph in it");
    }
    for (std::size_t i = 0; i < m_document.edges.size(); ++i) {
        const EdgeState& state = m_edgeStates[i];
        DocumentEdge& edge = m_document.edges[i];
        edge.source = resolvedNode(state.source, state.line);
        edge.target = resolvedNode(state.target, state.line);
        edge.sourcePort = resolvedPort(edge.source, state.sourcePort, state.line);
        edge.targetPort = resolvedPort(edge.target, state.targetPort, state.line);
    }
    placeNestedNodes();
    return std::move(m_document);
}

}  // namespace qxdraw
