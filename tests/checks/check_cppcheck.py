#!/usr/bin/env python3
"""cppcheck finds nothing in src/ and tools/.

check_cppcheck.py BUILD-FOLDER
"""

import subprocess
import sys
from pathlib import Path

import tree

CACHE = Path(sys.argv[1]) / "cppcheck"
CACHE.mkdir(parents=True, exist_ok=True)
run = subprocess.run(
    ["cppcheck", "--quiet", "--std=c++17", "--language=c++", "-j2", "--inline-suppr",
     "--enable=warning,performance,portability", f"--cppcheck-build-dir={CACHE}",
     "--suppress=unusedStructMember", "--suppress=missingIncludeSystem",
     "--template={file}:{line}: {id}: {message}", "-I", "src", "src", "tools"],
    cwd=tree.ROOT, capture_output=True, text=True)
tree.finish("cppcheck", [line for line in run.stderr.splitlines() if line.strip()])
