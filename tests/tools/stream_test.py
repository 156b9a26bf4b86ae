#!/usr/bin/env python3
"""effect-render between two ffmpeg, and at the ends of broken pipes.

stream_test.py SOURCE_FOLDER PROGRAM [ARGUMENT ...]    PROGRAM runs effect-render
"""
import subprocess
import sys
import unittest
from pathlib import Path

SOURCE, RENDER = Path(sys.argv[1]), sys.argv[2:]
NEGATIVE = str(SOURCE / "docs/examples/negative.frag")
WIDTH, HEIGHT, FRAMES = 160, 90, 50
SIZE = f"{WIDTH}x{HEIGHT}"
FRAME_BYTES = WIDTH * HEIGHT * 4
CLIP = ["-f", "lavfi", "-i", f"testsrc=size={SIZE}:rate=25:duration=2"]
RAW = ["-f", "rawvideo", "-pix_fmt", "rgba"]


def ffmpeg(*arguments, **options):
    return subprocess.run(["ffmpeg", "-v", "error", *arguments], check=True,
                          stdout=subprocess.PIPE, **options).stdout


def lines(message):
    return message.decode().replace("\r\n", "\n")


def render(*arguments, **options):
    return subprocess.run([*RENDER, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          timeout=300, **options)


def negative(pixels, amount):
    """What docs/examples/negative.frag makes of a frame, before it is rounded."""
    return [v if i % 4 == 3 else v + (255 - 2 * v) * amount for i, v in enumerate(pixels)]


class PipeTest(unittest.TestCase):
    def test_clip_of_two_seconds_goes_through_both_pipes(self):
        source = subprocess.Popen(["ffmpeg", "-v", "error", *CLIP, *RAW, "-"],
                                  stdout=subprocess.PIPE)
        middle = subprocess.Popen(
            [*RENDER, NEGATIVE, "--raw-in", SIZE, "--float", "amount=1", "--raw-out"],
            stdin=source.stdout, stdout=subprocess.PIPE)
        source.stdout.close()
        # ffv1 keeps every bit.
        clip = ffmpeg(*RAW, "-s", SIZE, "-r", "25", "-i", "-", "-c:v", "ffv1", "-pix_fmt", "bgra",
                      "-f", "nut", "-", stdin=middle.stdout)
        middle.stdout.close()
        self.assertEqual((source.wait(60), middle.wait(60)), (0, 0))
        frames = ffmpeg("-i", "-", *RAW, "-", input=clip)
        self.assertEqual(len(frames), FRAMES * FRAME_BYTES)
        given = ffmpeg(*CLIP, *RAW, "-")
        expected = bytes(v if i % 4 == 3 else 255 - v for i, v in enumerate(given))
        self.assertTrue(frames == expected, "some pixel is not the negative of the clip's")

    def test_parameter_moves_over_the_frames(self):
        given = ffmpeg(*CLIP, *RAW, "-frames:v", "5", "-")
        result = render(NEGATIVE, "--raw-in", SIZE, "--float", "amount=0:1", "--frames", "0-4",
                        "--raw-out", input=given)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        self.assertEqual(len(result.stdout), 5 * FRAME_BYTES)
        for frame in range(5):
            part = slice(frame * FRAME_BYTES, (frame + 1) * FRAME_BYTES)
            expected = negative(given[part], frame / 4)
            worst = max(abs(a - b) for a, b in zip(result.stdout[part], expected))
            self.assertLessEqual(worst, 1.0, f"frame {frame}")

    def test_second_input_and_further_frames_than_asked_for(self):
        given = bytes([255, 0, 0, 255] * 6)
        result = render(str(SOURCE / "effects/dissolve"), "--raw-in", "3x2", "-i",
                        str(SOURCE / "effects/inputs/city.png"), "--float", "progress=0",
                        "--frames", "0-1", "--raw-out", input=given * 4)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        self.assertEqual(result.stdout, given * 2)

    def test_frames_without_an_input(self):
        result = render(NEGATIVE, "-i", str(SOURCE / "effects/inputs/city.png"), "--size", "5x3",
                        "--float", "amount=0:1", "--frames", "0-2", "--raw-out")
        self.assertEqual(result.returncode, 0)
        self.assertEqual(len(result.stdout), 3 * 5 * 3 * 4)


class BrokenPipeTest(unittest.TestCase):
    def run_with(self, given, *arguments):
        return render(NEGATIVE, "--raw-in", "4x2", "--float", "amount=0", "--raw-out", *arguments,
                      input=given)

    def test_last_frame_cut_short(self):
        result = self.run_with(bytes(range(32)) * 2 + b"rest")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout, bytes(range(32)) * 2)
        self.assertEqual(lines(result.stderr),
                         "effect-render: error: standard input: ends after 4 of 32 bytes of frame "
                         "3; are the frames RGBA and 4x2?\n")

    def test_no_frame_at_all(self):
        result = self.run_with(b"")
        self.assertEqual((result.returncode, result.stdout), (1, b""))
        self.assertEqual(lines(result.stderr),
                         "effect-render: error: standard input: holds no frame\n")

    def test_fewer_frames_than_asked_for(self):
        result = self.run_with(bytes(64), "--frames", "0-4")
        self.assertEqual((result.returncode, result.stdout), (0, bytes(64)))
        self.assertEqual(lines(result.stderr),
                         "effect-render: standard input ended after 2 of 5 frames\n")

    def test_reader_that_goes_early(self):
        render_process = subprocess.Popen(
            [*RENDER, NEGATIVE, "-i", str(SOURCE / "effects/inputs/city.png"), "--float",
             "amount=0", "--frames", "0-999", "--raw-out"],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.assertEqual(len(render_process.stdout.read(4)), 4)
        render_process.stdout.close()
        message = lines(render_process.stderr.read())
        render_process.stderr.close()
        self.assertEqual(render_process.wait(60), 1)
        self.assertEqual(message, "effect-render: error: standard output: was closed before the "
                                  "last frame, or cannot be written\n")

    def test_bytes_that_a_text_would_lose(self):
        given = bytes([13, 10, 26, 255, 10, 10, 13, 255]) * 4
        self.assertEqual(self.run_with(given).stdout, given)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
