// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Labels.h"

#include <cmath>

#include "model/FieldLayout.h"
#include "model/Nesting.h"
#include "model/NodeSizing.h"

namespace qxdraw {

namespace {

constexpr double Padding = 4;  // between a text and what is around it, both sides together

TextBlock smallText(const std::string& text) {
    return {wrapEdgeLabel(text), EdgeFontSize};
}

bool isBlank(const TextBlock& text) {
    return text.width() <= 0;
}

void addFields(Drawing& drawing, QxDNode& node, const DocumentNode& source) {
    for (const PlacedField& field : placeFields(source)) {
        if (!field.field->parts.empty() || field.field->text.empty()) {
            continue;
        }
        const std::string& text = field.field->text;
        TextBlock block =
            fitText(text, field.right - field.left - Padding, field.top - field.bottom - Padding);
        if (!isBlank(block)) {
            const DocumentPoint middle = field.center();
            drawing.addLabel(node, text, std::move(block), true)
                ->ntMoveTo(toPoint({source.center->x + middle.x, source.center->y + middle.y}));
        }
    }
}

/// The name as it fits into the outline of the node, as large as possible.
TextBlock fitName(const DocumentNode& node) {
    constexpr double Widest = 1.0;
    constexpr double Narrowest = 0.25;
    constexpr double Step = 0.1;
    if (node.shape.kind == ShapeKind::Rectangle) {
        return fitText(node.label, node.width - Padding, node.height - Padding);
    }
    TextBlock best;
    for (double part = Widest - Step / 2; part > Narrowest; part -= Step) {
        const double width = part * node.width;
        const double height = innerHeight(node.shape, part) * node.height;
        TextBlock block = fitText(node.label, width, height);
        const bool fits = block.width() <= width && block.height() <= height;
        if (fits && block.fontSize > best.fontSize) {
            best = std::move(block);
        }
        if (best.fontSize >= NameFontSize) {
            break;
        }
    }
    return best.fontSize > 0 ? best : fitText(node.label, node.width / 2, node.height / 3);
}

void addName(Drawing& drawing, QxDNode& node, const DocumentNode& source) {
    if (TextBlock block = fitName(source); !isBlank(block)) {
        drawing.addLabel(node, source.label, std::move(block), true);
    }
}

void addNodeLabels(Drawing& drawing, const GraphDocument& document) {
    for (std::size_t i = 0; i < document.nodes.size(); ++i) {
        const DocumentNode& source = document.nodes[i];
        QxDNode& node = drawing.node(i);
        if (node.isVisible() == 0) {
            continue;
        }
        if (node.expanded() == 0) {
            source.fields != nullptr ? addFields(drawing, node, source)
                                     : addName(drawing, node, source);
        }
        if (TextBlock outer = smallText(source.outerLabel); !isBlank(outer)) {
            drawing.addLabel(node, source.outerLabel, std::move(outer));
        }
    }
}

void addPortLabels(Drawing& drawing, const GraphDocument& document) {
    for (const DrawnPort& port : drawing.ports()) {
        const DocumentPort& source = document.nodes[port.node].ports[port.port];
        TextBlock text = smallText(source.label);
        if (source.isMarked && !isBlank(text)) {
            drawing.addLabel(*port.connector, source.label, std::move(text));
        }
    }
}

void addEdgeLabels(Drawing& drawing, const GraphDocument& document) {
    using Place = DocumentEdgeLabel::Place;
    for (std::size_t i = 0; i < document.edges.size(); ++i) {
        const DocumentEdge& source = document.edges[i];
        if (drawing.edge(i).isVisible() == 0 || drawing.edge(i).hasVisiblePart() == 0) {
            continue;
        }
        if (TextBlock text = smallText(source.label); !isBlank(text)) {
            drawing.addLabel(drawing.edge(i), source.label, std::move(text));
        }
        for (const DocumentEdgeLabel& more : source.moreLabels) {
            TextBlock text = smallText(more.text);
            if (isBlank(text)) {
                continue;
            }
            QxEdgeLabel* label = drawing.addLabel(drawing.edge(i), more.text, std::move(text));
            if (more.place != Place::Anywhere) {
                label->ntPerMilDistanceFromSource(more.place == Place::Source ? 0 : 1000);
            }
        }
    }
}

}  // namespace

void addLabels(Drawing& drawing, const GraphDocument& document) {
    const BoundsRest rest(drawing);
    addNodeLabels(drawing, document);
    addPortLabels(drawing, document);
    addEdgeLabels(drawing, document);
}

void nameNode(Drawing& drawing, std::size_t index, const GraphDocument& document) {
    QxDNode& node = drawing.node(index);
    drawing.discardLabels(node);
    if (node.expanded() != 0) {
        return;
    }
    DocumentNode source = document.nodes[index];
    source.width = node.ntWidth();
    source.height = node.ntHeight();
    source.center = toPlace(node.iCenter());
    source.fields != nullptr ? addFields(drawing, node, source) : addName(drawing, node, source);
}

void nameEdge(Drawing& drawing, std::size_t index, const GraphDocument& document) {
    const std::string& label = document.edges[index].label;
    drawing.discardLabels(drawing.edge(index));
    if (TextBlock text = smallText(label); !isBlank(text)) {
        drawing.addLabel(drawing.edge(index), label, std::move(text));
    }
}

void addTitles(Drawing& drawing, const GraphDocument& document) {
    for (std::size_t i = 0; i < document.graphs.size(); ++i) {
        TextBlock title = titleOf(document, static_cast<int>(i));
        if (!title.lines.empty() && drawing.graph(i).isVisible() != 0) {
            drawing.addTitle(i, document.graphs[i].label, std::move(title));
        }
    }
}

}  // namespace qxdraw
