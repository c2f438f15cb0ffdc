#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""check_format.py CLANG-FORMAT: checks that every C++ file of the project is formatted as .clang-format says."""
import subprocess
import sys

import tree


def main():
    names = tree.cpp_files()
    result = subprocess.run([sys.argv[1], "--dry-run", "-Werror", *names], cwd=tree.ROOT, check=False)
    print(f"{len(names)} files")
    sys.exit(result.returncode)


main()
