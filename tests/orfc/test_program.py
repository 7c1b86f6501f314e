#!/usr/bin/python3
"""The program with good and bad input: exit statuses, what is told in one line, hosts that change, and hostile texts."""
import itertools
import json
import os
import re
import signal
import subprocess
import time
import unittest
import xml.parsers.expat

import program
from program import NAME, run

FORMATS = ("table", "wide", "json", "csv", "esxcli")


class Case(unittest.TestCase):
    def refused(self, *words, status=1, **more):
        """The one line that a failing run tells; nothing else is printed."""
        finished = run(*words, **more)
        self.assertEqual((finished.returncode, finished.stdout), (status, ""), finished.stderr)
        self.assertRegex(finished.stderr, r"\Aorfc: [^\n]+\n\Z")
        return finished.stderr[len("orfc: "):-1]


class Statuses(Case):
    def test_all_well(self):
        for words in (*program.commands(), ["schema"], ["describe"], ["--help"], ["ports", "-h"], ["--version"]):
            finished = run(*words)
            self.assertEqual((finished.returncode, finished.stderr), (0, ""), words)
            self.assertTrue(finished.stdout)

    def test_usage(self):
        for words, told in (
                (["prots"], "prots"), (["--nothing"], "--nothing"), (["ports", "-x"], "-x"),
                (["-o"], "--output"), (["-o", "xml"], "xml is no format"), (["-o", "2"], "2 is no format"),
                (["--color", "green"], "green"), (["--sort"], "--sort"), (["--columns"], "--columns"),
                (["ports", "--columns", ","], "--columns"), (["ports", "--columns", "port,prot"], "prot"),
                (["ports", "--sort", "prot"], "prot"), (["ports", "--sort", "-"], "no column is named"),
                (["ports", "--columns", "port", "-o", "json"], "--columns"), (["show"], "NAME"),
                (["show", NAME, "-o", "esxcli"], "esxcli"), (["ports", "targets"], "nothing is named targets"),
                (["counters", "--count", "2"], "--interval"), (["ports", "--interval", "1"], "--interval"),
                (["--root", ""], "--root"), (["--root", "/", "--library", "simulator"], "--root"),
                *((["counters", "--interval", text], text)
                  for text in ("0", "-1", "0.09", "86401", "nan", "inf", "1s", "", "1e400")),
                *((["counters", "--interval", "1", "--count", text], text)
                  for text in ("0", "-1", "1.5", "x", "1000000001", "nan", "18446744073709551616"))):
            with self.subTest(words=words):
                status = 1 if "nothing is named" in told else 2
                self.assertIn(told, self.refused(*words, status=status))

    def test_something_could_not_be_read(self):
        for words in (["transceivers"], ["show", NAME], []):
            finished = run(*words, environment={"VEXAPI_SIM_FAULTS": "VEXAPI_GetSFPData@1=5"})
            self.assertEqual(finished.returncode, 3)
            self.assertEqual(finished.stderr, f"orfc: {NAME}: transceiver: failed with status 5\n")
        # The rest is complete.
        good, partial = (run("ports", "-o", "wide", environment={"VEXAPI_SIM_FAULTS": faults}).stdout
                         for faults in ("", "VEXAPI_ExtGetPort@1=5"))
        self.assertEqual(good.splitlines()[2:], partial.splitlines()[2:])
        self.assertNotEqual(good.splitlines()[1], partial.splitlines()[1])

    def test_a_file_that_cannot_be_read(self):
        tree = program.tree_folder("degraded")
        speed = f"{tree}/sys/class/fc_host/host0/speed"
        os.rename(speed, f"{speed}.old")
        os.mkdir(speed)
        try:
            finished = run("ports", tree="degraded")
            self.assertEqual((finished.returncode, finished.stderr), (3, "orfc: host0/speed: Is a directory\n"))
            self.assertEqual(len(finished.stdout.splitlines()), 6)
        finally:
            os.rmdir(speed)
            os.rename(f"{speed}.old", speed)

    def test_no_port(self):
        for library, adapters in itertools.product((None, program.library_without("VEXAPI_Ext")), ([], [{"Model": "M"}])):
            finished = run(host=program.host_file("empty", {"Adapters": adapters}), library=library)
            self.assertEqual((finished.returncode, finished.stdout), (0, ""))
            self.assertRegex(finished.stderr, r"\Aorfc: no Fibre Channel port; .*driver.*orfc --library simulator .*\n\Z")


class Libraries(Case):
    def test_each_function_is_needed(self):
        names = program.functions()
        self.assertEqual(len(names), 62)
        for name in names:
            library = program.library_without(f"{name}\0"[:-1])
            # Names that begin with this one are missing too.
            self.assertRegex(self.refused("ports", library=library),
                             rf"\A{re.escape(str(library))}: has no function {name}")

    def test_no_optional_function_is_needed(self):
        library = program.library_without("VEXAPI_Ext")
        for words in program.commands():
            finished = run(*words, library=library)
            self.assertEqual((finished.returncode, finished.stderr), (0, ""), words)
        # With fewer columns.
        self.assertIn("HOST", run("ports").stdout)
        self.assertNotIn("HOST", run("ports", library=library).stdout)
        self.assertNotIn("H:C:T:L", run("luns", library=library).stdout)

    def test_what_is_no_library(self):
        folder = program.FOLDER.name
        text = program.path_of("text.so")
        text.write_text("text\n" * 1000)
        other = program.BUILD / "tests/transcripts/librefuse_log.so"
        for library in ("/nonexistent/lib.so", "nonexistent.so", folder, text, "/dev/null", other):
            told = self.refused("ports", library=library)
            self.assertIn(str(library), told)
        self.assertIn("library", self.refused("ports", library="\x1b[31m"))

    def test_a_library_that_prints(self):
        """What a library prints on standard output is no part of the program's."""
        description = program.host_file("bad", "{")
        for library in (None, program.library_without("VEXAPI_ExtSetMessageHandler")):
            finished = run("ports", host=description, library=library)
            self.assertEqual((finished.returncode, finished.stdout), (1, ""))
            self.assertIn("orfc: ", finished.stderr)

    def test_default_is_the_one_beside_the_program(self):
        self.assertEqual(json.loads(run("-o", "json").stdout)["tool"]["library"],
                         str(program.BUILD / "libvexapi_fconly.so"))
        self.assertEqual(json.loads(run("-o", "json", library="linux", tree="fcoe").stdout)["tool"]["library"],
                         str(program.BUILD / "linux/libvexapi_fconly.so"))
        self.assertEqual(run("ports", library="simulator").stdout, run("ports").stdout)


class Roots(Case):
    def test_what_is_no_tree(self):
        os.makedirs(program.path_of("class/sys"))
        program.path_of("class/sys/class").write_text("")
        program.path_of("class/sys/class").chmod(0o755)
        for root, reason in (("/nonexistent", "No such file"), (program.FOLDER.name, "No such"),
                             (program.path_of("class"), "Not a directory")):
            told = self.refused("--root", str(root))
            self.assertIn(f"{root}: no sys/class in it", told)
            self.assertIn(reason, told)

    def test_a_tree_needs_no_library_option(self):
        self.assertEqual(run("ports", tree="fcoe").stdout, run("ports", tree="fcoe", library="linux").stdout)

    def test_a_relative_root(self):
        folder = program.tree_folder("fcoe")
        finished = run("ports", "--root", os.path.basename(folder), cwd=os.path.dirname(folder))
        self.assertEqual(finished.stdout, run("ports", tree="fcoe").stdout)


class Names(Case):
    def test_unknown_and_ambiguous(self):
        self.assertEqual(self.refused("show", "host99"), "nothing is named host99; did you mean host9 or host19 or host0?")
        self.assertIn("21:00:00:24:ff:7e:2d:9 is ambiguous: 21:00:00:24:ff:7e:2d:94, 21:00:00:24:ff:7e:2d:95",
                      self.refused("ports", "21:00:00:24:ff:7e:2d:9"))
        for command in json.loads(run("describe").stdout)["commands"]:
            if command["takes_names"]:
                self.assertIn("nothing is named zzz", self.refused(command["name"], "zzz"))
            elif command["name"] and not command["takes_file"]:
                self.assertIn("zzz", self.refused(command["name"], "zzz", status=2))

    def test_one_spelling(self):
        names = ("host9", "FC_21:00:00:24:FF:7E:2D:94", "0x21000024ff7e2d94", "pn-0x21000024FF7E2D94", "21000024ff7e2d94")
        self.assertEqual(len({run("ports", name, "-o", "csv").stdout for name in names}), 1)


class Output(Case):
    everything = [*(words + ["-o", name] for words in ([], ["paths"], ["counters"]) for name in FORMATS),
                  ["show", NAME], ["show", NAME, "-o", "json"], ["schema"], ["describe"], ["--help"], ["luns", "--help"],
                  ["--version"]]

    def test_full_disk(self):
        for words in self.everything:
            with self.subTest(words=words), open("/dev/full", "w", encoding="utf-8") as full:
                finished = run(*words, stdout=full)
                self.assertEqual((finished.returncode, finished.stderr),
                                 (1, "orfc: standard output: No space left on device\n"))

    def test_closed_pipe(self):
        """The reader takes a line and goes. With and without a signal."""
        for words, handler in itertools.product(self.everything, (signal.SIG_DFL, signal.SIG_IGN)):
            with self.subTest(words=words, handler=handler):
                process = subprocess.Popen([program.PROGRAM, *words], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                           env=program.environment_of(), restore_signals=False,
                                           preexec_fn=lambda h=handler: signal.signal(signal.SIGPIPE, h))
                process.stdout.readline()
                process.stdout.close()
                self.assertEqual((process.wait(60), process.stderr.read()), (0, b""))
                process.stderr.close()

    def test_closed_pipe_ends_ticks(self):
        process = subprocess.Popen([program.PROGRAM, "counters", "--interval", "0.1", NAME], stdout=subprocess.PIPE,
                                   env=program.environment_of())
        process.stdout.readline()
        process.stdout.close()
        self.assertEqual(process.wait(60), 0)

    def test_no_output_at_all(self):
        for words in (["ports"], ["ports", "-o", "json"]):
            finished = run(*words, stdout=None, preexec_fn=lambda: os.close(1))
            self.assertEqual(finished.returncode, 1)
            self.assertEqual(finished.stderr, "orfc: standard output: Bad file descriptor\n")

    def test_no_place_for_messages(self):
        finished = run("ports", "nothing", stderr=None, preexec_fn=lambda: os.close(2))
        self.assertEqual((finished.returncode, finished.stdout), (1, ""))

    def test_colours_only_on_demand(self):
        self.assertNotIn("\x1b", run().stdout)
        self.assertNotIn("\x1b", run("--color", "never").stdout)
        self.assertIn("\x1b[32monline\x1b[0m", run("--color", "always").stdout)
        self.assertIn("\x1b[32m", run("--color", "always", environment={"NO_COLOR": "1"}).stdout)
        for name in ("json", "csv", "esxcli"):
            self.assertNotIn("\x1b", run("--color", "always", "-o", name).stdout)


class Ticks(Case):
    def test_blocks(self):
        begun = time.monotonic()
        finished = run("counters", "host9", "--interval", "0.1", "--count", "3")
        seconds = time.monotonic() - begun
        blocks = finished.stdout.split("\n\n")
        self.assertEqual((finished.returncode, len(blocks)), (0, 3))
        first, *others = ([line.split() for line in block.splitlines()] for block in blocks)
        self.assertEqual(first[0], ["COUNTER", "VALUE"])
        for lines in others:
            self.assertEqual(lines[0], ["COUNTER", "VALUE", "INCREASE", "PER", "SECOND"])
            # The lab's counters move by a step a reading; those that don't aren't there.
            frames = {line[0]: line for line in lines}["tx_frames"]
            self.assertEqual(frames[2], "600")
            # The rate is that of the time which went by, and not of the interval.
            self.assertGreater(float(frames[3]), 600 / seconds)
            self.assertLess(float(frames[3]), 600 / 0.1 * 1.01)
            self.assertNotIn("lip_count", {line[0] for line in lines})

    def test_a_name_after_the_options(self):
        self.assertEqual(run("counters", "--interval", "0.1", "--count", "1", "host9").stdout,
                         run("counters", "host9").stdout)

    def test_csv_blocks(self):
        text = run("counters", "host9", "--interval", "0.1", "--count", "2", "-o", "csv", text=False).stdout
        self.assertEqual(text.count(b"\r\n\r\nport,target,counter"), 1)
        self.assertEqual(text.count(b"\n"), text.count(b"\r\n"))

    def test_a_host_that_changes(self):
        """A port comes and one goes between two readings."""
        port = {"WWNN": "20:00:00:00:00:00:00:01", "WWPN": "21:00:00:00:00:00:00:01", "Counters": {"tx_frames": 1}}
        other = {"WWNN": "20:00:00:00:00:00:00:02", "WWPN": "21:00:00:00:00:00:00:02", "Counters": {"tx_frames": 1},
                 "Targets": [{"PortName": "50:00:00:00:00:00:00:03"}]}

        def describe(*ports):
            # In one step, as a program that reads may look at any time.
            new = program.host_file("changing.new", {"Adapters": [{"PhyPorts": [{"Protocols": [port]} for port in ports]}]})
            return os.replace(new, new.with_name("changing.json")) or new.with_name("changing.json")
        environment = program.environment_of(describe(port))
        for words, told in ((["-o", "json"], None), ([], None), ([NAME_OF_ONE], "nothing is named")):
            describe(port)
            process = subprocess.Popen([program.PROGRAM, "counters", "--interval", "0.3", "--count", "2", *words],
                                       stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, env=environment)
            first = process.stdout.readline()
            describe(other)
            output, messages = process.communicate(timeout=60)
            if told:
                self.assertEqual(process.returncode, 1)
                self.assertIn(told, messages)
                continue
            lines = ["FC_21:00:00:00:00:00:00:01: has gone", "FC_21:00:00:00:00:00:00:02: is new",
                     "FC_21:00:00:00:00:00:00:02_Target_50:00:00:00:00:00:00:03: is new"]
            self.assertEqual((process.returncode, messages.splitlines()), (0, [f"orfc: {line}" for line in lines]))
            if words:
                self.assertEqual(json.loads(output)["messages"], lines)
                self.assertEqual(json.loads(first)["messages"], [])

    def test_a_library_that_fails_later(self):
        """A script that reads lines gets an answer in any case."""
        finished = run("counters", "--interval", "0.1", "--count", "3", "-o", "json",
                       environment={"VEXAPI_SIM_FAULTS": "VEXAPI_Initialize@2=5"})
        answers = [json.loads(line) for line in finished.stdout.splitlines()]
        self.assertEqual((finished.returncode, [answer["ok"] for answer in answers]), (1, [True, False]))


NAME_OF_ONE = "FC_21:00:00:00:00:00:00:01"

# Texts that no terminal may follow, and that no parser of XML takes.
HOSTILE = (b"\x1b[31m", b"\x1b]0;x\x07", b"\x9b2J", b"\xc2\x9b2J", b"\xe2\x80\xae", b"\xe2\x81\xa6", b"\xd8\x9c", b"\xff\xfe",
           b"\xc0\xaf", b"\xed\xa0\x80", b"\xef\xbf\xbf", b"\r\n", b"\x7f", b"]]>", b'",\'', b"<&>", b"%s%n")


class Hostile(Case):
    @classmethod
    def setUpClass(cls):
        texts = itertools.cycle(HOSTILE)

        def text(size):
            raw = (next(texts) + b"A" + next(texts))[:size].ljust(2, b"A")
            return {"bytes": raw.hex(":")}
        kernel = {"KernelName": text(32), "State": text(32)}
        lun = {"LunNumber": 1, "VendorId": text(8), "ProductId": text(16),
               "Kernel": {"Address": text(48), "Device": text(32), "State": text(32), "AccessState": text(32),
                          "WorldwideId": text(256), "Map": text(128), "MapDevice": text(32), "MapId": text(256),
                          "MapState": text(32), "MapPathState": text(32)}}
        target = {"PortName": "50:00:00:00:00:00:00:03", "VendorId": text(8), "ProductId": text(16),
                  "SerialNumber": text(64), "StorageNqn": text(256), "Luns": [lun], "Counters": {"a": 1},
                  "Kernel": dict(kernel, Roles=text(64))}
        port = {"WWNN": "20:00:00:00:00:00:00:01", "WWPN": "21:00:00:00:00:00:00:01", "DriverVersion": text(64),
                "RunningFwVersion": text(32), "BiosVersion": text(32), "HostNQN": text(256), "Targets": [target],
                "CreditRecovery": {"Reason": text(64)}, "Counters": {"a": 1},
                "Kernel": dict(kernel, Device=text(64), Driver=text(32), SymbolicName=text(256)),
                "Transceiver": {"file": str(program.ROOT / "tests/data/transceivers/cisco-finisar-10g-lr.hex"),
                                "patch": {"20": HOSTILE[0].ljust(16).hex(":"), "63": "bd"}},
                "Vpd": {"bytes": (b"\x90\x0b\0PN\x08" + (b"\x1b[31m\xff\xfe\x7f") + b"\x78").hex(":")}}
        cls.host = program.host_file("hostile", {"Adapters": [
            {"Model": text(32), "SerialNumber": text(32), "Manufacturer": text(64), "FlashFwVersion": text(32),
             "PhyPorts": [{"Protocols": [port]}]}]})

    def check_harmless(self, raw, colored=False):
        """Nothing but characters that stay where they are."""
        text = raw.decode()  # which is strict
        if colored:
            text = re.sub("\x1b\\[(?:0|31|32|33)m", "", text)
        self.assertNotRegex(text, "[\0-\x09\x0b\x0c\x0e-\x1f\x7f-\x9f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069\ufffe\uffff]")
        self.assertNotRegex(text, "\r(?!\n)")

    def test_every_command_in_every_format(self):
        for words, name in itertools.product(program.commands(), FORMATS):
            if words[:1] == ["show"] and name == "esxcli":
                continue
            words = [NAME_OF_ONE if word == NAME else word for word in words]
            with self.subTest(words=words, format=name):
                finished = run(*words, "-o", name, "--color", "always", host=self.host, text=False)
                self.assertEqual((finished.returncode, finished.stderr), (0, b""))
                self.check_harmless(finished.stdout, colored=name in ("table", "wide"))
                if name == "json":
                    self.assertTrue(finished.stdout.isascii())
                    json.loads(finished.stdout)
                if name == "esxcli":
                    xml.parsers.expat.ParserCreate().Parse(finished.stdout, True)

    def test_bytes_are_in_json(self):
        adapter = program.records("adapters", host=self.host)[0]
        raw = {key[:-4]: bytes.fromhex(text) for key, text in adapter.items() if key.endswith("_hex")}
        self.assertTrue(raw)
        for key, value in raw.items():
            with self.assertRaises(UnicodeDecodeError):
                value.decode()
            self.assertIn("\ufffd", adapter[key])

    def test_names(self):
        """Names of hostile objects, and hostile names."""
        for name in ("z\x1b[31m", "z\u202e", "z\n", "z\x9b", b"z\xff\xfe", "x" * 65536, "\n" * 65536, "%s%n" * 100):
            finished = run("ports", name, host=self.host, text=False)
            self.assertEqual((finished.returncode, finished.stdout), (1, b""))
            self.check_harmless(finished.stderr)
            self.assertEqual(finished.stderr.count(b"\n"), 1)
            self.assertLess(len(finished.stderr), 6100)

    def test_ambiguous_names_of_hostile_objects(self):
        finished = run("ports", "a", host=self.host, text=False)  # "Adapter_…"
        self.assertIn(finished.returncode, (0, 1))
        self.check_harmless(finished.stderr)
        near = program.records("adapters", host=self.host)[0]["serial_number"] + "!"
        finished = run("ports", near, host=self.host, text=False)
        self.assertEqual(finished.returncode, 1)
        self.assertIn(b"did you mean", finished.stderr)
        self.check_harmless(finished.stderr)

    def test_words(self):
        for words in (["\x1b[31m"], ["--\x1b[31m"], ["-o", "\u202e\n"], ["--color", b"\xff"], ["ports", "--sort", "\x9b"],
                      ["--root", "/\x1b[31m"], ["--library", "/\x1b[31m"], ["ports", "--columns", "\x07"]):
            finished = run(*words, text=False)
            self.assertIn(finished.returncode, (1, 2))
            self.check_harmless(finished.stderr)
            self.assertEqual(finished.stderr.count(b"\n"), 1)

    def test_what_a_library_tells(self):
        for key in ("\x1b[31m\n\u202e", "x" * 65536):
            host = program.host_file("told", {"Adapters": [], key: 1})
            finished = run("ports", "-o", "json", host=host, text=False)
            self.assertEqual(finished.returncode, 1)
            self.check_harmless(finished.stderr)
            self.assertEqual(finished.stderr.count(b"\n"), 1)
            self.assertLess(len(finished.stderr), 2100)
            self.assertIn(key[:10], json.loads(finished.stdout)["messages"][0])

    def test_failures_of_hostile_objects(self):
        faults = ",".join(f"{name}=5" for name in ("VEXAPI_GetVpd", "VEXAPI_ExtGetPort", "VEXAPI_ExtGetLun"))
        finished = run("adapters", "-o", "csv", host=self.host, text=False, environment={"VEXAPI_SIM_FAULTS": faults})
        self.assertEqual(finished.returncode, 3)
        self.assertIn(b"vital product data: failed with status 5", finished.stderr)
        self.check_harmless(finished.stderr)


if __name__ == "__main__":
    unittest.main()
