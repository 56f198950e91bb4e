// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxSize.h"
#include "qx/foundation/util/QxObject.h"

class QxDGraphManager;
class QxDNode;
class QxOwnedObject;
class QxShape;
class QxShapeResource;

/// What an expanded node remembers: the look it exchanges with the present one when it collapses,
/// and which sides of its view area the nested drawing touches.
class QX_API QxExpandedNodeExtension : public QxObject {
public:
    /// Takes the present size and original size of `node` as those to come back to. With a null
    /// node it belongs to the manager and remembers nothing.
    QxExpandedNodeExtension(QxDNode* node, QxDGraphManager* manager);
    QxExpandedNodeExtension(const QxExpandedNodeExtension& source, QxDeepFlagEnum depth);
    QxExpandedNodeExtension& operator=(const QxExpandedNodeExtension& source);
    ~QxExpandedNodeExtension() override;

    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;
    QxExpandedNodeExtension* cloneObject() const {
        return static_cast<QxExpandedNodeExtension*>(vCloneObject());
    }
    QxExpandedNodeExtension* cloneAttributes() const {
        return static_cast<QxExpandedNodeExtension*>(vCloneAttributes());
    }
    /// Takes over everything but the owner and the touches flags, which the next fit finds anew.
    void copyCommon(const QxExpandedNodeExtension& source);

    /// Exchanges size, original size, shape and clipping of the node with those kept here, so that
    /// a second call undoes the first. The shape comes before the size when `shapeFirst` is
    /// nonzero; connectors follow when `adjustConnectors` is.
    virtual void exchangeContents(int adjustConnectors, int shapeFirst);

    /// The expanded node; null for an extension that belongs to a manager.
    QxDNode* pExpandedNode() const { return m_node; }
    QxDGraphManager* pOwnerGraphManager() const;

    /// @name What the next exchange gives the node; setters return their argument
    /// @{
    int preExpandForceClipping() const { return m_preExpandForceClipping ? 1 : 0; }
    int preExpandForceClipping(int value) {
        m_preExpandForceClipping = value != 0;
        return preExpandForceClipping();
    }
    const QxSize* pPreExpandSize() const { return &m_preExpandSize; }
    const QxSize* pPreExpandSize(const QxSize* size);
    const QxSize* pPreExpandOriginalSize() const { return &m_preExpandOriginalSize; }
    const QxSize* pPreExpandOriginalSize(const QxSize* size);
    /// The shape; null when none has been needed. The setter takes a copy (null: a rectangle) into
    /// the node's database of shapes, where equal shapes are shared.
    const QxShape* pPreExpandShape() const;
    const QxShape* pPreExpandShape(const QxShape* shape);
    /// The shared resource that holds the shape; the extension holds one reference to it.
    QxShapeResource* pShapeResource() const { return m_shapeResource; }
    /// @}

    /// For clients; the library only keeps it. 1 at first.
    double aspectRatio() const { return m_aspectRatio; }
    double aspectRatio(double value) { return m_aspectRatio = value; }

    /// @name Whether the nested drawing touches a side of the view area; 1 at first
    /// A fit lets a touching side follow the drawing inward, too. Setters return what they stored.
    /// @{
    int touchesNestedGraphOnLeft() const { return m_touchesLeft; }
    int touchesNestedGraphOnLeft(int value) { return m_touchesLeft = value != 0 ? 1 : 0; }
    int touchesNestedGraphOnRight() const { return m_touchesRight; }
    int touchesNestedGraphOnRight(int value) { return m_touchesRight = value != 0 ? 1 : 0; }
    int touchesNestedGraphOnBottom() const { return m_touchesBottom; }
    int touchesNestedGraphOnBottom(int value) { return m_touchesBottom = value != 0 ? 1 : 0; }
    int touchesNestedGraphOnTop() const { return m_touchesTop; }
    int touchesNestedGraphOnTop(int value) { return m_touchesTop = value != 0 ? 1 : 0; }
    /// @}

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    void exchangeSizes(int adjustConnectors);
    void exchangeShapes(int adjustConnectors);
    void initShapeResource();
    void releaseShapeResource();

    QxDNode* m_node;
    QxDGraphManager* m_manager;
    QxSize m_preExpandSize;
    QxSize m_preExpandOriginalSize;
    QxShapeResource* m_shapeResource = nullptr;
    double m_aspectRatio = 1.0;
    bool m_preExpandForceClipping = true;
    std::int32_t m_touchesLeft = 1;
    std::int32_t m_touchesRight = 1;
    std::int32_t m_touchesBottom = 1;
    std::int32_t m_touchesTop = 1;
};
