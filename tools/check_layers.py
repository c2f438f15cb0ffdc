#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds the includes of src/ against layers.txt: nothing includes a higher floor, no file is without a
floor, no headers form a cycle."""
import fnmatch
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SRC = ROOT / "src"
INCLUDE = re.compile(r'^\s*#include\s+[<"]((?:Vantor|VantorCommon)/[^>"]+)[>"]', re.M)


def read_floors():
    rules = []
    for line in (ROOT / "tools/layers.txt").read_text().splitlines():
        if line and not line.startswith("#"):
            head, patterns = line.split(":")
            rules.append((int(head.split()[0]), patterns.split()))
    return rules


def floor_of(path, rules):
    for floor, patterns in rules:
        if any(fnmatch.fnmatch(path, pattern) for pattern in patterns):
            return floor
    return None


def find_cycle(graph):
    done, trail = set(), []

    def visit(node):
        if node in trail:
            return trail[trail.index(node):] + [node]
        if node in done:
            return None
        trail.append(node)
        for target in graph.get(node, []):
            found = visit(target)
            if found:
                return found
        trail.pop()
        done.add(node)
        return None

    for node in graph:
        found = visit(node)
        if found:
            return found
    return None


def main():
    rules = read_floors()
    graph, errors = {}, []
    files = sorted(p for p in SRC.rglob("*") if p.suffix in (".h", ".cpp"))
    for path in files:
        name = path.relative_to(SRC).as_posix()
        floor = floor_of(name, rules)
        if floor is None:
            errors.append(f"{name}: stands on no floor")
            continue
        includes = INCLUDE.findall(path.read_text())
        for target in includes:
            if not (SRC / target).is_file():
                errors.append(f"{name}: includes {target}, which does not exist")
                continue
            target_floor = floor_of(target, rules)
            if target_floor is not None and target_floor > floor:
                errors.append(f"{name} (floor {floor}) includes {target} (floor {target_floor})")
        if path.suffix == ".h":
            graph[name] = includes
    cycle = find_cycle(graph)
    if cycle:
        errors.append("header cycle: " + " -> ".join(cycle))
    print("\n".join(errors) if errors else f"{len(files)} files, no include goes up, no header cycle")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
