#!/usr/bin/env python3
"""Text files are ASCII, end in one newline, have no trailing blanks, no tabs and no long lines, and
name no path of the machine that they were written on."""

import re

import tree

LINE_LIMIT = 100
FILE_LIMIT = 800  # lines of a C++ file
MACHINE_PATH = re.compile(r"(?<![\w$}.])/(?:work|root)/\w")
LEFT_OVER = re.compile(r"\b(?:TODO|FIXME|XXX)\b")
CODE = (".h", ".cpp", ".cmake", ".py", ".sh", ".txt")


def problems_of_line(line, is_code):
    if not line.isascii():
        yield "not ASCII"
    if line != line.rstrip():
        yield "trailing blanks"
    if "\t" in line:
        yield "a tab"
    if is_code and len(line) > LINE_LIMIT:
        yield f"longer than {LINE_LIMIT} columns"
    if MACHINE_PATH.search(line):
        yield "a path of one machine"
    if is_code and LEFT_OVER.search(line):
        yield "work left over"


def problems_of_file(name):
    data = (tree.ROOT / name).read_bytes()
    if data and not data.endswith(b"\n"):
        yield f"{name}: no newline at the end"
    if b"\r" in data:
        yield f"{name}: a carriage return"
    lines = data.decode("utf-8", "replace").split("\n")
    if name.endswith((".h", ".cpp")) and len(lines) > FILE_LIMIT:
        yield f"{name}: {len(lines)} lines, more than {FILE_LIMIT}"
    is_code = name.endswith(CODE) and name != "tests/checks/check_text.py"
    for number, line in enumerate(lines, 1):
        for problem in problems_of_line(line, is_code):
            yield f"{name}:{number}: {problem}"


tree.finish("text", [p for name in tree.files() if not tree.is_data(name)
                     for p in problems_of_file(name)])
