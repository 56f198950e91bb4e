// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Life, place and outline of connectors.
//
// A connector knows the ends of edges that are assigned to it, and each such edge its number there;
// so assigning, unassigning and telling the edges cost no search, whatever else hangs on the node.

#include "qx/drawing/QxConnector.h"

#include <ostream>

#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/internal/AskedCoordinates.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/drawing/internal/FreeOwner.h"
#include "qx/drawing/labels/internal/LabelPresence.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/geometry/QxShape.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"

using qx::internal::Change;
using qx::internal::ConnectorExtras;
using qx::internal::Coverage;
using qx::internal::LabelPresence;
using qx::internal::Ref;

static_assert(sizeof(void*) != 8 || sizeof(QxConnector) <= 128, "drawings have many connectors");

QxConnector::QxConnector(QxOwnedObject* owner, int, QxFactory*)
    : QxExtendableGraphObject(qx::internal::ownerWhileFree(owner)), m_ownerCell(this) {
    setFlag(qx::flags::ConnectorSpecified, 1);
    initDiagrammingConnector();
}

QxConnector::QxConnector(const QxConnector& source, QxDeepFlagEnum depth)
    : QxConnector(source.pUnverifiedFactory(), 0, nullptr) {
    copyConnector(source);
    if (depth == QxDeepCopy) {
        QxConnector::duplicateTopology(const_cast<QxConnector*>(&source));
    }
}

QxConnector::~QxConnector() {
    // Nobody can be told of an object on its way out; the usual way is to be removed first.
    while (!m_users.empty()) {
        const User user = m_users.back();
        user.edge->takeConnector(nullptr, user.atSource);
    }
    if (QxDNode* node = pOwnerNode()) {
        node->pConnectorManager()->takeOut(*this);
    }
    dropLabels();
    discardShapeResource();
    qx::internal::endEventSource(*this);
}

void QxConnector::initDiagrammingConnector() {
    pRectBeforeMove(nullptr);
    m_status = QxStatusUnchanged;
    routingDirection(QxDirectionNone);
}

void QxConnector::copyObject(const QxObject* source) {
    if (source != nullptr && source != this) {
        const Ref alive(*this);
        const Ref sourceAlive(*source);
        copyAttributes(source);
        emptyTopology();
        duplicateTopology(const_cast<QxConnector*>(static_cast<const QxConnector*>(source)));
    }
}

void QxConnector::copyAttributes(const QxObject* source) {
    if (source != nullptr && source != this) {
        const auto& other = *static_cast<const QxConnector*>(source);
        const Ref sourceAlive(other);
        Change::run(*this, [&] { copyConnector(other); });
    }
}

void QxConnector::copyConnector(const QxConnector& source) {
    constexpr std::uint32_t Direction = qx::flags::ConnectorHasDirection |
                                        qx::flags::ConnectorDirectionLow |
                                        qx::flags::ConnectorDirectionHigh;
    copyName(source);
    setFlag(Direction, 0);
    setFlag(source.flagWord() & Direction, 1);
    m_status = source.m_status;
    shareShapeOf(source);
    specified(source.specified());
    vResize(source.ntSize());
    vSetOffset(source.ntOffset());
    vSetPerMil(source.getPerMil());
}

void QxConnector::emptyTopology() {
    discardAllLabels();
}

void QxConnector::duplicateTopology(QxConnector* source) {
    if (source != nullptr && source != this) {
        const Ref sourceAlive(*source);
        internalDuplicateTopology(source);
        source->nullInternalUserFields();
    }
}

void QxConnector::internalDuplicateTopology(QxConnector* source) {
    if (source != nullptr && source != this) {
        duplicateLabelsOf(*source);
    }
}

void QxConnector::actOnDiscard() {
    discardShapeResource();
    qx::internal::endEventSource(*this);
}

QxObject* QxConnector::vCloneObject() const {
    return new QxConnector(*this, QxDeepCopy);
}

QxObject* QxConnector::vCloneAttributes() const {
    return new QxConnector(*this, QxAttributeCopy);
}

qx::internal::GraphObjectExtras* QxConnector::vNewExtras() const {
    return new ConnectorExtras;
}

int QxConnector::isConnector() const {
    return 1;
}

int QxConnector::levelNumber() const {
    return 2;
}

int QxConnector::vIsVisible() const {
    const QxDNode* node = pOwnerNode();
    return node != nullptr ? node->isVisible() : 0;
}

std::size_t QxConnector::sizeOf() const {
    return QxExtendableGraphObject::sizeOf() + sizeof(QxConnector) -
           sizeof(QxExtendableGraphObject) + m_users.capacity() * sizeof(User);
}

void QxConnector::debugOutput(int depth) const {
    const QxPoint center = ntCenter();
    qxDebugIndent(depth) << (specified() != 0 ? "connector: " : "calculated connector: ")
                         << center.x() << ' ' << center.y() << ", size " << m_width << ' '
                         << m_height << ", " << m_users.size() << " ends\n";
}

int QxConnector::checkInvariants() const {
    for (std::size_t i = 0; i < m_users.size(); ++i) {
        const User& user = m_users[i];
        if (!user.edge->isNumberedAt(*this, user.atSource, i)) {
            qxDebugStream() << "connector: an end listed here is assigned to something else\n";
            return 0;
        }
    }
    if ((m_extentSlot >= 0) != (specified() != 0 && pGraph() != nullptr)) {
        qxDebugStream() << "connector: only a specified one has a place in the graph's extents\n";
        return 0;
    }
    return checkOwnLabels();
}

const wchar_t* QxConnector::vSetNameString(const wchar_t* name) {
    const QxText* const text = pNameText();
    const QxText old = text != nullptr ? *text : QxText();
    const bool wasNamed = text != nullptr;
    QxExtendableGraphObject::vSetNameString(name);
    const QxText* const now = pNameText();
    const bool isChanged =
        wasNamed != (now != nullptr) || (wasNamed && old.string() != now->string());
    if (specified() != 0 && isChanged) {
        qx::internal::fireDrawingChange(*this, ConnectorNameChanged, [&] {
            return new QxDrawingChangeEventData(this, wasNamed ? old.pString() : nullptr,
                                                pNameString());
        });
    }
    return pNameString();
}

QxDNode* QxConnector::pOwnerNode() const {
    return ownerValid() != 0 ? static_cast<QxDNode*>(pOwner()) : nullptr;
}

QxDGraph* QxConnector::pGraph() const {
    const QxDNode* node = pOwnerNode();
    return node != nullptr ? node->pOwnerGraph() : nullptr;
}

void QxConnector::ntCenter(const QxRect& nodeRect, QxPoint& point) const {
    const QxPerMil perMil = getPerMil();
    const auto add = [](std::int32_t center, std::int32_t proportional, std::int32_t offset) {
        return qx::clampToInt32(std::int64_t{center} + proportional + offset);
    };
    point.moveTo(add(nodeRect.x(), perMil.getOffsetX(nodeRect), m_offsetX),
                 add(nodeRect.y(), perMil.getOffsetY(nodeRect), m_offsetY));
}

void QxConnector::ntCenter(QxPoint& point) const {
    if (const QxDNode* node = pOwnerNode()) {
        ntCenter(*node->pIRect(), point);
    }
}

QxPoint QxConnector::ntCenter() const {
    QxPoint center;
    ntCenter(center);
    return center;
}

void QxConnector::ntBoundingRect(QxRect& rect) const {
    rect = QxRect(ntCenter(), ntSize());
}

int QxConnector::getCenter(QxPoint& center, int inOwnGraph) const {
    return pOwnerNode() != nullptr ? qx::internal::giveAsked(*this, center, ntCenter(), inOwnGraph)
                                   : 0;
}

int QxConnector::getBoundingRect(QxRect& rect, int inOwnGraph) const {
    if (pOwnerNode() == nullptr || qx::internal::hasAsked(*this, inOwnGraph) == 0) {
        return 0;
    }
    ntBoundingRect(rect);
    return qx::internal::toAsked(*this, rect, inOwnGraph);
}

int QxConnector::getBoundingRectWithSubObjects(QxRect& rect, int inOwnGraph) const {
    if (pOwnerNode() == nullptr || qx::internal::hasAsked(*this, inOwnGraph) == 0) {
        return 0;
    }
    ntBoundingRect(rect);
    if (const QxConnectorLabelDList* labels = pLabelList()) {
        for (const QxLabel* label : qx::internal::each<QxLabel>(*labels)) {
            QxRect one;
            label->ntBoundingRect(one);
            rect.updateBounds(&one);
        }
    }
    return qx::internal::toAsked(*this, rect, inOwnGraph);
}

int QxConnector::getUserBoundingRect(QxRect& rect, int inOwnGraph) const {
    return getBoundingRect(rect, inOwnGraph);
}

int QxConnector::getSize(QxSize& size, int inOwnGraph) const {
    return qx::internal::giveAsked(*this, size, ntSize(), inOwnGraph);
}

int QxConnector::getOffset(QxSize& offset, int inOwnGraph) const {
    return qx::internal::giveAsked(*this, offset, ntOffset(), inOwnGraph);
}

int QxConnector::vGetAttachmentPoint(QxPoint& point, int inOwnGraph) const {
    const QxDNode* node = pOwnerNode();
    if (node == nullptr || qx::internal::hasAsked(*this, inOwnGraph) == 0) {
        return 0;
    }
    const QxRect& rect = *node->pIRect();
    const QxPoint center = ntCenter();
    point = rect.center();
    if (const QxShape* shape = node->pShape()) {
        shape->intersectsSegment(point, point, center, rect.center(), rect.size());
    } else if (point != center) {
        QxPoint end = center;
        rect.intersectsSegment(point, end);
    }
    qx::internal::toAsked(*this, point, inOwnGraph);
    return isVisible();
}

int QxConnector::within(const QxPoint& point, int inOwnGraph) const {
    QxRect rect;
    if (getBoundingRect(rect, inOwnGraph) == 0 || rect.within(point) == 0) {
        return 0;
    }
    const QxShape* outline = outlineWithinRect();
    return outline == nullptr ? 1 : outline->within(point, rect.center(), rect.size());
}

int QxConnector::intersectsSegment(QxPoint& from, const QxPoint& to, int inOwnGraph) const {
    QxRect rect;
    if (getBoundingRect(rect, inOwnGraph) == 0) {
        return 0;
    }
    if (const QxShape* outline = outlineWithinRect()) {
        return from == to ? outline->onBoundary(from, rect.center(), rect.size())
                          : outline->intersectsSegment(from, from, to, rect.center(), rect.size());
    }
    if (from == to) {
        return rect.onBoundary(from);
    }
    QxPoint first = from;
    QxPoint second = to;
    const int crossings = rect.intersectsSegment(first, second);
    if (crossings != 0) {
        from = crossings == 2 ? second : first;
    }
    return crossings != 0 ? 1 : 0;
}

int QxConnector::specified(int value) {
    if ((value != 0) == (specified() != 0)) {
        return value;
    }
    Change::run(*this, [&] {
        setFlag(qx::flags::ConnectorSpecified, value);
        setFlag(qx::flags::ConnectorRescaled, 0);
        if (QxDNode* node = pOwnerNode()) {
            node->pConnectorManager()->m_specified += value != 0 ? 1 : -1;
        }
        LabelPresence::changed(*this);
        Coverage::changed(*this);
        for (const User& user : m_users) {
            Coverage::changed(*user.edge);
            qx::internal::MetaEdgeUpkeep::changed(*user.edge);
        }
    });
    return value;
}

QxDirectionEnum QxConnector::routingDirection() const {
    if (hasRoutingDirection() == 0) {
        return QxDirectionNone;
    }
    return static_cast<QxDirectionEnum>(hasFlag(qx::flags::ConnectorDirectionHigh) * 2 +
                                        hasFlag(qx::flags::ConnectorDirectionLow));
}

QxDirectionEnum QxConnector::routingDirection(QxDirectionEnum direction) {
    const bool isSet = direction != QxDirectionNone;
    setFlag(qx::flags::ConnectorHasDirection, isSet ? 1 : 0);
    setFlag(qx::flags::ConnectorDirectionLow, isSet ? direction & 1 : 0);
    setFlag(qx::flags::ConnectorDirectionHigh, isSet ? direction & 2 : 0);
    return direction;
}

const QxRect* QxConnector::pRectBeforeMove() const {
    const auto* extras = static_cast<const ConnectorExtras*>(pQueryExtras());
    return extras != nullptr ? extras->rectBeforeMove.get() : nullptr;
}

const QxRect* QxConnector::pRectBeforeMove(const QxRect* rect) {
    if (rect != pRectBeforeMove()) {
        static_cast<ConnectorExtras&>(extras()).rectBeforeMove.reset(rect);
    }
    return rect;
}

void QxConnector::storeMovedConnector() {
    QxRect rect;
    if (getBoundingRect(rect, 1) != 0) {
        pRectBeforeMove(new QxRect(rect));
    }
}

void QxConnector::restoreMovedConnector() {
    if (const QxRect* saved = pRectBeforeMove()) {
        const QxPoint center = saved->center();
        pRectBeforeMove(nullptr);
        vMoveTo(center);
    }
}
