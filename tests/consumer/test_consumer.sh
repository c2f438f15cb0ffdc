#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# test_consumer.sh BUILD SOURCE INCLUDE_DIR LIBDIR IMAGE: installs the build into a folder of its own, builds programs
# against what was installed, by CMake and by pkg-config, runs them, and compiles every installed header alone.
set -euo pipefail
build=$1 source=$2 include=$3 libdir=$4 image=$5
work=$build/consumer
rm -rf "$work"
mkdir -p "$work"
# What is installed may be moved.
cmake --install "$build" --prefix "$work/installed" >"$work/install.log"
mv "$work/installed" "$work/prefix"

headers=$work/prefix/$include
if grep -rnE '#\s*include\s*[<"]Q' "$headers/Vantor"; then
    echo "headers of libVantor include Qt"
    exit 1
fi

# What the README shows the author of a host, as a program.
example() { sed -n '/^```cpp$/,/^```$/{/^```/d;p}' "$source/README.md"; }
{
    printf '#include <%s>\n' QApplication QMainWindow
    example | grep '^#include'
    echo 'int main(int argc, char* argv[]) { QApplication app(argc, argv);'
    example | grep -v '^#include'
    echo 'return window.centralWidget() == view ? 0 : 1; }'
} >"$work/readme.cpp"

cmake -S "$source/tests/consumer" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_PREFIX_PATH="$work/prefix" -DVANTOR_INCLUDE_DIR="$headers" -DVANTOR_README_SOURCE="$work/readme.cpp"
cmake --build "$work/build" -- -j1 --quiet
"$source/tools/xrun" "$work/build/consumer" "$image"
"$source/tools/xrun" "$work/build/consumer" "$source/tests/data/pdf/pdfium_hello_world.pdf" # by the installed program
"$source/tools/xrun" "$work/build/readme"
[ ! -x "$work/prefix/bin/vantor-viewer" ] ||
    "$source/tools/xrun" "$work/prefix/bin/vantor-viewer" --screenshot "$work/viewer.png" "$image"
if "$source/tools/xrun" "$work/build/consumer" "$image.missing"; then
    echo "the host claims to have opened a missing file"
    exit 1
fi

cmake -S "$source/tests/consumer/core" -B "$work/core" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix"
cmake --build "$work/core" -- --quiet
"$work/core/core"

# by_pkgconfig <package> <source> <program>
by_pkgconfig() {
    local options
    options=$(pkg-config --cflags --libs "$1")
    # shellcheck disable=SC2086
    g++ -std=c++17 "$2" -o "$3" $options
}
export PKG_CONFIG_PATH=$work/prefix/$libdir/pkgconfig LD_LIBRARY_PATH=$work/prefix/$libdir
by_pkgconfig vantorcommon "$source/tests/consumer/main.cpp" "$work/host"
"$source/tools/xrun" "$work/host" "$image"
by_pkgconfig vantor "$source/tests/consumer/core/main.cpp" "$work/core-host"
"$work/core-host"
