#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# package.sh [BUILD]: makes the Debian packages of a finished build (build/release if none is named) in the folder
# "packages" beside it and checks them with lintian. Errors and warnings are failures.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build/release}" && pwd)
packages=$(dirname "$build")/packages
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")

if [ ! -f "$build/lib/designer/libvantor-designer.so" ]; then
    echo "$build is not complete. First: cmake --preset release && cmake --build --preset release"
    exit 1
fi
rm -rf "$packages"
mkdir -p "$packages/vantor-$version"
cp -r "$root/packaging/debian" "$packages/vantor-$version/debian"
cd "$packages/vantor-$version"
if [ "$(dpkg-parsechangelog -S Version)" != "$version" ]; then
    echo "packaging/debian/changelog is not about version $version"
    exit 1
fi
VANTOR_BUILD=$build DEB_BUILD_OPTIONS="noautodbgsym" dpkg-buildpackage --build=binary --no-sign >"$packages/log" 2>&1 ||
    { tail -30 "$packages/log"; exit 1; }
lintian --allow-root --fail-on error,warning "$packages"/*.changes
ls -l "$packages"/*.deb
