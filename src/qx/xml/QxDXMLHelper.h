// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/foundation/geometry/QxPerMil.h"
#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/geometry/QxShape.h"
#include "qx/foundation/geometry/QxSize.h"
#include "qx/foundation/geometry/QxSpacing.h"
#include "qx/xml/QxXMLUtilities.h"

class QxGraphObject;
class QxLabelManager;
class QxLabelXMLReader;
class QxLabelXMLWriter;
class QxTopLevelXMLReader;
class QxTopLevelXMLWriter;

/// How values of drawings stand in documents. Positions in thousandths are written as fractions:
/// of 1 for labels, margins and distances, of half an extent for connectors, and the frame of
/// shapes, -1000 to 1000, as 0 to 1. What is absent or no number counts as 0, where not a null is
/// answered.
class QX_API QxDXMLHelper {
public:
    using Name = QxXMLUtilities::Name;

    static double normalize(std::int32_t v) { return v / 1000.0; }
    static double denormalize(double d) { return d * 1000.0; }
    static double normalizeForConnector(std::int32_t v) { return v / 2000.0; }
    static double denormalizeForConnector(double d) { return d * 2000.0; }
    static double normalizeForShape(std::int32_t v) { return (v + 1000.0) / 2000.0; }
    static double denormalizeForShape(double d) { return d * 2000.0 - 1000.0; }

    /// @name Attributes x, y; width, height. The caller owns what is answered.
    /// @{
    static void writePoint(const QxPoint& point, QxDOMElement& element, int shape);
    static std::unique_ptr<QxPoint> pParsePoint(const QxDOMElement* element, int shape);
    static void writeWidthAndHeight(const QxSize& size, QxDOMElement& element);
    static std::unique_ptr<QxSize> pParseWidthAndHeight(const QxDOMElement* element);
    /// The child `size`; null when it is absent.
    static std::unique_ptr<QxSize> pParseSize(const QxDOMElement& element);
    static void writeOffset(const QxSize& offset, QxDOMElement& element);
    static std::unique_ptr<QxSize> pParseOffset(const QxDOMElement* element);
    static void writePerMil(const QxPerMil& perMil, QxDOMElement& element, int connector);
    static std::unique_ptr<QxPerMil> pParsePerMil(const QxDOMElement* element, int connector);
    /// A place in an object of that size, as fractions of its extents from its middle.
    static void writeProportionalOffset(const QxSize& size, const QxPerMil& perMil,
                                        const QxSize& offset, QxDOMElement& element);
    static void parseProportionalOffset(const QxDOMElement& element, const QxSize& size,
                                        QxPerMil& perMil, QxSize& offset);
    /// @}

    /// @name Four spacings: children `proportional` and `constant`
    /// @{
    struct Spacings {
        QxSpacing left;
        QxSpacing right;
        QxSpacing top;
        QxSpacing bottom;
    };
    static void writeSpacings(const Spacings& spacings, QxDOMElement& element);
    static Spacings parseSpacings(const QxDOMElement& element, const Spacings& present);
    /// @}

    /// @name Shapes
    /// @{

    /// A reference to the shared definition, when the document has one of the shape; else the
    /// definition itself.
    static void writeShape(const QxShape& shape, QxTopLevelXMLWriter& writer,
                           QxDOMElement& element);
    static void writeShapeDefinition(const QxShape& shape, QxDOMElement& parent,
                                     QxTopLevelXMLWriter* writer);
    /// The shape that the element refers to or defines; null for none. A copy.
    static std::unique_ptr<QxShape> pParseShape(const QxDOMElement& element,
                                                QxTopLevelXMLReader& reader);
    /// The shape that the element is the definition of; null for any other element.
    static std::unique_ptr<QxShape> pParseShapeDefinition(const QxDOMElement& element);
    /// @}

    /// @name Labels: a list element with one child for each label
    /// @{

    /// Nothing for an owner without labels.
    static void writeLabels(const QxLabelManager* labelManager, QxLabelXMLWriter& labelWriter,
                            QxDOMElement& element, Name listName);
    static void parseLabels(const QxDOMElement& element, QxLabelXMLReader& labelReader,
                            QxGraphObject& owner, Name listName);
    /// @}
};
