#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# test_install.sh BUILD SOURCE VERSION LIBDIR: what lies in a prefix after the installation is complete, is named as it should be and
# has nothing private in it. Says everything that is wrong, then fails.
set -uo pipefail
build=$1 source=$2 version=$3 libdir=$4
prefix=$build/install-test
rm -rf "$prefix"
cmake --install "$build" --prefix "$prefix" >/dev/null || exit 1
failures=0
fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

# The names that programs are linked with, and what the libraries offer: classes of theirs, no one else's.
own='^(VTT for |(non-)?virtual thunk to |vtable for |typeinfo (name )?for |guard variable for )*'
own+='(Vantor::|[CIS][A-Z][A-Za-z0-9_]*(::|$)|ShapeKinds::|ProcessOperations::|AnnotationRecovery::|BurnIn::|PictureExport::|__Internal|ImageView2DMode::|Image2DProcess[A-Za-z]*Type::)'
own+='|^(__bss_start|_edata|_end)$'
for library in Vantor VantorCommon; do
    file=$prefix/$libdir/lib$library.so
    [ "$(readlink "$file")" = "lib$library.so.${version%%.*}" ] || fail "$file is no link to the SONAME"
    [ "$(basename "$(readlink -f "$file")")" = "lib$library.so.$version" ] || fail "$file does not lead to version $version"
    readelf -d "$file" | grep -q "SONAME.*\[lib$library.so.${version%%.*}\]" || fail "the SONAME of $file"
    # Weak ones are instances of templates, which every program has of its own.
    leaks=$(nm -D --defined-only -C "$file" | awk '$2 !~ /[WVu]/' | cut -d' ' -f3- | grep -vE "$own")
    [ -z "$leaks" ] || fail "$file offers what is not its own: $leaks"
    [ -f "$prefix/$libdir/cmake/$library/${library}Config.cmake" ] || fail "there is no CMake package $library"
    pc=$(PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig pkg-config --modversion "${library,,}")
    [ "$pc" = "$version" ] || fail "pkg-config has version $pc of $library"
done

readelf -d "$prefix/libexec/vantor-pdf" | grep -q 'NEEDED.*poppler' || fail "vantor-pdf does not use poppler"
gpl=$(find "$prefix/$libdir" "$prefix/bin" -type f -exec sh -c 'readelf -d "$1" 2>/dev/null | grep -q "NEEDED.*poppler" && echo "$1"' - {} \;)
[ -z "$gpl" ] || fail "linked with poppler: $gpl"
find "$prefix" -name '*_p.h' | grep . && fail "private headers are installed"
grep -rlF "$source" "$prefix/$libdir/cmake" "$prefix/$libdir/pkgconfig" | grep . && fail "package files name the source tree"

share=$prefix/share
desktop-file-validate "$share/applications/vantor-viewer.desktop" || fail "the desktop file"
for type in $(sed -n 's/^MimeType=//p' "$share/applications/vantor-viewer.desktop" | tr ';' ' '); do
    grep -q "<mime-type type=\"$type\">" /usr/share/mime/packages/freedesktop.org.xml || fail "the system does not know $type"
done
[ -s "$share/icons/hicolor/scalable/apps/vantor-viewer.svg" ] || fail "there is no drawn icon"
for size in 16 24 32 48 64 128 256; do
    icon=$share/icons/hicolor/${size}x$size/apps/vantor-viewer.png
    file "$icon" | grep -q "PNG image data, $size x $size," || fail "$icon is no picture of that size"
done
manual=$share/man/man1/vantor-viewer.1
mandoc -T lint -W warning "$manual" || fail "the manual"

# The version is written in the project's own file; all else has it from there. Both logs of changes are history.
written=$(grep -rnIF "$version" "$source"/{app,cmake,designer,packaging,src,tools} | grep -v '/debian/changelog:')
[ -z "$written" ] || fail "the version is written again: $written"
[ "$("$source/tools/xrun" "$prefix/bin/vantor-viewer" --version)" = "vantor-viewer $version" ] || fail "vantor-viewer --version"
# Every option that the program names is in the manual, and none more.
options() { grep -oE -- '--[a-z][a-z-]+' | grep -v -- --help-all | sort -u; }
diff <("$source/tools/xrun" "$prefix/bin/vantor-viewer" --help | options) <(mandoc -T ascii "$manual" | col -b | options) ||
    fail "options of the program (<) and of its manual (>) differ"
[ "$failures" = 0 ]
