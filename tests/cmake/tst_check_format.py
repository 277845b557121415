"""check_format.sh on small invented trees: it names the files that are not formatted, and repairs them when asked."""

import pathlib
import shutil
import subprocess
import tempfile
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
GOOD = "int good()\n{\n    return 1;\n}\n"
BAD = "int bad( )\n{\n  return 1;\n}\n"


class CheckFormat(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name) / "a tree"
        self.root.mkdir()
        shutil.copy(PROJECT / ".clang-format", self.root)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def check(self, *options):
        return subprocess.run([PROJECT / "cmake/check_format.sh", *options, self.root], capture_output=True, text=True)

    def test_formatted_tree_is_clean(self):
        self.write("src/room/Good.cpp", GOOD)
        self.assertEqual(self.check().returncode, 0)

    def test_each_file_is_named_once(self):
        self.write("src/Good.cpp", GOOD)
        self.write("src/a room/Bad.h", BAD)
        self.write("tests/Bad.cpp", BAD)
        self.write("benchmarks/Bad.cpp", BAD)
        result = self.check()
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout.splitlines(),
                         [f"{name}:1: is not formatted as .clang-format says"
                          for name in ("src/a room/Bad.h", "tests/Bad.cpp", "benchmarks/Bad.cpp")])
        self.assertIn("cmake/check_format.sh --fix", result.stderr)

    def test_fix_makes_it_clean(self):
        self.write("src/Bad.cpp", BAD)
        self.assertEqual(self.check("--fix").returncode, 0)
        self.assertEqual(self.check().returncode, 0)
        self.assertEqual((self.root / "src/Bad.cpp").read_text(), GOOD.replace("good", "bad"))

    def test_tree_without_files_is_refused(self):
        self.write("docs/Bad.cpp", BAD)
        self.assertEqual(self.check().returncode, 2)


if __name__ == "__main__":
    unittest.main()
