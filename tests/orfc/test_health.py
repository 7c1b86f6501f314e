#!/usr/bin/python3
"""Verdicts: the file of rules, the line for checkers, and the file of earlier readings with those who would harm it."""
import fcntl
import itertools
import json
import os
import pathlib
import re
import subprocess
import time
import unittest

import program
from program import run

PORT = "FC_21:00:00:24:ff:7e:2d:94"


def host(name="health", adapters=None, **port):
    """The description of a host with a port that is well."""
    port = {"WWPN": "21:00:00:24:ff:7e:2d:94", "PortSpeed": 22, "Kernel": {"KernelName": "host1", "State": "Online"},
            "Counters": {"invalid_crc_count": 0}, "Fec": 1,
            "Transceiver": str(program.ROOT / "simulator/lab/sfp28-shortwave.hex"), **port}
    return program.host_file(name, {"Adapters": adapters if adapters is not None else [
        {"Model": "M", "SerialNumber": "S", "PhyPorts": [{"Protocols": [port]}]}]})


class Case(unittest.TestCase):
    def setUp(self):
        self.state = program.path_of("state.json")
        for file in program.path_of("").glob("state*"):
            file.unlink() if not file.is_dir() else file.rmdir()

    def health(self, *words, status=0, state=None, **more):
        finished = run("health", "--state", str(state if state is not None else self.state), *words, **more)
        self.assertEqual(finished.returncode, status, finished.stderr)
        return finished

    def rules(self, **more):
        """The rules that apply, with their figures."""
        records = json.loads(self.health("-o", "json", **more).stdout)["records"]
        return {record["rule"]: record["figures"] for record in records if record["verdict"] != "ok"}


class Rules(Case):
    def test_bounds_and_switches(self):
        file = program.path_of("rules.json")
        down = host(Kernel={"State": "Linkdown"}, Temperature=81)
        self.assertEqual(set(self.rules(host=down)), {"link-down", "board-hot"})
        for text, expected in (("{}", {"link-down", "board-hot"}), ('{"link-down": false}', {"board-hot"}),
                               ('{"link-down": true, "board-hot": {"celsius": 81}}', {"link-down"}),
                               ('{"board-too-hot": {"celsius": -1e1}}', {"link-down", "board-hot", "board-too-hot"})):
            file.write_text(text)
            records = json.loads(self.health("--rules", str(file), "-o", "json", host=down).stdout)["records"]
            self.assertEqual({record["rule"] for record in records if record["rule"]}, expected)
        file.write_text('{"board-hot": {"celsius": 70.5}, "link-down": false}')
        self.assertIn("  celsius 70.5: ", run("health", "--rules", str(file), "--explain", "board-hot").stdout)
        self.assertIn("switched off", run("health", "--rules", str(file), "--explain", "link-down").stdout)

    def test_mistakes(self):
        file = program.path_of("rules.json")
        for text, told in (
                ("", ":1:1: is no JSON"), ("{\n  \"link-down\": nein}", ":2:17: is no JSON"), ("[]", ": is no object"),
                ('{"lnk-down": false}', ": lnk-down: no rule has this name"),
                ('{"link-down": 5}', ": link-down: is neither true, false nor an object of bounds"),
                ('{"crc-rate": {"per_hour": 5}}', ": crc-rate/per_hour: the rule has no such bound"),
                ('{"link-down": {"x": 5}}', ": link-down/x: the rule has no such bound"),
                ('{"crc-rate": {"per_minute": "5"}}', ": crc-rate/per_minute: is no number"),
                ('{"crc-rate": {"per_minute": 1e999}}', ": is no JSON"), ('{"crc-rate": {"per_minute": NaN}}', ":1:29: is no JSON"),
                ('{"link-down": false, "link-down": true}', ": link-down stands there twice"),
                ('{"crc-rate": {"increase": 1, "increase": 2}}', ": increase stands there twice"),
                ("[" * 100000, "is no JSON"), (" " * 1100000, ": File too large")):
            file.write_text(text)
            finished = self.health("--rules", str(file), status=2)
            self.assertEqual(finished.stdout, "")
            self.assertRegex(finished.stderr, r"\Aorfc: [^\n]+\n\Z")
            self.assertIn(str(file), finished.stderr)
            self.assertIn(told, finished.stderr)
        os.mkfifo(fifo := program.path_of("fifo"))
        for name, told in (("/nonexistent", "No such file"), (fifo, "Invalid"), ("/", "Invalid"), ("/dev/zero", "Invalid")):
            self.assertIn(f"{name}: {told}", self.health("--rules", str(name), status=2).stderr)
        self.assertEqual(self.health("--nagios", "--rules", "/nonexistent", status=3).stdout,
                         "ORFC UNKNOWN - /nonexistent: No such file or directory\n")

    def test_each_is_explained(self):
        for rule in json.loads(run("describe").stdout)["rules"]:
            finished = run("health", "--explain", rule["name"])
            self.assertEqual((finished.returncode, finished.stderr), (0, ""))
            for text in (rule["name"], rule["text"], rule["severity"], rule["subject"], rule["meaning"], rule["remedy"],
                         *(bound["name"] for bound in rule["bounds"])):
                self.assertIn(text, finished.stdout)
        finished = run("health", "--explain", "nothing")
        self.assertEqual((finished.returncode, finished.stdout), (2, ""))
        self.assertRegex(finished.stderr, "no rule is named nothing; there are .*link-down")


class Checker(Case):
    """--nagios: status and one line with performance data."""
    line = re.compile(r"ORFC (OK|WARNING|CRITICAL|UNKNOWN) - [^|\n]+( \| ('[^'|=\n]+'|\w+)=\S+( ('[^'|=\n]+'|\w+)=\S+)*)?\n")

    def check(self, status, *words, **more):
        finished = self.health("--nagios", *words, status=status, **more)
        self.assertRegex(finished.stdout, rf"\A{self.line.pattern}\Z")
        self.assertTrue(finished.stdout.startswith("ORFC " + ("OK", "WARNING", "CRITICAL", "UNKNOWN")[status]))
        return finished.stdout

    def test_statuses(self):
        self.assertIn("critical=0 warning=0 unknown=0 ok=4", self.check(0, host=host()))
        self.assertIn(f"{PORT}: forward error correction is off (off at 16 Gb/s)", self.check(1, host=host(Fec=0)))
        self.assertIn(f"{PORT}: the link is down (Linkdown)", self.check(2, host=host(Kernel={"State": "Linkdown"}, Fec=0)))
        self.assertIn("failed with status 5", self.check(3, host=host(), environment={"VEXAPI_SIM_FAULTS": "VEXAPI_GetSFPData=5"}))
        # What is wrong comes before what isn't known.
        self.check(1, host=host(Fec=0), environment={"VEXAPI_SIM_FAULTS": "VEXAPI_GetSFPData=5"})

    def test_what_ends_the_program(self):
        for words, more in (([], {"host": "/nonexistent"}), (["nothing"], {}), ([], {"library": "/nonexistent"}),
                            (["--interval", "0"], {}), (["--nothing"], {}), (["-o", "json"], {}), (["--interval"], {})):
            line = self.check(3, *words, **more)
            self.assertNotIn("|", line)

    def test_performance_data(self):
        data = self.check(2).split("|")[1]
        self.assertIn(" 'FC_21:00:00:24:ff:92:0f:38 transmit dBm'=-2.18;-5.00:-1.00;-6.00:0.00", data)

    def test_hostile_texts(self):
        adapters = [{"Model": "a|b'\n\x1b[31m", "SerialNumber": {"bytes": "ff:fe:7c"}, "PhyPorts": [{"Protocols": [
            {"WWPN": f"21:00:00:00:00:00:00:0{number}", "PortSpeed": speed} for number, speed in ((1, 22), (2, 50))]}]}]
        self.assertIn("ports of one adapter", self.check(1, host=host("hostile", adapters)))


class Readings(Case):
    def test_growth_between_runs(self):
        self.assertEqual(self.rules(host=host()), {})
        grown = host(Counters={"invalid_crc_count": 4})
        self.assertRegex(self.rules(host=grown)["errors-growing"], r"\Ainvalid_crc_count \+4 in [\d.]+ s\Z")
        self.assertEqual(self.rules(host=grown), {})
        self.assertRegex(self.rules(host=host(Counters={"invalid_crc_count": 3}))["errors-growing"], r"\+3 in")

    def test_growth_in_an_interval(self):
        grows = host(Counters={"invalid_crc_count": {"value": 5, "step": 7}})
        started = time.monotonic()
        finished = self.health("--interval", "0.2", host=grows)
        self.assertGreater(time.monotonic() - started, 0.2)
        self.assertRegex(finished.stdout, r"invalid_crc_count \+7 in [\d.]+ s")
        self.assertEqual(finished.stdout.count("OBJECTS"), 1)
        self.assertFalse(self.state.exists())

    def test_names_leave_other_ports_alone(self):
        self.health()
        before = json.loads(self.state.read_text())["ports"]
        self.health("host9")
        after = json.loads(self.state.read_text())["ports"]
        self.assertEqual(set(before), set(after))
        self.assertEqual({name for name in after if before[name] != after[name]}, {PORT})

    def test_no_file(self):
        self.health(state="")
        home = program.path_of("home")
        run("health", tree="fcoe", environment={"HOME": str(home), "XDG_STATE_HOME": ""})
        self.assertFalse(home.exists())

    def test_usual_file(self):
        """An ordinary user's; of root's only the name is known here."""
        if os.geteuid() != 0:
            self.skipTest("needs to be another user")
        folder = program.path_of("xdg")
        folder.mkdir()
        folder.chmod(0o777)
        program.path_of("").chmod(0o755)
        for more, file in (({"XDG_STATE_HOME": str(folder)}, folder / "orfc/health.json"),
                           ({"XDG_STATE_HOME": "relative", "HOME": str(folder)}, folder / ".local/state/orfc/health.json")):
            finished = run("health", environment=more, user=65534)
            self.assertEqual((finished.returncode, finished.stderr), (0, ""))
            information = file.stat()
            self.assertEqual((information.st_mode & 0o777, information.st_uid), (0o600, 65534))
            self.assertEqual(file.parent.stat().st_mode & 0o777, 0o700)

    def test_files_that_are_none_of_readings(self):
        for text in ("text", "{}", "[]", '{"format": "other", "version": 1}', '{"format": "orfc-readings"}',
                     '{"format": "orfc-readings", "version": 1, "ports": {"x": 5}}',
                     '{"format": "orfc-readings", "version": 1, "ports": {"x": {"time": "now"}}}', " " * 2000000,
                     "[" * 100000):
            self.state.write_text(text)
            finished = self.health(status=3, host=host())
            self.assertRegex(finished.stderr, rf"\Aorfc: earlier readings: {re.escape(str(self.state))}: [^\n]+\n\Z")
            self.assertIn("link", finished.stdout)
            self.assertEqual(self.state.read_text(), text)

    def test_other_versions_and_an_empty_file(self):
        for text in ("", '{"format": "orfc-readings", "version": 0, "readings": []}', '{"format": "orfc-readings", "version": 99}'):
            self.state.write_text(text)
            self.assertEqual(self.rules(host=host()), {})
            self.assertEqual(json.loads(self.state.read_text())["version"], 1)

    def refused(self, told):
        before = self.state.lstat()
        finished = self.health(status=3, host=host())
        self.assertIn(told, finished.stderr)
        self.assertIn("OBJECTS", finished.stdout)  # the verdicts are there all the same
        self.assertEqual(self.state.lstat().st_ino, before.st_ino)

    def test_links_and_other_kinds_of_files(self):
        precious = program.path_of("state-precious")
        precious.write_text("")
        self.state.symlink_to(precious)
        self.refused("symbolic links")
        self.state.unlink()
        os.link(precious, self.state)
        self.refused("is no file of this user alone")
        self.state.unlink()
        os.mkfifo(self.state)
        self.refused("is no file of this user alone")
        self.state.unlink()
        self.state.mkdir()
        self.refused(str(self.state))
        self.assertEqual(precious.read_text(), "")

    def test_files_of_others(self):
        if os.geteuid() != 0:
            self.skipTest("needs to make a file of another user")
        self.state.write_text("")
        os.chown(self.state, 65534, 65534)
        self.refused("is no file of this user alone")

    def test_links_in_the_place_of_the_other_files(self):
        precious = program.path_of("state-precious")
        precious.write_text("precious")
        pathlib.Path(f"{self.state}.lock").symlink_to(precious)
        self.assertIn("readings aren't kept", self.health(status=3, host=host()).stderr)
        os.unlink(f"{self.state}.lock")
        pathlib.Path(f"{self.state}.new").symlink_to(precious)
        self.health(host=host())
        self.assertEqual(precious.read_text(), "precious")
        self.assertTrue(self.state.is_file() and not self.state.is_symlink())

    def test_folders(self):
        file = program.path_of("state-file")
        file.write_text("")
        for state in (file / "x.json", "/proc/x.json", "/dev/full/x.json"):
            finished = self.health(status=3, state=state, host=host())
            self.assertIn(str(state), finished.stderr)

    def test_no_room(self):
        self.health(host=host())
        before = self.state.read_bytes()
        full = ["bash", "-c", 'trap "" XFSZ; ulimit -f 0; exec "$@"', "-", program.PROGRAM, "health", "--state", str(self.state)]
        finished = subprocess.run(full, env=program.environment_of(host()), text=True, stdout=subprocess.PIPE,
                                  stderr=subprocess.PIPE, timeout=60, check=False)
        self.assertEqual(finished.returncode, 3)
        self.assertIn("File too large", finished.stderr)
        self.assertEqual(self.state.read_bytes(), before)
        self.assertEqual(sorted(path.name for path in program.path_of("").glob("state*")), ["state.json", "state.json.lock"])

    def test_a_lock_that_is_held(self):
        self.health(host=host())
        with open(f"{self.state}.lock", "w", encoding="utf-8") as lock:
            self.assertEqual(os.fstat(lock.fileno()).st_mode & 0o777, 0o600)
            fcntl.flock(lock, fcntl.LOCK_EX)
            self.assertIn("another run holds it", self.health(status=3, host=host()).stderr)

    def test_runs_at_once(self):
        """Of other ports each: no reading is lost."""
        names = [f"host{number}" for number in (1, 3, 9, 10, 11, 12, 15, 16)]
        runs = [subprocess.Popen([program.PROGRAM, "health", "--state", str(self.state), name],
                                 stdout=subprocess.DEVNULL, env=program.environment_of()) for name in names]
        self.assertEqual([process.wait(60) for process in runs], [0] * len(names))
        self.assertLessEqual(len(names), len(json.loads(self.state.read_text())["ports"]))


class Kills(Case):
    def test_killed_at_every_call(self):
        """The file is the old one or the new one, and the next run goes on."""
        self.health(host=host())
        changed = host("changed", Counters={"invalid_crc_count": 1000})
        old = self.state.read_bytes()
        names = ("state.json", "state.json.lock", "state.json.new")
        strace = ["strace", "--quiet=all", "--signal=none", *(f"--trace-path={program.path_of(name)}" for name in names)]
        command = [program.PROGRAM, "health", "--state", str(self.state)]
        environment = program.environment_of(changed)
        kills = {False: set(), True: set()}  # the calls, by whether the new one is there
        for call, number in itertools.product(("openat", "fchmod", "flock", "read", "write", "fsync", "rename", "close"),
                                              range(1, 9)):
            self.state.write_bytes(old)
            killed = subprocess.run([*strace, "--output=/dev/null", f"--trace={call}",
                                     f"--inject={call}:signal=SIGKILL:when={number}", *command],
                                    env=environment, stdout=subprocess.DEVNULL, timeout=60, check=False)
            is_new = self.state.read_bytes() != old
            if is_new:
                self.assertEqual(json.loads(self.state.read_text())["ports"][PORT]["counters"]["invalid_crc_count"], 1000)
            if killed.returncode == -9:
                kills[is_new].add(call)
        self.assertEqual(kills, {False: {"openat", "fchmod", "flock", "read", "write", "fsync", "rename", "close"},
                                 True: {"close"}})
        self.health(host=changed)
        self.assertEqual(sorted(path.name for path in program.path_of("").glob("state*")), ["state.json", "state.json.lock"])


if __name__ == "__main__":
    unittest.main()
