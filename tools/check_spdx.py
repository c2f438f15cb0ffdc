#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that every file of the project states its licence: text sources by an SPDX line at their head, C++ files also by
the copyright line; a file that cannot carry one by a row of the table in a LICENCE(S).md beside it or above it, or by a
pattern of REST. LICENSES/ has the text of every named licence."""
import fnmatch
import pathlib
import re
import sys

from tree import CPP, ROOT, files

SPDX = re.compile(r"SPDX-License-Identifier: ([\w.+-]+)")
HEAD_LINES = 5
CPP_HEAD = ["// SPDX-License-Identifier: MIT", "// Copyright (c) The Vantor authors"]
# These carry the line; so does whatever begins with "#!".
SOURCES = CPP + (".java", ".py", ".sh", ".cmake", ".in", ".qrc", ".ui", ".vert", ".frag", ".svg", ".supp", ".1", ".desktop", ".xml",
                 "CMakeLists.txt", ".clang-format", ".clang-tidy", ".editorconfig", ".gitignore", "tools/layers.txt", "pixel_digests.txt")

# The project's own files that have no place for a line, or must stay as they are: MIT, see LICENSE.
REST = [
    "*.md", "LICENSE", "LICENSES/*", "CMakePresets.json", "packaging/debian/*",
    "cmake/*.in",                                               # their lines go into what is installed
    "src/VantorCommon/resources/Files/database_sqlite.sql",     # runs as it is
    "src/VantorCommon/resources/Image/*.png",                   # drawn by tools/make_icons.py
    "src/VantorCommon/resources/OpenGL/8081_earthmap4k.jpg",    # drawn by tools/make_earth.py
    "app/translations/*.ts",                                    # lupdate would drop a line
    "app/Image/*.png", "app/icons/*.png", "docs/pictures/*.png",
]

# How the licence cells of the tables begin, and the text of each licence; None where none is required.
TABLE_LICENCES = {
    "Apache-2.0": "Apache-2.0", "BSD-2-Clause": "BSD-2-Clause", "BSD-3-Clause": "BSD-3-Clause", "MIT-CMU": "MIT-CMU",
    "MIT (": "MIT", "PngSuite licence": "LicenseRef-PngSuite", "UDHR text (c) OHCHR, free to reproduce": None,
    "public domain": None, "Kodak Photo CD sample, released for unrestricted use": None,
}


def read_tables(names):
    """The licence cell of every file that a table names in its first column."""
    cells = {}
    for name in names:
        if not re.search(r"(^|/)LICENCES?\.md$", name):
            continue
        for row in (ROOT / name).read_text(encoding="utf-8").splitlines():
            columns = [cell.strip() for cell in row.strip().strip("|").split(" | ")]
            if len(columns) >= 7 and columns[0].startswith("`"):
                cells[str(pathlib.PurePosixPath(name).parent / columns[0].strip("`"))] = columns[4]
    return cells


def fault_of_table_row(cell):
    for begin, text in TABLE_LICENCES.items():
        if cell.startswith(begin):
            missing = text and not (ROOT / "LICENSES" / (text + ".txt")).is_file()
            return f"LICENSES/{text}.txt is missing" if missing else None
    return f"its table names an unknown licence: {cell}"


def is_source(name, data):
    return data.startswith(b"#!") or name.endswith(SOURCES)


def fault_of_source(name, data):
    head = data.decode("utf-8", "replace").splitlines()[:HEAD_LINES]
    if name.endswith(CPP):
        return None if head[:2] == CPP_HEAD else "does not begin with the two lines of every C++ file"
    found = next(filter(None, map(SPDX.search, head)), None)
    if not found:
        return f"has no SPDX line among its first {HEAD_LINES} lines"
    missing = not (ROOT / "LICENSES" / (found[1] + ".txt")).is_file()
    return f"names {found[1]}, of which LICENSES/ has no text" if missing else None


def fault_of(name, cells):
    if name in cells:
        return fault_of_table_row(cells[name])
    if any(fnmatch.fnmatchcase(name, pattern) for pattern in REST):
        return None
    data = (ROOT / name).read_bytes()
    return fault_of_source(name, data) if is_source(name, data) else "is covered by no line, table or pattern"


def main():
    names = files()
    cells = read_tables(names)
    faults = {name: fault_of(name, cells) for name in names}
    faults.update({name: "stands in a table and is not there" for name in cells if name not in faults})
    faults.update({pattern: "is a pattern that covers nothing" for pattern in REST if not fnmatch.filter(names, pattern)})
    for name, fault in faults.items():
        if fault:
            print(f"{name}: {fault}")
    print(f"{len(names)} files, {len(cells)} of them in tables")
    sys.exit(any(faults.values()))


main()
