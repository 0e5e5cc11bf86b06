#!/usr/bin/env python3
"""Rules of the house that no compiler holds. Prints each breach as FILE:LINE and fails when there is one."""

import os
import re
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
NOT_OURS_TO_JUDGE = {"build", ".git", "tests/fixtures", "tests/house_rules.py"}

# Portable code knows the standard library alone: a header in <> that ends in .h is a platform's, save these.
# Tests of file access may ask the machine they run on, never Windows outside tests/win/.
WINDOWS_FOLDER = re.compile(r"(^|/)win/|^resources/")
ANY_PLATFORM_FOLDER = re.compile(r"(^|/)(win|posix)/|^(resources|tests)/")
WINDOWS_HEADER = re.compile(r'\s*#\s*include\s*[<"](windows|windowsx|comm\w+|sh\w+|win\w+|ole\w+)\.h[>"]', re.IGNORECASE)
PLATFORM_HEADER = re.compile(r"\s*#\s*include\s*<(?!gtest/|gmock/|immintrin\.h)[^>]*\.h>")

MACHINE_PATH = re.compile(r"(?<![\w.$}])/(work|root|home)/\w")
LATER = re.compile(r"\b(TODO|FIXME)\b")
LINK = re.compile(r"\]\(([^)#]+)[^)]*\)")


def source_files():
    for folder, subfolders, names in os.walk(ROOT):
        inside = os.path.relpath(folder, ROOT).replace(os.sep, "/")
        prefix = "" if inside == "." else inside + "/"
        subfolders[:] = [name for name in subfolders if prefix + name not in NOT_OURS_TO_JUDGE]
        yield from (prefix + name for name in names if prefix + name not in NOT_OURS_TO_JUDGE)


def breaches_in_line(path, line):
    if path.endswith((".cpp", ".h")):
        if WINDOWS_HEADER.match(line) and not WINDOWS_FOLDER.search(path):
            yield "a Windows header outside win/"
        elif PLATFORM_HEADER.match(line) and not ANY_PLATFORM_FOLDER.search(path):
            yield "a platform's header in portable code; it belongs in win/ or posix/"
    if MACHINE_PATH.search(line):
        yield "a path of one machine"
    if LATER.search(line):
        yield "a note for later"
    if path.endswith(".md"):
        for target in LINK.findall(line):
            if "://" not in target and not os.path.exists(os.path.join(ROOT, os.path.dirname(path), target)):
                yield f"a link that leads nowhere: {target}"
    if line != line.rstrip(" \t") and not path.startswith("examples/"):
        yield "blanks at the end"


def main():
    count = 0
    for path in sorted(source_files()):
        try:
            with open(os.path.join(ROOT, path), encoding="utf-8", newline="\n") as file:
                lines = file.read().split("\n")
        except (UnicodeDecodeError, OSError):
            continue  # pictures, icons
        for number, line in enumerate(lines, 1):
            for breach in breaches_in_line(path, line):
                print(f"{path}:{number}: {breach}")
                count += 1
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main())
