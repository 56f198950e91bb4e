// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxEventManager.h"

class QxComplexityChangeListener;
class QxDrawingChangeListener;
class QxVetoableComplexityChangeListener;
class QxVetoableDrawingChangeListener;

/// The event manager of a drawing factory: drawing changes and complexity changes.
///
/// Listeners register with any object of the drawing and hear of its parts, too: with a graph of
/// its nodes, edges, bends, connectors and labels; with the manager or the factory of all.
/// `typeMask` is a union of event types, by default all. The additions return 1, or 0 for nulls and
/// an empty mask; the removals return 1 when they changed anything.
class QX_API QxDEventManager : public QxEventManager {
public:
    QxDEventManager();
    ~QxDEventManager() override;

    void registerDefaultEventClasses() override;

    /// @name Drawing changes (QxDrawingChangeEventTypeEnum)
    /// @{
    int addDrawingChangeListener(const QxObject* source, QxDrawingChangeListener* listener,
                                 std::int32_t typeMask = -1);
    int addDrawingChangeListener(const QxObject* source, QxVetoableDrawingChangeListener* listener,
                                 std::int32_t typeMask = -1);
    int removeDrawingChangeListener(const QxObject* source, QxEventListener* listener,
                                    std::int32_t typeMask = -1);
    int removeAllDrawingChangeListeners(const QxObject* source, std::int32_t typeMask = -1);
    /// @}

    /// @name Complexity changes (QxComplexityChangeEventTypeEnum)
    /// @{
    int addComplexityChangeListener(const QxObject* source, QxComplexityChangeListener* listener,
                                    std::int32_t typeMask = -1);
    int addComplexityChangeListener(const QxObject* source,
                                    QxVetoableComplexityChangeListener* listener,
                                    std::int32_t typeMask = -1);
    int removeComplexityChangeListener(const QxObject* source, QxEventListener* listener,
                                       std::int32_t typeMask = -1);
    int removeAllComplexityChangeListeners(const QxObject* source, std::int32_t typeMask = -1);
    /// @}

    /// Calls drawingChanged or complexityChanged of a listener of the event's category.
    void fireNotification(QxEventListener* listener, QxEvent* event) override;
    /// Asks vetoDrawingChange or vetoComplexityChange of a listener of the event's category.
    int fireVeto(QxEventListener* listener, QxEvent* event) override;
};
