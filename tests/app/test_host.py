# SPDX-License-Identifier: MIT
"""test_host.py VIEWER XRUN DATA: starts the example host on a virtual screen and looks at what it leaves."""
import os
import struct
import subprocess
import sys
import tempfile
import unittest

VIEWER, XRUN, DATA = sys.argv[1:4]
GOOD = os.path.join(DATA, "png/bricks-color.png")
DOCUMENT = os.path.join(DATA, "pdf/11-pages.pdf")
BROKEN = os.path.join(DATA, "broken/bmp_badbitcount.bmp")


def png_size(path):
    with open(path, "rb") as file:
        head = file.read(24)
    assert head[:8] == b"\x89PNG\r\n\x1a\n"
    return struct.unpack(">II", head[16:24])


class Host(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.picture = os.path.join(self.folder.name, "out.png")

    def run_host(self, *arguments):
        return subprocess.run([XRUN, VIEWER, *arguments], stderr=subprocess.PIPE, text=True, timeout=60)

    def line_of(self, path, result):
        lines = [line for line in result.stderr.splitlines() if path in line and "vantor-viewer:" in line]
        self.assertEqual(len(lines), 1, result.stderr)
        return lines[0]

    def test_a_screenshot_has_the_size_of_the_window(self):
        result = self.run_host("--screenshot", self.picture, GOOD)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(png_size(self.picture), (1200, 820))
        self.assertNotIn("vantor-viewer:", result.stderr)

    def test_what_was_opened_is_in_the_picture(self):
        other = os.path.join(self.folder.name, "empty.png")
        self.assertEqual(self.run_host("--screenshot", other).returncode, 0)
        self.assertEqual(self.run_host("--screenshot", self.picture, DOCUMENT).returncode, 0)
        # Thumbnails and a page of text: some kilobytes more than an empty window.
        self.assertGreater(os.path.getsize(self.picture), os.path.getsize(other) + 5000)

    def test_a_missing_file_is_named_with_the_reason(self):
        result = self.run_host("--screenshot", self.picture, "/nowhere/at all.png")
        self.assertEqual(result.returncode, 1)
        self.assertIn("there is no such file", self.line_of("/nowhere/at all.png", result))
        self.assertFalse(os.path.exists(self.picture))

    def test_a_folder_and_a_broken_file_have_their_reasons(self):
        result = self.run_host(self.folder.name, BROKEN)
        self.assertEqual(result.returncode, 1)
        self.assertIn("it is not a regular file", self.line_of(self.folder.name, result))
        self.assertIn("not an image or a PDF document", self.line_of(BROKEN, result))

    def test_a_good_and_a_bad_file_open_the_good_one_and_name_the_bad_one(self):
        result = self.run_host("--screenshot", self.picture, GOOD, "/nowhere/b.png")
        self.assertEqual(result.returncode, 0)
        self.line_of("/nowhere/b.png", result)
        self.assertNotIn(GOOD, result.stderr)
        self.assertEqual(png_size(self.picture), (1200, 820))

    def test_more_files_than_viewers_are_all_opened(self):
        result = self.run_host("--screenshot", self.picture, *[GOOD] * 6)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertNotIn("vantor-viewer:", result.stderr)

    def test_a_picture_that_cannot_be_written_is_an_error(self):
        result = self.run_host("--screenshot", "/nowhere/out.png", GOOD)
        self.assertEqual(result.returncode, 1)
        self.assertIn("cannot write", self.line_of("/nowhere/out.png", result))


unittest.main(argv=sys.argv[:1])
