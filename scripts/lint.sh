#!/bin/bash
# Checks the format of all sources with clang-format, and the sources given, or all, with clang-tidy.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mapfile -t formatted < <(git ls-files '*.cpp' '*.h')
clang-format --dry-run -Werror "${formatted[@]}"

if (($# > 0)); then
    sources=("$@")
else
    mapfile -t sources < <(git ls-files 'src/*.cpp' 'tests/*.cpp' 'bench/*.cpp' ':!tests/fuzz/*')
fi
printf '%s\0' "${sources[@]}" |
    xargs --null --max-procs="$(nproc)" --max-args=1 clang-tidy -p build/dev --quiet
