#!/bin/sh
# Copyright (c) 2026 the qxdraw authors
# SPDX-License-Identifier: MIT

# Sets everything up, builds the tool, and draws graphs from samples/ into out/. May be run again.

set -eu
cd "$(dirname "$0")"

if [ $# -gt 0 ]; then
    echo "usage: ./run.sh"
    echo "Builds the tool and draws samples/graphviz-epl/unix.gv to out/unix.svg and out/unix.png."
    case "$1" in -h | --help) exit 0 ;; *) exit 2 ;; esac
fi

./setup.sh run
echo "run: building the tool in build/release"
cmake --preset release
cmake --build --preset release --target qxdraw_tool

qxdraw=build/release/tools/qxdraw/qxdraw
run() {
    echo
    echo "\$ qxdraw $*"
    "$qxdraw" "$@"
}

mkdir -p out
run info samples/graphviz-epl/unix.gv
run draw samples/graphviz-epl/unix.gv -o out/unix.svg
run draw samples/graphviz-epl/unix.gv -o out/unix.png
run draw samples/bundles.dot -o out/bundles.svg
run edit samples/bundles.dot -o out/bundles-edited.svg --script samples/bundles.edits
echo
echo "run: look at out/unix.svg or out/unix.png; more graphs are in samples/, more commands in"
echo "run: $qxdraw --help"
