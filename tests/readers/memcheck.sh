#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# memcheck.sh PROGRAM DATA: reads a sample of files, one or two of each format and kind, under valgrind's
# memcheck and prints every pixel's digest, so that a pixel that nobody wrote is reported. Fails on any report.
# First it sees that the check is not blind.
set -u
program=$1 data=$2
here=$(dirname "$(readlink -f "$0")")
check() {
    valgrind --quiet --error-exitcode=9 --suppressions="$here/memcheck.supp" "$program" "$@"
}
if check --unwritten >/dev/null 2>&1; then
    echo "BLIND: a pixel that nobody wrote was not reported"
    exit 1
fi
check --here "$data"/bmp/{g_pal4rle,g_pal8rle,q_pal4rletrns,g_rgb24,q_rgba32-1}.bmp "$data"/broken/bmp_badrle*.bmp \
    "$data"/gif/{background-color,transparent-index,hippopotamus.interlaced}.gif \
    "$data"/png/{tbgn2c16,tbbn0g04,basi6a16,basn3p04}.png "$data"/tiff/{palette-1c-4b,fax4,rgb-3c-16b}.tiff \
    "$data"/jpeg/{hopper_orientation_6,peacock.s2x1-422}.jp*g "$data"/broken/peacock.progressive.truncated.jpeg
