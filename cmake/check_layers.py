#!/usr/bin/env python3
"""Holds every #include line under src/ against the layers of cmake/layers.txt.

usage: check_layers.py ROOT [--qt-include DIR]...

ROOT is the folder that contains cmake/layers.txt and src/. DIR is a folder with Qt's headers (the one that contains
QtCore/, or QtCore/ itself); the build passes what CMake found, without it the usual places are tried.

Every breach is one line "file:line: what is wrong"; the exit code is 1 if there is any, 2 if the check cannot be made.
"""

import argparse
import pathlib
import re
import sys

SOURCES = {".cpp", ".h", ".cc", ".cxx", ".hpp", ".hxx", ".inl"}
FORMS = {".ui"}
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include\b[ \t]*(?:"([^"]*)"|<([^>]*)>|(.*))')
COMMENT_OR_STRING = re.compile(r'//[^\n]*|"(?:\\.|[^"\\\n])*"|/\*.*?\*/', re.DOTALL)
FORM_HEADER = re.compile(r"<header[^>]*>([^<]*)</header>")
GENERATED = re.compile(r"(ui_\w+\.h|moc_\w+\.cpp|\w+\.moc)$")
QT_HEADER = re.compile(r"(Qt\w*/.*|Q\w+|q[a-z0-9]+\.h)$")
USUAL_QT_PLACES = ("/usr/include/x86_64-linux-gnu/qt5", "/usr/include/aarch64-linux-gnu/qt5", "/usr/include/qt5")


class Layer:
    def __init__(self, line, target, folder, modules, arrows):
        self.line = line
        self.target = target
        self.folder = folder
        self.modules = modules
        self.arrows = arrows


class QtHeaders:
    """Answers which Qt module a header belongs to, by looking where the headers lie."""

    def __init__(self, folders):
        self.module_folders = {}
        for folder in folders:
            candidates = [folder] if folder.name.startswith("Qt") else sorted(folder.glob("Qt*"))
            for module in candidates:
                if module.is_dir():
                    self.module_folders.setdefault(module.name[len("Qt"):], module)
        self.known = {}

    def module_of(self, header):
        """The module's name without "Qt", or None for a header that no module has."""
        if header not in self.known:
            self.known[header] = self._look_up(header)
        return self.known[header]

    def _look_up(self, header):
        first, slash, rest = header.partition("/")
        if first.startswith("Qt") and (slash or first[len("Qt"):] in self.module_folders):
            module = first[len("Qt"):]
            folder = self.module_folders.get(module)
            return module if folder and (folder / (rest or first)).is_file() else None
        for module, folder in self.module_folders.items():
            if (folder / header).is_file():
                return module
        return None


def split_list(text):
    return [] if text == "-" else text.split(",")


def read_layers(path, report):
    layers = []
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        fields = line.split()
        if len(fields) != 4 or not re.match(r"[a-z]", line):
            report(number, "a layer is four fields from the first column on: target, folder, Qt modules, may use")
            continue
        target, folder, modules, arrows = fields
        layers.append(Layer(number, target, folder, split_list(modules), split_list(arrows)))
    return layers


def check_list(layers, qt, report):
    """The list itself: names that exist once, known modules, no circle of arrows."""
    seen = {}
    for layer in layers:
        for kind, name in (("target", layer.target), ("folder", layer.folder)):
            if (kind, name) in seen:
                report(layer.line, f"the {kind} '{name}' stands in line {seen[kind, name]} already")
            seen[kind, name] = layer.line
    arrows = {layer.target: layer.arrows for layer in layers}
    for layer in layers:
        for name in layer.arrows:
            if name not in arrows:
                report(layer.line, f"'{layer.target}' may use '{name}', which is no target of the list")
        for module in layer.modules:
            if module not in qt.module_folders:
                report(layer.line, f"there is no Qt module '{module}'")
    for layer in layers:
        circle = find_circle(layer.target, arrows)
        if circle:
            report(layer.line, "the arrows make a circle: " + " -> ".join(circle))


def find_circle(start, arrows):
    """The shortest way from start back to itself, or None."""
    ways = [[start]]
    visited = set()
    while ways:
        way = ways.pop(0)
        for name in arrows.get(way[-1], []):
            if name == start:
                return way + [name]
            if name not in visited:
                visited.add(name)
                ways.append(way + [name])
    return None


def layer_of(layers, path):
    """The layer whose folder is the longest prefix of a path relative to src, or None."""
    matches = [layer for layer in layers if path.startswith(layer.folder + "/")]
    return max(matches, key=lambda layer: len(layer.folder), default=None)


def without_block_comments(text):
    def keep_lines(match):
        return "\n" * match.group().count("\n") if match.group().startswith("/*") else match.group()

    return COMMENT_OR_STRING.sub(keep_lines, text)


def includes_of(path):
    """(line, header, quoted) for every include line; header is None where a macro names it."""
    text = path.read_text(encoding="utf-8", errors="replace")
    if path.suffix in FORMS:
        for number, line in enumerate(text.splitlines(), 1):
            for header in FORM_HEADER.findall(line):
                yield number, header.strip(), True
        return
    for number, line in enumerate(without_block_comments(text).splitlines(), 1):
        match = INCLUDE.match(line)
        if match:
            quoted, angled, _ = match.groups()
            yield number, quoted if quoted is not None else angled, quoted is not None


def judge(header, quoted, owner, layers, qt, source_root):
    """What is wrong with this include in a file of the layer owner; None if nothing is."""
    if header is None:
        return "the included header is named by a macro: the check cannot read it"
    if ".." in header.split("/"):
        return f'"{header}" is relative: include from the src folder, as in "{owner.folder}/Name.h"'
    other = layer_of(layers, header)
    if other is not None:
        if other is owner or other.target in owner.arrows:
            return None
        return f"'{owner.target}' may not use '{other.target}' ({header})"
    if QT_HEADER.match(header):
        module = qt.module_of(header)
        if module is None:
            return f"no Qt module has the public header <{header}>"
        if module not in owner.modules:
            return f"'{owner.target}' may not use Qt{module} (<{header}>)"
        return None
    if header.startswith("private/") or "/private/" in header:
        return f"<{header}> is a private header"
    if (quoted or (source_root / header).exists()) and not GENERATED.match(header):
        return f'"{header}" lies in no folder of the layers: include from the src folder, as in "{owner.folder}/Name.h"'
    return None


def qt_folders(given):
    folders = [pathlib.Path(name) for name in given] or [pathlib.Path(name) for name in USUAL_QT_PLACES]
    return [folder for folder in folders if folder.is_dir()]


def main(arguments):
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("--qt-include", action="append", default=[], metavar="DIR")
    options = parser.parse_args(arguments)

    list_path = options.root / "cmake" / "layers.txt"
    source_root = options.root / "src"
    qt = QtHeaders(qt_folders(options.qt_include))
    if not list_path.is_file() or not source_root.is_dir():
        print(f"{options.root}: there is no cmake/layers.txt or no src folder", file=sys.stderr)
        return 2
    if "Core" not in qt.module_folders:
        print("Qt's headers were not found: name their folder with --qt-include", file=sys.stderr)
        return 2

    breaches = []

    def report(path, line, text):
        breaches.append(f"{path.relative_to(options.root)}:{line}: {text}")

    layers = read_layers(list_path, lambda line, text: report(list_path, line, text))
    check_list(layers, qt, lambda line, text: report(list_path, line, text))

    filled = set()
    files = sorted(path for path in source_root.rglob("*") if path.suffix in SOURCES | FORMS and path.is_file())
    for path in files:
        owner = layer_of(layers, path.relative_to(source_root).as_posix())
        if owner is None:
            report(path, 1, "the file lies in no folder of cmake/layers.txt")
            continue
        filled.add(owner.target)
        for line, header, quoted in includes_of(path):
            wrong = judge(header, quoted, owner, layers, qt, source_root)
            if wrong:
                report(path, line, wrong)

    for layer in layers:
        if layer.target not in filled:
            print(f"warning: {list_path.relative_to(options.root)}:{layer.line}: "
                  f"the folder src/{layer.folder} has no source files", file=sys.stderr)
    for breach in breaches:
        print(breach)
    print(f"{len(files)} files, {len(layers)} layers, {len(breaches)} breaches")
    return 1 if breaches else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
