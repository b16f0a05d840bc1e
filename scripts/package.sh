#!/bin/bash
# Makes what users install and prints the paths: Quorvin-<version>-linux-<machine>.tar.gz, with the
# bundle Quorvin.app that runs from any directory, and a Debian package.
#
#   package.sh [--build-dir DIRECTORY] [OUTPUT]
#
# Builds the preset "release" with Debian's flags, unless there is a build in DIRECTORY to take the
# program from. OUTPUT is build/packages if not given. The same program gives the same bytes.
set -euo pipefail

build=
if [[ ${1:-} == --build-dir && -d ${2:-} ]]; then
    build=$(realpath "$2")
    shift 2
fi
if [[ ${1:-} == -* ]] || (($# > 1)); then
    echo "usage: $0 [--build-dir DIRECTORY] [OUTPUT]" >&2
    exit 2
fi
source=$(realpath "$(dirname "${BASH_SOURCE[0]}")/..")
output=$(realpath --canonicalize-missing "${1:-$source/build/packages}")
cd "$source"

if [[ -z $build ]]; then
    scripts/setup.sh run
    scripts/setup.sh package
    build=$source/build/release
    flags() { DEB_BUILD_MAINT_OPTIONS=hardening=+all dpkg-buildflags --get "$1"; }
    cmake --preset release -DCMAKE_INSTALL_PREFIX=/usr \
        -DCMAKE_CXX_FLAGS="$(flags CXXFLAGS) $(flags CPPFLAGS)" \
        -DCMAKE_EXE_LINKER_FLAGS="$(flags LDFLAGS)" >&2
    cmake --build "$build" --target quorvin >&2
fi

# Those who unpack it read it, whatever the user's mask here.
umask 022
work=$(mktemp --directory)
trap 'rm -rf "$work"' EXIT
SOURCE_DATE_EPOCH=$(dpkg-parsechangelog --file packaging/debian/changelog --show-field Timestamp)
export SOURCE_DATE_EPOCH

# Gives everything below a directory the date of the package.
date_all() {
    find "$1" -print0 | xargs --null touch --no-dereference --date="@$SOURCE_DATE_EPOCH"
}

# Installs the program below a directory.
install_to() {
    cmake --install "$build" --prefix "$1" --strip >/dev/null
    local size
    for size in 16 22 24 32 48 64 128 256 512; do
        local icons=$1/share/icons/hicolor/${size}x${size}/apps
        mkdir -p "$icons"
        rsvg-convert --width "$size" --height "$size" --output "$icons/quorvin.png" \
            packaging/icons/quorvin.svg
    done
}

package=$work/package
install_to "$package/usr"
version=$(<"$package/usr/share/quorvin/version")
changelog_version=$(dpkg-parsechangelog --file packaging/debian/changelog --show-field Version)
if [[ ${changelog_version%-*} != "$version" ]]; then
    echo "$0: packaging/debian/changelog is of $changelog_version, the program of $version" >&2
    exit 1
fi
mkdir -p "$output"

# What Debian wants besides, and what it wants compressed.
documents=$package/usr/share/doc/quorvin
install -D --mode=644 packaging/debian/copyright "$documents/copyright"
gzip --best --no-name <packaging/debian/changelog >"$documents/changelog.Debian.gz"
gzip --best --no-name "$package/usr/share/man/man1/quorvin.1"
cp -r packaging/debian "$work/debian"
mkdir "$package/DEBIAN"
(
    cd "$work"
    dpkg-shlibdeps --warnings=0 "$package/usr/bin/quorvin"
    dpkg-gencontrol -P"$package"
    cd "$package"
    find usr -type f -print0 | sort --zero-terminated | xargs --null md5sum >DEBIAN/md5sums
)
date_all "$package"
debian_package=$output/quorvin_${changelog_version}_$(dpkg --print-architecture).deb
dpkg-deb --root-owner-group -Zxz --build "$package" "$debian_package" >/dev/null

bundle=$work/Quorvin.app
install_to "$bundle"
install -D --mode=644 LICENSE "$bundle/share/doc/quorvin/LICENSE"
# A bundle brings no libraries along: these packages of Debian have them.
dpkg-deb --field "$debian_package" Depends | sed 's/ ([^)]*)//g; s/, /\n/g' | sort \
    >"$bundle/share/doc/quorvin/packages"
date_all "$bundle"
archive=$output/Quorvin-$version-linux-$(uname --machine).tar.gz
tar --create --directory "$work" --sort=name --owner=0 --group=0 --numeric-owner \
    Quorvin.app | gzip --best --no-name >"$archive"
echo "$archive"
echo "$debian_package"
