#!/usr/bin/env python3
"""No floor includes a higher one, and nothing below the device floor includes a Windows header."""

import re

import tree

# Folder to floor, the longest matching folder counts. Host headers stand below everything.
FLOORS = {
    "src/DirectXEffectMgr/Include/": 0,
    "src/DirectXEffectMgr/Source/logging/": 1,
    "src/glsl/": 2,
    "src/glsl/hlsl/": 3,
    "src/movit/": 4,
    "src/DirectXEffectMgr/Source/core/": 5,
    "src/DirectXEffectMgr/Source/": 6,
    "tools/diagnostics/": 7,
}
DEVICE_FLOOR = 6
# What a floor may include besides lower floors and itself: all but what is listed here.
# The translator knows nothing of the host.
FORBIDDEN = {2: {0}, 3: {0}}
# effect-render loads the library as an editor does, and what talks to the library is free of the
# second look that its reports take; glsl2hlsl and the diagnostics need no device. The headers of
# the diagnostics that effect-render includes show nothing of the floors. The longest match counts.
TOOL_FLOORS = {
    "tools/effect-render/": {0},
    "tools/effect-render/reports.": {0, 7},
    "tools/glsl2hlsl/": {0, 1, 2, 3, 4, 5, 7},
    "tools/diagnostics/": {0, 1, 2, 3, 4, 5, 7},
    "tools/diagnostics/effect_facts.h": {7},
    "tools/diagnostics/finding.h": {7},
    "tools/diagnostics/second_look.h": {7},
}

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
PLATFORM = re.compile(
    r"^(windows|d3d|dxgi|objbase|unknwn|wrl/|winerror|GL/|opencv|combaseapi)", re.IGNORECASE)


def floor_of(name):
    folders = [folder for folder in FLOORS if name.startswith(folder)]
    return FLOORS[max(folders, key=len)] if folders else None


def includes_of(name):
    text = (tree.ROOT / name).read_text()
    for number, line in enumerate(text.splitlines(), 1):
        match = INCLUDE.match(line)
        if match:
            yield number, match.group(1) == "<", match.group(2)


def resolve(name, path):
    """The file of the tree that an include in quotes means; None for any other."""
    beside = (tree.ROOT / name).parent / path
    for candidate in (tree.ROOT / "src" / path, tree.ROOT / "tools" / path, beside):
        if candidate.is_file():
            return candidate.resolve().relative_to(tree.ROOT).as_posix()
    return None


def allowed_floors(name):
    matches = [start for start in TOOL_FLOORS if name.startswith(start)]
    if matches:
        return TOOL_FLOORS[max(matches, key=len)]
    floor = floor_of(name)
    return None if floor is None else set(range(floor + 1)) - FORBIDDEN.get(floor, set())


def problems_of_file(name):
    allowed = allowed_floors(name)
    if allowed is None:
        return
    floor = floor_of(name)
    for number, is_system, path in includes_of(name):
        if floor is not None and floor < DEVICE_FLOOR and PLATFORM.match(path):
            yield f"{name}:{number}: {path} belongs to the platform"
        if is_system:
            continue
        target = resolve(name, path)
        other = floor_of(target) if target else None
        if other is not None and other not in allowed:
            yield f"{name}:{number}: {path} is on a floor that this file does not see"


tree.finish("floors", [p for name in tree.sources() for p in problems_of_file(name)])
