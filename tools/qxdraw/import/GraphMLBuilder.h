// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

/// The attributes of one element, UTF-8.
using GraphMLAttributes = std::vector<std::pair<std::string, std::string>>;

/// Makes a document of the elements of a GraphML text, told one by one in document order. Every
/// call may throw ImportError. It knows nothing of the XML parser.
class GraphMLBuilder {
public:
    GraphMLBuilder();

    /// `line` is where the tag stands.
    void startElement(const std::string& name, const GraphMLAttributes& attributes, int line);
    /// `text` holds the characters since the last tag.
    void endElement(const std::string& text, int line);

    /// Resolves what edges name. Call once, after the last element.
    GraphDocument finish();

private:
    /// What an element means where it stands.
    enum class Context {
        Root,
        Key,
        KeyDefault,
        Graph,
        Node,
        Edge,
        Port,
        Data,
        Path,
        Label,      ///< label text inside data
        Extension,  ///< another element inside data
        Ignored
    };

    struct Key {
        std::string owner;      ///< "node", "edge", "all", ...
        std::string attribute;  ///< attr.name in lower case
        std::string defaultText;
        bool hasDefault = false;
    };

    struct Element {
        Context context;
        std::string key;  ///< the key that data or a key declaration names
    };

    /// What a node has beside its place in the document.
    struct NodeState {
        int labelRank = 0;
        int nested = -1;        ///< the graph in it; -1: none
        bool absolute = false;  ///< the center does not count from the node around it
        bool hasX = false;
        bool hasY = false;
        double x = 0;
        double y = 0;
        std::vector<int> portRanks;                  ///< of the labels of its ports
        std::unordered_map<std::string, int> ports;  ///< indices into the ports of the node
    };

    struct EdgeState {
        std::string source;
        std::string target;
        std::string sourcePort;
        std::string targetPort;
        int labelRank = 0;
        int line = 0;
    };

    Context contextOf(const std::string& name, int line);
    Context contextInGraph(const std::string& name, int line);
    void openGraph(const GraphMLAttributes& attributes, int line);
    int graphIn(int node, const std::string& id, int line);
    void openNode(const GraphMLAttributes& attributes, int line);
    void openEdge(const GraphMLAttributes& attributes, int line);
    void openPort(const GraphMLAttributes& attributes, int line);
    void openKey(const GraphMLAttributes& attributes, int line);
    void readExtension(const std::string& name, const GraphMLAttributes& attributes, int line);
    void readGeometry(const GraphMLAttributes& attributes, int line);
    void readData(const std::string& keyId, const std::string& text, int line);
    void readNodeData(const std::string& attribute, const std::string& text, int line);
    void readPortData(const std::string& attribute, const std::string& text, int line);
    void setLabel(const std::string& text, int rank);
    void closeNode();
    void closeEdge();
    Context owner() const;
    DocumentNode& currentNode();
    NodeState& currentNodeState();
    const Key* defaultLabel(std::string_view owner) const;
    int resolvedNode(const std::string& id, int line) const;
    int resolvedPort(int node, const std::string& port, int line) const;
    void placeNestedNodes();
    void warnOnce(const std::string& text, int line);

    GraphDocument m_document;
    std::vector<Element> m_open;
    std::vector<int> m_openNodes;
    std::vector<int> m_openPorts;  ///< indices into the ports of the last open node
    std::vector<int> m_openGraphs;
    std::vector<bool> m_directed;  ///< edgedefault of the open graphs
    std::vector<NodeState> m_nodeStates;
    std::vector<EdgeState> m_edgeStates;
    std::unordered_map<std::string, int> m_indexOfId;
    std::unordered_map<std::string, Key> m_keys;
    std::vector<std::string> m_keyOrder;
    bool m_hasGraph = false;
};

}  // namespace qxdraw
