// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxGraphManagerXMLWriter.h"

class QxDGraph;
class QxDGraphManager;
class QxDNode;
class QxShape;

/// Writes a whole drawing: what QxGraphManagerXMLWriter does, the shapes that objects share, the
/// nesting with what is expanded, meta-edges, hidden objects, folders, and the root graph.
///
///     QxDGraphManagerXMLWriter("plan.qxd").write(manager);
class QX_API QxDGraphManagerXMLWriter : public QxGraphManagerXMLWriter {
public:
    QxDGraphManagerXMLWriter();
    explicit QxDGraphManagerXMLWriter(const char* fileName);
    QxDGraphManagerXMLWriter(const char* fileName, int useTemplates, int indented);
    QxDGraphManagerXMLWriter(std::string* buffer, int useTemplates, int indented);
    QxDGraphManagerXMLWriter(std::ostream* stream, int useTemplates, int indented);
    ~QxDGraphManagerXMLWriter() override;

protected:
    void populateDOMElement(QxDOMElement& top) override;
    int isLeftOut(const QxGraph* graph) const override;
    void numberObjects() override;
    void writeMore(QxDOMElement& instances) override;
    virtual void createResources(QxDOMElement& resources);
    virtual void createComplexity(QxDOMElement& complexity);
    /// Fills the element of the relation that nests a graph in the node.
    virtual void createNestingRelation(const QxDNode& node, QxDOMElement& relation);

private:
    const QxDGraphManager* pDGraphManager() const;
    void installDrawingWriters();
    void collectShapes();
    void createShapes(QxDOMElement& resources);
    void createNestingRelations(QxDOMElement& complexity);
    void createCalculatedMargins(const QxDNode& node, QxDOMElement& relation);
    void createMetaEdges(QxDOMElement& complexity);
    void createIdleMetaEdges(const QxDGraph& graph, QxDOMElement& section);
    void createHiddenObjects(QxDOMElement& complexity);
    void createHiddenObject(const QxObject& object, QxDOMElement& list);
    void createFolderNodes(QxDOMElement& complexity);

    std::vector<const QxShape*> m_shapes;
};
