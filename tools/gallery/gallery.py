#!/usr/bin/env python3
"""Draws the sample effects and the public transitions and writes a page to look at them.

gallery.py [--transitions FOLDER] [--out FOLDER] [--frames N] [--size WxH] [--parity FILE]
           [NAME ...]

Writes FOLDER/index.html with everything beside it that it needs; it works from the file system,
without a network. FOLDER/gallery.json tells for each one whether it was drawn, and if not, its
message and the rule of the dialect that stands against it. Names pick single effects and
transitions. The exit status is 1 if a sample effect was not drawn.
"""
import argparse
import json
import re
import shutil
import sys
import tempfile
from pathlib import Path

import catalog
import rules

PAGE = Path(__file__).resolve().parent / "page"
AUTHOR = re.compile(r"^\s*(?://|/?\*+)\s*authors?\s*[:=]?\s*(.+?)\s*(\*/)?$",
                    re.IGNORECASE | re.MULTILINE)


def author_of(text):
    """The author that a transition names in its first lines, without an address."""
    match = AUTHOR.search("\n".join(text.splitlines()[:12]))
    name = re.sub(r"<[^>]*>|\(?https?://\S+|\S+@\S+", "", match.group(1)).strip() if match else ""
    return name.strip(" ,;-()")


def shader_tabs(effects):
    """The HLSL texts of an item, those that are the same only once."""
    tabs, known = [], set()
    for number, effect in enumerate(effects):
        step = f"{number + 1}. " if len(effects) > 1 else ""
        for program in effect["programs"]:
            name = f"{program['name']} " if program["name"] else ""
            for stage in ("fragment", "vertex"):
                text = program[stage]
                if text and text not in known:
                    known.add(text)
                    tabs.append({"name": f"{step}HLSL {name}{stage}", "text": text})
    return tabs


def source_tabs(effects):
    tabs = {source["file"]: source["text"] for effect in effects for source in effect["sources"]}
    return [{"name": name, "text": text} for name, text in tabs.items()]


def params_of(effects, size):
    """The parameters of all effects of a chain; one that several have counts once."""
    params = list({param["name"]: param for effect in reversed(effects)
                 for param in effect["params"]}.values())
    for param in params:
        if param["name"] == "ratio" and "declared" in param:
            param["default"] = [size[0] / size[1]]
    return params


def pictures_of(item, out, frames, size):
    """Draws an item's frames into one strip; returns their number, or 0 if it is not drawn."""
    count = frames if item.moves else 1
    with tempfile.TemporaryDirectory(dir=out) as folder:
        pattern = Path(folder) / "%d.png"
        if not catalog.render(item, pattern, frames=count, size=size):
            return 0
        files = [str(pattern) % frame for frame in range(count)]
        strip = out / "pictures" / f"{item.key}.jpg"
        status, _, error = catalog.run([catalog.NATIVE / "picture-strip", strip, *files])
        if status != 0:
            raise RuntimeError(error)
    return count


def entry_of(item, out, frames, size, parity):
    """What the page shows of one item; draws it."""
    catalog.describe(item)
    count = pictures_of(item, out, frames, size) if item.info else 0
    effects = item.info.get("effects", [])
    glsl = source_tabs(effects)
    if not glsl:
        glsl = [{"name": item.path.name, "text": item.path.read_text(errors="replace")}]
    print(f"{item.name}: " + ("drawn" if count else item.message.splitlines()[0]), flush=True)
    return {
        "name": item.name, "kind": item.kind, "key": item.key,
        "frames": count, "still": 3 * count // 8,
        "pictures": f"pictures/{item.key}.jpg", "error": item.message,
        "rule": rules.rule_for(item.message), "description": item.info.get("description", ""),
        "author": author_of(glsl[0]["text"]) if item.kind == "transition" else "",
        "params": params_of(effects, size), "notes": item.info.get("notes", []),
        "glsl": glsl, "hlsl": shader_tabs(effects), "parity": parity.get(item.key),
    }


def parity_rows(path):
    """Measured differences by key, of the pictures with rewrites."""
    if not path or not Path(path).is_file():
        return {}
    rows = json.loads(Path(path).read_text())["rows"]
    return {f"{row['kind']}-{row['name']}": {key: row[key] for key in ("largest", "share")}
            for row in rows if "largest" in row and row["mode"] == "rewrites"}


def summary_of(entries):
    parts = []
    for kind, word in (("effect", "sample effects"), ("transition", "public transitions")):
        group = [entry for entry in entries if entry["kind"] == kind]
        drawn = sum(1 for entry in group if not entry["error"])
        if group:
            parts.append(f"{drawn} of {len(group)} {word}")
    return "GLSL drawn with Direct3D 11: " + " and ".join(parts)


def write_page(out, entries):
    origin = ""
    if any(entry["kind"] == "transition" for entry in entries):
        origin = "Transitions: gl-transitions, MIT licence"
    data = {"summary": summary_of(entries), "origin": origin, "items": entries}
    (out / "data.js").write_text("const GALLERY = " + json.dumps(data) + ";\n")
    for file in PAGE.iterdir():
        shutil.copyfile(file, out / file.name)


def write_report(out, entries):
    rows = [{key: entry[key] for key in ("name", "kind", "key", "error", "rule", "notes")}
            for entry in entries]
    (out / "gallery.json").write_text(json.dumps(rows, indent=1) + "\n")


def parse_size(text):
    width, height = text.split("x")
    return int(width), int(height)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--transitions", metavar="FOLDER")
    parser.add_argument("--out", metavar="FOLDER", default=str(catalog.ROOT / "out" / "gallery"))
    parser.add_argument("--frames", type=int, default=17)
    parser.add_argument("--size", type=parse_size, default=(320, 180), metavar="WxH")
    parser.add_argument("--parity", metavar="FILE")
    parser.add_argument("names", nargs="*", metavar="NAME")
    given = parser.parse_args()
    out = Path(given.out).resolve()
    (out / "pictures").mkdir(parents=True, exist_ok=True)

    items = catalog.sample_effects()
    items += catalog.transitions(given.transitions) if given.transitions else []
    parity = parity_rows(given.parity)
    entries = catalog.at_once(
        lambda item: entry_of(item, out, given.frames, given.size, parity),
        catalog.of_names(items, given.names))
    write_page(out, entries)
    write_report(out, entries)
    print(f"\n{summary_of(entries)}")
    for entry in entries:
        if entry["error"]:
            print(f"\n{entry['name']} is not drawn:\n{entry['error']}\n  {entry['rule']}")
    print(f"\nthe page is {out / 'index.html'}")
    return 1 if any(entry["error"] and entry["kind"] == "effect" for entry in entries) else 0


if __name__ == "__main__":
    sys.exit(main())
