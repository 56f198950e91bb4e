// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/util/internal/Ref.h"

class QxDEdge;
class QxDGraph;
class QxDGraphManager;

namespace qx::internal {

/// What a meta-edge joins. Which objects these are decides about equality; the hash serves to look
/// a value up, nothing is ever walked in its order.
struct MetaEnds {
    QxDNode* first = nullptr;
    QxDNode* second = nullptr;
    QxConnector* firstConnector = nullptr;
    QxConnector* secondConnector = nullptr;

    bool operator==(const MetaEnds&) const = default;
    bool isComplete() const { return first != nullptr && second != nullptr; }

    struct Hash {
        std::size_t operator()(const MetaEnds& ends) const {
            std::uint64_t hash = 0;
            for (const void* object :
                 {static_cast<const void*>(ends.first), static_cast<const void*>(ends.second),
                  static_cast<const void*>(ends.firstConnector),
                  static_cast<const void*>(ends.secondConnector)}) {
                hash =
                    (hash ^ (reinterpret_cast<std::uintptr_t>(object) >> 4)) * 0x9E3779B97F4A7C15U;
                hash ^= hash >> 32;
            }
            return static_cast<std::size_t>(hash);
        }
    };
};

/// Keeps them alive, while listeners hear of other edges.
class HeldMetaEnds {
public:
    explicit HeldMetaEnds(const MetaEnds& ends)
        : m_ends(ends),
          m_first(ends.first),
          m_second(ends.second),
          m_firstConnector(ends.firstConnector),
          m_secondConnector(ends.secondConnector) {}

    const MetaEnds& ends() const { return m_ends; }

private:
    MetaEnds m_ends;
    Ref<QxDNode> m_first;
    Ref<QxDNode> m_second;
    Ref<QxConnector> m_firstConnector;
    Ref<QxConnector> m_secondConnector;
};

/// What a meta-edge that is there joins: its ends, and its specified connectors unless the manager
/// ignores connectors.
MetaEnds endsOfMetaEdge(const QxDEdge& edge, const QxDGraphManager& manager);

/// Finds what has to be joined in place of edges that cannot be drawn, as long as nothing changes.
///
/// Two graphs decide, but for the ends themselves, and edges between the same two graphs come in
/// crowds: the climb through the nesting is made once for each pair, O(depth), and an edge costs a
/// look-up.
class NeededMetaEnds {
public:
    explicit NeededMetaEnds(const QxDGraphManager& manager) : m_manager(manager) {}

    /// Incomplete when the edge needs no stand-in, or none is possible. Whether a self-loop is
    /// wanted is not asked.
    MetaEnds of(const QxDEdge& edge);

private:
    /// The outermost collapsed nodes around the graphs, below the graph that is around both; null
    /// where there is none.
    struct Route {
        bool isNeeded = false;
        QxDNode* source = nullptr;
        QxDNode* target = nullptr;
    };
    struct Graphs {
        QxDGraph* source;
        QxDGraph* target;
        bool operator==(const Graphs&) const = default;
    };
    struct GraphsHash {
        std::size_t operator()(const Graphs& graphs) const;
    };

    Route routeBetween(const Graphs& graphs) const;

    const QxDGraphManager& m_manager;
    std::unordered_map<Graphs, Route, GraphsHash> m_routes;
};

}  // namespace qx::internal
