#!/usr/bin/env python3
"""scripts/bench_tables.py RUNS NAME: what scripts/bench.sh measured, as ratios.
scripts/bench_tables.py --document FILE: renews the tables of a Markdown file.

RUNS has a line a repetition, operation,who,size,ns_per_element, below lines "# key: value" about the run. Written beside it: NAME.csv, the least time of
each row and by how much the median of its repetitions exceeds it, and NAME-ratios.csv, which is also printed: the row `tevs` of each operation and size
beside the fastest other's, beside `limit` (its bytes loaded and stored and nothing done) and beside `after256` (once another library has run 256-bit code).

A table in the document stands between the lines

    <!-- bench NAME... | OPERATIONS [| KEY=VALUE...] -->
    <!-- /bench -->

NAME: bench-out/NAME.csv, one table each. OPERATIONS: a regular expression over the whole name. A row is an operation, a column a size, a cell the fastest
other's time over ours, the spread in percent and our time. KEY: `sizes`, only these, with commas between; `rows=size` turns rows and columns; `rows=each`: a
row for each operation and size, a column for each other; `strip`, a regular expression of what the names of operations lose.
"""
import csv
import math
import re
import statistics
import sys
from pathlib import Path

OWN, LIMIT, AFTER = "tevs", "limit", "after256"
BUSY = 10   # percent: what the median repetition of a row usually takes more than the least on a machine that has nothing else to do is 1 to 5


class Run:
    """The rows of one run: operation -> size -> who -> (least time in ns, spread in percent)."""

    def __init__(self, path):
        self.about, self.rows = {}, {}
        with open(path, encoding="utf-8", newline="") as file:
            for line in csv.reader(file):
                if line[0].startswith("# "):
                    key, _, value = ",".join(line)[2:].partition(": ")
                    self.about[key] = value
                elif line[0] != "operation":
                    operation, who, size, ns, spread = line
                    self.rows.setdefault(operation, {}).setdefault(int(size), {})[who] = float(ns), float(spread)

    def cell(self, operation, size):
        """A row `tevs` beside the others, or None."""
        whos = self.rows.get(operation, {}).get(size, {})
        return Cell(whos) if OWN in whos else None


class Cell:
    """ns, spread; others: who -> its time over ours, the fastest first; of_limit and after256, where measured."""

    def __init__(self, whos):
        self.ns, self.spread = whos[OWN]
        others = sorted((who for who in whos if who not in (OWN, LIMIT, AFTER)), key=lambda who: whos[who][0])
        self.others = {who: whos[who][0] / self.ns for who in others}
        self.spread = max([self.spread] + [whos[who][1] for who in others[:1]])
        self.best = others[0] if others else ""
        self.of_limit = whos[LIMIT][0] / self.ns if LIMIT in whos else None
        self.after256 = whos[AFTER][0] / self.ns if AFTER in whos else None


def natural(name):
    """Sixteen after two."""
    return [(0, int(part), "") if part.isdigit() else (1, 0, part) for part in re.split(r"(\d+)", name) if part]


def evaluate(runs, name):
    """From repetitions to least times, spreads and ratios."""
    times, about = {}, []
    for line in Path(runs).read_text(encoding="utf-8").splitlines():
        if line.startswith("#"):
            about.append(line)
        else:
            operation, who, size, ns = line.split(",")
            times.setdefault((operation, who, size), []).append(float(ns))
    if not any(who == OWN for _, who, _ in times):
        sys.exit("no row matches")
    out = Path(runs).parent
    with open(out / f"{name}.csv", "w", encoding="utf-8") as file:
        print(*about, "operation,who,size,ns_per_element,spread_percent", sep="\n", file=file)
        for key, values in sorted(times.items(), key=lambda row: (natural(row[0][0]), int(row[0][2]), row[0][1])):
            least = min(values)
            print(*key, f"{least:.4g}", f"{100 * (statistics.median(values) / least - 1):.0f}", sep=",", file=file)
    run = Run(out / f"{name}.csv")
    heading = ["operation", "size", "ns_per_element", "best_other", "ratio", "spread", "of_limit", "after256"]
    lines = []
    for operation, sizes in run.rows.items():
        for size in sizes:
            cell = run.cell(operation, size)
            if cell and cell.best:
                lines.append([operation, size, f"{cell.ns:.4g}", cell.best, f"{cell.others[cell.best]:.2f}", f"{cell.spread:.0f}%",
                              f"{cell.of_limit:.0%}" if cell.of_limit else "", f"{cell.after256:.2f}" if cell.after256 else ""])
    with open(out / f"{name}-ratios.csv", "w", encoding="utf-8", newline="") as file:
        csv.writer(file, lineterminator="\n").writerows([heading] + lines)
    for line in [heading] + lines:
        print("%-32s %9s %15s  %-12s %6s %7s %9s %9s" % tuple(line))
    if lines:
        mean = math.exp(statistics.fmean(math.log(float(line[4])) for line in lines))
        ahead = sum(float(line[4]) >= 1 for line in lines)
        spread = statistics.median(float(line[5][:-1]) for line in lines)
        print(f"{name}: ahead in {ahead} of {len(lines)} rows, geometric mean {mean:.2f}, median spread {spread:.0f} %")
        if spread > BUSY:
            print(f"This machine is busy: rows take {spread:.0f} % more than their least time, and ratios are no better than that. Run it again on a quiet one.")


def number(value):
    return f"{value:.3g}" if value < 100 else f"{value:.0f}"


def ratio(value):
    return f"{value:.2f}" if value < 10 else f"{value:.0f}"


def text(cell):
    """1.21 ±3 (0.083 ns, 97 %)"""
    if cell is None:
        return ""
    inside = number(cell.ns) + (f", {100 * cell.of_limit:.0f} %" if cell.of_limit else "")
    return (f"{ratio(cell.others[cell.best])} " if cell.best else "") + f"±{cell.spread:.0f} ({inside})"


def table(run, operations, options):
    """One table in Markdown."""
    names = [name for name in run.rows if re.fullmatch(operations, name)]
    wanted = set(map(int, options["sizes"].split(","))) if "sizes" in options else None
    cells = {(name, size): cell for name in names for size in run.rows[name] if wanted is None or size in wanted for cell in [run.cell(name, size)] if cell}
    if not cells:
        sys.exit(f"no operation matches {operations}")
    names = list(dict.fromkeys(name for name, _ in cells))
    sizes = sorted({size for _, size in cells})
    title = {name: f"`{re.sub(options.get('strip', '$^'), '', name)}`" for name in names}
    about = f"{run.about['ABI']}, {run.about['level']}"
    if options.get("rows") == "each":
        others = list(dict.fromkeys(who for cell in cells.values() for who in cell.others))
        lines = [[about, "elements", "ns", "±"] + others]
        lines += [[title[name], str(size), number(cell.ns), f"{cell.spread:.0f}"] + [ratio(cell.others[who]) if who in cell.others else "" for who in others]
                  for (name, size), cell in cells.items()]
    elif options.get("rows") == "size":
        lines = [[about] + list(title.values())]
        lines += [[str(size)] + [text(cells.get((name, size))) for name in names] for size in sizes]
    else:
        lines = [[about, "beside"] + list(map(str, sizes))]
        for name in names:
            row = [cells.get((name, size)) for size in sizes]
            lines.append([title[name], ", ".join(dict.fromkeys(cell.best for cell in row if cell and cell.best))] + list(map(text, row)))
    lines.insert(1, ["---"] * len(lines[0]))
    return "".join("| " + " | ".join(line) + " |\n" for line in lines)


def document(path):
    """Every table anew whose runs are there."""
    begin = re.compile(r"<!-- bench ([^|]+?) \| (.+?)(?: \| ([^|]+?))? -->\n")
    page, at, out, runs = Path(path).read_text(encoding="utf-8"), 0, [], {}
    for match in begin.finditer(page):
        end = page.index("<!-- /bench -->", match.end())
        out.append(page[at:match.end()])
        options = dict(item.split("=", 1) for item in (match[3] or "").split())
        tables = []
        for name in match[1].split():
            file = Path("bench-out") / f"{name}.csv"
            if not file.exists():
                sys.exit(f"{file} is not there: scripts/bench.sh writes it")
            tables.append(table(runs.setdefault(name, Run(file)), match[2], options))
        out.append("\n" + "\n".join(tables) + "\n")
        at = end
    Path(path).write_text("".join(out) + page[at:], encoding="utf-8")


if len(sys.argv) == 3 and sys.argv[1] == "--document":
    document(sys.argv[2])
elif len(sys.argv) == 3:
    evaluate(sys.argv[1], sys.argv[2])
else:
    sys.exit(__doc__)
