#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# test_packages.sh BUILD SOURCE LIBDIR IMAGE: makes the Debian packages twice, which gives the same bytes, unpacks them into one
# folder, looks whether all libraries are found there, and runs the host and a program that was built against them.
set -euo pipefail
build=$1 source=$2 libdir=$3 image=$4
packages=$(dirname "$build")/packages
work=$build/packages-test
rm -rf "$work"
mkdir -p "$work/first"

"$source/tools/package.sh" "$build"
mv "$packages"/*.deb "$work/first"
"$source/tools/package.sh" "$build" >/dev/null
for package in libvantor1 vantor-pdf libvantorcommon1 libvantor-dev vantor-viewer; do
    deb=$(ls "$packages/${package}"_*.deb)
    cmp "$deb" "$work/first/$(basename "$deb")"
    dpkg-deb -x "$deb" "$work/root"
done

needs() { dpkg-deb -f "$packages/$1"_*.deb Depends | grep -qE "(^|, )$2( |,|$)" || { echo "$1 does not depend on $2"; exit 1; }; }
needs libvantorcommon1 libqt5sql5-sqlite
needs libvantorcommon1 tesseract-ocr-eng
needs libvantorcommon1 libvantor1
needs vantor-viewer libvantorcommon1
needs libvantor-dev qtbase5-dev
needs vantor-pdf libpoppler-qt5-1
for package in libvantor1 libvantorcommon1 vantor-viewer; do
    if dpkg-deb -f "$packages/$package"_*.deb Depends | grep poppler; then
        echo "$package depends on poppler"
        exit 1
    fi
done

usr=$work/root/usr
for file in "$usr/bin/vantor-viewer" "$usr/libexec/vantor-pdf" "$usr/$libdir"/lib*.so "$usr/$libdir/qt5/plugins/designer/libvantor-designer.so"; do
    if readelf -d "$file" | grep -E 'RPATH|RUNPATH'; then
        echo "$file has a search path of its own"
        exit 1
    fi
    if LD_LIBRARY_PATH=$usr/$libdir ldd "$file" | grep -E "not found|$build/lib"; then
        echo "$file does not find its libraries in the packages"
        exit 1
    fi
done

cmake -S "$source/tests/consumer" -B "$work/host" -G Ninja -DCMAKE_PREFIX_PATH="$usr" >"$work/host.log"
cmake --build "$work/host" -- -j1 --quiet
export LD_LIBRARY_PATH=$usr/$libdir
"$source/tools/xrun" "$work/host/consumer" "$image"
"$source/tools/xrun" "$usr/bin/vantor-viewer" --screenshot "$work/viewer.png" "$image"
[ -s "$work/viewer.png" ]

# Documents open with the package vantor-pdf, and only with it.
document=$source/tests/data/pdf/pdfium_hello_world.pdf
"$source/tools/xrun" "$work/host/consumer" "$document"
rm "$usr/libexec/vantor-pdf"
if "$source/tools/xrun" "$work/host/consumer" "$document"; then
    echo "a document opened without vantor-pdf"
    exit 1
fi
