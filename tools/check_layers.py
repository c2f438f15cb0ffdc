#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks the includes of src/ against layers.txt: no file includes a higher floor, every file has a floor, no headers form a
cycle. Within a folder a model includes neither view nor controller, and a view includes no controller."""
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
    """The floor of the longest pattern that matches, or None."""
    found = [(len(pattern), floor) for floor, patterns in rules for pattern in patterns if fnmatch.fnmatch(path, pattern)]
    return max(found)[1] if found else None


def rank_of(name):
    """The place of a class in its triple, by its name: model, view, controller; None for all others."""
    for rank, pattern in ((2, "Ctrl"), (0, "Model"), (1, "View|Dlg|SnipTool")):
        if re.search(pattern, name):
            return rank
    return None


def breaks_triple(path, target):
    (folder, name), (target_folder, target_name) = path.rsplit("/", 1), target.rsplit("/", 1)
    rank, target_rank = rank_of(name), rank_of(target_name)
    return folder == target_folder and None not in (rank, target_rank) and target_rank > rank


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
            if breaks_triple(name, target):
                errors.append(f"{name} includes {target}: models know no views, neither know controllers")
        if path.suffix == ".h":
            graph[name] = includes
    cycle = find_cycle(graph)
    if cycle:
        errors.append("header cycle: " + " -> ".join(cycle))
    print("\n".join(errors) if errors else f"{len(files)} files, no include goes up, no header cycle")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
