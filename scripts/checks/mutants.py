#!/usr/bin/env python3
"""Changes one thing at a time in sources, builds, and runs the tests: mutants.py SOURCES RESULTS SECONDS PLACE...

SOURCES is the folder whose files are mutated. Each PLACE holds a copy of the project in `tree`, where the changes are made,
and its configured build in `build`. All places work at the same time. RESULTS gets a line for each mutant, from which the
next run continues. The run ends after SECONDS, or when all mutants are tried, and lists those that no test noticed.
"""

import re
import subprocess
import sys
import threading
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

# Patterns and their replacements. Each match of each pattern is one mutant.
REPLACEMENTS = [
    (r"==", "!="), (r"!=", "=="), (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r"&&", "||"), (r"\|\|", "&&"), (r" \+ ", " - "), (r" - ", " + "), (r"\+= ", "-= "), (r"-= ", "+= "),
    (r"\+\+(?=\w)", "--"), (r"--(?=\w)", "++"), (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
    (r"!(?=[\w(])", ""), (r"std::min\b", "std::max"), (r"std::max\b", "std::min"),
    (r"(?<![\w.'])\d+(?![\w.'])", lambda match: str(int(match.group()) + 1)),
]
QUOTED = re.compile(r'U?"(?:\\.|[^"\\])*"|U?\'(?:\\.|[^\'\\])*\'|//.*')
STATEMENT = re.compile(r"^(\s{4,})(?!return\b|case\b|default\b|break\b|using\b|static\b|const\b|constexpr\b|[:}#]).*;\s*(//.*)?$")
TEST_SECONDS = 60  # a mutant may loop forever
SLOW_TESTS = "^(console_(threads|long_line|renderer)|properties|sizes)$"  # run last


def outside_of_quotes(line):
    """`line` with strings and comments replaced by blanks."""
    return QUOTED.sub(lambda match: " " * len(match.group()), line)


def replacements(line):
    """Yields `line` with one replacement made, for each possible replacement."""
    code = outside_of_quotes(line)
    if code.lstrip().startswith(("#", "template", "namespace", "static_assert")):
        return
    for pattern, new in REPLACEMENTS:
        for match in re.finditer(pattern, code):
            text = new(match) if callable(new) else new
            yield line[:match.start()] + text + line[match.end():]


def begins_statement(lines, index):
    before = next((line for line in reversed(lines[:index]) if line.strip()), "")
    return outside_of_quotes(before).rstrip().endswith((";", "{", "}"))


def is_statement(lines, index):
    return bool(STATEMENT.match(lines[index])) and "= delete" not in lines[index] and begins_statement(lines, index)


def indent(line):
    return len(line) - len(line.lstrip())


def mutants(lines):
    """Yields a name and the lines of each mutant."""
    for i, line in enumerate(lines):
        for changed in replacements(line):
            yield f"{i + 1}: {line.strip()} => {changed.strip()}", lines[:i] + [changed] + lines[i + 1:]
        if not is_statement(lines, i):
            continue
        yield f"{i + 1}: {line.strip()} => (deleted)", lines[:i] + [""] + lines[i + 1:]
        if i + 1 < len(lines) and is_statement(lines, i + 1) and indent(line) == indent(lines[i + 1]):
            yield f"{i + 1}: {line.strip()} => (after the next)", lines[:i] + [lines[i + 1], line] + lines[i + 2:]


class Interrupted(Exception):
    """A signal ended a build or a test, so there is no verdict."""


def succeeds(*command):
    code = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode
    if code < 0:
        raise Interrupted(command[0])
    return code == 0


def builds(build):
    return succeeds("cmake", "--build", build, "--parallel", "1")


def passes(build):
    ctest = ("ctest", "--test-dir", build, "--stop-on-failure", "--timeout", str(TEST_SECONDS))
    return succeeds(*ctest, "-E", SLOW_TESTS) and succeeds(*ctest, "-R", SLOW_TESTS)


def verdict(build):
    if not builds(build):
        return "does not compile"
    return "SURVIVED" if passes(build) else "killed"


def pending(sources, done):
    """Yields the file name, key and text of each mutant that was not tried yet."""
    texts = {file.name: file.read_text() for file in sorted(sources.glob("*.cpp"))}
    for file, text in texts.items():
        for name, changed in mutants(text.split("\n")):
            if f"{file}:{name}" not in done:
                yield file, f"{file}:{name}", "\n".join(changed)


class Worker:
    """Tries mutants in its own tree and build."""

    def __init__(self, place):
        self.sources = place / "tree" / "src"
        self.build = str(place / "build")

    def is_ready(self):
        return builds(self.build) and passes(self.build)

    def verdict(self, name, text):
        file = self.sources / name
        original = file.read_text()
        try:
            file.write_text(text)
            return verdict(self.build)
        finally:
            file.write_text(original)


def run(worker, todo, done, results, deadline, lock):
    """Tries mutants until none is left or the time is over."""
    while time.monotonic() < deadline:
        with lock:
            name, key, text = next(todo, (None, None, None))
        if key is None:
            return
        found = worker.verdict(name, text)
        with lock, results.open("a") as stream:
            done[key] = found
            stream.write(f"{found}\t{key}\n")


def report(done):
    counts = {word: list(done.values()).count(word) for word in ("killed", "SURVIVED", "does not compile")}
    print(", ".join(f"{count} {word}" for word, count in counts.items()))
    for key, word in done.items():
        if word == "SURVIVED":
            print(key)


def main():
    if len(sys.argv) < 5:
        sys.exit(__doc__)
    sources, results, seconds = Path(sys.argv[1]), Path(sys.argv[2]), float(sys.argv[3])
    workers = [Worker(Path(place)) for place in sys.argv[4:]]
    with ThreadPoolExecutor() as threads:
        if not all(list(threads.map(Worker.is_ready, workers))):
            sys.exit("error: the tests fail before anything is changed")
    done = {}
    if results.exists():
        done = {key: word for word, key in (line.split("\t", 1) for line in results.read_text().splitlines())}
    todo = pending(sources, dict(done))
    lock = threading.Lock()
    deadline = time.monotonic() + seconds
    with ThreadPoolExecutor() as threads:
        list(threads.map(lambda worker: run(worker, todo, done, results, deadline, lock), workers))
    report(done)
    print("the time is over; the next run continues from here" if next(todo, None) else "all mutants were tried")


if __name__ == "__main__":
    main()
