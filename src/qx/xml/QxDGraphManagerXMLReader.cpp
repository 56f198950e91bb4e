// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxDGraphManagerXMLReader.h"

#include <algorithm>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/util/internal/Suspension.h"
#include "qx/nesting/internal/Complexity.h"
#include "qx/xml/QxDEdgeXMLReader.h"
#include "qx/xml/QxDGraphXMLReader.h"
#include "qx/xml/QxDXMLHelper.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/ComplexityReading.h"
#include "qx/xml/internal/ElementKind.h"
#include "qx/xml/internal/GraphSpacings.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using qx::internal::ComplexityReading;
using qx::internal::ElementKind;
using Utilities = QxXMLUtilities;

QxDGraphManagerXMLReader::QxDGraphManagerXMLReader() {
    installDrawingReaders();
}

QxDGraphManagerXMLReader::QxDGraphManagerXMLReader(const char* fileName)
    : QxGraphManagerXMLReader(fileName) {
    installDrawingReaders();
}

QxDGraphManagerXMLReader::QxDGraphManagerXMLReader(const char* bytes, std::size_t length)
    : QxGraphManagerXMLReader(bytes, length) {
    installDrawingReaders();
}

QxDGraphManagerXMLReader::QxDGraphManagerXMLReader(std::istream* stream)
    : QxGraphManagerXMLReader(stream) {
    installDrawingReaders();
}

QxDGraphManagerXMLReader::~QxDGraphManagerXMLReader() = default;

void QxDGraphManagerXMLReader::installDrawingReaders() {
    install(std::make_unique<QxDGraphXMLReader>(*this), std::make_unique<QxDEdgeXMLReader>(*this));
}

QxDGraphManager* QxDGraphManagerXMLReader::pDGraphManager() const {
    return static_cast<QxDGraphManager*>(pGraphManager());
}

QxDEdgeXMLReader& QxDGraphManagerXMLReader::drawingEdgeReader() const {
    return static_cast<QxDEdgeXMLReader&>(*pEdgeReader());
}

int QxDGraphManagerXMLReader::isHidden(const QxDOMElement& element) const {
    return m_complexity != nullptr && m_complexity->isHidden(element) ? 1 : 0;
}

void QxDGraphManagerXMLReader::processDOMElement(const QxDOMElement& top) {
    if (pGraphManager()->levelNumber() < 2) {
        QxGraphManagerXMLReader::processDOMElement(top);
        return;
    }
    QxDGraphManager& manager = *pDGraphManager();
    QxDGraph* const formerAnchor = manager.pAnchorGraph();
    {
        const qx::internal::Silence silent(manager);
        // They would follow each step; what they come to is in the document.
        const auto metaEdges = qx::internal::suspend(
            [&](auto... value) { return manager.updatesMetaEdges(value...); });
        manager.disableQuadTreeUpdates(1);
        {
            const auto reading = qx::internal::suspend(
                [&](auto... value) { return manager.isReading(value...); }, 1);
            readDrawing(top);
        }
        manager.disableQuadTreeUpdates(0);
        manager.updateQuadTrees();
    }
    if (const QxDOMElement* instances = Utilities::pChild(top, names::Instances)) {
        restoreSwitches(*instances);
    }
    QxDGraph* const anchor = manager.pAnchorGraph();
    if (anchor != formerAnchor) {
        qx::internal::fireDrawingChange(manager, AnchorGraphChanged, [&] {
            return new QxDrawingChangeEventData(&manager, formerAnchor, anchor);
        });
    }
}

/// The steps, while everything that would follow them rests.
void QxDGraphManagerXMLReader::readDrawing(const QxDOMElement& top) {
    const QxDOMElement* const instances = Utilities::pChild(top, names::Instances);
    m_complexity = std::make_unique<ComplexityReading>(
        *this, instances != nullptr ? Utilities::pChild(*instances, names::Complexity) : nullptr);
    if (const QxDOMElement* resources = Utilities::pChild(top, names::Resources)) {
        processResources(*resources);
    }
    QxGraphManagerXMLReader::processDOMElement(top);
    if (instances != nullptr) {
        noteElements();
        setRootGraph(*instances);
        m_complexity->process();
        finishGraphs();
    }
    if (pDGraphManager()->numberOfGraphs() == 0) {
        pDGraphManager()->addGraph(0);
    }
}

// --- Shapes

void QxDGraphManagerXMLReader::processResources(const QxDOMElement& resources) {
    if (const QxDOMElement* shapes = Utilities::pChild(resources, names::Shapes)) {
        processShapes(*shapes);
    }
}

void QxDGraphManagerXMLReader::processShapes(const QxDOMElement& shapes) {
    m_shapes.clear();
    for (const QxDOMElement* child = Utilities::pFirst(shapes); child != nullptr;
         child = Utilities::pNext(*child)) {
        processShape(*child);
    }
}

void QxDGraphManagerXMLReader::processShape(const QxDOMElement& element) {
    if (auto shape = QxDXMLHelper::pParseShapeDefinition(element)) {
        registerObject(element, shape.get());
        m_shapes.push_back(std::move(shape));
    }
}

// --- Graphs

void QxDGraphManagerXMLReader::preReadGraph(QxGraph* graph) {
    QxGraphManagerXMLReader::preReadGraph(graph);
    if (graph->levelNumber() >= 2) {
        static_cast<QxDGraph*>(graph)->disableGraphBounds(1, 1);
    }
}

void QxDGraphManagerXMLReader::postReadGraph(QxGraph* graph) {
    if (graph->levelNumber() < 2) {
        QxGraphManagerXMLReader::postReadGraph(graph);
    } else if (graph->isIntergraph() == 0) {
        static_cast<QxDGraph*>(graph)->disableGraphBounds(0, 1);
    }
}

void QxDGraphManagerXMLReader::processChildGraphs() {
    if (m_complexity == nullptr) {
        QxGraphManagerXMLReader::processChildGraphs();
        return;
    }
    std::unordered_map<std::u16string_view, const ChildGraphElement*> byId;
    for (const ChildGraphElement& element : childGraphElements()) {
        byId.emplace(Utilities::attribute(*element.relation, names::Id), &element);
    }
    for (const QxDOMElement* relation : m_complexity->relations()) {
        const auto found = byId.find(Utilities::attribute(*relation, names::ChildGraphRelation));
        if (found != byId.end() && found->second != nullptr) {
            nestChildGraph(*found->second);
            found->second = nullptr;
        }
    }
    for (const ChildGraphElement& element : childGraphElements()) {
        const auto found = byId.find(Utilities::attribute(*element.relation, names::Id));
        if (found != byId.end() && found->second == &element) {
            nestChildGraph(element);
        }
    }
}

void QxDGraphManagerXMLReader::noteElements() {
    for (const auto& [graph, element] : graphElements()) {
        m_elements.emplace(graph, element);
    }
    for (const ChildGraphElement& element : childGraphElements()) {
        if (const QxObject* member = pObject(Utilities::attribute(*element.member, names::Id))) {
            m_elements.emplace(member, element.member);
        }
    }
}

const QxDOMElement* QxDGraphManagerXMLReader::pElementOf(const QxObject& object) const {
    const auto found = m_elements.find(&object);
    return found != m_elements.end() ? found->second : nullptr;
}

QxTransform QxDGraphManagerXMLReader::transformOf(const QxDGraph& graph) const {
    const QxDOMElement* const element = pElementOf(graph);
    const QxDOMElement* const more = element != nullptr ? QxXMLHelper::pMore(*element) : nullptr;
    const QxDOMElement* const transform =
        more != nullptr ? Utilities::pChild(*more, names::Transform) : nullptr;
    return transform != nullptr ? qx::internal::parseTransform(*transform) : QxTransform();
}

void QxDGraphManagerXMLReader::setRootGraph(const QxDOMElement& instances) {
    const QxDOMElement* const element = Utilities::pChild(instances, names::RootGraph);
    auto* const root =
        element != nullptr
            ? static_cast<QxDGraph*>(pElementObject(*element, names::Value, ElementKind::Graph))
            : nullptr;
    const QxDOMElement* const more = QxXMLHelper::pMore(instances);
    if (root != nullptr) {
        pDGraphManager()->pAnchorGraph(root);
    } else if (more != nullptr &&
               Utilities::parseBooleanValue(*more, names::NoRootGraph).value_or(0) != 0) {
        pDGraphManager()->pAnchorGraph(nullptr);
    }
}

/// Where everything lies is known now: what depends on it follows.
void QxDGraphManagerXMLReader::finishGraphs() {
    QxDGraphManager& manager = *pDGraphManager();
    for (const auto& [graph, element] : graphElements()) {
        auto& one = static_cast<QxDGraph&>(*graph);
        const QxTransform transform = transformOf(one);
        if (one.nested() == 0 && !(transform == QxTransform())) {
            *one.pChangeableTransform() = transform;
        }
    }
    drawingEdgeReader().finish();
    for (const auto& [graph, element] : graphElements()) {
        restoreEdgeOrder(*element);
    }
    for (auto one = graphElements().rbegin(); one != graphElements().rend(); ++one) {
        auto* const graph = static_cast<QxDGraph*>(one->first);
        graph->fileReadRunning(0);
        graph->disableGraphBounds(0, 1);
    }
    manager.calculateGraphBounds();
    for (const auto& [graph, element] : graphElements()) {
        const QxDOMElement* const more = QxXMLHelper::pMore(*element);
        if (more != nullptr &&
            Utilities::parseBooleanValue(*more, names::BoundsOff).value_or(0) != 0) {
            static_cast<QxDGraph*>(graph)->needsUpdateGraphBounds(0);
        }
    }
}

// --- What only our own documents have

void QxDGraphManagerXMLReader::restoreEdgeOrder(const QxDOMElement& graphElement) {
    for (const QxDOMElement* child = Utilities::pFirst(graphElement); child != nullptr;
         child = Utilities::pNext(*child)) {
        const QxDOMElement* const more =
            Utilities::hasName(*child, names::Node) != 0 ? QxXMLHelper::pMore(*child) : nullptr;
        const QxDOMElement* const order =
            more != nullptr ? Utilities::pChild(*more, names::EdgeOrder) : nullptr;
        auto* const node =
            order != nullptr
                ? static_cast<QxNode*>(pObject(Utilities::attribute(*child, names::Id)))
                : nullptr;
        for (const QxDOMElement* end = node != nullptr ? Utilities::pFirst(*order) : nullptr;
             end != nullptr; end = Utilities::pNext(*end)) {
            if (auto* edge =
                    static_cast<QxEdge*>(pElementObject(*end, names::Id, ElementKind::Edge))) {
                const bool atTarget = Utilities::hasName(*end, names::Incoming) != 0 ||
                                      Utilities::parseBoolean(*end, names::Target).value_or(0);
                node->moveEndToBack(edge, atTarget ? 1 : 0);
            }
        }
    }
}

void QxDGraphManagerXMLReader::restoreSwitches(const QxDOMElement& instances) {
    const QxDOMElement* const more = QxXMLHelper::pMore(instances);
    if (more == nullptr) {
        return;
    }
    QxDGraphManager& manager = *pDGraphManager();
    if (const auto value = Utilities::parseBooleanValue(*more, names::CompressMetaEdges)) {
        manager.compressMetaEdges(*value);
    }
    if (const auto value =
            Utilities::parseBooleanValue(*more, names::ReflexiveMetaEdgeReplacement)) {
        manager.reflexiveMetaEdgeReplacement(*value);
    }
    if (const auto value =
            Utilities::parseBooleanValue(*more, names::IgnoreConnectorsForMetaEdges)) {
        manager.ignoreConnectorsForMetaEdges(*value);
    }
    if (const auto value = Utilities::parseBooleanValue(*more, names::UpdatesMetaEdges)) {
        manager.updatesMetaEdges(*value);
    }
}

void QxDGraphManagerXMLReader::processNestingRelation(QxDNode& node, const QxDOMElement& element) {
    QxDGraph* const graph = node.pChildGraph();
    if (graph == nullptr || node.expanded() != 0) {
        return;
    }
    if (const QxDOMElement* margins = Utilities::pChild(element, names::NestedMargins)) {
        qx::internal::setNestedMargins(
            *graph, QxDXMLHelper::parseSpacings(*margins, qx::internal::nestedMarginsOf(*graph)));
    }
    if (Utilities::parseBooleanValue(element, names::Expanded).value_or(0) != 0 &&
        node.expand() == 0) {
        repair(element, "the node cannot be expanded; it stays collapsed");
    }
}
