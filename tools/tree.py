# SPDX-License-Identifier: MIT
"""Finds the files of the project in a clone and in an unpacked archive of the sources, without git."""
import fnmatch
import os
import pathlib

ROOT = pathlib.Path(__file__).resolve().parent.parent
CPP = (".cpp", ".h")


def is_ignored(path, patterns):
    """Whether one of the patterns of .gitignore names this path below ROOT, folders with a slash at their end."""
    path = "/" + path
    for pattern in patterns:
        if pattern.startswith("/"):  # from ROOT on; a star stands for a part of one name
            if path.count("/") == pattern.count("/") and fnmatch.fnmatchcase(path, pattern):
                return True
        elif fnmatch.fnmatchcase(path, "*/" + pattern):
            return True
    return False


def files():
    """The paths below ROOT of all files that .gitignore does not name, sorted."""
    lines = (ROOT / ".gitignore").read_text(encoding="utf-8").splitlines()
    patterns = [".git", ".git/"] + [line for line in lines if line and not line.startswith("#")]
    names = []
    for folder, folders, found in os.walk(ROOT):
        base = pathlib.Path(folder).relative_to(ROOT)
        folders[:] = [name for name in folders if not is_ignored(f"{base / name}/", patterns)]
        names += [str(base / name) for name in found if not is_ignored(str(base / name), patterns)]
    return sorted(names)


def cpp_files():
    """Those of them that are C++."""
    return [name for name in files() if name.endswith(CPP)]
