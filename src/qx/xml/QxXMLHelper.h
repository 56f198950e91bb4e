// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/xml/QxXMLUtilities.h"

class QxGraphObject;
class QxOwnedObject;

/// What the elements of all graph objects have in common.
class QX_API QxXMLHelper {
public:
    /// The child <name value="..."/>; nothing for an object without a name.
    static void writeName(const QxGraphObject& object, QxDOMElement& element);
    /// Gives the object the name that the element has, if it has one.
    static void parseName(QxGraphObject& object, const QxDOMElement& element);
    /// The attribute `type`; nothing for 0.
    static void writeType(const QxOwnedObject& object, QxDOMElement& element);
    /// 0 without one.
    static int parseType(const QxDOMElement& element);
    /// The optional child `more`: what the other elements cannot carry. Made on first use.
    static QxDOMElement& more(QxDOMElement& element);
    static const QxDOMElement* pMore(const QxDOMElement& element);
    /// The integer user field and the read-only mark, in `more`.
    static void writeCommonMore(const QxGraphObject& object, QxDOMElement& element);
    static void parseCommonMore(QxGraphObject& object, const QxDOMElement& element);
};
