// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/layout/QxSpringEmbedderAlgorithm.h"

class QxPoint;

/// A spring embedder: edges pull their ends together, all nodes push each other apart, and every
/// round moves each node along the sum of its forces, by a step that shrinks from 0.467 desired
/// edge lengths in the first round to 1.41 units at last. A fresh algorithm makes 31 rounds.
///
/// A round costs O(n^2) for the n nodes in the lists. Its result depends on neither processor nor
/// number of threads.
class QX_API QxEadesAlgorithm : public QxSpringEmbedderAlgorithm {
public:
    /// Nonzero `xConstraint` (`yConstraint`): nodes keep their x (y) coordinates.
    QxEadesAlgorithm(QxDGraph* graph, QxGNodeDList* constrainedNodes,
                     QxGNodeDList* unconstrainedNodes, std::int32_t desiredEdgeLength,
                     int xConstraint, int yConstraint);
    ~QxEadesAlgorithm() override;

    /// The number of rounds made, which sets the step and ends the run when it exceeds 30. Set it
    /// back to 0 to run again from the start.
    std::int32_t numberOfRounds() const { return m_numberOfRounds; }
    std::int32_t numberOfRounds(std::int32_t value) { return m_numberOfRounds = value; }
    /// With both constraints set only x is kept.
    int xConstraint() const { return m_xConstraint; }
    int xConstraint(int value) { return m_xConstraint = value != 0 ? 1 : 0; }
    int yConstraint() const { return m_yConstraint; }
    int yConstraint(int value) { return m_yConstraint = value != 0 ? 1 : 0; }

protected:
    int terminationCondition() override;
    /// One round: works out all displacements first, then makes all moves.
    void optimize() override;
    /// Sets the node's displacement for this round. May be called for any node, at any time;
    /// overrides must not move nodes.
    virtual void computeForces(QxGNode* node);

private:
    struct Round;
    struct Force;

    double stepLength() const;
    Force repulsionOn(const QxGNode* node);
    Force attractionOf(const QxGNode* node) const;
    void addPushes(Force& force, const QxPoint& center, const QxGNodeDList* others) const;
    void computeRound(Round& round);
    void keepConstraints(const Round& round);
    void moveNodes(const Round& round);

    std::int32_t m_numberOfRounds = 0;
    int m_xConstraint;
    int m_yConstraint;
    /// The round whose forces are being worked out; null otherwise.
    Round* m_round = nullptr;
};
