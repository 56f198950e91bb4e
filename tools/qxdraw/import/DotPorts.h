// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "import/GraphDocument.h"

namespace qxdraw {

/// The ports that the edges of a DOT graph name: `field`, `side` or `field:side`, where a side is a
/// point of the compass.
class DotPorts {
public:
    explicit DotPorts(GraphDocument& document) : m_document(document) {}

    /// Notes the names of the fields of a node's label.
    void addFields(int node, const DocumentField& field);
    /// Index of the port in the node's ports, where it is added when it is new; -1 for what stands
    /// for the whole node, and, with a warning, for what the node does not have.
    int portOf(int node, std::string_view port);

private:
    std::optional<DocumentPort> read(int node, std::string_view port) const;
    bool hasField(int node, std::string_view field) const;

    GraphDocument& m_document;
    std::unordered_set<std::string> m_fields;            ///< by node and name
    std::unordered_map<std::string, int> m_indexOfPort;  ///< by node and name
};

}  // namespace qxdraw
