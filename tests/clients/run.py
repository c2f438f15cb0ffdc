#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""run.py PROGRAM [NAME...]: shows that other programs read what the library writes and that the library reads
what they write, and that ImageJ and scikit-image measure what the library measures. PROGRAM is
build/release/tests/annotation_files. Every function of this folder's test modules that begins with "test_" is run,
or those whose names hold one of the NAMEs."""
import importlib
import os
import pathlib
import sys
import tempfile
import time
import traceback

HERE = pathlib.Path(__file__).resolve().parent
MODULES = ("imagej", "measuring", "components", "svg", "readers", "labelme_files")


def main(arguments):
    if not arguments or not os.access(arguments[0], os.X_OK):
        sys.exit(__doc__)
    os.environ["ANNOTATION_FILES"] = os.path.abspath(arguments[0])
    failed = ran = 0
    for module in (importlib.import_module(name) for name in MODULES):
        for name in (name for name in vars(module) if name.startswith("test_")):
            if arguments[1:] and not any(part in name for part in arguments[1:]):
                continue
            ran += 1
            start = time.monotonic()
            with tempfile.TemporaryDirectory() as folder:
                try:
                    vars(module)[name](pathlib.Path(folder))
                    result = "passed"
                except Exception:  # whatever it is, the others run
                    traceback.print_exc()
                    result = "FAILED"
                    failed += 1
            print("%-7s %5.1f s  %s.%s" % (result, time.monotonic() - start, module.__name__, name), flush=True)
    print("%d of %d passed" % (ran - failed, ran))
    return 1 if failed or not ran else 0


if __name__ == "__main__":
    sys.path.insert(0, str(HERE))
    sys.exit(main(sys.argv[1:]))
