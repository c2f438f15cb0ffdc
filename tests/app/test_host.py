# SPDX-License-Identifier: MIT
"""test_host.py VIEWER XRUN DATA: starts the example host on a virtual screen and looks at what it leaves."""
import collections
import contextlib
import os
import shutil
import sqlite3
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

VIEWER, XRUN, DATA = sys.argv[1:4]
GOOD = os.path.join(DATA, "png/bricks-color.png")
DOCUMENT = os.path.join(DATA, "pdf/11-pages.pdf")
BROKEN = os.path.join(DATA, "broken/bmp_badbitcount.bmp")
FIRST_SIZE = (1144, 820)  # of a screen as xrun makes it
VIEW_GROUND = (120, 120, 120)


def png_size(path):
    with open(path, "rb") as file:
        head = file.read(24)
    assert head[:8] == b"\x89PNG\r\n\x1a\n"
    return struct.unpack(">II", head[16:24])


def write_grey_png(path, width, height, row):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 0, 0, 0, 0))
                   + chunk(b"IDAT", zlib.compress((b"\0" + row) * height)) + chunk(b"IEND", b""))


def rgb_bytes(path):
    return subprocess.run(["convert", path, "-depth", "8", "rgb:-"], stdout=subprocess.PIPE, check=True).stdout


class Host(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.picture = os.path.join(self.folder.name, "out.png")

    def run_host(self, *arguments, command=(XRUN, VIEWER), **environment):
        return subprocess.run([*command, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                              timeout=60, env={**os.environ, **environment})

    def line_of(self, path, result):
        lines = [line for line in result.stderr.splitlines() if path in line and "vantor-viewer:" in line]
        self.assertEqual(len(lines), 1, result.stderr)
        return lines[0]

    def test_a_screenshot_has_the_size_of_the_window(self):
        result = self.run_host("--screenshot", self.picture, GOOD)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(png_size(self.picture), FIRST_SIZE)
        self.assertNotIn("vantor-viewer:", result.stderr)

    def test_a_fractional_scale_is_kept(self):
        result = self.run_host("--screenshot", self.picture, GOOD, QT_SCALE_FACTOR="1.5")
        self.assertEqual(result.returncode, 0, result.stderr)
        width, height = png_size(self.picture)
        self.assertEqual(width % 3, 0)
        self.assertTrue(1100 < width <= 1152 and height <= 922, (width, height))

    def test_what_was_opened_is_in_the_picture(self):
        other = os.path.join(self.folder.name, "empty.png")
        self.assertEqual(self.run_host("--screenshot", other).returncode, 0)
        self.assertEqual(self.run_host("--screenshot", self.picture, DOCUMENT).returncode, 0)
        # The thumbnails and the page are white, where an empty viewer is grey.
        white = lambda path: rgb_bytes(path).count(b"\xff\xff\xff")
        self.assertGreater(white(self.picture), white(other) + 100000)

    def test_a_large_image_is_in_the_picture_as_it_looks_in_the_end(self):
        lines = os.path.join(self.folder.name, "lines.png")
        write_grey_png(lines, 3000, 2000, b"\0\xff" * 1500)
        self.assertEqual(self.run_host("--screenshot", self.picture, lines).returncode, 0)
        pixels = rgb_bytes(self.picture)
        greys = sum(pixels.count(bytes((v, v, v))) for v in range(100, 157) if v != VIEW_GROUND[0])
        self.assertGreater(greys, 100000)  # nearest pixels would be black and white

    def test_a_missing_file_is_named_with_the_reason(self):
        result = self.run_host("--screenshot", self.picture, "/nowhere/at all.png")
        self.assertEqual(result.returncode, 1)
        self.assertIn("There is no such file.", self.line_of("/nowhere/at all.png", result))
        self.assertFalse(os.path.exists(self.picture))

    def test_a_document_with_a_password_does_not_wait_for_one(self):
        locked = os.path.join(DATA, "pdf", "enc-R3,V2,U=view,O=master.pdf")
        result = self.run_host("--screenshot", self.picture, locked)
        self.assertEqual(result.returncode, 1)
        self.assertIn("The document needs a password.", self.line_of(locked, result))

    def test_a_folder_and_a_broken_file_have_their_reasons(self):
        result = self.run_host("--screenshot", self.picture, self.folder.name, BROKEN)
        self.assertEqual(result.returncode, 1)
        self.assertIn("It is not a regular file.", self.line_of(self.folder.name, result))
        self.assertIn("The BMP file is of an unsupported kind", self.line_of(BROKEN, result))

    def test_a_good_and_a_bad_file_open_the_good_one_and_name_the_bad_one(self):
        result = self.run_host("--screenshot", self.picture, GOOD, "/nowhere/b.png")
        self.assertEqual(result.returncode, 0)
        self.line_of("/nowhere/b.png", result)
        self.assertNotIn(GOOD, result.stderr)
        self.assertEqual(png_size(self.picture), FIRST_SIZE)

    def large_and_small(self, *arguments, files):
        """Opens files of one colour each.
        @return the numbers of those that fill a view, and of those that are seen as thumbnails only"""
        colours = [bytes((255, 40 * i, 255 - 40 * i)) for i in range(files)]
        paths = []
        for i, colour in enumerate(colours):
            paths.append(os.path.join(self.folder.name, f"{i}.png"))
            subprocess.run(["convert", "-size", "40x30", "xc:#" + colour.hex(), paths[-1]], check=True)
        result = self.run_host(*arguments, "--screenshot", self.picture, *paths)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertNotIn("vantor-viewer:", result.stderr)
        pixels = rgb_bytes(self.picture)
        counts = collections.Counter(pixels[i:i + 3] for i in range(0, len(pixels), 3))
        seen = [(i, counts[colour]) for i, colour in enumerate(colours) if counts[colour] > 300]
        return [i for i, count in seen if count > 20000], [i for i, count in seen if count <= 20000]

    def test_up_to_four_files_have_a_viewer_each(self):
        self.assertEqual(self.large_and_small(files=4), ([0, 1, 2, 3], []))

    def test_more_files_than_viewers_are_the_list_of_one(self):
        self.assertEqual(self.large_and_small(files=6), ([0], [1, 2, 3, 4, 5]))

    def test_the_layout_of_the_command_line_says_over_how_many_viewers_the_files_are_dealt(self):
        self.assertEqual(self.large_and_small("--layout", "1x1", files=3), ([0], [1, 2]))
        self.assertEqual(self.large_and_small("--layout", "2x1", files=5), ([0, 1], [2, 3, 4]))

    def test_an_address_of_a_file_is_understood(self):
        spaced = os.path.join(self.folder.name, "a b.png")
        shutil.copy(GOOD, spaced)
        result = self.run_host("--screenshot", self.picture, "file://" + spaced.replace(" ", "%20"))
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertNotIn("vantor-viewer:", result.stderr)

    def test_the_first_window_takes_at_most_nine_tenths_of_any_screen(self):
        for screen, scale in (((800, 600), 1), ((1366, 768), 1), ((1600, 1000), 2), ((2560, 1440), 1.5)):
            result = self.run_host("--screenshot", self.picture, GOOD, QT_SCALE_FACTOR=str(scale),
                                   XRUN_SCREEN="%dx%d" % screen)
            self.assertEqual(result.returncode, 0, result.stderr)
            for side, room in zip(png_size(self.picture), screen):
                self.assertLessEqual(side, 0.9 * room, (screen, scale))

    def test_on_a_small_screen_four_viewers_leave_room_for_pictures(self):
        result = self.run_host("--layout", "2x2", "--screenshot", self.picture, XRUN_SCREEN="800x600")
        self.assertEqual(result.returncode, 0, result.stderr)
        width, height = png_size(self.picture)
        pixels = rgb_bytes(self.picture)
        ground = sum(pixels[i:i + 3] == bytes(VIEW_GROUND) for i in range(0, len(pixels), 3))
        self.assertGreater(ground, 0.3 * width * height)

    def test_a_picture_that_cannot_be_written_is_an_error(self):
        result = self.run_host("--screenshot", "/nowhere/out.png", GOOD)
        self.assertEqual(result.returncode, 1)
        self.assertIn("cannot write", self.line_of("/nowhere/out.png", result))

    def test_help_and_version_need_no_display(self):
        for name in ("DISPLAY", "WAYLAND_DISPLAY"):
            os.environ.pop(name, None)
        result = self.run_host("--version", command=(VIEWER,))
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertRegex(result.stdout, r"^vantor-viewer \d+\.\d+\.\d+\n$")
        result = self.run_host("--help", command=(VIEWER,))
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        for option in ("--layout", "--screenshot", "--config-dir", "--log-dir", "--version", "--help", "files"):
            self.assertIn(option, result.stdout)

    def test_a_wrong_usage_is_explained_and_has_its_own_status(self):
        for arguments, word in ((("--nonsense",), "nonsense"), (("--layout", "3x3"), "3x3"),
                                (("--layout",), "layout"), (("--screenshot", ""), "screenshot")):
            result = self.run_host(*arguments, command=(VIEWER,))
            self.assertEqual(result.returncode, 2, arguments)
            self.assertEqual(result.stdout, "")
            lines = result.stderr.splitlines()
            self.assertTrue(lines[0].startswith("vantor-viewer: ") and word in lines[0], result.stderr)
            self.assertIn("--help", lines[1])

    def test_without_a_display_it_says_so_and_ends(self):
        result = self.run_host(GOOD, command=(VIEWER,), DISPLAY="", WAYLAND_DISPLAY="", QT_QPA_PLATFORM="xcb")
        self.assertEqual(result.returncode, 1)
        self.assertIn("vantor-viewer: could not connect to display", result.stderr)

    def test_settings_and_log_go_into_the_folders_that_are_named(self):
        config = os.path.join(self.folder.name, "a", "config")
        log = os.path.join(self.folder.name, "b's log")
        result = self.run_host("--config-dir", config, "--log-dir", log, "--screenshot", self.picture, GOOD)
        self.assertEqual(result.returncode, 0, result.stderr)
        with contextlib.closing(sqlite3.connect(os.path.join(config, "settings.data"))) as connection:
            rows = dict(connection.execute("SELECT NAME, VALUE FROM settings"))
        self.assertIn("HOST_LAST_START", rows)
        # For one run only.
        self.assertNotIn("GENERAL_PROGRAM_CONFIG_DIR", rows)
        self.assertNotIn("GENERAL_LOG_DIR", rows)
        self.assertEqual(len(os.listdir(log)), 1)

    def test_the_layout_is_taken_from_the_command_line(self):
        sizes = {}
        for layout in ("1x1", "2x2"):
            self.assertEqual(self.run_host("--layout", layout, "--screenshot", self.picture).returncode, 0)
            sizes[layout] = os.path.getsize(self.picture)
        # Three more rows of buttons.
        self.assertGreater(sizes["2x2"], sizes["1x1"] + 2000)


unittest.main(argv=sys.argv[:1])
