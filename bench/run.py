#!/usr/bin/env python3
"""Runs the sides of the workloads, compares their check numbers and prints tables.

A side is a program bench_NAME in the folder of the programs; bench_kobase is the library's own.
"""

import argparse
import datetime
import json
import os
import platform
import re
import statistics
import subprocess
import sys
from pathlib import Path

import page
from charts import figure

HERE = Path(__file__).parent
OURS = "kobase"
PACKAGES = {
    "muparser": "libmuparser-dev", "lua": "liblua5.4-dev", "luajit": "libluajit-5.1-dev",
    "expat": "libexpat1-dev", "pugixml": "libpugixml-dev", "tinyxml2": "libtinyxml2-dev",
    "libxml2": "libxml2-dev", "libxslt": "libxslt1-dev",
}
ROUNDS = 3
SMALLEST = ["--divide=1000", "--iterations=1"]
RISE = 1.10  # instruction counts above this ratio to the checked-in ones are named


def fail(message):
    sys.exit(f"bench: {message}")


def progress(message):
    print(message, file=sys.stderr, flush=True)


class Workload:
    def __init__(self, line):
        columns = (line.split("\t") + ["", ""])[:5]
        self.name, self.unit, self.what, goals, self.floor = columns
        self.goals = []
        for goal in filter(None, goals.split(";")):
            reference, most = goal.split()
            self.goals.append((reference, float(most)))

    def amount(self, value):
        """A value, nanoseconds or bytes an item, in the workload's unit."""
        return {"us": value / 1000, "MB/s": 1000 / value}.get(self.unit, value)


def workloads(names):
    lines = (HERE / "workloads.tsv").read_text().splitlines()
    all_of_them = [Workload(line) for line in lines if not line.startswith("#")]
    unknown = set(names) - {workload.name for workload in all_of_them}
    if unknown:
        fail("no such workload: " + " ".join(sorted(unknown)))
    return [workload for workload in all_of_them if not names or workload.name in names]


def output_of(command):
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode != 0:
        fail(f"{' '.join(map(str, command))} failed:\n{done.stderr}")
    return done


class Side:
    def __init__(self, program):
        self.program = program
        self.name = program.name[len("bench_"):]
        self.workloads = set(output_of([program, "--list"]).stdout.split())

    def run(self, name, options):
        """The value and the check number of one run of a workload."""
        command = [self.program, "--benchmark_format=json", *options, name]
        report = json.loads(output_of(command).stdout)["benchmarks"][0]
        if report.get("error_occurred"):
            fail(f"{name}: {self.name}: {report['error_message']}")
        return report["value"] or report["cpu_time"] / report["items"], report["check"]

    def instructions(self, name, options, iterations):
        done = output_of(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
                          "--collect-atstart=no", "--toggle-collect=*)::counted(*",
                          self.program, *options, f"--iterations={iterations}",
                          "--benchmark_format=json", name])
        report = json.loads(done.stdout)["benchmarks"][0]
        return int(re.search(r"Collected : (\d+)", done.stderr)[1]) / report["items"]


def sides(folder):
    found = [Side(program) for program in sorted(folder.glob("bench_*")) if program.is_file()]
    if OURS not in [side.name for side in found]:
        fail(f"no bench_{OURS} in {folder}")
    return sorted(found, key=lambda side: side.name != OURS)


def measured(workload, all_sides, rounds, options):
    """The values of each side; every run of every side has to give the same check number."""
    values, checks = {}, {}
    for _ in range(rounds):
        for side in all_sides:
            if workload.name in side.workloads:
                value, check = side.run(workload.name, options)
                values.setdefault(side.name, []).append(value)
                checks.setdefault(check, []).append(side.name)
    if len(checks) > 1:
        fail(f"{workload.name}: the check numbers differ: " +
             ", ".join(f"{check!r} of {' '.join(sorted(set(who)))}"
                       for check, who in checks.items()))
    return values


class Table:
    """What was measured: the values of every side in every workload."""

    def __init__(self):
        self.rows = {}

    def fastest(self, name, side):
        return min(self.rows.get(name, {}).get(side, [float("nan")]))

    def ratio(self, name, reference):
        """Of the library to a reference: a peer, another workload, or an amount."""
        ours = self.fastest(name, OURS)
        if reference in self.rows:
            return ours / self.fastest(reference, OURS)
        return ours / self.fastest(name, reference)

    def best(self, workload):
        peers = set(self.rows[workload.name]) - {OURS, workload.floor}
        return min(peers, key=lambda side: self.fastest(workload.name, side), default=None)

    def judged(self, workload):
        """For each goal: its words, what was reached, and whether that is good enough; None where
        the reference was not measured."""
        for reference, most in workload.goals:
            if reference == "most":
                reached = workload.amount(self.fastest(workload.name, OURS))
                words = f"{most:g} {workload.unit}"
            else:
                reached = self.ratio(workload.name, reference)
                words = f"{most:g} x {reference}"
            yield words, reached, None if reached != reached else reached <= most

    def line(self, workload):
        name = workload.name
        amounts = {side: f"{figure(workload.amount(min(values)), 4)} "
                         f"({figure(workload.amount(statistics.median(values)), 4)})"
                   for side, values in self.rows[name].items()}
        ours = amounts.pop(OURS)
        peers = ", ".join(f"{side} {amount}" for side, amount in amounts.items())
        ratios = [figure(self.ratio(name, side), 3) if side in self.rows[name] else ""
                  for side in (self.best(workload), workload.floor)]
        goals = "; ".join(words + ("" if good is None else f": {figure(reached, 3)}") +
                          (" **missed**" if good is False else "")
                          for words, reached, good in self.judged(workload))
        cells = [name, workload.what, workload.unit, ours, peers, *ratios, goals]
        return re.sub(" +", " ", f"| {' | '.join(cells)} |")


def first_line(command, pattern):
    environment = {**os.environ, "LC_ALL": "C"}
    done = subprocess.run(command, capture_output=True, text=True, env=environment)
    found = re.search(pattern, done.stdout)
    return found[1].strip() if found else "?"


def context(all_sides):
    """When, where and with what was measured."""
    versions = [f"{side.name} " + first_line(["dpkg-query", "-W", "-f", "${Version}",
                                              PACKAGES[side.name]], "^(?:[0-9]+:)?([0-9.]*[0-9])")
                for side in all_sides if side.name in PACKAGES]
    return "\n".join([
        f"Measured on {datetime.date.today()} on an " +
        first_line(["lscpu"], "Model name:(.*)") + f" ({platform.machine()}, one core), " +
        first_line(["c++", "--version"], "(.*)") + ", " +
        first_line(["cat", "/etc/os-release"], 'PRETTY_NAME="(.*)"') + ".",
        "Peers: " + ", ".join(versions) + ".", ""])


def compare(chosen, all_sides, check, update):
    os.sched_setaffinity(0, {max(os.sched_getaffinity(0))})
    table = Table()
    lines = [context(all_sides),
             "| | workload | unit | kobase | peers | to the best | to the floor | goals |",
             "| --- | --- | --- | --- | --- | --- | --- | --- |"]
    print(*lines, sep="\n")
    for number, workload in enumerate(chosen, 1):
        progress(f"{number}/{len(chosen)} {workload.name}")
        table.rows[workload.name] = measured(workload, all_sides, ROUNDS,
                                             ["--benchmark_min_time=0.2"])
        lines.append(table.line(workload))
        print(lines[-1], flush=True)
    if update:
        page.update("measured", "\n".join(lines) + "\n")
    missed = [f"{workload.name}: {figure(reached, 3)}, goal {words}" for workload in chosen
              for words, reached, good in table.judged(workload) if not good]
    if check and missed:
        fail("above the goal, or nan where the reference was not measured:\n" + "\n".join(missed))


def smoke(chosen, all_sides):
    for workload in chosen:
        measured(workload, all_sides, 1, SMALLEST)


def count_instructions(workload, ours):
    """Of one item; what the first iteration takes more than a later one drops out."""
    options = ["--divide=20"] if workload.name[0] in "XP" else []
    once, thrice = (ours.instructions(workload.name, options, n) for n in (1, 3))
    return round((thrice - once) / 2)


def instructions(chosen, ours, update):
    path = HERE / "instructions.tsv"
    known = dict(line.split("\t") for line in path.read_text().splitlines())
    risen = []
    print("| | instructions | checked in | ratio |\n| --- | --- | --- | --- |")
    for workload in chosen:
        if workload.unit == "bytes":
            continue
        count = count_instructions(workload, ours)
        before = int(known.get(workload.name, 0))
        ratio = f"{count / before:.2f}" if before else ""
        print(f"| {workload.name} | {count} | {before or ''} | {ratio} |", flush=True)
        if before and count > before * RISE:
            risen.append(f"{workload.name}: {before} -> {count}")
        known[workload.name] = str(count)
    if update:
        path.write_text("".join(f"{name}\t{count}\n" for name, count in known.items()))
    elif risen:
        fail("more instructions than the checked-in ones:\n" + "\n".join(risen))


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench", description=__doc__)
    parser.add_argument("--programs", type=Path, required=True, help="folder of the programs")
    mode = parser.add_mutually_exclusive_group()
    mode.add_argument("--check", action="store_true",
                      help="exit with 1 when a workload is above its goal")
    mode.add_argument("--instructions", action="store_true",
                      help="count the library's instructions and compare with those checked in")
    mode.add_argument("--smoke", action="store_true",
                      help="run everything once, as small as can be, and compare check numbers")
    parser.add_argument("--update", action="store_true",
                        help="write the table into docs/performance.md, with its charts, or with --instructions "
                        "the counts into bench/instructions.tsv")
    parser.add_argument("workload", nargs="*")
    given = parser.parse_args()
    if given.update and given.workload and not given.instructions:
        parser.error("--update wants all workloads")
    chosen, all_sides = workloads(given.workload), sides(given.programs)
    if given.instructions:
        instructions(chosen, all_sides[0], given.update)
    elif given.smoke:
        smoke(chosen, all_sides)
    else:
        compare(chosen, all_sides, given.check, given.update)


if __name__ == "__main__":
    main()
