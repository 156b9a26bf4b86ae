"""What the checks share: the files of the tree, and how a check ends."""

import os
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]

# Inputs and expected outputs of tests are what they are, byte for byte.
DATA_FOLDERS = ("tests/golden/", "fuzz/corpus/", "fuzz/seeds/")
BINARY_SUFFIXES = {".png", ".jpg", ".jpeg", ".raw", ".mp4", ".zip", ".ico"}


def listed_by_git():
    run = subprocess.run(
        ["git", "-c", "safe.directory=*", "ls-files", "--cached", "--others",
         "--exclude-standard"], cwd=ROOT, capture_output=True, text=True)
    return run.stdout.splitlines() if run.returncode == 0 else None


def listed_by_walk():
    """The same for a copy of the tree without version control."""
    found = []
    for folder, folders, names in os.walk(ROOT):
        folders[:] = [name for name in folders if name not in (".git", "build", "out")]
        found += [(Path(folder) / name).relative_to(ROOT).as_posix() for name in names]
    return found


def files(*suffixes):
    """Paths, relative to the root, of the files under version control or about to be added."""
    listed = listed_by_git()
    if listed is None:
        listed = listed_by_walk()
    present = [name for name in listed if (ROOT / name).is_file()]
    return sorted(name for name in present if not suffixes or Path(name).suffix in suffixes)


def sources():
    """The C++ files of the tree."""
    return files(".h", ".cpp")


def is_data(name):
    return name.startswith(DATA_FOLDERS) or Path(name).suffix in BINARY_SUFFIXES


def finish(what, problems):
    """Prints the problems and ends the check."""
    for problem in problems:
        print(problem)
    print(f"{what}: {len(problems)} problem(s)")
    sys.exit(1 if problems else 0)
