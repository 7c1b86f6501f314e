#!/usr/bin/python3
"""Every command on the trees of Linux hosts, with the library reading what the command asks for and with it reading
everything: documents, exit statuses and traces must be the same. What the command doesn't show must not be read."""
import concurrent.futures
import itertools
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
BUILD = pathlib.Path(sys.argv.pop(sys.argv.index("--build") + 1)).resolve()
sys.argv.remove("--build")
DESCRIPTION = json.loads((BUILD / "integration/orfc-esxcli.json").read_text("utf-8"))
DATA = HERE.parent / "data/sysfs"
LOG = pathlib.Path("/var/tmp/vexapi-output.log")
NAME = re.compile(r"<string>((?:Adapter|FC)_[^<]*)</string>")


def command_lines(family, command, identifiers):
    """The words of a command for each identifier that it takes and, of a report, for what is none."""
    words = [*family["words"], command["name"]]
    arguments = command["arguments"]
    if not arguments:
        return [words]
    names = identifiers[arguments[0]["kind"]]
    choices = arguments[1].get("words", ["7"]) if len(arguments) > 1 and arguments[1]["required"] else [None]
    if command["changes"]:
        names, choices = names[:1], choices[:1]
    lines = [[*words, name, *([choice] if choice else [])] for name in names for choice in choices]
    if family["path"][-1] == "info":
        wrong = [others[0] for others in identifiers.values() if others and others is not names]
        wrong += [line for name in names[:1] for line in (name.upper(), f"{name}0")]
        lines += [words, [*words, "help"], *([*words, name] for name in wrong)]
    return lines


def all_command_lines(identifiers):
    for family in DESCRIPTION["families"]:
        for command in family["commands"]:
            yield from command_lines(family, command, identifiers)
    port = identifiers["port"][0]
    yield from (["-t", "port", "-s", "info", "getcli", port], [port, "-t", "port", "get", "-s", "info"],
                ["-t", "port", "help"], ["help"], ["-t", "port", "-s", "info", "nothing"], ["-t", "port"], ["list"])


class Case(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name, "tree")
        self.sys = self.root / "sys"
        self.everything = {"LD_PRELOAD": BUILD / "tests/hosts/libno_scope.so"}

    def unpack(self, name):
        subprocess.run([HERE / "tree", "unpack", DATA / f"{name}.tree", self.root], check=True)

    def generate(self, ports, luns):
        subprocess.run([HERE / "generate", str(ports), str(luns), self.root], check=True)

    def write(self, path, text):
        file = self.sys / path
        file.unlink(missing_ok=True)
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def run_program(self, words, variables=None):
        environment = {**os.environ, "LD_LIBRARY_PATH": str(BUILD / "linux"), "VEXAPI_SYSFS_ROOT": str(self.root),
                       **(variables or {})}
        run = subprocess.run([BUILD / "orfc-esxcli", *words], env=environment, capture_output=True, check=False)
        return run.returncode, run.stdout.decode("latin-1"), run.stderr.decode("latin-1")

    def identifiers(self, are_all=False):
        """Of each kind the first and the last, or all."""
        found = {}
        for kind in ("adapter", "port", "target", "lun"):
            names = list(dict.fromkeys(NAME.findall(self.run_program(["-t", kind, "list"], self.everything)[1])))
            found[kind] = names if are_all else names[:1] + names[1:][-1:]
        return found

    def compare(self, are_all=False):
        lines = list(all_command_lines(self.identifiers(are_all)))
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            limited = pool.map(self.run_program, lines)
            whole = pool.map(self.run_program, lines, itertools.repeat(self.everything))
            outcomes = list(zip(lines, limited, whole))
        for words, mine, full in outcomes:
            self.assertEqual(mine, full, " ".join(words))
        return sum("Message\"><string>Success" in mine[1].replace("\n", "") for _, mine, _ in outcomes)


class SameDocuments(Case):
    """On each tree some commands must succeed, or there would be little to compare."""

    def test_ports_targets_luns_and_namespaces(self):
        self.unpack("fcoe")
        self.assertGreater(self.compare(), 10)

    def test_faults(self):
        self.unpack("degraded")
        self.assertGreater(self.compare(), 10)

    def test_a_virtual_port(self):
        self.unpack("npiv")
        self.assertGreater(self.compare(), 10)

    def test_cards_with_two_ports(self):
        self.generate(6, 40)
        self.assertGreater(self.compare(), 10)

    def test_no_port_and_no_tree(self):
        names = {"adapter": ["Adapter_A_B"], "port": ["FC_20:00:02:00:00:00:a0:01"], "target": [], "lun": []}
        self.identifiers = lambda are_all: names
        self.compare()
        (self.sys / "class").mkdir(parents=True)
        self.compare()

    def test_values_of_neighbours(self):
        self.generate(6, 12)
        # Only the second port tells the model of the first adapter, and only the first one its serial number.
        self.write("class/fc_host/host0/model", "\n")
        self.write("class/fc_host/host1/serial_number", "unknown\n")
        # The second adapter has no name at all. The third one's model is on the card, and its name the first one's.
        for host in (2, 3):
            self.write(f"class/fc_host/host{host}/model", "\n")
            self.write(f"class/fc_host/host{host}/serial_number", "\n")
        for path in self.sys.glob("bus/pci/devices/0000:0[12]:00.*/vpd"):
            path.unlink()
        for host in (4, 5):
            self.write(f"class/fc_host/host{host}/model", "\n")
            self.write(f"class/fc_host/host{host}/serial_number", "SYN00000\n")
        # Two ports of one name, and two targets of one name.
        self.write("class/fc_host/host3/port_name", (self.sys / "class/fc_host/host0/port_name").read_text())
        self.write("class/fc_host/host5/port_name", "0x0\n")
        self.write("class/fc_remote_ports/rport-1:0-0/port_name", "0x50001d0c00000000\n")
        # LUNs whose numbers have the same first level; the first has no inquiry data.
        first = (self.sys / "bus/scsi/devices/0:0:0:0").resolve()
        (first / "inquiry").unlink()
        subprocess.run(["cp", "-r", first, first.with_name("0:0:0:65536")], check=True)
        (self.sys / "bus/scsi/devices/0:0:0:65536").symlink_to(
            os.path.relpath(first.with_name("0:0:0:65536"), self.sys / "bus/scsi/devices"))
        self.assertGreater(self.compare(are_all=True), 15)

    def test_targets_that_share_a_remote_port(self):
        self.unpack("fcoe")
        # A remote port of an NVMe target, and two controllers; without an NQN, the second takes the first one's place.
        self.write("class/fc_remote_ports/rport-0:0-1/port_name", "0x200002000000c010\n")
        self.write("class/fc_remote_ports/rport-0:0-1/roles", "NVMe Target\n")
        controllers = (self.sys / "class/nvme/nvme0").resolve().parent
        subprocess.run(["cp", "-r", controllers / "nvme0", controllers / "nvme2"], check=True)
        (self.sys / "class/nvme/nvme2").symlink_to("../../devices/virtual/nvme-fabrics/ctl/nvme2")
        self.write("class/nvme/nvme0/subsysnqn", "\n")
        self.write("class/nvme/nvme0/hostnqn", "\n")
        self.assertGreater(self.compare(), 10)

    def test_traces(self):
        self.generate(2, 4)
        for words in (["-t", "lun", "list"], ["-t", "port", "-s", "info", "get", self.identifiers()["port"][-1]]):
            traces = []
            for variables in ({}, self.everything):
                log = pathlib.Path("/var/tmp/orfc-esxcli.log")
                log.unlink(missing_ok=True)
                self.run_program(words, {"ORFC_DEBUG_LEVEL": "255", **variables})
                traces.append(re.sub(r"(?m)^\S+ \S+ (CIM Provider \S+ *)\d+", r"\1", log.read_text("latin-1")))
            self.assertGreater(len(traces[0].splitlines()), 50)
            self.assertEqual(*traces)


class WhatIsRead(Case):
    """Folders in the place of files: the library tells of each that it tries to read."""

    def told(self, words):
        LOG.unlink(missing_ok=True)
        self.run_program(words)
        lines = re.findall("^vexapi linux: (.*): Is a directory$", LOG.read_text(), re.MULTILINE)
        return sorted(line.rpartition("devices/")[2].replace("//", "/") for line in lines)

    def set_traps(self, *patterns):
        for pattern in patterns:
            for path in list(self.sys.glob(pattern)):
                if not path.is_dir():
                    path.unlink()
                    path.mkdir()

    def setUp(self):
        super().setUp()
        self.generate(4, 8)

    def test_only_what_a_list_shows(self):
        self.set_traps("class/fc_host/*/[!p]*", "class/fc_host/*/port_[!n]*", "class/fc_host/*/statistics/*",
                       "bus/pci/devices/*/*", "class/fc_remote_ports/*/node_name", "bus/scsi/devices/*:*:*:*/[!b]*",
                       "class/block/*/size")
        for kind in ("port", "target", "lun"):
            self.assertEqual(self.told(["-t", kind, "list"]), [])

    def test_only_the_adapters_for_their_list(self):
        self.set_traps("bus/pci/devices/*/vpd", "bus/pci/devices/*/vendor", "class/fc_host/*/speed",
                       "class/fc_host/*/manufacturer", "class/fc_host/*/statistics/*", "class/fc_host/host0/model")
        self.assertEqual(self.told(["-t", "adapter", "list"]),
                         sorted(["pci0000:00/0000:00:00.0/0000:01:00.0/vendor",
                                 "pci0000:00/0000:00:00.1/0000:02:00.0/vendor",
                                 *(f"host{n}/manufacturer" for n in range(4)), "host0/model"]))

    def test_only_the_port_that_is_named(self):
        self.set_traps("class/fc_host/*/speed", "class/fc_host/*/statistics/tx_frames", "bus/pci/devices/*/vpd",
                       "class/fc_host/*/statistics/lip_count", "class/fc_host/*/model", "class/fc_remote_ports/*/roles")
        port = "FC_21:00:1d:0c:00:00:00:01"
        self.assertEqual(self.told(["-t", "port", "-s", "info", "get", port]),
                         ["0000:01:00.0/vpd", "host0/model", "host1/model", "host1/speed"])
        self.assertEqual(self.told(["-t", "port", "-s", "stats", "get", port, "Driver"]),
                         ["host1/statistics/lip_count"])
        self.assertEqual(self.told(["-t", "port", "-s", "vpd", "get", port]), ["host1: vital product data"])

    def test_only_the_target_that_is_named(self):
        self.set_traps("class/fc_remote_ports/*/node_name", "bus/scsi/devices/*:*:*:*/inquiry", "class/block/*/size")
        target = "FC_21:00:1d:0c:00:00:00:02_Target_50:00:1d:0c:00:00:00:02"
        self.assertEqual(self.told(["-t", "target", "-v", "info", "get", target]),
                         ["2:0:0:0/inquiry", "rport-2:0-0/node_name"])

    def test_only_the_lun_that_is_named(self):
        self.set_traps("class/fc_remote_ports/*/node_name", "bus/scsi/devices/*:*:*:*/inquiry", "class/block/*/size")
        lun = "FC_21:00:1d:0c:00:00:00:01_Target_50:00:1d:0c:00:00:00:01_LUN_1"
        self.assertEqual(self.told(["-t", "lun", "-v", "info", "get", lun]), ["1:0:0:1/inquiry", "block/sdd/size"])

    def test_everything_where_the_identifier_is_none(self):
        self.set_traps("class/fc_host/*/speed")
        self.assertEqual(self.told(["-t", "port", "-s", "info", "get", "FC_1"]), [f"host{n}/speed" for n in range(4)])

    def test_everything_at_the_prompt(self):
        self.set_traps("class/fc_host/*/speed", "class/block/*/size")
        LOG.unlink(missing_ok=True)
        self.assertEqual(len(self.told([])), 4 + 8)


if __name__ == "__main__":
    unittest.main()
