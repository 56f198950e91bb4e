#!/bin/sh
# Copyright (c) 2026 the qxdraw authors
# SPDX-License-Identifier: MIT

# Sets everything up, builds, and runs all tests. May be run again; later runs build what changed.

set -eu
cd "$(dirname "$0")"

usage() {
    echo "usage: ./test.sh [--sanitize]"
    echo "  --sanitize   with the address, leak and undefined-behaviour sanitizers"
}

preset=release
case "${1-}" in
    "") ;;
    --sanitize) preset=asan ;;
    -h | --help)
        usage
        exit 0
        ;;
    *)
        usage >&2
        exit 2
        ;;
esac

./setup.sh test
echo "test: building in build/$preset"
cmake --preset "$preset" -DQXDRAW_BUILD_TESTS=ON
cmake --build --preset "$preset"
echo "test: running the tests"
exec ctest --preset "$preset" --parallel "$(nproc)"
