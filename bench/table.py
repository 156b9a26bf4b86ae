#!/usr/bin/env python3
"""Prints the summary of the benchmarks' JSON files as one table.

    table.py FILE.json ...                  aligned text
    table.py --markdown FILE.json ...       a Markdown table
    table.py --page PAGE.md FILE.json ...   puts the Markdown table into a page, between the lines
                                            <!-- table begins --> and <!-- table ends -->
    table.py --json OUT FILE.json ...       joins the files into one
"""

import argparse
import datetime
import json
import os
import pathlib
import platform
import sys

COLUMNS = ("what", "against", "measured", "limit", "outcome")
BEGIN, END = "<!-- table begins -->", "<!-- table ends -->"


def processor() -> str:
    try:
        lines = pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines()
    except OSError:
        return platform.machine()
    names = [line.split(":", 1)[1].strip() for line in lines if line.startswith("model name")]
    return names[0] if names else platform.machine()


def about(reports: list[dict]) -> str:
    rounds = " and ".join(str(report["rounds"]) for report in reports)
    return (
        f"Medians of interleaved runs, {rounds} rounds (short frames: 50 times as many), measured "
        f"on {datetime.date.today()}: {os.cpu_count()} processors, {processor()}, load "
        f"{os.getloadavg()[0]:.1f}. The figures are this machine's; the ratios carry further."
    )


def counts(rows: list[dict]) -> str:
    number = {word: sum(row["outcome"] == word for row in rows) for word in ("met", "missed")}
    return f"{number['met']} limits met, {number['missed']} missed."


def as_text(rows: list[dict]) -> str:
    table = [COLUMNS] + [tuple(row[column] for column in COLUMNS) for row in rows]
    widths = [max(len(line[i]) for line in table) for i in range(len(COLUMNS))]
    return "\n".join("  ".join(c.ljust(w) for c, w in zip(line, widths)).rstrip() for line in table)


def as_markdown(rows: list[dict]) -> str:
    lines = ["| What | Against | Measured | Limit | |", "|---|---|---|---|---|"]
    lines += ["| " + " | ".join(row[c] for c in COLUMNS) + " |" for row in rows]
    return "\n".join(lines)


def put_into_page(path: pathlib.Path, text: str) -> None:
    page = path.read_text(encoding="utf-8")
    if BEGIN not in page or END not in page:
        sys.exit(f"error: {path} has no place for the table")
    before, behind = page.split(BEGIN, 1)[0], page.split(END, 1)[1]
    path.write_text(f"{before}{BEGIN}\n\n{text}\n\n{END}{behind}", encoding="utf-8")


def main() -> None:
    parser = argparse.ArgumentParser(description="Prints the benchmarks' summary.")
    parser.add_argument("files", nargs="+", type=pathlib.Path)
    parser.add_argument("--markdown", action="store_true", help="a Markdown table")
    parser.add_argument("--page", type=pathlib.Path, help="put the Markdown table into this page")
    parser.add_argument("--json", type=pathlib.Path, help="join the files into this one")
    arguments = parser.parse_args()
    reports = [json.loads(file.read_text(encoding="utf-8")) for file in arguments.files]
    rows = [row for report in reports for row in report["summary"]]
    note = f"{about(reports)} {counts(rows)}"
    if arguments.json:
        joined = {
            "about": note,
            "summary": rows,
            "details": {f.stem: r for f, r in zip(arguments.files, reports)},
        }
        arguments.json.write_text(json.dumps(joined, indent=2) + "\n", encoding="utf-8")
    if arguments.page:
        put_into_page(arguments.page, f"{as_markdown(rows)}\n\n{note}")
    print(f"{as_markdown(rows) if arguments.markdown else as_text(rows)}\n\n{note}")


if __name__ == "__main__":
    main()
