#!/bin/bash
# Saves pictures of the views, in every state and some themes, at the scales 1 and 2, to
# build/screenshots.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh run
scripts/build.sh view_screenshots onboarding_screenshots >&2
mkdir -p build/screenshots
for scale in 1 2; do
    for program in compact/view_screenshots onboarding/onboarding_screenshots; do
        QT_SCALE_FACTOR=$scale "build/dev/tests/views/$program" build/screenshots
    done
done
