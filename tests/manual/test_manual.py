#!/usr/bin/python3
"""The user's manual, ORFC_ESXCLI_Readme.txt, against the program on the lab host."""
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

PROGRAM = pathlib.Path(os.environ["BUILD"]) / "orfc-esxcli"
MANUAL = (pathlib.Path(__file__).resolve().parents[2] / "ORFC_ESXCLI_Readme.txt").read_text()
OPTIONS = {"adapter": "-s", "port": "-s", "target": "-v", "lun": "-v"}

FOLDER = tempfile.TemporaryDirectory()
ENVIRONMENT = dict(os.environ, PATH=f"{PROGRAM.parent}:{os.environ['PATH']}", VEXAPI_SIM_STATE=f"{FOLDER.name}/state")

# Files that the examples read, and those that they write.
INPUTS = {"/tmp/mbi.bin": "ORFC-IMAGE MBI 2.10.15\n",
          "/tmp/nvram.dat": "ORFC-IMAGE NVRAM 1\nFrameSize 1024\n",
          "/tmp/sfp.img": "ORFC-IMAGE SFP B\n"}
OUTPUTS = ["/tmp/nvram.txt", "/tmp/dump.bin"]


def run(command_line):
    return subprocess.run(command_line, shell=True, env=ENVIRONMENT, stdout=subprocess.PIPE, timeout=120).stdout.decode()


def examples():
    """The command lines, in order; a backslash continues a line."""
    return re.findall(r"^ +(?:Example: +)?(orfc-esxcli -t .*)$", re.sub(r"\\\n *", "", MANUAL), re.MULTILINE)


def children(*path):
    """The words listed by the help of a family."""
    return re.findall(r"^(\S+) *: ", run(" ".join(("orfc-esxcli", *path, "help"))).replace("\r", ""), re.MULTILINE)


def families():
    """Every family's options and words, with its commands except `help`."""
    for top, option in OPTIONS.items():
        # A family's own commands end with the last `cli` twin.
        words = children("-t", top)
        subfamilies = words[max(at for at, word in enumerate(words) if word.endswith("cli")) + 1:]
        yield ("-t", top), set(words) - set(subfamilies) - {"help"}
        for subfamily in subfamilies:
            path = ("-t", top, option, subfamily)
            yield path, set(children(*path)) - {"help"}


class Manual(unittest.TestCase):
    maxDiff = None

    def test_title_has_the_version(self):
        self.assertIn(MANUAL.splitlines()[0].replace(" Plugin ", " Plugin v"), run("echo version | orfc-esxcli"))

    def test_examples_succeed(self):
        for path, text in INPUTS.items():
            pathlib.Path(path).write_text(text)
        for path in (*INPUTS, *OUTPUTS):
            self.addCleanup(pathlib.Path(path).unlink, missing_ok=True)
        for example in examples():
            output = run(example)
            if example.endswith("help"):
                self.assertIn("list of available commands", output, example)
            elif example.endswith("'?'"):
                self.assertTrue(output.startswith("Usage: "), example)
            elif example.endswith(" listcli"):
                self.assertNotIn("Failed", output, example)
                self.assertGreater(output.count("\n"), 3, example)
            else:
                self.assertRegex(output, r"(?m)^(Message|Test Result): Success$", example)

    def test_every_command_has_an_example(self):
        shown = set()
        for example in examples():
            words = example.split()[1:]
            depth = 4 if words[2] in ("-s", "-v") else 2
            shown.add((tuple(words[:depth]), words[depth]))
        for path, commands in families():
            twins = {command for command in commands if command.endswith("cli")}
            self.assertEqual(twins - {command for family, command in shown if family == path}, set(), path)

    def test_every_command_is_told(self):
        sections = {word.lower(): text for word, text in
                    re.findall(r"^\d\. (\w+)S \(-t.*\n((?:(?!^\d\. ).*\n)+)", MANUAL, re.MULTILINE)}
        for path, commands in families():
            subfamily = " ".join(path[2:])
            told = set()
            for line in re.findall(rf"^   {subfamily + ' ' if subfamily else ''}((?:\w+, )*\w+)", sections[path[1]],
                                   re.MULTILINE):
                told |= set(line.split(", "))
            self.assertEqual(commands - told, set(), path)

    def test_every_result_text_is_told(self):
        texts = {text.decode() for text in re.findall(rb"Failed, [\x20-\x7e]+", PROGRAM.read_bytes())}
        self.assertGreater(len(texts), 80)
        told = set(re.findall(r"^ +(Failed, .*)$", MANUAL, re.MULTILINE))
        self.assertEqual(texts ^ told, set())


if __name__ == "__main__":
    unittest.main()
