"""install_packages.sh against invented dpkg-query, apt-get, sudo and id: what it asks of them and when it asks nothing."""

import pathlib
import shutil
import subprocess
import tempfile
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]

# The installed packages are the files of $state; everything that apt-get and sudo are asked is written down in order.
PROGRAMS = {
    "dpkg-query": 'shift 3\nfor p in "$@"; do [ ! -e "$state/$p" ] || echo "$p $(cat "$state/$p")"; done\nfalse',
    "apt-get": 'echo "apt-get $DEBIAN_FRONTEND $*" >>"$asked"\necho "E: no luck"\ncase "$*" in *" $failing"*) exit 100 ;; esac',
    "sudo": 'echo "sudo $1" >>"$asked"\n[ "$1" != -n ] || shift\nexec "$@"',
    "id": 'echo "$user"',
}


class InstallPackages(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name) / "a tree"
        self.state = self.root / "state"
        self.bin = self.root / "bin"
        self.log = self.root / "log"
        for path in (self.root / "cmake/packages", self.state, self.bin):
            path.mkdir(parents=True)
        shutil.copy(PROJECT / "cmake/install_packages.sh", self.root / "cmake")
        (self.root / "cmake/packages/one.txt").write_text("# why\n\nalpha\nbeta  # reason\n")
        (self.root / "cmake/packages/two.txt").write_text("beta\ngamma\n")
        for name in ("bash", "env", "cat", "dirname", "mktemp", "rm"):
            (self.bin / name).symlink_to(shutil.which(name))
        for name, body in PROGRAMS.items():
            self.write_program(name, body)

    def write_program(self, name, body):
        path = self.bin / name
        path.write_text(f"#!/usr/bin/env bash\n{body}\n")
        path.chmod(0o755)

    def set_installed(self, *names, status="installed"):
        for name in names:
            (self.state / name).write_text(status)

    def run_script(self, *groups, user=0, failing="nothing"):
        environment = {"PATH": str(self.bin), "state": str(self.state), "asked": str(self.log), "user": str(user),
                       "failing": failing}
        result = subprocess.run([self.root / "cmake/install_packages.sh", *groups], env=environment,
                                stdin=subprocess.DEVNULL, capture_output=True, text=True)
        asked = self.log.read_text().splitlines() if self.log.exists() else []
        return result, asked

    def assert_installs(self, asked, *names):
        self.assertTrue(asked[-1].endswith(" install --no-install-recommends " + " ".join(names)), asked)
        self.assertTrue(asked[-1].startswith("apt-get noninteractive "), asked)

    def test_nothing_missing_asks_for_nothing_and_says_nothing(self):
        self.set_installed("alpha", "beta")
        result, asked = self.run_script("one", user=1000)
        self.assertEqual((result.returncode, result.stdout, result.stderr, asked), (0, "", "", []))

    def test_only_the_missing_are_installed_each_once(self):
        self.set_installed("alpha")
        result, asked = self.run_script("one", "two")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stdout, "Installing 2 missing packages: beta gamma\n")
        self.assertEqual(len(asked), 2)
        self.assertTrue(asked[0].endswith(" update"), asked)
        self.assert_installs(asked, "beta", "gamma")

    def test_removed_package_with_its_settings_left_is_missing(self):
        self.set_installed("alpha", "beta")
        self.set_installed("gamma", status="config-files")
        self.assert_installs(self.run_script("two")[1], "gamma")

    def test_a_user_goes_through_sudo_without_a_question(self):
        result, asked = self.run_script("two", user=1000)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual([line for line in asked if line.startswith("sudo")], ["sudo -n", "sudo -n"])
        self.assert_installs(asked, "beta", "gamma")

    def test_a_user_without_sudo_is_told_the_command(self):
        (self.bin / "sudo").unlink()
        result, asked = self.run_script("two", user=1000)
        self.assertEqual((result.returncode, asked), (1, []))
        self.assertIn("apt-get install --no-install-recommends beta gamma", result.stderr)

    def test_lists_that_cannot_be_refreshed_do_not_stop_it(self):
        result, asked = self.run_script("two", failing="update")
        self.assertEqual(result.returncode, 0)
        self.assertIn("could not be refreshed", result.stderr)
        self.assert_installs(asked, "beta", "gamma")

    def test_failed_installation_shows_the_output(self):
        result, _ = self.run_script("two", failing="install")
        self.assertEqual(result.returncode, 1)
        self.assertIn("E: no luck", result.stderr)

    def test_another_system_is_told_the_names(self):
        (self.bin / "dpkg-query").unlink()
        result, asked = self.run_script("two")
        self.assertEqual((result.returncode, asked), (0, []))
        self.assertIn("beta gamma", result.stderr)

    def test_unknown_group(self):
        result, _ = self.run_script("three")
        self.assertEqual(result.returncode, 1)
        self.assertIn("'three'", result.stderr)

    def test_no_group(self):
        self.assertEqual(self.run_script()[0].returncode, 1)


if __name__ == "__main__":
    unittest.main()
