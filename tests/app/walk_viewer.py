# SPDX-License-Identifier: MIT
"""The viewer as a person has it: started, seen, and used by menus, keys, dialogs and the mouse."""
import contextlib
import glob
import os
import re
import signal
import sqlite3
import subprocess
import urllib.parse

from walk_person import (Box, Failure, Picture, click, drag, grab, is_shown, key, main_windows, place, point, read_picture,
                         steady, wait_for, windows, write, xdotool)

BACKGROUND = (120, 120, 120)  # of an image view
EDGE = (255, 0, 255)  # of the card, and of nothing else on the screen
CARD_EDGE = 6
RECT_BUTTON = (63, 158)  # from the window's top left corner: in the dock of the tools
CLOSE_BUTTON = -10  # of the messages: above where a view begins without any
RUN_BUTTON = (40, -63)  # from a tool's lower left corner
# Debug output that the globe has to give, of Qt when it asks for a window that the manager has just closed, and of
# decoders about broken files.
EXPECTED_OUTPUT = ("Vector:", "Indices:", "Paint OpenGl", "qt.qpa.xcb: QXcbConnection: XCB error: 3 (BadWindow)",
                   "libpng error:", "libpng warning:", "Corrupt JPEG data:")
KNOWN_TROUBLE = ("Cannot load image", "Cannot load pdf file", "too large for the 3D view")


def make_card():
    """A picture of 320 x 240 pixels that can be found on the screen by the colour of its edge."""
    width, height = 320, 240
    data = bytearray()
    for y in range(height):
        for x in range(width):
            inside = CARD_EDGE <= x < width - CARD_EDGE and CARD_EDGE <= y < height - CARD_EDGE
            data += bytes((x * 7 % 200, y * 5 % 200, (x ^ y) & 127)) if inside else bytes(EDGE)
    return Picture(width, height, data)


class Viewer:
    def __init__(self, program, data, folder):
        """@param folder  for settings, log and what is saved"""
        self.program, self.data, self.folder = program, data, folder
        self.config, self.logs = os.path.join(folder, "config"), os.path.join(folder, "log")
        self.errors = os.path.join(folder, "stderr.txt")
        self.saved = 0
        self.dialogs = {}
        self.card = make_card()
        self.card_path = self.new_file("card.bmp", self.card.bmp())
        self.process = self.last_window = None
        self.top = 0  # of the upper left view below the top of the window, without messages

    def new_file(self, name, content):
        path = os.path.join(self.folder, name)
        with open(path, "wb") as file:
            file.write(content)
        return path

    # Life

    def start(self, *files):
        """@param files  to begin with; else it waits for an empty view"""
        with open(self.errors, "ab") as errors:
            self.process = subprocess.Popen(
                [self.program, "--config-dir", self.config, "--log-dir", self.logs, *files],
                stdout=subprocess.DEVNULL, stderr=errors)
        wait_for("the main window", self.find_window, 30)
        if files:
            return
        self.box = wait_for("an image view", self.find_view, 10)
        self.top = self.top or self.box.y - place(self.window).y

    def find_window(self):
        self.check_alive()
        found = main_windows()
        self.last_window = found[0] if found else self.last_window
        return found

    @property
    def window(self):
        """The main window; with the first 3D view it becomes another one of the system's. The last one while none is
        to be seen."""
        self.find_window()
        return self.last_window

    def find_view(self, least=60):
        """The upper left one, or what is seen of it above a picture."""
        areas = grab().areas_of(BACKGROUND, least=least)
        return areas[0] if areas else None

    def measure(self):
        """Empties the viewer, closes its messages and sees where its view is."""
        self.log_after(lambda: self.drop("ctrl+shift+w"), "Clear")
        self.rest()
        wait_for("an empty view", lambda: self.find_view() and not grab().box_of(EDGE))
        self.close_messages()
        self.box = self.find_view()

    def close_messages(self):
        """By the button at the right end of their bar, which pushes the views down."""
        window, view = place(self.window), self.find_view(12)
        if view.y - window.y > self.top + 10:
            click(view.x + view.width - 12, window.y + self.top + CLOSE_BUTTON)
            self.rest()
            wait_for("no message", lambda: self.find_view(12).y - window.y <= self.top + 10)

    def check_alive(self):
        if self.process.poll() is not None:
            with open(self.errors, encoding="utf-8") as file:
                raise Failure(f"the program ended with {self.process.returncode}: {file.read()[-3000:]}")

    def quit(self):
        self.drop("ctrl+q")
        self.check_end(0)

    def kill(self):
        self.process.send_signal(signal.SIGKILL)
        self.check_end(-signal.SIGKILL)

    def check_end(self, status):
        try:
            seen = self.process.wait(20)
        except subprocess.TimeoutExpired:
            raise Failure("the program does not end") from None
        if seen != status:
            raise Failure(f"exit status {seen}, not {status}")
        with open(self.errors, encoding="utf-8") as file:
            complaints = [line for line in file.read().splitlines() if not line.strip().startswith(EXPECTED_OUTPUT)]
        if complaints:
            raise Failure(f"the program complained: {complaints[-30:]}")

    def memory(self):
        """In MB."""
        with open(f"/proc/{self.process.pid}/status", encoding="ascii") as file:
            return int(re.search(r"VmRSS:\s+(\d+)", file.read())[1]) / 1024

    # What the disk tells

    def log(self):
        text = ""
        for path in sorted(glob.glob(os.path.join(self.logs, "*.txt"))):
            with open(path, encoding="utf-8") as file:
                text += file.read()
        return text

    def log_after(self, act, line, seconds=15.0):
        """Acts, and waits for a new line in the log.
        @param line  a regular expression"""
        start = len(self.log())
        act()
        return wait_for(f"the line '{line}' in the log", lambda: re.search(line, self.log()[start:]), seconds)

    def check_log(self):
        """No trouble but what bad files are expected to give."""
        for line in self.log().splitlines():
            if line.startswith(("[ERROR]", "[WARNING]")) and not any(known in line for known in KNOWN_TROUBLE):
                raise Failure(f"the log says {line}")

    def settings(self):
        with contextlib.closing(sqlite3.connect(os.path.join(self.config, "settings.data"))) as connection:
            if connection.execute("PRAGMA integrity_check").fetchone() != ("ok",):
                raise Failure("the settings are damaged")
            return dict(connection.execute("SELECT NAME, VALUE FROM settings"))

    # Hands

    def rest(self):
        """The mouse where nothing follows it."""
        where = wait_for("the main window's place", lambda: place(self.window))
        point(where.x + where.width - 60, where.y + where.height - 8)

    def look(self, box=None):
        """At the screen at rest."""
        self.rest()
        return steady(box)

    def dialog(self, title):
        """Waits until a dialog is there and has the keyboard.
        @return its window"""
        found = wait_for(f"the dialog '{title}'", lambda: windows(title))
        wait_for(f"the keyboard in '{title}'", lambda: xdotool("getactivewindow") == found)
        self.dialogs[title] = found[0]
        return found[0]

    def no_dialog(self, title):
        wait_for(f"the end of the dialog '{title}'", lambda: not is_shown(self.dialogs[title]))
        wait_for("the keyboard in the main window", lambda: xdotool("getactivewindow") == [self.window])

    def answer_file_dialog(self, title, path):
        """Qt's dialog completes names while they are typed, and sometimes takes a folder for the answer."""
        found = self.dialog(title)
        for _ in range(3):
            key("ctrl+a")
            write(path)
            steady(place(found))
            key("Return")
            with contextlib.suppress(Failure):
                return wait_for(f"the end of the dialog '{title}'", lambda: not is_shown(found), 3)
        raise Failure(f"the dialog '{title}' does not take {path}")

    def drop(self, *keys):
        """Presses keys that drop what a viewer has. Where the title tells of unsaved work there may be a question,
        and that is given up."""
        unsaved = xdotool("search", "--onlyvisible", "--name", r"^(.+[*].* - Vantor|Vantor[*])$")
        key(*keys)
        if not unsaved:
            return
        with contextlib.suppress(Failure):
            wait_for("a question", lambda: windows("Unsaved Work"), 3)
        if windows("Unsaved Work"):
            self.dialog("Unsaved Work")
            key("alt+d")
            self.no_dialog("Unsaved Work")

    def open(self, path):
        self.choose(path)
        wait_for("the opened file", lambda: self.recent_files()[:1] == [path])

    def choose(self, path):
        """Asks for a file, which may not be one that can be opened."""
        self.drop("ctrl+o")
        self.answer_file_dialog("Load File", path)
        wait_for("the keyboard in the main window", lambda: xdotool("getactivewindow") == [self.window])

    def recent_files(self):
        return [urllib.parse.unquote(code) for code in self.settings().get("HOST_RECENT_FILES", "").split()]

    def save(self):
        """By the menu, into a new file, whose name no other one begins like: the dialog completes.
        @return what is in it"""
        self.saved += 1
        path = os.path.join(self.folder, f"{self.saved:04}.bmp")
        key("alt+f", "s")
        self.answer_file_dialog("Save Image", path)
        wait_for("the keyboard in the main window", lambda: xdotool("getactivewindow") == [self.window])
        wait_for(f"the file {path}", lambda: os.path.exists(path))
        return read_picture(path)

    def tool(self, keys, title, run):
        """Opens a tool, lets it run and closes it."""
        key(keys)
        found = self.dialog(title)
        line = r"Run OCR OK (.*)" if title == "OCR" else "Processing Time"
        match = self.log_after(lambda: run(place(found)), line, 60)
        key("Escape")
        self.no_dialog(title)
        return match

    def with_mouse(self, where):
        click(where.x + RUN_BUTTON[0], where.y + where.height + RUN_BUTTON[1])

    def with_keys(self, _):
        """Past two choosers, "Whole image" and the parameters to the button, and on to the first, where the next time
        begins."""
        key("Tab", "Tab", "Tab", "Tab", "space", "Tab")

    # The card in the view

    def open_card(self):
        """Into the emptied viewer."""
        self.drop("ctrl+shift+w")
        wait_for("an empty view", lambda: not grab(self.box).box_of(EDGE))
        self.open(self.card_path)
        self.rest()
        return self.card_box()

    def card_box(self):
        """Where the card is on the screen, between the thumbnails at the left and the dock at the right."""
        def find():
            found = grab(self.box).box_of(EDGE)
            return found and Box(found.x + self.box.x, found.y + self.box.y, found.width, found.height)

        return wait_for("the card in the view", find)

    def on_card(self, box, x, y):
        """The point of the screen for one of the card."""
        return box.x + x * box.width / self.card.width, box.y + y * box.height / self.card.height

    def draw_rectangle(self, box, left_top, right_bottom):
        where = place(self.window)
        self.log_after(lambda: click(where.x + RECT_BUTTON[0], where.y + RECT_BUTTON[1]), "Mode_Drawing_Rectanlge")
        self.log_after(lambda: drag(self.on_card(box, *left_top), self.on_card(box, *right_bottom)), r"AddObject\(")

    def checked_change(self, what, before, box):
        """Waits until the screen differs, and comes to rest.
        @return what is seen then"""
        self.rest()
        wait_for(f"a change on the screen by {what}", lambda: grab(box) != before)
        return steady(box)

    def wait_until_looks_like(self, what, wanted, box):
        self.rest()
        wait_for(f"the screen as before by {what}", lambda: grab(box) == wanted)
