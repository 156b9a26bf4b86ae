#!/usr/bin/env python3
"""The library's pictures beside OpenGL's: one effect or transition for each thing that once came
out otherwise.

parity_test.py SOURCE_FOLDER OUT_FOLDER TRANSITIONS
"""
import json
import subprocess
import sys
import unittest
from pathlib import Path

SOURCE, OUT, TRANSITIONS = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3]
SAME = {
    "effect-card-flip": "a vertex shader",
    "effect-dissolve": "noise",
    "effect-particles": "instances and blending",
    "effect-shape-mask": "segments",
    "transition-circleopen": "a condition with !=",
    "transition-fade": "nothing but the two pictures",
    "transition-luma": "a sampler parameter",
    "transition-perlin": "mod of negative numbers, and noise of sines",
    "transition-rotateTransition": "a vector times a matrix",
}


class ParityTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.rows = cls.measured("--only", "rewrites", *SAME)

    @staticmethod
    def measured(*arguments):
        made = subprocess.run(
            [sys.executable, SOURCE / "tools/gallery/parity.py", "--out", OUT, "--transitions",
             TRANSITIONS, *arguments], capture_output=True, text=True, check=False)
        if made.returncode != 0:
            raise AssertionError(made.stdout + made.stderr)
        rows = json.loads((OUT / "parity.json").read_text())["rows"]
        return {f"{row['kind']}-{row['name']}": row for row in rows}

    def test_pictures_are_the_same_but_for_the_last_bit(self):
        self.assertEqual(sorted(self.rows), sorted(SAME))
        for name, what in SAME.items():
            with self.subTest(name=name, what=what):
                self.assertLessEqual(self.rows[name]["largest"], 1, self.rows[name])

    def test_a_difference_is_seen(self):
        key = "transition-rotateTransition"
        row = self.measured("--only", "unaided", key)[key]
        self.assertGreater(row["share"], 0.5)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
