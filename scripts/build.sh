#!/bin/bash
# Builds the preset "dev" in build/dev; the arguments are targets, everything without any.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# The build configures itself anew when a CMakeLists.txt changes, but not for the presets.
if [[ ! -e build/dev/build.ninja || CMakePresets.json -nt build/dev/build.ninja ]]; then
    cmake --preset dev
fi
cmake --build build/dev ${1:+--target "$@"}
