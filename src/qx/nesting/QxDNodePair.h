// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxObject.h"

class QxConnector;
class QxDNode;

/// The ends of a meta-edge that is needed: two nodes and, where they are to be used, connectors of
/// these. A pair owns none of them. Setters return their argument.
class QX_API QxDNodePair : public QxObject {
public:
    QxDNodePair() = default;
    QxDNodePair(QxDNode* first, QxDNode* second) : m_firstNode(first), m_secondNode(second) {}
    /// A copy; of null an empty pair.
    explicit QxDNodePair(const QxDNodePair* source);
    QxDNodePair(const QxDNodePair& source, QxDeepFlagEnum) : QxDNodePair(&source) {}

    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;
    QxDNodePair* cloneObject() const { return static_cast<QxDNodePair*>(vCloneObject()); }
    QxDNodePair* cloneAttributes() const { return static_cast<QxDNodePair*>(vCloneAttributes()); }

    /// Nulls all four.
    void init();

    QxDNode* pFirstNode() const { return m_firstNode; }
    QxDNode* pFirstNode(QxDNode* node) { return m_firstNode = node; }
    QxDNode* pSecondNode() const { return m_secondNode; }
    QxDNode* pSecondNode(QxDNode* node) { return m_secondNode = node; }
    QxConnector* pFirstConnector() const { return m_firstConnector; }
    QxConnector* pFirstConnector(QxConnector* connector) { return m_firstConnector = connector; }
    QxConnector* pSecondConnector() const { return m_secondConnector; }
    QxConnector* pSecondConnector(QxConnector* connector) { return m_secondConnector = connector; }

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    QxDNode* m_firstNode = nullptr;
    QxDNode* m_secondNode = nullptr;
    QxConnector* m_firstConnector = nullptr;
    QxConnector* m_secondConnector = nullptr;
};
