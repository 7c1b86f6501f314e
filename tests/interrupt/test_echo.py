#!/usr/bin/python3
"""An interrupt in the middle of `fcecho`: the document shows the frames that were sent, then the program ends as an
interrupt ends it. The simulator's journal is a pipe, so that the program can't get far before the signal."""
import fcntl
import os
import pathlib
import re
import signal
import subprocess
import tempfile
import unittest
from xml.etree import ElementTree

PROGRAM = pathlib.Path(os.environ["BUILD"]) / "orfc-esxcli"
HOST = pathlib.Path(__file__).resolve().parent.parent / "data/diagnostics.json"
FRAMES = 65535  # whose lines exceed what a pipe holds
# The second frame to this port times out, all others are answered.
WORDS = f"FC_21:00:00:24:ff:70:00:01 10:00:88:94:71:0b:3c:00 {FRAMES} false"


class Echo(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        path = pathlib.Path(folder.name) / "journal"
        os.mkfifo(path)
        self.journal = os.open(path, os.O_RDWR)
        self.addCleanup(os.close, self.journal)
        self.environment = dict(os.environ, VEXAPI_SIM_HOST=str(HOST), VEXAPI_SIM_JOURNAL=str(path),
                                VEXAPI_SIM_STATE=str(pathlib.Path(folder.name) / "state"))
        self.calls = b""

    def start(self, *words):
        tool = subprocess.Popen([PROGRAM, *words], env=self.environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.addCleanup(lambda: (tool.kill(), tool.communicate()))
        return tool

    def await_frames(self, count):
        while self.calls.count(b"EchoElsTest") < count:
            self.calls += os.read(self.journal, 4096)

    def interrupt(self, tool):
        """Interrupts a run after some frames. Returns its output, and how many frames it sent."""
        self.await_frames(3)
        tool.send_signal(signal.SIGINT)
        fcntl.fcntl(self.journal, fcntl.F_SETFL, os.O_NONBLOCK)
        output = b""
        fcntl.fcntl(tool.stdout, fcntl.F_SETFL, os.O_NONBLOCK)
        while tool.poll() is None:
            self.drain()
            output += tool.stdout.read() or b""
        self.drain()
        output += tool.stdout.read() or b""
        self.assertEqual(tool.returncode, -signal.SIGINT)
        sent = self.calls.count(b"EchoElsTest")
        self.assertGreaterEqual(sent, 3)
        self.assertLess(sent, FRAMES)
        return output.decode(), sent

    def drain(self):
        try:
            while data := os.read(self.journal, 65536):
                self.calls += data
        except BlockingIOError:
            pass

    def expect_text(self, text, sent):
        self.assertTrue(text.startswith("*" * 52 + "\nFCEchoResult:\nMessage: Success\n"), text[:200])
        self.assertTrue(text.endswith("Echo Status: Echo accepted\n" + "*" * 52 + "\n"), text[-200:])
        self.assertEqual([int(number) for number in re.findall("Sequence Number: (.*)", text)],
                         list(range(1, sent + 1)))

    def test_text(self):
        self.expect_text(*self.interrupt(self.start("-t", "port", "-s", "fcecho", "runcli", *WORDS.split())))

    def test_xml(self):
        text, sent = self.interrupt(self.start("-t", "port", "-s", "fcecho", "run", *WORDS.split()))
        document = ElementTree.fromstring(text)
        self.assertEqual(document.find(".//field[@name='Message']/string").text, "Success")
        self.assertEqual([int(number.text) for number in document.findall(".//field[@name='Ping Sequence Number']/int")],
                         list(range(1, sent + 1)))

    def test_prompt(self):
        """The session ends too: the next command isn't run."""
        tool = self.start()
        tool.stdin.write(f"-t port -s fcecho runcli {WORDS}\nversion\n".encode())
        tool.stdin.flush()
        text, sent = self.interrupt(tool)
        self.expect_text(text.removeprefix("$>"), sent)

    def test_second_interrupt(self):
        """It ends a frame that nobody answers: here the program waits for its journal to be read."""
        tool = self.start("-t", "port", "-s", "fcecho", "runcli", *WORDS.split())
        self.await_frames(3)
        status = pathlib.Path(f"/proc/{tool.pid}/status")
        while "State:\tS" not in status.read_text():
            pass
        tool.send_signal(signal.SIGINT)
        while "ShdPnd:\t0000000000000000" not in status.read_text():
            pass
        tool.send_signal(signal.SIGINT)
        self.assertEqual((tool.communicate()[0], tool.returncode), (b"", -signal.SIGINT))


if __name__ == "__main__":
    unittest.main()
