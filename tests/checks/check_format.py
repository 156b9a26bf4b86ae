#!/usr/bin/env python3
"""Every C++ file is as clang-format would write it."""

import subprocess

import tree


def problems():
    run = subprocess.run(["clang-format", "--dry-run", "--Werror", *tree.sources()],
                         cwd=tree.ROOT, capture_output=True, text=True)
    names = {line.split(":")[0] for line in run.stderr.splitlines() if ": error:" in line}
    if run.returncode and not names:
        return [run.stderr]
    return [f"{name}: call clang-format -i on it" for name in sorted(names)]


tree.finish("format", problems())
