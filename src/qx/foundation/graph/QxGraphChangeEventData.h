// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

#include "qx/foundation/graph/QxGraphChangeEventTypeEnum.h"
#include "qx/foundation/util/QxDList.h"
#include "qx/foundation/util/QxSingleEventData.h"

class QxEdge;
class QxGraph;
class QxGraphManager;
class QxGraphObject;
class QxNode;

/// What has changed in the topology, and how things stood before and after. Which fields are
/// meaningful depends on the type; accessors answer null, or a default value, for the others.
///
/// An object that comes in is as it is: its name, and what a graph holds, are for the listener to
/// look up. Everything later is told. An edge that is inserted, or changes its state or an end,
/// goes to the end of the lists of its ends; an insertion that has a former owner is a move of the
/// object with all that it holds, which keeps its relations.
///
/// Pointers name objects of the graph, which are not owned.
class QX_API QxGraphChangeEventData : public QxSingleEventData {
public:
    /// How an object stands at one moment.
    struct Standing {
        QxGraphObject* owner = nullptr;     ///< null while no list of an owner holds it
        QxGraphObject* previous = nullptr;  ///< neighbours in that list; null at its ends
        QxGraphObject* next = nullptr;
        QxNode* source = nullptr;  ///< of an edge
        QxNode* target = nullptr;
        QxEdgeStateEnum state = QxEdgeIsDisconnected;
        QxGraph* childGraph = nullptr;
        std::optional<std::wstring> name{};
    };

    explicit QxGraphChangeEventData(QxGraphObject* source);
    QxGraphChangeEventData(QxGraphObject* source, const Standing& before, const Standing& after);
    /// A list of the source in its new order, which is copied.
    QxGraphChangeEventData(QxGraphObject* source, QxGraphListEnum list, const QxDList& order);
    /// Copies keep all fields, whichever kind of copy is asked for.
    QxGraphChangeEventData(const QxGraphChangeEventData& source, QxDeepFlagEnum deep = QxDeepCopy);
    QxGraphChangeEventData& operator=(const QxGraphChangeEventData& source);

    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;

    QxGraphChangeEventData* cloneObject() const {
        return static_cast<QxGraphChangeEventData*>(vCloneObject());
    }
    QxGraphChangeEventData* cloneAttributes() const {
        return static_cast<QxGraphChangeEventData*>(vCloneAttributes());
    }

    /// @name The source, when it is of that kind
    /// @{
    QxNode* pSourceNode() const;
    QxEdge* pSourceEdge() const;
    QxGraph* pSourceGraph() const;
    QxGraphManager* pSourceGraphManager() const;
    /// @}

    /// @name Insertions, removals and discards: the owner, when it is of that kind
    /// An insertion has an old owner only when the object came from there directly.
    /// @{
    QxGraph* pOldOwnerGraph() const;
    QxGraph* pNewOwnerGraph() const;
    QxGraphManager* pOldOwnerManager() const;
    QxGraphManager* pNewOwnerManager() const;
    /// @}

    /// @name Insertions, removals, discards and changes of an edge's state: neighbours
    /// In the list of nodes or graphs, or of the edges of that state, of the owner; null at the end
    /// of the list, and where the object stood or stands in none.
    /// @{
    QxGraphObject* pOldPrevious() const;
    QxGraphObject* pOldNext() const;
    QxGraphObject* pNewPrevious() const;
    QxGraphObject* pNewNext() const;
    /// @}

    /// @name Edges that came, went or changed their ends: the ends
    /// @{
    QxNode* pOldSourceNode() const;
    QxNode* pOldTargetNode() const;
    QxNode* pNewSourceNode() const;
    QxNode* pNewTargetNode() const;
    /// @}

    /// The states of an edge that came, went or changed its state.
    QxEdgeStateEnum oldEdgeState() const;
    QxEdgeStateEnum newEdgeState() const;

    /// The child graphs before and after ChildGraphChanged.
    QxGraph* pOldChildGraph() const;
    QxGraph* pNewChildGraph() const;

    /// The names before and after NameChanged.
    const wchar_t* pOldNameString() const;
    const wchar_t* pNewNameString() const;

    /// Which list of the source GraphOrderChanged is about, and what it holds now, in order.
    QxGraphListEnum changedList() const;
    const QxDList* pOrder() const;

    /// The former owner after a removal, a discard or a move.
    QxObject* pFormerParentEventSource() const override;

protected:
    void appendNamedObjects(std::vector<QxObject*>& objects) const override;
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    bool isOfType(std::int32_t types) const noexcept { return (type() & types) != 0; }
    const Standing& before(std::int32_t types) const;
    const Standing& after(std::int32_t types) const;

    Standing m_before;
    Standing m_after;
    QxGraphListEnum m_list = QxNoList;
    QxDList m_order;
};
