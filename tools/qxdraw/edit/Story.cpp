// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "edit/Story.h"

#include <utility>

#include "qx/drawing/QxPNode.h"
#include "qx/events/QxComplexityChangeEventData.h"
#include "qx/events/QxComplexityChangeEventTypeEnum.h"
#include "qx/events/QxDEventManager.h"
#include "qx/events/QxDrawingChangeEventData.h"

namespace qxdraw {

namespace {

std::string placeOf(const QxRect& rect) {
    return "(" + std::to_string(rect.x()) + ", " + std::to_string(rect.y()) + ")";
}

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

const char* verbOf(std::int32_t type) {
    switch (type) {
        case NodeExpanded:
            return "expanded";
        case NodeCollapsed:
            return "collapsed";
        case NodeFolded:
        case EdgeFolded:
            return "folded";
        case NodeUnfolded:
        case EdgeUnfolded:
            return "unfolded";
        case NodeHidden:
        case EdgeHidden:
            return "hidden";
        default:
            return "shown again";
    }
}

}  // namespace

Story::Story(const Drawing& drawing, const GraphDocument& document)
    : m_drawing(drawing), m_document(document) {
    QxDEventManager* events = m_drawing.events();
    events->addDrawingChangeListener(&m_drawing.manager(), &m_changes);
    events->addComplexityChangeListener(&m_drawing.manager(), &m_complexity);
}

Story::~Story() {
    QxDEventManager* events = m_drawing.events();
    events->removeDrawingChangeListener(&m_drawing.manager(), &m_changes);
    events->removeComplexityChangeListener(&m_drawing.manager(), &m_complexity);
}

std::string Story::nameOf(const QxGraphMember& member) const {
    const auto index = m_drawing.findIndex(member);
    const auto nodeName = [&](std::size_t at) {
        const DocumentNode& node = m_document.nodes[at];
        return node.id.empty() ? node.label : node.id;
    };
    if (member.isEdge() == 0) {
        return index && *index < m_document.nodes.size() ? nodeName(*index) : "a node";
    }
    if (!index || *index >= m_document.edges.size()) {
        return "an edge that stands for others";
    }
    const DocumentEdge& edge = m_document.edges[*index];
    return nodeName(static_cast<std::size_t>(edge.source)) + (m_document.directed ? "->" : "--") +
           nodeName(static_cast<std::size_t>(edge.target));
}

void Story::note(const std::string& kind, const std::string& what) {
    auto& notes = m_notes[kind];
    if (notes.empty()) {
        m_kinds.push_back(kind);
    }
    const std::size_t blank = what.find('\t');
    notes[what.substr(0, blank)] = blank == std::string::npos ? "" : what.substr(blank + 1);
}

void Story::hear(const QxDrawingChangeEventData& data) {
    const QxGNode* node = data.pSourceNode();
    if (node != nullptr && node->isPathNode() == 0 &&
        m_drawing.findIndex(*node).value_or(m_document.nodes.size()) >= m_document.nodes.size()) {
        return;  // it is being made
    }
    const auto pathOf = [&](const QxDEdge* edge) -> PathChange& {
        return m_paths[edge != nullptr ? nameOf(*edge) : "an edge"];
    };
    const auto* bend = static_cast<const QxPNode*>(data.pSource());
    switch (data.type()) {
        case NodeMoved:
            return note("moved",
                        nameOf(*data.pSourceNode()) + "\tto " + placeOf(*data.pNewBounds()));
        case NodeResized:
            return note("resized", nameOf(*data.pSourceNode()) + "\tto " +
                                       std::to_string(data.pNewBounds()->width()) + " x " +
                                       std::to_string(data.pNewBounds()->height()));
        case NodeShapeChanged:
            return note("given another shape", nameOf(*data.pSourceNode()));
        case ConnectorInserted:
            return note("given a connector", nameOf(*data.pNewOwnerNode()));
        case EdgeConnectorChanged:
            return note("connected elsewhere", nameOf(*data.pSourceEdge()));
        case BendAdded:
            ++pathOf(data.pNewOwnerEdge()).added;
            return;
        case PathNodeRemoved:
        case PathNodeDiscarded:
            ++pathOf(data.pOldOwnerEdge()).removed;
            return;
        case PathNodeMoved:
            ++pathOf(bend->pOwnerEdge()).moved;
            return;
        case LabelInserted:
        case LabelRemoved:
        case LabelDiscarded:
        case LabelTextChanged:
        case LabelOffsetChanged:
        case LabelResized:
            m_labels.insert(data.pSource());
            return;
        case GraphBoundsChanged:
            if (data.pSourceGraph() == &m_drawing.graph()) {
                const QxRect& bounds = *data.pNewBounds();
                m_bounds = "bounds now x " + std::to_string(bounds.left()) + " to " +
                           std::to_string(bounds.right()) + ", y " +
                           std::to_string(bounds.bottom()) + " to " + std::to_string(bounds.top());
            }
            return;
        default:
            return;
    }
}

void Story::hear(const QxComplexityChangeEventData& data) {
    if (const QxDNode* node = data.pSourceNode()) {
        note(verbOf(data.type()), nameOf(*node));
    } else if (const QxDEdge* edge = data.pSourceEdge()) {
        note(verbOf(data.type()), nameOf(*edge));
    }
}

std::string Story::take() {
    constexpr std::size_t Named = 4;
    std::vector<std::string> parts;
    for (const std::string& kind : m_kinds) {
        const auto& notes = m_notes[kind];
        std::string part;
        if (notes.size() > Named) {
            part = counted(notes.size(), "object");
        } else {
            for (const auto& [name, more] : notes) {
                part += (part.empty() ? "" : ", ") + name;
            }
        }
        part += " " + kind;
        if (notes.size() == 1 && !notes.begin()->second.empty()) {
            part += " " + notes.begin()->second;
        }
        parts.push_back(part);
    }
    if (m_paths.size() > Named) {
        parts.push_back(counted(m_paths.size(), "edge") + " rerouted");
    } else {
        for (const auto& [edge, change] : m_paths) {
            std::string part = "bends of " + edge + ":";
            for (const auto& [number, word] :
                 {std::pair(change.added, " added"), std::pair(change.removed, " removed"),
                  std::pair(change.moved, " moved")}) {
                if (number > 0) {
                    part += (part.back() == ':' ? " " : ", ") + std::to_string(number) + word;
                }
            }
            parts.push_back(part);
        }
    }
    if (!m_labels.empty()) {
        parts.push_back(counted(m_labels.size(), "label") + " changed");
    }
    if (!m_bounds.empty()) {
        parts.push_back(std::exchange(m_bounds, {}));
    }
    m_kinds.clear();
    m_notes.clear();
    m_paths.clear();
    m_labels.clear();
    std::string text;
    for (const std::string& part : parts) {
        text += (text.empty() ? "" : "; ") + part;
    }
    return text.empty() ? "nothing changed" : text;
}

}  // namespace qxdraw
