// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "qx/foundation/util/QxObject.h"

class QxEvent;
class QxEventListener;

namespace qx::internal {
struct EventDelivery;
struct EventGroup;
class EventRegistry;
}  // namespace qx::internal

/// Brings events from the objects they are about to the listeners that asked for them.
///
/// A listener registers for the events of one source, of one category, whose type is in a mask. It
/// hears the parts of the source, too: an event goes to the listeners of its source, then to those
/// of the source's pParentEventSource, and so on to the end of that way; to each listener once,
/// however often it stands there. At one object, listeners are told in the order of registration.
/// Cost: the length of the way plus the number of listeners registered along it. A listener is
/// added or removed in O(1), plus, when events wait or are being told, the number of those calls.
///
/// Switches are off at 0 and on at any other value; they answer, as their setters do, 0 or 1.
///
/// Events are told at once, after the change and inside the call that made it. Vetoable listeners
/// are asked first, in the order of registration, until one answers nonzero.
///
/// A listener may do anything from inside a call: add and remove listeners, itself too, change the
/// model (the events of that are told before the call returns), discard the source (everything an
/// event names stays alive until all have heard it). A listener that has been removed or destroyed
/// is not called any more; one that has been added hears the next event.
class QX_API QxBaseEventManager : public QxObject {
public:
    QxBaseEventManager();
    QxBaseEventManager(const QxBaseEventManager&) = delete;
    QxBaseEventManager& operator=(const QxBaseEventManager&) = delete;
    /// Forgets what an open batch holds, and all listeners, which stay their owners'.
    ~QxBaseEventManager() override;

    /// @name Categories of events
    /// @{
    /// Registers the categories of this class of managers; called once, before the first use.
    virtual void registerDefaultEventClasses();
    /// Admits events of a category from 0 to 31; 0 for other values, else 1.
    int registerEventClass(std::int32_t category);
    /// @}

    /// @name Listeners
    /// `typeMask` is a union of event types, -1 for all. Nulls and categories that are not
    /// registered are refused with 0.
    /// @{
    /// Lets the listener hear the types in the mask, besides those that it hears there already.
    /// The listener is not owned. Returns 1.
    int addListener(const QxObject* source, QxEventListener* listener, std::int32_t typeMask,
                    std::int32_t category);
    /// Takes the types in the mask away from what the listener hears at the source; it is gone from
    /// there when none are left. What it has not yet been told of them, in a batch or in a call
    /// that is running, it misses, also when the source has been discarded since. 1 when any of
    /// that changed anything.
    int removeListener(const QxObject* source, const QxEventListener* listener,
                       std::int32_t typeMask, std::int32_t category);
    /// The same for all listeners at the source.
    int removeAllListeners(const QxObject* source, std::int32_t typeMask, std::int32_t category);
    /// To be called before an object that can have listeners is released or destroyed: ends all
    /// registrations at it. Events about it that wait in a batch are told when that ends; they
    /// keep the object alive until then.
    void eventSourceDiscarded(const QxObject* source);
    /// @}

    /// @name Firing
    /// @{
    /// Whether anybody at all asked for such an event and events are fired: when not, there is no
    /// need to build it. A few instructions.
    int hears(std::int32_t category, std::int32_t type) const noexcept {
        const auto index = static_cast<std::uint32_t>(category);
        return m_firesEvents && index < m_heard.size() &&
                       (m_heard[index] & static_cast<std::uint32_t>(type)) != 0
                   ? 1
                   : 0;
    }
    /// Tells the event to everyone who is to hear it, or adds it to the open batch. The manager
    /// takes over the caller's reference to the event, whatever becomes of it. `reserved` is 0.
    /// Returns 1, also when nobody listens; 0 when the event was vetoed, events are not fired, the
    /// event is null or its category is not registered.
    int fireEvent(QxEvent* event, int reserved);
    /// Whether listeners are being told of something just now.
    int isTelling() const noexcept { return m_running != nullptr ? 1 : 0; }
    /// Whether events are fired; initially 1. While they are not, events are lost, not queued.
    int fireEvents() const noexcept { return m_firesEvents ? 1 : 0; }
    int fireEvents(int value) noexcept {
        m_firesEvents = value != 0;
        return fireEvents();
    }
    /// @}

    /// @name Coalescing
    /// With coalescing on, the events fired while a batch is open are told when it ends, and then
    /// each listener gets those that it hears as one group per category, in firing order; lower
    /// categories come first. Vetoable listeners are asked when an event is fired.
    /// @{
    /// Initially 0: batches have no effect. Switching it off tells what the open batch holds.
    int coalesce() const noexcept { return m_coalesces ? 1 : 0; }
    int coalesce(int value);
    /// While nonzero (initially 0), coalescing is suspended: the open batch is told, and further
    /// events are told at once.
    int coalescingDisabled() const noexcept { return m_coalescingDisabled ? 1 : 0; }
    int coalescingDisabled(int value);
    /// Nonzero (initially 0): groups end wherever the category changes, and are told in firing
    /// order, so that events of different categories arrive in the order in which they happened.
    int coalescingPreservesOrder() const noexcept { return m_preservesOrder ? 1 : 0; }
    int coalescingPreservesOrder(int value) noexcept {
        m_preservesOrder = value != 0;
        return coalescingPreservesOrder();
    }
    /// Opens a batch, or another one inside the open one; the outermost counts. Returns the depth.
    int openBatch() noexcept { return ++m_batchDepth; }
    /// Closes the innermost batch; the outermost tells its events. Returns the depth left. Without
    /// an open batch nothing happens.
    int closeBatch();
    /// 1 while events are collected: a batch is open and coalescing is on and not disabled.
    int isCollecting() const noexcept {
        return m_batchDepth > 0 && m_coalesces && !m_coalescingDisabled ? 1 : 0;
    }
    /// @}

    /// Calls the listener with the event, which may be a group. Nothing here: subclasses know the
    /// listener classes of their categories.
    virtual void fireNotification(QxEventListener* listener, QxEvent* event);
    /// Asks the listener; nonzero is a veto. Always 0 here.
    virtual int fireVeto(QxEventListener* listener, QxEvent* event);

private:
    friend class QxEventListener;

    bool isRegistered(std::int32_t category);
    void listenerDestroyed(QxEventListener* listener);
    void refreshHeard(std::int32_t category);
    void refreshAllHeard();
    int removeListeners(const QxObject* source, const QxEventListener* listener,
                        std::int32_t typeMask, std::int32_t category);
    template <class Matches>
    int silence(const Matches& matches);
    void freeRetiredWhenIdle();

    bool isVetoed(qx::internal::EventDelivery& delivery, std::size_t vetoable);
    void tell(qx::internal::EventDelivery& delivery, std::size_t first);
    void tellPending();
    void tellPendingUnlessCollecting();
    void tellGroup(qx::internal::EventDelivery& batch, const qx::internal::EventGroup& group);

    class RunningDelivery;

    std::array<std::uint32_t, 32> m_heard{};
    bool m_firesEvents = true;
    bool m_hasDefaults = false;
    bool m_coalesces = false;
    bool m_coalescingDisabled = false;
    bool m_preservesOrder = false;
    std::uint32_t m_categories = 0;
    int m_batchDepth = 0;
    std::unique_ptr<qx::internal::EventRegistry> m_registry;
    /// What the open batch holds.
    std::unique_ptr<qx::internal::EventDelivery> m_pending;
    /// The deliveries being told now, the innermost first.
    qx::internal::EventDelivery* m_running = nullptr;
};
