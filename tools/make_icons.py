#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Draws the icons of the components: 24 x 24 pixels, and 48 x 48 as name@2x.png.

Needs rsvg-convert (librsvg2-bin). The results are in the repository; run it after changing a drawing.
Every drawing lives on a 24 x 24 grid: lines 2 units wide with their middle on whole units, so that they stay
sharp at 24 pixels, one dark colour, one accent.
"""
import pathlib
import subprocess
import sys

TARGET = pathlib.Path(__file__).resolve().parent.parent / "src/VantorCommon/resources/Image"
SIZES = {"": 24, "@2x": 48}

LINE = "#37474f"
ACCENT = 'stroke="#1976d2"'
ACCENT_FILL = 'fill="#1976d2" stroke="none"'
PAPER = 'fill="#ffffff"'
RED = "#d32f2f"

HEAD = (
    '<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24" fill="none" '
    f'stroke="{LINE}" stroke-width="2" stroke-linecap="round" stroke-linejoin="round">'
)

LETTER_D = f'<path {ACCENT} d="M14 6V18H16C19.5 18 21 15.5 21 12S19.5 6 16 6Z"/>'
BACK_ARROW = '<path d="M4 5V10H9"/><path d="M4.6 10A8 8 0 1 1 4 14"/>'
CHEVRON_LEFT = '<path stroke-width="2.5" d="M16 4L8 12L16 20"/>'
MIRROR = '<g transform="translate(24 0) scale(-1 1)">{}</g>'

ICONS = {
    "2D": '<path d="M3 9C3 7 4.5 6 6.5 6S10 7 10 9C10 12 3 14 3 18H10"/>' + LETTER_D,
    "3D": '<path d="M3 6H10L6.5 10.5C9 10.5 10 12 10 14C10 16.5 8.5 18 6.5 18C4.8 18 3.6 17.3 3 16"/>'
    + LETTER_D,
    "selection": '<path stroke-linecap="butt" stroke-dasharray="3 2" d="M3 3H18V10M3 3V18H9"/>'
    f'<path {ACCENT_FILL} d="M10 9L22 14L17 16.2L20.6 20L18.8 21.8L15.1 18.1L13 22.5Z"/>',
    "move": '<path d="M12 3V21M3 12H21"/>'
    '<path d="M9 5L12 2L15 5M9 19L12 22L15 19M5 9L2 12L5 15M19 9L22 12L19 15"/>',
    "zoomfit": '<path d="M3 8V3H8M16 3H21V8M21 16V21H16M8 21H3V16"/>'
    f'<rect {ACCENT} x="8" y="8" width="8" height="8" rx="1"/>',
    "rotate-left": BACK_ARROW,
    "rotate-right": MIRROR.format(BACK_ARROW),
    "previous": CHEVRON_LEFT,
    "next": MIRROR.format(CHEVRON_LEFT),
    "capture": '<path d="M3 8H7L9 5H15L17 8H21V19H3Z"/>' f'<circle {ACCENT} cx="12" cy="13" r="3"/>',
    "ruler": '<g transform="rotate(-45 12 12)"><rect x="1" y="8" width="22" height="8" rx="1"/>'
    f'<path {ACCENT} stroke-width="1.5" d="M5 8.5V11M8.5 8.5V12.5M12 8.5V11M15.5 8.5V12.5M19 8.5V11"/></g>',
    "clear": '<path d="M4 6H20M9 6V3H15V6M6 6L7 21H17L18 6M10 10V17M14 10V17"/>',
    "add": f'<circle cx="12" cy="12" r="9"/><path {ACCENT} d="M12 8V16M8 12H16"/>',
    "open-folder": '<path d="M3 19V5H9L11 8H19V11"/>'
    f'<path {ACCENT} d="M3 19L7 11H22L18.5 19Z"/>',
    "save_file": '<path d="M3 3H17L21 7V21H3Z"/><path d="M8 3V8H15V3"/>'
    f'<path {ACCENT} d="M7 21V14H17V21"/>',
    "photo": '<rect x="2" y="4" width="20" height="16" rx="2"/><path d="M3 18L9 11L13 16L16 13L21 18"/>'
    f'<circle {ACCENT_FILL} cx="16.5" cy="8.5" r="2"/>',
    "pdf": '<path d="M4 9V2H14L20 8V9M14 2V8H20M4 21V22H20V21"/>'
    f'<rect fill="{RED}" stroke="none" x="1" y="10" width="22" height="10" rx="1"/>'
    '<path stroke="#ffffff" stroke-width="1.4" d="M4 18V12H6C8 12 8 15.2 6 15.2H4M10.5 12V18H11.5'
    'C14.5 18 14.5 12 11.5 12ZM17 18V12H20.5M17 15H20"/>',
    "close": '<path stroke-width="2.5" d="M5 5L19 19M19 5L5 19"/>',
    "copy": f'<path d="M16 6V3H3V17H8"/><rect {ACCENT} x="8" y="7" width="13" height="14" rx="1"/>',
    "paste": '<path d="M8 4H4V21H9M16 4H20V9"/><rect x="8" y="2" width="8" height="4" rx="1"/>'
    f'<path {ACCENT} d="M12 11H21V22H12ZM15 15H18M15 18H18"/>',
    "search": '<circle cx="10" cy="10" r="7"/><path stroke-width="2.5" d="M15.5 15.5L21 21"/>',
}


def draw(name: str, body: str) -> None:
    svg = (HEAD + body + "</svg>").encode()
    for suffix, size in SIZES.items():
        png = TARGET / f"{name}{suffix}.png"
        subprocess.run(["rsvg-convert", "-w", str(size), "-h", str(size), "-o", str(png)], input=svg, check=True)


def main() -> int:
    TARGET.mkdir(parents=True, exist_ok=True)
    for name, body in ICONS.items():
        draw(name, body)
    print(f"{len(ICONS)} icons in {TARGET}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
