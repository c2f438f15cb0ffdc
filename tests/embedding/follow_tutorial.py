#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""follow_tutorial.py TUTORIAL.md FOLDER: does what a reader does, from top to bottom: writes each file that a fenced
block shows under its name, and runs each block of shell commands in the folder."""
import pathlib
import re
import subprocess
import sys

BLOCK = re.compile(r"^(?:\*\*`(?P<name>[\w.]+)`\*\*\n\n)?```(?P<language>\w+)\n(?P<text>.*?)^```$", re.M | re.S)


def main():
    tutorial, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True)
    files = commands = 0
    for block in BLOCK.finditer(pathlib.Path(tutorial).read_text(encoding="utf-8")):
        if block["name"]:
            (folder / block["name"]).write_text(block["text"], encoding="utf-8")
            files += 1
        elif block["language"] == "sh":
            subprocess.run(["bash", "-euc", block["text"]], cwd=folder, check=True)
            commands += 1
        else:
            sys.exit(f"a block of {block['language']} has no file name:\n{block['text']}")
    print(f"{files} files written, {commands} blocks of commands run")
    if files < 5 or commands < 2:
        sys.exit("the tutorial has hardly any blocks: is its form another one now?")


main()
