// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The spring embedder of P. Eades, "A heuristic for graph drawing", Congressus Numerantium 42
// (1984), in whole numbers. L is the desired edge length, n a distance rounded down.
//
// An edge pulls its ends together with their difference times 100 n^2 / L^2, two nodes push each
// other with their difference times 100 L^2 / n^2. The sum of a node's forces gives only the
// direction of its move; the length is the step of the round, (28 - r) L / 60 in round r and never
// below 1.41, so that the drawing cools down in 28 rounds and the last three only settle it.
//
// Each force is truncated to whole units before it is added, and sums are exact for all lengths;
// one of more than 32 bits is halved in the end until it fits, which keeps its direction. A sum of
// integers does not depend on its order, which lets the pushes of all nodes on all others be worked
// out at once, each pair once, on the vector unit and on several
// threads (see internal/QxRepulsion.cpp), with the very result of a loop over the nodes.
//
// That batch is made when the first node of a round asks for it. A subclass with forces of its own
// never pays for it, and a node that is asked about out of turn gets the plain sum.
//
// Cost: O(n^2 + path edges) a round, 31 rounds; 16 bytes a node and thread. Limits: nodes at the
// same place neither push nor pull each other and stay together; components without edges between
// them drift apart by one step each round.

#include "qx/layout/QxEadesAlgorithm.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "qx/drawing/QxDrawingIters.h"
#include "qx/layout/QxSpringEmbedderInfo.h"
#include "qx/layout/internal/QxRepulsion.h"

namespace {

constexpr std::int32_t LastRound = 30;
constexpr double CoolingRounds = 28.0;
constexpr double SmallestStep = 1.41;

/// The nodes of the list that have not left their graph.
std::vector<QxGNode*> presentNodes(const QxGNodeDList* list) {
    std::vector<QxGNode*> nodes;
    for (QxGNodeDListIter it(list, QxIterForward); it; ++it) {
        if (it.pNode()->ownerValid() != 0) {
            nodes.push_back(it.pNode());
        }
    }
    return nodes;
}

qx::internal::CenterArrays centersOf(const std::vector<QxGNode*>& nodes) {
    qx::internal::CenterArrays centers;
    for (const QxGNode* node : nodes) {
        centers.add(node->iX(), node->iY());
    }
    return centers;
}

}  // namespace

struct QxEadesAlgorithm::Force : qx::internal::ForceTotal<qx::internal::ForceSum> {
    /// Adds what lies between two centers; `scale` makes a factor of their distance rounded down.
    template <class Scale>
    void addBetween(const QxPoint& center, const QxPoint& other, const Scale& scale) {
        const std::int64_t dx = std::int64_t{center.x()} - other.x();
        const std::int64_t dy = std::int64_t{center.y()} - other.y();
        if (const std::int64_t n = qx::lengthOf(dx, dy)) {
            add(dx, dy, scale(static_cast<double>(n)));
        }
    }
    /// The force as a vector of 32 bits with the same direction: itself where it fits.
    QxTuple within32Bits() const {
        qx::internal::ForceSum scaledX = x;
        qx::internal::ForceSum scaledY = y;
        while (std::max(scaledX, scaledY) > qx::MaxInt32 ||
               std::min(scaledX, scaledY) < qx::MinInt32) {
            scaledX /= 2;
            scaledY /= 2;
        }
        return {static_cast<std::int32_t>(scaledX), static_cast<std::int32_t>(scaledY)};
    }
};

/// The nodes that move in a round, whose turn it is, and what all nodes do to each of them.
struct QxEadesAlgorithm::Round {
    std::vector<QxGNode*> nodes;
    std::size_t turn = 0;
    std::optional<qx::internal::ForceArrays> pushes = std::nullopt;
};

QxEadesAlgorithm::QxEadesAlgorithm(QxDGraph* graph, QxGNodeDList* constrainedNodes,
                                   QxGNodeDList* unconstrainedNodes, std::int32_t desiredEdgeLength,
                                   int xConstraint, int yConstraint)
    : QxSpringEmbedderAlgorithm(graph, constrainedNodes, unconstrainedNodes, desiredEdgeLength),
      m_xConstraint(xConstraint != 0 ? 1 : 0),
      m_yConstraint(yConstraint != 0 ? 1 : 0) {}

QxEadesAlgorithm::~QxEadesAlgorithm() = default;

int QxEadesAlgorithm::terminationCondition() {
    return m_numberOfRounds > LastRound ? 1 : 0;
}

void QxEadesAlgorithm::optimize() {
    Round round{presentNodes(pUnconstrainedNodeList())};
    computeRound(round);
    keepConstraints(round);
    moveNodes(round);
    m_numberOfRounds = qx::saturatingAdd(m_numberOfRounds, 1);
}

void QxEadesAlgorithm::computeRound(Round& round) {
    // An override of computeForces may throw; what was the round of an outer run is so again.
    struct Restored {
        ~Restored() { place = former; }
        Round*& place;
        Round* const former;
    };
    const Restored restored{m_round, m_round};
    m_round = &round;
    for (; round.turn < round.nodes.size(); ++round.turn) {
        computeForces(round.nodes[round.turn]);
    }
}

void QxEadesAlgorithm::keepConstraints(const Round& round) {
    if (m_xConstraint == 0 && m_yConstraint == 0) {
        return;
    }
    for (const QxGNode* node : round.nodes) {
        QxSpringEmbedderInfo* const info = pSpringEmbedderInfo(node);
        const QxSize& move = info->displacement();
        info->displacement(m_xConstraint != 0 ? QxSize(0, move.height()) : QxSize(move.width(), 0));
    }
}

void QxEadesAlgorithm::moveNodes(const Round& round) {
    for (QxGNode* node : round.nodes) {
        if (node->ownerValid() == 0) {
            continue;  // a listener to the move of another has taken it out
        }
        const QxSize move = pSpringEmbedderInfo(node)->displacement();
        if (move.width() != 0 || move.height() != 0) {
            node->ntMoveTo(node->iCenter() + QxPoint(move.width(), move.height()));
        }
    }
}

void QxEadesAlgorithm::computeForces(QxGNode* node) {
    if (node == nullptr) {
        return;
    }
    Force sum = repulsionOn(node);
    const Force pull = attractionOf(node);
    sum.x -= pull.x;
    sum.y -= pull.y;
    const QxTuple force = sum.within32Bits();
    const double step = stepLength();
    const auto length = static_cast<double>(qx::lengthOf(force.x(), force.y()));
    // Multiplied first: a force along an axis then makes a move of exactly one whole step.
    pSpringEmbedderInfo(node)->displacement(
        length == 0.0 ? QxSize(0, 0)
                      : QxSize(qx::truncToInt32(force.x() * step / length),
                               qx::truncToInt32(force.y() * step / length)));
}

double QxEadesAlgorithm::stepLength() const {
    const double step = (CoolingRounds - m_numberOfRounds) * desiredEdgeLength() * 0.5 / 30.0;
    return std::max(step, SmallestStep);
}

QxEadesAlgorithm::Force QxEadesAlgorithm::repulsionOn(const QxGNode* node) {
    if (m_round != nullptr && m_round->nodes[m_round->turn] == node) {
        if (!m_round->pushes) {
            m_round->pushes = qx::internal::repulsion(
                centersOf(m_round->nodes), centersOf(presentNodes(pConstrainedNodeList())),
                desiredEdgeLength(), {.threads = numberOfThreads()});
        }
        return {{m_round->pushes->x[m_round->turn], m_round->pushes->y[m_round->turn]}};
    }
    Force force;
    addPushes(force, node->iCenter(), pConstrainedNodeList());
    addPushes(force, node->iCenter(), pUnconstrainedNodeList());
    return force;
}

void QxEadesAlgorithm::addPushes(Force& force, const QxPoint& center,
                                 const QxGNodeDList* others) const {
    for (const QxGNode* other : presentNodes(others)) {
        force.addBetween(center, other->iCenter(), [&](double n) {
            return qx::internal::repulsionScale(desiredEdgeLength(), n);
        });
    }
}

/// The pull of the segments at the node, each toward its other end: to be subtracted.
QxEadesAlgorithm::Force QxEadesAlgorithm::attractionOf(const QxGNode* node) const {
    Force force;
    for (QxInAndOutPEdgeIter it(node); it; ++it) {
        const QxPEdge* const segment = it.pEdge();
        if (segment == nullptr) {
            continue;
        }
        const bool endsHere = it.phase() == 0;
        const QxGNode* const other = endsHere ? segment->pSourceNode() : segment->pTargetNode();
        if (other == nullptr) {
            continue;
        }
        force.addBetween(node->iCenter(), other->iCenter(), [&](double n) {
            return qx::internal::attractionScale(desiredEdgeLength(), n);
        });
    }
    return force;
}
