// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxDXMLHelper.h"

#include <cmath>

#include "qx/drawing/QxLabel.h"
#include "qx/drawing/QxLabelManager.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/xml/QxLabelXMLReader.h"
#include "qx/xml/QxLabelXMLWriter.h"
#include "qx/xml/QxTopLevelXMLReader.h"
#include "qx/xml/QxTopLevelXMLWriter.h"
#include "qx/xml/internal/ElementKind.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;
using Utilities = QxXMLUtilities;

namespace {

double numberOf(const QxDOMElement& element, Utilities::Name attribute) {
    return Utilities::parseDouble(element, attribute).value_or(0.0);
}

std::int32_t intOf(const QxDOMElement& element, Utilities::Name attribute) {
    return Utilities::parseInt(element, attribute).value_or(0);
}

double shapeCoordinate(std::int32_t value) {
    return QxDXMLHelper::normalizeForShape(value);
}

std::int32_t shapeCoordinate(const QxDOMElement& element, Utilities::Name attribute) {
    return Utilities::toInt32(QxDXMLHelper::denormalizeForShape(numberOf(element, attribute)));
}

/// One axis of a proportional offset: the half extents below and above the center.
struct Axis {
    std::int32_t extent;
    std::int32_t lower;
    std::int32_t upper;

    double asymmetry() const { return (static_cast<double>(upper) - lower) / 2.0; }
    double fraction(std::int64_t displacement) const {
        return extent != 0 ? (static_cast<double>(displacement) - asymmetry()) / extent : 0.0;
    }
    std::int32_t displacement(double fraction) const {
        return qx::floorHalfUp(1.0 * extent * fraction + asymmetry());
    }
    std::int16_t perMil(double fraction) const {
        const std::int32_t half = fraction < 0.0 ? lower : upper;
        return qx::clampToInt16(
            qx::floorHalfUp(half > 0 ? 1000.0 * (1.0 * extent * fraction + asymmetry()) / half
                                     : 1000.0 * 2.0 * fraction));
    }
};

Axis horizontal(const QxSize& size) {
    return {size.width(), size.leftHalfWidth(), size.rightHalfWidth()};
}

Axis vertical(const QxSize& size) {
    return {size.height(), size.bottomHalfHeight(), size.topHalfHeight()};
}

Utilities::Name definitionName(QxShapeTypeEnum type) {
    return type == QxShapeTypeRectangle ? names::RectangleShape
           : type == QxShapeTypeOval    ? names::OvalShape
                                        : names::PolygonShape;
}

QxShape polygonOf(const QxDOMElement& element) {
    QxPointDList points;
    for (const QxDOMElement* child = Utilities::pFirst(element); child != nullptr;
         child = Utilities::pNext(*child)) {
        if (Utilities::hasName(*child, names::Point) != 0) {
            points.appendPoint(
                QxPoint(shapeCoordinate(*child, names::X), shapeCoordinate(*child, names::Y)));
        }
    }
    return points.isEmpty() != 0 ? QxShape(QxShapeTypePolygon) : QxShape(points);
}

std::int16_t perMilOr(const QxDOMElement& element, Utilities::Name attribute,
                      std::int16_t present) {
    const auto value = Utilities::parseDouble(element, attribute);
    return value ? Utilities::toInt16(QxDXMLHelper::denormalize(*value)) : present;
}

}  // namespace

void QxDXMLHelper::writePoint(const QxPoint& point, QxDOMElement& element, int shape) {
    const auto coordinate = [shape](std::int32_t v) {
        return shape != 0 ? shapeCoordinate(v) : 1.0 * v;
    };
    Utilities::writeDouble(element, names::X, coordinate(point.x()));
    Utilities::writeDouble(element, names::Y, coordinate(point.y()));
}

std::unique_ptr<QxPoint> QxDXMLHelper::pParsePoint(const QxDOMElement* element, int shape) {
    if (element == nullptr) {
        return nullptr;
    }
    const auto coordinate = [&](Name attribute) {
        return shape != 0 ? shapeCoordinate(*element, attribute) : intOf(*element, attribute);
    };
    return std::make_unique<QxPoint>(coordinate(names::X), coordinate(names::Y));
}

void QxDXMLHelper::writeWidthAndHeight(const QxSize& size, QxDOMElement& element) {
    Utilities::writeInt(element, names::Width, size.width());
    Utilities::writeInt(element, names::Height, size.height());
}

std::unique_ptr<QxSize> QxDXMLHelper::pParseWidthAndHeight(const QxDOMElement* element) {
    return element != nullptr ? std::make_unique<QxSize>(intOf(*element, names::Width),
                                                         intOf(*element, names::Height))
                              : nullptr;
}

std::unique_ptr<QxSize> QxDXMLHelper::pParseSize(const QxDOMElement& element) {
    return pParseWidthAndHeight(Utilities::pChild(element, names::Size));
}

void QxDXMLHelper::writeOffset(const QxSize& offset, QxDOMElement& element) {
    Utilities::writeInt(element, names::X, offset.width());
    Utilities::writeInt(element, names::Y, offset.height());
}

std::unique_ptr<QxSize> QxDXMLHelper::pParseOffset(const QxDOMElement* element) {
    return element != nullptr
               ? std::make_unique<QxSize>(intOf(*element, names::X), intOf(*element, names::Y))
               : nullptr;
}

void QxDXMLHelper::writePerMil(const QxPerMil& perMil, QxDOMElement& element, int connector) {
    const auto fraction = [connector](std::int32_t v) {
        return connector != 0 ? normalizeForConnector(v) : normalize(v);
    };
    Utilities::writeDouble(element, names::X, fraction(perMil.x()));
    Utilities::writeDouble(element, names::Y, fraction(perMil.y()));
}

std::unique_ptr<QxPerMil> QxDXMLHelper::pParsePerMil(const QxDOMElement* element, int connector) {
    if (element == nullptr) {
        return nullptr;
    }
    const auto perMil = [&](Name attribute) {
        const double d = numberOf(*element, attribute);
        return Utilities::toInt16(connector != 0 ? denormalizeForConnector(d) : denormalize(d));
    };
    return std::make_unique<QxPerMil>(perMil(names::X), perMil(names::Y));
}

void QxDXMLHelper::writeProportionalOffset(const QxSize& size, const QxPerMil& perMil,
                                           const QxSize& offset, QxDOMElement& element) {
    Utilities::writeDouble(
        element, names::X,
        horizontal(size).fraction(std::int64_t{offset.width()} + perMil.getOffsetX(size)));
    Utilities::writeDouble(
        element, names::Y,
        vertical(size).fraction(std::int64_t{offset.height()} + perMil.getOffsetY(size)));
}

void QxDXMLHelper::parseProportionalOffset(const QxDOMElement& element, const QxSize& size,
                                           QxPerMil& perMil, QxSize& offset) {
    const double x = numberOf(element, names::X);
    const double y = numberOf(element, names::Y);
    perMil = QxPerMil(horizontal(size).perMil(x), vertical(size).perMil(y));
    offset = QxSize(qx::saturatingSub(horizontal(size).displacement(x), perMil.getOffsetX(size)),
                    qx::saturatingSub(vertical(size).displacement(y), perMil.getOffsetY(size)));
}

void QxDXMLHelper::writeSpacings(const Spacings& spacings, QxDOMElement& element) {
    QxDOMElement& proportional = *Utilities::pAppendChild(element, names::Proportional);
    Utilities::writeDouble(proportional, names::Left, normalize(spacings.left.proportional()));
    Utilities::writeDouble(proportional, names::Right, normalize(spacings.right.proportional()));
    Utilities::writeDouble(proportional, names::Upper, normalize(spacings.top.proportional()));
    Utilities::writeDouble(proportional, names::Bottom, normalize(spacings.bottom.proportional()));
    QxDOMElement& constant = *Utilities::pAppendChild(element, names::Constant);
    Utilities::writeInt(constant, names::Left, spacings.left.constant());
    Utilities::writeInt(constant, names::Right, spacings.right.constant());
    Utilities::writeInt(constant, names::Upper, spacings.top.constant());
    Utilities::writeInt(constant, names::Bottom, spacings.bottom.constant());
}

QxDXMLHelper::Spacings QxDXMLHelper::parseSpacings(const QxDOMElement& element,
                                                   const Spacings& present) {
    Spacings parsed = present;
    if (const QxDOMElement* child = Utilities::pChild(element, names::Proportional)) {
        parsed.left.proportional(perMilOr(*child, names::Left, parsed.left.proportional()));
        parsed.right.proportional(perMilOr(*child, names::Right, parsed.right.proportional()));
        parsed.top.proportional(perMilOr(*child, names::Upper, parsed.top.proportional()));
        parsed.bottom.proportional(perMilOr(*child, names::Bottom, parsed.bottom.proportional()));
    }
    if (const QxDOMElement* child = Utilities::pChild(element, names::Constant)) {
        const auto constantOr = [&](Name attribute, std::int32_t value) {
            return Utilities::parseInt(*child, attribute).value_or(value);
        };
        parsed.left.constant(constantOr(names::Left, parsed.left.constant()));
        parsed.right.constant(constantOr(names::Right, parsed.right.constant()));
        parsed.top.constant(constantOr(names::Upper, parsed.top.constant()));
        parsed.bottom.constant(constantOr(names::Bottom, parsed.bottom.constant()));
    }
    return parsed;
}

void QxDXMLHelper::writeShape(const QxShape& shape, QxTopLevelXMLWriter& writer,
                              QxDOMElement& element) {
    if (writer.hasID(&shape) != 0) {
        writer.writeID(*Utilities::pAppendChild(element, names::Shape), names::Resource, &shape);
    } else {
        writeShapeDefinition(shape, element, nullptr);
    }
}

void QxDXMLHelper::writeShapeDefinition(const QxShape& shape, QxDOMElement& parent,
                                        QxTopLevelXMLWriter* writer) {
    QxDOMElement& element = *Utilities::pAppendChild(parent, definitionName(shape.type()));
    if (writer != nullptr) {
        writer->writeID(element, names::Id, &shape);
    }
    QxRect inner;
    shape.getInnerRect(inner);
    QxDOMElement& rect = *Utilities::pAppendChild(element, names::InnerRect);
    Utilities::writeDouble(rect, names::Left, shapeCoordinate(inner.left()));
    Utilities::writeDouble(rect, names::Right, shapeCoordinate(inner.right()));
    Utilities::writeDouble(rect, names::Upper, shapeCoordinate(inner.top()));
    Utilities::writeDouble(rect, names::Bottom, shapeCoordinate(inner.bottom()));
    QxPointDList outline;
    shape.getOutline(outline);
    for (const QxDListCell* cell = outline.pFirstCell(); cell != nullptr;
         cell = cell->pNextCell()) {
        writePoint(*QxPointDList::pPoint(cell), *Utilities::pAppendChild(element, names::Point), 1);
    }
}

std::unique_ptr<QxShape> QxDXMLHelper::pParseShape(const QxDOMElement& element,
                                                   QxTopLevelXMLReader& reader) {
    if (const QxDOMElement* child = Utilities::pChild(element, names::Shape)) {
        const auto* shape = static_cast<const QxShape*>(
            reader.pElementObject(*child, names::Resource, qx::internal::ElementKind::Shape));
        return shape != nullptr ? std::make_unique<QxShape>(*shape) : nullptr;
    }
    for (const QxDOMElement* child = Utilities::pFirst(element); child != nullptr;
         child = Utilities::pNext(*child)) {
        if (auto shape = pParseShapeDefinition(*child)) {
            return shape;
        }
    }
    return nullptr;
}

std::unique_ptr<QxShape> QxDXMLHelper::pParseShapeDefinition(const QxDOMElement& element) {
    std::unique_ptr<QxShape> shape;
    if (Utilities::hasName(element, names::RectangleShape) != 0) {
        shape = std::make_unique<QxShape>(QxShapeTypeRectangle);
    } else if (Utilities::hasName(element, names::OvalShape) != 0) {
        shape = std::make_unique<QxShape>(QxShapeTypeOval);
    } else if (Utilities::hasName(element, names::PolygonShape) != 0) {
        shape = std::make_unique<QxShape>(polygonOf(element));
    } else {
        return nullptr;
    }
    if (const QxDOMElement* rect = Utilities::pChild(element, names::InnerRect)) {
        shape->setInnerRect(
            QxRect(shapeCoordinate(*rect, names::Left), shapeCoordinate(*rect, names::Bottom),
                   shapeCoordinate(*rect, names::Right), shapeCoordinate(*rect, names::Upper)));
    }
    return shape;
}

void QxDXMLHelper::writeLabels(const QxLabelManager* labelManager, QxLabelXMLWriter& labelWriter,
                               QxDOMElement& element, Name listName) {
    if (labelManager == nullptr || labelManager->pLabelList()->isEmpty() != 0) {
        return;
    }
    QxDOMElement& list = *Utilities::pAppendChild(element, listName);
    for (const QxLabel* label : qx::internal::each<QxLabel>(*labelManager->pLabelList())) {
        labelWriter.write(*label, *Utilities::pAppendChild(list, labelWriter.elementName()));
    }
}

void QxDXMLHelper::parseLabels(const QxDOMElement& element, QxLabelXMLReader& labelReader,
                               QxGraphObject& owner, Name listName) {
    const QxDOMElement* const list = Utilities::pChild(element, listName);
    if (list == nullptr) {
        return;
    }
    for (const QxDOMElement* child = Utilities::pFirst(*list); child != nullptr;
         child = Utilities::pNext(*child)) {
        if (Utilities::hasName(*child, labelReader.elementName()) != 0) {
            labelReader.read(owner, *child);
        }
    }
}
