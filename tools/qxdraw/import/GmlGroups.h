// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

/// The groups of a GML graph: nodes in which other nodes lie, as the `gid` of these tells.
class GmlGroups {
public:
    explicit GmlGroups(GraphDocument& document) : m_document(document) {}

    /// A node that says it is a group, though nothing may lie in it.
    void addGroup(int node) { m_groups.push_back(node); }
    /// A node that lies in the group of that id.
    void addMember(int node, std::int64_t group, int line) {
        m_members.push_back({node, group, line});
    }

    /// Makes nested graphs of the groups. Throws ImportError for a group that does not exist, one
    /// that lies in itself, and groups nested deeper than ImportLimits::NestingDepth.
    void nest(const std::unordered_map<std::int64_t, int>& indexOfId);

private:
    struct Member {
        int node;
        std::int64_t group;
        int line;
    };

    DocumentNode& nodeAt(int index) const {
        return m_document.nodes[static_cast<std::size_t>(index)];
    }
    void findGroups(const std::unordered_map<std::int64_t, int>& indexOfId);
    void addGraphOf(int group);

    GraphDocument& m_document;
    std::vector<int> m_groups;
    std::vector<Member> m_members;
    std::vector<int> m_groupOf;  ///< of each node, an index into the nodes; -1: none
    std::vector<int> m_graphOf;  ///< of each node that is a group; -1: none yet
    std::vector<int> m_depthOf;  ///< of these graphs
};

}  // namespace qxdraw
