"""Draws the charts of docs/performance.md from the tables of that page: the same table gives the
same bytes."""

import html
import math
import re

FONT = "DejaVu Sans, Verdana, sans-serif"
INK, PALE, LINE = "#263238", "#78909c", "#cfd8dc"
FASTER, SLOWER, THIRD = "#00897b", "#e08a00", "#8e24aa"
GROUPS = [("E", "Expressions"), ("X", "Documents"), ("P", "The preprocessor")]


class Drawing:
    """An SVG picture, from top to bottom."""

    def __init__(self, title, description, width=860):
        self.width, self.height = width, 24
        self.head = (f"<title>{html.escape(title)}</title>\n"
                     f"  <desc>{html.escape(description)}</desc>")
        self.parts = []

    def down(self, height):
        self.height += height

    def line(self, x1, y1, x2, y2, style):
        self.parts.append(f'<line x1="{x1:g}" y1="{y1:g}" x2="{x2:g}" y2="{y2:g}" {style}/>')

    def bar(self, x1, x2, color, label=""):
        """From x1 to x2, in the row at the present height."""
        left, width = min(x1, x2), max(abs(x2 - x1), 1)
        self.parts.append(f'<rect x="{left:g}" y="{self.height - 11:g}" width="{width:g}" '
                          f'height="13" rx="2" fill="{color}"><title>{html.escape(label)}'
                          "</title></rect>")

    def text(self, x, words, style="", y=None):
        self.parts.append(f'<text x="{x:g}" y="{self.height if y is None else y:g}" {style}>'
                          f"{html.escape(words)}</text>")

    def svg(self):
        body = "\n  ".join(self.parts)
        return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {self.width} {self.height}"'
                f' width="{self.width}" height="{self.height}"\n'
                f'     font-family="{FONT}" font-size="12" fill="{INK}">\n  {self.head}\n'
                f'  <rect width="{self.width}" height="{self.height}" rx="8" fill="#fafafa"/>\n'
                f"  {body}\n</svg>\n")


def rows_of(text, columns):
    """The rows of the table in a text that has so many columns, without its head."""
    rows = [[cell.strip() for cell in line.strip().strip("|").split(" |")]
            for line in text.splitlines() if line.startswith("| ")]
    return [row for row in rows if len(row) == columns and row[0] and not row[0].startswith("---")]


def figure(value, digits):
    """A number with so many digits that count, written without a power of ten."""
    return f"{float(f'{value:.{digits}g}'):.12g}"


def amounts(cell):
    """Of "lua 12.5 (13), muparser 7 (7.1)": the name and the first number of each."""
    return [(name, float(number)) for name, number in re.findall(r"([\w.]+) ([\d.e+-]+) \(", cell)]


def shortened(words, most):
    words = words.replace("`", "")
    return words if len(words) <= most else words[:most - 1].rstrip() + "…"


class Ratio:
    """A workload with a peer."""

    def __init__(self, row, floors):
        self.name, self.what, unit, _, peers, ratio = row[:6]
        self.ratio = float(ratio)
        choose = max if unit == "MB/s" else min
        known = [peer for peer in amounts(peers) if peer[0] != floors.get(self.name)]
        self.peer = choose(known, key=lambda peer: peer[1])[0]


def octaves(values):
    """The powers of two around some values, and 1."""
    low = min(-1, math.floor(math.log2(min(values))))
    high = max(1, math.ceil(math.log2(max(values))))
    return range(low, high + 1)


def ratios_svg(text, floors):
    """The ratios to the best peers as bars on a scale of octaves; None where there are none."""
    ratios = [Ratio(row, floors) for row in rows_of(text, 8) if re.fullmatch(r"[\d.e+-]+", row[5])]
    if not ratios:
        return None
    picture = Drawing("kobase and the best peer of each workload",
                      "A bar for each workload: the time, or memory, of kobase in units of that of "
                      "the best peer. Bars to the left of the line at 1 are better than the peer.")
    powers = octaves([ratio.ratio for ratio in ratios])
    left, right = 380, 690

    def place(value):
        share = (math.log2(value) - powers[0]) / (powers[-1] - powers[0])
        return round(left + share * (right - left), 1)

    picture.text(20, "Time or memory in units of the best peer's", 'font-weight="bold"')
    picture.text(place(1) - 8, "better", f'text-anchor="end" fill="{FASTER}"')
    picture.text(place(1) + 8, "worse", f'fill="{SLOWER}"')
    grid = len(picture.parts)
    top = picture.height + 10
    for letter, heading in GROUPS:
        group = [ratio for ratio in ratios if ratio.name[0] == letter]
        if group:
            picture.down(28)
            picture.text(20, heading, 'font-weight="bold"')
        for ratio in group:
            ratio_row(picture, ratio, place)
    picture.down(10)
    lines = Drawing("", "")
    # A label is 36 wide.
    labels_every = math.ceil(36 * (powers[-1] - powers[0]) / (right - left))
    for power in powers:
        x = place(2.0 ** power)
        color = INK if power == 0 else LINE
        lines.line(x, top, x, picture.height, f'stroke="{color}"')
        if power % labels_every == 0:
            lines.text(x, f"{2 ** power}" if power >= 0 else f"1/{2 ** -power}",
                       f'font-size="11" fill="{PALE}" text-anchor="middle"', y=picture.height + 16)
    picture.parts[grid:grid] = lines.parts
    picture.down(30)
    return picture.svg()


def ratio_row(picture, ratio, place):
    picture.down(20)
    picture.text(20, ratio.name)
    picture.text(76, shortened(ratio.what, 46), f'font-size="11" fill="{PALE}"')
    color = FASTER if ratio.ratio <= 1 else SLOWER
    label = f"{ratio.what}: {figure(ratio.ratio, 3)} x {ratio.peer}"
    picture.bar(place(1), place(ratio.ratio), color, label)
    picture.text(710, figure(ratio.ratio, 3))
    picture.text(760, ratio.peer, f'font-size="11" fill="{PALE}"')


def memory_svg(text):
    """The bytes an element of each side; None where they were not measured."""
    rows = {row[0]: row for row in rows_of(text, 8) if row[0] in ("X4", "X4p")}
    if len(rows) < 2:
        return None
    used, peak = ({"kobase": float(rows[name][3].split()[0]), **dict(amounts(rows[name][4]))}
                  for name in ("X4", "X4p"))
    picture = Drawing("Memory of a loaded document",
                      "For each library two bars: the bytes an element that the tree takes, and "
                      "those that loading it takes at its peak.")
    scale = 560 / max([*used.values(), *peak.values()])
    picture.text(20, "Bytes an element", 'font-weight="bold"')
    picture.text(170, "in use", f'fill="{FASTER}"')
    picture.text(220, "at the peak of loading", f'fill="{PALE}"')
    picture.down(6)
    for side in sorted(used, key=used.get):
        for values, color in ((used, FASTER), (peak, "#b0bec5")):
            picture.down(22 if values is used else 15)
            if values is used:
                picture.text(20, side, 'font-weight="bold"' if side == "kobase" else "")
            if side in values:
                end = round(110 + values[side] * scale, 1)
                picture.bar(110, end, color, side)
                picture.text(end + 8, f"{values[side]:.0f}", f'font-size="11" fill="{PALE}"')
    picture.down(16)
    return picture.svg()


def growth_svg(text):
    """Milliseconds over sizes of the operations that were measured; None where there are none."""
    rows = [(row[0], [float(cell) for cell in row[1:5]]) for row in rows_of(text, 6)
            if re.fullmatch(r"[\d.e+-]+", row[1])]
    if not rows:
        return None
    picture = Drawing("How the time of an operation grows with its input",
                      "A line for each operation, from a thousand to a million items, on scales "
                      "of powers of ten. Beside them the slopes of n log n and of n squared.")
    times = [time for _, row in rows for time in row]
    decades = range(math.floor(math.log10(min(times))), math.ceil(math.log10(max(times))) + 1)
    left, right, top, bottom = 70, 640, 50, 50 + 60 * (len(decades) - 1)

    def point(power, time):
        share = (math.log10(time) - decades[0]) / (decades[-1] - decades[0])
        return f"{left + (power - 3) / 3 * (right - left):g},{bottom - share * (bottom - top):.1f}"

    picture.text(20, "Milliseconds over the size of the input", 'font-weight="bold"')
    growth_grid(picture, decades, (left, right, top, bottom))
    for name, row in rows:
        growth_line(picture, [point(3 + i, time) for i, time in enumerate(row)],
                    f'stroke="{color_of(name)}" stroke-opacity="0.65"', name)
    first = max(row[0] for _, row in rows)
    slopes = (("n log n", lambda n: n * math.log(n)), ("n squared", lambda n: n * n))
    for number, (name, of) in enumerate(slopes):
        ends = [(3, first), (6, first * of(1e6) / of(1e3))]
        if ends[1][1] > 10.0 ** decades[-1]:  # as far as the picture goes
            step = math.log10(of(1e6) / of(1e3)) / 3
            ends[1] = (3 + (decades[-1] - math.log10(first)) / step, 10.0 ** decades[-1])
        growth_line(picture, [point(*end) for end in ends],
                    f'stroke="{INK}" stroke-dasharray="{(6, 2)[number]} 4"', name)
    growth_legend(picture, slopes)
    picture.height = bottom + 46
    return picture.svg()


def color_of(operation):
    """By the part of the library; the references of the standard library are pale."""
    if operation.startswith("reference"):
        return PALE
    if operation.endswith("_process"):
        return THIRD
    documents = ("children", "attributes", "depth", "distinct", "steps", "filters")
    return FASTER if operation.startswith(documents) else SLOWER


def growth_line(picture, points, style, name):
    picture.parts.append(f'<polyline points="{" ".join(points)}" fill="none" stroke-width="1.5" '
                         f"{style}><title>{html.escape(name)}</title></polyline>")


def growth_grid(picture, decades, frame):
    left, right, top, bottom = frame
    small = f'font-size="11" fill="{PALE}"'
    for number, power in enumerate(decades):
        y = bottom - number * 60
        picture.line(left, y, right, y, f'stroke="{LINE}"')
        picture.text(left - 8, f"{10.0 ** power:g}", f'{small} text-anchor="end"', y=y + 4)
    for number, size in enumerate(("1,000", "10,000", "100,000", "1,000,000")):
        x = left + number * (right - left) / 3
        picture.line(x, top, x, bottom, f'stroke="{LINE}"')
        picture.text(x, size, f'{small} text-anchor="middle"', y=bottom + 18)


def growth_legend(picture, slopes):
    lines = [("expressions", f'stroke="{SLOWER}"'), ("documents", f'stroke="{FASTER}"'),
             ("the preprocessor", f'stroke="{THIRD}"'),
             ("the standard library's", f'stroke="{PALE}"')]
    lines += [(name, f'stroke="{INK}" stroke-dasharray="{(6, 2)[number]} 4"')
              for number, (name, _) in enumerate(slopes)]
    for number, (name, style) in enumerate(lines):
        y = 70 + 22 * number
        picture.line(660, y, 690, y, f'{style} stroke-width="2"')
        picture.text(698, name, 'font-size="11"', y=y + 4)


def draw(page, floors):
    """The charts that a page has the tables for: name of the file, content."""
    charts = {"performance-ratios.svg": ratios_svg(page, floors),
              "performance-memory.svg": memory_svg(page),
              "performance-growth.svg": growth_svg(page)}
    return {name: svg for name, svg in charts.items() if svg}
