#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
#
# run.sh [FOLDER]: builds the command line of drenova on a Debian 12 machine and designs the sample network with it.
#   FOLDER   where the project file is written; by default build/sample
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

case "${1-}" in
-*)
    echo "usage: run.sh [FOLDER]" >&2
    exit 2
    ;;
esac
folder=${1:-$top/build/sample}

doing="starting"
trap '[ $? -eq 0 ] || echo "run.sh: stopped while $doing; the reason is printed above" >&2' EXIT
step() {
    doing=$*
    printf '\n== %s\n' "$doing"
}
show() { # prints the command, then runs it
    printf '$ %s\n' "$*"
    "$@"
}

step "installing missing packages"
"$top/scripts/install-packages" build

step "building drenova"
cd "$top"
cmake --preset release -DDRENOVA_DESKTOP=OFF -DDRENOVA_TESTS=OFF -DDRENOVA_BENCH=OFF
cmake --build --preset release --parallel "$(nproc)"
cd - >/dev/null

step "preparing $folder"
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
project=$folder/rivertown.gpkg
samples=$top/data/samples
PATH=$top/build/release/bin:$PATH

step "importing the sample network"
show drenova import "$samples/rivertown.geojson" -o "$project" --replace

step "calculating the slopes, which an import leaves alone"
show drenova slopes "$project"

step "printing a summary of the project"
show drenova info "$project"

step "dimensioning the pipes for the two-year rain, with one section explained"
show drenova run "$project" 001_RAIN_ITP --params "$samples/design.json" --explain POPL-02

step "designing: rain, waste water, transit, total, hydraulics, checks"
show drenova design "$project" --params "$samples/design.json"

printf '\nThe project file, which opens in any GIS: %s\n' "$project"
