#!/usr/bin/env python3
"""Puts a measured table into docs/performance.md and draws the charts of that page anew.

Usage: page.py SECTION <TABLE, where a section lies between two comments of the page: "measured",
which scripts/bench writes, or "growth", which scripts/growth writes.
"""

import sys
from pathlib import Path

import charts

HERE = Path(__file__).parent
FOLDER = HERE.parent / "docs"
PAGE = "performance.md"
PICTURES = {
    "measured": [("performance-ratios.svg", "For each workload the ratio to the best peer"),
                 ("performance-memory.svg", "Bytes an element of each library")],
    "growth": [("performance-growth.svg", "Milliseconds over the size of the input")],
}


def floors():
    """The side that is no peer, of each workload that has one."""
    lines = (HERE / "workloads.tsv").read_text().splitlines()
    columns = [line.split("\t") for line in lines if not line.startswith("#")]
    return {row[0]: row[4] for row in columns if len(row) > 4}


def charts_of(page):
    return charts.draw(page, floors())


def update(section, table, folder=FOLDER):
    """Replaces the table of a section, and writes the page and its charts."""
    begin, end = f"<!-- {section} -->\n", f"<!-- end of {section} -->"
    before, rest = (folder / PAGE).read_text().split(begin)
    pictures = charts_of(table)
    shown = [f"![{words}]({name})\n" for name, words in PICTURES[section] if name in pictures]
    page = before + begin + "\n".join([*shown, table]) + end + rest.split(end)[1]
    (folder / PAGE).write_text(page)
    for name, picture in charts_of(page).items():
        (folder / name).write_text(picture)


if __name__ == "__main__":
    if sys.argv[1:] not in [[section] for section in PICTURES]:
        sys.exit(__doc__)
    update(sys.argv[1], sys.stdin.read())
