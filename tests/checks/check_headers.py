#!/usr/bin/env python3
"""Every header below the device floor compiles alone.

check_headers.py COMPILER [FLAG ...]
"""

import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

import tree

DEVICE_FOLDER = "src/DirectXEffectMgr/Source/"
DEVICE_FREE = (DEVICE_FOLDER + "core/", DEVICE_FOLDER + "logging/")


def needs_no_device(name):
    return not name.startswith(DEVICE_FOLDER) or name.startswith(DEVICE_FREE)


def problems_of_header(name):
    unit = f'#include "{tree.ROOT / name}"\n'
    run = subprocess.run(
        sys.argv[1:] + ["-std=c++17", "-fsyntax-only", "-I", str(tree.ROOT / "src"), "-x", "c++",
                        "-"], input=unit, capture_output=True, text=True)
    return [f"{name} does not compile alone:\n{run.stderr}"] if run.returncode else []


headers = [name for name in tree.files(".h") if name.startswith("src/") and needs_no_device(name)]
with ThreadPoolExecutor(2) as pool:
    results = list(pool.map(problems_of_header, headers))
tree.finish("headers", [p for problems in results for p in problems])
