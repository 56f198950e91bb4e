// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDrawingDLists.h"

/// The connectors of a node, specified and calculated ones, in the order of insertion. The node
/// owns the list; the list stands for its node's hold on the connectors.
class QX_API QxConnectorManager : public QxConnectorDList {
public:
    explicit QxConnectorManager(QxDNode* node) noexcept : m_node(node) {}

    /// The step behind the node's insertion: lists the connector and brings the bounds up to date;
    /// the node takes over the caller's reference. Null, and no change, for null, a connector that
    /// a node owns already, and a node other than the manager's.
    QxConnector* insertConnector(QxDNode* node, QxConnector* connector);
    /// The step behind the node's removal: frees the ends of edges that use the connector, then
    /// takes it out; the caller takes over the reference. Null for what the node does not own, and
    /// when a listener has taken the connector out in the middle.
    QxConnector* removeConnector(QxDNode* node, QxConnector* connector);
    /// Unassigns every edge from a connector of the node.
    void freeEnds(QxConnector& connector);

    std::int32_t numberOfConnectors() const { return count(); }
    std::int32_t numberOfSpecifiedConnectors() const { return m_specified; }
    const QxConnectorDList* pConnectorList() const { return this; }

private:
    friend class QxConnector;

    /// Ends the listing of a connector that no edge uses.
    void takeOut(QxConnector& connector);

    QxDNode* m_node;
    std::int32_t m_specified = 0;
};
