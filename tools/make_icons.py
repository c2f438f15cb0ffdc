#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Turns the drawings of tools/icons into the pictures of the library, of the viewer and of the desktop.

Without an argument it writes them; that needs rsvg-convert (librsvg2-bin; the ones in the repository are of
version 2.54.7, which writes the same bytes each time). With --check it only checks that every drawing has
its pictures and every picture its drawing, and needs no program.
"""
import pathlib
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
DRAWINGS = ROOT / "tools/icons"
PROGRAM = DRAWINGS / "vantor-viewer.svg"
PROGRAM_ICONS = ROOT / "app/icons"
TOOL_BARS = {DRAWINGS: ROOT / "src/VantorCommon/resources/Image", DRAWINGS / "host": ROOT / "app/Image"}
TOOL_BAR_SIZES = {"": 24, "@2x": 48}
PROGRAM_SIZES = (16, 24, 32, 48, 64, 128, 256)


def jobs():
    """Yields (drawing, picture, side in pixels)."""
    for source, target in TOOL_BARS.items():
        for svg in sorted(source.glob("*.svg")):
            if svg != PROGRAM:
                for suffix, side in TOOL_BAR_SIZES.items():
                    yield svg, target / f"{svg.stem}{suffix}.png", side
    for side in PROGRAM_SIZES:
        yield PROGRAM, PROGRAM_ICONS / f"{PROGRAM.stem}-{side}.png", side


def check() -> int:
    targets = [*TOOL_BARS.values(), PROGRAM_ICONS]
    wanted = {png for _, png, _ in jobs()}
    found = {png for target in targets for png in target.glob("*.png")}
    for png in sorted(wanted - found):
        print(f"no picture {png.relative_to(ROOT)}: run tools/make_icons.py", file=sys.stderr)
    for png in sorted(found - wanted):
        print(f"no drawing for {png.relative_to(ROOT)}", file=sys.stderr)
    copy = PROGRAM_ICONS / PROGRAM.name
    stale = not copy.is_file() or copy.read_bytes() != PROGRAM.read_bytes()
    if stale:
        print(f"{copy.relative_to(ROOT)} is not the drawing", file=sys.stderr)
    return 1 if stale or wanted != found else 0


def make() -> int:
    for svg, png, side in jobs():
        png.parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(["rsvg-convert", "-w", str(side), "-h", str(side), "-o", str(png), str(svg)], check=True)
    shutil.copyfile(PROGRAM, PROGRAM_ICONS / PROGRAM.name)
    return check()


if __name__ == "__main__":
    if sys.argv[1:] not in ([], ["--check"]):
        sys.exit(f"usage: {sys.argv[0]} [--check]")
    sys.exit(check() if sys.argv[1:] else make())
