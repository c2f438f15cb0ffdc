#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# race_log.sh PROGRAM : the race check of the log. It must find a planted race, or it is worth nothing; then
# it must find none in the log as it is.
set -uo pipefail
program=$1
export TSAN_OPTIONS="halt_on_error=1 exitcode=66"
run=("$program")

check() { # WHAT EXPECTED-EXIT PATTERN [ARGUMENT]
    output=$("${run[@]}" "${@:4}" 2>&1)
    code=$?
    if [ $code -ne "$2" ] || ! grep -qE "$3" <<<"$output"; then
        printf '%s\nFAILED: %s (exit code %d)\n' "$output" "$1" $code
        exit 1
    fi
    echo "$1: $(grep -oE "$3" <<<"$output" | head -1)"
}

# Some kernels spread addresses more widely than the sanitizer can follow.
if "$program" asker 2>&1 | grep -q "unexpected memory mapping"; then
    run=(setarch -R "$program")
fi
check "planted: IsEmpty without its lock" 66 "ThreadSanitizer: data race" asker
check "the log as it is" 0 "400000 messages of 400000, out of order 0"
