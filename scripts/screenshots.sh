#!/bin/bash
# Saves pictures of the views, in every state and some themes, at the scales 1 and 2, to
# build/screenshots.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh run
scripts/build.sh view_screenshots >&2
mkdir -p build/screenshots
for scale in 1 2; do
    QT_SCALE_FACTOR=$scale build/dev/tests/views/compact/view_screenshots build/screenshots
done
