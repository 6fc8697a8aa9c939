#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
#
# test.sh [--quick]: everything that has to hold before a change goes in. Installs the missing packages, builds and
# tests as delivered, builds and tests again under the sanitizers, then checks format, house rules and clang-tidy.
#   --quick   only the first build and its tests
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$top"

presets=(release asan-ubsan)
case "${1-}" in
"") ;;
--quick) presets=(release) ;;
*)
    echo "usage: test.sh [--quick]" >&2
    exit 2
    ;;
esac

jobs=$(nproc)
export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1:strict_string_checks=1:detect_stack_use_after_return=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

step() { printf '\n== %s\n' "$*"; }
trap 'echo "test.sh: stopped in: $current" >&2' ERR

current="installing packages"
scripts/install-packages build test

summary=()
for preset in "${presets[@]}"; do
    current="building $preset"
    step "$current"
    cmake --preset "$preset"
    cmake --build --preset "$preset" --parallel "$jobs"

    current="testing $preset"
    step "$current"
    log=build/$preset/ctest.log
    ctest --preset "$preset" --parallel "$jobs" --no-tests=error 2>&1 | tee "$log"
    summary+=("$preset: $(grep 'tests passed' "$log")")
done

if [ "${1-}" != --quick ]; then
    current="checking the source"
    step "$current"
    scripts/check
fi

step "All passed"
printf '%s\n' "${summary[@]}"
