#!/usr/bin/python3
"""The VIB, and its check against VIBs that are wrong in one place each."""
import dataclasses
import gzip
import hashlib
import io
import os
import pathlib
import re
import subprocess
import tarfile
import tempfile
import types
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = ROOT / "packaging/vib/build"
CHECK = ROOT / "packaging/vib/check"
CHECKER = types.ModuleType("check")
exec(CHECK.read_text(), CHECKER.__dict__)
FOLDER = pathlib.Path(os.environ["BUILD"])
README = ROOT / "ORFC_ESXCLI_Readme.txt"
COMMANDS = b"""<plugin xmlns="http://www.vmware.com/Products/ESX/5.0/esxcli/"><commands><command path="orfc.port.list">
<execute>ORFC_XML=strict /opt/orvane/fc/bin/orfc-esxcli -t port list</execute></command></commands></plugin>"""
BIN = "opt/orvane/fc/bin"
FOLDERS = ["usr", "usr/lib", "usr/lib/vmware", "usr/lib/vmware/esxcli", "usr/lib/vmware/esxcli/ext"]
EXTENSION = f"{FOLDERS[-1]}/orfc-esxcli.xml"
TIME = 1700000000


def run(*command, **variables):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=60,
                          env={**os.environ, "SOURCE_DATE_EPOCH": str(TIME), **variables})


def archive(members, attributes="0           0     0     644     "):
    """An ar archive of names and contents."""
    return b"!<arch>\n" + b"".join(
        f"{name + '/':16}{attributes}{len(content):<10}`\n".encode() + content + b"\n" * (len(content) % 2)
        for name, content in members)


def unpack(data):
    """Names and contents of an ar archive."""
    at, members = 8, {}
    while at < len(data):
        size = int(data[at + 48:at + 58])
        members[data[at:at + 16].decode().strip().rstrip("/")] = data[at + 60:at + 60 + size]
        at += 60 + size + size % 2
    return members


@dataclasses.dataclass
class Vib:
    """A VIB in pieces; what is changed in it before it is put together is all that is wrong with it."""
    descriptor: str
    entries: list  # of the tar, with their contents
    signature: bytes = b""
    name: str = "orfc"

    @classmethod
    def of(cls, data):
        members = unpack(data)
        with tarfile.open(fileobj=io.BytesIO(gzip.decompress(members["orfc"]))) as tar:
            entries = [(entry, tar.extractfile(entry).read() if entry.isreg() else b"") for entry in tar]
        return cls(members["descriptor.xml"].decode(), entries)

    def entry(self, path):
        return next(entry for entry, _ in self.entries if entry.name == path)

    def add(self, path, content=b"text\n", listed=True, **attributes):
        """A file at the end, with the folders that it needs."""
        for parent in [*reversed(pathlib.PurePosixPath(path).parents)][1:]:
            if all(entry.name != str(parent) for entry, _ in self.entries):
                self.add_entry(str(parent), b"", type=tarfile.DIRTYPE, mode=0o755)
        self.add_entry(path, content, **attributes)
        if listed:
            self.replace("</file-list>", f"<file>{path}</file></file-list>")

    def add_entry(self, path, content, **attributes):
        entry = tarfile.TarInfo(path)
        entry.size = len(content)
        for name, value in attributes.items():
            setattr(entry, name, value)
        self.entries.append((entry, content))

    def replace(self, old, new):
        assert self.descriptor.count(old) == 1, old
        self.descriptor = self.descriptor.replace(old, new)

    def set(self, path, content):
        self.entries = [(entry, content if entry.name == path else old) for entry, old in self.entries]
        self.entry(path).size = len(content)

    def tar(self, form=tarfile.USTAR_FORMAT):
        data = io.BytesIO()
        with tarfile.open(fileobj=data, mode="w", format=form) as tar:
            for entry, content in self.entries:
                tar.addfile(entry, io.BytesIO(content))
        return data.getvalue()

    def pack(self, tar=None, packed=None):
        """The VIB, with the checksums of what it holds."""
        tar = self.tar() if tar is None else tar
        packed = gzip.compress(tar, mtime=0) if packed is None else packed
        sums = iter([hashlib.sha256(packed), hashlib.sha256(tar), hashlib.sha1(tar)])
        descriptor = re.sub("[0-9a-f]{40,}", lambda _: next(sums).hexdigest(), self.descriptor)
        return archive([("descriptor.xml", descriptor.encode()), ("sig.pkcs7", self.signature), (self.name, packed)])


class VibTest(unittest.TestCase):
    maxDiff = None
    programs = [FOLDER / "orfc-esxcli", FOLDER / "orfc"]

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.commands = self.folder / "commands.xml"
        self.commands.write_bytes(COMMANDS)
        self.path = self.folder / "orfc-esxcli.vib"

    def inputs(self):
        return ["1.3.6", self.path, self.commands, README, *self.programs]

    def build(self, *arguments, **variables):
        return run(BUILD, *(arguments or self.inputs()), **variables)

    def good(self):
        built = self.build()
        self.assertEqual((built.returncode, built.stdout, built.stderr), (0, "", ""))
        return self.path.read_bytes()


class Build(VibTest):
    def test_holds_the_files(self):
        vib = Vib.of(self.good())
        self.assertEqual({entry.name: (entry.mode, content) for entry, content in vib.entries if entry.isreg()}, {
            f"{BIN}/ORFC_ESXCLI_Readme.txt": (0o644, README.read_bytes()),
            **{f"{BIN}/{path.name}": (0o755, path.read_bytes()) for path in self.programs},
            EXTENSION: (0o644, COMMANDS)})
        self.assertEqual({entry.mtime for entry, _ in vib.entries}, {TIME})
        self.assertIn("<version>1.3.6-1</version>", vib.descriptor)
        self.assertIn("<release-date>2023-11-14T22:13:20.000000+00:00</release-date>", vib.descriptor)

    def test_descriptor_of_the_build_executes_the_programs(self):
        self.commands.write_bytes((FOLDER / "integration/orfc-esxcli.xml").read_bytes())
        self.assertEqual(CHECKER.check(self.good()), [])

    def test_same_files_give_the_same_bytes(self):
        first = self.good()
        for file in self.folder.iterdir():
            os.utime(file, (1, 1))
        os.umask(0o077)
        self.addCleanup(os.umask, 0o022)
        self.build(TZ="Asia/Tokyo")
        self.assertEqual(self.path.read_bytes(), first)

    def test_programs_run_from_the_payload(self):
        self.good()
        subprocess.run(f"ar p {self.path} orfc | tar -xz -C {self.folder} opt", shell=True, check=True)
        runs = [[self.folder / BIN / "orfc-esxcli", "-t", "port", "list"], [self.folder / BIN / "orfc", "ports"]]
        # The library isn't part of it: it lies beside the programs, where the maker's does on a host.
        for command in runs:
            self.assertNotEqual(run(*command).returncode, 0)
        (self.folder / BIN / "libvexapi_fconly.so").symlink_to(FOLDER / "libvexapi_fconly.so")
        for command in runs:
            self.assertIn("FC_21:00:00:24:ff:4b:18:7a", run(*command, VEXAPI_SIM_STATE="").stdout)

    def check_refused(self, place, *arguments, status=1):
        before = sorted(self.folder.rglob("*"))
        built = self.build(*arguments)
        self.assertEqual((built.returncode, built.stdout), (status, ""))
        self.assertIn(place, built.stderr)
        self.assertEqual(sorted(self.folder.rglob("*")), before)

    def test_refuses_wrong_arguments(self):
        self.check_refused("usage: packaging/vib/build VERSION", "--help", status=2)
        self.check_refused("usage: packaging/vib/build VERSION", "--version", *"1234", status=2)
        self.check_refused("1.3<b>: not a version", "1.3<b>", *self.inputs()[1:])
        self.check_refused("usage: packaging/vib/build VERSION", *self.inputs()[:4], status=2)

    def test_refuses_missing_files(self):
        empty = self.folder / "empty"
        empty.touch()
        for missing in ("/nowhere", self.folder, empty):
            for at in range(2, 6):
                arguments = self.inputs()
                arguments[at] = missing
                self.check_refused(f"packaging/vib/build: {missing}: no such file, or an empty one", *arguments)

    def test_refuses_where_nothing_can_be_written(self):
        for place in ("/nowhere/x.vib", "/proc/x.vib", f"{self.commands}/x.vib"):
            self.check_refused(f"packaging/vib/build: {place}: cannot be written",
                               "1.3.6", place, *self.inputs()[2:])
        self.path.mkdir()
        self.check_refused(f"packaging/vib/build: {self.path}: not made")

    def test_full_folder_keeps_the_last_vib(self):
        self.path.write_bytes(b"old")
        # No file may have more than a block of 1024 bytes.
        built = run("bash", "-c", f"trap '' XFSZ; ulimit -f 1; exec '{BUILD}' \"$@\"", "-", *self.inputs())
        self.assertEqual(built.returncode, 1)
        self.assertIn(f"packaging/vib/build: {self.path}: not made", built.stderr)
        self.assertEqual(self.path.read_bytes(), b"old")
        self.assertEqual(sorted(self.folder.iterdir()), [self.commands, self.path])


class Check(VibTest):
    def findings(self, data):
        return list(CHECKER.check(data))

    def setUp(self):
        super().setUp()
        self.programs = [self.folder / "orfc-esxcli"]
        self.programs[0].write_bytes(b"\x7fELF" + bytes(range(256)))
        self.vib = Vib.of(self.good())

    def test_run(self):
        for signature, status, text in ((b"", 0, "as its descriptor says"), (b"signed", 1, "sig.pkcs7: not empty")):
            self.vib.signature = signature
            self.path.write_bytes(self.vib.pack())
            checked = run(CHECK, self.path)
            self.assertEqual((checked.returncode, checked.stdout, checked.stderr),
                             (status, f"{self.path}: {text}\n", ""))

    def test_arguments(self):
        for arguments in ([], ["-v"], [self.path, self.path]):
            checked = run(CHECK, *arguments)
            self.assertEqual((checked.returncode, checked.stderr), (2, "usage: packaging/vib/check VIB\n"))
        checked = run(CHECK, "/nowhere")
        self.assertEqual((checked.returncode, checked.stderr),
                         (1, "packaging/vib/check: /nowhere: No such file or directory\n"))

    def test_archive(self):
        good = self.vib.pack()
        members = [*unpack(good).items()]
        text = "instead of descriptor.xml, sig.pkcs7 and the payload"
        for data, finding in (
                (b"", "not an ar archive"),
                (b"PK\3\4", "not an ar archive"),
                (b"!<arch>\n", f"members  {text}"),
                (archive(members[1:]), f"members sig.pkcs7 orfc {text}"),
                (archive([members[1], members[0], members[2]]), f"members sig.pkcs7 descriptor.xml orfc {text}"),
                (archive(members + [("more", b"")]), f"members descriptor.xml sig.pkcs7 orfc more {text}"),
                (good + b"more", f"byte {len(good)}: no header of an ar member"),
                (good[:-1000], "orfc: cut short")):
            with self.subTest(finding):
                self.assertEqual(self.findings(data), [finding])
        for attributes in ("1           0     0     644     ", "0           1     0     644     ",
                           "0           0     1     644     ", "0           0     0     755     "):
            shown = " ".join(attributes.split())
            self.assertEqual(
                self.findings(archive(members, attributes)),
                [f"{name}: time, owner, group and mode {shown} instead of 0 0 0 644" for name, _ in members])

    def test_every_truncation_is_found(self):
        good = self.vib.pack()
        for length in range(len(good) - 1):
            self.assertTrue(self.findings(good[:length]), length)

    def test_descriptor(self):
        names = re.findall(r"^  <([a-z-]+)", self.vib.descriptor, re.MULTILINE)
        elements = " ".join(names)
        for old, new, finding in (
                ('<vib version="5.0">', '<vib version="6.0">', "not a VIB of version 5.0"),
                ('<vib version="5.0">', '<vib version="5.0" more="">', "not a VIB of version 5.0"),
                ("<type>bootbank<", "<type>locker<", "type is 'locker'"),
                ("<name>orfc-esxcli<", "<name>orfc esxcli<", "name is 'orfc esxcli'"),
                ("<version>1.3.6-1<", "<version>1.3.6<", "version is '1.3.6'"),
                ("<vendor>Orvane<", "<vendor><", "vendor is ''"),
                ("<summary>Fibre", "<summary> Fibre", "summary is ' Fibre Channel host bus adapters in esxcli'"),
                ("<description>C", "<description></description><description>C",
                 f"elements {elements.replace('description', 'description description')} instead of {elements}"),
                ("<release-date>2023-", "<release-date>2023-13-",
                 "release-date is '2023-13-11-14T22:13:20.000000+00:00'"),
                (".000000+00:00<", "<", "release-date without time zone"),
                ("<urls/>", "<urls><url>x</url></urls>", "urls holds url"),
                ("<urls/>", "<urls>x</urls>", "urls is 'x'"),
                ("<urls/>", "", f"elements {elements.replace(' urls', '')} instead of {elements}"),
                ("<urls/>", "<urls/><urls/>",
                 f"elements {elements.replace('urls', 'urls urls')} instead of {elements}"),
                ("<software-tags/>\n", "<tags/>\n",
                 f"elements {elements.replace('software-tags', 'tags')} instead of {elements}"),
                ("<compatibleWith/>", "", "relationships holds depends conflicts replaces provides"),
                ("<maintenance-mode>false<", "<maintenance-mode>no<", "maintenance-mode is 'no'"),
                ("<acceptance-level>community<", "<acceptance-level>partner<", "acceptance-level is 'partner'"),
                ("<live-install-allowed>true<", "<live-install-allowed>yes<", "live-install-allowed is 'yes'"),
                ("<live-remove-allowed>true<", "<live-remove-allowed>false<", "live-remove-allowed is 'false'"),
                ("<cimom-restart>false<", "<cimom-restart>true<", "cimom-restart is 'true'"),
                ("<stateless-ready>true<", "<stateless-ready><", "stateless-ready is ''"),
                ("<overlay>false<", "<overlay>true<", "overlay is 'true'"),
                ('<payload name="orfc"', '<payload name="other"',
                 "payload {'name': 'other', 'type': 'tgz'}, and the member is orfc"),
                ('type="tgz"', 'type="vgz"', "payload {'name': 'orfc', 'type': 'vgz'}, and the member is orfc"),
                ("</payload>", '</payload><payload name="more" type="tgz"/>', "payloads holds payload payload")):
            with self.subTest(new):
                vib = Vib.of(self.vib.pack())
                vib.replace(old, new)
                found = self.findings(vib.pack())
                self.assertEqual(found, [f"descriptor.xml: {finding}"])
        self.vib.name = "Payload"
        self.vib.replace('name="orfc"', 'name="Payload"')
        self.assertEqual(self.findings(self.vib.pack()), [
            "descriptor.xml: payload {'name': 'Payload', 'type': 'tgz'}, and the member is Payload"])
        self.vib.descriptor += "<"
        self.assertRegex(self.findings(self.vib.pack())[0], "^descriptor.xml: unclosed token")

    def test_no_payload(self):
        self.vib.descriptor = re.sub("<payload .*</payload>", "", self.vib.descriptor, flags=re.DOTALL)
        self.assertEqual(self.findings(self.vib.pack()), ["descriptor.xml: payloads holds nothing"])

    def test_checksums(self):
        good = self.vib.pack()
        descriptor = unpack(good)["descriptor.xml"].decode()
        for at, name in enumerate(("sha-256 of the tgz", "sha-256 of the tar", "sha-1 of the tar")):
            sums = re.findall("[0-9a-f]{40,}", descriptor)
            wrong = sums[at][:-1] + ("0" if sums[at][-1] != "0" else "1")
            data = good.replace(sums[at].encode(), wrong.encode())
            self.assertEqual(self.findings(data), [f"{name} is {sums[at]}, not {wrong}"])
        self.vib.replace('"sha-1"', '"md5"')
        self.assertEqual(self.findings(self.vib.pack()), [
            "descriptor.xml: checksums [('sha-256', None), ('sha-256', 'gunzip'), ('md5', 'gunzip')]"])

    def test_file_list(self):
        self.vib.replace(f"<file>{EXTENSION}</file>", f"<file>/{EXTENSION}</file>")
        self.assertEqual(self.findings(self.vib.pack()), [f"file-list: /{EXTENSION} is not in the payload",
                                                          f"file-list: {EXTENSION} is missing"])
        self.vib.replace(f"<file>/{EXTENSION}</file>", f"<file>{EXTENSION}</file>" * 2 + "<file/>")
        self.assertEqual(self.findings(self.vib.pack()), ["file-list: nothing is not in the payload",
                                                          "file-list: a path twice"])
        self.vib.replace("<file/>", "<link>x</link>")
        self.assertEqual(self.findings(self.vib.pack()), ["descriptor.xml: file-list holds file file file file link"])

    def test_compression(self):
        tar = self.vib.tar()
        packed = gzip.compress(tar, mtime=0)
        self.assertEqual(self.findings(self.vib.pack(tar, packed + b"x")), ["orfc: bytes after the end of the tgz"])
        self.assertEqual(self.findings(self.vib.pack(tar, packed[:-9])), ["orfc: cut short"])
        self.assertRegex(self.findings(self.vib.pack(tar, tar))[0], "^orfc: Error -3 .*incorrect header check$")
        bomb = gzip.compress(bytes((64 << 20) + 1))
        self.assertEqual(self.findings(self.vib.pack(tar, bomb)), ["orfc: more than 67108864 bytes"])
        self.assertEqual(self.findings(bytes((64 << 20) + 1)), ["more than 67108864 bytes"])

    def test_tar(self):
        tar = self.vib.tar()
        end = "orfc: bytes after the end of the tar"
        self.assertEqual(self.findings(self.vib.pack(tar + tar)), [end])
        # An archive ends where a header is damaged.
        at = tar.rindex(EXTENSION.encode() + b"\0")
        self.assertEqual(self.findings(self.vib.pack(tar[:at] + b"U" + tar[at + 1:])),
                         [end, *(f"{folder}: a folder without files" for folder in FOLDERS),
                          f"file-list: {EXTENSION} is not in the payload", f"no descriptor in {FOLDERS[-1]}/"])
        self.assertRegex(self.findings(self.vib.pack(tar[:at + 600]))[0], "^orfc: unexpected end of data$")
        self.assertRegex(self.findings(self.vib.pack(b"x" * 1024))[0], "^orfc: .*header")
        pax = self.vib.entry(EXTENSION)
        pax.pax_headers = {"comment": "x"}
        self.assertEqual(self.findings(self.vib.pack(self.vib.tar(tarfile.PAX_FORMAT))),
                         [f"{EXTENSION}: not in the ustar format"])

    def test_places(self):
        for path in ("bin/x", "etc/passwd", "etc/vmware/x", "usr/lib/x", "usr/libexec/vmware", "usr/lib/vmware-x/y",
                     "optional/x", "var/lib/x"):
            with self.subTest(path):
                vib = Vib.of(self.vib.pack())
                vib.add(path)
                self.assertEqual(self.findings(vib.pack()),
                                 [f"{path}: not where a VIB of community level may write"])

        for path in ("opt/x", "usr/lib/vmware/x", "usr/lib/vmware-debug/x", "usr/lib/cim/x", "usr/lib/pycim/x",
                     "usr/lib/hostprofiles/plugins/x", "etc/vmware/shutdown/x", "etc/vmware/pciid/x",
                     "etc/vmware/vm-support/x", "etc/vmware/firewall/x", "etc/vmware/service/x",
                     "etc/vmware/driver.map.d/x", "etc/cim/x", "usr/share/hwdata/driver.pciids.d/x",
                     "var/lib/sfcb/registration/x"):
            with self.subTest(path):
                vib = Vib.of(self.vib.pack())
                vib.add(path)
                self.assertEqual(self.findings(vib.pack()), [])

    def test_entries(self):
        program = f"{BIN}/orfc-esxcli"
        for path, attributes, finding in (
                (program, {"uid": 1000}, "owned by root:root (1000:0), not by root"),
                (program, {"gid": 1}, "owned by root:root (0:1), not by root"),
                (program, {"uname": "user"}, "owned by user:root (0:0), not by root"),
                (program, {"gname": "user"}, "owned by root:user (0:0), not by root"),
                (EXTENSION, {"mode": 0o666}, "mode 666"),
                (EXTENSION, {"mode": 0o600}, "mode 600"),
                (EXTENSION, {"mode": 0o4755}, "mode 4755"),
                ("opt/orvane", {"mode": 0o777}, "mode 777 of a folder"),
                ("opt/orvane", {"mode": 0o1755}, "mode 1755 of a folder")):
            with self.subTest(finding):
                vib = Vib.of(self.vib.pack())
                for name, value in attributes.items():
                    setattr(vib.entry(path), name, value)
                self.assertEqual(self.findings(vib.pack()), [f"{path}: {finding}"])

    def test_kinds(self):
        for kind in (tarfile.SYMTYPE, tarfile.LNKTYPE, tarfile.FIFOTYPE, tarfile.CHRTYPE, tarfile.BLKTYPE,
                     tarfile.CONTTYPE):
            for target in (EXTENSION, "/etc/shadow", "../../etc/shadow"):
                vib = Vib.of(self.vib.pack())
                vib.add("opt/orvane/x", b"", listed=False, type=kind, linkname=target)
                self.assertEqual(self.findings(vib.pack()), ["opt/orvane/x: neither a file nor a folder"])

    def test_paths(self):
        for path, *findings in (
                ("opt/../etc/x", "not a plain path", "its folder does not precede it"),
                ("opt/./x", "not a plain path", "its folder does not precede it"),
                ("opt//x", "not a plain path", "its folder does not precede it"),
                ("/opt/x", "not a plain path", "its folder does not precede it",
                 "not where a VIB of community level may write"),
                ("opt/orvane/fc/lib/x", "its folder does not precede it"),
                (f"{BIN}/orfc-esxcli/x", "its folder does not precede it")):
            with self.subTest(path):
                vib = Vib.of(self.vib.pack())
                vib.add_entry(path, b"")
                vib.replace("</file-list>", f"<file>{path}</file></file-list>")
                self.assertEqual(self.findings(vib.pack()), [f"{path}: {finding}" for finding in findings])
        for path, kind in ((EXTENSION, tarfile.REGTYPE), ("opt/orvane", tarfile.DIRTYPE)):
            vib = Vib.of(self.vib.pack())
            vib.add_entry(path, COMMANDS if kind == tarfile.REGTYPE else b"", type=kind,
                          mode=0o644 if kind == tarfile.REGTYPE else 0o755)
            self.assertEqual(self.findings(vib.pack()), [f"{path}: twice in the tar"])
        self.vib.add_entry("etc", b"", type=tarfile.DIRTYPE, mode=0o755)
        self.assertEqual(self.findings(self.vib.pack()), ["etc: a folder without files"])

    def test_commands(self):
        program = f"{BIN}/orfc-esxcli"
        finding = f"{EXTENSION}: executes /{program}, which is no program of the payload"
        for content, expected in (
                (COMMANDS.replace(b"/fc/bin/", b"/bin/"), finding.replace("/fc/bin/", "/bin/")),
                (COMMANDS.replace(b"ORFC_XML=strict /", b""), finding.replace(f"/{program}", "nothing")),
                (COMMANDS.replace(b"execute", b"description"), f"{EXTENSION}: executes nothing")):
            vib = Vib.of(self.vib.pack())
            vib.set(EXTENSION, content)
            self.assertEqual(self.findings(vib.pack()), [expected])
        vib.set(EXTENSION, b"<plugin>")
        self.assertRegex(self.findings(vib.pack())[0], f"^{EXTENSION}: no element found")
        vib = Vib.of(self.vib.pack())
        vib.set(program, b"text")
        self.assertEqual(self.findings(vib.pack()), [finding])
        vib = Vib.of(self.vib.pack())
        vib.entry(program).mode = 0o644
        self.assertEqual(self.findings(vib.pack()), [finding])
        vib.entry(EXTENSION).name = f"{BIN}/orfc-esxcli.xml"
        vib.replace(EXTENSION, f"{BIN}/orfc-esxcli.xml")
        self.assertIn("no descriptor in usr/lib/vmware/esxcli/ext/", self.findings(vib.pack()))


if __name__ == "__main__":
    unittest.main()
