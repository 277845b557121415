#!/usr/bin/env python3
"""Looks for what does not belong into the tree: a table of patterns, each with its reason.

usage: check_words.py ROOT

Every finding is one line "file:line: what was found: why not"; the exit code is 1 if there is any, 2 if there are no
files to look at.
"""

import pathlib
import re
import sys

CODE = {".cpp", ".h"}
TEXT = CODE | {".py", ".sh", ".cmake", ".txt", ".md", ".json", ".css", ".ui", ".ini"}
EVERYWHERE = ""

# folder, kinds of file, pattern within one line, reason. A letter in brackets keeps the table from finding itself.
PATTERNS = [
    (EVERYWHERE, TEXT, r"\t", "a tab: indent with spaces"),
    (EVERYWHERE, TEXT, r"[ \t]+$", "blanks at the end of the line"),
    (EVERYWHERE, TEXT, r"\r", "a carriage return: lines end with a newline alone"),
    (EVERYWHERE, TEXT, r"\b(TO[D]O|FI[X]ME|XX[X])\b", "a promise: do it, or describe the gap where the reader looks for it"),
    (EVERYWHERE, TEXT, r"^(<{7}|>{7}|={7})( |$)", "what a merge left behind"),
    ("tests", CODE, r"\bqWait\s*\(", "a fixed wait: wait for the condition (QTRY_*, qWaitFor)"),
    ("tests", CODE, r"\bqSleep\s*\(", "a fixed wait: wait for the condition (QTRY_*, qWaitFor)"),
    # A receiver that is slow on purpose says so: QThread::msleep(1); // slow on purpose
    ("tests", CODE, r"\b(sleep_for|sleep_until|[mu]?sleep|nanosleep)\s*\((?!.*// slow on purpose$)",
     "a fixed wait: wait for the condition (QTRY_*, qWaitFor)"),
    ("tests", CODE, r"\bQSKIP\s*\(", "a test that may not run: give it what it needs"),
    ("tests", CODE, r"#\s*include\s*[\"<][^\">]*\.\./", "a relative include: include from the src or the tests folder"),
    ("src", CODE, r"\b(SIGNAL|SLOT)\s*\(", "a connection by text: connect to the function, the compiler checks it"),
    ("src", CODE, r"\bQ_FOREACH\b|\bforeach\s*\(", "use a range-based for"),
    ("src", CODE, r"\bQThread\b(?!::currentThread)|\bQThreadPool\b|\bQRunnable\b|\bQtConcurrent\b|\bstd::(j?thread|async)\b",
     "a second thread: everything runs on the one of the interface"),
    ("src", CODE, r"\bstd::(cout|cerr)\b|\bprintf\s*\(", "log through the category of the layer"),
]

# folder, kinds of file, most lines
LENGTHS = [
    ("src", CODE, 400),
]

NOT_OURS = {".git", ".cache", ".vscode", ".idea", "__pycache__"}


def files_of(root):
    """Every file of the tree but the build's."""
    for path in sorted(root.iterdir()):
        if path.name in NOT_OURS or (path.is_dir() and path.name.startswith("build")):
            continue
        if path.is_dir():
            yield from (file for file in sorted(path.rglob("*"))
                        if file.is_file() and NOT_OURS.isdisjoint(file.relative_to(root).parts))
        elif path.is_file():
            yield path


def kind_of(path):
    """The file's suffix; a script without one counts as .sh."""
    if path.suffix or path.name.startswith("."):
        return path.suffix
    with path.open("rb") as file:
        return ".sh" if file.read(2) == b"#!" else ""


def applies(folder, kinds, name, kind):
    return kind in kinds and (folder == EVERYWHERE or name.startswith(folder + "/"))


def findings(name, kind, data):
    """(line, text) for all that is wrong with one file."""
    try:
        text = data.decode("utf-8")
    except UnicodeDecodeError as error:
        yield data.count(b"\n", 0, error.start) + 1, "not UTF-8"
        return
    if text.startswith("\ufeff"):
        yield 1, "a byte order mark"
    lines = text.split("\n")
    if lines[-1]:
        yield len(lines), "the last line has no newline"
    else:
        lines.pop()
    for folder, kinds, pattern, reason in PATTERNS:
        if applies(folder, kinds, name, kind):
            for number, line in enumerate(lines, 1):
                match = re.search(pattern, line)
                if match:
                    yield number, f"{match.group()!r}: {reason}"
    for folder, kinds, most in LENGTHS:
        if applies(folder, kinds, name, kind) and len(lines) > most:
            yield most + 1, f"{len(lines)} lines: a file has at most {most}, cut it along its concerns"


def main(arguments):
    if len(arguments) != 1:
        print(__doc__, file=sys.stderr)
        return 2
    root = pathlib.Path(arguments[0])
    files = count = 0
    for path in files_of(root):
        kind = kind_of(path)
        if kind not in TEXT:
            continue
        files += 1
        name = path.relative_to(root).as_posix()
        for line, text in sorted(findings(name, kind, path.read_bytes())):
            print(f"{name}:{line}: {text}")
            count += 1
    print(f"{files} files, {count} findings")
    if not files:
        return 2
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
