// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDrawingDLists.h"
#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/geometry/QxSize.h"

class QxLabelManager;

template <class Label>
struct QxLabelListOf;
template <>
struct QxLabelListOf<QxNodeLabel> {
    using Type = QxNodeLabelDList;
};
template <>
struct QxLabelListOf<QxEdgeLabel> {
    using Type = QxEdgeLabelDList;
};
template <>
struct QxLabelListOf<QxConnectorLabel> {
    using Type = QxConnectorLabelDList;
};
template <>
struct QxLabelListOf<QxGraphLabel> {
    using Type = QxGraphLabelDList;
};

/// What nodes, edges, connectors and graphs do with their labels. The public operations run the
/// owner's virtual steps of the same names; the protected ones are what these steps do unless a
/// subclass of the owner changes them. Without fields of its own.
template <class Owner, class Label>
class QX_API QxLabelOwnerOf {
public:
    using LabelList = typename QxLabelListOf<Label>::Type;

    /// A new label of 40 by 20, placed beside those that the owner has already; `name` may be null,
    /// `flag` is passed to the factory. Fires LabelInserted. Null without a factory, or when a
    /// listener has taken the label away again.
    Label* addLabel(const wchar_t* name, int flag);
    /// The same at a place and with a size, in anchor coordinates when `inOwnGraph` is 0.
    Label* addLabelWithCoordinates(const QxPoint& center, const QxSize& size, int inOwnGraph,
                                   const wchar_t* name, int flag);
    Label* addLabelWithCoordinates(std::int32_t x, std::int32_t y, std::int32_t width,
                                   std::int32_t height, int inOwnGraph, const wchar_t* name,
                                   int flag) {
        return addLabelWithCoordinates(QxPoint(x, y), QxSize(width, height), inOwnGraph, name,
                                       flag);
    }
    /// Appends a label that is in no list; it belongs to this owner from then on. Fires
    /// LabelInserted. Returns the label; null, and no change, for null and a label in some list.
    Label* insertLabel(Label* label);
    /// Takes a label out, which the caller then owns. Fires LabelRemoved. Null, and no change, for
    /// null and a label of another owner; null, too, when a listener has inserted it again.
    Label* removeLabel(Label* label);
    /// Removes and destroys a label of this owner. Fires LabelDiscarded. 1, or 0 when refused.
    int discardLabel(Label* label);
    /// Discards all labels of this owner.
    void discardAllLabels();

    /// The labels in the order of their insertion; null when there are none.
    const LabelList* pLabelList() const;
    std::int32_t numberOfLabels() const;
    int hasLabels() const { return numberOfLabels() > 0 ? 1 : 0; }
    /// What keeps the labels; the first makes it.
    QxLabelManager* pLabelManager();
    QxLabelManager* pQueryLabelManager() const;
    /// The copy of the label that its scratch field links it to; a new attribute copy, linked
    /// there, when there is none. Null for null.
    Label* getClonedLabel(Label* label) const;

protected:
    QxLabelOwnerOf() = default;
    QxLabelOwnerOf(const QxLabelOwnerOf&) = default;
    QxLabelOwnerOf& operator=(const QxLabelOwnerOf&) = default;
    ~QxLabelOwnerOf() = default;

    Label* addPlacedLabel(const wchar_t* name, int flag);
    Label* linkLabel(Label* label);
    Label* unlinkLabel(Label* label);
    int destroyLabel(Label* label);
    /// Inserts copies of the labels of `source`, linked by their scratch fields.
    void duplicateLabelsOf(const Owner& source);
    /// Destroys the labels of an owner that goes itself, without a word to anybody.
    void dropLabels();
    /// Makes a label of this owner a copy of `source`: out of the list and in again at its place.
    void copyIntoLabel(Label& label, const Label& source, int deep);
    int labelUserFieldsInUse(bool internal) const;
    void nullLabelUserFields(bool internal);
    void debugOutputOwnLabels(int depth) const;
    /// 1, or 0 after describing what is wrong with the labels.
    int checkOwnLabels() const;

private:
    friend Label;

    Owner& self() { return static_cast<Owner&>(*this); }
    const Owner& self() const { return static_cast<const Owner&>(*this); }
    Label* newNamedLabel(const wchar_t* name, int flag);
    Label* insertNew(Label* label);
    bool owns(const Label& label) const;
};
