#!/usr/bin/python3
"""Captures: what is in them, that commands show the same on them, what is refused, and what is left behind."""
import io
import json
import lzma
import os
import pathlib
import re
import shutil
import signal
import subprocess
import tarfile
import tempfile
import time
import unittest

import program
from program import run

PORT = "sys/class/fc_host/host0"


def capture(tree, *words, file=None, **more):
    """The file of a capture, and the finished run."""
    file = file or program.path_of(f"{pathlib.Path(tree).name}.tar.xz")
    return file, run("capture", str(file), "--force", "--root", str(tree), *words, **more)


def own_tree(name):
    """A tree that a test may change."""
    folder = program.path_of(name)
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(program.tree_folder("degraded"), folder, symlinks=True)
    return folder


def archive(name, *entries, good=True):
    """An archive of entries: a path or a TarInfo with the content, the others from a good description."""
    description = json.dumps({"format": "orfc-capture", "version": 1, "host": "h", "time": "t"}).encode()
    file = program.path_of(name)
    with tarfile.open(file, "w:xz", preset=0) as tar:
        for entry, content in (*([("capture.json", description), ("sys/class", None)] if good else []), *entries):
            info = entry if isinstance(entry, tarfile.TarInfo) else tarfile.TarInfo(entry)
            if content is None and info.isreg():
                info.type = tarfile.DIRTYPE
            info.size = info.size or len(content or b"")
            tar.addfile(info, content if hasattr(content, "read") else io.BytesIO(content or b""))
    return file


def special(path, kind, target=""):
    info = tarfile.TarInfo(path)
    info.type, info.linkname = kind, target
    return info, b""


class Zeros:
    def __init__(self, size):
        self.rest = size

    def read(self, size):
        size = min(size, self.rest)
        self.rest -= size
        return bytes(size)


class Case(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.mkdtemp(dir=program.FOLDER.name)

    def replay(self, file, *words, **more):
        return run("--root", str(file), *words, environment={"TMPDIR": self.temporary}, **more)

    def tearDown(self):
        self.assertEqual(os.listdir(self.temporary), [])  # folders are removed

    def refused(self, finished, *told, status=1):
        self.assertEqual((finished.returncode, finished.stdout), (status, ""), finished.stderr)
        self.assertRegex(finished.stderr, r"\Aorfc: [^\n]+\n\Z")
        for text in told:
            self.assertIn(text, finished.stderr)


class RoundTrips(Case):
    def test_every_command_shows_the_same(self):
        for name in program.TREES:
            tree = program.tree_folder(name)
            file, made = capture(tree)
            self.assertEqual((made.returncode, made.stderr), (0, ""))
            self.assertLess(file.stat().st_size, 100_000)
            identifiers = re.findall(r"FC_\S+", run("ports", "--root", tree).stdout)
            kept = tarfile.open(file)
            for words in program.commands():
                if words[:1] in (["ping"], ["metrics"]):  # frames; a time
                    continue
                words = [identifiers[0] if word == program.NAME else word for word in words]
                for form in ("wide", "json") if name == "fcoe" else ("json",):
                    with self.subTest(tree=name, words=words, form=form):
                        live = run("--root", tree, *words, "-o", form)
                        replayed = self.replay(file, *words, "-o", form)
                        self.assertTrue(live.stdout)
                        self.assertEqual(replayed.stdout.replace(str(file), ""), live.stdout.replace(tree, ""))
                        self.assertEqual(replayed.returncode, live.returncode)
                        self.assertRegex(replayed.stderr, fr"\Aorfc: {file} is a capture of \w+, "
                                                          r"\d{4}-\d\d-\d\d \d\d:\d\d:\d\d UTC\n\Z")
                if words[:1] != ["show"] and name == "fcoe":
                    output = f"output/{words[0] if words else 'overview'}"
                    text = kept.extractfile(f"{output}.txt").read().decode()
                    self.assertEqual(text, run(*words, "--root", tree).stdout)
                    self.assertEqual(json.load(kept.extractfile(f"{output}.json"))["records"],
                                     json.loads(live.stdout)["records"])

    def test_large_host(self):
        tree = program.path_of("large")
        subprocess.run([program.ROOT / "tests/hosts/generate", "8", "16", tree, "2"], check=True)
        file, made = capture(tree)
        self.assertEqual(made.returncode, 0, made.stderr)
        for words in (["paths", "-o", "csv"], ["ports", "-o", "csv"], ["counters"], ["show", "host1"]):
            shown = self.replay(file, *words).stdout
            self.assertTrue(shown)
            self.assertEqual(shown, run(*words, "--root", str(tree)).stdout)

    def test_files_that_the_library_reads(self):
        """Each name in the library's table of files is captured where there is such a file."""
        table = (program.ROOT / "hosts/linux/Attributes.h").read_text()
        names = set(re.findall(r'^ +\{"([^"]+)", +"', table, re.MULTILINE)) | \
            set(re.findall(r'^inline constexpr Attribute<\w+> \w+\{"([^"]+)"', table, re.MULTILINE)) | {"vpd"}
        self.assertGreater(len(names), 60)
        source = (program.ROOT / "orfc/capture/Collect.cpp").read_text()
        listed = set(re.findall(r'"([\w/]+)"', source)) | {"dm/uuid", "transport"}
        counted = set(re.findall(r'\{"(\w+)",[^\n]+PORT_COUNTERS', table)) - listed  # all of statistics/ is taken
        self.assertEqual({name for name in names - listed - counted
                          if not name.startswith(("fpin_", "cn_sig_"))}, set())


class Contents(Case):
    def test_description_and_counters(self):
        tree = own_tree("described")
        for path, text in (("etc/hostname", "san-host\n"), ("proc/sys/kernel/osrelease", "6.1.0\n")):
            (tree / path).parent.mkdir(parents=True, exist_ok=True)
            (tree / path).write_text(text)
        (tree / PORT / "vpd").mkdir()  # not among what is read of a port
        (tree / PORT / "speed").unlink()
        (tree / PORT / "speed").mkdir()
        (tree / PORT / "symbolic_name").unlink(missing_ok=True)
        (tree / PORT / "symbolic_name").symlink_to("/etc/passwd")
        (tree / PORT / "statistics/reset_statistics").write_text("never")
        file, made = capture(tree)
        self.assertEqual(made.returncode, 3)
        self.assertRegex(made.stderr, r"(?m)^orfc: sys/devices/\S+/host0/speed: Is a directory$")
        self.assertRegex(made.stderr, r"(?m)^orfc: sys/devices/\S+/host0/symbolic_name: a link to /etc/passwd$")
        with tarfile.open(file) as kept:
            names = kept.getnames()
            description = json.load(kept.extractfile("capture.json"))
            self.assertEqual((description["host"], description["kernel"]), ("san-host", "6.1.0"))
            self.assertEqual({pathlib.Path(missing["file"]).name for missing in description["missing"]},
                             {"speed", "symbolic_name"})
            self.assertFalse(any("reset_statistics" in name or "passwd" in name for name in names))
            counters = [name for name in names if name.startswith("sys/") and "/statistics/" in name]
            self.assertTrue(counters)
            for name in counters:
                self.assertEqual(kept.extractfile(name).read(), kept.extractfile(f"later/{name}").read())
        self.assertIn("is a capture of san-host, ", self.replay(file, "ports").stderr)

    def test_a_file_that_does_not_answer(self):
        library = program.BUILD / "tests/orfc/libstuck_file.so"
        if not library.exists():  # not with the sanitizers, whose runtime has to be loaded first
            return
        tree = own_tree("stuck")
        begin = time.monotonic()
        file, made = capture(tree, environment={"LD_PRELOAD": library, "STUCK_FILE": "fc_host/host0/speed"})
        self.assertEqual(made.returncode, 3)
        self.assertRegex(made.stderr, r"\Aorfc: sys/\S+/fc_host/host0/speed: no answer in 2 seconds\n\Z")
        self.assertLess(time.monotonic() - begin, 40)
        with tarfile.open(file) as kept:
            names = [name for name in kept.getnames() if "/fc_host/host0/" in name]
        self.assertFalse(any(name.endswith("/speed") for name in names))
        self.assertTrue(any(name.endswith("/port_state") for name in names))


class Outputs(Case):
    def test_an_existing_file(self):
        file = program.path_of("kept.tar.xz")
        file.write_text("kept")
        tree = program.tree_folder("degraded")
        self.refused(run("capture", str(file), "--root", tree), str(file), "--force")
        self.assertEqual(file.read_text(), "kept")
        self.assertEqual(run("capture", str(file), "--root", tree, "--force").returncode, 0)
        self.assertEqual(file.stat().st_mode & 0o777, 0o600)
        self.assertEqual(self.replay(file, "ports").returncode, 0)

    def test_a_link_of_another_user(self):
        victim, link = program.path_of("victim"), program.path_of("link.tar.xz")
        victim.write_text("victim")
        link.symlink_to(victim)
        self.refused(run("capture", str(link), "--root", program.tree_folder("degraded")), "--force")
        _, made = capture(program.tree_folder("degraded"), file=link)
        self.assertEqual((made.returncode, victim.read_text(), link.is_symlink()), (0, "victim", False))

    def test_no_room_and_no_folder(self):
        tree = program.tree_folder("degraded")
        self.refused(run("capture", "/nowhere/x.tar.xz", "--root", tree), "/nowhere/x.tar.xz", "No such file")
        self.refused(run("capture", "/proc/x.tar.xz", "--root", tree), "/proc/x.tar.xz")
        folder = program.path_of("small")
        folder.mkdir(exist_ok=True)
        file = folder / "x.tar.xz"
        command = f"ulimit -f 8; exec {program.PROGRAM} capture {file} --root {tree}"  # 8 kB
        finished = subprocess.run(["bash", "-c", f"trap '' XFSZ; {command}"], capture_output=True, text=True, check=False)
        self.refused(finished, "File too large")
        self.assertEqual(os.listdir(folder), [])

    def test_usage(self):
        for words in (["--library", "simulator"], ["-o", "json"], ["--sort", "port"], ["a", "b"], ["--columns", "port"]):
            self.refused(run("capture", "--root", "/", *words), status=2)
        self.refused(run("capture", "x.tar.xz", "--root", "/nowhere"), "/nowhere")


class Refusals(Case):
    def refuses(self, file, *told):
        begin = time.monotonic()
        self.refused(self.replay(file, "ports"), str(file), *told)
        self.assertLess(time.monotonic() - begin, 30)

    def test_good(self):
        self.assertEqual(self.replay(archive("good.tar.xz"), "ports").returncode, 0)
        links = [special("sys/a/b/link", tarfile.SYMTYPE, target) for target in ("../../../x", "c", "../c/d")]
        for link in links:
            self.assertEqual(self.replay(archive("good.tar.xz", link), "ports").returncode, 0, link[0].linkname)

    def test_no_captures(self):
        good = archive("whole.tar.xz").read_bytes()
        file = program.path_of("bad.tar.xz")
        for content in (b"", b"text", good[:-1], good[:-4], good[:len(good) // 2], good[:6], good[:-40] + bytes(38) + b"YZ",
                        lzma.compress(b"text"), lzma.compress(b"")):
            file.write_bytes(content)
            self.refuses(file)
        self.refuses(program.path_of("nothing.tar.xz"))
        self.refuses("/dev/null", "is no file")
        for description, told in (({"format": "orfc-capture", "version": 2}, "newer"), ({"format": "x"}, "is no capture"),
                                  ({"format": "orfc-capture", "version": 1, "host": 1}, "is no capture"), ([], "no capture")):
            self.refuses(archive("other.tar.xz", ("capture.json", json.dumps(description).encode()), good=False), told)
        self.refuses(archive("other.tar.xz", ("sys/x", b"x"), good=False), "is no capture")

    def test_hostile_entries(self):
        for entry, told in (
                (("../x", b"x"), "names no place inside"), (("/tmp/x", b"x"), "names no place inside"),
                (("sys/../../x", b"x"), "names no place inside"), (("sys//x", b"x"), "names no place inside"),
                (("sys/./x", b"x"), "names no place inside"), (("x" * 300, b"x"), "names no place inside"),
                (special("sys/link", tarfile.SYMTYPE, "../../x"), "leave"), (special("l", tarfile.SYMTYPE, "../x"), "leave"),
                (special("sys/link", tarfile.SYMTYPE, "/etc/passwd"), "leave"),
                (special("sys/link", tarfile.SYMTYPE, "a/../../../x"), "leave"),
                (special("sys/a/link", tarfile.SYMTYPE, "../.."), "leave"), (special("sys/link", tarfile.SYMTYPE, ""), "leave"),
                (special("sys/hard", tarfile.LNKTYPE, "capture.json"), "hard link"),
                (special("sys/hard", tarfile.LNKTYPE, "/etc/passwd"), "hard link"),
                (special("sys/node", tarfile.CHRTYPE), "neither"), (special("sys/node", tarfile.BLKTYPE), "neither"),
                (special("sys/pipe", tarfile.FIFOTYPE), "neither"), (("capture.json", b"{}"), "twice")):
            with self.subTest(entry=getattr(entry[0], "name", entry[0]), told=told):
                self.refuses(archive("hostile.tar.xz", entry), "is refused", told)

    def test_names_through_a_link(self):
        outside = program.path_of("outside")
        outside.mkdir(exist_ok=True)
        for entries in ([special("sys/link", tarfile.SYMTYPE, "class"), ("sys/link/x", b"x")],
                        [("sys/link/x", b"x"), special("sys/link", tarfile.SYMTYPE, "class")],
                        [("sys/file", b"x"), ("sys/file/a/b/x", b"x")]):
            self.refuses(archive("through.tar.xz", *entries), "is below what is no folder")
        self.assertEqual(os.listdir(outside), [])

    @staticmethod
    def header(name, empty=tarfile.TarInfo("000000").tobuf(tarfile.USTAR_FORMAT)):
        """The header of an empty file with a name of six digits, whose checksum is the sum of its bytes."""
        checksum = int(empty[148:154], 8) + sum(name) - sum(b"000000")
        return name + empty[6:148] + b"%06o" % checksum + empty[154:]

    def test_too_much(self):
        zeros = tarfile.TarInfo("sys/zeros")
        zeros.size = 300 << 20
        self.refuses(archive("zeros.tar.xz", (zeros, Zeros(zeros.size))), "larger than any host")
        with lzma.open(program.path_of("many.tar.xz"), "w", preset=0) as packed:
            for thousand in range(501):
                packed.write(b"".join(self.header(b"%03d%03d" % (thousand, number)) for number in range(1000)))
        self.refuses(program.path_of("many.tar.xz"), "larger than any host")


class Endings(Case):
    def test_signals(self):
        file, _ = capture(program.tree_folder("degraded"))
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGKILL):
            with subprocess.Popen([program.PROGRAM, "--root", file, "counters", "--interval", "60"],
                                  env=dict(os.environ, TMPDIR=self.temporary), stdout=subprocess.PIPE,
                                  stderr=subprocess.DEVNULL) as process:
                process.stdout.readline()  # it has unpacked
                if number == signal.SIGKILL:  # of the process that shows the host
                    children = pathlib.Path(f"/proc/{process.pid}/task/{process.pid}/children").read_text().split()
                    os.kill(int(children[0]), number)
                else:
                    mode = os.stat(next(os.scandir(self.temporary)).path).st_mode
                    self.assertEqual(mode & 0o777, 0o700)
                    process.send_signal(number)
                self.assertEqual(process.wait(30), -number)
            self.assertEqual(os.listdir(self.temporary), [])

    def test_a_reader_that_has_gone(self):
        file, _ = capture(program.tree_folder("degraded"))
        finished = subprocess.run(["bash", "-c", f"{program.PROGRAM} --root {file} counters | true"],
                                  env=dict(os.environ, TMPDIR=self.temporary), capture_output=True, check=False)
        self.assertEqual(finished.returncode, 0)


if __name__ == "__main__":
    unittest.main()
