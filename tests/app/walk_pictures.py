# SPDX-License-Identifier: MIT
"""The pictures of the documents: the viewer at work, as the screen shows it."""
import os
import time

import walk_acts as acts
from walk_person import Box, click, drag, key, main_windows, place, point, steady, tool, wait_for, wheel, windows

COLOURS = "+dither", "-colors", "256"  # small files


SAMPLE = os.path.join(os.path.dirname(__file__), "../../app/sample/kodim03.png")


def make(viewer, folder):
    os.makedirs(folder, exist_ok=True)
    photo = os.path.realpath(SAMPLE)
    page = os.path.join(viewer.data, "ocr/udhr_eng_144dpi.png")
    document = os.path.join(viewer.data, "pdf/11-pages.pdf")
    book = Book(viewer, folder)
    for scale in (1, 2):
        start(viewer, scale, photo)
        book.one_viewer(f"one-viewer-scale-{scale}")
        viewer.quit()
    start(viewer, 1, photo, page)
    book.two_viewers("two-viewers")
    book.tool_windows()
    viewer.quit()
    start(viewer, 1, photo, document, photo, photo)
    book.four_viewers("four-viewers")
    viewer.quit()
    start(viewer, 1, page)
    book.read_text("tool-ocr")
    book.globe("globe")
    book.capture("capture", photo)
    viewer.quit()


def start(viewer, scale, *files):
    """With settings of its own."""
    os.environ["QT_SCALE_FACTOR"] = str(scale)
    viewer.config = os.path.join(viewer.folder, f"config-{len(os.listdir(viewer.folder))}")
    viewer.start(*files)
    tool("xdotool", "windowsize", "--sync", viewer.window, str(1200 * scale), str(820 * scale))


class Book:
    def __init__(self, viewer, folder):
        self.viewer, self.folder = viewer, folder

    def keep(self, name, window=None):
        """A window, or the main window with what stands before it."""
        time.sleep(0.5)  # for the eye only: nothing is judged
        where = place(window or self.viewer.window)
        path = os.path.join(self.folder, name + ".png")
        tool("import", "-silent", "-window", "root", "-crop", f"{where.width}x{where.height}+{where.x}+{where.y}",
             "+repage", *COLOURS, "png8:" + path)
        print(f"{os.path.getsize(path) // 1024:4d} KB  {name}", flush=True)

    def shape(self, entry, start, end):
        """Drawn by the menu; start and end as parts of the view."""
        self.viewer.log_after(lambda: key("alt+t", *entry), "Mode_Drawing")
        box = self.view
        at = lambda part: (box.x + part[0] * box.width, box.y + part[1] * box.height)
        self.viewer.log_after(lambda: drag(at(start), at(end)), r"AddObject\(")

    def annotate(self, view):
        height = min(view.height, view.width * 0.6)
        self.view = Box(view.x, view.y + (view.height - height) / 2, view.width, height)
        self.shape("dr", (0.1, 0.25), (0.35, 0.58))
        self.shape("de", (0.52, 0.42), (0.78, 0.78))
        self.shape("r", (0.1, 0.8), (0.5, 0.92))

    def one_viewer(self, name):
        self.annotate(self.middle(1, 1)[0])
        self.viewer.rest()
        self.keep(name)
        go_dark(self.viewer)
        self.keep(name + "-dark")
        go_light(self.viewer)

    def middle(self, columns, rows):
        """Where the pictures of the viewers are, roughly: the part of the window between the docks."""
        where = place(self.viewer.window)
        left, right, top, bottom = 0.19, 0.20, 0.09, 0.05
        x0, y0 = where.x + left * where.width, where.y + top * where.height
        width, height = where.width * (1 - left - right) / columns, where.height * (1 - top - bottom) / rows
        size = int(0.7 * width), int(0.85 * height)
        return [Box(int(x0 + (column + 0.25) * width), int(y0 + (row + 0.1) * height), *size)
                for row in range(rows) for column in range(columns)]

    def activate(self, view):
        click(view.x + view.width / 2, view.y + view.height / 2)

    def two_viewers(self, name):
        first, second = self.middle(2, 1)
        self.activate(second)
        self.activate(first)
        self.annotate(first)
        self.viewer.rest()
        self.keep(name)

    def tool_windows(self):
        for keys, title in (("ctrl+m", "Median Filter"), ("ctrl+e", "Sobel Filter")):
            key(keys)
            self.viewer.dialog(title)
            self.keep("tool-" + title.split()[0].lower())
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
        wheel(*middle, 52)
        self.activate(views[0])
        self.viewer.rest()
        self.keep(name)
        go_dark(self.viewer)
        self.keep(name + "-dark")
        go_light(self.viewer)

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
        self.keep(name, found)
        key("alt+F4")
        self.viewer.no_dialog("Globe")

    def capture(self, name, photo):
        tool("display", "-window", "root", photo)
        key("ctrl+shift+c")
        time.sleep(1.5)
        tool("xdotool", "mousemove", "300", "250", "mousedown", "1")
        for i in range(10):
            point(300 + 40 * i, 250 + 25 * i)
        time.sleep(0.3)
        path = os.path.join(self.folder, name + ".png")
        tool("import", "-silent", "-window", "root", "-crop", "1280x1024+0+0", "+repage", *COLOURS, "png8:" + path)
        tool("xdotool", "mouseup", "1")
        wait_for("the main window", main_windows)
        time.sleep(1)
        self.keep(name + "d")


def go_dark(viewer):
    key("alt+v", "a", "k")
    wait_for("a dark window", lambda: acts.is_dark(viewer))
    viewer.rest()


def go_light(viewer):
    key("alt+v", "a", "l")
    wait_for("a light window", lambda: not acts.is_dark(viewer))
    viewer.rest()
