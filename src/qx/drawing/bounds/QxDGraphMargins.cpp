// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Margins around the bounds, and the spacings of the view area in an expanded node.

#include <algorithm>

#include "qx/drawing/QxDGraph.h"
#include "qx/events/internal/FireDrawingChange.h"

std::int32_t QxDGraph::setConstant(QxSpacing& spacing, std::int32_t value) {
    const std::int32_t stored = std::max(value, 0);
    if (stored != spacing.constant()) {
        spacing.constant(stored);
        refitToMargins(&spacing == &m_leftMargin ? 0 : 1);
        fireMarginsChangedEvent();
    }
    return stored;
}

std::int16_t QxDGraph::setProportional(QxSpacing& spacing, std::int16_t value) {
    if (value >= 0 && value != spacing.proportional()) {
        spacing.proportional(value);
        refitToMargins(1);
        fireMarginsChangedEvent();
    }
    return spacing.proportional();
}

void QxDGraph::fireMarginsChangedEvent() {
    qx::internal::fireDrawingChange(*this, MarginsChanged,
                                    [&] { return new QxDrawingChangeEventData(this); });
}

std::int32_t QxDGraph::leftMarginConstantSpacing() const {
    return m_leftMargin.constant();
}

std::int32_t QxDGraph::leftMarginConstantSpacing(std::int32_t value) {
    return setConstant(m_leftMargin, value);
}

std::int32_t QxDGraph::rightMarginConstantSpacing() const {
    return m_rightMargin.constant();
}

std::int32_t QxDGraph::rightMarginConstantSpacing(std::int32_t value) {
    return setConstant(m_rightMargin, value);
}

std::int32_t QxDGraph::bottomMarginConstantSpacing() const {
    return m_bottomMargin.constant();
}

std::int32_t QxDGraph::bottomMarginConstantSpacing(std::int32_t value) {
    return setConstant(m_bottomMargin, value);
}

std::int32_t QxDGraph::topMarginConstantSpacing() const {
    return m_topMargin.constant();
}

std::int32_t QxDGraph::topMarginConstantSpacing(std::int32_t value) {
    return setConstant(m_topMargin, value);
}

std::int16_t QxDGraph::leftMarginProportionalSpacing() const {
    return m_leftMargin.proportional();
}

std::int16_t QxDGraph::leftMarginProportionalSpacing(std::int16_t value) {
    return setProportional(m_leftMargin, value);
}

std::int16_t QxDGraph::rightMarginProportionalSpacing() const {
    return m_rightMargin.proportional();
}

std::int16_t QxDGraph::rightMarginProportionalSpacing(std::int16_t value) {
    return setProportional(m_rightMargin, value);
}

std::int16_t QxDGraph::bottomMarginProportionalSpacing() const {
    return m_bottomMargin.proportional();
}

std::int16_t QxDGraph::bottomMarginProportionalSpacing(std::int16_t value) {
    return setProportional(m_bottomMargin, value);
}

std::int16_t QxDGraph::topMarginProportionalSpacing() const {
    return m_topMargin.proportional();
}

std::int16_t QxDGraph::topMarginProportionalSpacing(std::int16_t value) {
    return setProportional(m_topMargin, value);
}

std::int32_t QxDGraph::nestedViewLeftConstantSpacing() const {
    return m_nestedViewLeft.constant();
}

std::int32_t QxDGraph::nestedViewLeftConstantSpacing(std::int32_t value) {
    return setConstant(m_nestedViewLeft, value);
}

std::int32_t QxDGraph::nestedViewRightConstantSpacing() const {
    return m_nestedViewRight.constant();
}

std::int32_t QxDGraph::nestedViewRightConstantSpacing(std::int32_t value) {
    return setConstant(m_nestedViewRight, value);
}

std::int32_t QxDGraph::nestedViewTopConstantSpacing() const {
    return m_nestedViewTop.constant();
}

std::int32_t QxDGraph::nestedViewTopConstantSpacing(std::int32_t value) {
    return setConstant(m_nestedViewTop, value);
}

std::int32_t QxDGraph::nestedViewBottomConstantSpacing() const {
    return m_nestedViewBottom.constant();
}

std::int32_t QxDGraph::nestedViewBottomConstantSpacing(std::int32_t value) {
    return setConstant(m_nestedViewBottom, value);
}

std::int16_t QxDGraph::nestedViewLeftProportionalSpacing() const {
    return m_nestedViewLeft.proportional();
}

std::int16_t QxDGraph::nestedViewLeftProportionalSpacing(std::int16_t value) {
    return setProportional(m_nestedViewLeft, value);
}

std::int16_t QxDGraph::nestedViewRightProportionalSpacing() const {
    return m_nestedViewRight.proportional();
}

std::int16_t QxDGraph::nestedViewRightProportionalSpacing(std::int16_t value) {
    return setProportional(m_nestedViewRight, value);
}

std::int16_t QxDGraph::nestedViewTopProportionalSpacing() const {
    return m_nestedViewTop.proportional();
}

std::int16_t QxDGraph::nestedViewTopProportionalSpacing(std::int16_t value) {
    return setProportional(m_nestedViewTop, value);
}

std::int16_t QxDGraph::nestedViewBottomProportionalSpacing() const {
    return m_nestedViewBottom.proportional();
}

std::int16_t QxDGraph::nestedViewBottomProportionalSpacing(std::int16_t value) {
    return setProportional(m_nestedViewBottom, value);
}

std::int32_t QxDGraph::minWidthOfMarginBoundingRect(std::int32_t value) {
    m_minSize.resize(value, m_minSize.height());
    return value;
}

std::int32_t QxDGraph::minHeightOfMarginBoundingRect(std::int32_t value) {
    m_minSize.resize(m_minSize.width(), value);
    return value;
}

void QxDGraph::ntMarginBoundingRect(QxRect& rect) const {
    ntBoundingRectWithIntergraphEdges(rect);
    const std::int32_t width = rect.width();
    const std::int32_t height = rect.height();
    if (QxRect labels; calculateGraphLabelBounds(labels) != 0) {
        rect |= labels;
    }
    rect.setCorners(qx::saturatingSub(rect.left(), m_leftMargin.spacing(width)),
                    qx::saturatingSub(rect.bottom(), m_bottomMargin.spacing(height)),
                    qx::saturatingAdd(rect.right(), m_rightMargin.spacing(width)),
                    qx::saturatingAdd(rect.top(), m_topMargin.spacing(height)));
    if (m_minSize.width() > rect.width()) {
        rect.width(m_minSize.width());
    }
    if (m_minSize.height() > rect.height()) {
        rect.height(m_minSize.height());
    }
}

int QxDGraph::getMarginBoundingRect(QxRect& rect, int inOwnGraph) const {
    ntMarginBoundingRect(rect);
    const int visible = isVisible();
    if (inOwnGraph == 0 && visible != 0) {
        expandedTransformRect(rect);
    }
    return visible;
}
