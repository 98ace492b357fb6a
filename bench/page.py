#!/usr/bin/env python3
"""Puts a measured table into docs/performance.md, draws the charts of that page anew, and puts a
few figures of it into the README.

Usage: page.py SECTION <TABLE, where a section lies between two comments of the page: "measured",
which scripts/bench writes, or "growth", which scripts/growth writes.
"""

import sys
from pathlib import Path

import charts

HERE = Path(__file__).parent
TOP = HERE.parent
PAGE = "docs/performance.md"
README = "README.md"
FIGURES = ["E1", "E2", "X1", "X4", "P1", "P2"]
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


def figures_of(table):
    """The section of the README: some workloads, each with the best peer. Empty without them."""
    rows = {row[0]: row for row in charts.rows_of(table, 8) if row[0] in FIGURES and row[5]}
    if not rows:
        return ""
    lines = ["## How fast", "",
             "Side by side with other libraries; [Performance](docs/performance.md) has the rest.",
             "",
             "| | kobase | the best of the others |", "| --- | --- | --- |"]
    for name in filter(rows.get, FIGURES):
        ratio, unit = charts.Ratio(rows[name], floors()), rows[name][2]
        ours, theirs = rows[name][3].split()[0], dict(charts.amounts(rows[name][4]))[ratio.peer]
        best = f"{charts.figure(theirs, 4)} {unit}, {ratio.peer}"
        lines.append(f"| {ratio.what} | {ours} {unit} | {best} |")
    return "\n".join(lines) + "\n"


def framed(text):
    """A section between its comments; without the blank lines its first line is part of them."""
    return f"\n{text}\n" if text else ""


def section_replace(path, section, text):
    begin, end = f"<!-- {section} -->\n", f"<!-- end of {section} -->"
    before, rest = path.read_text().split(begin)
    path.write_text(before + begin + framed(text) + end + rest.split(end)[1])


def update(section, table, top=TOP):
    """Replaces the table of a section, and writes what is made of the tables."""
    pictures = charts_of(table)
    shown = [f"![{words}]({name})\n" for name, words in PICTURES[section] if name in pictures]
    section_replace(top / PAGE, section, "\n".join([*shown, table]))
    page = (top / PAGE).read_text()
    for name, picture in charts_of(page).items():
        (top / PAGE).with_name(name).write_text(picture)
    section_replace(top / README, "figures", figures_of(page))


if __name__ == "__main__":
    if sys.argv[1:] not in [[section] for section in PICTURES]:
        sys.exit(__doc__)
    update(sys.argv[1], sys.stdin.read())
