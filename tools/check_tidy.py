#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""check_tidy.py CLANG-TIDY BUILD [PATTERN...]: runs the checks of .clang-tidy over the sources of src/ and app/ that BUILD
compiles (by its compile_commands.json), or over those that match a pattern such as "*/image/*". It looks at all of them
and then fails if there is any finding."""
import concurrent.futures
import fnmatch
import json
import pathlib
import subprocess
import sys

import tree

JOBS = 2
# The build's compiler does not name its own defaults, and a launcher before it hides which compiler it is.
LIKE_THE_BUILD = ["--extra-arg-before=--driver-mode=g++", "--extra-arg=-std=gnu++17"]


def sources(build, patterns):
    commands = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    compiled = {str(pathlib.Path(command["directory"], command["file"]).resolve()) for command in commands}
    names = [name for name in tree.cpp_files() if name.startswith(("src/", "app/")) and str(tree.ROOT / name) in compiled]
    return [name for name in names if not patterns or any(fnmatch.fnmatchcase(name, pattern) for pattern in patterns)]


def findings(tidy, build, name):
    """The findings in one source, as text; empty when there are none."""
    result = subprocess.run([tidy, "-p", build, "--quiet", *LIKE_THE_BUILD, tree.ROOT / name], check=False,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    return f"{name}:\n{result.stdout}{result.stderr}" if result.returncode else ""


def main():
    tidy, build = sys.argv[1], pathlib.Path(sys.argv[2])
    names = sources(build, sys.argv[3:])
    with concurrent.futures.ThreadPoolExecutor(JOBS) as pool:
        faults = [text for text in pool.map(lambda name: findings(tidy, build, name), names) if text]
    print("\n".join(faults))
    print(f"{len(names)} sources, findings in {len(faults)}")
    sys.exit(bool(faults) or not names)


main()
