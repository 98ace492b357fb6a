"""Tests of the runner, with sides that give made-up figures."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

RUNNER = Path(__file__).parent / "run.py"

SIDE = """#!/bin/sh
case "$*" in
*--list*) echo E1 ;;
*) echo '{"benchmarks": [{"value": 0, "items": 10, "cpu_time": %s, "check": %s}]}' ;;
esac
"""


class Runner(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def side(self, name, time, check):
        program = self.folder / f"bench_{name}"
        program.write_text(SIDE % (time, check))
        program.chmod(0o755)

    def run_it(self, *arguments):
        return subprocess.run([sys.executable, RUNNER, "--programs", self.folder, *arguments, "E1"],
                              capture_output=True, text=True)

    def test_prints_times_ratio_and_goal(self):
        self.side("kobase", 300, 7)
        self.side("muparser", 100, 7)
        self.side("lua", 50, 7)
        done = self.run_it()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout.splitlines()[-1].split("| ns |")[1],
                         " 30 (30) | lua 5 (5), muparser 10 (10) | 6 | |"
                         " 1.5 x muparser: 3 **missed** |")

    def test_fails_where_check_numbers_differ(self):
        self.side("kobase", 300, 7)
        self.side("muparser", 100, 7.5)
        for mode in ([], ["--smoke"]):
            done = self.run_it(*mode)
            self.assertEqual(done.returncode, 1)
            self.assertIn("E1: the check numbers differ: 7 of kobase, 7.5 of muparser",
                          done.stderr)

    def test_fails_above_a_goal_only_when_asked(self):
        self.side("muparser", 100, 7)
        self.side("kobase", 151, 7)
        done = self.run_it("--check")
        self.assertEqual(done.returncode, 1)
        self.assertIn("E1: 1.51, goal 1.5 x muparser", done.stderr)
        self.assertEqual(self.run_it().returncode, 0)
        self.side("kobase", 150, 7)
        self.assertEqual(self.run_it("--check").returncode, 0)

    def test_fails_without_the_side_of_the_library(self):
        self.side("muparser", 100, 7)
        done = self.run_it()
        self.assertEqual(done.returncode, 1)
        self.assertIn("no bench_kobase in", done.stderr)


if __name__ == "__main__":
    unittest.main()
