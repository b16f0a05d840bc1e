#!/bin/bash
# Builds and runs every benchmark and prints one line per figure: name, value, unit.
#
#   bench.sh [--json FILE]     writes the figures to FILE, too: [{"name":, "value":, "unit":}, ...]
set -euo pipefail

json=
case "$#${1:-}" in
    0) ;;
    2--json) json=$(realpath --canonicalize-missing -- "$2") ;;
    *)
        echo "usage: $0 [--json FILE]" >&2
        exit 2
        ;;
esac
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh run
scripts/build.sh benchmarks >&2

figures=$(mktemp)
trap 'rm -f "$figures"' EXIT
for source in bench/*.cpp; do
    "build/dev/bench/$(basename "$source" .cpp)" | tee --append "$figures"
done

if [[ -n $json ]]; then
    /usr/bin/python3 - "$figures" "$json" <<'PYTHON'
import json
import sys

rows = [line.split() for line in open(sys.argv[1], encoding="utf-8")]
figures = [{"name": name, "value": float(value), "unit": unit} for name, value, unit in rows]
with open(sys.argv[2], "w", encoding="utf-8") as file:
    json.dump(figures, file, indent=2)
    file.write("\n")
PYTHON
fi
