#!/bin/bash
# Feeds every parser of foreign data what its fuzz target thinks up, starting from the inputs in
# tests/fuzz/corpora, and then says what it found.
#
#   fuzz.sh [SECONDS [TARGET...]]     20 seconds for each of all targets, without arguments
#
# A finding ends the target and keeps its input in build/fuzz/findings; the target's program repeats
# it when given that file. What else is worth starting from next time gathers in build/fuzz/corpora.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

seconds=${1:-20}
if ! [[ $seconds =~ ^[1-9][0-9]*$ ]]; then
    echo "usage: $0 [SECONDS [TARGET...]]" >&2
    exit 2
fi
targets=("${@:2}")
if ((${#targets[@]} == 0)); then
    mapfile -t targets < <(ls tests/fuzz/corpora)
fi

scripts/setup.sh run
scripts/setup.sh fuzz
build=build/fuzz
if [[ ! -e $build/build.ninja || CMakePresets.json -nt $build/build.ninja ]]; then
    cmake --preset fuzz >/dev/null
fi
cmake --build "$build" --target "${targets[@]/#/fuzz_}"

fuzz() {
    local target=$1
    local grown=$build/corpora/$target findings=$build/findings/$target log=$build/fuzz/$target.log
    mkdir -p "$grown" "$findings"
    # The first directory takes what is new, the second one is only read.
    if "$build/fuzz/fuzz_$target" "$grown" "tests/fuzz/corpora/$target" \
        -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=4096 \
        -artifact_prefix="$findings/" -print_final_stats=1 >"$log" 2>&1; then
        echo "$target: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") runs, nothing found"
    else
        tail -n 40 "$log" >&2
        echo "$target: FOUND something, see $findings" >&2
        return 1
    fi
}
export -f fuzz
export build seconds
# As many at a time as there are processors. Fails when one of them does.
printf '%s\n' "${targets[@]}" |
    xargs --max-procs="$(nproc)" --max-args=1 bash -c 'fuzz "$1"' fuzz
