#!/bin/bash
# Installs what is missing of Debian's packages. Asks and downloads nothing when all is there.
#
#   setup.sh run      what building, running and measuring the program need
#   setup.sh package  what making the packages needs besides
#   setup.sh test     what the tests, those of packages among them, and the demonstration need
#   setup.sh fuzz     what the fuzz targets need besides
#   setup.sh lint     what checking the sources needs besides
#   setup.sh sounds   what scripts/make_sounds.py needs
set -euo pipefail

run_packages=(
    cmake ninja-build g++ ccache pkg-config
    qt6-base-dev qt6-declarative-dev qt6-svg-dev qt6-multimedia-dev qcoro-qt6-dev
    libpulse-dev libsoxr-dev libkissfft-dev libsqlite3-dev libsndfile1-dev
    libxcb1-dev libxcb-ewmh-dev libxcb-icccm4-dev libxcb-xtest0-dev libxcb-xinput-dev
    libxkbcommon-dev libxkbcommon-x11-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    qml6-module-qtqml qml6-module-qtqml-workerscript qml6-module-qtquick
    qml6-module-qtquick-controls qml6-module-qtquick-layouts qml6-module-qtquick-templates
    qml6-module-qtquick-window
    fonts-inter fonts-dejavu-core lsof procps pulseaudio python3 xdotool xvfb
)
package_packages=(dpkg-dev librsvg2-bin)
test_packages=(
    "${package_packages[@]}" lintian desktop-file-utils appstream man-db
    xvfb openbox xdotool x11-utils x11-xkb-utils imagemagick fonts-dejavu-core xclip xsel procps
    xterm kitty alacritty konsole xfce4-terminal gnome-terminal tmux lsof
    pulseaudio pulseaudio-utils sox flite pocketsphinx pocketsphinx-en-us
    dbus at-spi2-core python3-gi
)
fuzz_packages=(clang libclang-rt-dev)
lint_packages=(clang-format clang-tidy git)
sounds_packages=(lame python3)

case "${1:-}" in
    run) packages=("${run_packages[@]}") ;;
    package) packages=("${package_packages[@]}") ;;
    test) packages=("${test_packages[@]}") ;;
    fuzz) packages=("${fuzz_packages[@]}") ;;
    lint) packages=("${lint_packages[@]}") ;;
    sounds) packages=("${sounds_packages[@]}") ;;
    *)
        echo "usage: $0 run|package|test|fuzz|lint|sounds" >&2
        exit 2
        ;;
esac

is_installed() {
    [[ $(dpkg-query --show --showformat '${db:Status-Status}' "$1" 2>/dev/null) == installed* ]]
}

missing=()
for package in "${packages[@]}"; do
    is_installed "$package" || missing+=("$package")
done
if ((${#missing[@]} == 0)); then
    exit 0
fi

as_root=()
if ((EUID != 0)); then
    as_root=(sudo)
fi
log=$(mktemp)
trap 'rm -f "$log"' EXIT

quietly() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "$@" >"$log" 2>&1 </dev/null || {
        cat "$log" >&2
        exit 1
    }
}

echo "Installing ${missing[*]}" >&2
quietly apt-get update --quiet
quietly apt-get install --quiet --yes --no-install-recommends "${missing[@]}"
