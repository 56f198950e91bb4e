// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What all labels share. The place of a label is a proportion, an offset and its owner: nothing is
// stored that would have to follow the owner.

#include "qx/drawing/QxLabel.h"

#include <algorithm>
#include <cwchar>
#include <ostream>
#include <string>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Moment.h"
#include "qx/drawing/bounds/internal/ShiftedRect.h"
#include "qx/drawing/internal/AskedCoordinates.h"
#include "qx/drawing/internal/CloneLinks.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/drawing/internal/FreeOwner.h"
#include "qx/drawing/labels/internal/LabelChange.h"
#include "qx/foundation/geometry/QxPerMil.h"
#include "qx/foundation/util/QxDebugStream.h"

using qx::internal::Change;
using qx::internal::LabelExtras;
using qx::internal::Moment;

namespace {

QxSize usableSize(const QxSize& size) {
    return {std::max(size.width(), 0), std::max(size.height(), 0)};
}

}  // namespace

QxLabel::QxLabel(QxOwnedObject* owner) : QxExtendableGraphObject(nullptr), m_ownerCell(this) {
    pOwner(qx::internal::ownerWhileFree(owner));
    setFlag(qx::flags::LabelMovesWithOwner, 1);
}

QxLabel::~QxLabel() {
    qx::internal::endEventSource(*this);
}

int QxLabel::isLabel() const {
    return 1;
}

int QxLabel::levelNumber() const {
    return 2;
}

std::size_t QxLabel::sizeOf() const {
    return QxExtendableGraphObject::sizeOf() + sizeof(QxLabel) - sizeof(QxExtendableGraphObject);
}

int QxLabel::checkInvariants() const {
    if ((m_ownerCell.isLinked() != 0) != (ownerValid() != 0)) {
        qxDebugStream() << "label: just those of an owner are in a list\n";
        return 0;
    }
    if (m_rect.left() > m_rect.right() || m_rect.bottom() > m_rect.top()) {
        qxDebugStream() << "label: the rectangle is inverted\n";
        return 0;
    }
    return QxExtendableGraphObject::checkInvariants();
}

void QxLabel::debugOutput(int depth) const {
    innerDebugOutput(depth);
}

void QxLabel::innerDebugOutput(int depth) const {
    const QxPoint center = ntCenter();
    qxDebugIndent(depth) << "label: center " << center.x() << ' ' << center.y() << ", size "
                         << ntWidth() << ' ' << ntHeight() << ", \"" << m_text.toUtf8() << "\"\n";
}

const QxText* QxLabel::pNameText() const {
    return hasFlag(qx::flags::LabelNamed) != 0 ? &m_text : nullptr;
}

const wchar_t* QxLabel::vSetNameString(const wchar_t* name) {
    const wchar_t* const current = pNameString();
    const bool isSame = name == current ||
                        (name != nullptr && current != nullptr && std::wcscmp(name, current) == 0);
    if (isSame) {
        return current;
    }
    const std::wstring old = m_text.string();
    const bool wasNamed = current != nullptr;
    m_text = QxText(name);
    setFlag(qx::flags::LabelNamed, name != nullptr ? 1 : 0);
    if (wasNamed || !m_text.string().empty()) {
        qx::internal::fireDrawingChange(*this, LabelTextChanged, [&] {
            return new QxDrawingChangeEventData(this, wasNamed ? old.c_str() : nullptr,
                                                pNameString());
        });
    }
    return pNameString();
}

int QxLabel::vIsVisible() const {
    const QxDGraph* graph = pGraph();
    return graph != nullptr ? graph->isVisible() : 0;
}

int QxLabel::adjustOnOwnerOverlap() {
    return 0;
}

QxDEdge* QxLabel::pOwnerEdge() const {
    return nullptr;
}

QxDNode* QxLabel::pOwnerNode() const {
    return nullptr;
}

QxDGraph* QxLabel::pOwnerGraph() const {
    return nullptr;
}

QxConnector* QxLabel::pOwnerConnector() const {
    return nullptr;
}

QxGraphObject* QxLabel::pOwnerGraphObject() const {
    return static_cast<QxGraphObject*>(pValidOwner());
}

QxDGraph* QxLabel::pGraph() const {
    if (const QxDEdge* edge = pOwnerEdge()) {
        return edge->pOwnerGraph();
    }
    if (const QxDNode* node = pOwnerNode()) {
        return node->pOwnerGraph();
    }
    if (const QxConnector* connector = pOwnerConnector()) {
        return connector->pGraph();
    }
    return pOwnerGraph();
}

void QxLabel::actOnChangeOwner(QxOwnedObject* owner, int valid) {
    pOwner(owner);
    ownerValid(valid);
}

qx::internal::GraphObjectExtras* QxLabel::vNewExtras() const {
    return new LabelExtras;
}

const LabelExtras* QxLabel::pQueryLabelExtras() const {
    return static_cast<const LabelExtras*>(pQueryExtras());
}

LabelExtras& QxLabel::labelExtras() {
    return static_cast<LabelExtras&>(extras());
}

QxLabel* QxLabel::pClonedLabel() const {
    const LabelExtras* extras = pQueryLabelExtras();
    return extras != nullptr ? extras->clone : nullptr;
}

QxLabel* QxLabel::pClonedLabel(QxLabel* label) {
    if (label != pClonedLabel()) {
        labelExtras().clone = label;
    }
    return label;
}

// --- Places ---------------------------------------------------------------------------------

bool QxLabel::getOwnerRect(QxRect& rect) const {
    if (const QxDNode* node = pOwnerNode()) {
        node->ntBoundingRect(rect);
        return true;
    }
    if (const QxConnector* connector = pOwnerConnector()) {
        connector->ntBoundingRect(rect);
        return true;
    }
    if (const QxDGraph* graph = pOwnerGraph()) {
        graph->ntUpdatedBoundingRect(rect);
        return true;
    }
    return false;
}

QxPoint QxLabel::referenceAt(Proportion proportion) const {
    QxPoint point;
    if (const QxDEdge* edge = pOwnerEdge()) {
        edge->pointOnEdge(&point, proportion.x);
    } else if (QxRect rect; getOwnerRect(rect)) {
        const QxPerMil perMil(proportion.x, proportion.y);
        point = rect.center() + QxPoint(perMil.getOffsetX(rect), perMil.getOffsetY(rect));
    }
    return point;
}

void QxLabel::ntCenter(QxPoint& center) const {
    center = ntCenter();
}

QxPoint QxLabel::ntCenter() const {
    return {};
}

void QxLabel::ntBoundingRect(QxRect& rect) const {
    rect = qx::internal::shiftedRect(ntCenter(), ntSize());
}

void QxLabel::placeRect(const QxPoint& offset, const QxSize& size) {
    m_rect = qx::internal::shiftedRect(offset, usableSize(size));
}

void QxLabel::placeQuietly(Proportion proportion, const QxPoint& offset) {
    m_proportion = proportion;
    placeRect(offset, m_rect.size());
    qx::internal::Coverage::changed(*this);
}

void QxLabel::place(Proportion proportion, const QxPoint& offset) {
    if (proportion == m_proportion && offset == m_rect.center()) {
        return;
    }
    changeGeometry(LabelOffsetChanged, [&] {
        m_proportion = proportion;
        placeRect(offset, m_rect.size());
    });
}

void QxLabel::vMoveTo(const QxPoint&) {}

void QxLabel::vSetOffset(const QxSize& offset) {
    place(m_proportion, QxPoint(offset.width(), offset.height()));
}

void QxLabel::vResize(const QxSize& size) {
    const QxSize usable = usableSize(size);
    if (!(usable == m_rect.size())) {
        changeGeometry(LabelResized, [&] { placeRect(m_rect.center(), usable); });
    }
}

QxRect QxLabel::boundsToTell() const {
    QxRect rect;
    return getBoundingRect(rect, 0) != 0 ? rect : m_rect;
}

void QxLabel::storeMovedLabel() {
    labelExtras().storedPlace = std::make_unique<LabelExtras::Place>(
        LabelExtras::Place{ntCenter(), m_proportion.x, m_proportion.y, m_rect.center()});
}

const QxPoint* QxLabel::pStoredCenter() const {
    const LabelExtras* extras = pQueryLabelExtras();
    return extras != nullptr && extras->storedPlace ? &extras->storedPlace->center : nullptr;
}

void QxLabel::restoreMovedLabel(int move) {
    const LabelExtras* extras = pQueryLabelExtras();
    if (extras == nullptr || !extras->storedPlace) {
        return;
    }
    const auto stored = std::move(labelExtras().storedPlace);
    const Proportion proportion{stored->proportionX, stored->proportionY};
    if (move == 0) {
        return;
    }
    if (hasFlag(qx::flags::LabelPinned) == 0 &&
        referenceAt(proportion) + stored->offset == stored->center) {
        place(proportion, stored->offset);
    } else {
        vMoveTo(stored->center);
    }
}

// --- Getters and setters --------------------------------------------------------------------

namespace {

/// The setters of place and size: reads the value in the asked-for coordinates, compares, and makes
/// the change.
template <class Value, class Act>
int changeAsked(QxLabel& label, Value value, const Value& current, int inOwnGraph, const Act& act) {
    if (inOwnGraph == 0 && qx::internal::fromAsked(label, value, 0) == 0) {
        return 0;
    }
    if (!(value == current)) {
        Change::run(label, [&] { act(value); });
    }
    return 1;
}

}  // namespace

using qx::internal::giveAsked;

int QxLabel::getCenter(QxPoint& center, int inOwnGraph) const {
    return giveAsked(*this, center, ntCenter(), inOwnGraph);
}

int QxLabel::getSize(QxSize& size, int inOwnGraph) const {
    return giveAsked(*this, size, ntSize(), inOwnGraph);
}

int QxLabel::getOffset(QxSize& offset, int inOwnGraph) const {
    return giveAsked(*this, offset, ntOffset(), inOwnGraph);
}

int QxLabel::getBoundingRect(QxRect& rect, int inOwnGraph) const {
    QxRect own;
    ntBoundingRect(own);
    return giveAsked(*this, rect, own, inOwnGraph);
}

int QxLabel::getUserBoundingRect(QxRect& rect, int inOwnGraph) const {
    return getBoundingRect(rect, inOwnGraph);
}

int QxLabel::moveTo(const QxPoint& center, int inOwnGraph) {
    return changeAsked(*this, center, ntCenter(), inOwnGraph,
                       [this](const QxPoint& place) { vMoveTo(place); });
}

int QxLabel::resize(const QxSize& size, int inOwnGraph) {
    return changeAsked(*this, size, ntSize(), inOwnGraph,
                       [this](const QxSize& extent) { vResize(extent); });
}

int QxLabel::setOffset(const QxSize& offset, int inOwnGraph) {
    return changeAsked(*this, offset, ntOffset(), inOwnGraph,
                       [this](const QxSize& way) { vSetOffset(way); });
}

int QxLabel::move(const QxSize& offset, int inOwnGraph) {
    QxPoint center;
    const int known = getCenter(center, inOwnGraph);
    if (known != 0 && !(offset == QxSize(0, 0))) {
        moveTo(center + QxPoint(offset.width(), offset.height()), inOwnGraph);
    }
    return known;
}

// --- Copies ---------------------------------------------------------------------------------

void QxLabel::copyObject(const QxObject* source) {
    copyAttributes(source);
}

void QxLabel::copyAttributes(const QxObject* source) {
    const auto* object = dynamic_cast<const QxLabel*>(source);
    if (object != nullptr && object != this) {
        const qx::internal::Ref alive(*object);
        Change::run(*this, [&] { copyLabelAttributes(*object); });
    }
}

void QxLabel::copyLabelAttributes(const QxLabel& source) {
    copyName(source);
    const QxDGraph* graph = source.pGraph();
    qx::internal::linkClone(source, *this, graph != nullptr ? graph->pOwnerGraphManager() : nullptr,
                            [](QxLabel& label, QxLabel* clone) { label.pClonedLabel(clone); });
    m_status = source.m_status;
    moveLabelOnOwnerMove(source.moveLabelOnOwnerMove());
    vResize(source.ntSize());
    if (isEdgeLabel() != source.isEdgeLabel()) {
        place(m_proportion, source.m_rect.center());
    } else if (source.hasFlag(qx::flags::LabelPinned) != 0) {
        const auto spot = static_cast<const QxEdgeLabel&>(source).spotAt(source.ntCenter());
        place({spot.perMil, 0}, spot.offset);
    } else {
        place(source.m_proportion, source.m_rect.center());
    }
}

// --- Reports --------------------------------------------------------------------------------

void QxLabel::report(Moment moment, QxGeometricUpdateInfo* info) const {
    if (info == nullptr || info->needsRecursiveUpdate() == 0 || info->pGraph() == nullptr ||
        isGraphLabel() != 0) {
        return;
    }
    const QxDEdge* edge = pOwnerEdge();
    if (edge == nullptr || qx::internal::Coverage::counts(*edge)) {
        QxRect rect;
        ntBoundingRect(rect);
        qx::internal::collect(*info, moment, *this, rect);
    }
}

void QxLabel::actBeforeGeometryChanges(QxGeometricUpdateInfo* info) const {
    report(Moment::BeforeChange, info);
}

void QxLabel::actAfterGeometryChanges(QxGeometricUpdateInfo* info) const {
    report(Moment::AfterChange, info);
}

void QxLabel::actBeforeRemove(QxGeometricUpdateInfo* info) const {
    report(Moment::BeforeRemove, info);
}

void QxLabel::actAfterInsert(QxGeometricUpdateInfo* info) const {
    report(Moment::AfterInsert, info);
}

void QxLabel::actAfterRemove(QxGeometricUpdateInfo*) const {}
