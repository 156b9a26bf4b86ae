#!/usr/bin/env python3
"""Counts test cases over several build folders and prints a table.

tally.py PRESET ...    reads build/PRESET/ctest.xml and build/PRESET/reports/NAME.xml

A test with a report counts with the cases in it, any other counts as one. A test that failed
although its report shows no failure (it crashed or leaked at its end) counts as one failure more.
A preset without any test and a suite without any case count as one failure each. The last line is
"N passed, N failed", and the exit status is 0 only if something passed and nothing failed.
"""
import re
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path


def cases_of_report(path):
    """(passed, failed) of one GoogleTest report; skipped and disabled cases count as neither.

    A crash in the middle leaves the report unwritten; None then, as for an unreadable file. The
    names of cases hold their parameters as they are, so bytes that are no UTF-8 may stand there.
    """
    try:
        text = path.read_bytes().decode("utf-8", "replace")
        cases = list(ElementTree.fromstring(text).iter("testcase"))
    except (OSError, ElementTree.ParseError):
        return None
    ran = [c for c in cases if c.get("status") == "run" and c.get("result") != "skipped"]
    failed = sum(1 for c in ran if c.find("failure") is not None)
    return len(ran) - failed, failed


def skipped_itself(test):
    """True for a test that asked to be skipped; one that could not be started is no such test."""
    skipped = test.find("skipped")
    return skipped is not None and skipped.get("message", "").startswith("SKIP_")


def rows_of_preset(preset):
    """(preset, test, passed, failed, seconds) for each ctest test of a build folder."""
    folder = Path("build") / preset
    try:
        tests = list(ElementTree.parse(folder / "ctest.xml").getroot().iter("testcase"))
    except (OSError, ElementTree.ParseError):
        tests = []
    if not tests:
        return [(preset, "(nothing ran)", 0, 1, 0.0)]
    rows = []
    for test in tests:
        name, good = test.get("name"), test.get("status") == "run"
        if test.get("status") == "disabled" or skipped_itself(test):
            continue
        counts = cases_of_report(folder / "reports" / (name + ".xml"))
        if counts is None:
            counts = (1, 0) if good else (0, 1)
        elif not good and counts[1] == 0:
            counts = (counts[0], 1)
        rows.append((preset, name, counts[0], counts[1], float(test.get("time") or 0)))
    return rows


def with_something_run(value):
    passed, failed, seconds = value
    return value if passed or failed else (0, 1, seconds)


def merge_shards(rows):
    """Joins the rows NAME-0, NAME-1, ... of one preset."""
    merged = {}
    for preset, name, passed, failed, seconds in rows:
        key = (preset, re.sub(r"-\d+$", "", name))
        old = merged.get(key, (0, 0, 0.0))
        merged[key] = (old[0] + passed, old[1] + failed, old[2] + seconds)
    return [key + with_something_run(value) for key, value in merged.items()]


def main(presets):
    rows = merge_shards([row for preset in presets for row in rows_of_preset(preset)])
    print(f"{'build':<14}{'suite':<32}{'passed':>8}{'failed':>8}{'seconds':>9}")
    for preset, name, passed, failed, seconds in rows:
        mark = "  <-- failed" if failed else ""
        print(f"{preset:<14}{name:<32}{passed:>8}{failed:>8}{seconds:>9.1f}{mark}")
    passed = sum(row[2] for row in rows)
    failed = sum(row[3] for row in rows)
    print(f"{passed} passed, {failed} failed")
    return 0 if passed and not failed else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
