#!/usr/bin/env python3
"""cmake/tally.py counts what ran, and fails where nothing did."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import tree

TALLY = tree.ROOT / "cmake" / "tally.py"


def suite(*tests):
    return "<testsuite>" + "".join(tests) + "</testsuite>"


def ran(name, status="run", inner=""):
    return f'<testcase name="{name}" status="{status}" time="1.5">{inner}</testcase>'


def report(good, bad=0, skipped=0):
    cases = '<testcase status="run" result="completed"/>' * good
    cases += '<testcase status="run" result="completed"><failure/></testcase>' * bad
    cases += '<testcase status="run" result="skipped"/>' * skipped
    return f"<testsuites>{cases}</testsuites>"


class TallyTest(unittest.TestCase):
    def tally(self, tests, reports):
        """(last line, exit status) for one build folder."""
        with tempfile.TemporaryDirectory() as folder:
            build = Path(folder) / "build" / "one"
            (build / "reports").mkdir(parents=True)
            if tests is not None:
                (build / "ctest.xml").write_text(tests)
            for name, text in reports.items():
                (build / "reports" / (name + ".xml")).write_text(text, "latin-1")
            run = subprocess.run([sys.executable, TALLY, "one"], cwd=folder,
                                 capture_output=True, text=True, check=False)
            return run.stdout.splitlines()[-1], run.returncode

    def test_cases_of_reports_are_counted(self):
        self.assertEqual(("5 passed, 0 failed", 0),
                         self.tally(suite(ran("a"), ran("b")), {"a": report(4, skipped=2)}))

    def test_bytes_that_are_no_utf8_do_not_hide_the_cases(self):
        odd = report(2).replace("<testcase", '<testcase value_param="\xff"', 1)
        self.assertEqual(("2 passed, 0 failed", 0), self.tally(suite(ran("a")), {"a": odd}))

    def test_a_failed_case_fails(self):
        self.assertEqual(("3 passed, 2 failed", 1),
                         self.tally(suite(ran("a", "fail")), {"a": report(3, bad=2)}))

    def test_a_crash_behind_good_cases_is_a_failure(self):
        self.assertEqual(("3 passed, 1 failed", 1),
                         self.tally(suite(ran("a", "fail")), {"a": report(3)}))

    def test_a_crash_without_a_report_is_a_failure(self):
        self.assertEqual(("0 passed, 1 failed", 1), self.tally(suite(ran("a", "fail")), {}))

    def test_a_program_that_is_missing_is_a_failure(self):
        missing = ran("a", "notrun", '<skipped message="Unable to find executable"/>')
        self.assertEqual(("0 passed, 1 failed", 1), self.tally(suite(missing), {}))

    def test_shards_count_together_and_one_may_be_empty(self):
        self.assertEqual(("2 passed, 0 failed", 0),
                         self.tally(suite(ran("a-0"), ran("a-1")),
                                    {"a-0": report(2), "a-1": report(0)}))

    def test_a_suite_without_cases_is_a_failure(self):
        self.assertEqual(("1 passed, 1 failed", 1),
                         self.tally(suite(ran("a"), ran("b")), {"a": report(0)}))

    def test_a_build_without_tests_is_a_failure(self):
        self.assertEqual(("0 passed, 1 failed", 1), self.tally(None, {}))


if __name__ == "__main__":
    unittest.main()
