#!/usr/bin/env python3
"""Writes the seeds of a fuzz target: the golden sources, the sample effects, and a few more.

make_seeds.py ROOT FOLDER TARGET    makes FOLDER/TARGET anew
"""

import shutil
import sys
from pathlib import Path

ROOT, FOLDER, TARGET = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3]
SHADERS = (".frag", ".vert", ".glsl")
CHOICES = bytes(range(0, 160, 10))  # behind a text and its zero byte stand the target's choices


def shaders():
    for folder in ("tests/golden", "effects", "docs/examples"):
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix in SHADERS:
                yield path, path.relative_to(ROOT).as_posix().replace("/", "_")


def write(name, data):
    (FOLDER / TARGET / name).write_bytes(data)


def text_seeds():
    for path, name in shaders():
        write(name, path.read_bytes() + CHOICES)


def translate_seeds():
    """As a fragment shader and as a vertex shader: the last byte is the choice."""
    for path, name in shaders():
        text = path.read_bytes()
        write(name + ".0", text + CHOICES + b"\0")
        write(name + ".1", text + CHOICES + b"\1")
        vertex = path.with_suffix(".vert")
        if path.suffix == ".frag" and vertex.is_file():
            write(name + ".both",
                  vertex.read_bytes() + b"\n=====\n" + text + CHOICES)


def assembly_seeds():
    files = [b'#include "b.glsl"\nvec4 FUNCNAME(vec2 tc) { return PREFIX(a); }\n',
             b'#include "../c.glsl"\n/* #include "b.glsl" */\nPREFIX_DRAW_INSTANCE(x)\n',
             b'"#include \\"b.glsl\\"\r\n#include "a.frag"\n']
    ended = b"\\\n".join(files)  # a backslash ends a text of the decoder
    for i in range(24):
        choices = bytes((i * 37 + j * 11) % 256 for j in range(24))
        write(f"tree{i}", ended + choices)


def byte_seeds():
    for i in range(16):
        write(f"bytes{i}", bytes((i * 91 + j * j * 7) % 256 for j in range(40 * i + 20)))


SEEDS = {
    "lexer_fuzz": text_seeds,
    "parser_fuzz": text_seeds,
    "printer_fuzz": text_seeds,
    "translate_fuzz": translate_seeds,
    "assembly_fuzz": assembly_seeds,
    "layout_fuzz": byte_seeds,
    "ledger_fuzz": byte_seeds,
}

shutil.rmtree(FOLDER / TARGET, ignore_errors=True)
(FOLDER / TARGET).mkdir(parents=True)
SEEDS[TARGET]()
