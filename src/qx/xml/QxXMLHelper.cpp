// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/xml/QxXMLHelper.h"

#include "qx/foundation/graph/QxGraphObject.h"
#include "qx/xml/internal/Names.h"

namespace names = qx::names;

void QxXMLHelper::writeName(const QxGraphObject& object, QxDOMElement& element) {
    if (const wchar_t* name = object.pNameString(); name != nullptr) {
        QxXMLUtilities::writeText(*QxXMLUtilities::pAppendChild(element, names::ObjectName),
                                  names::Value, name);
    }
}

void QxXMLHelper::parseName(QxGraphObject& object, const QxDOMElement& element) {
    const QxDOMElement* const name = QxXMLUtilities::pChild(element, names::ObjectName);
    if (name != nullptr) {
        if (const auto text = QxXMLUtilities::parseText(*name, names::Value)) {
            object.nameString(text->c_str());
        }
    }
}

void QxXMLHelper::writeType(const QxOwnedObject& object, QxDOMElement& element) {
    if (object.objectType() != 0) {
        QxXMLUtilities::writeInt(element, names::Type, object.objectType());
    }
}

int QxXMLHelper::parseType(const QxDOMElement& element) {
    return QxXMLUtilities::parseInt(element, names::Type).value_or(0);
}

QxDOMElement& QxXMLHelper::more(QxDOMElement& element) {
    QxDOMElement* const present = QxXMLUtilities::pChild(element, names::More);
    return *(present != nullptr ? present : QxXMLUtilities::pAppendChild(element, names::More));
}

const QxDOMElement* QxXMLHelper::pMore(const QxDOMElement& element) {
    return QxXMLUtilities::pChild(element, names::More);
}

void QxXMLHelper::writeCommonMore(const QxGraphObject& object, QxDOMElement& element) {
    if (object.userField() != 0) {
        QxXMLUtilities::writeIntValue(more(element), names::UserField, object.userField());
    }
    if (object.isReadOnly() != 0) {
        QxXMLUtilities::writeBooleanValue(more(element), names::ReadOnly, 1);
    }
}

void QxXMLHelper::parseCommonMore(QxGraphObject& object, const QxDOMElement& element) {
    const QxDOMElement* const present = pMore(element);
    if (present == nullptr) {
        return;
    }
    if (const QxDOMElement* field = QxXMLUtilities::pChild(*present, names::UserField)) {
        if (const auto value = QxXMLUtilities::parseInt64(*field, names::Value)) {
            object.userField(*value);
        }
    }
    if (const auto value = QxXMLUtilities::parseBooleanValue(*present, names::ReadOnly)) {
        object.isReadOnly(*value);
    }
}
