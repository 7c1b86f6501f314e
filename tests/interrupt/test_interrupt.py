#!/usr/bin/python3
"""Interrupted changes of settings: at every system call that changes a file, in turn, the program is killed or the
call fails; likewise at every read of the file of staged settings. No setting may be lost, and NVRAM must be changed
completely or not at all.

Create.test_bbcr runs the class Create for the row "bbcr" of GROUPS; Create alone runs all rows."""
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

PROGRAM = pathlib.Path(os.environ["BUILD"]) / "orfc-esxcli"
PORT = "FC_21:00:00:24:ff:0c:48:2e"  # the lab's first Birch port; this family supports every group
OTHER_PORT = "FC_21:00:00:24:ff:0c:48:2f"
MOST = int(os.environ.get("MOST_CALLS", 200))  # a run with more calls than these is sampled

# System calls that change files; their names depend on the machine.
CALLS = ("open openat creat write writev pwrite64 close rename renameat renameat2 unlink unlinkat rmdir mkdir "
         "ftruncate fsync fdatasync").split()
RENAMES = [name for name in CALLS if name.startswith("rename")]
READS = "open openat read readv pread64 preadv".split()
KILL = "signal=SIGKILL"
FAIL = "error=ENOSPC"
UNREADABLE = "error=EIO"


class Settings:
    """Settings as options of `setFile`, as lines of the file, and in a report."""

    def __init__(self, options, file, report):
        self.options = options.split()
        self.file = dict(word.split("=") for word in file.split())  # all keys written by the options
        self.report = dict(part.split(": ") for part in report.split(", "))


class Group:
    """A group of commands. `before` and `after` are two changes of the same settings, which share only the mode, an
    argument of `get` and `setFile`; `file_error` is the message about a bad file."""

    def __init__(self, name, file, before, after, mode=(), file_error="Failed, Unknown"):
        self.name = name
        self.file = file
        self.before = Settings(*before)
        self.after = Settings(*after)
        self.mode = mode
        self.file_error = file_error
        # The state between the two writes of `set`, if it makes two: NVMe entries are written last.
        self.between = {label: (self.before if label.startswith("Storage") else self.after).report[label]
                        for label in self.after.report}


GROUPS = {
    "hbaparams": Group(
        "hbaparams", "HBAParams",
        ("--frame-size 1024 --login-retry-count 9 --luns-per-target 12",
         "Frame_Size=1024 Login_Retry_Count=9 Luns_Per_Target=12",
         "Frame Size: 1024, Login Retry Count: 9, Luns Per Target: 12"),
        ("--frame-size 512 --login-retry-count 7 --luns-per-target 99",
         "Frame_Size=512 Login_Retry_Count=7 Luns_Per_Target=99",
         "Frame Size: 512, Login Retry Count: 7, Luns Per Target: 99")),
    "bbcr": Group(
        "bbcr", "BBCR",
        ("--bbcr-status false --bbcr-configured 3",
         "BBCR_Count=3 BBCR_Status=0",
         "BBCR Status: false, BBCR Configured: 3"),
        ("--bbcr-status true --bbcr-configured 12",
         "BBCR_Count=12 BBCR_Status=1",
         "BBCR Status: true, BBCR Configured: 12"),
        file_error="Failed, File not found"),
    "bootconfig": Group(
        "bootconfig", "BootConfig",
        ("--enable-bfs true --selectable-boot true --drive-2 50:06:0e:80:12:4a:7c:30-1023",
         "Alternate_Boot_Target_2_LUN=1023 Alternate_Boot_Target_2_WWPN=50:06:0e:80:12:4a:7c:30 Boot_Mode=0 "
         "Disable_BIOS=0 Selectable_Boot=1",
         "Adapter BIOS: true, Selectable Boot: true, Drive 2 WWPN: 50:06:0e:80:12:4a:7c:30, Drive 2 LUN: 1023"),
        ("--enable-bfs false --selectable-boot false --drive-2 50:01:10:a0:00:8b:c4:0f-0",
         "Alternate_Boot_Target_2_LUN=0 Alternate_Boot_Target_2_WWPN=50:01:10:a0:00:8b:c4:0f Boot_Mode=0 "
         "Disable_BIOS=1 Selectable_Boot=0",
         "Adapter BIOS: false, Selectable Boot: false, Drive 2 WWPN: 50:01:10:a0:00:8b:c4:0f, Drive 2 LUN: 0")),
    "bootconfigext_uefi": Group(
        "bootconfigext", "BootConfigExt",
        ("--enable-bfs true --world-login true "
         "--boot-target-num 5 --boot-target-wwpn 50:06:0e:80:12:4a:7c:30 --boot-disk-num 1023",
         "Alternate_Boot_Target_5_LUN=1023 Alternate_Boot_Target_5_WWPN=50:06:0e:80:12:4a:7c:30 Boot_Mode=2 "
         "Disable_BIOS=0 World_Login=1",
         "Adapter Driver: true, World Login: true, Drive 5 WWPN: 50:06:0e:80:12:4a:7c:30, Drive 5 LUN: 1023"),
        ("--enable-bfs false --world-login false "
         "--boot-target-num 5 --boot-target-wwpn 50:01:10:a0:00:8b:c4:0f --boot-disk-num 0",
         "Alternate_Boot_Target_5_LUN=0 Alternate_Boot_Target_5_WWPN=50:01:10:a0:00:8b:c4:0f Boot_Mode=2 "
         "Disable_BIOS=1 World_Login=0",
         "Adapter Driver: false, World Login: false, Drive 5 WWPN: 50:01:10:a0:00:8b:c4:0f, Drive 5 LUN: 0"),
        mode=("UEFI",)),
    "bootconfigext_nvme": Group(
        "bootconfigext", "BootConfigExt",
        ("--enable-bfs true --fc-nvme true "
         "--boot-target-num 1 --boot-target-wwpn 50:0a:09:83:a1:c3:40:10 --boot-disk-num 2 --boot-target-enable true",
         "Boot_Mode=4 Disable_BIOS=0 NVMe_Enable=1 NVME_1_ControllerID=65 NVME_1_Enable=1 NVME_1_NamespaceID=2 "
         "NVME_1_NQN=nqn.2010-06.com.basalt-storage:array.ba9k2307c0114:subsystem.esx-prod "
         "NVME_1_WWNN=50:0a:09:80:a1:c3:40:10 NVME_1_WWPN=50:0a:09:83:a1:c3:40:10",
         "Adapter Driver: true, FC NVMe: true, Storage 1: true, Storage 1 ControllerID: 0x41, "
         "Storage 1 NamespaceID: 2, "
         "Storage 1 NQN: nqn.2010-06.com.basalt-storage:array.ba9k2307c0114:subsystem.esx-prod, "
         "Storage 1 WWNN: 50:0a:09:80:a1:c3:40:10, Storage 1 WWPN: 50:0a:09:83:a1:c3:40:10"),
        ("--enable-bfs false --fc-nvme false "
         "--boot-target-num 1 --boot-target-wwpn 00:00:00:00:00:00:00:00 --boot-disk-num 0 --boot-target-enable false",
         "Boot_Mode=4 Disable_BIOS=1 NVMe_Enable=0 NVME_1_ControllerID=0 NVME_1_Enable=0 NVME_1_NamespaceID=0 "
         "NVME_1_NQN= NVME_1_WWNN=00:00:00:00:00:00:00:00 NVME_1_WWPN=00:00:00:00:00:00:00:00",
         "Adapter Driver: false, FC NVMe: false, Storage 1: false, Storage 1 ControllerID: 0x0, "
         "Storage 1 NamespaceID: 0, Storage 1 NQN: , "
         "Storage 1 WWNN: 00:00:00:00:00:00:00:00, Storage 1 WWPN: 00:00:00:00:00:00:00:00"),
        mode=("NVME",)),
}


def settings(path):
    """The settings in a cache file; every line must be a setting."""
    return dict(line.split("=") for line in path.read_text().splitlines())


def text(values):
    return "".join(f"{key}={value}\n" for key, value in values.items())


def merges(begin, values):
    """The settings after merging none, the first, the second, ... of the values, in ascending order."""
    keys = sorted(values)
    return [{**begin, **{key: values[key] for key in keys[:count]}} for count in range(len(keys) + 1)]


def content(path):
    return path.read_bytes() if path.exists() else None


def sample(calls):
    """Every key rewrites the file, so a file of 72 keys takes hundreds of calls, most of them in rounds of the same
    few. If there are more than MOST, selects the first and the last, one of each kind, and every 11th (23rd, 47th)
    in between; no round has that length, so each of its calls is selected in turn."""
    if len(calls) <= MOST:
        return calls
    step = next(step for step in (11, 23, 47) if len(calls) <= step * MOST)
    kinds = set()
    chosen = []
    for index, call in enumerate(calls):
        kind = re.sub(r"\d+|(?<=state\.)\w+", "", call[2])
        if kind not in kinds or index % step == 0 or not 10 <= index < len(calls) - 10:
            chosen.append(call)
        kinds.add(kind)
    return chosen


class Case(unittest.TestCase):
    maxDiff = None

    def __init_subclass__(cls):
        """Adds a test to the class for every group, which calls `examine`."""
        for name, group in GROUPS.items():
            def test(self, group=group):
                self.use(group)
                self.examine()
            setattr(cls, f"test_{name}", test)

    def use(self, group):
        folder = tempfile.TemporaryDirectory(dir="/var/tmp")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.state = self.folder / "state"
        self.group = group
        self.reports = {}
        self.file = pathlib.Path(f"/tmp/{group.file}_{PORT}")
        self.temporary = pathlib.Path(f"{self.file}_tmp")
        self.addCleanup(self.begin, None, None)
        # Leaks can't be looked for under a tracer.
        self.environment = dict(os.environ, VEXAPI_SIM_STATE=str(self.state),
                                ASAN_OPTIONS=os.environ["ASAN_OPTIONS"].replace("leaks=1", "leaks=0"))
        self.begin(None, None)
        # A report switches the library to the group's mode, which is kept in the state.
        self.nvram()
        self.original = content(self.state)

    def begin(self, state, staged):
        """Starts with these contents of the state and the cache file; None means no file."""
        self.temporary.unlink(missing_ok=True)
        for path, data in ((self.state, state), (self.file, staged)):
            path.unlink(missing_ok=True)
            if data is not None:
                path.write_bytes(data)

    def run_tool(self, leaf, *words, tracer=()):
        """Runs a command; returns its document as a dictionary, or {}."""
        mode = () if leaf == "set" else self.group.mode
        run = subprocess.run([*tracer, PROGRAM, "-t", "port", "-s", self.group.name, leaf + "cli", PORT, *mode, *words],
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=self.environment, timeout=60)
        self.assertNotIn(b"Sanitizer", run.stderr)
        lines = (line.lstrip().removeprefix("Data: ") for line in run.stdout.decode().splitlines())
        return dict(line.rsplit(": ", 1) for line in lines if ": " in line)

    def trace(self, calls, leaf, *words, options=()):
        """These calls of a run: name, number among the calls of that name, and line."""
        log = self.folder / "calls"
        self.run_tool(leaf, *words, tracer=["strace", "-y", "-s", "0", "-o", log, *options,
                                            "-e", "trace=" + ",".join("?" + name for name in calls)])
        numbers = {}
        for line in log.read_text().splitlines():
            name = line.split("(")[0]
            if name in calls:
                numbers[name] = numbers.get(name, 0) + 1
                yield name, numbers[name], line

    def inject(self, how, name, when, leaf, *words, options=()):
        """Runs a command in which the calls of a name are interrupted: the N-th with when="when=N"."""
        # Stopping at no other calls is faster, but would lose signals.
        fast = [] if how == KILL else ["-f", "--seccomp-bpf"]
        return self.run_tool(leaf, *words, tracer=["strace", *fast, "-o", "/dev/null", *options, "-e", f"trace={name}",
                                                   "-e", f"inject={name}:{how}:{when}"])

    def changing_calls(self, leaf, *words):
        """The calls of a run that change a file."""
        writable = set()  # descriptors of files that the run has opened to write
        for name, number, line in self.trace(CALLS, leaf, *words):
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
            yield name, number, line

    def interrupt(self, state, staged, check, leaf, *words):
        """Runs the command with this state and file once for every changing call and each way to interrupt it;
        `check` receives the call's line, the way and the document."""
        self.begin(state, staged)
        calls = list(self.changing_calls(leaf, *words))
        # Otherwise no calls were traced, and nothing would be tested.
        self.assertTrue([line for name, _, line in calls
                         if name.startswith(("unlink", "rename")) and str(self.file) in line], calls)
        for name, number, line in sample(calls):
            for how in (KILL, FAIL):
                # A call that the tracer fails isn't made: the lock would remain and block the next write.
                if how == FAIL and name == "close" and "state.lock" in line:
                    continue
                self.begin(state, staged)
                with self.subTest(line=line, how=how):
                    check(line, how, self.inject(how, name, f"when={number}", leaf, *words))

    def check_set_file(self, line, how, shown):
        """The document of a `setFile` interrupted in this way."""
        self.assertEqual(content(self.state), self.original)
        if how == KILL:
            self.assertIn(shown.get("Message"), (None, "Success"))
        if str(self.file) in line:
            # A failure to delete an old temporary file shows when the new one is created.
            if how == FAIL and not (line.startswith("unlink") and str(self.temporary) in line):
                self.assertEqual(shown["Message"], self.group.file_error)
            elif how == KILL:
                self.assertEqual(shown, {})

    def nvram(self):
        """The settings in a report. It depends on the state only, and is requested once for each."""
        state = content(self.state)
        if state not in self.reports:
            shown = self.run_tool("get")
            self.reports[state] = {label: shown[label] for label in self.group.after.report}
        return self.reports[state]

    def stage(self, change):
        """Stages settings; returns the bytes of the file."""
        self.assertEqual(self.run_tool("setFile", *change.options)["Message"], "Success")
        return self.file.read_bytes()

    def snapshot(self):
        """The settings in a file before any merge."""
        self.begin(self.original, None)
        self.run_tool("setFile")
        return settings(self.file)


class Create(Case):
    """The first `setFile` of a port, which creates the file with the port's settings."""

    def examine(self):
        after = self.group.after
        snapshot = self.snapshot()
        # The file may also be empty.
        steps = [*merges({}, snapshot), *merges(snapshot, after.file)]
        self.begin(self.original, None)
        expected = self.run_tool("setFile", *after.options)
        self.assertEqual(settings(self.file), {**snapshot, **after.file})

        def check(line, how, shown):
            self.check_set_file(line, how, shown)
            for path in (self.file, self.temporary):
                if path.exists():
                    self.assertIn(settings(path), steps)
            if shown.get("Message") == "Success":
                self.assertEqual(shown, expected)
                self.assertEqual(settings(self.file), steps[-1])
            # The command can be repeated in any case.
            self.assertEqual(self.run_tool("setFile", *after.options), expected)

        self.interrupt(self.original, None, check, "setFile", *after.options)


class Merge(Case):
    """A `setFile` into a file with changes."""

    def examine(self):
        after = self.group.after
        snapshot = self.snapshot()
        staged = self.stage(self.group.before)
        self.assertEqual(settings(self.file), {**snapshot, **self.group.before.file})
        steps = merges(settings(self.file), after.file)

        def check(line, how, shown):
            self.check_set_file(line, how, shown)
            self.assertIn(settings(self.file), steps)
            if shown.get("Message") == "Success":
                self.assertEqual(settings(self.file), steps[-1])
                self.assertFalse(self.temporary.exists())
            if how == FAIL and line.startswith("rename"):
                self.assertIn(settings(self.temporary), steps)
            # The command can be repeated.
            self.assertEqual(self.stage(after).decode(), text(steps[-1]))

        self.interrupt(self.original, staged, check, "setFile", *after.options)


class Commit(Case):
    """A `set` of a pending file."""

    def examine(self):
        before, between, after = self.group.before.report, self.group.between, self.group.after.report
        self.stage(self.group.before)
        self.run_tool("set")
        self.assertEqual(self.nvram(), before)
        state = self.state.read_bytes()
        staged = self.stage(self.group.after)
        outcomes = []

        def check(line, how, shown):
            nvram = self.nvram()
            outcomes.append(nvram)
            # The writes of boot settings and NVMe entries are not a transaction: the settings may be new and the
            # entries old. Each write is atomic.
            self.assertIn(nvram, (before, between, after))
            is_deletion = str(self.file) in line
            if shown.get("Message") == "Success":
                self.assertEqual(nvram, after)
                # A file that can't be deleted stays, without a message.
                self.assertEqual(self.file.exists(), is_deletion)
            else:
                self.assertFalse(is_deletion, "deleted before the document was out")
                self.assertTrue(self.file.exists())
                if how == KILL:
                    self.assertEqual(shown, {})
                elif shown:  # a program that can't start shows none
                    self.assertEqual(shown["Reboot Required"], "false")
                    self.assertTrue(nvram == before or between != after, nvram)
            if self.file.exists():
                self.assertEqual(self.file.read_bytes(), staged)
                self.assertEqual(self.run_tool("set")["Message"], "Success")
                self.assertEqual(self.nvram(), after)
                self.assertFalse(self.file.exists())

        self.interrupt(state, staged, check, "set")
        for outcome in (before, between, after):
            self.assertIn(outcome, outcomes)


class Read(Case):
    """A cache file that can't be opened or read to its end: NVRAM isn't written, and what is staged stays."""

    def examine(self):
        after = self.group.after
        snapshot = self.snapshot()
        # The keys of a new file are written one by one, the first one directly to the file.
        creation = [*merges({}, snapshot)[1:], *merges(snapshot, after.file)[1:]]
        staged = self.stage(self.group.before)
        steps = merges(settings(self.file), after.file)

        self.interrupt_reads(None, creation, "setFile", *after.options)
        self.interrupt_reads(staged, steps, "setFile", *after.options)
        self.interrupt_reads(staged, [settings(self.file)], "set")

    def interrupt_reads(self, staged, steps, leaf, *words):
        """Runs the command once for every read of the file, with that read failing, and once with all reads failing.
        `steps` are the contents of the file at first and after each renaming."""
        paths = ["-P", self.file, "-P", self.temporary]
        renamed = 0
        cases = []
        self.begin(self.original, staged)
        for name, number, line in self.trace(READS + RENAMES, leaf, *words, options=paths):
            if name in RENAMES:
                renamed += 1
            elif "O_CREAT" not in line and " = -1 " not in line:
                cases.append((name, f"when={number}", line, steps[renamed]))
        self.assertIn("read", [name for name, _, _, _ in cases])
        self.assertEqual(renamed, len(steps) - 1)
        if staged is not None:
            cases += [(name, "when=1+", "all", steps[0]) for name in sorted({name for name, _, _, _ in cases})]
        for name, when, line, expected in sample(cases):
            with self.subTest(leaf=leaf, line=line, when=when):
                self.begin(self.original, staged)
                shown = self.inject(UNREADABLE, name, when, leaf, *words, options=paths)
                self.assertEqual(shown["Message"], self.group.file_error)
                self.assertEqual(shown.get("Reboot Required"), "false" if leaf == "set" else None)
                self.assertEqual(content(self.state), self.original)
                self.assertEqual(self.file.read_text(), text(expected))
                self.assertFalse(self.temporary.exists())


class Full(Case):
    """A full /tmp of two pages: one for the file, and one for the temporary file."""

    def examine(self):
        group = self.group
        before, after = (" ".join([*group.mode, *change.options]) for change in (group.before, group.after))
        script = f"""
            tool() {{ orfc-esxcli -t port -s {group.name} setFilecli "$@" | grep Message; }}
            tool {PORT} {before}
            cp {self.file} /var/tmp/before
            head -c 1M /dev/zero >/tmp/filler || true
            full tool {PORT} {after}
            full tool {OTHER_PORT} {after}
            ls /tmp/{group.file}_*
            cmp /var/tmp/before {self.file}
            rm /tmp/filler /var/tmp/before
            tool {PORT} {after}
            rm {self.file}
        """
        small = ["bwrap", "--dev-bind", "/", "/", "--size", "8192", "--tmpfs", "/tmp", "--bind", PROGRAM.parent,
                 PROGRAM.parent]
        full = 'full() { "$@"; }'
        if subprocess.run([*small, "true"], stderr=subprocess.DEVNULL).returncode != 0:
            # No file system can be mounted: files that can't grow are the closest substitute.
            small, full = [], "full() { (trap '' XFSZ; ulimit -f 0; \"$@\"); }"
        run = subprocess.run([*small, "bash", "-ec", full + script], stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, env={**self.environment, "VEXAPI_SIM_STATE": ""}, timeout=60)
        error = f"Message: {group.file_error}"
        self.assertEqual([line for line in run.stdout.decode().splitlines() if "filler" not in line and
                          "head:" not in line],
                         ["Message: Success", error, error, str(self.file), "Message: Success"])
        self.assertEqual(run.returncode, 0)


if __name__ == "__main__":
    unittest.main()
