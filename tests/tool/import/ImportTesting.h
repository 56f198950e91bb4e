// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "import/DocumentReader.h"
#include "import/ImportError.h"

namespace qxdraw::testing {

inline std::string dataPath(const std::string& name) {
    return std::string(QXDRAW_TEST_DATA) + "/" + name;
}

/// "line: reason" of the error that reading `text` ends with; empty when it is read.
inline std::string errorOf(const std::string& text, const std::string& path = "text") {
    try {
        readDocumentText(text, path);
        return {};
    } catch (const ImportError& error) {
        return std::to_string(error.line()) + ": " + error.what();
    }
}

/// Every prefix of `text` must be read or refused, and nothing else may happen.
inline void expectCleanWhenCutAnywhere(const std::string& text, const std::string& path) {
    int refused = 0;
    for (std::size_t length = 0; length < text.size(); ++length) {
        refused += errorOf(text.substr(0, length), path).empty() ? 0 : 1;
    }
    EXPECT_GT(refused, static_cast<int>(text.size() / 2));
}

inline const DocumentNode& nodeOf(const GraphDocument& document, const std::string& id) {
    for (const DocumentNode& node : document.nodes) {
        if (node.id == id) {
            return node;
        }
    }
    throw std::runtime_error("no node " + id);
}

MATCHER_P2(IsNear, x, y, "") {
    return std::abs(arg.x - x) < 0.01 && std::abs(arg.y - y) < 0.01;
}

}  // namespace qxdraw::testing
