#!/usr/bin/env python3
# Copyright (c) 2026 the qxdraw authors
# SPDX-License-Identifier: MIT
"""Write the generated part of this data set (folder gen/) again.

Deterministic: the same arguments give the same bytes. Python 3 standard
library only, no network.

  generate.py [--out DIR] [--seed N] [--scale F] [NAME ...]

NAME is one of the names below; none means all of them. --scale multiplies the
node counts (0.1 for a quick test, 10 for a stress test).

  scalefree   directed graph with few hubs and many leaves, some cycles (DOT)
  nested      graphs nested four deep, edges within and across them (GraphML)
  grid        undirected lattice with centres and sizes given (GML)
  multiedge   bundles of 1..24 parallel edges, 1..12 self-loops a node (DOT)
  deepnest    clusters inside each other 64 deep, an edge from each to the top (DOT)
  star        one hub with 2,000 spokes, half of them edges with a label (DOT)

Not written by default (name it): huge, scalefree with 100,000 nodes.
"""
import argparse
import os
import random
import sys


def scalefree(out, rnd, n):
    """Each new node points at 1..3 earlier ones, the busy ones more likely."""
    with open(os.path.join(out, "scalefree-%s.dot" % short(n)), "w") as f:
        f.write("digraph scalefree {\n")
        ends = [0]
        for v in range(1, n):
            targets = set()
            for _ in range(rnd.choice((1, 2, 2, 3))):
                targets.add(ends[rnd.randrange(len(ends))] if rnd.random() < 0.75 else rnd.randrange(v))
            for t in sorted(targets):
                if rnd.random() < 0.05:
                    f.write("%d->%d\n" % (t, v))
                else:
                    f.write("%d->%d\n" % (v, t))
                ends += [t, v]
        f.write("}\n")


def nested(out, rnd, n):
    """A tree of graphs: 4 levels, leaves hold nodes; 15 % of edges cross."""
    with open(os.path.join(out, "nested-%s.graphml" % short(n)), "w") as f:
        w = f.write
        w('<?xml version="1.0" encoding="UTF-8"?>\n')
        w('<graphml xmlns="http://graphml.graphdrawing.org/xmlns">\n')
        w('<key id="l" for="node" attr.name="label" attr.type="string"/>\n')
        w('<graph id="G" edgedefault="directed">\n')
        leaves, group = [], {}
        per = 12
        groups = max(1, n // per)
        side = max(1, round(groups ** (1 / 3)))
        made = 0
        for a in range(side):
            w('<node id="a%d"><data key="l">Area %d</data><graph id="ga%d" edgedefault="directed">\n' % (a, a, a))
            for b in range(side):
                w('<node id="a%db%d"><data key="l">Block %d.%d</data><graph id="ga%db%d" edgedefault="directed">\n' % (a, b, a, b, a, b))
                for c in range(side):
                    g = "a%db%dc%d" % (a, b, c)
                    w('<node id="%s"><data key="l">Cell %d.%d.%d</data><graph id="g%s" edgedefault="directed">\n' % (g, a, b, c, g))
                    mine = []
                    for _ in range(per):
                        v = "n%d" % made
                        made += 1
                        mine.append(v)
                        w('<node id="%s"/>\n' % v)
                    for i, v in enumerate(mine):
                        if i:
                            w('<edge source="%s" target="%s"/>\n' % (mine[rnd.randrange(i)], v))
                    group[g] = mine
                    leaves += mine
                    w('</graph></node>\n')
                w('</graph></node>\n')
            w('</graph></node>\n')
        for i in range(max(1, made * 15 // 100)):
            s, t = rnd.choice(leaves), rnd.choice(leaves)
            if i % 20 == 0:
                t = rnd.choice(sorted(group))          # an edge to a group itself
            w('<edge id="x%d" source="%s" target="%s"/>\n' % (i, s, t))
        w('</graph>\n</graphml>\n')


def grid(out, rnd, n):
    side = max(2, round(n ** 0.5))
    with open(os.path.join(out, "grid-%d.gml" % (side * side)), "w") as f:
        f.write("graph [\n  directed 0\n")
        for y in range(side):
            for x in range(side):
                w, h = rnd.choice((30, 40, 60)), rnd.choice((20, 30))
                f.write("  node [ id %d graphics [ x %d y %d w %d h %d type \"%s\" ] ]\n"
                        % (y * side + x, x * 80, y * 50, w, h, rnd.choice(("rectangle", "oval"))))
        for y in range(side):
            for x in range(side):
                v = y * side + x
                if x + 1 < side:
                    f.write("  edge [ source %d target %d ]\n" % (v, v + 1))
                if y + 1 < side:
                    f.write("  edge [ source %d target %d ]\n" % (v, v + side))
        f.write("]\n")


def multiedge(out, rnd, _n):
    with open(os.path.join(out, "multiedge.dot"), "w") as f:
        f.write("digraph multiedge {\n")
        for k in range(1, 25):
            for j in range(k):
                a, b = ("p%d" % k, "q%d" % k) if j % 3 else ("q%d" % k, "p%d" % k)
                f.write('  %s -> %s [label="%d/%d"]\n' % (a, b, j + 1, k))
        for k in range(1, 13):
            for j in range(k):
                f.write('  s%d -> s%d [label="loop %d"]\n' % (k, k, j + 1))
        for k in range(1, 12):
            f.write("  s%d -> s%d\n  p%d -> s%d\n" % (k, k + 1, k, k))
        f.write("}\n")


def deepnest(out, _rnd, n):
    with open(os.path.join(out, "deepnest-%d.dot" % n), "w") as f:
        f.write("digraph deepnest {\n  compound=true\n  top\n")
        for d in range(n):
            f.write("%ssubgraph cluster_%d { label=\"level %d\"; n%d\n" % ("  " * min(d + 1, 20), d, d, d))
        f.write("}\n" * n)
        for d in range(n):
            f.write("  top -> n%d [lhead=cluster_%d]\n" % (d, d))
            if d:
                f.write("  n%d -> n%d\n" % (d - 1, d))
        f.write("}\n")


def star(out, rnd, n):
    with open(os.path.join(out, "star-%d.dot" % n), "w") as f:
        f.write("graph star {\n  hub [shape=ellipse label=\"the hub\"]\n")
        for i in range(n):
            f.write("hub--s%d%s\n" % (i, ' [label="%d"]' % rnd.randrange(1000) if i % 2 else ""))
        f.write("}\n")


def short(n):
    return "%dk" % (n // 1000) if n % 1000 == 0 and n else str(n)


MAKERS = {
    "scalefree": (scalefree, 10000), "nested": (nested, 4116), "grid": (grid, 2500),
    "multiedge": (multiedge, 1), "deepnest": (deepnest, 64), "star": (star, 2000),
    "huge": (scalefree, 100000),
}


def main(argv=None):
    ap = argparse.ArgumentParser(description="Write the generated graphs again.")
    ap.add_argument("--out", default=os.path.join(os.path.dirname(os.path.abspath(__file__)), "gen"))
    ap.add_argument("--seed", type=int, default=20260101)
    ap.add_argument("--scale", type=float, default=1.0)
    ap.add_argument("names", nargs="*", metavar="NAME")
    a = ap.parse_args(argv)
    names = a.names or [k for k in MAKERS if k != "huge"]
    bad = [k for k in names if k not in MAKERS]
    if bad:
        ap.error("no such graph: %s (known: %s)" % (", ".join(bad), ", ".join(MAKERS)))
    if a.scale <= 0:
        ap.error("--scale must be above 0")
    os.makedirs(a.out, exist_ok=True)
    for k in names:
        fn, n = MAKERS[k]
        fn(a.out, random.Random("%d/%s" % (a.seed, k)), max(2, round(n * a.scale)))
    return 0


if __name__ == "__main__":
    sys.exit(main())
