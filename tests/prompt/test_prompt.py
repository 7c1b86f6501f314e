#!/usr/bin/python3
"""The interactive prompt: `orfc-esxcli` without arguments, through a terminal and through pipes."""
import os
import pathlib
import signal
import stat
import subprocess
import tempfile
import time
import unittest

import pexpect

PROGRAM = pathlib.Path(os.environ["BUILD"]) / "orfc-esxcli"
HOSTS = pathlib.Path(__file__).resolve().parent.parent / "data"
PORT = "FC_21:00:00:24:ff:10:20:30"  # the switchable one of fec.json

VERSION = "Kerrith Orvane Sorvenna FC ESXCLI Plugin v1.3.6\r\n"
UNKNOWN = "Unknown command or invalid target identifier!\r\n"
NO_INPUT = "Unknown input problem!\r\nQuit...\r\n"
BAD_QUOTES = "Error parsing command input string!\n"
QUIT_USAGE = "Usage: q\r\n    return to the parent prompt.\r\n"


class Case(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.environment = dict(os.environ, VEXAPI_SIM_HOST=str(HOSTS / "fec.json"),
                                VEXAPI_SIM_STATE=str(self.folder / "state"))


class Pipe(Case):
    """Whole sessions, byte for byte."""

    def session(self, *lines, flags=()):
        """Feeds the lines and `q`; returns the output. The session must end on its own, with status 0."""
        run = subprocess.run([PROGRAM, *flags], input="".join(line + "\n" for line in (*lines, "q")).encode(),
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=self.environment, timeout=120)
        self.assertEqual((run.returncode, run.stderr), (0, b""))
        return run.stdout.decode()

    def broken_session(self, *lines):
        """A session that ends in an assertion: its output before that."""
        run = subprocess.run([PROGRAM], input="".join(line + "\n" for line in lines).encode(), stdout=subprocess.PIPE,
                             stderr=subprocess.PIPE, env=self.environment, timeout=120)
        # An assertion raises SIGABRT, whose handler ends the process as SIGINT does.
        self.assertEqual(run.returncode, -signal.SIGINT)
        self.assertEqual(run.stderr.count(b"\n"), 1)
        return run.stdout.decode()

    def test_quit(self):
        self.assertEqual(self.session(), "$>")

    def test_quit_refuses_words(self):
        self.assertEqual(self.session("q x"), "$>Command parameter Error!\r\n" + QUIT_USAGE + "$>")

    def test_usage_of_the_prompt_s_commands(self):
        self.assertEqual(self.session("q ?"), "$>" + QUIT_USAGE + "$>")
        self.assertEqual(self.session("version ?"), "$>Usage: version\r\n    display version of this program.\r\n$>")
        self.assertEqual(
            self.session("LOG ?"),
            "$>Usage: log [<filename>]\r\n"
            "    filename    : The file to log all the output to. \r\n"
            "                    If no filename is supplied, the currently open log \r\n"
            "                    file will be closed.\r\n"
            "$>")

    def test_version(self):
        self.assertEqual(self.session("version"), "$>" + VERSION + "$>")
        self.assertEqual(self.session("VERSION"), "$>" + VERSION + "$>")

    def test_version_refuses_words(self):
        self.assertEqual(
            self.session("version x"),
            "$>Command parameter Error!\r\nUsage: version\r\n    display version of this program.\r\n$>")

    def test_mode_words_alone_lead_to_the_prompt(self):
        self.assertEqual(self.session("version", flags=["-eng"]), "$>" + VERSION + "$>")
        self.assertEqual(self.session("version", flags=["-DEBUG", "-Eng"]), "$>" + VERSION + "$>")

    def test_help_has_no_word_of_the_readme(self):
        help_text = self.session("help")
        self.assertTrue(help_text.startswith("$>\r\nFollowing is the list of available commands.\r\n"), help_text)
        self.assertIn("\r\nport        : use this command to get/set/list Orvane Ports\r\n", help_text)
        self.assertNotIn("ORFC_ESXCLI_Readme.txt", help_text)
        for word in ("?", "/h", "/help", "/?", "help ?", "? x", "HELP -t port"):
            self.assertEqual(self.session(word), help_text, word)

    def test_empty_lines(self):
        self.assertEqual(self.session("", "   ", " \t \r"), "$>$>$>$>")

    def test_unclosed_quotes(self):
        self.assertEqual(self.session('version "', '"', 'a" b'), ("$>" + BAD_QUOTES) * 3 + "$>")

    def test_quotes(self):
        # A pair of quotes is an empty word, not a command; quotes within a word belong to it.
        self.assertEqual(self.session('""', '" "'), ("$>" + UNKNOWN) * 2 + "$>")
        self.assertEqual(self.session('ver"sion"', '"version"'), ("$>" + VERSION) * 2 + "$>")
        self.assertEqual(self.session('version ""'), self.session("version x"))

    def test_commands_of_families(self):
        listing = ("*" * 52 + "\nAdapterList:\nAdapters: ")
        self.assertIn("$>" + listing, self.session("-t adapter listcli"))
        self.assertIn("$>" + listing, self.session("listcli -T Adapter"))

    def test_a_command_s_value_may_be_q(self):
        # On a command line the word would end the run.
        self.assertEqual(self.session("-t port -s fec getcli q"),
                         "$>" + "*" * 52 + "\nFECInfo:\nMessage: Failed, Invalid parameter\nFEC: " + "*" * 52 + "\n"
                         "Usage: get\r\n$>")

    def test_two_words_select_a_family_by_its_option_only(self):
        self.assertEqual(self.session("port list", "nosuch", "-t"), ("$>" + UNKNOWN) * 3 + "$>")

    def test_changes_last_from_command_to_command(self):
        report = self.session(f"-t port -s fec setcli {PORT} -f false", f"-t port -s fec getcli {PORT}")
        self.assertEqual(report.count("FEC_Status: false\n"), 2)
        self.assertEqual(report.count("Reboot Required: true\n"), 1)

    def test_a_family_alone_aborts(self):
        self.assertEqual(self.broken_session("port"), "$>")
        self.assertEqual(self.broken_session("ADAPTER"), "$>")

    def test_a_family_behind_a_family_aborts(self):
        self.assertEqual(self.broken_session("-t port fec"), "$>")

    def test_long_line(self):
        # A line is read in pieces of 2047 bytes; each is a line of its own.
        self.assertEqual(self.session("x" * 2046), "$>" + UNKNOWN + "$>")
        self.assertEqual(self.session("x" * 2046 + " version"), "$>" + UNKNOWN + "$>" + VERSION + "$>")
        self.assertEqual(self.session("x" * 100_000), ("$>" + UNKNOWN) * (100_000 // 2047 + 1) + "$>")
        # The second piece is just the newline.
        self.assertEqual(self.session("x" * 2047), "$>" + UNKNOWN + "$>$>")

    def test_thousand_words(self):
        self.assertEqual(self.session("x " * 1000), "$>" + UNKNOWN + "$>")
        self.assertEqual(self.session("version " + '"" ' * 600), self.session("version x"))

    def test_bytes_above_127(self):
        run = subprocess.run([PROGRAM], input=b"\xff\xfe\x80 \xc3\nq\n", stdout=subprocess.PIPE, env=self.environment)
        self.assertEqual((run.returncode, run.stdout.decode()), (0, "$>" + UNKNOWN + "$>"))

    def test_end_of_input(self):
        begin = time.monotonic()
        run = subprocess.run([PROGRAM], input=b"version\n", stdout=subprocess.PIPE, env=self.environment)
        seconds = time.monotonic() - begin
        self.assertEqual((run.returncode, run.stdout.decode()), (0, "$>" + VERSION + "$>" + NO_INPUT))
        self.assertGreater(seconds, 4.5)
        self.assertLess(seconds, 20)

    def test_closed_input(self):
        run = subprocess.run(["/bin/sh", "-c", '"$1" <&-', "sh", PROGRAM], stdout=subprocess.PIPE,
                             stderr=subprocess.PIPE, env=self.environment)
        self.assertEqual((run.returncode, run.stdout.decode(), run.stderr), (0, "$>" + NO_INPUT, b""))

    def test_command_log(self):
        log = self.folder / "commands.log"
        output = self.session(f"log {log}", "version", "-t port listcli", "nosuch", "log", "version")
        self.assertEqual(output.count(VERSION), 2)
        # Every line that was typed and all plain output, from the prompt after the opening to the line that
        # closes it; documents are not plain output.
        self.assertEqual(self.read_protected(log),
                         f"$>version\n{VERSION}$>-t port listcli\n$>nosuch\n{UNKNOWN}$>log\n")
        self.assertEqual(stat.S_IMODE(log.stat().st_mode), 0o200)

    def test_command_log_of_commands_that_are_refused(self):
        log = self.folder / "commands.log"
        self.session(f"log {log}", "", 'a "b', "q x")
        self.assertEqual(
            self.read_protected(log),
            f'$>\n$>a "b\n{BAD_QUOTES}$>q x\nCommand parameter Error!\r\n{QUIT_USAGE}$>q\n')

    def test_command_log_is_cut_and_changed(self):
        first, second = self.folder / "first", self.folder / "second"
        first.write_text("of an older session, and longer than all that follows in this file\n" * 9)
        self.session(f"log {first}", f"log {second}", "version")
        self.assertEqual(self.read_protected(first), f"$>log {second}\n")
        self.assertEqual(self.read_protected(second), f"$>version\n{VERSION}$>q\n")

    def test_command_log_that_cannot_be_made(self):
        name = f"{self.folder}/nosuch/log"
        self.assertEqual(self.session(f"log {name}", "log"), f"$>Failed to create file {name}\n$>$>")

    def test_command_log_closes_even_when_none_is_open(self):
        self.assertEqual(self.session("log"), "$>$>")

    def read_protected(self, path):
        """The text of a file that even its owner may not read."""
        mode = stat.S_IMODE(path.stat().st_mode)
        path.chmod(0o600)
        with open(path, newline="") as file:
            text = file.read()
        path.chmod(mode)
        return text


class OnTerminal(Case):
    def start(self):
        child = pexpect.spawn(str(PROGRAM), env=self.environment, encoding="utf-8", echo=False, timeout=120)
        self.addCleanup(child.close)
        child.expect_exact("$>")
        self.assertEqual(child.before, "")
        return child

    def wait_for_sleep(self, child):
        """Waits until the program waits for input. An earlier signal interrupts nothing."""
        while pathlib.Path(f"/proc/{child.pid}/stat").read_text().rpartition(")")[2].split()[0] != "S":
            time.sleep(0.01)

    def expect_answer(self, child, line, answer):
        child.sendline(line)
        child.expect_exact("$>")
        # A terminal adds a carriage return to every newline.
        self.assertEqual(child.before, answer.replace("\n", "\r\n"))

    def expect_end_by_interrupt(self, child):
        child.expect(pexpect.EOF)
        child.close()
        self.assertEqual((child.exitstatus, child.signalstatus), (None, signal.SIGINT))


class Terminal(OnTerminal):
    """The prompt is shown before anything is typed."""

    def test_commands(self):
        child = self.start()
        self.expect_answer(child, "version", VERSION)
        self.expect_answer(child, "", "")
        self.expect_answer(child, "nosuch", UNKNOWN)
        self.expect_answer(child, 'open "quote', BAD_QUOTES)
        child.sendline("q")
        child.expect(pexpect.EOF)
        child.close()
        self.assertEqual((child.before, child.exitstatus), ("", 0))

    def test_end_of_input(self):
        child = self.start()
        child.sendeof()
        child.expect(pexpect.EOF)
        child.close()
        self.assertEqual((child.before, child.exitstatus), (NO_INPUT.replace("\n", "\r\n"), 0))

    def test_a_family_alone_aborts(self):
        child = self.start()
        child.sendline("port")
        self.expect_end_by_interrupt(child)


class Signals(OnTerminal):
    def test_quit_signal_between_the_prompt_and_the_wait_for_input(self):
        self.environment["LD_PRELOAD"] = str(PROGRAM.parent / "tests/prompt/libquit_behind_prompt.so")
        child = self.start()
        child.expect_exact("$>", timeout=20)
        self.assertEqual(child.before, "")
        self.expect_answer(child, "version", VERSION)

    def test_quit_key_gives_a_new_prompt(self):
        child = self.start()
        for _ in range(3):
            self.wait_for_sleep(child)
            child.sendcontrol("\\")
            child.expect_exact("$>")
            # A new prompt follows the old one, and nothing else.
            self.assertEqual(child.before, "")
        self.expect_answer(child, "version", VERSION)

    def test_quit_signal_during_the_wait_at_the_end_of_input(self):
        child = self.start()
        child.sendeof()
        time.sleep(1.5)
        child.kill(signal.SIGQUIT)
        child.expect_exact("$>")
        self.assertEqual(child.before, "")
        self.expect_answer(child, "version", VERSION)

    def test_interrupt_key_ends(self):
        child = self.start()
        child.sendintr()
        self.expect_end_by_interrupt(child)

    def test_terminate_and_abort_end_as_interrupt_does(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGABRT):
            child = self.start()
            child.kill(number)
            self.expect_end_by_interrupt(child)


if __name__ == "__main__":
    unittest.main()
