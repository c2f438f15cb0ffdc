#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# coverage.sh [--report] : installs what is missing, builds both libraries and their tests instrumented, runs
# every test and prints which lines and branches of the libraries they reach. It fails when a test fails or a
# library stays below its limit. With --report it only prints the figures of the last run again.
#
# It counts all code of src/; no marker excludes a line. It does not count the branches that only an exception
# takes (the compiler adds one to every call) and those of lines without code (closing braces).
# A line of a template, and of a kernel that is compiled for several instruction sets, counts as reached when
# one of its instances is. The page of every source goes to build/coverage/html.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/coverage
tools/packages.sh build run test coverage

tests=0
if [ "${1:-}" != --report ]; then
    mkdir -p build
    cmake --preset coverage >build/configure-coverage.log 2>&1 || { cat build/configure-coverage.log; exit 1; }
    cmake --build --preset coverage -- --quiet
    find "$build" -name '*.gcda' -delete
    ctest --preset coverage || tests=$?
fi

mkdir -p "$build/html"
gcovr --root . --filter 'src/' --exclude '.*autogen.*' --exclude-throw-branches --exclude-unreachable-branches \
    -j "$(nproc)" --json-summary "$build/coverage.json" --html-details "$build/html/index.html" "$build"
python3 tools/coverage_report.py "$build/coverage.json" || exit 1
exit "$tests"
