// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "qx/drawing/QxDrawingDLists.h"
#include "qx/xml/QxXMLUtilities.h"

class QxDGraphManagerXMLReader;

namespace qx::internal {

/// What a document says besides graphs, nodes and edges: what is hidden, what is expanded, which
/// nodes are folders and which edges stand for others.
///
/// Hidden expanded nodes are expanded before they are hidden, all others afterwards: nothing
/// expands in a hide graph. Nodes are expanded from the outside inward, as visibility goes, and get
/// their size and the place of their contents in one pass from the inside outward: O(objects) at
/// any depth.
class ComplexityReading {
public:
    ComplexityReading(QxDGraphManagerXMLReader& reader, const QxDOMElement* complexity);

    bool isHidden(const QxDOMElement& element) const;
    /// The relations that the section names, in its order.
    const std::vector<const QxDOMElement*>& relations() const { return m_relations; }

    /// All of it, once nodes, edges and child graphs are there.
    void process();
    /// The node's present look and the place of its contents.
    void settle(QxDNode& node, const QxDOMElement& relation);
    const QxDOMElement* pElementOf(const QxDNode& node) const;

private:
    void collectHidden();
    void collectRelations();
    void expandHidden();
    void hide();
    void hideStranded(const std::vector<QxDEdge*>& edges);
    void expandRest();
    void settleAll();
    void processMetaEdges();
    void processFolders();
    template <class Act>
    void eachChild(QxXMLUtilities::Name section, QxXMLUtilities::Name name, const Act& act) const;
    std::vector<QxDGraph*> childGraphs() const;

    QxDGraphManagerXMLReader& m_reader;
    const QxDOMElement* m_complexity;
    std::unordered_set<std::u16string_view> m_hidden;
    std::vector<const QxDOMElement*> m_relations;
    std::unordered_map<const QxDNode*, const QxDOMElement*> m_relationOf;
};

}  // namespace qx::internal
