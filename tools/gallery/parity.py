#!/usr/bin/env python3
"""Compares the library's pictures with what OpenGL draws from the same GLSL.

parity.py --transitions FOLDER [--out FOLDER] [--frames N] [--only unaided|rewrites] [NAME ...]

Each effect and each transition is drawn at five values of `progress` (0, 0.25, 0.5, 0.75, 1), or of
whatever parameter moves, by the library and by gl-reference. For each pair of pictures the largest
difference of a channel and the share of pixels off by more than 2 of 255 are measured; the table
shows the worst of the five. Transitions are measured twice: as they are ("unaided"), and with the
rewrites of effect-render --transition. The report is written to FOLDER/parity.json.
"""
import argparse
import json
import sys
from pathlib import Path

import catalog
import reference_job

SIZE = (256, 144)
FRAMES = 5
NEAR = 1        # of 255: no more than the last bit of each channel
SHARE = 0.01    # of the pixels off by more than 2


def compare(pairs):
    """(largest difference, largest share of pixels off) over pairs of picture files."""
    flat = [path for pair in pairs for path in pair]
    status, output, error = catalog.run([catalog.NATIVE / "picture-compare", *flat])
    if status != 0:
        raise RuntimeError(error)
    rows = [line.split() for line in output.splitlines()]
    return max(int(row[0]) for row in rows), max(float(row[1]) for row in rows)


def measure(item, out, rewrites):
    """One row of the report."""
    mode = "rewrites" if rewrites else "unaided"
    row = {"name": item.name, "kind": item.kind, "mode": mode}
    catalog.describe(item, rewrites)
    folder = out / mode
    folder.mkdir(parents=True, exist_ok=True)
    ours = folder / f"{item.key}-%d.png"
    if not item.info or not catalog.render(item, ours, frames=FRAMES, size=SIZE,
                                           rewrites=rewrites):
        return {**row, "error": item.message}
    theirs = out / "opengl" / f"{item.key}-%d.png"
    theirs.parent.mkdir(exist_ok=True)
    error = reference_job.draw(item, theirs, FRAMES, SIZE)
    if error:
        return {**row, "reference_error": error}
    largest, share = compare([(str(ours) % i, str(theirs) % i) for i in range(FRAMES)])
    return {**row, "largest": largest, "share": share, "notes": item.info.get("notes", [])}


def summary(rows):
    """The counts of one list of rows."""
    drawn = [row for row in rows if "largest" in row]
    return {"total": len(rows), "render": sum(1 for row in rows if "error" not in row),
            "within_1": sum(1 for row in drawn if row["largest"] <= NEAR),
            "at_most_1_percent": sum(1 for row in drawn if row["share"] <= SHARE)}


def line(row):
    if "largest" in row:
        return f"{row['name']:32} {row['largest']:8} {100 * row['share']:9.2f} %"
    why = row.get("error") or "no reference: " + row["reference_error"]
    return f"{row['name']:32} {why.splitlines()[0][:60]}"


def print_table(title, rows):
    counts = summary(rows)
    print(f"\n{title}\n{'':32} {'largest':>8} {'off by > 2':>11}")
    for row in rows:
        print(line(row))
    print(f"{counts['render']} of {counts['total']} render, {counts['within_1']} within {NEAR} of "
          f"255 everywhere, {counts['at_most_1_percent']} with at most 1 % of pixels off by more "
          "than 2", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--transitions", metavar="FOLDER")
    parser.add_argument("--out", metavar="FOLDER", default=str(catalog.ROOT / "out" / "parity"))
    parser.add_argument("--only", choices=["unaided", "rewrites"])
    parser.add_argument("names", nargs="*", metavar="NAME")
    given = parser.parse_args()
    out = Path(given.out).resolve()
    out.mkdir(parents=True, exist_ok=True)

    def everything():
        items = catalog.sample_effects()
        items += catalog.transitions(given.transitions) if given.transitions else []
        return catalog.of_names(items, given.names)

    report = {"size": SIZE, "frames": FRAMES, "rows": [], "counts": {}}
    groups = [("sample effects", "effect", True), ("transitions, unaided", "transition", False),
              ("transitions, with rewrites", "transition", True)]
    for title, kind, rewrites in groups:
        mode = "rewrites" if rewrites else "unaided"
        items = [item for item in everything() if item.kind == kind]
        if not items or (kind == "transition" and given.only not in (None, mode)):
            continue
        rows = catalog.at_once(lambda item, on=rewrites: measure(item, out, on), items)
        print_table(title, rows)
        report["rows"] += rows
        report["counts"][title] = summary(rows)
    (out / "parity.json").write_text(json.dumps(report, indent=1) + "\n")
    print(f"\nwritten to {out / 'parity.json'}")
    # The pictures must exist on both sides; how far they agree is what the table is for.
    return 1 if any("reference_error" in row for row in report["rows"]) else 0


if __name__ == "__main__":
    sys.exit(main())
