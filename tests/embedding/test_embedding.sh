#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# test_embedding.sh BUILD SOURCE IMAGE: installs the build into a folder of its own, follows docs/EMBEDDING.md against it, tries
# what came out of it by the driver, then starts the program itself on an image and closes it as a person would.
set -euo pipefail
build=$1 source=$2 image=$3
work=$build/embedding
rm -rf "$work"
mkdir -p "$work"
export prefix=$work/prefix CMAKE_GENERATOR=Ninja CMAKE_BUILD_PARALLEL_LEVEL=2
cmake --install "$build" --prefix "$prefix" >"$work/install.log"

# The table of options has a row for each, and no other.
diff <(sed -n 's/^ *bool \(b[A-Za-z0-9]*\) = false;.*/\1/p' "$prefix/include/VantorCommon/shell/center/SCenterOptions.h" | sort) \
    <(sed -n 's/^| `\(b[A-Za-z0-9]*\)` |.*/\1/p' "$source/docs/EMBEDDING.md" | sort)

python3 "$source/tests/embedding/follow_tutorial.py" "$source/docs/EMBEDDING.md" "$work/host"
cmake -S "$source/tests/embedding" -B "$work/driver" -DCMAKE_PREFIX_PATH="$prefix" -DTUTORIAL="$work/host"
cmake --build "$work/driver"
"$source/tools/xrun" "$work/driver/driver" "$image"

# The window must come up with the image, and end by Alt+F4 with status 0.
# shellcheck disable=SC2016
"$source/tools/xrun" bash -euc '
    timeout 60 "$1" "$2" & host=$!
    timeout 30 xdotool search --sync --onlyvisible --name "^My host$" windowactivate --sync
    xdotool key alt+F4
    wait $host' bash "$work/host/build/my-host" "$image"
