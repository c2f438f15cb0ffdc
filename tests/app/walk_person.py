# SPDX-License-Identifier: MIT
"""The hands and eyes of a person before an X screen: mouse, keyboard, pixels, windows and the clipboard.

Nothing in here knows the program from within. Coordinates are pixels of the screen.
"""
import collections
import re
import subprocess
import time

Box = collections.namedtuple("Box", "x y width height")

# How many times as long as usual everything may take.
patience = 1.0


class Failure(Exception):
    """Something that a person would have seen did not come."""


def wait_for(what, look, seconds=10.0):
    """Looks until there is something (anything true), and returns it."""
    end = time.monotonic() + seconds * patience
    while True:
        seen = look()
        if seen:
            return seen
        if time.monotonic() > end:
            raise Failure(f"not within {seconds:g} s: {what}")
        time.sleep(0.02)


def tool(*command, given=None):
    return subprocess.run(command, input=given, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=60)


class Picture:
    """Pixels of 24 bits."""

    def __init__(self, width, height, data):
        assert len(data) == width * height * 3, (width, height, len(data))
        self.width, self.height, self.data = width, height, bytes(data)

    def __eq__(self, other):
        return (self.width, self.height, self.data) == (other.width, other.height, other.data)

    def row(self, y):
        return self.data[y * self.width * 3 : (y + 1) * self.width * 3]

    def at(self, x, y):
        start = (y * self.width + x) * 3
        return tuple(self.data[start : start + 3])

    def cut(self, box):
        rows = (self.row(y)[box.x * 3 : (box.x + box.width) * 3] for y in range(box.y, box.y + box.height))
        return Picture(box.width, box.height, b"".join(rows))

    def box_where(self, matches):
        """@param matches  tells the first and last column of a row (its number, its bytes), or None
        @return the smallest box around them, or None"""
        hits = [(y, hit) for y in range(self.height) if (hit := matches(y, self.row(y)))]
        if not hits:
            return None
        left = min(hit[0] for _, hit in hits)
        right = max(hit[1] for _, hit in hits)
        return Box(left, hits[0][0], right - left + 1, hits[-1][0] - hits[0][0] + 1)

    def box_of(self, colour):
        """The smallest box around all pixels of exactly this colour, or None."""
        wanted = bytes(colour)

        def matches(_, row):
            if wanted not in row:
                return None
            columns = [i for i in range(self.width) if row[i * 3 : i * 3 + 3] == wanted]
            return (columns[0], columns[-1]) if columns else None

        return self.box_where(matches)

    def box_of_change(self, other):
        """The smallest box around all pixels that differ, or None."""
        assert (self.width, self.height) == (other.width, other.height)

        def matches(y, row):
            old = other.row(y)
            if row == old:
                return None
            columns = [i for i in range(self.width) if row[i * 3 : i * 3 + 3] != old[i * 3 : i * 3 + 3]]
            return columns[0], columns[-1]

        return self.box_where(matches)

    def areas_of(self, colour, grid=6, least=60):
        """Boxes of the areas of one colour that are at least so large, from top left, seen through a grid."""
        wanted = bytes(colour)
        todo = {(x, y) for y in range(0, self.height, grid) for x in range(0, self.width, grid)
                if self.data[(y * self.width + x) * 3 : (y * self.width + x) * 3 + 3] == wanted}
        boxes = []
        while todo:
            edge, area = [todo.pop()], []
            while edge:
                x, y = edge.pop()
                area.append((x, y))
                for near in ((x - grid, y), (x + grid, y), (x, y - grid), (x, y + grid)):
                    if near in todo:
                        todo.remove(near)
                        edge.append(near)
            left, top = min(x for x, _ in area), min(y for _, y in area)
            box = Box(left, top, max(x for x, _ in area) - left + 1, max(y for _, y in area) - top + 1)
            if min(box.width, box.height) >= least:
                boxes.append(box)
        return sorted(boxes, key=lambda box: (box.y // 40, box.x))

    def bmp(self):
        """As a BMP file of 24 bits."""
        stride = (self.width * 3 + 3) // 4 * 4
        head = b"BM" + (54 + stride * self.height).to_bytes(4, "little") + bytes(4) + (54).to_bytes(4, "little")
        info = b"".join(n.to_bytes(4, "little") for n in (40, self.width, self.height)) + b"\1\0\x18\0" + bytes(24)
        rows = []
        for y in reversed(range(self.height)):
            row = bytearray(self.row(y))
            row[0::3], row[2::3] = row[2::3], row[0::3]
            rows.append(bytes(row).ljust(stride, b"\0"))
        return head + info + b"".join(rows)


def from_ppm(raw):
    head = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", raw)
    if not head:
        raise Failure("there is no picture")
    return Picture(int(head[1]), int(head[2]), raw[head.end() :])


def read_picture(source, data=None):
    """@param source  a path, or "png:-" for the data"""
    return from_ppm(tool("convert", source, "-depth", "8", "ppm:-", given=data).stdout)


def grab(box=None):
    """What the screen shows, whole or in a box."""
    part = ("-crop", f"{box.width}x{box.height}+{box.x}+{box.y}") if box else ()
    return from_ppm(tool("import", "-silent", "-window", "root", *part, "+repage", "-depth", "8", "ppm:-").stdout)


def xdotool(*arguments):
    return tool("xdotool", *map(str, arguments)).stdout.decode().split()


def key(*keys):
    xdotool("key", "--delay", 4, *keys)


def write(text):
    xdotool("type", "--delay", 3, text)


def point(x, y):
    xdotool("mousemove", round(x), round(y))


def click(x, y, button=1):
    xdotool("mousemove", round(x), round(y), "click", button)


def drag(start, end, steps=6):
    """With the left button, through points between."""
    xdotool("mousemove", *map(round, start), "mousedown", 1)
    for i in range(1, steps + 1):
        point(*(a + (b - a) * i / steps for a, b in zip(start, end)))
    xdotool("mouseup", 1)


def wheel(x, y, notches):
    """@param notches  upwards (away from the person) if positive"""
    point(x, y)
    xdotool("click", "--repeat", abs(notches), "--delay", 5, 4 if notches > 0 else 5)


def windows(title):
    """The identifiers of the visible windows with exactly this title, or this and the mark of unsaved work."""
    return xdotool("search", "--onlyvisible", "--name", f"^{re.escape(title)}[*]?$")


def main_windows():
    """Those of the viewer, whose titles have the image and its place before the program."""
    return xdotool("search", "--onlyvisible", "--name", r"^(.+ - )?Vantor[*]?$")


def place(window):
    """Where the inside of a window is; None when it went."""
    text = tool("xwininfo", "-id", window).stdout.decode()
    names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
    found = [re.search(rf"{name}:\s+(-?\d+)", text) for name in names]
    return Box(*(int(match[1]) for match in found)) if all(found) else None


def is_shown(window):
    return b"IsViewable" in tool("xwininfo", "-id", window).stdout


def clipboard():
    """The picture on the clipboard, or None."""
    data = tool("xclip", "-selection", "clipboard", "-t", "image/png", "-o").stdout
    return read_picture("png:-", data) if data else None


def steady(box=None, seconds=5.0):
    """What the screen shows when two looks in a row are the same."""
    looks = [grab(box)]

    def settled():
        time.sleep(0.03)
        looks.append(grab(box))
        return looks[-1] == looks[-2]

    wait_for("the screen at rest", settled, seconds)
    return looks[-1]
