#!/bin/bash
# Saves pictures of the views, in every state and some themes, at the scales 1 and 2, to
# build/screenshots.
#
#   screenshots.sh [--docs]     makes those of docs/pictures anew, too
set -euo pipefail

case "$#${1:-}" in
    0) docs= ;;
    1--docs) docs=docs/pictures ;;
    *)
        echo "usage: $0 [--docs]" >&2
        exit 2
        ;;
esac
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh run
scripts/build.sh view_screenshots >&2
pictures=build/screenshots
mkdir -p $pictures
for scale in 1 2; do
    export QT_SCALE_FACTOR=$scale
    for folder in compact main onboarding ring settings; do
        "build/dev/tests/views/$folder/${folder}_screenshots" $pictures
    done
done
[[ $docs ]] || exit 0

scripts/setup.sh test # for ImageMagick
# Surfaces as flat as these look the same in few colours, and dithering would make the files large.
save() {
    convert "$@" -strip +dither -colors 256 \
        -define png:compression-level=9 "PNG8:$docs/$name.png"
}
mkdir -p $docs
while read -r name source; do
    save "$pictures/$source.png"
done <<'LIST'
main-idle               main-razer-idle@1x
main-recording          main-razer-recording@1x
main-draft              main-razer-draft@1x
main-latte              main-latte-draft@1x
history                 main-razer-history@1x
picker                  main-razer-picker@1x
feed                    main-razer-feed@1x
banner                  main-razer-banner-idle@1x
compact-recording       compact-razer-recording@2x
settings-general        settings-razer-general@1x
settings-audio          settings-razer-audio@1x
settings-appearance     settings-razer-appearance@1x
settings-agents         settings-razer-agents@1x
settings-permissions    settings-razer-permissions@1x
onboarding-microphone   onboarding-razer-microphone-waiting-580@1x
onboarding-done         onboarding-razer-done-580@1x
LIST
name=ring-styles save $pictures/ring-razer@1x.png -resize 50%
montage $pictures/main-*-draft@2x.png -resize 240x -geometry +6+6 -tile 4x \
    -background none miff:- |
    name=themes save miff:-
