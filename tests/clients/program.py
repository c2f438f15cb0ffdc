# SPDX-License-Identifier: MIT
"""Runs programs."""
import os
import subprocess

from shapes import HEIGHT, WIDTH


def run(*command):
    """the standard output; raises when the program fails"""
    result = subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                            timeout=120, check=False)
    if result.returncode != 0:
        raise RuntimeError("%s\n%s" % (" ".join(map(str, command)), result.stderr.decode("utf-8", "replace")))
    return result.stdout


def convert(source, target, form, *more):
    """reads one file of annotations and writes another; returns the remarks, one a line"""
    return run(os.environ["ANNOTATION_FILES"], "convert", source, target, form, WIDTH, HEIGHT, "photo.png",
               *more).decode("utf-8").splitlines()


def pixels(source):
    """name -> how many pixels a region covers"""
    lines = run(os.environ["ANNOTATION_FILES"], "pixels", source, WIDTH, HEIGHT).decode("utf-8").splitlines()
    return {name: int(count) for name, count in (line.split("\t") for line in lines)}
