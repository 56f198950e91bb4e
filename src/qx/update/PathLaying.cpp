// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Gives an edge new bends while it keeps the old ones as far as possible: whoever holds a bend, or
// listens to it, keeps it, and a path that hardly changes tells of hardly anything.

#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/update/internal/InitialPath.h"

namespace qx::internal {

std::vector<InitialPath::Bend> bendsOf(const QxDEdge& edge) {
    std::vector<InitialPath::Bend> bends;
    if (edge.hasBends() != 0) {
        QxPNodeDList list;
        edge.buildPathNodeList(list);
        bends.reserve(static_cast<std::size_t>(list.count()));
        for (QxPNode* bend : each<QxPNode>(list)) {
            bends.push_back({Ref(*bend), bend->iCenter()});
        }
    }
    return bends;
}

namespace {

class PathLaying {
public:
    PathLaying(QxDEdge& edge, const Route& route) : m_edge(edge), m_present(bendsOf(edge)) {
        for (std::size_t k = 2; k < route.count(); ++k) {
            m_wanted.push_back({route.at(k), nullptr});
            const std::size_t kept = find(route[k].bend);
            if (kept < m_present.size()) {
                m_wanted.back().bend = route[k].bend;
                shareOut(m_wanted.size() - 1, kept);
                m_firstPoint = m_wanted.size();
                m_firstBend = kept + 1;
            }
        }
        shareOut(m_wanted.size(), m_present.size());
    }

    void perform() {
        for (const Ref<QxPNode>& bend : m_leftOver) {
            m_edge.discardBend(bend.get());  // refused when a listener was faster
        }
        for (const Point& point : m_wanted) {
            if (point.bend != nullptr && point.bend->pOwnerEdge() == &m_edge &&
                point.bend->iCenter() != point.at) {
                point.bend->ntMoveTo(point.at);
            }
        }
        QxPNode* previous = nullptr;
        for (const Point& point : m_wanted) {
            if (previous != nullptr && previous->pOwnerEdge() != &m_edge) {
                return;
            }
            QxPNode* bend = point.bend;
            if (bend == nullptr) {
                m_added.emplace_back(m_edge.addBendAfter(previous, point.at, 1));
                bend = m_added.back().get();
            }
            if (bend == nullptr) {
                return;
            }
            previous = bend;
        }
    }

private:
    struct Point {
        QxPoint at;
        QxPNode* bend;
    };

    /// The position of the bend among those that have not been passed yet; beyond the end when it
    /// is none of them.
    std::size_t find(const QxPNode* bend) const {
        std::size_t i = m_present.size();
        if (bend != nullptr && bend->pOwnerEdge() == &m_edge) {
            for (i = m_firstBend; i < m_present.size() && m_present[i].bend.get() != bend;) {
                ++i;
            }
        }
        return i;
    }
    /// Gives the bends before `endBend` to the points before `endPoint`, in their order.
    void shareOut(std::size_t endPoint, std::size_t endBend) {
        std::size_t point = m_firstPoint;
        for (std::size_t i = m_firstBend; i < endBend; ++i) {
            if (point < endPoint) {
                m_wanted[point++].bend = m_present[i].bend.get();
            } else {
                m_leftOver.push_back(m_present[i].bend);
            }
        }
    }

    QxDEdge& m_edge;
    std::vector<InitialPath::Bend> m_present;
    std::vector<Point> m_wanted;
    std::vector<Ref<QxPNode>> m_leftOver;
    std::vector<Ref<QxPNode>> m_added;
    /// Behind the last point that keeps its bend, and behind that bend.
    std::size_t m_firstPoint = 0;
    std::size_t m_firstBend = 0;
};

}  // namespace

void layBends(QxDEdge& edge, const Route& route) {
    const Ref alive(edge);
    PathLaying(edge, route).perform();
}

}  // namespace qx::internal
