#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Changes the code on purpose, one row of tools/mutants/ at a time, and checks whether a test notices.

It applies each row alone, builds, runs the row's tests, and restores the file in every case. tests/README.md
explains the table and its figures.

  tools/mutants.py --check                     do all rows still apply?
  tools/mutants.py                             all of them (hours)
  tools/mutants.py src/Vantor/filter goto-*    those of a folder, or by name
"""
import argparse
import collections
import contextlib
import fnmatch
import json
import pathlib
import re
import runpy
import signal
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
FIELDS = ("name", "file", "old", "new", "notice", "tests")
Row = collections.namedtuple("Row", FIELDS)
Outcome = collections.namedtuple("Outcome", "kind text")


def rows_of(path):
    return [Row(*row) for row in runpy.run_path(str(path))["ROWS"]]


def all_rows():
    return [row for path in sorted((ROOT / "tools/mutants").glob("*.py")) for row in rows_of(path)]


def is_meant(row, pattern):
    return fnmatch.fnmatchcase(row.name, pattern) or row.file.startswith(pattern.rstrip("/") + "/") \
        or row.file == pattern


def why_not_applicable(row):
    """Why a row cannot be tried, or None."""
    path = ROOT / row.file
    if not path.is_file():
        return f"there is no {row.file}"
    found = path.read_text(encoding="utf-8").count(row.old)
    if found != 1:
        return f"the old text is found {found} times in {row.file}"
    if row.old == row.new or not row.notice or not row.tests:
        return "the row changes nothing, or says too little"
    return None


def check(rows):
    faults = [f"{row.name}: {why}" for row in rows if (why := why_not_applicable(row))]
    names = collections.Counter(row.name for row in rows)
    faults += [f"{name}: {count} rows have this name" for name, count in names.items() if count > 1]
    for fault in faults:
        print("ERROR", fault)
    folders = {pathlib.PurePath(row.file).parent for row in rows}
    print(f"{len(rows)} rows in {len(folders)} folders, {len(faults)} faults")
    return not faults


@contextlib.contextmanager
def changed(row):
    """The tree with one row applied."""
    path = ROOT / row.file
    before = path.read_bytes()
    try:
        path.write_bytes(before.replace(row.old.encode(), row.new.encode()))
        yield
    finally:
        path.write_bytes(before)


class Build:
    """A configured build folder, and the commands that use it."""

    def __init__(self, folder, jobs):
        self.folder = folder
        self.jobs = str(jobs)

    def run(self, *command):
        return subprocess.run(command, cwd=ROOT, stdin=subprocess.DEVNULL, text=True, errors="replace",
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def find(self, tests):
        """The names of the tests of a regular expression, and what must be built to run them."""
        listed = subprocess.run(["ctest", "--test-dir", self.folder, "--show-only=json-v1", "-R", tests], cwd=ROOT,
                                check=True, stdout=subprocess.PIPE).stdout
        found = json.loads(listed)["tests"]
        programs = {pathlib.PurePath(word).name for test in found for word in test.get("command", [])
                    if word.startswith((f"{self.folder}/tests/", f"{self.folder}/bin/"))}
        return [test["name"] for test in found], ["Vantor", "VantorCommon", *sorted(programs)]

    def make(self, targets):
        return self.run("cmake", "--build", self.folder, "--parallel", self.jobs, "--target", *targets)

    def test(self, tests, *options):
        return self.run("ctest", "--test-dir", self.folder, "--parallel", self.jobs, "--timeout", "300",
                        "-R", tests, *options)


def failed_tests(output):
    return re.findall(r"^\s*\d+ - (\S+) \(", output, re.MULTILINE)


def try_row(row, build, broken):
    why = why_not_applicable(row)
    names, targets = ([], []) if why else build.find(row.tests)
    if not names or broken.intersection(names):
        return Outcome("ERROR", why or f"no test is called {row.tests}, or one fails without a change")
    with changed(row):
        made = build.make(targets)
        if made.returncode != 0:
            return Outcome("ERROR", "does not build:\n" + made.stdout[-1500:])
        tested = build.test(row.tests, "--stop-on-failure")
    if tested.returncode == 0:
        return Outcome("SURVIVED", f"{row.notice} ({row.file}; {row.tests})")
    failed = failed_tests(tested.stdout)
    if not failed:
        return Outcome("ERROR", "the tests did not run:\n" + tested.stdout[-1500:])
    return Outcome("noticed", " ".join(failed))


def broken_tests(rows, build):
    """The tests that fail without a change: they would notice every row."""
    broken = set()
    for name in sorted({name for tests in {row.tests for row in rows} for name in build.find(tests)[0]}):
        this = f"^{re.escape(name)}$"
        made = build.make(build.find(this)[1])
        tested = build.test(this) if made.returncode == 0 else made
        if tested.returncode != 0:
            print(f"ERROR {name} fails without any change:\n{tested.stdout[-1500:]}", flush=True)
            broken.add(name)
    return broken


def run(rows, build, broken):
    outcomes = []
    for row in rows:
        begin = time.monotonic()
        outcome = try_row(row, build, broken)
        outcomes.append((row, outcome))
        print(f"{outcome.kind:9}{row.name} ({time.monotonic() - begin:.0f} s): {outcome.text}", flush=True)
    count = collections.Counter(outcome.kind for _, outcome in outcomes)
    print(f"\n{count['noticed']} noticed of {count['noticed'] + count['SURVIVED']}, {count['ERROR']} errors")
    for row, outcome in outcomes:
        if outcome.kind == "SURVIVED":
            print(f"  {row.name}: {outcome.text}")
    return count["SURVIVED"] + count["ERROR"] == 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("rows", nargs="*", help="names (with wildcards), files or folders; none: all")
    parser.add_argument("--check", action="store_true", help="only look whether the rows apply")
    parser.add_argument("--preset", default="dev", help="CMake preset, with build/PRESET (dev)")
    parser.add_argument("--build", help="another build folder, which is configured already")
    parser.add_argument("--jobs", type=int, default=1, help="programs at a time (1)")
    parser.add_argument("--trust", action="store_true", help="do not first run the tests without a change")
    arguments = parser.parse_args()

    rows = all_rows()
    unknown = [pattern for pattern in arguments.rows if not any(is_meant(row, pattern) for row in rows)]
    if unknown:
        parser.error("no row for " + ", ".join(unknown))
    if arguments.rows:
        rows = [row for row in rows if any(is_meant(row, pattern) for pattern in arguments.rows)]
    if arguments.check:
        return check(rows)

    # Every way out of the program restores the file.
    for number in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, lambda *_: sys.exit(1))
    folder = pathlib.Path(arguments.build or ROOT / "build" / arguments.preset).resolve()
    if not (folder / "CMakeCache.txt").is_file():
        # Do not link the programs again when only a library has changed inside.
        subprocess.run(["cmake", "--preset", arguments.preset, "-B", str(folder),
                        "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON"], cwd=ROOT, check=True)
    build = Build(str(folder), arguments.jobs)
    return run(rows, build, set() if arguments.trust else broken_tests(rows, build))


if __name__ == "__main__":
    sys.exit(0 if main() else 1)
