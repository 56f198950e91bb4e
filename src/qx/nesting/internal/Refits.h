// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <deque>

#include "qx/drawing/QxDGraph.h"
#include "qx/foundation/util/internal/Ref.h"

namespace qx::internal {

/// Fits expanded nodes to their nested graphs when the bounds of these change.
///
/// A fit changes the bounds of the graph around, which asks for the next fit, and its listeners may
/// change anything. Requests that come during a fit wait here and are served after it, innermost
/// first: so nesting depth costs no stack, and no fit finds another one half done.
class Refits {
public:
    Refits() = default;
    Refits(const Refits&) = delete;
    Refits& operator=(const Refits&) = delete;

    /// The bounds of `graph`, a nested graph, have changed; see QxDNode::fitToNestedGraph.
    void request(QxDGraph& graph, int keepNodeInPlace);

    /// A fit: while it lasts requests wait; the outermost one serves them at its end.
    class [[nodiscard]] Fit {
    public:
        explicit Fit(Refits& refits) : m_refits(refits), m_isOutermost(!refits.m_isServing) {
            refits.m_isServing = true;
        }
        ~Fit() {
            if (m_isOutermost) {
                m_refits.serve();
                m_refits.m_isServing = false;
            }
        }
        Fit(const Fit&) = delete;
        Fit& operator=(const Fit&) = delete;

    private:
        Refits& m_refits;
        bool m_isOutermost;
    };

    /// While it lasts the node around one graph is left as it is: whoever holds it fits it himself.
    class [[nodiscard]] Hold {
    public:
        Hold(Refits& refits, const QxDGraph& graph) : m_refits(refits), m_outer(refits.m_held) {
            refits.m_held = &graph;
        }
        ~Hold() { m_refits.m_held = m_outer; }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

    private:
        Refits& m_refits;
        const QxDGraph* m_outer;
    };

    /// While it lasts fits wait, so that a drag that ends where it began changes nothing; what has
    /// been asked for is served at its end.
    class [[nodiscard]] Wait {
    public:
        explicit Wait(Refits& refits) : m_refits(refits) { ++refits.m_waits; }
        ~Wait() {
            --m_refits.m_waits;
            m_refits.serveUnlessBusy();
        }
        Wait(const Wait&) = delete;
        Wait& operator=(const Wait&) = delete;
        /// Serves what has been asked for one graph already.
        void serve(const QxDGraph& graph) { m_refits.serve(graph); }

    private:
        Refits& m_refits;
    };

private:
    struct Request {
        Ref<QxDGraph> graph;
        int keepNodeInPlace;
    };

    void serveUnlessBusy();
    void serve();
    void serve(const QxDGraph& graph);
    static void perform(const Request& request);

    std::deque<Request> m_waiting;
    const QxDGraph* m_held = nullptr;
    int m_waits = 0;
    bool m_isServing = false;
};

}  // namespace qx::internal
