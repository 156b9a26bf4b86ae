#!/usr/bin/env python3
"""Shell scripts and Python files parse, and what is meant to be run can be run."""

import os
import subprocess

import tree


def first_line(name):
    with open(tree.ROOT / name, "rb") as file:
        return file.readline().decode("utf-8", "replace")


def problems_of_file(name):
    line = first_line(name)
    path = str(tree.ROOT / name)
    if line.startswith("#!") and not os.access(path, os.X_OK) and not name.endswith(".py"):
        yield f"{name}: cannot be run"
    if name.endswith(".sh") or "bash" in line and line.startswith("#!"):
        run = subprocess.run(["bash", "-n", path], capture_output=True, text=True)
        if run.returncode:
            yield f"{name}: {run.stderr}"
    if name.endswith(".py"):
        try:
            compile((tree.ROOT / name).read_text(), name, "exec")
        except SyntaxError as error:
            yield f"{name}: {error}"


tree.finish("scripts", [p for name in tree.files() if not tree.is_data(name)
                        for p in problems_of_file(name)])
