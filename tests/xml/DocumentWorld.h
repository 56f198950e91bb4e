// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "nesting/NestedWorld.h"
#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxShape.h"
#include "qx/nesting/QxExpandedNodeExtension.h"
#include "qx/xml/QxDGraphManagerXMLReader.h"
#include "qx/xml/QxDGraphManagerXMLWriter.h"

namespace qxtest {

inline std::string documentOf(const QxDGraphManager& manager, int indented = 1) {
    std::string bytes;
    QxDGraphManagerXMLWriter writer(&bytes, 0, indented);
    return writer.write(&manager) != 0 ? bytes : "";
}

/// What a reader says, one line each.
inline std::string toldBy(const QxTopLevelXMLReader& reader) {
    std::string all;
    for (const QxXMLMessage& message : reader.messages()) {
        all += std::to_string(message.line) + ": " + std::to_string(message.severity) + ' ' +
               message.text + '\n';
    }
    return all;
}

/// A world of nested graphs in which everything else that a document carries changes, too.
class DocumentWorld : public NestedWorld {
public:
    using NestedWorld::NestedWorld;

    void edit() {
        QxDNode& node = *random.pick(nodes());
        QxDEdge& edge = *random.pick(edges());
        QxDGraph& graph = *random.pick(graphs());
        switch (random.below(20)) {
            case 0:
                node.moveTo(any(), any(), 1);
                break;
            case 1:
                node.resize(random.below(90), random.below(90), 1);
                break;
            case 2:
                reshape(node);
                break;
            case 3:
            case 4:
                edge.addBend(edge.pTargetOrPathEdge(), QxPoint(any(), any()), 1);
                break;
            case 5:
                place(edge.addLabel(random.chance(70) ? L"w\u00e4\u2192\\ <&\"'\n\t" : nullptr, 0));
                break;
            case 6:
                place(node.addLabel(random.chance(50) ? L"" : L"n\x1\xfffe z", 0));
                break;
            case 7:
                place(graph.addLabel(L"g", 0));
                break;
            case 8:
                calculate(edge);
                break;
            case 9:
                specify(node);
                break;
            case 10:
                setMargins(graph);
                break;
            case 11:
                edge.clipSourceSide(random.below(2));
                edge.internalOrthogonalRouting(random.below(2));
                edge.multiEdge(random.below(2));
                break;
            case 12:
                node.nameString(random.chance(80) ? L"a name" : L"");
                graph.nameString(L"\xd800 alone");
                edge.nameString(L"\U0001F600");
                break;
            case 13:
                node.userField(any());
                edge.isReadOnly(random.below(2));
                node.forceClipping(random.below(2));
                break;
            case 14:
                graph.orthogonalRouting(random.below(2));
                graph.diagrammingMultiEdgeSpacing(random.below(20));
                break;
            case 15:
                if (QxExpandedNodeExtension* kept = node.pExpandedNodeExtension()) {
                    kept->aspectRatio(0.1 * random.below(30));
                }
                break;
            case 16:
                manager->compressMetaEdges(random.below(2));
                manager->updatesMetaEdges(random.chance(30) ? 1 : 0);
                break;
            default:
                step();
        }
    }

    int any() { return random.below(700) - 200; }

private:
    void reshape(QxDNode& node) {
        QxPointDList points;
        for (int i = 0; i < 5; ++i) {
            points.appendPoint(QxPoint(random.below(2001) - 1000, random.below(2001) - 1000));
        }
        QxShape shape = random.chance(50) ? QxShape(points) : QxShape(QxShapeTypeOval);
        if (random.chance(30)) {
            shape.setInnerRect(QxRect(-701, -333, 1 + random.below(500), 499));
        }
        node.pShape(&shape, 0);
    }
    void place(QxLabel* label) {
        label->resize(random.below(50), random.below(50), 1);
        label->setOffset(random.below(99) - 50, random.below(99) - 50, 1);
        label->moveLabelOnOwnerMove(random.below(2));
        if (label->isEdgeLabel() != 0) {
            auto* const one = static_cast<QxEdgeLabel*>(label);
            one->perMilDistanceFromSource(perMil(1001));
            one->globalOffsetMode(random.below(2));
        } else {
            static_cast<QxRectangularObjectLabel*>(label)->setPerMil(perMil(9999), perMil(30001));
        }
    }
    std::int16_t perMil(int bound) { return static_cast<std::int16_t>(random.below(bound)); }
    void calculate(QxDEdge& edge) {
        QxDNode* const node = edge.pTargetNode();
        if (node == nullptr || node->pOwnerGraph() == nullptr) {
            return;
        }
        QxConnector* const connector =
            node->ntAddConnector(perMil(1001), perMil(777), random.below(9) - 4, random.below(3));
        connector->routingDirection(static_cast<QxDirectionEnum>(random.below(5)));
        edge.pTargetConnector(connector);
        if (edge.reflexive() != 0) {
            edge.pSourceConnector(connector);
        }
    }
    void specify(QxDNode& node) {
        QxConnector* const connector = node.addConnector(
            static_cast<std::int16_t>(random.below(65536) - 32768), perMil(1000), 3, 4, 1, 0);
        connector->resize(random.below(20), random.below(20), 1);
        connector->nameString(L"port");
        place(connector->addLabel(L"p", 0));
        const QxShape shape(random.chance(50) ? QxShapeTypeOval : QxShapeTypeRectangle);
        connector->pShape(&shape);
    }
    void setMargins(QxDGraph& graph) {
        graph.leftMarginConstantSpacing(random.below(30));
        graph.topMarginProportionalSpacing(perMil(300));
        graph.nestedViewTopConstantSpacing(random.below(30));
        graph.nestedViewLeftProportionalSpacing(perMil(300));
        graph.minWidthOfMarginBoundingRect(random.below(50));
    }
};

}  // namespace qxtest
