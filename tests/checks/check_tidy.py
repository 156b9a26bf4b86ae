#!/usr/bin/env python3
"""clang-tidy finds nothing, by the set of checks in .clang-tidy.

check_tidy.py BUILD-FOLDER [--windows]

Looks at the sources of src/ and tools/ that the build compiles; with --windows, of a cross build,
at those that no other build compiles. A file whose text, headers
included, was clean before is not looked at again: BUILD-FOLDER/tidy keeps a mark for each.
"""

import hashlib
import json
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import tree

BUILD = Path(sys.argv[1])
MARKS = BUILD / "tidy"
FOLDERS = ("src/", "tools/")
WINDOWS = "--windows" in sys.argv[2:]
WINDOWS_TARGETS = ("effect_device", "OrvaneDirectXEffectMgr", "effect_render_host",
                   "effect-render")
MINGW = "x86_64-w64-mingw32"


def is_wanted(entry):
    """Whether this part of the check is for a unit: the Windows half is for its targets alone."""
    return not WINDOWS or any(f"/{name}.dir/" in entry["command"] for name in WINDOWS_TARGETS)


def cross_arguments():
    """What clang must be told to read a source as the cross compiler does."""
    if not WINDOWS:
        return []
    listing = subprocess.run([MINGW + "-g++-posix", "-E", "-v", "-x", "c++", "/dev/null"],
                             capture_output=True, text=True).stderr.splitlines()
    begin = listing.index("#include <...> search starts here:") + 1
    folders = listing[begin:listing.index("End of search list.")]
    # The compiler's own headers come from clang itself.
    headers = [name.strip() for name in folders if not name.rstrip().endswith(("include-fixed",
                                                                               "-posix/include"))]
    return [f"--extra-arg-before=--target={MINGW}"] + [
        f"--extra-arg=-isystem{name}" for name in headers]


def units():
    """The command of each source to look at, by the source's name."""
    found = {}
    for entry in json.loads((BUILD / "compile_commands.json").read_text()):
        path = Path(entry["file"])
        if tree.ROOT in path.parents:
            name = path.relative_to(tree.ROOT).as_posix()
            if name.startswith(FOLDERS) and path.is_file() and is_wanted(entry):
                found.setdefault(name, entry)
    return found


def mark_of(entry):
    """Where the mark of this very text lies; None if it cannot be preprocessed."""
    command = [word for word in shlex.split(entry["command"]) if not word.endswith("ccache")]
    command = command[:command.index("-o")] + ["-E", "-P", "-o", "-", entry["file"]]
    run = subprocess.run(command, cwd=entry["directory"], capture_output=True)
    if run.returncode:
        return None
    digest = hashlib.sha256(run.stdout)
    digest.update((tree.ROOT / ".clang-tidy").read_bytes())
    # Silencing comments count too; the preprocessor drops them.
    digest.update(Path(entry["file"]).read_bytes())
    return MARKS / digest.hexdigest()


def problems_of_unit(unit):
    name, entry = unit
    mark = mark_of(entry)
    if mark is not None and mark.exists():
        return []
    run = subprocess.run(["clang-tidy", "--quiet", "-p", str(MARKS), *ARGUMENTS, entry["file"]],
                         capture_output=True, text=True)
    found = [line.replace(str(tree.ROOT) + "/", "") for line in run.stdout.splitlines()
             if ": error:" in line or ": warning:" in line]
    if run.returncode and not found:
        found = [f"{name}: {run.stdout}{run.stderr}"]
    if not found and mark is not None:
        mark.touch()
    return found


ARGUMENTS = cross_arguments()
MARKS.mkdir(parents=True, exist_ok=True)
UNITS = units()
# A list of its own: clang-tidy would run every command that compiles a file, among them that of a
# test program with a header that the other compiler has precompiled.
(MARKS / "compile_commands.json").write_text(json.dumps(list(UNITS.values())))
with ThreadPoolExecutor(2) as pool:
    results = list(pool.map(problems_of_unit, UNITS.items()))
tree.finish("clang-tidy", sorted({p for problems in results for p in problems}))
