// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxGraphManagerXMLWriter.h"

#include "qx/foundation/graph/QxChildGraphForest.h"
#include "qx/foundation/graph/QxChildGraphForestEdge.h"
#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxGraphManager.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/xml/QxEdgeXMLWriter.h"
#include "qx/xml/QxGraphXMLWriter.h"
#include "qx/xml/QxNodeXMLWriter.h"
#include "qx/xml/QxXMLHelper.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using qx::internal::each;

QxGraphManagerXMLWriter::QxGraphManagerXMLWriter() {
    install(nullptr, nullptr);
}

QxGraphManagerXMLWriter::QxGraphManagerXMLWriter(const char* fileName)
    : QxTopLevelXMLWriter(fileName) {
    install(nullptr, nullptr);
}

QxGraphManagerXMLWriter::QxGraphManagerXMLWriter(const char* fileName, int useTemplates,
                                                 int indented)
    : QxTopLevelXMLWriter(fileName, useTemplates, indented) {
    install(nullptr, nullptr);
}

QxGraphManagerXMLWriter::QxGraphManagerXMLWriter(std::string* buffer, int useTemplates,
                                                 int indented)
    : QxTopLevelXMLWriter(buffer, useTemplates, indented) {
    install(nullptr, nullptr);
}

QxGraphManagerXMLWriter::QxGraphManagerXMLWriter(std::ostream* stream, int useTemplates,
                                                 int indented)
    : QxTopLevelXMLWriter(stream, useTemplates, indented) {
    install(nullptr, nullptr);
}

QxGraphManagerXMLWriter::~QxGraphManagerXMLWriter() = default;

void QxGraphManagerXMLWriter::install(std::unique_ptr<QxGraphXMLWriter> graphWriter,
                                      std::unique_ptr<QxEdgeXMLWriter> edgeWriter) {
    m_graphWriter =
        graphWriter ? std::move(graphWriter) : std::make_unique<QxGraphXMLWriter>(*this);
    m_edgeWriter = edgeWriter ? std::move(edgeWriter) : std::make_unique<QxEdgeXMLWriter>(*this);
}

int QxGraphManagerXMLWriter::write(const QxGraphManager* manager) {
    if (manager == nullptr) {
        fatalError("there is nothing to write");
        return 0;
    }
    m_manager = manager;
    const int isDone = writeDocument();
    m_manager = nullptr;
    return isDone;
}

int QxGraphManagerXMLWriter::isLeftOut(const QxGraph*) const {
    return 0;
}

void QxGraphManagerXMLWriter::numberObjects() {
    for (const QxGraph* graph : each<QxGraph>(*m_manager->pGraphList())) {
        if (isLeftOut(graph) == 0) {
            pID(graph);
            m_graphWriter->numberObjects(*graph);
        }
    }
    if (const QxGraph* between = m_manager->pQueryIntergraph()) {
        pID(between);
        m_graphWriter->numberObjects(*between);
    }
}

void QxGraphManagerXMLWriter::populateDOMElement(QxDOMElement& top) {
    QxDOMElement& instances = *QxXMLUtilities::pAppendChild(top, names::Instances);
    QxXMLHelper::writeName(*m_manager, instances);
    numberObjects();
    for (const QxGraph* graph : each<QxGraph>(*m_manager->pGraphList())) {
        if (isLeftOut(graph) == 0) {
            writeGraph(*graph, instances, names::Graph);
        }
    }
    if (const QxGraph* between = m_manager->pQueryIntergraph()) {
        writeGraph(*between, instances, names::Intergraph);
    }
    writeMore(instances);
}

void QxGraphManagerXMLWriter::writeMore(QxDOMElement& instances) {
    QxXMLHelper::writeCommonMore(*m_manager, instances);
}

void QxGraphManagerXMLWriter::writeGraph(const QxGraph& graph, QxDOMElement& instances,
                                         QxXMLUtilities::Name name) {
    QxDOMElement& element = *QxXMLUtilities::pAppendChild(instances, name);
    writeID(element, names::Id, &graph);
    QxXMLHelper::writeType(graph, element);
    m_graphWriter->write(graph, element);
}
