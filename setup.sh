#!/bin/sh
# Copyright (c) 2026 the qxdraw authors
# SPDX-License-Identifier: MIT

# Installs the Debian packages that are missing; does nothing when all are there.
#   ./setup.sh run    what building and running the library and the tool needs
#   ./setup.sh test   the same and what the tests need

set -eu

run_packages="g++ cmake ninja-build pkg-config ccache libxerces-c-dev libgraphviz-dev libcairo2-dev
librsvg2-dev libcli11-dev nlohmann-json3-dev fonts-dejavu-core"
test_packages="libgtest-dev libgmock-dev libbenchmark-dev clang-format python3"

case "${1-}" in
    run) packages=$run_packages ;;
    test) packages="$run_packages $test_packages" ;;
    *)
        echo "usage: ./setup.sh run|test" >&2
        exit 2
        ;;
esac

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "setup: not a Debian system; going on without a check. Needed here, by their Debian names:"
    echo "setup: " $packages
    exit 0
fi

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

missing=
for package in $packages; do
    is_installed "$package" || missing="$missing $package"
done
if [ -z "$missing" ]; then
    echo "setup: all packages needed are installed"
    exit 0
fi

if [ "$(id -u)" -ne 0 ]; then
    echo "setup: some packages are missing. Install them with this command, then start again:"
    echo
    echo "    sudo apt-get update && sudo apt-get install -y --no-install-recommends$missing"
    exit 1
fi

echo "setup: installing (this may take a minute)$missing"
export DEBIAN_FRONTEND=noninteractive
# Stale package lists may still be good enough to install from.
apt-get update -qq </dev/null || echo "setup: apt-get update failed; trying to install all the same"
apt-get install -y -qq --no-install-recommends $missing </dev/null >/dev/null
echo "setup: done"
