#!/usr/bin/env python3
"""Reports the results of benchmarks/bench.sh: bench_report.py table|data FOLDER-WITH-JSON

table: each result beside its floor, in Markdown.
data:  the medians for plotting, one file for each row: the log length, then a column for each of COLUMNS.
"""

import json
import statistics
import sys
from collections import defaultdict
from pathlib import Path

# The rows of the table, and the most that each may cost, in multiples of its floor.
ROWS = {
    "render_newest": ("`render`, newest lines in view", 1.10),
    "render_oldest": ("`render`, scrolled to the oldest line", 1.10),
    "one_line": ("`refresh` and `render`, one line written since", 1.10),
    "one_line_copy": ("`snapshot` and `render`, one line written since", None),
    "first_frame": ("first frame of a fresh renderer", 1.2),
    "first_frame_oldest": ("the same, scrolled to the oldest line", None),
    "jump": ("from the newest line to the oldest, which was never shown", None),
    "kit_unchanged": ("kit's view, nothing changed; floor: `render`", 0.55),
    "kit_one_line": ("kit's view, one line written since; floor: `refresh` and `render`", 1.00),
    "kit_first_frame": ("kit's view, first frame; floor: `snapshot` and `render`", None),
    "kit_long_line": ("kit's view, one line of so many code points; floor: an empty log", 1.50),
    "kit_long_line_key": ("the same after a key", 1.50),
    "typing": ("a key until the pixels changed, in a widget; floor: a `QLineEdit`", 1.00),
    "opengl": ("OpenGL in software, a frame with the console open; floor: closed", None),
    "snapshot": ("`snapshot` by value", 1.05),
    "write": ("`write` of code points", 1.3),
    "write_utf8": ("`write` of UTF-8", 1.2),
    "write_redirected": ("`write` while redirected", 1.5),
    "write_threads": ("`write` from eight threads at once; floor: as many lines from one", 1.0),
    "write_painted": ("longest wait of a `write` while the kit paints; floor: while nothing does", None),
    "execute": ("`execute` of five words among 1,000 commands", 1.15),
    "typed_command": ("a line for a command made of a function, beside one written by hand", 1.5),
    "serve_write": ("`write` in a served console, nobody attached", 1.05),
    "serve_frame": ("a frame while clients run 100 lines a second each", 1.05),
    "run_file": ("`runFile` of 100,000 lines", 1.05),
    "key": ("a key that types", None),
    "first_tab": ("a Tab that asks for 1,000 candidates, an erasure and a key", None),
    "next_tab": ("a Tab to the next of 1,000 candidates", None),
    "up": ("an Up", None),
}
# Rows whose times are those of a clock, as a thread that waits takes no processor time.
CLOCK_TIMES = ("write_threads", "write_painted")
MEMORY = {
    "floor": "a vector of the same entries",
    "console": "console",
    "snapshot": "`snapshot`",
    "refreshed": "snapshot that was refreshed",
    "first_frame": "renderer after a frame",
    "every_line": "renderer that has shown every line",
    "kit_open": "open kit, its picture included",
    "kit_closed": "kit after closing",
    "kit_scrolled": "kit after scrolling through 100,000 lines, or all",
    "mirror": "the log's mirror in a file",
}
IDLE = {
    "closed": "closed",
    "open": "open, with a cursor that blinks three times a second",
    "steady": "open, with a steady cursor",
}
OTHERS = {"textedit": "`QPlainTextEdit`", "tcl": "Tcl", "lua": "Lua"}
FEWEST_REPETITIONS = 5
COLUMNS = ("floor", "console", "textedit")
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


class Results:
    """Times in nanoseconds, and bytes per line, by row, contestant and log length."""

    def __init__(self, folder):
        self.times = defaultdict(list)
        self.bytes = {}
        self.wakeups = {}
        for file in sorted(folder.glob("*.json")):
            for run in json.loads(file.read_text())["benchmarks"]:
                if run["run_type"] == "iteration":
                    self._add(run)

    def _add(self, run):
        row, who, *length = [part for part in run["name"].split("/") if ":" not in part and part not in ("process_time", "manual_time")]
        key = (row, who, tuple(int(part) for part in length))
        if run.get("error_occurred"):
            sys.exit(f"error: {run['name']}: {run['error_message']}")
        time = run["real_time" if row in CLOCK_TIMES else "cpu_time"]
        self.times[key].append(time * NANOSECONDS[run["time_unit"]])
        if "bytes_per_line" in run:
            self.bytes[key] = run["bytes_per_line"]
        if "wakeups_per_s" in run:
            self.wakeups[who] = run["wakeups_per_s"]

    def median(self, *key):
        return statistics.median(self.times[key]) if key in self.times else None

    def noise(self, *key):
        """Half the distance between the quartiles, as a share of the median."""
        times = self.times[key]
        if len(times) < 4:
            return 0.0
        low, middle, high = statistics.quantiles(times, n=4)
        return (high - low) / 2 / middle

    def amount_of(self, who, length):
        key = ("memory", who, length)
        return amount(self.bytes[key]) if key in self.bytes else ""

    def lengths(self, row):
        return sorted({key[2] for key in self.times if key[0] == row})


def duration(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def amount(number):
    return f"{number:,.0f}" if number >= 10 else f"{number:.1f}"


def length_name(length):
    return " / ".join(f"{part:,}" for part in length)


def against(results, row, who, length):
    """The contestant's time as a multiple of the floor, or the time itself if there is no floor."""
    floor = results.median(row, "floor", length)
    time = results.median(row, who, length)
    if time is None:
        return None
    return f"{time / floor:.2f}" if floor else duration(time)


def print_times(results):
    print("| | lines | floor | console | ratio | aim | noise | instead |\n|---|--:|--:|--:|--:|--:|--:|---|")
    for row, (title, aim) in ROWS.items():
        for length in results.lengths(row):
            floor = results.median(row, "floor", length)
            noise = max(results.noise(row, who, length) for who in ("floor", "console") if (row, who, length) in results.times)
            others = [f"{name} {against(results, row, who, length)}" for who, name in OTHERS.items()
                      if results.median(row, who, length)]
            cells = [title, length_name(length), duration(floor) if floor else "",
                     duration(results.median(row, "console", length)),
                     against(results, row, "console", length) if floor else "",
                     f"{aim:.2f}" if aim else "", f"{noise:.0%}", ", ".join(others)]
            print("| " + " | ".join(cells) + " |")
            title = ""


def print_memory(results):
    lengths = results.lengths("memory")
    print("\n| bytes a line | " + " | ".join(length_name(length) for length in lengths) + " |")
    print("|---|" + "--:|" * len(lengths))
    for who, title in MEMORY.items():
        print(f"| {title} | " + " | ".join(results.amount_of(who, length) for length in lengths) + " |")


def print_idle(results):
    print("\n| a window in which nothing happens | wake-ups a second |\n|---|--:|")
    for who, title in IDLE.items():
        if who in results.wakeups:
            print(f"| {title} | {results.wakeups[who]:.1f} |")


def write_data(results, folder):
    if min(len(times) for (row, *_), times in results.times.items() if row not in ("memory", "idle")) < FEWEST_REPETITIONS:
        sys.exit("error: too few repetitions to draw: run benchmarks/bench.sh without arguments")
    for row in ROWS:
        lines = []
        for length in results.lengths(row):
            times = [results.median(row, who, length) for who in COLUMNS]
            lines.append(" ".join([str(length[0])] + [str(time) if time else "NaN" for time in times]))
        (folder / f"{row}.dat").write_text("\n".join(lines) + "\n")
    lines = [" ".join([str(length[0])] + [str(results.bytes.get(("memory", who, length), "NaN")) for who in MEMORY])
             for length in results.lengths("memory")]
    (folder / "memory.dat").write_text("\n".join(lines) + "\n")


def main():
    if len(sys.argv) != 3 or sys.argv[1] not in ("table", "data"):
        sys.exit(__doc__)
    folder = Path(sys.argv[2])
    results = Results(folder)
    if sys.argv[1] == "data":
        write_data(results, folder)
        return
    print_times(results)
    print_memory(results)
    print_idle(results)


if __name__ == "__main__":
    main()
