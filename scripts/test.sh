#!/bin/bash
# Builds everything and runs every test; the arguments go to ctest ("-L unit", "-R history").
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh run
scripts/setup.sh test
scripts/build.sh
ctest --preset dev --parallel "$(nproc)" "$@"
