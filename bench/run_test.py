"""Tests of the runner and of the charts, with made-up figures."""

import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

import page

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

    def test_writes_numbers_without_powers_of_ten(self):
        self.side("kobase", 3799640, 7)
        self.side("muparser", 170, 7)
        done = self.run_it()
        self.assertIn("| 380000 (380000) | muparser 17 (17) | 22400 |", done.stdout)

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

    def test_fails_a_check_without_the_reference(self):
        self.side("kobase", 150, 7)
        done = self.run_it("--check")
        self.assertEqual(done.returncode, 1)
        self.assertIn("E1: nan, goal 1.5 x muparser", done.stderr)

    def test_fails_without_the_side_of_the_library(self):
        self.side("muparser", 100, 7)
        done = self.run_it()
        self.assertEqual(done.returncode, 1)
        self.assertIn("no bench_kobase in", done.stderr)


TIMES = """| | workload | unit | kobase | peers | to the best | to the floor | goals |
| --- | --- | --- | --- | --- | --- | --- | --- |
| E1 | evaluate `a < b` | ns | 20 (21) | muparser 40 (41), lua 80 (80) | 0.5 | | |
| E7 | copy an evaluator | ns | 30 (30) | | | | |
| X1 | load 20 MB | MB/s | 50 (49) | expat 400 (390), libxml2 100 (9), pugixml 200 (9) | 4 | 8 | |
| X4 | memory | bytes | 300 (300) | pugixml 200 (200), libxml2 600 (600) | 1.5 | | |
| X4p | memory at its peak | bytes | 500 (500) | pugixml 1e+03 (1e+03) | 0.5 | | |
"""

GROWTH = """| milliseconds | 10^3 | 10^4 | 10^5 | 10^6 | growth / n log n |
| --- | --- | --- | --- | --- | --- |
| terms_parse | 0.1 | 1 | 10 | 100 | 0.75 |
| elements_process | 1 | 10 | 100 | 1e+03 | 0.80 |
"""

SVG = "{http://www.w3.org/2000/svg}"


class Charts(unittest.TestCase):
    def drawn(self, tables):
        return {name: ElementTree.fromstring(svg) for name, svg in page.charts_of(tables).items()}

    def texts(self, picture):
        return [text.text for text in picture.iter(SVG + "text")]

    def bars(self, picture):
        """For each bar its label, where it begins and how wide it is."""
        return [(bar.find(SVG + "title").text, float(bar.get("x")), float(bar.get("width")))
                for bar in picture.iter(SVG + "rect") if bar.find(SVG + "title") is not None]

    def test_put_better_ratios_left_of_1_and_worse_right_of_it(self):
        ratios = self.bars(self.drawn(TIMES)["performance-ratios.svg"])
        self.assertEqual([label for label, _, _ in ratios],
                         ["evaluate `a < b`: 0.5 x muparser", "load 20 MB: 4 x pugixml",
                          "memory: 1.5 x pugixml", "memory at its peak: 0.5 x pugixml"])
        (_, left, octave), (_, one, two_octaves) = ratios[:2]
        self.assertAlmostEqual(left + octave, one)
        self.assertAlmostEqual(two_octaves, 2 * octave, delta=0.2)

    def test_label_a_wide_scale_at_some_of_its_octaves(self):
        wide = TIMES.replace("| 4 |", "| 4000 |")
        places = [float(text.get("x")) for text in
                  self.drawn(wide)["performance-ratios.svg"].iter(SVG + "text")
                  if text.get("text-anchor") == "middle"]
        self.assertGreater(len(places), 3)
        for one, next_one in zip(places, places[1:]):
            self.assertGreaterEqual(next_one - one, 36)

    def test_leave_out_a_workload_without_a_peer(self):
        texts = self.texts(self.drawn(TIMES)["performance-ratios.svg"])
        self.assertIn("E1", texts)
        self.assertNotIn("E7", texts)

    def test_show_the_memory_of_each_library_to_scale(self):
        memory = self.bars(self.drawn(TIMES)["performance-memory.svg"])
        self.assertEqual([label for label, _, _ in memory],
                         ["pugixml", "pugixml", "kobase", "kobase", "libxml2"])
        self.assertEqual([width for _, _, width in memory], [112, 560, 168, 280, 336])

    def test_show_growth_as_a_line_for_each_operation(self):
        lines = list(self.drawn(GROWTH)["performance-growth.svg"].iter(SVG + "polyline"))
        self.assertEqual([line.find(SVG + "title").text for line in lines],
                         ["terms_parse", "elements_process", "n log n", "n squared"])
        ends = [line.get("points").split()[-1] for line in lines[:2]]
        self.assertEqual(ends, ["640,110.0", "640,50.0"])

    def test_are_drawn_of_what_was_measured_only(self):
        self.assertEqual(list(self.drawn(GROWTH)), ["performance-growth.svg"])
        self.assertEqual(self.drawn("No table."), {})

    def test_replace_one_section_of_the_page_and_its_pictures(self):
        with tempfile.TemporaryDirectory() as name:
            top = Path(name)
            (top / "docs").mkdir()
            written = top / page.PAGE
            written.write_text("A\n<!-- measured -->\nold\n<!-- end of measured -->\nB\n"
                               "<!-- growth -->\nkept\n<!-- end of growth -->\n")
            (top / page.README).write_text("C\n<!-- figures -->\n<!-- end of figures -->\nD\n")
            page.update("measured", TIMES, top)
            text = written.read_text()
            self.assertIn(TIMES + "\n<!-- end of measured -->\nB\n", text)
            self.assertIn("<!-- measured -->\n\n![", text)
            self.assertIn("<!-- growth -->\nkept\n", text)
            self.assertNotIn("old", text)
            self.assertEqual(sorted(path.name for path in written.parent.glob("*.svg")),
                             ["performance-memory.svg", "performance-ratios.svg"])
            self.assertIn("| load 20 MB | 50 MB/s | 200 MB/s, pugixml |\n"
                          "| memory | 300 bytes | 200 bytes, pugixml |\n\n"
                          "<!-- end of figures -->\nD\n",
                          (top / page.README).read_text())

    def test_of_the_page_are_those_of_its_tables(self):
        text = (page.TOP / page.PAGE).read_text()
        for name, picture in page.charts_of(text).items():
            self.assertEqual((page.TOP / page.PAGE).with_name(name).read_text(), picture, name)
        figures = page.framed(page.figures_of(text))
        self.assertIn(f"<!-- figures -->\n{figures}<!-- end of figures -->",
                      (page.TOP / page.README).read_text())


if __name__ == "__main__":
    unittest.main()
