// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/View.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

#include "model/Names.h"
#include "model/Neighbourhood.h"
#include "model/Nesting.h"

namespace qxdraw {

namespace {

constexpr std::string_view DepthPrefix = "depth:";

std::optional<int> depthOf(std::string_view value) {
    int depth = 0;
    if (!value.starts_with(DepthPrefix)) {
        return {};
    }
    value.remove_prefix(DepthPrefix.size());
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), depth);
    const bool isNumber = error == std::errc{} && end == value.data() + value.size();
    return isNumber && depth >= 0 ? std::optional(depth) : std::nullopt;
}

std::vector<std::string> partsOf(const std::string& list) {
    std::vector<std::string> parts;
    for (std::size_t start = 0; start <= list.size();) {
        const std::size_t end = std::min(list.find(',', start), list.size());
        if (end > start) {
            parts.push_back(list.substr(start, end - start));
        }
        start = end + 1;
    }
    return parts;
}

void sortOut(std::vector<int>& nodes) {
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
}

class ViewChange {
public:
    ViewChange(Drawing& drawing, GraphDocument& document)
        : m_drawing(drawing), m_document(document), m_names(document) {}

    void fold(const std::string& list) {
        std::map<int, std::vector<int>> nodesOf;  // by graph: a folder holds nodes of one
        const std::vector<std::string> names =
            m_names.find(list).empty() ? partsOf(list) : std::vector<std::string>{list};
        for (const std::string& name : names) {
            for (const int node : nodesCalled(name)) {
                nodesOf[m_document.nodes[index(node)].graph].push_back(node);
            }
        }
        for (auto& [graph, nodes] : nodesOf) {
            sortOut(nodes);
            m_drawing.fold(nodes, folderName(nodes), m_document);
        }
    }

    void collapse(const std::string& value) {
        const std::optional<int> depth = value == "all" ? std::optional(0) : depthOf(value);
        const std::vector<int> graphs = graphsInNodes(m_document);
        const auto isGraph = [&](int node) { return graphs[index(node)] >= 0; };
        if (!depth) {
            for (const int node : m_names.findAmong(value, "nested graph", isGraph)) {
                m_drawing.node(index(node)).collapse();
            }
            return;
        }
        const std::vector<int> depths = depthsOf(m_document);
        for (std::size_t i = 0; i < graphs.size(); ++i) {
            if (graphs[i] >= 0 && depths[index(graphs[i])] > *depth) {
                m_drawing.node(i).collapse();
            }
        }
    }

    std::vector<int> nodesCalled(const std::string& name) const {
        return m_names.findAmong(name, "node or nested graph", [](int) { return true; });
    }

    /// Hides what is not kept.
    void keep(const std::vector<char>& isKept) {
        std::vector<int> others;
        for (std::size_t i = 0; i < isKept.size(); ++i) {
            if (isKept[i] == 0) {
                others.push_back(static_cast<int>(i));
            }
        }
        hide(others);
    }

    void hide(const std::vector<int>& nodes) {
        std::map<std::size_t, QxDNodeDList> nodesOf;  // by graph, in its order
        for (const int node : nodes) {
            nodesOf[index(m_document.nodes[index(node)].graph)].appendNode(
                &m_drawing.node(index(node)));
        }
        for (auto& [graph, list] : nodesOf) {
            m_drawing.graph(graph).hide(&list, nullptr, nullptr, nullptr);
        }
    }

private:
    static std::size_t index(int value) { return static_cast<std::size_t>(value); }

    /// The names of the first nodes, and how many more there are.
    std::string folderName(const std::vector<int>& nodes) const {
        constexpr std::size_t Named = 4;
        std::string name;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            const DocumentNode& node = m_document.nodes[index(nodes[i])];
            if (i == Named && nodes.size() > Named + 1) {
                return name + " and " + std::to_string(nodes.size() - Named) + " more";
            }
            name += (i == 0 ? "" : ", ") + (node.label.empty() ? node.id : node.label);
        }
        return name;
    }

    Drawing& m_drawing;
    GraphDocument& m_document;
    const Names m_names;  ///< of what the file holds; folders have none
};

}  // namespace

std::string collapseFault(std::string_view value) {
    return value.starts_with(DepthPrefix) && !depthOf(value)
               ? "'" + std::string(value) + "': after depth: comes a whole number from 0 on"
               : "";
}

void applyView(Drawing& drawing, GraphDocument& document, const ViewOptions& options) {
    ViewChange change(drawing, document);
    std::vector<int> hidden;  // names are looked up before anything changes
    for (const std::string& name : options.hide) {
        const std::vector<int> found = change.nodesCalled(name);
        hidden.insert(hidden.end(), found.begin(), found.end());
    }
    sortOut(hidden);
    const std::vector<int> start =
        options.only.empty() ? std::vector<int>() : change.nodesCalled(options.only);
    for (const std::string& list : options.fold) {
        change.fold(list);
    }
    for (const std::string& value : options.collapse) {
        change.collapse(value);
    }
    if (!start.empty()) {
        std::vector<char> kept = neighbourhoodOf(document, start, options.depth,
                                                 options.way != ViewOptions::Way::Parents,
                                                 options.way != ViewOptions::Way::Children);
        for (const int node : hidden) {
            kept[static_cast<std::size_t>(node)] = 0;
        }
        change.keep(kept);
    } else if (!hidden.empty()) {
        change.hide(hidden);
    }
    drawing.addMetaEdges(document);
}

}  // namespace qxdraw
