// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "qx/xml/QxXMLUtilities.h"

namespace qx::internal {

/// Takes the bytes of a document, piece by piece; throws what keeps it from doing so.
using ByteSink = std::function<void(std::string_view)>;

/// Writes an element and all that is in it as a document in UTF-8. Without recursion.
void serialize(const QxDOMElement& top, bool isIndented, const ByteSink& sink);

}  // namespace qx::internal
