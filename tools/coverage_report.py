#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""coverage_report.py SUMMARY.json: makes the table of coverage.sh from the counts of gcovr.

It has a row for each folder and each library, then the files below a limit. The exit status is 1 when a library is below one.
"""
import json
import sys
from collections import defaultdict
from pathlib import PurePosixPath

LIBRARIES = ("src/Vantor", "src/VantorCommon")
LIMITS = {"line": 90.0, "branch": 80.0}


def percent(counts, kind):
    """Covered of total, in percent; 100 when the total is 0."""
    covered, total = counts[kind]
    return 100.0 * covered / total if total else 100.0


def below(counts):
    return any(percent(counts, kind) < limit for kind, limit in LIMITS.items())


def row(name, counts):
    cells = [f"{percent(counts, kind):.1f} % of {counts[kind][1]}" for kind in LIMITS]
    return f"| {name} | {cells[0]} | {cells[1]} |"


def main(path):
    with open(path, encoding="utf-8") as stream:
        files = {entry["filename"]: {kind: [entry[f"{kind}_covered"], entry[f"{kind}_total"]] for kind in LIMITS}
                 for entry in json.load(stream)["files"]}

    folders = defaultdict(lambda: {kind: [0, 0] for kind in LIMITS})
    for name, counts in files.items():
        library = next(library for library in LIBRARIES if name.startswith(library + "/"))
        for place in {library, str(PurePosixPath(name).parent)}:
            for kind in LIMITS:
                folders[place][kind] = [a + b for a, b in zip(folders[place][kind], counts[kind])]

    print("| Folder | Lines | Branches |\n|---|---|---|")
    for place in sorted(folders):
        if place not in LIBRARIES:
            print(row(place, folders[place]))
    for library in LIBRARIES:
        print(row(f"**{library}**, all of it", folders[library]))

    print(f"\nFiles below {LIMITS['line']:g} % of the lines or {LIMITS['branch']:g} % of the branches:\n")
    for name in sorted(name for name, counts in files.items() if below(counts)):
        print(row(name, files[name]))

    failed = [library for library in LIBRARIES if library not in folders or below(folders[library])]
    for library in failed:
        print(f"\n{library} is below the limit.")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
