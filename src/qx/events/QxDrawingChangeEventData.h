// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

#include "qx/events/QxDrawingChangeEventTypeEnum.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/util/QxSingleEventData.h"

class QxConnector;
class QxDEdge;
class QxDGraph;
class QxDGraphManager;
class QxDNode;
class QxGNode;
class QxGraphObject;
class QxLabel;
class QxShape;

/// What has changed, and its values before and after. Which fields are meaningful depends on the
/// type; accessors answer null, or a default value, for the others.
///
/// Bounds are in the coordinates of the graph that the source belongs to; those of a label are in
/// the coordinates of the anchor graph, as the label is seen there (while it is not visible, they
/// are its offset and size). Pointers name objects of
/// the drawing, which are not owned.
class QX_API QxDrawingChangeEventData : public QxSingleEventData {
public:
    /// Says no more than which object changed.
    explicit QxDrawingChangeEventData(QxGraphObject* source);
    /// What stood there before and after: an owner, an anchor graph or an end; null for nothing.
    QxDrawingChangeEventData(QxGraphObject* source, QxGraphObject* oldObject,
                             QxGraphObject* newObject);
    /// Copies the rectangles; null stores none.
    QxDrawingChangeEventData(QxGraphObject* source, const QxRect* oldBounds,
                             const QxRect* newBounds);
    /// `shapeOwner`, usually the shape resource, is kept alive together with the named objects
    /// while the event is told; without one the shape has to last by itself.
    QxDrawingChangeEventData(QxGraphObject* source, const QxShape* newShape,
                             QxObject* shapeOwner = nullptr);
    /// Copies the names; null stores none.
    QxDrawingChangeEventData(QxGraphObject* source, const wchar_t* oldName, const wchar_t* newName);
    /// Copies keep what the type makes meaningful, whichever kind of copy is asked for.
    QxDrawingChangeEventData(const QxDrawingChangeEventData& source,
                             QxDeepFlagEnum deep = QxDeepCopy);
    QxDrawingChangeEventData& operator=(const QxDrawingChangeEventData& source);

    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;

    QxDrawingChangeEventData* cloneObject() const {
        return static_cast<QxDrawingChangeEventData*>(vCloneObject());
    }
    QxDrawingChangeEventData* cloneAttributes() const {
        return static_cast<QxDrawingChangeEventData*>(vCloneAttributes());
    }

    /// @name The source, when it is of that kind
    /// A node is a drawing node or a path node.
    /// @{
    QxGNode* pSourceNode() const;
    QxDEdge* pSourceEdge() const;
    QxDGraph* pSourceGraph() const;
    QxDGraphManager* pSourceGraphManager() const;
    QxLabel* pSourceLabel() const;
    QxConnector* pSourceConnector() const;
    /// @}

    /// @name Moves and resizes
    /// Bounds for these and for changed graph bounds, centers for moves, sizes for resizes.
    /// @{
    const QxRect* pOldBounds() const;
    const QxRect* pNewBounds() const;
    void pOldBounds(const QxRect* bounds);
    void pNewBounds(const QxRect* bounds);
    QxPoint oldCenter() const;
    QxPoint newCenter() const;
    QxSize oldSize() const;
    QxSize newSize() const;
    /// @}

    /// The shape after a change of the shape.
    const QxShape* pNewShape() const;
    /// The names before and after a change of the name or the text.
    const wchar_t* pOldNameString() const;
    const wchar_t* pNewNameString() const;

    /// @name Removals and discards: the former owner, when it is of that kind
    /// @{
    QxDGraph* pOldOwnerGraph() const;
    QxDNode* pOldOwnerNode() const;
    QxDEdge* pOldOwnerEdge() const;
    QxConnector* pOldOwnerConnector() const;
    /// @}

    /// @name Insertions: the new owner, when it is of that kind
    /// @{
    QxDGraph* pNewOwnerGraph() const;
    QxDNode* pNewOwnerNode() const;
    QxDEdge* pNewOwnerEdge() const;
    QxConnector* pNewOwnerConnector() const;
    /// @}

    /// The connectors of the end before and after EdgeConnectorChanged.
    QxConnector* pOldEndConnector() const;
    QxConnector* pNewEndConnector() const;
    /// The anchor graphs before and after AnchorGraphChanged.
    QxDGraph* pOldAnchorGraph() const;
    QxDGraph* pNewAnchorGraph() const;

    /// The objects as they were given, whatever the type.
    QxGraphObject* pOldObject() const noexcept { return m_oldObject; }
    QxGraphObject* pNewObject() const noexcept { return m_newObject; }

    /// The former owner after a removal or a discard.
    QxObject* pFormerParentEventSource() const override;

protected:
    void appendNamedObjects(std::vector<QxObject*>& objects) const override;
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    void pOldObject(QxGraphObject* object) noexcept { m_oldObject = object; }
    void pNewObject(QxGraphObject* object) noexcept { m_newObject = object; }

    bool isOfType(std::int32_t types) const noexcept { return (type() & types) != 0; }
    QxGraphObject* pSourceObject() const;
    QxGraphObject* pOldOwner() const;
    QxGraphObject* pNewOwner() const;
    void copyMeaningfulFields(const QxDrawingChangeEventData& source);

    QxGraphObject* m_oldObject = nullptr;
    QxGraphObject* m_newObject = nullptr;
    const QxShape* m_newShape = nullptr;
    QxObject* m_shapeOwner = nullptr;
    std::optional<std::wstring> m_oldName;
    std::optional<std::wstring> m_newName;
    std::optional<QxRect> m_oldBounds;
    std::optional<QxRect> m_newBounds;
};
