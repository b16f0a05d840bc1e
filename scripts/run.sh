#!/bin/bash
# Builds the program and starts it, with the arguments given. Where there is no display it shows
# the program at work on a virtual one instead; see demo/dictate.py.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

program=build/dev/bin/quorvin
scripts/setup.sh run
scripts/build.sh quorvin >&2
if [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
    exec "$program" "$@"
fi
scripts/setup.sh test
exec tests/e2e/alone.sh /usr/bin/python3 -B scripts/demo/dictate.py "$program" build/demo
