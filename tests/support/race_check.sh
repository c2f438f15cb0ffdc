#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# race_check.sh PROGRAM PLANTED CLEAN... : looks for data races with helgrind in a QtTest program without a
# display. The function PLANTED holds a race on purpose and must be reported, or the check could not see; no
# report is allowed in the functions CLEAN. Prints one line for each and fails when any is not as it should be.
set -u
program=$1 planted=$2
shift 2
here=$(dirname "$(readlink -f "$0")")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -m 700 "$folder/runtime"
failures=0

# watch FUNCTION: leaves the number of reports in $reports; -1 when the test itself did not pass.
watch() {
    env -u DISPLAY HOME="$folder" XDG_RUNTIME_DIR="$folder/runtime" QT_QPA_PLATFORM=offscreen \
        valgrind --tool=helgrind --fair-sched=yes --suppressions="$here/helgrind.supp" ${RACE_CHECK_OPTIONS:-} \
        --log-file="$folder/log" "$program" "$1" -maxwarnings 0 >"$folder/out" 2>&1
    local rc=$?
    reports=$(sed -n 's/.*ERROR SUMMARY: \([0-9,]*\) errors.*/\1/p' "$folder/log" | tr -d ,)
    if [ $rc -ne 0 ] || [ -z "$reports" ]; then
        reports=-1
        cat "$folder/out"
    fi
}

watch "$planted"
if [ "$reports" -gt 0 ]; then
    echo "found   $planted: $reports reports of the race that was planted"
else
    echo "BLIND   $planted: the planted race was not reported ($reports)"
    failures=1
fi
for function in "$@"; do
    watch "$function"
    if [ "$reports" -eq 0 ]; then
        echo "clean   $function"
    else
        echo "RACE    $function: $reports reports"
        cat "$folder/log"
        failures=1
    fi
done
exit $failures
