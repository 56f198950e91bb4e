// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "qx/foundation/util/QxApi.h"

/// How bad it is what a reader or writer of documents tells.
enum QxXMLSeverityEnum : int {
    QxXMLWarning = 0,      ///< worth knowing; nothing was lost
    QxXMLError = 1,        ///< a fault that was repaired: what stands in the document was left out
    QxXMLFatalError = 2,   ///< the document was refused, or could not be written
    QxXMLParsingError = 3  ///< the document is no well-formed XML, and was refused
};

/// One thing that a reader or writer tells.
struct QxXMLMessage {
    QxXMLSeverityEnum severity = QxXMLWarning;
    /// In UTF-8.
    std::string text;
    /// Counted from 1; 0 where there is no place to name.
    std::int32_t line = 0;
    std::int32_t column = 0;
};

/// What a document may cost its reader. What goes beyond is refused as a whole.
struct QxXMLLimits {
    std::size_t bytes = std::size_t{256} << 20;
    /// Of elements within elements.
    std::size_t depth = 500;
    /// Graphs, nodes, edges, connectors, labels, shapes and nesting relations; of elements there
    /// may be eight times as many.
    std::size_t objects = 5000000;
    /// Characters of one attribute.
    std::size_t attributeLength = 1 << 20;
};
