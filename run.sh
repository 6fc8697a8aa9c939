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

step "deriving the waste-water flows"
show drenova run "$project" 01_WASTE_PERCENT --params "$samples/design.json"

step "telling what the project holds"
show drenova info "$project"

step "summing up"
# The values of KEY over the sections: the last column of its table, empty where a section has none.
summarise() { # KEY UNIT
    drenova get "$project" "$1" --format csv | LC_ALL=C awk -F, -v key="$1" -v unit="$2" '
        NR > 1 && $NF != "" {
            value = $NF + 0
            if (!count++) least = greatest = value
            if (value < least) least = value
            if (value > greatest) greatest = value
            sum += value
        }
        END {
            if (!count) exit 1
            printf "%-15s %8d %12.6g %12.6g %12.6g  %s\n", key, count, least, greatest, sum / count, unit
        }'
}
printf '%-15s %8s %12s %12s %12s  %s\n' "" sections least greatest mean unit
summarise FLOW_WASTE_PER m³/s
summarise SPECIFIC_FLOW 'm³/(s·m)'

printf '\nThe project file, which opens in any GIS: %s\n' "$project"
