#!/usr/bin/env python3
"""effect-render --watch while its files change, break and are mended.

watch_test.py SOURCE_FOLDER PROGRAM [ARGUMENT ...]    PROGRAM runs effect-render
"""
import os
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import threading
import time
import unittest
import zlib
from pathlib import Path

RENDER = sys.argv[2:]
SECONDS = 60  # within which a drawing is awaited

SHADER = """#include "parts/tint.glsl"
vec4 FUNCNAME(vec2 tc) { return tint(INPUT1(tc)); }
"""
TINT = """#include "parts/gain.glsl"
vec4 tint(vec4 c) { return vec4(c.rgb * GAIN, c.a); }
"""


def png(color):
    """A picture of one pixel."""
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 1, 1, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(b"\0" + bytes(color))) + chunk(b"IEND", b""))


def pixel(path):
    """The pixel of a PNG file of one pixel; none of the filters changes its first row."""
    data = path.read_bytes()
    at = data.index(b"IDAT")
    size = struct.unpack(">I", data[at - 4:at])[0]
    return list(zlib.decompress(data[at + 4:at + 4 + size])[1:])


class WatchTest(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        (self.folder / "parts").mkdir()
        self.write("effect.json", '{"fragment": "a.frag", "inputs": ["in.png"]}')
        self.write("a.frag", SHADER)
        self.write("parts/tint.glsl", TINT)
        self.write("parts/gain.glsl", "#define GAIN 1.0\n")
        (self.folder / "in.png").write_bytes(png([100, 60, 20, 255]))

    def start(self, *arguments):
        self.lines = []
        self.seen = 0
        self.process = subprocess.Popen(
            [*RENDER, str(self.folder), "-o", str(self.folder / "out.png"), "--watch", *arguments],
            stderr=subprocess.PIPE, stdin=subprocess.DEVNULL, text=True)
        self.addCleanup(self.process.kill)
        self.reader = threading.Thread(target=self.collect)
        self.reader.start()

    def collect(self):
        with self.process.stderr as stream:
            for line in stream:
                self.lines.append(line.rstrip("\n"))

    def write(self, name, text):
        """As editors do it: a new file that takes the old one's name."""
        fresh = self.folder / "fresh.tmp"
        fresh.write_text(text)
        os.replace(fresh, self.folder / name)

    def drawing(self):
        """The lines of the next drawing, once the program waits again."""
        end = time.monotonic() + SECONDS
        while time.monotonic() < end:
            lines = self.lines[self.seen:]
            for i, line in enumerate(lines):
                if line.startswith("effect-render: watching "):
                    self.seen += i + 1
                    return lines[:i + 1]
            time.sleep(0.02)
        raise AssertionError(f"nothing was drawn: {self.lines}")

    def expect_pixel(self, color):
        lines = self.drawing()
        self.assertRegex(lines[0], r"^effect-render: drew 1 frame in \d+ ms$")
        self.assertEqual(lines[1:], ["effect-render: watching 5 files"])
        self.assertEqual(pixel(self.folder / "out.png"), color)

    def test_includes_pictures_and_mistakes(self):
        self.start("--watch-count", "7")
        self.expect_pixel([100, 60, 20, 255])
        self.write("parts/gain.glsl", "#define GAIN 2.0\n")  # an include of an include
        self.expect_pixel([200, 120, 40, 255])
        (self.folder / "in.png").write_bytes(png([10, 20, 30, 255]))
        self.expect_pixel([20, 40, 60, 255])
        self.write("parts/tint.glsl", TINT.replace("GAIN", "GIAN"))
        self.assertTrue(any("error" in line for line in self.drawing()))
        self.write("parts/tint.glsl", TINT)
        self.expect_pixel([20, 40, 60, 255])
        self.write("effect.json", '{"fragment": "b.frag", "inputs": ["in.png"]}')
        self.assertTrue(any("error" in line for line in self.drawing()))
        # The missing file appears: the last of the seven.
        self.write("b.frag", "vec4 FUNCNAME(vec2 tc) { return vec4(1.0); }")
        self.assertEqual(self.process.wait(SECONDS), 0)
        self.reader.join()
        self.assertEqual(pixel(self.folder / "out.png"), [255, 255, 255, 255])

    def test_file_that_is_missing_for_a_moment_draws_once(self):
        self.start("--watch-count", "2")
        self.drawing()
        (self.folder / "a.frag").unlink()
        time.sleep(0.3)
        self.write("a.frag", "vec4 FUNCNAME(vec2 tc) { return vec4(0.0, 1.0, 0.0, 1.0); }")
        self.assertEqual(self.process.wait(SECONDS), 0, self.lines)
        self.reader.join()
        self.assertEqual(pixel(self.folder / "out.png"), [0, 255, 0, 255])

    def test_status_is_that_of_the_last_drawing(self):
        self.write("a.frag", "vec4 FUNCNAME(vec2 tc) { return none; }")
        self.start("--watch-count", "1")
        self.assertEqual(self.process.wait(SECONDS), 1)
        self.reader.join()

    def test_interrupt_ends_it(self):
        self.start()
        self.drawing()
        os.kill(self.program(), signal.SIGINT)  # what a terminal sends for Ctrl-C
        self.assertEqual(self.process.wait(SECONDS), 0)
        self.reader.join()

    def program(self):
        """The process that draws: the last of the chain that was started."""
        process = self.process.pid
        while True:
            children = Path(f"/proc/{process}/task/{process}/children").read_text().split()
            if not children:
                return process
            process = int(children[0])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
