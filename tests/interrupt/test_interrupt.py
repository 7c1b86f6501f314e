#!/usr/bin/python3
"""Changes of settings that are interrupted: at every system call of a run that changes a file, in turn, the
program is killed, or the call fails. No setting may be lost, and NVRAM takes a change whole or not at all."""
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

PROGRAM = pathlib.Path(os.environ["BUILD"]) / "orfc-esxcli"
PORT = "FC_21:00:00:24:ff:0c:48:2e"  # the lab's first Birch port
OTHER_PORT = "FC_21:00:00:24:ff:0c:48:2f"
FILE = pathlib.Path(f"/tmp/HBAParams_{PORT}")
TEMPORARY = pathlib.Path(f"{FILE}_tmp")

# Those that change files, by whatever name the machine has them.
CALLS = ("open openat creat write writev pwrite64 close rename renameat renameat2 unlink unlinkat rmdir mkdir "
         "ftruncate fsync fdatasync").split()
KILL = "signal=SIGKILL"
FAIL = "error=ENOSPC"

# Three keys of the file, and what a report shows of them.
BEFORE = {"Frame_Size": "1024", "Login_Retry_Count": "9", "Luns_Per_Target": "12"}
AFTER = {"Frame_Size": "512", "Login_Retry_Count": "7", "Luns_Per_Target": "99"}
LABELS = {"Frame_Size": "Frame Size", "Login_Retry_Count": "Login Retry Count", "Luns_Per_Target": "Luns Per Target"}


def options(values):
    return ["--frame-size", values["Frame_Size"], "--login-retry-count", values["Login_Retry_Count"],
            "--luns-per-target", values["Luns_Per_Target"]]


def settings(path):
    """The settings in a cache file; every line must be one."""
    return dict(line.split("=") for line in path.read_text().splitlines())


class Case(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir="/var/tmp")
        self.addCleanup(folder.cleanup)
        self.addCleanup(self.forget)
        self.folder = pathlib.Path(folder.name)
        self.state = self.folder / "state"
        # Leaks can't be looked for under a tracer.
        self.environment = dict(os.environ, VEXAPI_SIM_STATE=str(self.state),
                                ASAN_OPTIONS=os.environ["ASAN_OPTIONS"].replace("leaks=1", "leaks=0"))
        self.forget()

    def forget(self):
        for path in (FILE, TEMPORARY, self.state):
            path.unlink(missing_ok=True)

    def run_tool(self, leaf, *words, tracer=()):
        """Runs a command; gives its document as a dictionary, {} where there is none."""
        run = subprocess.run([*tracer, PROGRAM, "-t", "port", "-s", "hbaparams", leaf + "cli", PORT, *words],
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=self.environment, timeout=60)
        self.assertNotIn(b"Sanitizer", run.stderr)
        return dict(line.rsplit(": ", 1) for line in run.stdout.decode().splitlines() if ": " in line)

    def changing_calls(self, leaf, *words):
        """The calls of a run that change a file: name, number among the run's calls of that name, and line."""
        log = self.folder / "calls"
        self.run_tool(leaf, *words,
                      tracer=["strace", "-y", "-s", "0", "-o", log, "-e", "trace=" + ",".join("?" + c for c in CALLS)])
        numbers = {}
        writable = set()  # descriptors of files that the run has opened to write
        for line in log.read_text().splitlines():
            name = line.split("(")[0]
            if name not in CALLS:
                continue
            numbers[name] = numbers.get(name, 0) + 1
            if name in ("open", "openat", "creat"):
                if name != "creat" and not re.search("O_WRONLY|O_RDWR", line):
                    continue
                writable |= set(re.findall(r" = (\d+)<", line))
            elif name in ("write", "writev", "pwrite64", "close"):
                descriptor = re.match(r"\w+\((\d+)<", line)
                if descriptor is None or descriptor[1] not in writable:
                    continue
                if name == "close":
                    writable.remove(descriptor[1])
            yield name, numbers[name], line

    def interrupt(self, prepare, check, leaf, *words):
        """Runs the command once for every changing call and each way to interrupt it; `check` gets the call's
        line, the way and the document."""
        prepare()
        calls = list(self.changing_calls(leaf, *words))
        # Without these the calls weren't seen, and nothing would be tested.
        self.assertTrue([line for name, _, line in calls if name.startswith("unlink") and str(FILE) in line] or
                        [line for name, _, line in calls if name.startswith("rename") and str(FILE) in line], calls)
        for name, number, line in calls:
            for how in (KILL, FAIL):
                self.forget()
                prepare()
                tracer = ["strace", "-o", "/dev/null", "-e", f"trace={name}", "-e", f"inject={name}:{how}:when={number}"]
                with self.subTest(line=line, how=how):
                    check(line, how, self.run_tool(leaf, *words, tracer=tracer))

    def nvram(self):
        shown = self.run_tool("get")
        return {key: shown[label] for key, label in LABELS.items()}

    def stage(self, values):
        self.assertEqual(self.run_tool("setFile", *options(values))["Message"], "Success")


class Create(Case):
    """The first `setFile` of a port, which makes the file of what the port has."""

    def test_create(self):
        self.run_tool("setFile")
        snapshot = settings(FILE)
        self.forget()
        expected = self.run_tool("setFile", *options(AFTER))
        self.assertEqual(settings(FILE), {**snapshot, **AFTER})
        self.forget()

        def check(line, how, shown):
            self.assertFalse(self.state.exists())
            for path in (FILE, TEMPORARY):
                if path.exists():
                    for key, value in settings(path).items():
                        self.assertIn(value, (snapshot[key], AFTER.get(key)))
            if how == FAIL and str(FILE) in line:
                self.assertEqual(shown["Message"], "Failed, Unknown")
            # Whatever came of it, the command can be repeated.
            self.assertEqual(self.run_tool("setFile", *options(AFTER)), expected)

        self.interrupt(lambda: None, check, "setFile", *options(AFTER))


class Merge(Case):
    """A `setFile` into a file that holds changes already."""

    def test_merge(self):
        self.stage(BEFORE)
        before = settings(FILE)
        after = {**before, **AFTER}
        self.assertEqual(len(before), 22)
        self.assertEqual({key: before[key] for key in BEFORE}, BEFORE)
        content = FILE.read_bytes()
        # The keys are written one by one, in ascending order.
        steps = [{**before, **dict(list(AFTER.items())[:count])} for count in range(len(AFTER) + 1)]

        def check(line, how, shown):
            self.assertFalse(self.state.exists())
            # Without the old file the temporary one is there, complete.
            survivor = FILE if FILE.exists() else TEMPORARY
            self.assertIn(settings(survivor), steps)
            if how == KILL:
                self.assertEqual(shown, {})
            elif str(FILE) in line:
                self.assertEqual(shown["Message"], "Failed, Unknown")
            if shown.get("Message") == "Success":
                self.assertEqual(settings(FILE), after)
            if FILE.exists():
                # The command can be repeated, and `set` brings all changes into NVRAM.
                self.assertEqual(self.run_tool("setFile", *options(AFTER))["Message"], "Success")
                self.assertEqual(settings(FILE), after)

        self.interrupt(lambda: FILE.write_bytes(content), check, "setFile", *options(AFTER))


class Commit(Case):
    """A `set` of a pending file."""

    def test_commit(self):
        self.stage(BEFORE)
        self.run_tool("set")
        self.assertEqual(self.nvram(), BEFORE)
        state = self.state.read_bytes()
        self.stage(AFTER)
        content = FILE.read_bytes()

        def prepare():
            self.state.write_bytes(state)
            FILE.write_bytes(content)

        outcomes = []

        def check(line, how, shown):
            nvram = self.nvram()
            self.assertIn(nvram, (BEFORE, AFTER))
            outcomes.append(nvram)
            if nvram == BEFORE:
                self.assertNotEqual(shown.get("Message"), "Success")
                self.assertEqual(FILE.read_bytes(), content)
            if how == KILL:
                self.assertEqual(shown, {})
            if shown.get("Message") == "Success":
                self.assertEqual(nvram, AFTER)
                # A file that can't be deleted stays, and nobody is told.
                self.assertEqual(FILE.exists(), str(FILE) in line)
            elif shown:
                self.assertEqual(shown["Reboot Required"], "false")
                self.assertEqual(nvram, BEFORE)
            if FILE.exists():
                self.assertEqual(self.run_tool("set")["Message"], "Success")
                self.assertEqual(self.nvram(), AFTER)
                self.assertFalse(FILE.exists())

        self.interrupt(prepare, check, "set")
        self.assertIn(BEFORE, outcomes)
        self.assertIn(AFTER, outcomes)


class Full(Case):
    """A /tmp without room, of two pages: one for the file, one for the temporary file beside it."""

    SCRIPT = f"""
        tool() {{ orfc-esxcli -t port -s hbaparams setFilecli "$@" | grep Message; }}
        tool {PORT} --frame-size 512
        cp {FILE} /var/tmp/before
        head -c 1M /dev/zero >/tmp/filler || true
        full tool {PORT} --frame-size 1024
        full tool {OTHER_PORT} --frame-size 1024
        ls /tmp/HBAParams_*
        cmp /var/tmp/before {FILE}
        rm /tmp/filler /var/tmp/before
        tool {PORT} --frame-size 1024
        rm {FILE}
    """

    def test_full(self):
        small = ["bwrap", "--dev-bind", "/", "/", "--size", "8192", "--tmpfs", "/tmp", "--bind", PROGRAM.parent,
                 PROGRAM.parent]
        full = 'full() { "$@"; }'
        if subprocess.run([*small, "true"], stderr=subprocess.DEVNULL).returncode != 0:
            # No file system can be mounted: files that can't grow are the nearest to it.
            small, full = [], "full() { (trap '' XFSZ; ulimit -f 0; \"$@\"); }"
        run = subprocess.run([*small, "bash", "-ec", full + self.SCRIPT], stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, env={**self.environment, "VEXAPI_SIM_STATE": ""}, timeout=60)
        self.assertEqual([line for line in run.stdout.decode().splitlines() if "filler" not in line and
                          "head:" not in line],
                         ["Message: Success", "Message: Failed, Unknown", "Message: Failed, Unknown", str(FILE),
                          "Message: Success"])
        self.assertEqual(run.returncode, 0)


if __name__ == "__main__":
    unittest.main()
