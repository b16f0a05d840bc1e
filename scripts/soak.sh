#!/bin/bash
# Works the real program for many takes on a private desktop and counts what it holds before and
# after: one line per figure, name, value, unit. Fails when it holds more than before.
#
#   soak.sh [TAKES]     1000 takes, about half an hour, without the argument
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

takes=${1:-1000}
if ! [[ $takes =~ ^[1-9][0-9]*$ ]] || ((takes < 20 || takes % 2)) || (($# > 1)); then
    echo "usage: $0 [TAKES], an even number from 20 on" >&2
    exit 2
fi

scripts/setup.sh run
scripts/setup.sh test
scripts/build.sh quorvin drag-source >&2
build=$PWD/build/dev
export QUORVIN_SOAK_TAKES=$takes
export QUORVIN_EXECUTABLE=$build/bin/quorvin
export QUORVIN_DRAG_SOURCE=$build/tests/views/panel/drag-source
export QUORVIN_E2E_OUTPUT=$build/tests/e2e/output
cd tests/e2e
./alone.sh /usr/bin/python3 -B -m unittest soak_tests
