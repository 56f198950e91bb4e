// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Names.h"

#include <algorithm>
#include <array>

#include "import/SourceText.h"

namespace qxdraw {

namespace {

constexpr std::string_view ClusterPrefix = "cluster_";

/// How many letters have to be put in, left out or replaced to make `b` of `a`; no more than
/// `limit` is counted. Names are compared by their first bytes only.
std::size_t distance(std::string_view a, std::string_view b, std::size_t limit) {
    constexpr std::size_t Longest = 64;
    a = a.substr(0, Longest);
    b = b.substr(0, Longest);
    if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) >= limit) {
        return limit;
    }
    std::array<std::size_t, Longest + 1> row{};
    for (std::size_t i = 0; i <= b.size(); ++i) {
        row[i] = i;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        std::size_t least = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
            least = std::min(least, row[j]);
        }
        if (least >= limit) {
            return limit;
        }
    }
    return std::min(row[b.size()], limit);
}

/// How far a name is from what was asked for; what holds it, or is held by it, is rather near.
std::size_t strangeness(const std::string& asked, const std::string& name, std::size_t limit) {
    const std::string known = toLowerAscii(name);
    constexpr std::size_t Part = 3;  // shorter ones are parts of everything
    if (asked.size() >= Part && known.find(asked) != std::string::npos) {
        return std::min<std::size_t>(1, limit);
    }
    return distance(asked, known, limit);
}

}  // namespace

Names::Names(const GraphDocument& document) : m_document(document) {
    for (std::size_t i = 0; i < document.nodes.size(); ++i) {
        const int index = static_cast<int>(i);
        m_byId[document.nodes[i].id].push_back(index);
        m_byLabel[document.nodes[i].label].push_back(index);
    }
    for (const DocumentGraph& graph : document.graphs) {
        if (graph.node >= 0 && graph.id.starts_with(ClusterPrefix)) {
            m_byLabel[graph.id.substr(ClusterPrefix.size())].push_back(graph.node);
        }
    }
}

std::vector<int> Names::find(std::string_view name) const {
    const std::string key(name);
    for (const auto* names : {&m_byId, &m_byLabel}) {
        if (const auto found = names->find(key); found != names->end() && !key.empty()) {
            return found->second;
        }
    }
    return {};
}

std::string Names::unknown(std::string_view name, const char* kind,
                           const std::vector<int>& candidates) const {
    constexpr std::size_t Offered = 3;
    const std::string asked = toLowerAscii(name);
    const std::size_t limit = asked.size() / 2 + 2;
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const int index : candidates) {
        const DocumentNode& node = m_document.nodes[static_cast<std::size_t>(index)];
        for (const std::string* known : {&node.id, &node.label}) {
            const std::size_t far = strangeness(asked, *known, limit);
            if (far < limit && !known->empty()) {
                near.emplace_back(far, *known);
            }
        }
    }
    std::sort(near.begin(), near.end());
    near.erase(std::unique(near.begin(), near.end()), near.end());
    const std::size_t nearest = near.empty() ? 0 : near.front().first;
    std::erase_if(near, [&](const auto& one) { return one.first > nearest + 1; });
    std::string text = std::string("there is no ") + kind + " '" + std::string(name) + "'";
    for (std::size_t i = 0; i < std::min(near.size(), Offered); ++i) {
        const bool isLast = i + 1 == std::min(near.size(), Offered);
        text += (i == 0 ? "; did you mean '" : isLast ? " or '" : ", '") + near[i].second + "'";
    }
    return near.empty() ? text : text + "?";
}

}  // namespace qxdraw
