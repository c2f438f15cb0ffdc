#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""check_translations.py [--update] : checks the host's translations against its sources: each text exists, is
translated, and has the placeholders and the mnemonic of its source. With --update it first updates the files
and reports the new texts, which somebody has to translate."""
import collections
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDER = ROOT / "app/translations"
# English needs only its plural forms: its other texts are those of the sources.
OPTIONS = {"en": ["-pluralonly"], "ko": [], "vi": []}
DECLARATION = '<?xml version="1.0" encoding="utf-8"?>\n'
LICENCE = "<!-- SPDX-License-Identifier: MIT -->\n"
PLACEHOLDER = re.compile(r"%(?:L?\d+|Ln|n)")
MNEMONIC = re.compile(r"&(?!&)")


def file_of(language):
    return FOLDER / f"vantor-viewer_{language}.ts"


def refresh(language, path):
    """Updates or creates a file."""
    lupdate = shutil.which("lupdate", path=os.environ.get("PATH", "") + ":/usr/lib/qt5/bin")
    if not lupdate:
        sys.exit("lupdate is missing: it is in qttools5-dev-tools")
    subprocess.run([lupdate, "-silent", "-no-obsolete", "-locations", "none", "-source-language", "en",
                    "-target-language", language, *OPTIONS[language], "app", "-ts", path],
                   cwd=ROOT, check=True)
    text = path.read_text()
    if LICENCE not in text:  # lupdate keeps no comments
        path.write_text(text.replace(DECLARATION, DECLARATION + LICENCE, 1))


def messages(path):
    """{(context, source): [message, ...]}"""
    found = collections.defaultdict(list)
    for context in xml.etree.ElementTree.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            found[context.findtext("name"), message.findtext("source")].append(message)
    return found


def faults_of(source, message):
    translation = message.find("translation")
    forms = [form.text or "" for form in translation.iter("numerusform")] or [translation.text or ""]
    if translation.get("type"):
        yield translation.get("type")
    for form in forms:
        if not form.strip():
            yield "empty"
            continue
        if sorted(PLACEHOLDER.findall(form)) != sorted(PLACEHOLDER.findall(source)):
            yield "other placeholders"
        if len(MNEMONIC.findall(form)) != len(MNEMONIC.findall(source)):
            yield "other mnemonics"
        if source.endswith("...") != form.endswith("..."):
            yield "other dots"


def check(language):
    path = file_of(language)
    if LICENCE not in path.read_text():
        yield "no licence line"
    known = messages(path)
    with tempfile.TemporaryDirectory() as folder:
        fresh_path = pathlib.Path(folder, "fresh.ts")
        refresh(language, fresh_path)
        fresh = messages(fresh_path)
    for context, source in sorted(fresh.keys() - known.keys()):
        yield f"missing: {context}: {source!r}"
    for context, source in sorted(known.keys() - fresh.keys()):
        yield f"not in the sources: {context}: {source!r}"
    for (context, source), found in known.items():
        for message in found:
            for fault in faults_of(source, message):
                yield f"{fault}: {context}: {source!r}"


def main():
    if sys.argv[1:] not in ([], ["--update"]):
        sys.exit(__doc__)
    count = 0
    for language in OPTIONS:
        if sys.argv[1:]:
            refresh(language, file_of(language))
        for fault in check(language):
            print(f"{file_of(language).name}: {fault}")
            count += 1
    sys.exit(1 if count else 0)


main()
