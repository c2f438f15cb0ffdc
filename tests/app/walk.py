#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""walk.py VIEWER XRUN DATA [--long [MINUTES]] [--seed N] [--pictures FOLDER]: uses the viewer as a person does.

By mouse and keyboard alone. Short: once through everything, with an end and a start again. Long: the same acts in random order, every test
file opened in passing, for ten minutes; the seed that is printed repeats it. Pictures: those of the documents.
"""
import argparse
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time

import walk_acts as acts
import walk_long
import walk_person
import walk_pictures
from walk_person import Failure, grab, key, place, tool, wait_for
from walk_viewer import EDGE, Viewer


def told(act, *arguments):
    start = time.monotonic()
    result = act(*arguments)
    print(f"{time.monotonic() - start:6.2f} s  {act.__name__.replace('_', ' ')}", flush=True)
    return result


def walk(viewer):
    told(viewer.start)
    for act in (acts.zoom, acts.zoom_by_keys, acts.annotate, acts.sobel_in_a_rectangle, acts.median, acts.read_text,
                acts.view_in_3d, acts.document, acts.four_viewers, acts.bad_files, acts.globe, acts.change_setting,
                acts.go_dark):
        told(act, viewer)
        viewer.check_alive()
        viewer.check_log()
    told(come_back, viewer)
    told(survive_a_kill, viewer)
    told(acts.capture, viewer)
    viewer.check_log()
    told(viewer.quit)


def come_back(viewer):
    """Quit and start again: size, docks, layout, appearance, recent files and the setting are there."""
    viewer.open_card()
    viewer.measure()
    with_docks = viewer.box
    key("alt+v", "d", "p")
    wait_for("the room of a closed dock", lambda: viewer.find_view().width > with_docks.width + 100)
    tool("xdotool", "windowsize", "--sync", viewer.window, "1100", "760")
    key("ctrl+4")
    before = wait_for("four viewers", four_steady)
    size = place(viewer.window)
    viewer.quit()

    viewer.start()
    wait_for("the same four viewers", lambda: same_size(four_steady(), before))
    check_size = place(viewer.window)
    acts.check((check_size.width, check_size.height) == (size.width, size.height), f"{check_size} was {size}")
    acts.check(acts.is_dark(viewer), "the window is not dark any more")
    acts.check_resolution(viewer, "96")
    key("alt+f", "r", "1")
    wait_for("the most recent file", lambda: grab().box_of(EDGE))


def four_steady():
    found = acts.empty_views()
    return found if len(found) == 4 else None


def same_size(some, others):
    return some and [box[2:] for box in some] == [box[2:] for box in others]


def survive_a_kill(viewer):
    """In the middle of work: the next start finds the settings and the recent files."""
    acts.set_resolution(viewer, "120")
    key("ctrl+1")
    viewer.open(viewer.card_path)
    viewer.kill()
    viewer.start()
    acts.check_resolution(viewer, "120")
    key("alt+f", "r", "1")
    wait_for("the most recent file", lambda: grab().box_of(EDGE))
    key("ctrl+1", "alt+v")
    key("d", "Down", "Down", "Return")
    viewer.measure()
    acts.go_light(viewer)


def run(options):
    with tempfile.TemporaryDirectory() as folder:
        # A copy: dialogs remember folders, and what goes astray must not land among the data.
        data = shutil.copytree(options.data, os.path.join(folder, "data"))
        viewer = Viewer(options.viewer, data, folder)
        try:
            if options.long:
                walk_long.walk(viewer, options.long * 60, options.seed)
            elif options.pictures:
                walk_pictures.make(viewer, options.pictures)
            else:
                walk(viewer)
        except Exception:
            tool("import", "-window", "root", "walk-failure.png")
            print(viewer.log()[-2000:])
            if viewer.process and viewer.process.poll() is not None:
                print("The program ended with", viewer.process.returncode)
            print("The screen is in", os.path.abspath("walk-failure.png"))
            raise
        finally:
            if viewer.process and viewer.process.poll() is None:
                viewer.process.kill()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    for name in ("viewer", "xrun", "data"):
        parser.add_argument(name, type=os.path.abspath)
    parser.add_argument("--long", type=float, nargs="?", const=10, metavar="MINUTES", help="acts in random order")
    parser.add_argument("--seed", type=int, default=random.randrange(1000000), help="of the random order")
    parser.add_argument("--patience", type=float, default=1, help="how many times longer and larger all may be")
    parser.add_argument("--pictures", type=os.path.abspath, metavar="FOLDER", help="make those of the documents")
    parser.add_argument("--inside", action="store_true", help=argparse.SUPPRESS)
    options = parser.parse_args()
    if not options.inside:
        if options.pictures:
            os.environ["XRUN_SCREEN"] = "2700x1900"  # room for twice the size
        return subprocess.call([options.xrun, sys.executable, *sys.argv, "--inside"])
    walk_person.patience = options.patience
    try:
        run(options)
    except Failure as failure:
        print(f"FAILED: {failure}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
