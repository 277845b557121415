#!/usr/bin/env python3
"""Holds the table of translations against the texts of the program and against the glossary.

usage: check_translations.py ROOT [--lupdate PROGRAM]

The texts are collected from ROOT/src by the toolkit's lupdate; what is no part of the bar is left out. Every finding is one
line that names the place, the context, the source and the language; the exit code is 1 if there is any, 2 if the check
cannot be made.
"""

import argparse
import collections
import pathlib
import re
import subprocess
import sys
import tempfile
import unicodedata
import xml.etree.ElementTree

TABLE = "installation/configuration/Language.tsv"
GLOSSARY = "docs/translation-glossary.md"
LANGUAGES = ["English", "German", "French", "Spanish", "Italian", "Portuguese", "Russian", "Japanese", "Korean",
             "Simplified Chinese"]
HEADER = ["Context", "Source"] + LANGUAGES

# Rooms of src/ whose texts the bar never shows.
NOT_THE_BAR = {"host", "simulator", "texttable"}

# Not a text: its translations are what the names of the toolkit's own translation files end with.
LOCALE = "Localization"
LOCALE_CELL = re.compile(r"[a-z]{2}(_[A-Z]{2})?")

ESCAPES = {"n": "\n", "t": "\t", "\\": "\\"}

# What a translation has exactly as often as its source, whatever the order: name, pattern.
KEPT = [
    ("place-holders", r"%(?:L?\d{1,2}|n)"),
    ("ampersands", "&"),
    ("line breaks", "\n"),
    ("tabs", "\t"),
    ("markup", r"</?(?:a|b|br|em|h[1-6]|i|li|ol|p|span|strong|sub|sup|table|td|tr|u|ul)\b[^>]*>"),
    ("angle brackets", "[<>]"),
    ("file patterns", r"\*\.\w+"),
    ("ellipses", r"\.\.\.|\u2026"),
    ("numbers", r"(?a)(?<![%\w.])-?\d+(?:\.\d+)?(?:e\d+)?(?![\w.]*\w)"),
]

CJK = "\u3040-\u30ff\u3400-\u9fff\uac00-\ud7a3"
# languages, pattern of what is wrong, reason
TYPOGRAPHY = [
    (LANGUAGES[1:], r"['\"]", "a straight quote or apostrophe: use the language's own"),
    (["French"], r"(?<=[^\u00a0\u202f])[:;?!]", "a mark without a no-break space before it"),
    (["French"], r"\u00ab(?!\u00a0)|(?<!\u00a0)\u00bb", "a guillemet without a no-break space inside"),
    (["Japanese", "Simplified Chinese"], rf"[{CJK}%\d][,;:?!]|[{CJK}](?:[(]|[.](?![.]))", "a narrow mark among wide characters"),
    (["Japanese", "Simplified Chinese"], r"[(][^)]*[\u3040-\u9fff]", "narrow brackets around wide characters"),
    (["Korean"], r"[\u3001\u3002\uff08\uff09\uff0c\uff1a]", "a wide mark"),
]
WIDE_STOP = "\u3002"
FULL_STOPS = (".", WIDE_STOP)

Row = collections.namedtuple("Row", "line context source cells")


def unescaped(cell):
    """The text that a cell of the table stands for; None when an escape is unknown."""
    parts = re.split(r"(\\.?)", cell, flags=re.DOTALL)
    if any(part.startswith("\\") and part[1:] not in ESCAPES for part in parts):
        return None
    return "".join(ESCAPES[part[1:]] if part.startswith("\\") else part for part in parts)


def shown(text):
    return '"' + text.replace("\\", "\\\\").replace("\n", "\\n").replace("\t", "\\t") + '"'


def place(row, language=None):
    parts = [f"context {shown(row.context)}", f"source {shown(row.source)}"] + ([language] if language else [])
    return f"{TABLE}:{row.line}: " + ", ".join(parts)


def read_table(data, findings):
    """The rows of the table, as far as they can be read."""
    try:
        text = data.decode("utf-8")
    except UnicodeDecodeError as error:
        findings.append(f"{TABLE}:{data.count(10, 0, error.start) + 1}: not UTF-8")
        return []
    if "\r" in text or text.startswith("\ufeff") or not text.endswith("\n"):
        findings.append(f"{TABLE}:1: lines end with a newline alone, the last one too, and there is no byte order mark")
    lines = text.removesuffix("\n").split("\n")
    if lines[0].split("\t") != HEADER:
        findings.append(f"{TABLE}:1: the first line shall be {' '.join(HEADER)}, parted by tabs")
        return []
    rows = []
    for number, line in enumerate(lines[1:], 2):
        cells = [unescaped(cell) for cell in line.split("\t")]
        if len(cells) != len(HEADER):
            findings.append(f"{TABLE}:{number}: {len(cells)} cells instead of {len(HEADER)}: {line[:60]}")
        elif None in cells:
            findings.append(f"{TABLE}:{number}: a backslash that is none of \\n, \\t, \\\\, in the column "
                            f"{HEADER[cells.index(None)]}: {line[:60]}")
        else:
            rows.append(Row(number, cells[0], cells[1], dict(zip(LANGUAGES, cells[2:]))))
    return rows


def collected_texts(root, lupdate, findings):
    """Every (context, source) of the bar. What lupdate complains about is a finding: such a text has no sure context."""
    rooms = sorted(path for path in (root / "src").iterdir() if path.is_dir() and path.name not in NOT_THE_BAR)
    with tempfile.TemporaryDirectory() as folder:
        result = pathlib.Path(folder) / "texts.ts"
        run = subprocess.run([lupdate, "-silent", "-locations", "none", "-I", root / "src", *rooms, "-ts", result],
                             capture_output=True, text=True, check=False)
        if run.returncode or not result.exists():
            raise OSError(f"{lupdate} has failed: {run.stderr.strip()}")
        findings.extend(f"lupdate: {line}: texts of this place may be missed or have a wrong context"
                        for line in run.stderr.splitlines() if line.strip())
        contexts = xml.etree.ElementTree.parse(result).getroot().iter("context")
        messages = [(context.findtext("name") or "", message) for context in contexts for message in context.iter("message")]
    texts = set()
    for context, message in messages:
        text = (context, message.findtext("source") or "")
        texts.add(text)
        if message.get("numerus") or message.findtext("comment"):
            findings.append(f"src: context {shown(context)}, source {shown(text[1])}: the table knows neither plural forms "
                            "nor disambiguations: word it so that it needs none")
    return texts


def coverage(rows, texts):
    """Texts without a row, rows without a text. A row without a context serves each context that has none of its own."""
    keys = {(row.context, row.source) for row in rows}
    for context, source in sorted(texts):
        if (context, source) not in keys and ("", source) not in keys:
            yield (f"{TABLE}: context {shown(context)}, source {shown(source)}: the program has this text, the table "
                   f"has no row for it: add it in {', '.join(LANGUAGES)}")
    wanted = texts | {("", source) for context, source in texts if (context, source) not in keys} | {("", LOCALE)}
    for row in rows:
        if (row.context, row.source) not in wanted:
            yield f"{place(row)}: the program has no such text"
    if LOCALE not in {source for _, source in keys}:
        yield f'{TABLE}: context "", source {shown(LOCALE)}: no row names the toolkit\'s own translations'


def order(rows):
    keys = [(row.context.encode(), row.source.encode()) for row in rows]
    for row, key, before in zip(rows[1:], keys[1:], keys):
        if key == before:
            yield f"{place(row)}: the row is there twice"
        elif key < before:
            yield f"{place(row)}: belongs before line {row.line - 1}: rows are sorted by context, then source, by bytes"


def cell_faults(source, language, cell):
    """What is wrong with one cell, seen alone."""
    if not cell.strip():
        yield "the cell is empty"
        return
    if source == LOCALE:
        if not LOCALE_CELL.fullmatch(cell):
            yield f"{shown(cell)} is no locale such as pt_BR"
        return
    if language == "English" and cell != source:
        yield f"{shown(cell)} is not the source, which is English itself"
    if cell != cell.strip() or "  " in cell:
        yield f"blanks at the edge or twice in a row in {shown(cell)}"
    for character in sorted({c for c in cell if unicodedata.category(c) in ("Cc", "Cf", "Co", "Cn") and c not in "\n\t"}):
        yield f"the control character U+{ord(character):04X} in {shown(cell)}"
    if unicodedata.normalize("NFC", cell) != cell:
        yield f"letters and accents apart in {shown(cell)}: write them as one character"
    for name, pattern in KEPT:
        wanted, found = (sorted(re.findall(pattern, text)) for text in (source, cell))
        if wanted != found:
            yield f"other {name} than the source: {' '.join(map(shown, found)) or 'none'} in {shown(cell)}"
    if source.endswith(".") and not cell.endswith(FULL_STOPS) or cell.endswith(WIDE_STOP) and not source.endswith("."):
        yield f"a full stop at the end of only one of the two: {shown(cell)}"
    for languages, pattern, reason in TYPOGRAPHY:
        match = re.search(pattern, cell) if language in languages else None
        if match:
            yield f"{shown(match.group())} is {reason}: {shown(cell)}"


def one_text_one_translation(rows):
    """The same source reads the same wherever it stands."""
    first = {}
    for row in rows:
        before = first.setdefault(row.source, row)
        for language in LANGUAGES:
            if row.cells[language] != before.cells[language]:
                yield (f"{place(row, language)}: {shown(row.cells[language])} here, "
                       f"{shown(before.cells[language])} in the context {shown(before.context)}")


def read_glossary(text):
    """The table whose header is the languages: a list of {language: forms of the term}."""
    terms = None
    for line in text.splitlines():
        cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
        if terms is None:
            terms = [] if cells == LANGUAGES else None
        elif not line.startswith("|"):
            break
        elif set(line) - set("|-: "):
            terms.append({language: cell.split(" / ") for language, cell in zip(LANGUAGES, cells)})
    return terms or []


def terms_in(text, terms):
    """The terms of which the English text has a form. The longest come first, and no word counts twice."""
    forms = sorted(((form, term) for term in terms for form in term["English"]), key=lambda pair: -len(pair[0]))
    for form, term in forms:
        text, count = re.subn(rf"(?<![^\W\d_]){re.escape(form)}(?![^\W\d_])", "\n", text, flags=re.IGNORECASE)
        if count:
            yield term


def terminology(rows, terms):
    for term in terms:
        if len(term) != len(LANGUAGES) or not all(form for forms in term.values() for form in forms):
            yield f"{GLOSSARY}: the term {term['English'][0]!r} has not a word for each language"
            return
    used = set()
    for row in rows:
        for term in terms_in(row.cells["English"], terms):
            used.add(term["English"][0])
            for language in LANGUAGES[1:]:
                if not any(form.casefold() in row.cells[language].casefold() for form in term[language]):
                    yield (f"{place(row, language)}: {shown(row.cells[language])} has none of the glossary's words for "
                           f"{term['English'][0]}: {', '.join(term[language])}")
    for term in terms:
        if term["English"][0] not in used:
            yield f"{GLOSSARY}: no text of the table has the term {term['English'][0]!r}"


def check(root, lupdate):
    findings = []
    texts = collected_texts(root, lupdate, findings)
    rows = read_table((root / TABLE).read_bytes(), findings)
    terms = read_glossary((root / GLOSSARY).read_text(encoding="utf-8"))
    if not texts or not terms:
        raise OSError(f"{root / 'src'} has no texts" if not texts else f"{GLOSSARY} has no table of the languages")
    if rows:
        findings.extend(coverage(rows, texts))
        findings.extend(order(rows))
        for row in rows:
            for language in LANGUAGES:
                findings.extend(f"{place(row, language)}: {fault}"
                                for fault in cell_faults(row.source, language, row.cells[language]))
        findings.extend(one_text_one_translation(rows))
        findings.extend(terminology(rows, terms))
    return findings, len(texts)


def main(arguments):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("--lupdate", default="lupdate")
    options = parser.parse_args(arguments)
    try:
        findings, count = check(options.root.resolve(), options.lupdate)
    except FileNotFoundError as error:
        print(f"{error.filename} is missing; lupdate comes with cmake/install_packages.sh test", file=sys.stderr)
        return 2
    except OSError as error:
        print(error, file=sys.stderr)
        return 2
    for finding in findings:
        print(finding)
    print(f"{count} texts in {len(LANGUAGES)} languages, {len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
