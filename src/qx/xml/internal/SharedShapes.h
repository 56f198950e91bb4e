// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxXMLUtilities.h"

class QxDNode;
class QxTopLevelXMLReader;

namespace qx::internal {

/// Gives the node the shape that the element names or defines, if it does; nobody is told. Equal
/// shapes are shared.
void giveShape(QxDNode& node, const QxDOMElement& element, QxTopLevelXMLReader& reader);

}  // namespace qx::internal
