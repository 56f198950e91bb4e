// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/internal/GraphSpacings.h"

#include "qx/drawing/QxDGraph.h"

namespace qx::internal {

using Utilities = QxXMLUtilities;

namespace {

/// The attributes of a transform: x and y of each of its four pairs.
struct PairNames {
    Utilities::Name x;
    Utilities::Name y;
};
constexpr PairNames SourceOrigin{u"sourceX", u"sourceY"};
constexpr PairNames TargetOrigin{u"targetX", u"targetY"};
constexpr PairNames SourceExtent{u"sourceWidth", u"sourceHeight"};
constexpr PairNames TargetExtent{u"targetWidth", u"targetHeight"};

void writePair(const QxDTuple& pair, const QxDTuple& usual, QxDOMElement& element,
               const PairNames& names) {
    if (pair.x() != usual.x()) {
        Utilities::writeDouble(element, names.x, pair.x());
    }
    if (pair.y() != usual.y()) {
        Utilities::writeDouble(element, names.y, pair.y());
    }
}

QxDTuple parsePair(const QxDOMElement& element, const QxDTuple& usual, const PairNames& names) {
    return {Utilities::parseDouble(element, names.x).value_or(usual.x()),
            Utilities::parseDouble(element, names.y).value_or(usual.y())};
}

}  // namespace

QxDXMLHelper::Spacings marginsOf(const QxDGraph& graph) {
    return {*graph.pLeftMarginSpacing(), *graph.pRightMarginSpacing(), *graph.pTopMarginSpacing(),
            *graph.pBottomMarginSpacing()};
}

QxDXMLHelper::Spacings nestedMarginsOf(const QxDGraph& graph) {
    return {*graph.pNestedViewLeftSpacing(), *graph.pNestedViewRightSpacing(),
            *graph.pNestedViewTopSpacing(), *graph.pNestedViewBottomSpacing()};
}

bool hasNestedMargins(const QxDGraph& graph) {
    const QxDXMLHelper::Spacings margins = nestedMarginsOf(graph);
    const QxSpacing none;
    return !(margins.left == none && margins.right == none && margins.top == none &&
             margins.bottom == none);
}

void setMargins(QxDGraph& graph, const QxDXMLHelper::Spacings& margins) {
    graph.leftMarginConstantSpacing(margins.left.constant());
    graph.rightMarginConstantSpacing(margins.right.constant());
    graph.topMarginConstantSpacing(margins.top.constant());
    graph.bottomMarginConstantSpacing(margins.bottom.constant());
    graph.leftMarginProportionalSpacing(margins.left.proportional());
    graph.rightMarginProportionalSpacing(margins.right.proportional());
    graph.topMarginProportionalSpacing(margins.top.proportional());
    graph.bottomMarginProportionalSpacing(margins.bottom.proportional());
}

void setNestedMargins(QxDGraph& graph, const QxDXMLHelper::Spacings& margins) {
    graph.nestedViewLeftConstantSpacing(margins.left.constant());
    graph.nestedViewRightConstantSpacing(margins.right.constant());
    graph.nestedViewTopConstantSpacing(margins.top.constant());
    graph.nestedViewBottomConstantSpacing(margins.bottom.constant());
    graph.nestedViewLeftProportionalSpacing(margins.left.proportional());
    graph.nestedViewRightProportionalSpacing(margins.right.proportional());
    graph.nestedViewTopProportionalSpacing(margins.top.proportional());
    graph.nestedViewBottomProportionalSpacing(margins.bottom.proportional());
}

void writeTransform(const QxTransform& transform, QxDOMElement& element) {
    const QxTransform usual;
    writePair(transform.sourceOrigin(), usual.sourceOrigin(), element, SourceOrigin);
    writePair(transform.targetOrigin(), usual.targetOrigin(), element, TargetOrigin);
    writePair(transform.sourceExtent(), usual.sourceExtent(), element, SourceExtent);
    writePair(transform.targetExtent(), usual.targetExtent(), element, TargetExtent);
}

QxTransform parseTransform(const QxDOMElement& element) {
    QxTransform transform;
    transform.sourceOrigin(parsePair(element, transform.sourceOrigin(), SourceOrigin));
    transform.targetOrigin(parsePair(element, transform.targetOrigin(), TargetOrigin));
    transform.sourceExtent(parsePair(element, transform.sourceExtent(), SourceExtent));
    transform.targetExtent(parsePair(element, transform.targetExtent(), TargetExtent));
    return transform;
}

}  // namespace qx::internal
