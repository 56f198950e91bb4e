// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxBaseEventManager.h"

class QxGraphChangeListener;
class QxVetoableGraphChangeListener;

/// The event manager of a factory of graph objects: changes of the graph itself. Layers built on
/// them register the categories of theirs.
///
/// Listeners register with any object and hear of its parts, too: with a graph of its nodes and
/// edges, with the manager or the factory of all. `typeMask` is a union of event types, by default
/// all. The additions return 1, or 0 for nulls and an empty mask; the removals return 1 when they
/// changed anything.
class QX_API QxEventManager : public QxBaseEventManager {
public:
    QxEventManager();
    ~QxEventManager() override;

    void registerDefaultEventClasses() override;

    /// @name Changes of the graph (QxGraphChangeEventTypeEnum)
    /// @{
    int addGraphChangeListener(const QxObject* source, QxGraphChangeListener* listener,
                               std::int32_t typeMask = -1);
    int addGraphChangeListener(const QxObject* source, QxVetoableGraphChangeListener* listener,
                               std::int32_t typeMask = -1);
    int removeGraphChangeListener(const QxObject* source, QxEventListener* listener,
                                  std::int32_t typeMask = -1);
    int removeAllGraphChangeListeners(const QxObject* source, std::int32_t typeMask = -1);
    /// @}

    /// Calls graphChanged of a listener of the event's category.
    void fireNotification(QxEventListener* listener, QxEvent* event) override;
    /// Asks vetoGraphChange of a listener of the event's category.
    int fireVeto(QxEventListener* listener, QxEvent* event) override;
};
