// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <unordered_map>

#include "qx/foundation/geometry/QxShape.h"
#include "qx/xml/QxGraphManagerXMLReader.h"

class QxDEdge;
class QxDEdgeXMLReader;
class QxDGraph;
class QxDGraphManager;
class QxDNode;
class QxTransform;

namespace qx::internal {
class ComplexityReading;
}

/// Reads a whole drawing. Listeners hear nothing of it but AnchorGraphChanged, when all is done.
///
///     QxDGraphManagerXMLReader reader("plan.qxd");
///     if (reader.read(manager) == 0) { ... reader.messages() ... }
class QX_API QxDGraphManagerXMLReader : public QxGraphManagerXMLReader {
public:
    QxDGraphManagerXMLReader();
    explicit QxDGraphManagerXMLReader(const char* fileName);
    QxDGraphManagerXMLReader(const char* bytes, std::size_t length);
    explicit QxDGraphManagerXMLReader(std::istream* stream);
    ~QxDGraphManagerXMLReader() override;

    /// Whether the document names the object of the element among those that are hidden.
    int isHidden(const QxDOMElement& element) const;

protected:
    void processDOMElement(const QxDOMElement& top) override;
    void preReadGraph(QxGraph* graph) override;
    /// Brings the bounds of the graph up to date; those of its edges between graphs come later.
    void postReadGraph(QxGraph* graph) override;
    /// Nests in the order of the nesting relations, then what these do not name.
    void processChildGraphs() override;
    virtual void processResources(const QxDOMElement& resources);
    /// The spacings of the graph in the node, and, when the relation says so, expands the node. Its
    /// final size comes later, when the graphs within have theirs.
    virtual void processNestingRelation(QxDNode& node, const QxDOMElement& element);

private:
    friend class qx::internal::ComplexityReading;

    QxDGraphManager* pDGraphManager() const;
    void readDrawing(const QxDOMElement& top);
    void installDrawingReaders();
    void processShapes(const QxDOMElement& shapes);
    void processShape(const QxDOMElement& element);
    void noteElements();
    void setRootGraph(const QxDOMElement& instances);
    void finishGraphs();
    void restoreEdgeOrder(const QxDOMElement& element);
    void restoreSwitches(const QxDOMElement& instances);
    QxDEdgeXMLReader& drawingEdgeReader() const;
    const QxDOMElement* pElementOf(const QxObject& object) const;
    QxTransform transformOf(const QxDGraph& graph) const;

    std::unique_ptr<qx::internal::ComplexityReading> m_complexity;
    /// The elements of graphs, and of what has a child graph.
    std::unordered_map<const QxObject*, const QxDOMElement*> m_elements;
    std::vector<std::unique_ptr<QxShape>> m_shapes;
};
