#!/usr/bin/python3
"""Sysfs trees as texts, and the generated tree."""
import pathlib
import subprocess
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent


class Case(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def run_tool(self, name, *arguments, status=0):
        run = subprocess.run([HERE / name, *map(str, arguments)], capture_output=True, text=True, check=False)
        self.assertEqual(run.returncode, status, run.stderr)
        return run.stdout

    def unpack(self, text, status=0):
        """Unpacks a text and returns the folder."""
        (self.folder / "text").write_text(text)
        self.run_tool("tree", "unpack", self.folder / "text", self.folder / "tree", status=status)
        return self.folder / "tree"


class Tree(Case):
    TEXT = ('a/b "x\\ny"\n'
            'a/bytes "\\u0000\\u00ff%<&"\n'
            'a/empty ""\n'
            'a/link -> ../b/nowhere\n'
            'none/\n')

    def test_unpacks_every_kind_of_entry(self):
        tree = self.unpack("# a comment\n\n" + self.TEXT)
        self.assertEqual((tree / "a/b").read_bytes(), b"x\ny")
        self.assertEqual((tree / "a/bytes").read_bytes(), b"\0\xff%<&")
        self.assertEqual((tree / "a/empty").read_bytes(), b"")
        self.assertEqual(str((tree / "a/link").readlink()), "../b/nowhere")
        self.assertEqual(list((tree / "none").iterdir()), [])

    def test_packs_what_it_unpacked(self):
        self.assertEqual(self.run_tool("tree", "pack", self.unpack(self.TEXT)), self.TEXT)

    def test_packs_what_matches(self):
        tree = self.unpack(self.TEXT)
        self.assertEqual(self.run_tool("tree", "pack", tree, "*/b*", "none"),
                         'a/b "x\\ny"\na/bytes "\\u0000\\u00ff%<&"\nnone/\n')

    def test_a_later_text_replaces_entries(self):
        self.unpack(self.TEXT)
        tree = self.unpack('a/b -> bytes\na/link "now a file"\n')
        self.assertEqual((tree / "a/b").read_bytes(), b"\0\xff%<&")
        self.assertEqual((tree / "a/link").read_bytes(), b"now a file")
        self.assertFalse((self.folder / "tree/b").exists())

    def test_refuses_lines_that_are_no_entries(self):
        for line in ("a", 'a "x', "a b/", '../a "x"', '/a "x"', "a -> b c", 'a  "x"'):
            with self.subTest(line):
                self.unpack(line + "\n", status=1)


class Generated(Case):
    def test_spreads_units_over_the_targets(self):
        self.run_tool("generate", 3, 5, self.folder / "a")
        self.assertEqual([path.name for path in sorted(self.folder.glob("a/sys/bus/scsi/devices/?:0:0:*"))],
                         ["0:0:0:0", "0:0:0:1", "1:0:0:0", "1:0:0:1", "2:0:0:0"])
        self.assertEqual([path.name for path in sorted(self.folder.glob("a/sys/class/block/*"))],
                         ["sda", "sdb", "sdc", "sdd", "sde"])

    def test_puts_two_ports_on_a_card(self):
        self.run_tool("generate", 3, 0, self.folder / "a")
        self.assertEqual([path.resolve().parents[2].name for path in sorted(self.folder.glob("a/sys/class/fc_host/*"))],
                         ["0000:01:00.0", "0000:01:00.1", "0000:02:00.0"])

    def test_has_no_dangling_link(self):
        self.run_tool("generate", 2, 30, self.folder / "a")
        links = [path for path in self.folder.glob("**/*") if path.is_symlink()]
        self.assertEqual([path for path in links if not path.exists()], [])
        self.assertGreater(len(links), 30)

    def test_is_the_same_each_time(self):
        for name in "ab":
            self.run_tool("generate", 2, 4, self.folder / name)
        self.assertEqual(self.run_tool("tree", "pack", self.folder / "a"),
                         self.run_tool("tree", "pack", self.folder / "b"))


if __name__ == "__main__":
    unittest.main()
