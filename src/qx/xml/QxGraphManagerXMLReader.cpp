// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxGraphManagerXMLReader.h"

#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxGraphManager.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/xml/QxEdgeXMLReader.h"
#include "qx/xml/QxGraphXMLReader.h"
#include "qx/xml/QxNodeXMLReader.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/ElementKind.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using qx::internal::ElementKind;

QxGraphManagerXMLReader::QxGraphManagerXMLReader() {
    install(nullptr, nullptr);
}

QxGraphManagerXMLReader::QxGraphManagerXMLReader(const char* fileName)
    : QxTopLevelXMLReader(fileName) {
    install(nullptr, nullptr);
}

QxGraphManagerXMLReader::QxGraphManagerXMLReader(const char* bytes, std::size_t length)
    : QxTopLevelXMLReader(bytes, length) {
    install(nullptr, nullptr);
}

QxGraphManagerXMLReader::QxGraphManagerXMLReader(std::istream* stream)
    : QxTopLevelXMLReader(stream) {
    install(nullptr, nullptr);
}

QxGraphManagerXMLReader::~QxGraphManagerXMLReader() = default;

void QxGraphManagerXMLReader::install(std::unique_ptr<QxGraphXMLReader> graphReader,
                                      std::unique_ptr<QxEdgeXMLReader> edgeReader) {
    m_graphReader =
        graphReader ? std::move(graphReader) : std::make_unique<QxGraphXMLReader>(*this);
    m_edgeReader = edgeReader ? std::move(edgeReader) : std::make_unique<QxEdgeXMLReader>(*this);
}

int QxGraphManagerXMLReader::read(QxGraphManager* manager) {
    if (manager == nullptr) {
        fatalError("there is nothing to read into", 0, 0);
        return 0;
    }
    m_manager = manager;
    m_graphs.clear();
    m_childGraphs.clear();
    const int isDone = readDocument();
    m_manager = nullptr;
    return isDone;
}

void QxGraphManagerXMLReader::processDOMElement(const QxDOMElement& top) {
    const QxDOMElement* const instances = QxXMLUtilities::pChild(top, names::Instances);
    if (instances == nullptr) {
        repair(top, "there is no <instances>; the drawing is empty");
        return;
    }
    QxXMLHelper::parseName(*m_manager, *instances);
    addGraphs(*instances);
    for (const auto& [graph, element] : m_graphs) {
        preReadGraph(graph);
        m_graphReader->read(*graph, *element);
    }
    for (const auto& [graph, element] : m_graphs) {
        m_graphReader->readEdges(*graph, *element);
    }
    processChildGraphs();
    for (const auto& [graph, element] : m_graphs) {
        postReadGraph(graph);
    }
    processMore(*instances);
}

void QxGraphManagerXMLReader::addGraphs(const QxDOMElement& instances) {
    const QxDOMElement* between = nullptr;
    for (const QxDOMElement* child = QxXMLUtilities::pFirst(instances); child != nullptr;
         child = QxXMLUtilities::pNext(*child)) {
        if (QxXMLUtilities::hasName(*child, names::Graph) != 0) {
            if (QxGraph* graph = m_manager->addGraph(QxXMLHelper::parseType(*child))) {
                registerObject(*child, graph);
                m_graphs.emplace_back(graph, child);
            }
        } else if (QxXMLUtilities::hasName(*child, names::Intergraph) != 0) {
            if (between != nullptr) {
                repair(*child, "there is one such graph already; its edges are left out");
            } else {
                between = child;
            }
        }
    }
    if (between != nullptr) {
        QxGraph* const graph = m_manager->pIntergraph();
        registerObject(*between, graph);
        m_graphs.emplace_back(graph, between);
    }
}

void QxGraphManagerXMLReader::preReadGraph(QxGraph* graph) {
    graph->fileReadRunning(1);
}

void QxGraphManagerXMLReader::postReadGraph(QxGraph* graph) {
    graph->fileReadRunning(0);
}

void QxGraphManagerXMLReader::processMore(const QxDOMElement& instances) {
    QxXMLHelper::parseCommonMore(*m_manager, instances);
}

void QxGraphManagerXMLReader::noteChildGraph(const QxDOMElement& member) {
    for (const QxDOMElement* child = QxXMLUtilities::pFirst(member); child != nullptr;
         child = QxXMLUtilities::pNext(*child)) {
        if (QxXMLUtilities::hasName(*child, names::ChildGraph) != 0) {
            m_childGraphs.push_back({&member, child});
        }
    }
}

void QxGraphManagerXMLReader::processChildGraphs() {
    for (const ChildGraphElement& element : m_childGraphs) {
        nestChildGraph(element);
    }
}

void QxGraphManagerXMLReader::nestChildGraph(const ChildGraphElement& element) {
    auto* const member =
        static_cast<QxGraphMember*>(pObject(QxXMLUtilities::attribute(*element.member, names::Id)));
    auto* const graph =
        static_cast<QxGraph*>(pElementObject(*element.relation, names::Value, ElementKind::Graph));
    if (member == nullptr || graph == nullptr) {
        return;
    }
    if (member->pChildGraph() != nullptr || graph->isChildGraph() != 0 ||
        member->pChildGraph(graph) != graph) {
        repair(*element.relation, "the graph is nested already, or lies around; it is left there");
        return;
    }
    registerObject(*element.relation, member);
}
