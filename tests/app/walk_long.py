# SPDX-License-Identifier: MIT
"""Ten minutes with the viewer: the acts in random order, every test file opened in passing."""
import collections
import os
import random
import time

import walk_acts as acts
import walk_person
from walk_person import Failure, key, wait_for, windows, xdotool

# Undo keeps every picture that was replaced, and the library at most 512 MB of buffers that were released.
MOST_MEMORY = 1500  # MB, of the whole process at any time
MOST_GROWTH = 400  # MB, from the end of the first third to the end
ACTS = (acts.zoom, acts.annotate, acts.sobel_in_a_rectangle, acts.median, acts.read_text, acts.view_in_3d,
        acts.document, acts.four_viewers, acts.bad_files, acts.globe, acts.change_setting, acts.go_dark, acts.go_light, acts.capture)


def data_files(folder):
    found = [os.path.join(where, name) for where, _, names in os.walk(folder) for name in names
             if not name.endswith((".md", ".txt"))]
    return sorted(found)


def open_in_passing(viewer, path):
    """Good or bad: the viewer has it or says why not. A document that wants a password gets none."""
    start = len(viewer.log())
    viewer.drop("ctrl+o")
    viewer.answer_file_dialog("Load File", path)

    def settled():
        if windows("Input the password"):
            key("Escape")
        failed = f" {path}\n" in viewer.log()[start:]
        return (failed or viewer.recent_files()[:1] == [path]) and xdotool("getactivewindow") == [viewer.window]

    wait_for(f"the end of opening {path}", settled, 30)


def check_answer(viewer):
    """The keyboard does something within two seconds."""
    viewer.log_after(lambda: key("ctrl+2"), r"ChangeSize\(2, 1\)", 2)
    viewer.log_after(lambda: key("ctrl+1"), r"ChangeSize\(1, 1\)", 2)


def walk(viewer, seconds, seed):
    """@param seconds  how long, at least"""
    print(f"seed {seed}", flush=True)
    order = random.Random(seed)
    files = data_files(viewer.data)
    order.shuffle(files)
    counts, memory = collections.Counter(), []
    start = time.monotonic()
    viewer.start()
    while time.monotonic() - start < seconds or files:
        act = order.choice(ACTS)
        act(viewer)
        counts[act.__name__] += 1
        for path in [files.pop() for _ in range(min(len(files), 6))]:
            open_in_passing(viewer, path)
            counts["files"] += 1
        tidy(viewer)
        check_answer(viewer)
        viewer.check_log()
        memory.append((time.monotonic() - start, viewer.memory()))
        print(f"{memory[-1][0]:7.1f} s  {memory[-1][1]:5.0f} MB  {act.__name__}", flush=True)
    viewer.quit()
    report(counts, memory)


def tidy(viewer):
    """The message bar closed, no picture left, and the view where it is."""
    viewer.check_alive()
    viewer.open_card()
    viewer.measure()


def report(counts, memory):
    print(f"{sum(counts.values())} acts: " + ", ".join(f"{count} {name}" for name, count in sorted(counts.items())))
    third = max(mb for when, mb in memory if when <= memory[-1][0] / 3)
    most = max(mb for _, mb in memory)
    print(f"memory: {third:.0f} MB in the first third, {most:.0f} MB at most, {memory[-1][1]:.0f} MB at the end")
    if most > MOST_MEMORY * walk_person.patience or memory[-1][1] - third > MOST_GROWTH * walk_person.patience:
        raise Failure("the memory grew beyond the bound")
