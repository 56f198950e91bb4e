// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxGraphFlags.h"
#include "qx/foundation/util/QxOwnedObject.h"

class QxEdge;
class QxEventManager;
class QxGraph;
class QxGraphManager;
class QxNode;

/// A factory: the owner at the top of everything it makes.
class QX_API QxUFactory : public QxOwnedObject {
public:
    QxUFactory();
    QxUFactory(const QxUFactory&) = delete;
    QxUFactory& operator=(const QxUFactory&) = delete;

    int isFactory() const override;
};

/// The factory of a graph layer: it makes managers, graphs, nodes and edges of the layer's classes
/// and keeps the one event manager that all of them share.
///
/// A factory and everything it made belong to one thread; distinct factories are independent. It
/// has to outlive what it made.
class QX_API QxAFactory : public QxUFactory {
public:
    ~QxAFactory() override;

protected:
    /// @name Creation slots; the new object is the caller's
    /// @{
    virtual QxGraphManager* vNewGraphManager(QxOwnedObject* owner, int type) = 0;
    virtual QxGraph* vNewGraph(QxOwnedObject* owner, int type) = 0;
    virtual QxNode* vNewNode(QxOwnedObject* owner, int type) = 0;
    virtual QxEdge* vNewEdge(QxOwnedObject* owner, int type) = 0;
    virtual QxGraph* vNewIntergraph(QxOwnedObject* owner, int type) = 0;
    virtual QxEventManager* vNewEventManager() = 0;
    /// @}

public:
    QxGraphManager* newGraphManager(QxOwnedObject* owner, int type) {
        return vNewGraphManager(owner, type);
    }
    QxGraph* newGraph(QxOwnedObject* owner, int type) { return vNewGraph(owner, type); }
    QxNode* newNode(QxOwnedObject* owner, int type) { return vNewNode(owner, type); }
    QxEdge* newEdge(QxOwnedObject* owner, int type) { return vNewEdge(owner, type); }
    QxGraph* newIntergraph(QxOwnedObject* owner, int type) { return vNewIntergraph(owner, type); }

    /// The event manager, made on the first request and owned by the factory.
    QxEventManager* pEventManager();
    /// The event manager, or null while nobody has asked for it: nobody listens then.
    QxEventManager* pQueryEventManager() const { return m_eventManager; }

private:
    QxEventManager* m_eventManager = nullptr;
};
