// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/GmlGroups.h"

#include <algorithm>
#include <string>

#include "import/ImportError.h"
#include "import/ImportLimits.h"

namespace qxdraw {

void GmlGroups::nest(const std::unordered_map<std::int64_t, int>& indexOfId) {
    if (m_groups.empty() && m_members.empty()) {
        return;
    }
    findGroups(indexOfId);
    std::sort(m_groups.begin(), m_groups.end());
    m_graphOf.assign(m_document.nodes.size(), -1);
    m_depthOf.assign(1, 0);
    for (const int group : m_groups) {
        addGraphOf(group);
    }
    for (const Member& member : m_members) {
        nodeAt(member.node).graph =
            m_graphOf[static_cast<std::size_t>(m_groupOf[static_cast<std::size_t>(member.node)])];
    }
}

void GmlGroups::findGroups(const std::unordered_map<std::int64_t, int>& indexOfId) {
    m_groupOf.assign(m_document.nodes.size(), -1);
    for (const Member& member : m_members) {
        const auto found = indexOfId.find(member.group);
        if (found == indexOfId.end()) {
            throw ImportError("node " + nodeAt(member.node).id + " names group " +
                                  std::to_string(member.group) + ", which does not exist",
                              member.line);
        }
        m_groupOf[static_cast<std::size_t>(member.node)] = found->second;
        m_groups.push_back(found->second);
    }
}

/// A graph for the group, and before it one for each group around it that has none yet.
void GmlGroups::addGraphOf(int group) {
    std::vector<int> open;
    for (int around = group; around >= 0 && m_graphOf[static_cast<std::size_t>(around)] < 0;
         around = m_groupOf[static_cast<std::size_t>(around)]) {
        constexpr int BeingMade = 0;  // the outermost graph, which no group has
        m_graphOf[static_cast<std::size_t>(around)] = BeingMade;
        open.push_back(around);
    }
    const int outer = m_groupOf[static_cast<std::size_t>(open.empty() ? group : open.back())];
    if (!open.empty() && outer >= 0 && m_graphOf[static_cast<std::size_t>(outer)] == 0) {
        throw ImportError("group " + nodeAt(outer).id + " lies in itself", nodeAt(outer).line);
    }
    for (auto next = open.rbegin(); next != open.rend(); ++next) {
        const auto index = static_cast<std::size_t>(*next);
        const int around = m_groupOf[index];
        const int parent = around < 0 ? 0 : m_graphOf[static_cast<std::size_t>(around)];
        const int depth = m_depthOf[static_cast<std::size_t>(parent)] + 1;
        if (depth > ImportLimits::NestingDepth) {
            throw ImportError("more than " + std::to_string(ImportLimits::NestingDepth) +
                                  " groups inside each other",
                              nodeAt(*next).line);
        }
        m_graphOf[index] = static_cast<int>(m_document.graphs.size());
        m_depthOf.push_back(depth);
        m_document.graphs.push_back({"", parent, *next, nodeAt(*next).id, {}});
    }
}

}  // namespace qxdraw
