#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# test_consumer.sh BUILD SOURCE INCLUDE_DIR IMAGE: installs the build into a folder of its own, builds a host
# against what was installed, opens an image with it and compiles every installed header alone.
set -euo pipefail
build=$1 source=$2 include=$3 image=$4
work=$build/consumer
rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/prefix" >"$work/install.log"

headers=$work/prefix/$include
if find "$headers" -name '*_p.h' | grep .; then
    echo "private headers are installed"
    exit 1
fi
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
"$source/tools/xrun" "$work/build/readme"
[ ! -x "$work/prefix/bin/vantor-viewer" ] ||
    "$source/tools/xrun" "$work/prefix/bin/vantor-viewer" --screenshot "$work/viewer.png" "$image"
if "$source/tools/xrun" "$work/build/consumer" "$image.missing"; then
    echo "the host claims to have opened a missing file"
    exit 1
fi
