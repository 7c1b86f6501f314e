#!/usr/bin/python3
"""Another local user against the program: obstacles that this user can create in /tmp and /var/tmp, and files there
that fail or vanish. The program must use only its own files, never block, and lose no setting."""
import contextlib
import errno
import itertools
import json
import os
import pathlib
import pty
import re
import select
import shlex
import signal
import socket
import stat
import subprocess
import sys
import tempfile
import time
import typing
import unittest

PROGRAM = pathlib.Path(os.environ["BUILD"]) / "orfc-esxcli"
PORT = "FC_21:00:00:24:ff:0c:48:2e"  # the lab's first Birch port, which has all four groups
OTHER_PORT = "FC_21:00:00:24:ff:0c:48:2f"
LIBRARY_LOG = pathlib.Path("/var/tmp/vexapi-output.log")
DEBUG_LOG = pathlib.Path("/var/tmp/orfc-esxcli.log")

FILE_ERROR = 19
SECRET = "for-root-alone"
SECOND_USER = 65534
LIMIT = 10  # seconds until a run counts as hanging; it takes some milliseconds


class Group(typing.NamedTuple):
    """A group of settings with a cache file."""
    name: str
    head: str  # start of the file's name
    mode: tuple  # arguments of `setFile` before its options
    first: tuple  # options that stage one setting
    second: tuple  # options that stage another one
    line: str  # the second one in the file
    writer: str  # the library function that `set` calls
    refusal: str = "Failed, Unknown"  # for a file that can't be opened

    def file(self):
        return pathlib.Path(f"/tmp/{self.head}_{PORT}")

    def temporary(self):
        return pathlib.Path(f"/tmp/{self.head}_{PORT}_tmp")

    def merge(self, content):
        """Content of a file with the second setting."""
        key = self.line.split("=")[0]
        return re.sub(f"(?m)^{key}=.*$", self.line, content.decode()).encode()


GROUPS = (
    Group("hbaparams", "HBAParams", (), ("--frame-size", "1024"), ("--luns-per-target", "99"), "Luns_Per_Target=99",
          "VEXAPI_UpdateHBAParameters"),
    Group("bootconfig", "BootConfig", (), ("--selectable-boot", "true"), ("--enable-bfs", "true"), "Disable_BIOS=0",
          "VEXAPI_SetBootDeviceInfo"),
    Group("bootconfigext", "BootConfigExt", ("NVME",), ("--selective-login", "true"), ("--fc-nvme", "true"),
          "NVMe_Enable=1", "VEXAPI_SetBootDeviceInfo"),
    Group("bbcr", "BBCR", (), ("--bbcr-configured", "7"), ("--bbcr-status", "false"), "BBCR_Status=0",
          "VEXAPI_FCSetBBCSupportInfo", "Failed, File not found"),
)
_, BOOT, BOOT_EXT, _ = GROUPS
WRITERS = {group.writer for group in GROUPS} | {"VEXAPI_SetNVMeBootDeviceEntries"}


class Answer(typing.NamedTuple):
    text: str
    code: int | None  # the run's result code, from the debug log
    calls: list  # library functions, in order

    def value(self, label):
        return dict(line.split(": ", 1) for line in self.text.splitlines() if ": " in line).get(label)

    def writes(self):
        return [name for name in self.calls if name in WRITERS]


def has_second_user():
    """Root can be any user, except in a namespace that has root only."""
    if os.geteuid() != 0:
        return False
    try:
        os.seteuid(SECOND_USER)
    except OSError as error:
        if error.errno != errno.EINVAL:
            raise
        return False
    os.seteuid(0)
    return True


TWO_USERS = has_second_user()


@contextlib.contextmanager
def second_user():
    """Creates files as the second user, if there is one."""
    if not TWO_USERS:
        yield
        return
    os.setegid(SECOND_USER)
    os.seteuid(SECOND_USER)
    try:
        yield
    finally:
        os.seteuid(0)
        os.setegid(0)


# Obstacles at a name that the program uses. Each receives the name, a file that only root may use, and content that
# the program would accept; a descriptor that is returned is watched.

def link(name, target, _):
    name.symlink_to(target)


def link_to_content(name, target, content):
    own = target.parent / "content"
    own.write_bytes(content)
    name.symlink_to(own)


def link_to_nothing(name, target, _):
    name.symlink_to(target.parent / "nothing")


def pipe(name, _, __):
    os.mkfifo(name)


def open_pipe(name, _, content):
    os.mkfifo(name)
    descriptor = os.open(name, os.O_RDWR | os.O_NONBLOCK)
    os.write(descriptor, content)
    return descriptor


def unix_socket(name, _, __):
    with socket.socket(socket.AF_UNIX) as listener:
        listener.bind(str(name))


def folder(name, _, content):
    name.mkdir()
    (name / "content").write_bytes(content)


def file(name, _, content):
    name.write_bytes(content)
    name.chmod(0o666)


def second_name(name, target, _):
    try:
        os.link(target, name)
    except PermissionError:  # the kernel prevents this; assume that the file is older than the protection
        os.seteuid(0)
        os.link(target, name)


class Attack(typing.NamedTuple):
    name: str
    make: typing.Callable
    is_file: bool = False  # a regular file: present, but not ours
    needs_second_user: bool = False


FOLDER = Attack("a folder", folder)
ATTACKS = (
    Attack("a link to a file of root's", link),
    Attack("a link to good content", link_to_content),
    Attack("a link to nothing", link_to_nothing),
    Attack("a pipe", pipe),
    Attack("a pipe that is held open", open_pipe),
    Attack("a socket", unix_socket),
    FOLDER,
    Attack("another user's file", file, is_file=True, needs_second_user=True),
    Attack("a second name of a file of root's", second_name, is_file=True),
)
POSSIBLE = [attack for attack in ATTACKS if TWO_USERS or not attack.needs_second_user]


def setUpModule():
    for path in ("/tmp", "/var/tmp"):
        if not os.stat(path).st_mode & stat.S_IWOTH:  # happens only in a sandbox
            os.chmod(path, 0o1777)
    if not TWO_USERS:
        impossible = [attack.name for attack in ATTACKS if attack not in POSSIBLE]
        print(f"There is one user here alone. Not tried: {', '.join(impossible)}, files that are swapped.",
              file=sys.stderr)


def look(path):
    """Everything that a modification of a file would change."""
    about = path.lstat()
    content = None
    if stat.S_ISLNK(about.st_mode):
        content = os.readlink(path)
    elif stat.S_ISDIR(about.st_mode):
        content = sorted(os.listdir(path))
    elif stat.S_ISREG(about.st_mode):
        content = path.read_bytes()
    return about.st_ino, about.st_mode, about.st_uid, content


def remove(path):
    if path.is_dir() and not path.is_symlink():
        for entry in path.iterdir():
            remove(entry)
        path.rmdir()
    else:
        path.unlink(missing_ok=True)


class Case(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        own = tempfile.TemporaryDirectory(dir="/var/tmp")
        self.addCleanup(own.cleanup)
        self.addCleanup(self.forget)
        self.own = pathlib.Path(own.name)
        self.state = self.own / "state"
        self.journal = self.own / "journal"
        # Leaks can't be looked for under a tracer.
        self.environment = dict(os.environ, VEXAPI_SIM_STATE=str(self.state), VEXAPI_SIM_JOURNAL=str(self.journal),
                                ORFC_DEBUG_LEVEL="5",
                                ASAN_OPTIONS=os.environ.get("ASAN_OPTIONS", "").replace("leaks=1", "leaks=0"))
        self.targets = []  # folders of attacks, next to their targets
        self.watched = None
        self.forget()

    def forget(self):
        """Restores the state before the first run."""
        if self.watched is not None:
            os.close(self.watched)
            self.watched = None
        for path in (*self.names(), LIBRARY_LOG, DEBUG_LOG, self.state, self.journal, *self.targets):
            remove(path)
        self.targets = []

    @contextlib.contextmanager
    def row(self, **what):
        self.forget()
        with self.subTest(**what):
            yield

    # Runs.

    @staticmethod
    def words(group, leaf, *options):
        return "-t", "port", "-s", group.name, leaf + "cli", PORT, *(group.mode if leaf == "setFile" else ()), *options

    def start(self, *words, tracer=(), **how):
        how = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **how}
        return subprocess.Popen([*tracer, PROGRAM, *words], env=self.environment, **how)

    def finish(self, run):
        """The standard output of a run, which must end in time and without an error."""
        try:
            output, errors = run.communicate(timeout=LIMIT)
        except subprocess.TimeoutExpired:
            run.kill()
            run.communicate()
            self.fail("the run hangs")
        self.assertNotIn(b"Sanitizer", errors)
        self.assertEqual(run.returncode, 0)
        self.assertNotIn(SECRET, output.decode())
        self.check_secret()
        return output.decode()

    def answer(self, start):
        """The result of a run that `start` begins."""
        DEBUG_LOG.unlink(missing_ok=True)
        self.journal.unlink(missing_ok=True)
        text = self.finish(start())
        codes = re.findall(r"main: Program Exit Code: \((\d+)\)", DEBUG_LOG.read_text()) if DEBUG_LOG.exists() else []
        return Answer(text, int(codes[-1]) if codes else None, self.calls())

    def tool(self, group, leaf, *options, **how):
        return self.answer(lambda: self.start(*self.words(group, leaf, *options), **how))

    def calls(self):
        lines = self.journal.read_text().splitlines() if self.journal.exists() else []
        return [json.loads(line)["function"] for line in lines]

    def stage(self, group, *options):
        """Stages settings; without options, the group's first one. Returns the file's content."""
        self.check_success(self.tool(group, "setFile", *(options or group.first)))
        return group.file().read_bytes()

    # The folders.

    @staticmethod
    def names():
        """The existing names of cache files and temporary files."""
        return [path for group in GROUPS for path in (group.file(), group.temporary()) if os.path.lexists(path)]

    def make_target(self, name, content):
        """A file that only root may use, in a folder open to all, on the file system of `name`."""
        target = pathlib.Path(tempfile.mkdtemp(dir=name.parent)) / "target"
        self.targets.append(target.parent)
        target.parent.chmod(0o777)
        target.touch(0o600)
        target.write_bytes(content + f"Word={SECRET}\n".encode())
        return target

    def attack(self, attack, name, content):
        """Puts the attack at the name."""
        target = self.make_target(name, content)
        with second_user():
            self.watched = attack.make(name, target, content)

    def kept(self):
        """State that no run may change."""
        return {path: look(path) for place in self.targets for path in (place, *place.iterdir())}

    def scene(self):
        return self.kept() | {path: look(path) for path in self.names()}

    def check_secret(self):
        """Content that only root may read isn't in a file that others can read."""
        for path in (*self.names(), LIBRARY_LOG, DEBUG_LOG):
            try:
                descriptor = os.open(path, os.O_RDONLY | os.O_NOFOLLOW | os.O_NONBLOCK)
            except OSError:  # missing or unreadable
                continue
            try:
                mode = os.fstat(descriptor).st_mode
                if stat.S_ISREG(mode) and mode & 0o044:
                    self.assertNotIn(SECRET.encode(), os.read(descriptor, 1 << 24), path)
            finally:
                os.close(descriptor)

    def check_watched(self, content):
        """Nothing was read from or written to a pipe that is held open."""
        if self.watched is not None:
            readable = select.select([self.watched], [], [], 0)[0]
            self.assertEqual(os.read(self.watched, 1 << 16) if readable else b"", content)

    def check_own(self, path, umask=0o022):
        about = path.lstat()
        self.assertEqual((stat.filemode(about.st_mode), about.st_uid, about.st_nlink),
                         (stat.filemode(stat.S_IFREG | 0o666 & ~umask & ~0o022), os.geteuid(), 1), path)

    # Answers.

    def check_success(self, answer):
        self.assertEqual((answer.value("Message"), answer.code), ("Success", 0), answer.text)

    def check_refused(self, group, leaf, answer):
        """The document for a file that can't be opened."""
        reboot = "false" if leaf == "set" else None
        self.assertEqual((answer.value("Message"), answer.value("Reboot Required"), answer.code, answer.writes()),
                         (group.refusal, reboot, FILE_ERROR, []), answer.text)

    def check_nothing_pending(self, answer):
        self.assertEqual((answer.value("Message"), answer.value("Reboot Required"), answer.code, answer.writes()),
                         ("Failed, Unknown", "false", 0, []), answer.text)

    def check_not_written(self, group, answer):
        if answer.code == 0:
            self.check_nothing_pending(answer)
        else:
            self.check_refused(group, "set", answer)


class CacheFile(Case):
    """Something else at the name of a cache file."""

    def test_refused(self):
        for group in GROUPS:
            self.forget()
            staged = self.stage(group)
            runs = (("setFile", ()), ("setFile", group.second), ("set", ()))
            for attack, (leaf, options) in itertools.product(POSSIBLE, runs):
                with self.row(group=group.name, attack=attack.name, leaf=leaf, options=options):
                    self.attack(attack, group.file(), staged)
                    before = self.scene()
                    answer = self.tool(group, leaf, *options)
                    if leaf == "setFile" or attack.is_file:
                        self.check_refused(group, leaf, answer)
                    else:
                        self.check_nothing_pending(answer)
                    self.assertEqual(self.scene(), before)
                    self.check_watched(staged)

    def test_second_name_of_our_own_file(self):
        for group in GROUPS:
            with self.row(group=group.name):
                self.stage(group)
                second = self.make_target(group.file(), b"").parent / "second"
                os.link(group.file(), second)
                before = self.scene()
                self.check_refused(group, "setFile", self.tool(group, "setFile", *group.second))
                self.check_refused(group, "set", self.tool(group, "set"))
                self.assertEqual(self.scene(), before)
                # Without the second name it is an ordinary file.
                second.unlink()
                self.check_success(self.tool(group, "set"))
                self.assertEqual(self.names(), [])


class Temporary(Case):
    """Something else at the name of the temporary file, to which a changed cache file is written first."""

    def replace(self, is_changed):
        """The attack is gone after a change that modifies or creates the cache file."""
        for group, attack in itertools.product(GROUPS, POSSIBLE):
            if attack is FOLDER:
                continue
            with self.row(group=group.name, attack=attack.name):
                if is_changed:
                    staged = self.stage(group)
                    expected = group.merge(staged)
                else:
                    staged = expected = self.stage(group, *group.second)
                    group.file().unlink()
                self.attack(attack, group.temporary(), staged)
                before = self.kept()
                self.check_success(self.tool(group, "setFile", *group.second))
                self.assertEqual(self.names(), [group.file()])
                self.assertEqual(group.file().read_bytes(), expected)
                self.check_own(group.file())
                self.assertEqual(self.kept(), before)
                self.check_watched(staged)

    def test_replaced_by_a_change(self):
        self.replace(is_changed=True)

    def test_replaced_by_the_first_change(self):
        self.replace(is_changed=False)

    def test_folder_stays(self):
        for group in GROUPS:
            with self.row(group=group.name):
                staged = self.stage(group)
                self.attack(FOLDER, group.temporary(), staged)
                before = self.scene()
                self.check_refused(group, "setFile", self.tool(group, "setFile", *group.second))
                self.assertEqual(self.scene(), before)
                # The staged settings can still be written to NVRAM.
                self.check_success(self.tool(group, "set"))
                self.assertEqual(self.names(), [group.temporary()])


class Modes(Case):
    """The permissions of new files: the process's default, without write permission for others."""

    def test_modes(self):
        for group, umask in itertools.product(GROUPS, (0o000, 0o002, 0o022, 0o027, 0o077)):
            with self.row(group=group.name, umask=oct(umask)):
                self.check_success(self.tool(group, "setFile", *group.first, umask=umask))
                for path in (group.file(), LIBRARY_LOG, DEBUG_LOG):
                    self.check_own(path, umask)
                self.check_success(self.tool(group, "setFile", *group.second, umask=umask))
                self.check_own(group.file(), umask)


class Logs(Case):
    """Something else at the name of a log."""

    GET = ("-t", "port", "-s", "hbaparams", "getcli", PORT)
    CONTENT = b"A line\n"

    def test_library_log(self):
        for attack, words in itertools.product(POSSIBLE, (self.GET, ())):
            with self.row(attack=attack.name, words=words):
                self.attack(attack, LIBRARY_LOG, self.CONTENT)
                before = look(LIBRARY_LOG), self.kept()
                # Neither a document nor a prompt.
                answer = self.answer(lambda: self.start(*words))
                self.assertEqual((answer.text, answer.code), ("", 3))
                self.assertEqual(set(answer.calls) - {"VEXAPI_Uninitialize"}, set())
                self.assertEqual((look(LIBRARY_LOG), self.kept()), before)
                self.check_watched(self.CONTENT)

    def test_library_log_in_a_session(self):
        for attack in POSSIBLE:
            with self.row(attack=attack.name), self.session() as (session, terminal):
                self.read_to_prompt(terminal)
                LIBRARY_LOG.unlink()
                self.attack(attack, LIBRARY_LOG, self.CONTENT)
                before = look(LIBRARY_LOG), self.kept()
                terminal.write(" ".join(self.GET).encode() + b"\n")
                self.assertIn("Message: Failed, Unknown\r\n", self.read_to_prompt(terminal))
                terminal.write(b"q\n")
                self.assertEqual(session.wait(LIMIT), 0)
                self.assertEqual((look(LIBRARY_LOG), self.kept()), before)
                self.check_watched(self.CONTENT)

    @contextlib.contextmanager
    def session(self):
        end, other_end = pty.openpty()
        with open(end, "r+b", buffering=0) as terminal:
            with self.start(stdin=other_end, stdout=other_end) as session:
                os.close(other_end)
                try:
                    yield session, terminal
                finally:
                    session.kill()

    def read_to_prompt(self, terminal):
        text = b""
        while not text.endswith(b"$>"):
            self.assertTrue(select.select([terminal], [], [], LIMIT)[0], "the run hangs")
            text += terminal.read(1 << 16)
        return text.decode()

    def test_debug_log(self):
        expected = self.finish(self.start(*self.GET))
        self.assertIn("Message: Success\n", expected)
        for attack in POSSIBLE:
            with self.row(attack=attack.name):
                self.attack(attack, DEBUG_LOG, self.CONTENT)
                before = look(DEBUG_LOG), self.kept()
                self.assertEqual(self.finish(self.start(*self.GET)), expected)
                self.assertEqual((look(DEBUG_LOG), self.kept()), before)
                self.check_watched(self.CONTENT)


class Traced(Case):
    """Runs whose system calls for one file are counted, and made to fail, by a tracer."""

    OPENS = ("open", "openat", "openat2")
    READS = ("read", "readv", "pread64", "preadv")
    STATS = ("stat", "lstat", "newfstatat", "fstatat64", "statx")
    OTHERS = (*STATS, "rename", "renameat", "renameat2", "unlink", "unlinkat")

    @staticmethod
    def tracer(path, names, log, *more):
        # The run is the child to wait for, and the tracer a grandchild.
        return ["strace", "-D", "-o", log, "-P", path, "-e", "trace=" + ",".join("?" + name for name in names), *more]

    # Does not stop the run at other calls, which loses signals.
    FAST = ("-f", "--seccomp-bpf")

    def calls_for(self, names, group, leaf, *options):
        """A run's calls for the cache file: name, number among the calls of that name, and line."""
        log = self.own / "calls"
        self.check_success(self.tool(group, leaf, *options, tracer=self.tracer(group.file(), names, log, *self.FAST)))
        counts = dict.fromkeys(names, 0)
        found = []
        for line in re.findall(r"(?m)^\d+ +(\w+\(.*)", log.read_text()):
            name = line.split("(")[0]
            if name in counts:
                counts[name] += 1
                found.append((name, counts[name], line))
        self.assertTrue(found, "no calls were seen")
        return found

    def disturbed(self, what, name, number, group, leaf, *options):
        """Starts a run with an injection at the group's call with this number."""
        fast = () if what.startswith("signal") else self.FAST
        tracer = self.tracer(group.file(), [name], "/dev/null", *fast, "-e", f"inject={name}:{what}:when={number}")
        return self.start(*self.words(group, leaf, *options), tracer=tracer)


class Unreadable(Traced):
    """A cache file that exists but can't be examined, opened or read completely."""

    ERRORS = {**dict.fromkeys(Traced.OPENS, ("EACCES", "EMFILE")), **dict.fromkeys(Traced.READS, ("EIO",)),
              **dict.fromkeys(Traced.STATS, ("EACCES", "EIO"))}

    def test_set_opens_it_once(self):
        for group in GROUPS:
            with self.row(group=group.name):
                self.stage(group)
                self.assertEqual(len(self.calls_for(self.OPENS, group, "set")), 1)

    def fail_each(self, group, leaf, *options):
        """Makes each examination, each open and each read of a run fail in turn."""
        self.forget()
        staged = self.stage(group)
        for name, number, line in self.calls_for(self.ERRORS, group, leaf, *options):
            for error in self.ERRORS[name]:
                with self.row(group=group.name, line=line, error=error):
                    group.file().write_bytes(staged)
                    before = self.scene()
                    answer = self.answer(lambda: self.disturbed(f"error={error}", name, number, group, leaf, *options))
                    if leaf == "set" or number == 1:
                        self.check_refused(group, leaf, answer)
                        self.assertEqual(self.scene(), before)
                        continue
                    # The file may have been changed before the failure.
                    self.assertEqual(self.names(), [group.file()])
                    if answer.value("Message") == "Success":
                        self.assertEqual(group.file().read_bytes(), group.merge(staged))
                    else:
                        self.check_refused(group, leaf, answer)
                        self.assertIn(group.file().read_bytes(), (staged, group.merge(staged)))

    def test_set(self):
        for group in GROUPS:
            self.fail_each(group, "set")

    def test_set_file(self):
        for group in GROUPS:
            self.fail_each(group, "setFile", *group.second)


class Vanishing(Traced):
    """Cache files that vanish or are replaced between two calls."""

    def namings(self, group, leaf, *options):
        """A run's calls that name the cache file, as `calls_for` gives them."""
        calls = self.calls_for(self.OPENS + self.OTHERS, group, leaf, *options)
        return [call for call in calls if f'"{group.file()}"' in call[2]]

    def vanish(self, name, number, group, leaf, *options):
        """The result of a run that stops after a call until the cache file has been removed."""
        def start():
            run = self.disturbed("signal=SIGSTOP", name, number, group, leaf, *options)
            end = time.monotonic() + LIMIT
            news = None
            while news is None and time.monotonic() < end:
                time.sleep(0.001)
                news = os.waitid(os.P_PID, run.pid, os.WSTOPPED | os.WEXITED | os.WNOWAIT | os.WNOHANG)
            if news is None or news.si_code != os.CLD_STOPPED:
                run.kill()
                run.communicate()
                self.fail("the run didn't come to the call")
            group.file().unlink(missing_ok=True)
            run.send_signal(signal.SIGCONT)
            return run

        return self.answer(start)

    def test_set(self):
        for group in GROUPS:
            self.forget()
            staged = self.stage(group)
            calls = self.namings(group, "set")
            group.file().write_bytes(staged)
            expected = self.tool(group, "set").text
            is_opened = False
            for name, number, line in calls:
                is_opened = is_opened or name in self.OPENS
                with self.row(group=group.name, behind=line):
                    group.file().write_bytes(staged)
                    answer = self.vanish(name, number, group, "set")
                    if is_opened and answer.value("Message") == "Success":
                        self.assertEqual(answer.text, expected)
                    else:
                        self.check_not_written(group, answer)
                    self.assertEqual(self.names(), [])

    def test_set_file(self):
        for group in GROUPS:
            self.forget()
            staged = self.stage(group)
            merged = group.merge(staged)
            for name, number, line in self.namings(group, "setFile", *group.second):
                with self.row(group=group.name, behind=line):
                    group.file().write_bytes(staged)
                    answer = self.vanish(name, number, group, "setFile", *group.second)
                    if answer.value("Message") != "Success":
                        self.check_refused(group, "setFile", answer)
                    elif group.file().exists():
                        self.assertIn(group.line, group.file().read_text().splitlines())
                    for path in self.names():
                        self.check_own(path)
                        self.assertLessEqual(set(path.read_bytes().splitlines()), set((staged + merged).splitlines()))

    # The second user's loop: puts a link, a file and nothing at a name in turn.
    SWAP = """if True:
        import contextlib, os, sys
        name, target, content = sys.argv[1:]
        new = os.path.dirname(target) + "/new"
        def link():
            os.symlink(target, new)
            os.rename(new, name)
        def write():
            with open(new, "w") as file:
                file.write(content)
            os.rename(new, name)
        while True:
            for step in (link, write, lambda: os.unlink(name)):
                with contextlib.suppress(OSError):  # what is root's stays
                    step()
                with contextlib.suppress(OSError):
                    os.unlink(new)
    """

    @contextlib.contextmanager
    def swapped(self, name, content):
        target = self.make_target(name, content)
        before = look(target)
        with subprocess.Popen([sys.executable, "-c", self.SWAP, name, target, content.decode()],
                              user=SECOND_USER, group=SECOND_USER) as swapper:
            try:
                end = time.monotonic() + LIMIT
                while not os.path.lexists(name):
                    self.assertLess(time.monotonic(), end, "nothing is swapped")
                yield
                self.assertIsNone(swapper.poll())
            finally:
                swapper.kill()
        self.assertEqual(look(target), before)

    def test_swapped_cache_file(self):
        for group in GROUPS if TWO_USERS else ():
            with self.row(group=group.name):
                foreign = group.merge(self.stage(group))
                group.file().unlink()
                self.check_success(self.tool(group, "setFile"))
                expected = self.tool(group, "set").text
                with self.swapped(group.file(), foreign):
                    for _ in range(5):
                        answer = self.tool(group, "setFile")
                        if answer.value("Message") != "Success":
                            self.check_refused(group, "setFile", answer)
                        answer = self.tool(group, "set")
                        if answer.value("Message") == "Success":
                            self.assertEqual(answer.text, expected)
                        else:
                            self.check_not_written(group, answer)

    def test_swapped_temporary_file(self):
        for group in GROUPS if TWO_USERS else ():
            with self.row(group=group.name):
                staged = self.stage(group)
                with self.swapped(group.temporary(), b"Word=1\n"):
                    for _ in range(5):
                        group.file().write_bytes(staged)
                        answer = self.tool(group, "setFile", *group.second)
                        if answer.value("Message") == "Success":
                            self.assertEqual(group.file().read_bytes(), group.merge(staged))
                        else:
                            self.check_refused(group, "setFile", answer)
                            self.assertEqual(group.file().read_bytes(), staged)
                        self.check_own(group.file())


class Full(Case):
    """A full /tmp of two pages: one for the cache file, and one for the temporary file."""

    def test_full(self):
        small = ["bwrap", "--dev-bind", "/", "/", "--size", "8192", "--tmpfs", "/tmp", "--bind", PROGRAM.parent,
                 PROGRAM.parent]
        full = 'full() { "$@"; }'
        if subprocess.run([*small, "true"], stderr=subprocess.DEVNULL).returncode != 0:
            # No file system can be mounted: files that can't grow are the closest substitute.
            small, full = [], "full() { (trap '' XFSZ; ulimit -f 0; \"$@\"); }"
        for group in GROUPS:
            with self.row(group=group.name):
                script = f"""
                    {full}
                    tool() {{ orfc-esxcli -t port -s {group.name} setFilecli "$@" | grep ^Message; }}
                    tool {PORT} {shlex.join(group.mode + group.first)}
                    cp {group.file()} {self.own}/before
                    head -c 1M /dev/zero >/tmp/filler 2>/dev/null || true
                    full tool {PORT} {shlex.join(group.mode + group.second)}
                    full tool {OTHER_PORT} {shlex.join(group.mode)}
                    ls /tmp/{group.head}_*
                    cmp {self.own}/before {group.file()}
                    rm /tmp/filler
                    tool {PORT} {shlex.join(group.mode + group.second)}
                    rm {group.file()}
                """
                run = subprocess.run([*small, "bash", "-ec", script], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                     env=self.environment, timeout=60)
                self.assertEqual(run.stdout.decode().splitlines(),
                                 ["Message: Success", f"Message: {group.refusal}", f"Message: {group.refusal}",
                                  str(group.file()), "Message: Success"])
                self.assertEqual(run.returncode, 0)


class Output(Case):
    """A document of `set` that can't be delivered: the committed settings stay staged."""

    def closed_pipe(self):
        reader, writer = os.pipe()
        os.close(reader)
        return open(writer, "wb")

    def test_lost_document(self):
        rows = (("a closed pipe", self.closed_pipe, True),
                ("a closed pipe, its signal ignored", self.closed_pipe, False),
                ("a full device", lambda: open("/dev/full", "wb"), True))
        for group, (name, output, restores_signals) in itertools.product(GROUPS, rows):
            with self.row(group=group.name, output=name):
                staged = self.stage(group)
                self.journal.unlink()
                with output() as stdout:
                    run = self.start(*self.words(group, "set"), stdout=stdout, restore_signals=restores_signals)
                run.communicate(timeout=LIMIT)
                self.assertIn(run.returncode, (0, -signal.SIGPIPE))
                self.assertIn(group.writer, self.calls())
                self.assertEqual(self.names(), [group.file()])
                self.assertEqual(group.file().read_bytes(), staged)
                self.check_success(self.tool(group, "set"))
                self.assertEqual(self.names(), [])


class Names(Case):
    """Names from the fabric, and what they can inject into a file of lines."""

    TARGET = "50:0a:09:81:a1:c3:40:10"
    # The port's boot target, and what a name could inject instead.
    BOOT_LINES = ["Drive 0 WWPN: 50:06:0e:80:12:4a:7c:10", "Drive 0 LUN: 3"]
    FOREIGN = "Primary_Boot_Target_WWPN=50:06:0e:80:12:4a:7c:17\nPrimary_Boot_Target_LUN=7\n"
    # A target's own name, and its staged form.
    ROWS = (
        ("nqn.plain:array", "nqn.plain:array"),
        ("nqn.plain=array", "nqn.plain=array"),
        ("nqn.line\n" + FOREIGN, "nqn.line"),
        ("\n" + FOREIGN, ""),
        ("nqn.return\r\n" + FOREIGN, "nqn.return"),
        ("nqn.blank name", "nqn.blank"),
        (" nqn.ahead", ""),
        ("nqn.tab\tname", "nqn.tab"),
        ("nqn.feeds\v\fname", "nqn.feeds"),
        ("nqn.comment#name", "nqn.comment"),
        ("nqn.control\x01name", "nqn.control"),
        ("nqn.escape\x1b[2J", "nqn.escape"),
        ("nqn.delete\x7fname", "nqn.delete"),
    )

    def describe(self, target_nqn, boot_nqn=""):
        """The host: a port with a boot disk, another disk, and NVMe storage."""
        port = {
            "WWPN": PORT.removeprefix("FC_"), "ChipProperty": {"DeviceId": "0x2281"}, "OptionRomMask": "0x0A",
            "Nvram": {"BootPortName": "50:06:0e:80:12:4a:7c:10", "BootLunNumber": 3},
            "NvmeBoot": {"BootEntry": [{"TargetWWPN": self.TARGET, "TargetNSID": 2, "TargetNQN": boot_nqn}]},
            "Targets": [
                {"PortName": "50:06:0e:80:12:4a:7c:10", "Luns": [{"LunNumber": 3}]},
                {"PortName": "50:06:0e:80:12:4a:7c:17", "Luns": [{"LunNumber": 7}]},
                {"PortName": self.TARGET, "TargetFlags": "00:00:00:00:00:08", "StorageNqn": target_nqn,
                 "Luns": [{"LunNumber": 2}]},
            ],
        }
        host = self.own / "host.json"
        host.write_text(json.dumps({"Adapters": [{"Model": "ORV2882", "SerialNumber": "GFD2111M91002",
                                                  "PhyPorts": [{"Protocols": [port]}]}]}))
        self.environment["VEXAPI_SIM_HOST"] = str(host)

    def check_staged(self, entry, nqn, *options):
        """The staged file has this name, and otherwise the same lines as with a plain name; `set` keeps the boot
        target."""
        lines = self.stage(BOOT_EXT, *options).decode().splitlines()
        keys = [line.partition("=")[0] for line in lines]
        self.assertEqual([line for line in lines if line.startswith(f"NVME_{entry}_NQN=")], [f"NVME_{entry}_NQN={nqn}"])
        self.assertEqual(len(lines), 72)
        self.assertEqual(len(set(keys)), 72)
        self.check_success(self.tool(BOOT_EXT, "set"))
        boot = self.tool(BOOT, "get").text
        self.assertEqual([line.strip() for line in boot.splitlines() if "Drive 0" in line], self.BOOT_LINES)

    def test_target(self):
        for nqn, staged in self.ROWS:
            with self.row(nqn=nqn):
                self.describe(target_nqn=nqn)
                self.check_staged(1, staged, "--boot-target-num", "1", "--boot-target-wwpn", self.TARGET,
                                  "--boot-disk-num", "2", "--boot-target-enable", "true")

    def test_boot_entry(self):
        """A name that is already in NVRAM, and from there in a new file."""
        for nqn, staged in self.ROWS:
            with self.row(nqn=nqn):
                self.describe(target_nqn="nqn.plain", boot_nqn=nqn)
                self.check_staged(0, staged, "--fc-nvme", "true")


if __name__ == "__main__":
    unittest.main()
