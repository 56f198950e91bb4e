// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxDGraphManagerXMLWriter.h"

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/geometry/QxShapeResource.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/nesting/QxDChildGraphForestEdge.h"
#include "qx/nesting/QxExpandedNodeExtension.h"
#include "qx/xml/QxDEdgeXMLWriter.h"
#include "qx/xml/QxDGraphXMLWriter.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/GraphSpacings.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using qx::internal::each;
using Utilities = QxXMLUtilities;

namespace {

/// The graphs of the drawing in their order, each followed by what is hidden from it.
std::vector<const QxDGraph*> graphsOf(const QxGraphManager& manager) {
    std::vector<const QxDGraph*> graphs;
    for (const QxDGraph* graph : each<QxDGraph>(*manager.pGraphList())) {
        if (graph->isHideGraph() == 0) {
            graphs.push_back(graph);
            if (graph->pHideGraph() != nullptr) {
                graphs.push_back(graph->pHideGraph());
            }
        }
    }
    return graphs;
}

/// Fills a section by `fill`, and takes it out again when nothing came of that.
template <class Fill>
void addSection(QxDOMElement& parent, Utilities::Name name, const Fill& fill) {
    QxDOMElement& section = *Utilities::pAppendChild(parent, name);
    fill(section);
    if (Utilities::hasChildren(section) == 0) {
        Utilities::removeChild(parent, section);
    }
}

}  // namespace

QxDGraphManagerXMLWriter::QxDGraphManagerXMLWriter() {
    installDrawingWriters();
}

QxDGraphManagerXMLWriter::QxDGraphManagerXMLWriter(const char* fileName)
    : QxGraphManagerXMLWriter(fileName) {
    installDrawingWriters();
}

QxDGraphManagerXMLWriter::QxDGraphManagerXMLWriter(const char* fileName, int useTemplates,
                                                   int indented)
    : QxGraphManagerXMLWriter(fileName, useTemplates, indented) {
    installDrawingWriters();
}

QxDGraphManagerXMLWriter::QxDGraphManagerXMLWriter(std::string* buffer, int useTemplates,
                                                   int indented)
    : QxGraphManagerXMLWriter(buffer, useTemplates, indented) {
    installDrawingWriters();
}

QxDGraphManagerXMLWriter::QxDGraphManagerXMLWriter(std::ostream* stream, int useTemplates,
                                                   int indented)
    : QxGraphManagerXMLWriter(stream, useTemplates, indented) {
    installDrawingWriters();
}

QxDGraphManagerXMLWriter::~QxDGraphManagerXMLWriter() = default;

void QxDGraphManagerXMLWriter::installDrawingWriters() {
    install(std::make_unique<QxDGraphXMLWriter>(*this), std::make_unique<QxDEdgeXMLWriter>(*this));
}

const QxDGraphManager* QxDGraphManagerXMLWriter::pDGraphManager() const {
    return static_cast<const QxDGraphManager*>(pGraphManager());
}

int QxDGraphManagerXMLWriter::isLeftOut(const QxGraph* graph) const {
    return graph->isHideGraph();
}

void QxDGraphManagerXMLWriter::numberObjects() {
    if (pGraphManager()->levelNumber() >= 2) {
        collectShapes();
    }
    QxGraphManagerXMLWriter::numberObjects();
}

void QxDGraphManagerXMLWriter::populateDOMElement(QxDOMElement& top) {
    if (pGraphManager()->levelNumber() < 2) {
        QxGraphManagerXMLWriter::populateDOMElement(top);
        return;
    }
    QxDOMElement& resources = *Utilities::pAppendChild(top, names::Resources);
    QxGraphManagerXMLWriter::populateDOMElement(top);
    createResources(resources);
    if (Utilities::hasChildren(resources) == 0) {
        Utilities::removeChild(top, resources);
    }
}

/// The sections that follow the graphs, then what only our own readers know.
void QxDGraphManagerXMLWriter::writeMore(QxDOMElement& instances) {
    if (pGraphManager()->levelNumber() < 2) {
        QxGraphManagerXMLWriter::writeMore(instances);
        return;
    }
    const QxDGraphManager& manager = *pDGraphManager();
    addSection(instances, names::Complexity,
               [&](QxDOMElement& complexity) { createComplexity(complexity); });
    if (manager.pAnchorGraph() != nullptr) {
        writeID(*Utilities::pAppendChild(instances, names::RootGraph), names::Value,
                manager.pAnchorGraph());
    }
    QxGraphManagerXMLWriter::writeMore(instances);
    const auto writeSwitch = [&](Utilities::Name name, int value, int usual) {
        if (value != usual) {
            Utilities::writeBooleanValue(QxXMLHelper::more(instances), name, value);
        }
    };
    writeSwitch(names::CompressMetaEdges, manager.compressMetaEdges(), 1);
    writeSwitch(names::ReflexiveMetaEdgeReplacement, manager.reflexiveMetaEdgeReplacement(), 1);
    writeSwitch(names::IgnoreConnectorsForMetaEdges, manager.ignoreConnectorsForMetaEdges(), 1);
    writeSwitch(names::UpdatesMetaEdges, manager.updatesMetaEdges(), 0);
    const bool hasNoAnchor = manager.pAnchorGraph() == nullptr && manager.numberOfGraphs() > 0;
    writeSwitch(names::NoRootGraph, hasNoAnchor ? 1 : 0, 0);
}

// --- Shapes

/// Each shape is numbered when it is met first.
void QxDGraphManagerXMLWriter::collectShapes() {
    m_shapes.clear();
    const auto collect = [this](const QxShapeResource* resource) {
        if (resource != nullptr && hasID(resource->pShape()) == 0) {
            pID(resource->pShape());
            m_shapes.push_back(resource->pShape());
        }
    };
    for (const QxDGraph* graph : graphsOf(*pGraphManager())) {
        for (const QxDNode* node : each<QxDNode>(*graph->pNodeList())) {
            collect(node->pQueryShapeResource());
            if (const QxExpandedNodeExtension* kept = node->pExpandedNodeExtension()) {
                collect(kept->pShapeResource());
            }
            if (const QxConnectorManager* connectors = node->pQueryConnectorManager()) {
                for (const QxConnector* connector : each<QxConnector>(*connectors)) {
                    collect(connector->pQueryShapeResource());
                }
            }
        }
    }
}

void QxDGraphManagerXMLWriter::createResources(QxDOMElement& resources) {
    createShapes(resources);
}

void QxDGraphManagerXMLWriter::createShapes(QxDOMElement& resources) {
    addSection(resources, names::Shapes, [&](QxDOMElement& shapes) {
        for (const QxShape* shape : m_shapes) {
            QxDXMLHelper::writeShapeDefinition(*shape, shapes, this);
        }
    });
}

// --- Complexity

void QxDGraphManagerXMLWriter::createComplexity(QxDOMElement& complexity) {
    createNestingRelations(complexity);
    createMetaEdges(complexity);
    createHiddenObjects(complexity);
    createFolderNodes(complexity);
}

/// In the order of the relations of each graph, which is that of nesting again. Hidden nodes take
/// their relations along one by one, as they are hidden.
void QxDGraphManagerXMLWriter::createNestingRelations(QxDOMElement& complexity) {
    addSection(complexity, names::NestingRelations, [&](QxDOMElement& section) {
        const auto add = [&](const QxDNode& node) {
            QxDOMElement& element = *Utilities::pAppendChild(section, names::NestingRelation);
            writeID(element, names::ChildGraphRelation, node.pChildGraphForestEdge());
            createNestingRelation(node, element);
        };
        for (const QxDGraph* graph : graphsOf(*pGraphManager())) {
            if (graph->isHideGraph() != 0) {
                for (const QxDNode* node : each<QxDNode>(*graph->pNodeList())) {
                    if (node->pChildGraph() != nullptr) {
                        add(*node);
                    }
                }
                continue;
            }
            QxGraphDList children;
            graph->buildChildGraphList(&children);
            for (const QxDGraph* child : each<QxDGraph>(children)) {
                if (child->pParentNode() != nullptr) {
                    add(*child->pParentNode());
                }
            }
        }
    });
}

void QxDGraphManagerXMLWriter::createNestingRelation(const QxDNode& node, QxDOMElement& relation) {
    Utilities::writeBooleanValue(relation, names::Expanded, node.expanded());
    if (node.expanded() != 0) {
        createCalculatedMargins(node, relation);
    }
    QxDXMLHelper::writeSpacings(qx::internal::nestedMarginsOf(*node.pChildGraph()),
                                *Utilities::pAppendChild(relation, names::NestedMargins));
}

/// How far the contents of an expanded node stay away from the sides of its view area.
void QxDGraphManagerXMLWriter::createCalculatedMargins(const QxDNode& node,
                                                       QxDOMElement& relation) {
    const QxDGraph& nested = *node.pNestedGraph();
    QxRect bounds;
    if (nested.calculateGraphBounds(bounds) == 0) {  // also of graphs that nobody sees
        bounds = QxRect();
    }
    if (nested.isAnchorGraph() != 0) {
        QxRect between;
        const QxDGraph* const intergraph = pDGraphManager()->pQueryIntergraph();
        if (intergraph != nullptr && intergraph->calculateGraphBounds(between) != 0) {
            bounds.updateBounds(&between);
        }
    }
    nested.expandedTransformRect(node.pOwnerGraph(), bounds);
    const QxRect view = nested.ntViewRectInNodeCoordSystem();
    if (bounds.center() == view.center() && bounds.size() == view.size()) {
        return;
    }
    const auto distance = [](std::int32_t a, std::int32_t b) { return 1.0 * a - b; };
    QxDOMElement& margins = *Utilities::pAppendChild(relation, names::CalculatedMargins);
    Utilities::writeDouble(margins, names::Left, distance(bounds.left(), view.left()));
    Utilities::writeDouble(margins, names::Right, distance(view.right(), bounds.right()));
    Utilities::writeDouble(margins, names::Upper, distance(view.top(), bounds.top()));
    Utilities::writeDouble(margins, names::Bottom, distance(bounds.bottom(), view.bottom()));
}

void QxDGraphManagerXMLWriter::createMetaEdges(QxDOMElement& complexity) {
    addSection(complexity, names::MetaEdges, [&](QxDOMElement& section) {
        QxDEdgeDList edges;
        pDGraphManager()->buildAllMetaEdges(edges, 1, 0);
        for (const QxDEdge* edge : each<QxDEdge>(edges)) {
            writeID(*Utilities::pAppendChild(section, names::MetaEdge), names::Id, edge);
        }
        // Those that are hidden, or out of action, are meta-edges all the same.
        for (const QxDGraph* graph : graphsOf(*pGraphManager())) {
            createIdleMetaEdges(*graph, section);
        }
        if (const QxDGraph* between = pDGraphManager()->pQueryIntergraph()) {
            createIdleMetaEdges(*between, section);
        }
    });
}

void QxDGraphManagerXMLWriter::createIdleMetaEdges(const QxDGraph& graph, QxDOMElement& section) {
    const auto add = [&](const QxEdgeDList& edges) {
        for (const QxDEdge* edge : each<QxDEdge>(edges)) {
            if (edge->isMetaEdge() != 0) {
                writeID(*Utilities::pAppendChild(section, names::MetaEdge), names::Id, edge);
            }
        }
    };
    add(*graph.pDeactivatedEdgeList());
    if (graph.isHideGraph() != 0) {
        add(*graph.pDisconnectedEdgeList());
    }
}

void QxDGraphManagerXMLWriter::createHiddenObjects(QxDOMElement& complexity) {
    addSection(complexity, names::HiddenObjects, [&](QxDOMElement& section) {
        for (const QxDGraph* graph : graphsOf(*pGraphManager())) {
            if (graph->isHideGraph() == 0) {
                continue;
            }
            for (const QxDList* list : std::initializer_list<const QxDList*>{
                     graph->pNodeList(), graph->pEdgeList(), graph->pDisconnectedEdgeList()}) {
                for (const QxGraphObject* object : each<QxGraphObject>(*list)) {
                    createHiddenObject(*object, section);
                }
            }
        }
    });
}

void QxDGraphManagerXMLWriter::createHiddenObject(const QxObject& object, QxDOMElement& list) {
    writeID(*Utilities::pAppendChild(list, names::Hidden), names::Id, &object);
}

void QxDGraphManagerXMLWriter::createFolderNodes(QxDOMElement& complexity) {
    addSection(complexity, names::Folders, [&](QxDOMElement& section) {
        for (const QxDGraph* graph : graphsOf(*pGraphManager())) {
            for (const QxDNode* node : each<QxDNode>(*graph->pNodeList())) {
                if (node->isFolderNode() != 0) {
                    writeID(*Utilities::pAppendChild(section, names::Folder), names::Id, node);
                }
            }
        }
    });
}
