// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

/// A name on the command line that nothing in the file has.
class NameError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Finds nodes by the names that a user knows them by: an id, else a label; nested graphs by the
/// id and title of their nodes, those of DOT also without the "cluster_" in front.
class Names {
public:
    explicit Names(const GraphDocument& document);

    /// The nodes of that name: one of that id, else all with that label. None: empty.
    std::vector<int> find(std::string_view name) const;
    /// The same; throws NameError, with the nearest names, where there is none. Of those whose name
    /// does not count (`counts` is false) none are told and none offered; `kind` says in a word
    /// what is looked for.
    template <class Counts>
    std::vector<int> findAmong(std::string_view name, const char* kind, Counts counts) const {
        std::vector<int> found = find(name);
        std::erase_if(found, [&](int node) { return !counts(node); });
        if (found.empty()) {
            std::vector<int> candidates;
            for (std::size_t i = 0; i < m_document.nodes.size(); ++i) {
                if (counts(static_cast<int>(i))) {
                    candidates.push_back(static_cast<int>(i));
                }
            }
            throw NameError(unknown(name, kind, candidates));
        }
        return found;
    }

private:
    std::string unknown(std::string_view name, const char* kind,
                        const std::vector<int>& candidates) const;

    const GraphDocument& m_document;
    std::unordered_map<std::string, std::vector<int>> m_byId;
    std::unordered_map<std::string, std::vector<int>> m_byLabel;
};

}  // namespace qxdraw
