#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# fuzz.sh SECONDS|RUNSx [TARGET...] : runs the fuzz targets (all of build/fuzz/fuzz by default), each for so
# many seconds, or with "5000x" for so many inputs. The seeds are the test data of the format; a run leaves its
# findings in the folder that it names at its end. Build first: cmake --workflow --preset fuzz
set -euo pipefail
cd "$(dirname "$0")/.."
[ $# -ge 1 ] || { sed -n 3,5p "$0"; exit 2; }
case $1 in
*x) limit="-runs=${1%x}" ;;
*) limit="-max_total_time=$1" ;;
esac
shift
if [ $# -eq 0 ]; then
    for program in build/fuzz/fuzz/fuzz_*; do
        [ -x "$program" ] && set -- "$@" "$(basename "$program")"
    done
fi
for target in "$@"; do
    format=${target#fuzz_}
    format=${format#annotations_}
    work=$(mktemp -d)
    mkdir "$work/corpus" "$work/findings"
    find tests/data -type f \( -name "*.$format" -o -name "*.${format%f}" -o -name "*.${format/peg/pg}" \
        -o -path "tests/data/annotations/$format.*" \) -size -64k \
        -exec cp -t "$work/corpus" {} +
    echo "== $target: $(ls "$work/corpus" | wc -l) seeds, $limit"
    if ! QT_LOGGING_RULES="*=false" "build/fuzz/fuzz/$target" "$limit" -rss_limit_mb=2048 -timeout=5 -max_len=65536 \
        -print_final_stats=1 -artifact_prefix="$work/findings/" "$work/corpus" >"$work/log" 2>&1; then
        tail -40 "$work/log"
        echo "$target failed, see $work"
        exit 1
    fi
    grep -E "number_of_executed_units|peak_rss|slowest_unit" "$work/log"
    rm -rf "$work"
done
