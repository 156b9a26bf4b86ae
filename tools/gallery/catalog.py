"""What the gallery and the parity report share: the effects, the tools and how to call them."""
import concurrent.futures
import json
import os
import re
import subprocess
from dataclasses import dataclass, field
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
NATIVE = ROOT / "build" / "native" / "bin"
WINDOWS = ROOT / "build" / "windows" / "bin"
PICTURES = ROOT / "effects" / "inputs"

# What a transition goes from and to, and what its sampler parameters read.
FROM_TO = [PICTURES / "landscape.png", PICTURES / "city.png"]
FURTHER = PICTURES / "figure.png"

SECONDS_PER_EFFECT = 120


@dataclass
class Item:
    """A sample effect (its folder) or a public transition (its file)."""
    name: str
    kind: str  # "effect" or "transition"
    path: Path
    info: dict = field(default_factory=dict)  # what effect-info tells; empty if it failed
    message: str = ""                         # why it does not render; empty if it does

    @property
    def key(self):
        """Its own among all items: an effect and a transition may share a name."""
        return f"{self.kind}-{self.name}"

    @property
    def pictures(self):
        """The picture files that a transition is drawn with."""
        return [*FROM_TO, *[FURTHER] * len(self.info.get("samplers", []))]

    @property
    def moves(self):
        """Whether any parameter moves over the frames."""
        return any("from" in param for effect in self.info.get("effects", [])
                   for param in effect["params"])


def run(command, **options):
    """Runs a program; (exit status, what it wrote on stdout, the same for stderr)."""
    result = subprocess.run([str(part) for part in command], capture_output=True, check=False,
                            **options)
    return (result.returncode, result.stdout.decode("utf-8", "replace"),
            result.stderr.decode("utf-8", "replace"))


def windows_program(name):
    """The command that starts a Windows program here."""
    return [ROOT / "cmake" / "wine.sh", WINDOWS / (name + ".exe")]


def run_windows(name, arguments):
    environment = {**os.environ, "ORVANE_WINE_SECONDS": str(SECONDS_PER_EFFECT)}
    return run([*windows_program(name), *arguments], env=environment)


def describe(item, rewrites=True):
    """Fills in what effect-info knows."""
    arguments = [item.path]
    if item.kind == "transition":
        arguments = [*([] if rewrites else ["--no-rewrites"]), "--transition", item.path]
    status, output, error = run([NATIVE / "effect-info", *arguments])
    if status == 0:
        item.info = json.loads(output)
    else:
        item.message = error.strip()
    return item


def sample_effects():
    return [Item(path.parent.name, "effect", path.parent)
            for path in sorted((ROOT / "effects").glob("*/effect.json"))]


def transitions(folder):
    """The transitions of a folder, in the order of their names, letters' cases apart."""
    files = sorted(Path(folder).glob("*.glsl"), key=lambda path: path.stem.lower())
    return [Item(path.stem, "transition", path) for path in files]


def of_names(items, names):
    """Those of the names or keys, or all if there are none; ends the program for an unknown one."""
    unknown = set(names) - {text for item in items for text in (item.name, item.key)}
    if unknown:
        raise SystemExit("no such effect or transition: " + ", ".join(sorted(unknown)))
    return [item for item in items if not names or item.name in names or item.key in names]


def at_once(work, items, jobs=None):
    """Calls `work` for each item, several at a time; the results in the items' order."""
    with concurrent.futures.ThreadPoolExecutor(jobs or os.cpu_count() or 1) as pool:
        return list(pool.map(work, items))


# Lines of stderr that do not tell why an effect was refused: the compiler's warnings, and the log
# behind what the tool has told with the author's line.
NOISE = re.compile(r"^\s*$|: warning X\d+|^effect-render: error: .*: the effect does not compile$")
# The same error at the author's line, and as the compiler and the front end tell it.
AUTHOR_PLACE = re.compile(r"^\S+:\d+:\d+: error: ")
COMPILER_LINE = re.compile(r"^HLSL\(|^Failed to compile|^codeDX:|^\d+: ")
HLSL_PLACE = re.compile(r"[^\s(]*Shader@0x[0-9A-Fa-f]+")


def shown_message(text, path, limit=30):
    """The lines of a program's stderr that are worth showing, with no path of this machine."""
    text = HLSL_PLACE.sub("HLSL", text.replace(str(path.parent) + "/", ""))
    lines = [line.rstrip() for line in text.splitlines() if not NOISE.search(line)]
    if any(AUTHOR_PLACE.search(line) for line in lines):
        lines = [line for line in lines if not COMPILER_LINE.search(line)]
    return "\n".join(lines[:limit])


def render(item, out, *, frames, size, rewrites=True):
    """Draws the frames 0 to `frames` - 1 of an item to the picture files `out` (with a %d in it).

    Sets the item's message, and returns whether it was drawn.
    """
    arguments = ["-o", out, "--size", f"{size[0]}x{size[1]}", "--frames", f"0-{frames - 1}",
                 "--no-warnings"]
    if item.kind == "transition":
        arguments += ["--transition", item.path, *item.pictures]
        arguments += [] if rewrites else ["--no-rewrites"]
    else:
        arguments.append(item.path)
    status, _, error = run_windows("effect-render", arguments)
    item.message = "" if status == 0 else shown_message(error, item.path) or f"exit status {status}"
    return status == 0
