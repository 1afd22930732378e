#!/usr/bin/env python3
"""Changes one thing at a time in src/, builds, and runs the tests: mutants.py TREE BUILD RESULTS SECONDS

TREE is a copy of the sources that may be changed, BUILD its configured build. RESULTS gets a line for each mutant, so that
the next run goes on behind the last one. Ends after SECONDS, or when all are done, and lists what no test noticed.
"""

import re
import subprocess
import sys
import time
from pathlib import Path

# What is replaced, by what. Each is tried at each place.
REPLACEMENTS = [
    (r"==", "!="), (r"!=", "=="), (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r"&&", "||"), (r"\|\|", "&&"), (r" \+ ", " - "), (r" - ", " + "), (r"\+= ", "-= "), (r"-= ", "+= "),
    (r"\+\+(?=\w)", "--"), (r"--(?=\w)", "++"), (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
    (r"!(?=[\w(])", ""), (r"std::min\b", "std::max"), (r"std::max\b", "std::min"),
    (r"(?<![\w.'])\d+(?![\w.'])", lambda match: str(int(match.group()) + 1)),
]
QUOTED = re.compile(r'U?"(?:\\.|[^"\\])*"|U?\'(?:\\.|[^\'\\])*\'|//.*')
STATEMENT = re.compile(r"^(\s{4,})(?!return\b|case\b|default\b|break\b|using\b|const\b|constexpr\b|[:}#]).*;\s*(//.*)?$")
TEST_SECONDS = 60  # a mutant may loop for ever


def outside_of_quotes(line):
    """Where code stands: strings and comments become blanks."""
    return QUOTED.sub(lambda match: " " * len(match.group()), line)


def replacements(line):
    """Each line that one replacement makes of `line`."""
    code = outside_of_quotes(line)
    if code.lstrip().startswith(("#", "template", "namespace")):
        return
    for pattern, new in REPLACEMENTS:
        for match in re.finditer(pattern, code):
            text = new(match) if callable(new) else new
            yield line[:match.start()] + text + line[match.end():]


def begins_statement(lines, index):
    before = next((line for line in reversed(lines[:index]) if line.strip()), "")
    return outside_of_quotes(before).rstrip().endswith((";", "{", "}"))


def is_statement(lines, index):
    return bool(STATEMENT.match(lines[index])) and begins_statement(lines, index)


def indent(line):
    return len(line) - len(line.lstrip())


def mutants(lines):
    """Pairs of a name and the lines of one mutant."""
    for i, line in enumerate(lines):
        for changed in replacements(line):
            yield f"{i + 1}: {line.strip()} => {changed.strip()}", lines[:i] + [changed] + lines[i + 1:]
        if not is_statement(lines, i):
            continue
        yield f"{i + 1}: {line.strip()} => (deleted)", lines[:i] + [""] + lines[i + 1:]
        if i + 1 < len(lines) and is_statement(lines, i + 1) and indent(line) == indent(lines[i + 1]):
            yield f"{i + 1}: {line.strip()} => (after the next)", lines[:i] + [lines[i + 1], line] + lines[i + 2:]


def succeeds(*command):
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0


def builds(build):
    return succeeds("cmake", "--build", build)


def passes(build):
    return succeeds("ctest", "--test-dir", build, "-j2", "--stop-on-failure", "--timeout", str(TEST_SECONDS))


def verdict(build):
    if not builds(build):
        return "does not compile"
    return "SURVIVED" if passes(build) else "killed"


def try_file(file, build, done, results, deadline):
    original = file.read_text()
    lines = original.split("\n")
    try:
        for name, changed in mutants(lines):
            key = f"{file.name}:{name}"
            if key in done:
                continue
            if time.monotonic() > deadline:
                return False
            file.write_text("\n".join(changed))
            done[key] = verdict(build)
            with results.open("a") as stream:
                stream.write(f"{done[key]}\t{key}\n")
    finally:
        file.write_text(original)
    return True


def report(done):
    counts = {word: list(done.values()).count(word) for word in ("killed", "SURVIVED", "does not compile")}
    print(", ".join(f"{count} {word}" for word, count in counts.items()))
    for key, word in done.items():
        if word == "SURVIVED":
            print(key)


def main():
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    tree, build, results, seconds = Path(sys.argv[1]), sys.argv[2], Path(sys.argv[3]), float(sys.argv[4])
    if not builds(build) or not passes(build):
        sys.exit("error: the tests fail before anything is changed")
    done = {}
    if results.exists():
        done = {key: word for word, key in (line.split("\t", 1) for line in results.read_text().splitlines())}
    deadline = time.monotonic() + seconds
    finished = all(try_file(file, build, done, results, deadline) for file in sorted((tree / "src").glob("*.cpp")))
    report(done)
    print("all mutants were tried" if finished else "the time is over; the next run goes on from here")


if __name__ == "__main__":
    main()
