"""check_words.py on small invented trees: every row of its table finds what it is for."""

import contextlib
import io
import pathlib
import re
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "cmake"))
sys.dont_write_bytecode = True
import check_words  # noqa: E402

# file, a line that must be found there. Put together from pieces so that this file is clean itself.
FOUND = [
    ("src/a.cpp", "int\ta;"),
    ("cmake/a.cmake", "set(a 1) "),
    ("docs/a.md", "text\r"),
    ("src/a.cpp", "// TO" + "DO: later"),
    ("tests/a.h", "// FIX" + "ME"),
    ("README.md", "XX" + "X"),
    ("src/a.cpp", "<" * 7 + " HEAD"),
    ("tests/a.cpp", "    QTest::q" + "Wait(100);"),
    ("tests/room/a.cpp", "    QTest::q" + "Sleep (100);"),
    ("tests/a.cpp", "    std::this_thread::sl" + "eep_for(1s);"),
    ("tests/a.cpp", "    QThread::m" + "sleep(100);"),
    ("tests/a.cpp", '    QS' + 'KIP("no screen");'),
    ("tests/a.cpp", '#include "../support/A.h"'),
    ("src/a.cpp", "    connect(a, SIG" + "NAL(b()), c, &C::d);"),
    ("src/a.cpp", "    for" + "each (int a, list)"),
    ("src/a.h", "    std::c" + "err << 1;"),
    ("src/a.h", "class Reader : public QThread"),
    ("src/a.cpp", "    QThreadPool::globalInstance()->start(reader);"),
    ("src/a.cpp", "    QtConcurrent::run(read);"),
    ("src/a.cpp", "    std::thread reader(read);"),
]

CLEAN = [
    ("src/a.cpp", "    QThread::currentThread();"),
    ("tests/a.cpp", "    QVERIFY(QTest::qWaitFor([&] { return done; }));"),
    ("tests/a.cpp", "    QTRY_COMPARE(count, 1);"),
    ("tests/a.cpp", "    QThread::m" + "sleep(1); // slow on purpose"),
    ("src/a.cpp", "// a list of to-dos, Fixmen and sleepers"),
    ("docs/a.md", "No one waits: qWait is not used."),
    ("docs/table.tsv", "a\tb"),
    ("build/a.cpp", "int\ta;"),
    ("build-debug/a.cpp", "int\ta;"),
    (".git/a.cpp", "int\ta;"),
    ("tests/__pycache__/a.py", "\t"),
]


class CheckWords(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name) / ".cache" / "a tree"
        self.write("src/clean.h", b"#pragma once\n")

    def write(self, name, data):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)

    def check(self):
        """The exit code and what was printed."""
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            code = check_words.main([str(self.root)])
        return code, output.getvalue()

    def assert_finding(self, name, data, place, part):
        self.write(name, data)
        code, output = self.check()
        self.assertEqual(code, 1, output)
        self.assertTrue(output.startswith(f"{name}:{place}: "), output)
        self.assertIn(part, output)
        self.assertIn(" 1 findings\n", output)
        (self.root / name).unlink()

    def test_found(self):
        for name, line in FOUND:
            with self.subTest(name=name, line=line):
                self.assert_finding(name, f"\n{line}\n".encode(), 2, ": ")

    def test_every_row_of_the_table_is_tried(self):
        for folder, _, pattern, _ in check_words.PATTERNS:
            with self.subTest(folder=folder, pattern=pattern):
                self.assertTrue(any(name.startswith(folder) and re.search(pattern, line) for name, line in FOUND))

    def test_clean(self):
        for name, line in CLEAN:
            with self.subTest(name=name, line=line):
                self.write(name, f"{line}\n".encode())
                self.assertEqual(self.check()[0], 0)

    def test_script_without_suffix_is_looked_at(self):
        self.assert_finding("tool", b"#!/bin/sh\n\techo\n", 2, "a tab")

    def test_longest_allowed_file_is_clean(self):
        self.write("src/a.cpp", b"\n" * 400)
        self.assertEqual(self.check()[0], 0)

    def test_file_that_is_too_long(self):
        self.assert_finding("src/a.cpp", b"\n" * 401, 401, "401 lines: a file has at most 400")

    def test_last_line_without_newline(self):
        self.assert_finding("src/a.cpp", b"int a;\nint b;", 2, "the last line has no newline")

    def test_not_utf8(self):
        self.assert_finding("src/a.cpp", b"\n// \xe4\n", 2, "not UTF-8")

    def test_byte_order_mark(self):
        self.assert_finding("src/a.cpp", b"\xef\xbb\xbfint a;\n", 1, "a byte order mark")

    def test_tree_without_files_is_refused(self):
        (self.root / "src/clean.h").unlink()
        self.assertEqual(self.check()[0], 2)


if __name__ == "__main__":
    unittest.main()
