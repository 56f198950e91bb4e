// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/CheckCommand.h"

#include <iostream>

#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxFactory.h"
#include "qx/xml/QxDGraphManagerXMLReader.h"

namespace qxdraw {

namespace {

const char* nameOf(QxXMLSeverityEnum severity) {
    return severity == QxXMLWarning ? "warning" : severity == QxXMLError ? "repaired" : "refused";
}

}  // namespace

bool runCheck(const CheckOptions& options) {
    QxFactory factory;
    QxDGraphManager* const manager = factory.newDGraphManager();
    QxDGraphManagerXMLReader reader(options.input.c_str());
    bool isFaultless = reader.read(manager) != 0;
    manager->vRelease();
    for (const QxXMLMessage& message : reader.messages()) {
        std::cout << options.input << ':';
        if (message.line > 0) {
            std::cout << message.line << ':';
        }
        if (message.column > 0) {
            std::cout << message.column << ':';
        }
        std::cout << ' ' << nameOf(message.severity) << ": " << message.text << '\n';
        isFaultless = isFaultless && message.severity == QxXMLWarning;
    }
    return isFaultless;
}

}  // namespace qxdraw
