# SPDX-License-Identifier: MIT
"""test_spdx.py ROOT: holds that tools/check_spdx.py sees the same files in a clone as in an unpacked archive of the
sources, where there is no git, and finds the one that does not say its licence."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(sys.argv[1])


class Spdx(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.empty = os.path.join(folder.name, "nothing to run")
        os.mkdir(self.empty)
        self.tree = pathlib.Path(folder.name, "sources")
        leave_out = shutil.ignore_patterns(".git", "__pycache__", "*.user")
        shutil.copytree(ROOT, self.tree, symlinks=True,
                        ignore=lambda at, names: leave_out(at, names) | (
                            {"build", *(name for name in names if name.endswith(".png"))} if at == str(ROOT) else set()))

    def check(self):
        return subprocess.run([sys.executable, self.tree / "tools/check_spdx.py"], env={"PATH": self.empty},
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def write(self, name, text="no licence\n"):
        path = self.tree / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def test_an_archive_is_checked_without_git(self):
        result = self.check()
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertGreater(int(result.stdout.split()[0]), 900, result.stdout)

    def test_a_clone_is_checked_without_git_and_has_the_same_files(self):
        archive = self.check().stdout
        self.write(".git/config")
        self.write(".git/objects/ab/cdef")
        self.assertEqual(self.check().stdout, archive)
        shutil.rmtree(self.tree / ".git")
        self.write(".git", "gitdir: elsewhere\n")
        self.assertEqual(self.check().stdout, archive)

    def test_what_builds_and_editors_leave_is_no_source(self):
        archive = self.check().stdout
        for name in ("build/dev/generated.cpp", "picture-of-run.png", "tools/__pycache__/a.pyc", "src/project.user"):
            self.write(name)
        self.assertEqual(self.check().stdout, archive)

    def test_a_file_without_a_licence_is_named(self):
        strays = ("stray.cpp", "src/build/stray.cpp", "src/Vantor/.hidden", "tools/screenshot.png")
        for name in strays:
            self.write(name)
        result = self.check()
        self.assertEqual(result.returncode, 1)
        for name in strays:
            self.assertIn(name + ": ", result.stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
