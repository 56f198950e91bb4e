// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxDXMLHelper.h"

class QxDGraph;
class QxTransform;

namespace qx::internal {

QxDXMLHelper::Spacings marginsOf(const QxDGraph& graph);
QxDXMLHelper::Spacings nestedMarginsOf(const QxDGraph& graph);
bool hasNestedMargins(const QxDGraph& graph);
void setMargins(QxDGraph& graph, const QxDXMLHelper::Spacings& margins);
void setNestedMargins(QxDGraph& graph, const QxDXMLHelper::Spacings& margins);
void writeTransform(const QxTransform& transform, QxDOMElement& element);
/// What is absent is as in a transform that changes nothing.
QxTransform parseTransform(const QxDOMElement& element);

}  // namespace qx::internal
