// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "edit/Editor.h"

#include <algorithm>
#include <cmath>

#include "import/ImportLimits.h"
#include "import/Numbers.h"
#include "import/Shapes.h"
#include "model/AxisRouting.h"
#include "model/EdgeSpreading.h"
#include "model/Labels.h"
#include "model/NestedLayout.h"
#include "qx/foundation/geometry/QxPointDList.h"

namespace qxdraw {

namespace {

std::int32_t numberOf(const std::string& word) {
    const auto number = parseNumber(word);
    if (!number || std::abs(*number) > ImportLimits::Coordinate) {
        throw ScriptError("'" + word + "' is no number, or too large");
    }
    return static_cast<std::int32_t>(std::lround(*number));
}

QxPoint pointOf(const std::string& word) {
    const auto numbers = parseNumbers(word);
    if (!numbers || numbers->size() != 2) {
        throw ScriptError("'" + word + "' is no point: X,Y");
    }
    return {numberOf(word.substr(0, word.find(','))), numberOf(word.substr(word.find(',') + 1))};
}

std::int32_t extentOf(const std::string& word) {
    const std::int32_t extent = numberOf(word);
    if (extent < 1) {
        throw ScriptError("'" + word + "': an extent is 1 or more");
    }
    return extent;
}

/// Of a side, or of two numbers from -1 to 1.
DocumentPoint placeOnNode(const std::string& word) {
    constexpr std::pair<const char*, DocumentPoint> Sides[] = {
        {"left", {-1, 0}}, {"right", {1, 0}}, {"bottom", {0, -1}}, {"top", {0, 1}}};
    for (const auto& [name, place] : Sides) {
        if (word == name) {
            return place;
        }
    }
    const auto numbers = parseNumbers(word);
    if (!numbers || numbers->size() != 2 || std::abs(numbers->at(0)) > 1 ||
        std::abs(numbers->at(1)) > 1) {
        throw ScriptError("'" + word +
                          "' is no place: left, right, bottom, top, or X,Y from -1 to 1");
    }
    return {numbers->at(0), numbers->at(1)};
}

}  // namespace

Editor::Editor(Drawing& drawing, GraphDocument& document, const ArrangingOptions& options)
    : m_drawing(drawing), m_document(document), m_options(options) {}

const std::vector<Editor::Command>& Editor::commands() {
    constexpr std::size_t Any = 1'000'000;
    static const std::vector<Command> all = {
        {"move", "move NODE X Y", "puts the center of a node there; move NODE by DX DY: shifts it",
         4, 5, &Editor::move},
        {"resize", "resize NODE WIDTH HEIGHT", "about its center", 4, 4, &Editor::resize},
        {"shape", "shape NODE SHAPE", "box, ellipse, diamond, hexagon, triangle, ...", 3, 3,
         &Editor::shape},
        {"bend", "bend EDGE [X,Y ...]", "leads an edge over these points, straight without any", 2,
         Any, &Editor::bend},
        {"connector", "connector NODE PLACE [EDGE ...]",
         "a new connector (left, right, bottom, top, or X,Y from -1 to 1) where these edges end", 3,
         Any, &Editor::connector},
        {"label", "label NODE|EDGE TEXT", "another text; \"\" takes it away", 3, 3, &Editor::label},
        {"expand", "expand NODE", "shows the nested graph in its node", 2, 2, &Editor::expand},
        {"collapse", "collapse NODE", "shows a nested graph as a closed node", 2, 2,
         &Editor::collapse},
        {"hide", "hide NODE", "leaves a node out, with its edges", 2, 2, &Editor::hide},
        {"unhide", "unhide NODE|all", "shows what was left out", 2, 2, &Editor::unhide},
        {"fold", "fold NAME NODE ...", "puts nodes of one graph into a new closed node", 3, Any,
         &Editor::fold},
        {"unfold", "unfold NAME", "takes them out again", 2, 2, &Editor::unfold},
        {"orthogonal", "orthogonal on|off", "lets edges run along the axes, or as they like", 2, 2,
         &Editor::orthogonal},
        {"layout", "layout spring", "places all nodes anew", 2, 2, &Editor::layout}};
    return all;
}

std::string Editor::help() {
    constexpr std::size_t Column = 34;
    std::string text;
    for (const Command& command : commands()) {
        std::string line = std::string("  ") + command.usage;
        line.resize(std::max(line.size() + 2, Column), ' ');
        text += line + command.meaning + "\n";
    }
    return text;
}

void Editor::run(const std::vector<std::string>& words) {
    const auto& all = commands();
    const auto command = std::find_if(all.begin(), all.end(), [&](const Command& candidate) {
        return words.front() == candidate.name;
    });
    if (command == all.end()) {
        throw ScriptError("there is no command '" + words.front() + "'");
    }
    if (words.size() < command->least || words.size() > command->most) {
        throw ScriptError(std::string("expected: ") + command->usage);
    }
    try {
        (this->*command->act)(words);
    } catch (const NameError& error) {
        throw ScriptError(error.what());
    }
}

std::size_t Editor::nodeCalled(const std::string& name) {
    if (m_names == nullptr || m_namedNodes != m_document.nodes.size()) {
        m_names = std::make_unique<Names>(m_document);
        m_namedNodes = m_document.nodes.size();
    }
    const std::vector<int> found =
        m_names->findAmong(name, "node or nested graph", [](int) { return true; });
    if (found.size() > 1) {
        throw ScriptError(std::to_string(found.size()) + " nodes are called '" + name + "'");
    }
    return static_cast<std::size_t>(found.front());
}

int Editor::edgeCalled(const std::string& word) {
    const std::size_t arrow = std::min(word.find("->"), word.find("--"));
    if (arrow == std::string::npos) {
        return -1;
    }
    std::string target = word.substr(arrow + 2);
    int number = 1;
    if (const std::size_t mark = target.rfind('#'); mark != std::string::npos) {
        number = numberOf(target.substr(mark + 1));
        target.resize(mark);
    }
    const auto from = static_cast<int>(nodeCalled(word.substr(0, arrow)));
    const auto to = static_cast<int>(nodeCalled(target));
    const bool bothWays = word[arrow + 1] == '-' || !m_document.directed;
    for (std::size_t i = 0; i < m_document.edges.size(); ++i) {
        const DocumentEdge& edge = m_document.edges[i];
        const bool isMeant = (edge.source == from && edge.target == to) ||
                             (bothWays && edge.source == to && edge.target == from);
        if (isMeant && --number == 0) {
            return static_cast<int>(i);
        }
    }
    throw ScriptError("there is no edge '" + word + "'");
}

std::size_t Editor::knownEdge(const std::string& word) {
    const int edge = edgeCalled(word);
    if (edge < 0) {
        throw ScriptError("'" + word + "' is no edge: NODE->NODE, or NODE->NODE#2 for the second");
    }
    return static_cast<std::size_t>(edge);
}

QxDNode& Editor::shownNode(const std::string& name) {
    QxDNode& node = m_drawing.node(nodeCalled(name));
    if (node.isVisible() == 0) {
        throw ScriptError("'" + name + "' is not shown");
    }
    return node;
}

void Editor::move(const Words& words) {
    const bool isShift = words.size() == 5;
    if (isShift && words[2] != "by") {
        throw ScriptError("expected: move NODE X Y, or move NODE by DX DY");
    }
    QxDNode& node = shownNode(words[1]);
    QxPoint place(numberOf(words[words.size() - 2]), numberOf(words.back()));
    if (isShift) {
        QxPoint center;
        node.getCenter(center, 0);
        place = place + center;
    }
    node.moveTo(place, 0);
}

void Editor::resize(const Words& words) {
    QxDNode& node = shownNode(words[1]);
    const QxSize size(extentOf(words[2]), extentOf(words[3]));
    if (node.resize(size, 0) == 0) {
        throw ScriptError("'" + words[1] + "' is as large as the graph in it");
    }
    DocumentNode& source = m_document.nodes[m_drawing.indexOf(node)];
    source.width = size.width();
    source.height = size.height();
    nameNode(m_drawing, m_drawing.indexOf(node), m_document);
}

void Editor::shape(const Words& words) {
    QxDNode& node = shownNode(words[1]);
    if (node.expanded() != 0) {
        throw ScriptError("'" + words[1] + "' shows a graph");
    }
    DocumentNode& source = m_document.nodes[m_drawing.indexOf(node)];
    source.shape = shapeFromName(words[2]);
    const QxShape shape = toShape(source.shape);
    // Under control of a layout the model lays the edges out anew, else they would lose their
    // place.
    m_drawing.manager().controlStarted(1);
    node.pShape(&shape, 0);
    m_drawing.manager().controlStarted(0);
    spreadLoops(node);
    nameNode(m_drawing, m_drawing.indexOf(node), m_document);
}

void Editor::bend(const Words& words) {
    QxDEdge& edge = m_drawing.edge(knownEdge(words[1]));
    QxPointDList bends;
    for (std::size_t i = 2; i < words.size(); ++i) {
        bends.appendPoint(pointOf(words[i]));
    }
    if (edge.isVisible() == 0 || edge.reroute(bends, 0) == 0) {
        throw ScriptError("'" + words[1] + "' is not shown");
    }
    edge.repairOrthogonalRouting();
}

void Editor::connector(const Words& words) {
    constexpr std::int32_t MarkSize = 8;
    QxDNode& node = shownNode(words[1]);
    const DocumentPoint place = placeOnNode(words[2]);
    std::vector<QxDEdge*> edges;
    for (std::size_t i = 3; i < words.size(); ++i) {
        edges.push_back(&m_drawing.edge(knownEdge(words[i])));
        if (edges.back()->pSourceNode() != &node && edges.back()->pTargetNode() != &node) {
            throw ScriptError("'" + words[i] + "' does not end at '" + words[1] + "'");
        }
    }
    const std::size_t index = m_drawing.indexOf(node);
    DocumentPort port;
    port.isMarked = true;
    m_document.nodes[index].ports.push_back(port);
    const QxRect& rect = *node.pIRect();
    const DocumentPoint center{rect.x() + place.x * rect.width() / 2.0,
                               rect.y() + place.y * rect.height() / 2.0};
    QxConnector& connector = m_drawing.addPort(index, m_document.nodes[index].ports.size() - 1,
                                               center, QxSize(MarkSize, MarkSize), false);
    for (QxDEdge* edge : edges) {
        if (edge->pSourceNode() == &node) {
            edge->pSourceConnector(&connector);
        } else {
            edge->pTargetConnector(&connector);
        }
        leadAroundPorts(*edge);
        edge->repairOrthogonalRouting();
    }
}

void Editor::label(const Words& words) {
    const int edge = edgeCalled(words[1]);
    if (edge >= 0) {
        m_document.edges[static_cast<std::size_t>(edge)].label = words[2];
        nameEdge(m_drawing, static_cast<std::size_t>(edge), m_document);
        return;
    }
    QxDNode& node = shownNode(words[1]);
    DocumentNode& source = m_document.nodes[m_drawing.indexOf(node)];
    source.label = words[2];
    source.fields = nullptr;
    nameNode(m_drawing, m_drawing.indexOf(node), m_document);
    m_names = nullptr;
}

void Editor::followVisibility() {
    m_drawing.addMetaEdges(m_document);
    for (std::size_t i = 0; i < m_drawing.numberOfEdges(); ++i) {
        if (m_document.edges[i].standsFor > 0) {
            nameEdge(m_drawing, i, m_document);
        }
    }
    for (std::size_t i = 0; i < m_drawing.numberOfNodes(); ++i) {
        if (m_drawing.node(i).pChildGraph() != nullptr) {
            nameNode(m_drawing, i, m_document);
        }
    }
}

void Editor::expand(const Words& words) {
    if (shownNode(words[1]).expand() == 0) {
        throw ScriptError("'" + words[1] + "' has nothing to show, or shows it already");
    }
    followVisibility();
}

void Editor::collapse(const Words& words) {
    if (shownNode(words[1]).collapse() == 0) {
        throw ScriptError("'" + words[1] + "' shows no nested graph");
    }
    followVisibility();
}

void Editor::hide(const Words& words) {
    QxDNode& node = shownNode(words[1]);
    QxDNodeDList list;
    list.appendNode(&node);
    node.pOwnerGraph()->hide(&list, nullptr, nullptr, nullptr);
    followVisibility();
}

void Editor::unhide(const Words& words) {
    if (words[1] == "all") {
        for (std::size_t i = 0; i < m_drawing.numberOfGraphs(); ++i) {
            m_drawing.graph(i).unhideAll();
        }
    } else {
        QxDNode& node = m_drawing.node(nodeCalled(words[1]));
        if (node.hidden() == 0) {
            throw ScriptError("'" + words[1] + "' is not hidden");
        }
        QxDNodeDList list;
        list.appendNode(&node);
        node.pOwnerGraph()->pHideFromGraph()->unhide(&list, nullptr, nullptr, nullptr, 1);
    }
    followVisibility();
}

void Editor::fold(const Words& words) {
    std::vector<int> nodes;
    QxRect place;
    for (std::size_t i = 2; i < words.size(); ++i) {
        const QxDNode& node = shownNode(words[i]);
        const auto index = static_cast<int>(m_drawing.indexOf(node));
        if (std::find(nodes.begin(), nodes.end(), index) != nodes.end()) {
            throw ScriptError("'" + words[i] + "' stands twice");
        }
        if (!nodes.empty() &&
            node.pOwnerGraph() !=
                m_drawing.node(static_cast<std::size_t>(nodes[0])).pOwnerGraph()) {
            throw ScriptError("'" + words[i] + "' lies in another graph than '" + words[2] + "'");
        }
        place = nodes.empty() ? *node.pIRect() : place |= *node.pIRect();
        nodes.push_back(index);
    }
    m_drawing.fold(nodes, words[1], m_document);
    m_drawing.node(m_drawing.numberOfNodes() - 1).moveTo(place.center(), 1);
    m_names = nullptr;
    followVisibility();
}

void Editor::unfold(const Words& words) {
    QxDNode& folder = shownNode(words[1]);
    const std::size_t index = m_drawing.indexOf(folder);
    if (folder.isFolderNode() == 0 || folder.unfold(nullptr, nullptr, 0) == 0) {
        throw ScriptError("'" + words[1] + "' holds no folded nodes");
    }
    for (std::size_t i = 0; i < m_document.graphs.size(); ++i) {
        if (m_document.graphs[i].node == static_cast<int>(index)) {
            for (DocumentNode& node : m_document.nodes) {
                node.graph =
                    node.graph == static_cast<int>(i) ? m_document.nodes[index].graph : node.graph;
            }
        }
    }
    QxDNodeDList list;
    list.appendNode(&folder);
    folder.pOwnerGraph()->hide(&list, nullptr, nullptr, nullptr);
    followVisibility();
}

void Editor::orthogonal(const Words& words) {
    if (words[1] != "on" && words[1] != "off") {
        throw ScriptError("expected: orthogonal on|off");
    }
    m_options.orthogonal = words[1] == "on";
    routeAlongAxes(m_drawing, m_options.orthogonal);
}

void Editor::layout(const Words& words) {
    if (words[1] != "spring") {
        throw ScriptError("expected: layout spring");
    }
    for (std::size_t i = 0; i < m_drawing.numberOfEdges(); ++i) {
        m_drawing.edge(i).discardAllBends();
    }
    for (std::size_t i = 0; i < m_drawing.numberOfNodes(); ++i) {
        m_document.nodes[i].width = m_drawing.node(i).ntWidth();
        m_document.nodes[i].height = m_drawing.node(i).ntHeight();
    }
    NestedLayoutOptions options;
    options.edgeLength = m_options.edgeLength;
    options.keepOverlaps = m_options.keepOverlaps;
    layOutNested(m_document, m_drawing, options);
    m_drawing.place(m_document);
    spreadEdges(m_drawing, {bundleMode(m_options.bundles), m_options.orthogonal});
}

}  // namespace qxdraw
