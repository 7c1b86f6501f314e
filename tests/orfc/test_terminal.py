#!/usr/bin/python3
"""The program on a terminal: widths, colours, and progress when the host takes long."""
import os
import re
import subprocess
import unittest

import pexpect
import program

SGR = re.compile("\x1b\\[[0-9;]*m")


def spawn(command, columns=80, environment=()):
    child = pexpect.spawn(str(command[0]), list(command[1:]), env=program.environment_of(more=environment),
                          dimensions=(24, columns), timeout=60)
    child.delayafterclose = child.ptyproc.delayafterclose = 0
    return child


def on_terminal(*words, columns=80, environment=(), script=None):
    """What a terminal of so many columns shows, as it was sent; with `script`, that of a shell with the program in $0."""
    child = spawn(["/bin/bash", "-c", script, program.PROGRAM] if script else [program.PROGRAM, *words], columns,
                  environment)
    output = child.read().decode()
    child.close()
    assert child.exitstatus == 0, output
    return output.replace("\r\n", "\n")


class Widths(unittest.TestCase):
    def test_tables_fit(self):
        for words in program.commands():
            if words[:1] == ["show"]:
                continue  # lines of any length
            for columns in (80, 100, 132, 250):
                output = on_terminal(*words, columns=columns)
                longest = max(len(SGR.sub("", line)) for line in output.splitlines())
                self.assertLessEqual(longest, columns, words)

    def test_more_room_more_columns(self):
        heads = [SGR.sub("", on_terminal("ports", columns=columns).splitlines()[0]).split("  ")
                 for columns in (20, 60, 80, 120)]
        self.assertEqual([len(list(filter(None, head))) for head in heads], [1, 5, 5, 7])

    def test_names_are_never_cut(self):
        """On twenty columns too: every name of the wide table is there as a whole."""
        for words, key in (([], "port"), (["ports"], "port"), (["adapters"], "adapter"), (["targets"], "port_name"),
                           (["luns"], "target_port_name"), (["paths"], "volume"), (["transceivers"], "port"),
                           (["counters"], "counter")):
            output = on_terminal(*words, columns=20)
            lines = {cell for line in output.splitlines() for cell in SGR.sub("", line).strip().split("  ")}
            lines = {cell.strip() for cell in lines}
            missing = {record[key] for record in program.records(*words)} - lines
            self.assertEqual(missing, set(), words)

    def test_lines_above_rows_are_broken_between_values(self):
        output = on_terminal("paths", "mpatha", columns=40)
        self.assertIn("\nnaa.60060e80124a7c0050404a7c00000000\n    mpatha  dm-0  512G  paths 12  up 8\n", SGR.sub("", output))

    def test_wide_and_chosen_columns_are_as_they_are(self):
        for words in (["ports", "-o", "wide"], ["ports", "--columns", "port,port_name,node_name,switch"]):
            output = on_terminal(*words, columns=20)
            self.assertEqual(SGR.sub("", output), program.run(*words).stdout)

    def test_the_width_of_a_terminal_is_that_of_the_output(self):
        """A table in a pipe has all columns, wherever messages go."""
        output = on_terminal(columns=20, script='"$0" ports | cat')
        self.assertEqual(output, program.run("ports").stdout)

    def test_a_terminal_without_a_width(self):
        output = on_terminal("ports", columns=0)
        self.assertEqual(SGR.sub("", output), program.run("ports").stdout)


class Colours(unittest.TestCase):
    def test_auto(self):
        for words, is_colored in ((["ports"], True), (["ports", "--color", "never"], False),
                                  (["ports", "--color", "auto"], True), (["ports", "-o", "wide"], True),
                                  (["ports", "-o", "json"], False), (["ports", "-o", "csv"], False),
                                  (["targets", "-o", "esxcli"], False), (["show", "host9"], True), ([], True)):
            output = on_terminal(*words)
            self.assertEqual("\x1b" in output, is_colored, words)

    def test_no_color(self):
        """By its convention any value but the empty one counts."""
        for value, is_colored in (("1", False), ("0", False), ("", True)):
            self.assertEqual("\x1b" in on_terminal("ports", environment={"NO_COLOR": value}), is_colored)
        self.assertIn("\x1b", on_terminal("ports", "--color", "always", environment={"NO_COLOR": "1"}))

    def test_a_pipe_has_none(self):
        self.assertNotIn("\x1b", on_terminal(script='"$0" ports | cat'))

    def test_colours_take_no_room(self):
        output = on_terminal("ports", columns=200)
        self.assertEqual(SGR.sub("", output), program.run("ports").stdout)


class Progress(unittest.TestCase):
    """A library that waits for as long as the test wants."""

    def setUp(self):
        self.pipe = program.path_of("pipe")
        os.mkfifo(self.pipe)
        self.addCleanup(os.unlink, self.pipe)
        self.environment = {"WAITING_LIBRARY_PIPE": str(self.pipe)}
        self.words = [program.PROGRAM, "--library", str(program.BUILD / "tests/orfc/libwaiting_library.so")]

    def start(self):
        """Lets the library start."""
        os.close(os.open(self.pipe, os.O_WRONLY))

    def test_long_work_is_told_and_wiped(self):
        for columns, shown in ((80, "reading the host"), (10, "reading t")):  # in less than the line
            child = spawn([*self.words, "ports"], columns, self.environment)
            child.expect_exact(f"\r{shown}\x1b[K")
            self.assertEqual(child.before, b"")
            self.start()
            rest = child.read().decode()
            self.assertEqual(rest.replace(f"\r{shown}\x1b[K", ""), "\r\x1b[K")
            child.close()
            self.assertEqual(child.exitstatus, 0)

    PING = ["--library", "simulator", "ping", program.NAME, "--count", "2", "--interval", "1.5"]

    def test_ping(self):
        """It waits between two frames."""
        child = spawn([program.PROGRAM, *self.PING], 80)
        child.expect_exact("\rpinging 50:01:10:a0:00:8b:c4:11: 1 of 1 answered\x1b[K")
        child.expect_exact("\r\x1b[K")
        self.assertNotIn("pinging", child.read().decode())
        child.close()
        self.assertEqual(child.exitstatus, 0)

    def test_ping_elsewhere(self):
        run = program.run(*self.PING)
        self.assertEqual((run.returncode, run.stderr), (0, ""))

    def test_nothing_of_it_elsewhere(self):
        process = subprocess.Popen([*self.words, "ports"], env=program.environment_of(more=self.environment), stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE)
        with self.assertRaises(subprocess.TimeoutExpired):
            process.wait(1.5)
        self.start()
        self.assertEqual((*process.communicate(timeout=60), process.returncode), (b"", b"", 0))

    def test_standard_output_stays_clean(self):
        """With messages on the terminal and the answer in a file."""
        answer = program.path_of("answer")
        child = spawn(["/bin/bash", "-c", '"$@" ports -o json >"$0"', str(answer), *self.words], 80, self.environment)
        child.expect_exact("reading the host")
        self.start()
        child.read()
        child.close()
        self.assertTrue(answer.read_text().startswith('{"json_format_version"'))
        self.assertNotIn("\x1b", answer.read_text())

    def test_quick_work_is_not_told(self):
        self.assertNotIn("reading", on_terminal("ports"))


if __name__ == "__main__":
    unittest.main()
