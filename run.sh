#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
#
# run.sh [FOLDER]: builds drenova on a Debian 12 machine and takes the sample network through a design run.
#   FOLDER   where the project file goes; by default build/sample
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
trap '[ $? -eq 0 ] || echo "run.sh: stopped while $doing; the reason stands above" >&2' EXIT
step() {
    doing=$*
    printf '\n== %s\n' "$doing"
}
show() { # the command as one would type it, then its answer
    printf '$ %s\n' "$*"
    "$@"
}

step "installing what is missing"
"$top/scripts/install-packages" build

step "building drenova"
cd "$top"
cmake --preset release -DDRENOVA_TESTS=OFF -DDRENOVA_BENCH=OFF
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

step "calculating the slopes of the level lines, which an import leaves to you"
show drenova slopes "$project"

step "telling what the project holds"
show drenova info "$project"

step "dimensioning for the two-year rain, one section as an example"
show drenova run "$project" 001_RAIN_ITP --params "$samples/design.json" --explain POPL-02

step "designing: rain, waste water, transit, total, hydraulics, checks"
show drenova design "$project" --params "$samples/design.json"

printf '\nThe project file, which opens in any GIS: %s\n' "$project"
