# SPDX-License-Identifier: MIT
"""The pictures of the documents: the viewer at work, as the screen shows it."""
import os
import time

import walk_acts as acts
from walk_person import click, drag, key, place, point, steady, tool, wait_for, wheel, windows
from walk_viewer import BACKGROUND

COLOURS = "255"  # of each picture: small files, and nobody sees the difference


def make(viewer, folder):
    os.makedirs(folder, exist_ok=True)
    photo = os.path.join(viewer.data, "jpeg/harvesters.jpeg")
    page = os.path.join(viewer.data, "ocr/udhr_eng_144dpi.png")
    document = os.path.join(viewer.data, "pdf/11-pages.pdf")
    book = Book(viewer, folder)
    for scale in ("1", "2"):
        os.environ["QT_SCALE_FACTOR"] = scale
        viewer.config = os.path.join(viewer.folder, "config" + scale)
        viewer.start(photo)
        book.one_viewer(f"work-1x1-scale-{scale}")
        viewer.quit()
    os.environ["QT_SCALE_FACTOR"] = "1"
    viewer.config = os.path.join(viewer.folder, "config")
    viewer.start(photo, document)
    book.two_viewers("work-2x1")
    book.tool_windows()
    viewer.quit()
    viewer.start(photo, document, photo, photo)
    book.four_viewers("work-2x2")
    viewer.quit()
    viewer.start(page)
    book.read_text("work-ocr")
    book.globe("work-globe")
    book.capture("work-capture")
    viewer.quit()


class Book:
    def __init__(self, viewer, folder):
        self.viewer, self.folder = viewer, folder

    def keep(self, name):
        """The main window with what stands before it."""
        time.sleep(0.5)  # for the eye only: nothing is judged
        where = place(self.viewer.window)
        path = os.path.join(self.folder, name + ".png")
        tool("import", "-silent", "-window", "root", "-crop", f"{where.width}x{where.height}+{where.x}+{where.y}",
             "+repage", "-colors", COLOURS, path)
        print(f"{os.path.getsize(path) // 1024:4d} KB  {name}", flush=True)

    def shape(self, entry, start, end):
        """Drawn by the menu; start and end as parts of the view."""
        key("alt+t", *entry)
        box = self.view
        at = lambda part: (box.x + part[0] * box.width, box.y + part[1] * box.height)
        self.viewer.log_after(lambda: drag(at(start), at(end)), r"AddObject\(")

    def annotate(self, view):
        self.view = view
        self.shape("dr", (0.2, 0.32), (0.45, 0.55))
        self.shape("de", (0.55, 0.4), (0.8, 0.62))
        self.shape("r", (0.15, 0.66), (0.7, 0.7))

    def views(self, count):
        """The views, by where each viewer's lower left label is of no use: by the window's middle."""
        where, dock = place(self.viewer.window), 220
        del dock
        return where, count

    def one_viewer(self, name):
        self.annotate(self.middle(1, 1)[0])
        self.viewer.rest()
        self.keep(name)
        acts_dark(self.viewer)
        self.keep(name + "-dark")
        acts_light(self.viewer)

    def middle(self, columns, rows):
        """Where the pictures of the viewers are, roughly: the part of the window between the docks."""
        where = place(self.viewer.window)
        left, right, top, bottom = 0.19, 0.20, 0.09, 0.17
        x0, y0 = where.x + left * where.width, where.y + top * where.height
        width, height = where.width * (1 - left - right) / columns, where.height * (1 - top - bottom) / rows
        return [type(where)(int(x0 + (column + 0.15) * width), int(y0 + (row + 0.1) * height), int(0.8 * width), int(0.85 * height))
                for row in range(rows) for column in range(columns)]

    def activate(self, view):
        click(view.x + view.width / 2, view.y + view.height / 2)

    def two_viewers(self, name):
        first, second = self.middle(2, 1)
        self.activate(second)
        key("ctrl+Next")
        self.activate(first)
        self.annotate(first)
        self.viewer.rest()
        self.keep(name)

    def tool_windows(self):
        for keys, title in (("ctrl+m", "Median Filter"), ("ctrl+e", "Sobel Filter")):
            key(keys)
            self.viewer.dialog(title)
            self.keep("work-" + title.split()[0].lower())
            key("Escape")
            self.viewer.no_dialog(title)

    def four_viewers(self, name):
        views = self.middle(2, 2)
        self.activate(views[0])
        self.annotate(views[0])
        self.activate(views[2])
        key("F3")
        time.sleep(1.5)
        middle = views[2].x + views[2].width / 2, views[2].y + views[2].height / 2
        drag(middle, (middle[0] - 40, middle[1] + 25))
        wheel(*middle, 3)
        middle = views[3].x + views[3].width / 2, views[3].y + views[3].height / 2
        self.activate(views[3])
        wheel(*middle, 40)
        self.activate(views[0])
        self.viewer.rest()
        self.keep(name)
        acts_dark(self.viewer)
        self.keep(name + "-dark")
        acts_light(self.viewer)

    def read_text(self, name):
        key("ctrl+t")
        found = self.viewer.dialog("OCR")
        self.viewer.log_after(lambda: self.viewer.with_mouse(place(found)), "Run OCR OK", 60)
        self.keep(name)
        key("Escape")
        self.viewer.no_dialog("OCR")

    def globe(self, name):
        key("alt+t", "g")
        found = self.viewer.dialog("Globe")
        steady(place(found))
        self.keep(name)
        key("alt+F4")
        self.viewer.no_dialog("Globe")

    def capture(self, name):
        tool("display", "-window", "root", os.path.join(self.viewer.data, "jpeg/harvesters.jpeg"))
        key("ctrl+shift+c")
        time.sleep(1.5)
        tool("xdotool", "mousemove", "300", "250", "mousedown", "1")
        for i in range(10):
            point(300 + 50 * i, 250 + 35 * i)
        time.sleep(0.3)
        path = os.path.join(self.folder, name + ".png")
        tool("import", "-silent", "-window", "root", "-resize", "75%", "-colors", COLOURS, path)
        tool("xdotool", "mouseup", "1")
        wait_for("the main window", lambda: windows("Vantor"))
        time.sleep(1)
        self.keep(name + "d")


def acts_dark(viewer):
    key("alt+v", "a", "k")
    wait_for("a dark window", lambda: acts.is_dark(viewer))
    viewer.rest()


def acts_light(viewer):
    key("alt+v", "a", "l")
    wait_for("a light window", lambda: not acts.is_dark(viewer))
    viewer.rest()
