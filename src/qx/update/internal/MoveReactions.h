// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/geometry/QxSize.h"

class QxPNode;

namespace qx::internal {

class Reactions;

/// Whether a move is what somebody wants, or makes room for what has changed inside a node: of the
/// node around what stays, or about the node, which stays.
enum class MoveKind : unsigned char { Wanted, FitAround, FitInside };

/// Around a full change of place or size of a node or connector in a managed drawing that shows:
/// before it the edges that have to follow are found, at its end they follow. A change inside
/// another one joins that.
class [[nodiscard]] MoveReactions {
public:
    MoveReactions(QxDNode& node, MoveKind kind);
    explicit MoveReactions(QxConnector& connector);
    ~MoveReactions();
    MoveReactions(const MoveReactions&) = delete;
    MoveReactions& operator=(const MoveReactions&) = delete;

private:
    /// Moves the bends of what the node carries along as far as the node has moved.
    void carry() const;

    Ref<QxDNode> m_node;
    QxPoint m_start;
    std::vector<Ref<QxDEdge>> m_carried;
    std::unique_ptr<Reactions> m_own;
};

/// The full changes of place or size: `act` makes the change by raw steps, the bounds and what is
/// attached follow.
template <class Act>
void withReactions(QxDNode& node, MoveKind kind, const Act& act) {
    Change::ofGeometry(node, [&] {
        const MoveReactions reactions(node, kind);
        act();
    });
}
template <class Act>
void withReactions(QxDNode& node, const Act& act) {
    withReactions(node, MoveKind::Wanted, act);
}
template <class Act>
void withReactions(QxConnector& connector, const Act& act) {
    Change::run(connector, [&] {
        const MoveReactions reactions(connector);
        act();
    });
}

/// Drags a bend: what lies beside it follows. False, and nothing is done, where no reactions are
/// wanted, so that a raw move will do.
bool dragBend(QxPNode& bend, const QxPoint& center);

/// The offset that an edge at the calculated connector had when a running move began, and the
/// rectangle of its node then; none when no move concerns it.
struct OffsetAtStart {
    QxSize offset;
    QxRect nodeRect;
};
std::optional<OffsetAtStart> offsetAtStart(const QxConnector& connector, const QxDEdge& edge);
/// Tells the record of that move what a resize has made of the offset.
void noteNewOffset(const QxConnector& connector, const QxDEdge& edge, const QxSize& offset);

}  // namespace qx::internal
