#!/usr/bin/env python3
"""The gallery's page as its readers use it, in a browser, over the sample effects and a few
transitions.

gallery_test.py SOURCE_FOLDER OUT_FOLDER TRANSITIONS

The page and two pictures of it stay in OUT_FOLDER.
"""
import json
import subprocess
import sys
import time
import unittest
from pathlib import Path

from browser import Browser

SOURCE, OUT, TRANSITIONS = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3]
EFFECTS = sorted(path.parent.name for path in (SOURCE / "effects").glob("*/effect.json"))
EFFECT_KEYS = ["effect-" + name for name in EFFECTS]
# Plain, refused by the dialect, named like an effect, with a sampler, and rewritten.
CHOSEN = ["fade", "hexagonalize", "kaleidoscope", "luma", "rotateTransition"]
CHOSEN_KEYS = ["transition-" + name for name in CHOSEN]
KEYS = EFFECT_KEYS + CHOSEN_KEYS
RIGHT, ESCAPE, ENTER = "\ue014", "\ue00c", "\ue007"


def wait_for(condition, seconds=10):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if condition():
            return True
        time.sleep(0.05)
    return False


class GalleryTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        made = subprocess.run(
            [sys.executable, SOURCE / "tools/gallery/gallery.py", "--out", OUT, "--transitions",
             TRANSITIONS, "--frames", "5", "--size", "160x90", *KEYS],
            capture_output=True, text=True, check=False)
        if made.returncode != 0:
            raise AssertionError(made.stdout + made.stderr)
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.close)

    def setUp(self):
        self.browser.open("about:blank")
        self.browser.open((OUT / "index.html").as_uri())

    def tearDown(self):
        self.assertEqual(self.browser.log(), [])

    def text(self, selector):
        return self.browser.run("return document.querySelector(arguments[0]).innerText", selector)

    def count(self, selector):
        return self.browser.run("return document.querySelectorAll(arguments[0]).length", selector)

    def is_open(self):
        return self.browser.run("return document.getElementById('detail').open")

    def card(self, key):
        return f'.card[data-key="{key}"]'

    def test_report_tells_what_was_drawn(self):
        rows = {row["key"]: row for row in json.loads((OUT / "gallery.json").read_text())}
        self.assertEqual(sorted(rows), sorted(KEYS))
        failed = [key for key, row in rows.items() if row["error"]]
        self.assertEqual(failed, ["transition-hexagonalize"])
        self.assertIn("hexagonalize.glsl:", rows[failed[0]]["error"])
        self.assertIn("cannot return a struct", rows[failed[0]]["rule"])

    def test_all_are_shown_with_pictures(self):
        self.assertEqual(self.count(".card"), len(KEYS))
        self.assertEqual(self.count(".broken"), 1)
        self.assertIn(f"{len(EFFECTS)} of {len(EFFECTS)} sample effects and 4 of 5",
                      self.text("#summary"))
        self.assertTrue(wait_for(lambda: self.browser.run(
            "return [...document.querySelectorAll('.card .frames:not(.broken)')]"
            ".every((box) => box.style.backgroundImage.includes('.jpg'))")))
        self.browser.screenshot(OUT / "page.png")

    def test_each_opens_with_its_sources(self):
        for key in KEYS:
            name = key.split("-", 1)[1]
            self.browser.click(self.card(key))
            self.assertTrue(self.is_open(), name)
            self.assertEqual(self.text("#detail-name"), name)
            self.assertGreater(self.count("#glsl .l") + self.count("#glsl-tabs button"), 2, name)
            self.assertIn("cbuffer MyConstantBuffer", self.text("#hlsl"), name)
            broken = self.count("#facts .error")
            self.assertEqual(broken, 1 if name == "hexagonalize" else 0, name)
            self.browser.press(ESCAPE)
            self.assertTrue(wait_for(lambda: not self.is_open()), name)

    def test_every_tab_shows_a_text(self):
        self.browser.click(self.card("effect-particles"))
        names = self.browser.run("return [...document.querySelectorAll('.tabs button')]"
                                 ".map((tab) => tab.innerText)")
        self.assertEqual(names, ["sky.frag", "spark.frag", "spark.vert", "HLSL fragment",
                                 "HLSL vertex", "HLSL spark fragment", "HLSL spark vertex"])
        seen = self.browser.run(
            "return [...document.querySelectorAll('#glsl-tabs button')].map((tab) => {"
            "tab.click(); return document.getElementById('glsl').innerText; })")
        self.assertEqual(len(set(seen)), 3)
        self.assertIn("PREFIX_DRAW_INSTANCE(seed)", seen[2])

    def test_parameters_are_shown(self):
        self.browser.click(self.card("transition-rotateTransition"))
        self.assertEqual(self.text("#facts tr:nth-child(2)").split(),
                         ["progress", "float", "0", "0", "to", "1"])
        self.assertIn("transpose(matrix)", self.text("#facts"))
        self.browser.screenshot(OUT / "detail.png")

    def test_pictures_move_under_the_pointer_and_rest_without_it(self):
        selector = self.card("transition-fade") + " .frames"
        place = "return document.querySelector(arguments[0]).style.backgroundPosition"
        # Loaded once in view; frame 1 of 5 is the one at rest.
        self.browser.run("document.querySelector(arguments[0]).scrollIntoView()", selector)
        self.assertTrue(wait_for(lambda: self.browser.run(place, selector).startswith("25%")))
        self.browser.hover(selector)
        self.assertTrue(wait_for(lambda: self.browser.run(place, selector).startswith("100%")))
        self.browser.hover("h1")
        self.assertTrue(wait_for(lambda: self.browser.run(place, selector).startswith("25%")))

    def test_player_stops_and_goes(self):
        self.browser.open((OUT / "index.html").as_uri() + "#transition-fade")
        self.assertTrue(wait_for(self.is_open))
        self.assertTrue(wait_for(lambda: self.text("#frame") == "frame 5 of 5"))
        self.browser.click("#play")
        frame = self.text("#frame")
        time.sleep(0.5)
        self.assertEqual(self.text("#frame"), frame)

    def test_search_and_filters(self):
        self.browser.press("/")
        self.browser.press("rotate2d")  # only in the source
        self.assertTrue(wait_for(lambda: self.count(".card") == 1))
        self.browser.press(ESCAPE)
        self.assertEqual(self.count(".card"), len(KEYS))
        self.browser.click("#filters button:nth-child(4)")
        self.assertEqual(self.count(".card"), 1)
        self.browser.press("/")
        self.browser.press("no such thing")
        self.assertEqual(self.text("#nothing"), "Nothing matches.")

    def test_keyboard_alone(self):
        self.browser.press(RIGHT)
        self.browser.press(RIGHT)
        self.browser.press(ENTER)
        self.assertEqual(self.text("#detail-name"), EFFECTS[1])
        self.browser.press(RIGHT)
        self.assertEqual(self.text("#detail-name"), EFFECTS[2])
        self.browser.press(ESCAPE)
        self.assertTrue(wait_for(lambda: not self.is_open()))
        focused = "return document.activeElement.dataset.key"
        # The browser first goes back to where it was, and the page from there to the picture.
        wait_for(lambda: self.browser.run(focused) == EFFECT_KEYS[2])
        self.assertEqual(self.browser.run(focused), EFFECT_KEYS[2])

    def test_theme_changes(self):
        theme = "return document.documentElement.dataset.theme"
        before = self.browser.run(theme)
        self.browser.press("t")
        self.assertNotEqual(self.browser.run(theme), before)
        self.browser.press("t")
        self.assertEqual(self.browser.run(theme), before)

    def test_nothing_comes_from_elsewhere(self):
        self.browser.click(self.card("effect-dream"))
        names = self.browser.run("return performance.getEntriesByType('resource')"
                                 ".map((entry) => entry.name)")
        self.assertEqual([name for name in names if not name.startswith(("file:", "data:"))], [])
        for name in ("index.html", "gallery.css", "gallery.js", "code.js"):
            self.assertNotRegex((OUT / name).read_text(), r"(https?:)?//\w+\.\w")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
