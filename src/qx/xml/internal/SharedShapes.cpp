// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/internal/SharedShapes.h"

#include "qx/drawing/QxDNode.h"
#include "qx/drawing/internal/ShapeResourceDBOf.h"
#include "qx/xml/QxDXMLHelper.h"

namespace qx::internal {

void giveShape(QxDNode& node, const QxDOMElement& element, QxTopLevelXMLReader& reader) {
    const auto shape = QxDXMLHelper::pParseShape(element, reader);
    QxShapeResourceDB* const db = shape ? shapeResourceDBOf(node) : nullptr;
    if (db != nullptr) {
        node.discardShapeResource();
        node.pShapeResource(db->insert(new QxShapeResource(db, *shape)));
        node.invalidateIncidentEdgeEndPoints();
    }
}

}  // namespace qx::internal
