// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// A drawing with bounds and spatial index on, beside a plain R-tree over the same boxes where Boost
// is installed. Somebody asks the index all the time, so that it is built and current: a tree that
// nobody asks puts its work off, which would flatter every number here.
//
// usage: indexed N [grid|dense|spanned]
//   grid: the common drawing. dense: the same within one square of 2,000 units. spanned: the common
//   drawing and an edge from its first to its last node.

#include <memory>

#include "common.hpp"
#include "qx/qxdraw.h"
#if __has_include(<boost/geometry.hpp>)
#define HAS_RTREE 1
#include <boost/geometry.hpp>
#include <iterator>
#else
#define HAS_RTREE 0
#endif

using namespace pb;

namespace {

constexpr int AskEvery = 100;
volatile long gSink = 0;

struct Region {
    double x, y, side;
    QxRect rect() const {
        const auto low = [](double v) { return std::int32_t(std::ceil(v)); };
        return {low(x), low(y), low(x + side), low(y + side)};
    }
};

struct Shape {
    Drawing d;
    std::string name;
    double scale = 1;
    Shape(int n, const std::string& form) : d(n), name(form == "grid" ? "" : "," + form) {
        if (form == "dense") {
            scale = 2000.0 / (d.side * kSpacing);
            for (double& x : d.x)
                x *= scale;
            for (double& y : d.y)
                y *= scale;
        } else if (form == "spanned") {
            d.edges.emplace_back(0, n - 1);
        }
    }
    int width() const { return std::max(1, int(kW * scale)); }
    int height() const { return std::max(1, int(kH * scale)); }
    double extent() const { return d.side * kSpacing * scale; }
    double objects() const { return d.n + double(d.edges.size()); }
    Region region(Rng& r) const {
        const double side = kQuery * scale, room = extent() - side;
        return {r.unit() * room, r.unit() * room * 0.9, side};
    }
    /// Those that are asked about, all over the drawing.
    std::vector<Region> regions() const {
        Rng r(5);
        std::vector<Region> all;
        for (int i = 0; i < 3000; ++i)
            all.push_back(region(r));
        return all;
    }
    std::string label(const char* what) const { return what + name; }
};

struct Doc {
    QxFactory factory;
    QxDGraphManager* manager = factory.newDGraphManager();
    QxDGraph* graph = manager->addGraph(0);
    std::vector<QxDNode*> nodes;
    QxDNodeDList foundNodes;
    QxPEdgeDList foundSegments;

    Doc() = default;
    Doc(const Doc&) = delete;
    Doc& operator=(const Doc&) = delete;
    ~Doc() { manager->vRelease(); }
    long ask(const QxRect& rect) {
        graph->pQuadTree()->buildLists(&rect, &foundNodes, nullptr, nullptr, &foundSegments,
                                       nullptr, nullptr, nullptr, nullptr, 0);
        return foundNodes.count() + foundSegments.count();
    }
    /// Brings the index up to date at next to no further cost: nothing is there.
    void settle() {
        const QxRect nowhere(-900000, -900000, -899999, -899999);
        gSink = gSink + graph->pQuadTree()->overlaps(&nowhere, 1, 1, 1, 1, 1, 1, 1, 1);
    }
};

std::unique_ptr<Doc> build(const Shape& shape, long askEvery) {
    auto doc = std::make_unique<Doc>();
    doc->graph->disableQuadTree(0);
    doc->settle();
    const Drawing& d = shape.d;
    doc->nodes.reserve(d.n);
    long done = 0;
    const auto ask = [&] {
        if (++done % askEvery == 0)
            doc->settle();
    };
    for (int i = 0; i < d.n; ++i) {
        doc->nodes.push_back(doc->graph->addNodeWithCoordinates(
            std::int32_t(std::lround(d.x[i])), std::int32_t(std::lround(d.y[i])), shape.width(),
            shape.height(), 1, 0));
        ask();
    }
    for (auto [a, b] : d.edges) {
        doc->graph->addEdge(doc->nodes[a], doc->nodes[b], 0);
        ask();
    }
    doc->settle();
    return doc;
}

long readEnds(const QxDNode* v) {
    long s = 0;
    for (const QxEdgeDList* list : {v->pInEdgeList(), v->pOutEdgeList()})
        for (const QxDListCell* c = list->pFirstCell(); c; c = c->pNextCell()) {
            auto* e = static_cast<const QxDEdge*>(c->pObject());
            s += e->ntFromPoint(1).x() + e->ntToPoint(1).x();
        }
    return s;
}

void questions(const Shape& shape, Doc& doc, const char* P) {
    const int n = shape.d.n;
    // The first question about a straight edge makes the segment that it names.
    const std::vector<Region> regions = shape.regions();
    double t = now();
    long hits = 0;
    for (const Region& region : regions)
        hits += doc.ask(region.rect());
    const double first = (now() - t) / double(regions.size());
    out(P, shape.label("c.query.first").c_str(), n, first * 1e9, "ns/query");
    out(P, shape.label("c.query.first.hits").c_str(), n, double(hits) / double(regions.size()),
        "objects");
    Rng r(5);
    for (const Region& region : regions)
        gSink = gSink + doc.ask(region.rect());
    hits = 0;
    long asked = 0;
    const double again = perCall(
        [&](long) {
            const Region& region = regions[r.below(std::uint32_t(regions.size()))];
            hits += doc.ask(region.rect());
            ++asked;
        },
        20000, 1.0);
    out(P, shape.label("c.query").c_str(), n, again * 1e9, "ns/query");
    out(P, shape.label("c.query.hits").c_str(), n, double(hits) / double(asked), "objects");
    const double overlaps = perCall(
        [&](long) {
            const QxRect rect = regions[r.below(std::uint32_t(regions.size()))].rect();
            gSink = gSink + doc.graph->pQuadTree()->overlaps(&rect, 1, 1, 1, 1, 1, 1, 1, 1);
        },
        100000, 1.0);
    out(P, shape.label("c.overlaps").c_str(), n, overlaps * 1e9, "ns/query");
}

void indexed(const Shape& shape) {
    const char* P = "qxdraw+index";
    const Drawing& d = shape.d;
    const int n = d.n;
    coldWarm(P, ("(asked at the end)" + shape.name).c_str(), n, shape.objects(),
             [&] { return build(shape, 1L << 40); });
    coldWarm(P, ("(asked every 100)" + shape.name).c_str(), n, shape.objects(),
             [&] { return build(shape, AskEvery); });
    auto doc = build(shape, AskEvery);
    auto& nodes = doc->nodes;
    Rng r(5);
    const double reach = 20 * shape.scale;
    const auto step = [&] { return std::int32_t(std::lround((r.unit() - 0.5) * reach)); };
    const auto moves = [&](const char* what, int askEvery, bool ends) {
        const double t = perCall(
            [&](long k) {
                QxDNode* v = nodes[d.interior(r)];
                v->moveTo(v->iX() + step(), v->iY() + step(), 1);
                if (ends)
                    gSink = gSink + readEnds(v);
                if (k % askEvery == 0)
                    doc->settle();
            },
            500000, 1.0);
        out(P, shape.label(what).c_str(), n, t * 1e9, "ns/move");
    };
    moves("b.move(asked every 100)", AskEvery, false);
    moves("b.move(asked every time)", 1, false);
    moves("b.move(asked every 100,clipped ends)", AskEvery, true);
    const QxPoint home = nodes[0]->iCenter();
    const double border = perCall(
        [&](long k) {
            const int off = k & 1 ? 0 : 700;
            nodes[0]->moveTo(home.x() - off, home.y() - off, 1);
            gSink = gSink + doc->graph->pBoundingRect()->left();
            doc->settle();
        },
        500000, 1.0);
    nodes[0]->moveTo(home.x(), home.y(), 1);
    out(P, shape.label("b.move.border+bounds(asked every time)").c_str(), n, border * 1e9,
        "ns/move");

    std::vector<double> times;
    for (int k = 0; k < 5; ++k) {
        doc->graph->discardQuadTree();
        const double t = now();
        doc->graph->disableQuadTree(0);
        doc->settle();
        times.push_back(now() - t);
    }
    std::sort(times.begin(), times.end());
    out(P, shape.label("e.bulk").c_str(), n, times[2] / shape.objects() * 1e9, "ns/object");

    questions(shape, *doc, P);

    doc = build(shape, AskEvery);
    const double td = now();
    int done = 0;
    for (int i : randomOrder(n)) {
        doc->graph->discardNode(doc->nodes[i]);
        if (++done % AskEvery == 0)
            doc->settle();
    }
    out(P, shape.label("d.delete(asked every 100)").c_str(), n, (now() - td) / n * 1e9, "ns/node");
}

#if HAS_RTREE
namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;
using Pt = bg::model::point<double, 2, bg::cs::cartesian>;
using Box = bg::model::box<Pt>;
using Val = std::pair<Box, std::uint32_t>;

/// The boxes of nodes and of whole segments between centers.
template <class Algo>
void rtree(const char* P, const Shape& shape) {
    const Drawing& d = shape.d;
    const int n = d.n;
    std::vector<Val> vals;
    const double w = shape.width() / 2.0, h = shape.height() / 2.0;
    for (int i = 0; i < n; ++i)
        vals.emplace_back(Box(Pt(d.x[i] - w, d.y[i] - h), Pt(d.x[i] + w, d.y[i] + h)), i);
    for (auto [a, b] : d.edges)
        vals.emplace_back(Box(Pt(std::min(d.x[a], d.x[b]), std::min(d.y[a], d.y[b])),
                              Pt(std::max(d.x[a], d.x[b]), std::max(d.y[a], d.y[b]))),
                          std::uint32_t(vals.size()));
    bgi::rtree<Val, Algo> tree;
    for (int round = 0; round < 2; ++round) {
        tree.clear();
        const double t = now();
        for (const Val& v : vals)
            tree.insert(v);
        if (round)
            out(P, shape.label("a.insert.warm").c_str(), n, (now() - t) / shape.objects() * 1e9,
                "ns/object");
    }
    Rng r(5);
    const std::vector<Region> regions = shape.regions();
    std::vector<Val> found;
    long hits = 0, asked = 0;
    const double q = perCall(
        [&](long) {
            const Region& g = regions[r.below(std::uint32_t(regions.size()))];
            found.clear();
            tree.query(bgi::intersects(Box(Pt(g.x, g.y), Pt(g.x + g.side, g.y + g.side))),
                       std::back_inserter(found));
            hits += long(found.size());
            ++asked;
        },
        20000, 1.0);
    out(P, shape.label("c.query").c_str(), n, q * 1e9, "ns/query");
    out(P, shape.label("c.query.hits").c_str(), n, double(hits) / double(asked), "objects");
}
#endif

}  // namespace

int main(int argc, char** argv) {
    const Shape shape(argc > 1 ? atoi(argv[1]) : 10000, argc > 2 ? argv[2] : "grid");
    indexed(shape);
#if HAS_RTREE
    rtree<bgi::linear<16>>("rtree-linear16", shape);
    rtree<bgi::quadratic<16>>("rtree-quadratic16", shape);
#endif
}
