// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/events/QxDrawingChangeEventData.h"

#include "qx/foundation/graph/QxGraphObject.h"

namespace {

constexpr std::int32_t Insertions = LabelInserted | BendAdded | ConnectorInserted;
constexpr std::int32_t Removals = LabelRemoved | PathNodeRemoved | ConnectorRemoved;
constexpr std::int32_t Discards = LabelDiscarded | PathNodeDiscarded | ConnectorDiscarded;
constexpr std::int32_t Renamings = ConnectorNameChanged | LabelTextChanged;
constexpr std::int32_t Moves = NodeMoved | LabelOffsetChanged | PathNodeMoved | ConnectorMoved;
constexpr std::int32_t Resizes = NodeResized | LabelResized | ConnectorResized;
constexpr std::int32_t ShapeChanges = NodeShapeChanged | ConnectorShapeChanged;

template <class T>
std::optional<T> copyOf(const T* value) {
    return value != nullptr ? std::optional<T>(*value) : std::nullopt;
}

std::optional<std::wstring> copyOf(const wchar_t* string) {
    return string != nullptr ? std::optional<std::wstring>(string) : std::nullopt;
}

template <class T>
const T* pointerTo(const std::optional<T>& value) {
    return value.has_value() ? &*value : nullptr;
}

const wchar_t* pointerTo(const std::optional<std::wstring>& string) {
    return string.has_value() ? string->c_str() : nullptr;
}

}  // namespace

QxDrawingChangeEventData::QxDrawingChangeEventData(QxGraphObject* source)
    : QxSingleEventData(source) {}

QxDrawingChangeEventData::QxDrawingChangeEventData(QxGraphObject* source, QxGraphObject* oldObject,
                                                   QxGraphObject* newObject)
    : QxSingleEventData(source), m_oldObject(oldObject), m_newObject(newObject) {}

QxDrawingChangeEventData::QxDrawingChangeEventData(QxGraphObject* source, const QxRect* oldBounds,
                                                   const QxRect* newBounds)
    : QxSingleEventData(source), m_oldBounds(copyOf(oldBounds)), m_newBounds(copyOf(newBounds)) {}

QxDrawingChangeEventData::QxDrawingChangeEventData(QxGraphObject* source, const QxShape* newShape,
                                                   QxObject* shapeOwner)
    : QxSingleEventData(source), m_newShape(newShape), m_shapeOwner(shapeOwner) {}

QxDrawingChangeEventData::QxDrawingChangeEventData(QxGraphObject* source, const wchar_t* oldName,
                                                   const wchar_t* newName)
    : QxSingleEventData(source), m_oldName(copyOf(oldName)), m_newName(copyOf(newName)) {}

QxDrawingChangeEventData::QxDrawingChangeEventData(const QxDrawingChangeEventData& source,
                                                   QxDeepFlagEnum deep)
    : QxSingleEventData(source, deep) {
    copyMeaningfulFields(source);
}

QxDrawingChangeEventData& QxDrawingChangeEventData::operator=(
    const QxDrawingChangeEventData& source) {
    copyObject(&source);
    return *this;
}

void QxDrawingChangeEventData::copyObject(const QxObject* source) {
    copyAttributes(source);
}

void QxDrawingChangeEventData::copyAttributes(const QxObject* source) {
    const auto* data = dynamic_cast<const QxDrawingChangeEventData*>(source);
    if (data != nullptr && data != this) {
        QxSingleEventData::copyAttributes(data);
        copyMeaningfulFields(*data);
    }
}

void QxDrawingChangeEventData::copyMeaningfulFields(const QxDrawingChangeEventData& source) {
    pOldObject(source.pOldObject());
    pNewObject(source.pNewObject());
    m_newShape = source.pNewShape();
    m_shapeOwner = m_newShape != nullptr ? source.m_shapeOwner : nullptr;
    m_oldName = copyOf(source.pOldNameString());
    m_newName = copyOf(source.pNewNameString());
    pOldBounds(source.pOldBounds());
    pNewBounds(source.pNewBounds());
}

const QxRect* QxDrawingChangeEventData::pOldBounds() const {
    return isOfType(Moves | Resizes | GraphBoundsChanged) ? pointerTo(m_oldBounds) : nullptr;
}

const QxRect* QxDrawingChangeEventData::pNewBounds() const {
    return isOfType(Moves | Resizes | GraphBoundsChanged) ? pointerTo(m_newBounds) : nullptr;
}

void QxDrawingChangeEventData::pOldBounds(const QxRect* bounds) {
    m_oldBounds = copyOf(bounds);
}

void QxDrawingChangeEventData::pNewBounds(const QxRect* bounds) {
    m_newBounds = copyOf(bounds);
}

QxPoint QxDrawingChangeEventData::oldCenter() const {
    return isOfType(Moves) && m_oldBounds ? m_oldBounds->center() : QxPoint();
}

QxPoint QxDrawingChangeEventData::newCenter() const {
    return isOfType(Moves) && m_newBounds ? m_newBounds->center() : QxPoint();
}

QxSize QxDrawingChangeEventData::oldSize() const {
    return isOfType(Resizes) && m_oldBounds ? m_oldBounds->size() : QxSize();
}

QxSize QxDrawingChangeEventData::newSize() const {
    return isOfType(Resizes) && m_newBounds ? m_newBounds->size() : QxSize();
}

const QxShape* QxDrawingChangeEventData::pNewShape() const {
    return isOfType(ShapeChanges) ? m_newShape : nullptr;
}

const wchar_t* QxDrawingChangeEventData::pOldNameString() const {
    return isOfType(Renamings) ? pointerTo(m_oldName) : nullptr;
}

const wchar_t* QxDrawingChangeEventData::pNewNameString() const {
    return isOfType(Renamings) ? pointerTo(m_newName) : nullptr;
}

QxObject* QxDrawingChangeEventData::pFormerParentEventSource() const {
    return pOldOwner();
}

QxGraphObject* QxDrawingChangeEventData::pSourceObject() const {
    return static_cast<QxGraphObject*>(pSource());
}

QxGraphObject* QxDrawingChangeEventData::pOldOwner() const {
    return isOfType(Removals | Discards) ? m_oldObject : nullptr;
}

QxGraphObject* QxDrawingChangeEventData::pNewOwner() const {
    return isOfType(Insertions) ? m_newObject : nullptr;
}

void QxDrawingChangeEventData::appendNamedObjects(std::vector<QxObject*>& objects) const {
    QxSingleEventData::appendNamedObjects(objects);
    objects.insert(objects.end(), {m_oldObject, m_newObject, m_shapeOwner});
}

QxObject* QxDrawingChangeEventData::vCloneObject() const {
    return new QxDrawingChangeEventData(*this, QxDeepCopy);
}

QxObject* QxDrawingChangeEventData::vCloneAttributes() const {
    return new QxDrawingChangeEventData(*this, QxAttributeCopy);
}
