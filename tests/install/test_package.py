#!/usr/bin/python3
"""tools/package where it can't do its work, with a builder that makes two files of 64 KiB; and what names versions."""
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILDER = """#!/bin/bash
ulimit -S -f unlimited
grep -q committed file || exit 3
for name in orfc-esxcli orfc-simulator; do
    head -c 65536 /dev/zero >../${name}_1_all.deb
    $AFTER_EACH
done
"""


class Package(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        # A repository with the script alone, and a machine on which every build package is installed.
        self.tree = self.folder / "tree"
        (self.tree / "tools").mkdir(parents=True)
        for name in ("package", "packages", "source-date"):
            shutil.copy(ROOT / "tools" / name, self.tree / "tools")
        (self.tree / "debian").mkdir()
        (self.tree / "debian/control").write_text("Build-Depends: debhelper-compat (= 13), one, two-dev (>= 1.1)\n")
        (self.tree / "file").write_text("committed\n")
        self.git("init", "--quiet")
        self.git("add", ".")
        self.git("commit", "--quiet", "--message=All")
        programs = self.folder / "programs"
        programs.mkdir()
        self.asked = self.folder / "asked"
        query = f'#!/bin/sh\nfor last; do :; done\necho "$last" >>{self.asked}\necho installed\n'
        for name, text in (("dpkg-buildpackage", BUILDER), ("dpkg-query", query)):
            (programs / name).write_text(text)
            (programs / name).chmod(0o755)
        self.temporary = self.folder / "temporary"
        self.temporary.mkdir()
        self.environment = {**os.environ, "PATH": f"{programs}:{os.environ['PATH']}", "TMPDIR": str(self.temporary)}
        self.packages = self.folder / "packages"

    def git(self, *arguments):
        subprocess.run(["git", "-c", "user.name=x", "-c", "user.email=x", *arguments], cwd=self.tree, check=True)

    def run_script(self, *arguments, before=(), **variables):
        result = subprocess.run([*before, self.tree / "tools/package", *arguments], text=True, capture_output=True,
                                env={**self.environment, **variables}, timeout=60)
        self.assertEqual([*self.temporary.iterdir()], [])
        return result

    def names(self):
        return sorted(path.name for path in self.packages.iterdir()) if self.packages.is_dir() else None

    def check_refused(self, message, *arguments, status=1, **options):
        before = self.names()
        result = self.run_script(*arguments, **options)
        self.assertEqual((result.returncode, result.stdout), (status, ""))
        self.assertIn(message, result.stderr)
        self.assertEqual(self.names(), before)

    def test_makes_the_packages(self):
        result = self.run_script(self.packages)
        names = ["orfc-esxcli_1_all.deb", "orfc-simulator_1_all.deb"]
        self.assertEqual((result.returncode, result.stdout, result.stderr),
                         (0, "".join(f"{self.packages}/{name}\n" for name in names), ""))
        self.assertEqual(self.names(), names)
        self.assertEqual(self.asked.read_text().split(), ["build-essential", "debhelper", "one", "two-dev"])

    def test_own_folder(self):
        self.assertEqual(self.run_script().returncode, 0)
        self.assertTrue((self.tree / "build/packages/orfc-simulator_1_all.deb").exists())

    def test_arguments(self):
        self.check_refused("usage: tools/package [FOLDER]\n", "--help", status=2)
        self.check_refused("usage: tools/package [FOLDER]\n", self.packages, self.packages, status=2)

    def test_tree_that_is_not_committed(self):
        (self.tree / "new").touch()
        self.check_refused("not committed:\n?? new\n", self.packages)
        (self.tree / "new").unlink()
        (self.tree / "file").write_text("committed, and changed\n")
        self.check_refused(f"tools/package: {self.tree}: not committed:\n M file\n", self.packages)

    def test_no_repository(self):
        shutil.rmtree(self.tree / ".git")
        self.check_refused(f"{self.tree}: not the checked-out tree of a repository", self.packages)

    def test_build_that_fails(self):
        (self.tree / "file").write_text("wrong\n")
        self.git("commit", "--quiet", "--all", "--message=Wrong")
        self.packages.mkdir()
        self.check_refused("tools/package: the build failed\n", self.packages)

    def test_build_that_fails_half_way(self):
        self.packages.mkdir()
        self.check_refused("tools/package: the build failed\n", self.packages, AFTER_EACH="exit 1")

    def test_interrupted_at_any_time(self):
        self.packages.mkdir()
        for hundredths in range(1, 31):
            result = self.run_script(self.packages, before=["timeout", f"{hundredths / 100}"], AFTER_EACH="sleep 30")
            self.assertEqual((result.returncode, self.names()), (124, []))

    def test_folder_that_can_not_be_written(self):
        for folder in (f"{self.tree}/file", f"{self.tree}/file/x", "/proc"):
            self.check_refused(f"tools/package: {folder}: cannot be written\n", folder)

    def test_full_folder_keeps_the_last_packages(self):
        self.assertEqual(self.run_script(self.packages).returncode, 0)
        # No file may have more than 32 KiB, but what the builder makes.
        full = ["bash", "-c", 'trap "" XFSZ; ulimit -S -f 32; exec "$@"', "-"]
        self.check_refused(f"tools/package: {self.packages}: no room for the packages\n", self.packages, before=full)


class Sources(unittest.TestCase):
    def test_scripts_refuse_what_they_do_not_know(self):
        for script in ("tools/package", "tools/source-date", "packaging/vib/build", "packaging/vib/check",
                       "tests/install/bare-root", "tests/install/check-packages", "tests/install/check-root"):
            result = subprocess.run([ROOT / script, "--unknown"], text=True, capture_output=True, timeout=60)
            self.assertEqual((result.returncode, result.stdout), (2, ""))
            self.assertRegex(result.stderr, f"^usage: {script}\\b.*\n$")

    def test_time_of_the_sources(self):
        with tempfile.TemporaryDirectory() as folder:
            tree = pathlib.Path(folder)
            for name in ("tools/source-date", "debian/changelog"):
                (tree / name).parent.mkdir()
                shutil.copy(ROOT / name, tree / name)
            (tree / "debian/changelog").write_text(
                "x (2) y; urgency=low\n\n  * x\n\n -- A <b@c>  Thu, 01 Jan 1970 01:00:07 +0100\n\n"
                "x (1) y; urgency=low\n\n  * x\n\n -- A <b@c>  Thu, 01 Jan 1970 00:00:01 +0000\n")
            environment = {**os.environ, "GIT_CEILING_DIRECTORIES": str(tree.parent)}

            def time(**variables):
                return subprocess.check_output([tree / "tools/source-date"], env={**environment, **variables})
            self.assertEqual(time(), b"7\n")
            self.assertEqual(time(SOURCE_DATE_EPOCH="5"), b"5\n")
            subprocess.run("git init --quiet && git -c user.name=x -c user.email=x commit --quiet --allow-empty"
                           " --message=x", shell=True, cwd=tree, check=True,
                           env={**environment, "GIT_COMMITTER_DATE": "1000000000 +0000"})
            self.assertEqual(time(), b"1000000000\n")

    def test_changelog_begins_with_the_version_of_the_project(self):
        version = re.search(r"^project\(.* VERSION ([0-9.]+) ", (ROOT / "CMakeLists.txt").read_text(), re.MULTILINE)[1]
        self.assertTrue((ROOT / "debian/changelog").read_text().startswith(f"orfc-esxcli ({version}) "))


if __name__ == "__main__":
    unittest.main()
