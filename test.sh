#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Copyright (C) the Drenova authors
#
# test.sh [--quick]: all checks that a change must pass. Installs missing packages, builds and tests the release preset,
# builds and tests again with the sanitizers, then checks format, house rules and clang-tidy.
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

current="starting"
step() {
    current=$*
    printf '\n== %s\n' "$current"
}
trap '[ $? -eq 0 ] || echo "test.sh: stopped while $current; the reason is printed above" >&2' EXIT

jobs=$(nproc)
export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1:strict_string_checks=1:detect_stack_use_after_return=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

# Windows are tested without a screen.
export QT_QPA_PLATFORM=offscreen

step "installing missing packages"
scripts/install-packages build test desktop

summary=()
bench=ON # one build is enough to see that the benchmarks compile
for preset in "${presets[@]}"; do
    step "building $preset"
    cmake --preset "$preset" -DDRENOVA_DESKTOP=ON -DDRENOVA_TESTS=ON -DDRENOVA_BENCH=$bench
    bench=OFF
    cmake --build --preset "$preset" --parallel "$jobs"

    step "testing $preset"
    log=build/$preset/ctest.log
    ctest --preset "$preset" --parallel "$jobs" --no-tests=error 2>&1 | tee "$log"
    summary+=("$preset: $(grep 'tests passed' "$log")")
done

if [ "${1-}" != --quick ]; then
    step "checking the source"
    scripts/check
fi

current="summing up"
printf '\n== all passed\n'
printf '%s\n' "${summary[@]}"
