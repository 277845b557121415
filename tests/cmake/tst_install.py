"""What `cmake --install` makes: a tree that can be moved anywhere and runs from there.

usage: tst_install.py BUILD
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

BUILD = pathlib.Path(sys.argv.pop(1)).resolve()
DEADLINE = 60  # s, for a program that does not end by itself


class Install(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        first = self.folder / "first"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", first], check=True, stdout=subprocess.DEVNULL)
        self.tree = self.folder / "moved here, with blanks"
        shutil.move(first, self.tree)

    def files(self, folder):
        # Programs that ran from the stage have left their signals in data/.
        paths = (path.relative_to(folder) for path in folder.rglob("*") if path.is_file())
        return sorted(str(path) for path in paths if path.parts[0] != "data")

    def test_has_the_shape_of_the_stage(self):
        self.assertEqual(self.files(BUILD / "stage"), self.files(self.tree))
        self.assertIn("bin/TarvinelMiniBar", self.files(self.tree))
        self.assertIn("configuration/Language.xlsx", self.files(self.tree))
        self.assertNotIn("configuration/Language.tsv", self.files(self.tree))

    def test_brings_the_texts_of_the_toolkit(self):
        # A catalogue that names other files of its folder, and one of those.
        for name in ("qt_de.qm", "qtbase_de.qm"):
            self.assertEqual((BUILD / "stage/bin/translations" / name).read_bytes(),
                             (self.tree / "bin/translations" / name).read_bytes())

    def test_reads_its_own_texts_where_it_was_moved_to(self):
        # A table that is none is read, and that is said with its path.
        table = self.tree / "configuration/Language.xlsx"
        table.write_bytes(b"none")
        said = self.run_simulator()
        self.assertIn(f'The translation table "{table}" is not used', said.stderr)

    def test_runs_where_it_was_moved_to(self):
        program = self.run_simulator()
        self.assertEqual(0, program.returncode, program.stdout)
        for word in ("READY", "SHOW_MINIBAR", "VISIBLE", "SHUTDOWN"):
            self.assertIn(word, program.stdout)

    def run_simulator(self):
        # The bar is shown, which takes the installed style sheets, and is told to end.
        scenario = self.folder / "scenario.json"
        scenario.write_text('{"timeline": [{"afterVisible": 0, "shutdown": true}]}')
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", XDG_RUNTIME_DIR=str(self.folder))
        return subprocess.run(
            [self.tree / "bin/TarvinelSimulator", "--no-window", "--minimised", "--exit-after-close",
             "--print-traffic", "--scenario", scenario],
            env=environment, cwd=self.folder, timeout=DEADLINE, text=True, capture_output=True)


if __name__ == "__main__":
    unittest.main(verbosity=2)
