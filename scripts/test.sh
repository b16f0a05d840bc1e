#!/bin/bash
# Builds everything and runs every test; the arguments go to ctest ("-L unit", "-R history").
#
#   test.sh --sanitize [...]          the unit and view tests only, built with the address and
#                                     undefined-behaviour sanitizers, in build/asan
#   test.sh --sanitize=thread [...]   the same with the thread sanitizer, in build/tsan
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

case "${1:-}" in
    --sanitize) preset=asan ;;
    --sanitize=thread) preset=tsan ;;
    *) preset=dev ;;
esac

scripts/setup.sh run
scripts/setup.sh test
if [[ $preset == dev ]]; then
    scripts/build.sh
else
    shift
    cmake --preset "$preset"
    cmake --build --preset "$preset"
fi
ctest --preset "$preset" --parallel "$(nproc)" "$@"
