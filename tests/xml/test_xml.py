#!/usr/bin/python3
"""XML documents of a hostile host, with ORFC_XML=strict through a parser, and without.

The host has the lab's adapters that the manual's examples name, with hostile bytes in every text of every record, and
in the texts of modules, vital product data and payloads. Every example runs with every identifier of its kind."""
import itertools
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest
import xml.parsers.expat

TESTS = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(TESTS / "manual"))
import test_manual as manual  # noqa: E402

EACH = int(os.environ.get("EACH", "1"))  # of so many identifiers, one is taken
LAB = TESTS.parent / "simulator/lab"
HOST = pathlib.Path(shutil.copytree(LAB, f"{manual.FOLDER.name}/lab")) / "host.json"

FRAGMENTS = (
    b"&", b"<", b">", b"]]>", b'"', b"'", b"&lt;", b"&#13;", b"&nosuch;", b"<!--", b"<![CDATA[", b"<?xml ",
    b"</string></field>\n<field name=\"Message\">\n<string>Success", b"%", b"%%", b"%s%n", b"\r\n", b"\r", b"\n", b"\t",
    b"  ", b"\x01", b"\x08", b"\x0b", b"\x1b[2J", b"\x1f", b"\x7f",
    "\u0080\u0085\u00e9\u2028\u20ac\ud7ff\ue000\ufffd\U00010000\U0001f600\U0010ffff".encode(),
    b"\xef\xbf\xbe", b"\xef\xbf\xbf",  # characters, but not of XML
    b"\x80", b"\xff", b"\xc0\xaf", b"\xe0\x80\xaf", b"\xf0\x80\x80\xaf", b"\xed\xa0\x80", b"\xed\xbf\xbf",
    b"\xf4\x90\x80\x80", b"\xf8\x88\x80\x80\x80", b"\xc3<", b"\xe2\x82&", b"\xf0\x9f\x98\r",
)


def replaced(raw):
    """What a parser must return: the bytes decoded, with U+FFFD for what XML 1.0 has no character for. Python replaces
    maximal subparts too."""
    return re.sub("[\x00-\x08\x0b\x0c\x0e-\x1f\ufffe\uffff]", "\ufffd", raw.decode("utf-8", "replace"))


def read_back(output):
    """The documents of a command as a parser returns them, with their markup as it was."""
    pieces = []
    for document in re.split(rb"(?=<\?xml )", output)[1:]:
        parser = xml.parsers.expat.ParserCreate()
        parser.XmlDeclHandler = lambda version, *_: pieces.append(f'<?xml version="{version}"?>')
        parser.StartElementHandler = lambda name, attributes: pieces.append(
            "".join((f"<{name}", *(f' {key}="{value}"' for key, value in attributes.items()), ">")))
        parser.EndElementHandler = lambda name: pieces.append(f"</{name}>")
        parser.CharacterDataHandler = pieces.append
        parser.Parse(document, True)
        pieces.append("\n")  # after the document
    return "".join(pieces)


class Texts:
    """Makes hostile texts of a given size. Each begins with a mark of what it is for, and a letter: a module's text
    without one isn't shown."""

    def __init__(self):
        self.marks = {}
        self.count = 0

    def make(self, name, size):
        mark = self.marks.setdefault(name, chr(0x100 + len(self.marks)))
        self.count += 1
        start = self.count * 5 % len(FRAGMENTS)
        text = mark.encode() + b"a" if size > 3 else b"a"
        for fragment in itertools.islice(itertools.cycle(FRAGMENTS), start, None):
            text += fragment
            if len(text) >= size:
                # Two of three fill their array, and so may end within a character.
                return text[:size - (self.count % 3 == 0)]


def bytes_of(data):
    return {"bytes": data.hex(":")}


def text_fields():
    """Texts of every record that a description has: {record: {field: size}}."""
    sources = [TESTS.parent / name for name in ("library/vexapi.h", "simulator/host/Host.h")]
    bodies = dict(re.findall(r"struct (\w+) \{\n(.*?)\n\}", "".join(map(pathlib.Path.read_text, sources)), re.DOTALL))
    tables = (TESTS.parent / "simulator/description/Records.cpp").read_text()
    records = {}
    for record, rows in re.findall(r"^SIM_RECORD\((\w+),(.*?)\)\n\n", tables, re.DOTALL | re.MULTILINE):
        fields = re.findall(r"^ *(\w+) (\w+)\[(\d+)\];", bodies.get(record, ""), re.MULTILINE)
        records[record] = {name: int(size) for kind, name, size in fields
                           if kind == "char" or f"As(Kind::TEXT, F({name}))" in rows}
    del records["DiagTestParams"]  # what a caller passes
    return {record: fields for record, fields in records.items() if fields}


def module_texts(image):
    """Offsets and sizes of a module's texts: vendor, part number, revision, serial number, date."""
    is_sfp = image[0] in (0x02, 0x03)  # SFF-8472, otherwise SFF-8636
    return ((20, 16), (40, 16), (56, 4), (68, 16), (84, 8)) if is_sfp else \
        ((148, 16), (168, 16), (184, 2), (196, 16), (212, 8))


def payload_texts(payload):
    """The same of a payload's optical product descriptor, which has the same texts."""
    value = payload.index(bytes.fromhex("00010008 0000003c")) + 8
    return tuple((value + offset, size) for offset, size in ((0, 16), (16, 16), (32, 16), (48, 4), (52, 8)))


class Host:
    """The hostile host's description."""
    VPD_KEYWORDS = ("PN", "SN", "MN", "EC", "RM", "V0", "V1", "V3", "V4", "V5", "V9")

    def __init__(self):
        self.fields = text_fields()
        self.texts = Texts()
        lab = json.loads(re.sub(r"(?m)^\s*//.*", "", (LAB / "lab.json").read_text()))
        self.templates = lab["Templates"]
        self.adapters = list(filter(self.is_named, self.resolve(lab["Adapters"])))
        for adapter in self.adapters:
            self.fill("_vexapi_adapter_t", adapter)
            adapter["PhyPorts"] = list(filter(self.is_named, adapter["PhyPorts"])) or adapter["PhyPorts"][:1]
            for port in adapter["PhyPorts"]:
                for protocol in port["Protocols"]:
                    self.fill_port(protocol)
        HOST.write_text(json.dumps({"Adapters": self.adapters}))

    @staticmethod
    def is_named(part):
        """Whether the manual names this adapter or physical port."""
        names = re.findall(r'"(?:SerialNumber|WWPN)": "(.+?)"', json.dumps(part))
        return any(name in manual.MANUAL for name in names)

    def resolve(self, value):
        """The value with the templates that it uses, as the simulator merges them."""
        if isinstance(value, list):
            return [self.resolve(element) for element in value]
        if not isinstance(value, dict):
            return value
        whole = {}
        names = value.get("Use", [])
        parts = [self.templates[name] for name in ([names] if isinstance(names, str) else names)]
        for part in [*map(self.resolve, parts), {key: self.resolve(value[key]) for key in value if key != "Use"}]:
            self.merge(whole, part)
        return whole

    def merge(self, whole, part):
        for key, value in part.items():
            if isinstance(value, dict) and isinstance(whole.get(key), dict):
                self.merge(whole[key], value)
            else:
                whole[key] = value

    def fill(self, record, value):
        for field, size in self.fields[record].items():
            value[field] = bytes_of(self.texts.make(f"{record}.{field}", size))

    def fill_port(self, port):
        self.fill("_vexapi_protocol_t", port)
        self.fill("_VEXAPI_DiagnosticsDPortResult", port.setdefault("DPortResult", {}))
        boot = port.setdefault("NvmeBoot", {})
        self.fill("_VEXAPI_FcNVMeBootParams", boot)
        for entry in boot.setdefault("BootEntry", [{}]):
            self.fill("VX_NVME_BOOT_ENTRY", entry)
        memo = port.setdefault("MemoBlock", {})
        self.fill("VX_SFlashMemoBlock", memo)
        memo["Signature"] = "FMBS"  # without it there is no report
        recovery = port.setdefault("CreditRecovery", {})
        self.fill("CreditInfo", recovery)
        recovery["State"] = 0  # only then is there a reason
        for key, record in (("Loopback", "_VEXAPI_LoopbackTestResult"), ("Echo", "_VEXAPI_ECHO_RESULTS")):
            for result in port.setdefault(key, [{}]):
                self.fill(record, result)
        for result in itertools.chain(*port.setdefault("ReadWriteBuffer", [[{}]])):
            self.fill("_VEXAPI_ReadWriteBufferTestResult", result)
        for target in port.get("Targets") or []:
            self.fill("_tagVEXAPI_SDMTarget", target)
            for lun in target.get("Luns") or []:
                lun["Repeat"] = 1
                self.fill("_tagVEXAPI_SDMLun", lun)
        if "Transceiver" in port:
            port["Transceiver"] = self.patched(port["Transceiver"], module_texts)
        if "RdpPayload" in port:
            port["RdpPayload"] = self.patched(port["RdpPayload"], payload_texts)
        port["Vpd"] = bytes_of(self.vpd())

    def patched(self, file, texts_of):
        """A blob with hostile texts."""
        patch = {}
        image = bytes.fromhex(re.sub("#.*", "", (LAB / file).read_text()))
        for number, (offset, size) in enumerate(texts_of(image)):
            text = self.texts.make(f"{texts_of.__name__}.{number}", size)
            patch[str(offset)] = text.ljust(size).hex(":")
        return {"file": file, "patch": patch}

    def vpd(self):
        keywords = b""
        for key in self.VPD_KEYWORDS:
            text = self.texts.make(f"VPD.{key}", 40)
            keywords += key.encode() + bytes([len(text)]) + text
        identifier = self.texts.make("VPD.PI", 100)
        sized = lambda data: len(data).to_bytes(2, "little") + data
        return b"\x82" + sized(identifier) + b"\x90" + sized(keywords) + b"\x78"


def run(words, variable=None):
    environment = dict(manual.ENVIRONMENT, VEXAPI_SIM_HOST=str(HOST), VEXAPI_SIM_STATE="")
    environment.pop("ORFC_XML", None)
    if variable is not None:
        environment["ORFC_XML"] = variable
    finished = subprocess.run([manual.PROGRAM, *words], env=environment, capture_output=True, check=True, timeout=60)
    assert not finished.stderr, finished.stderr
    return finished.stdout


def examples(kind):
    """The manual's examples of commands of a kind: path, plain command, its twin, arguments."""
    for example in manual.examples():
        _, *words = example.split()
        depth = 4 if words[2] in ("-s", "-v") else 2
        path, twin, arguments = words[:depth], words[depth], words[depth + 1:]
        if path[1] == kind and "help" not in words:
            # The plain commands, "help", and their twins in the same order.
            names = manual.children(*path)
            first = names.index("help") + 1
            yield path, names[names.index(twin) - first], twin, arguments


class Walk:
    """The commands of a kind with every identifier, and what they print."""
    kind = None
    shows = ()  # prefixes of the names of texts
    hides = ()  # those of them that no document shows

    @classmethod
    def setUpClass(cls):
        cls.host = Host()
        for path, text in manual.INPUTS.items():
            pathlib.Path(path).write_text(text)
        cls.calls = list(dict.fromkeys(
            (tuple(path), plain, twin, (identifier, *arguments[1:]) if arguments else ())
            for (path, plain, twin, arguments), identifier in
            itertools.product(examples(cls.kind), cls.identifiers())))
        # Some commands stage settings for a later one, so all run in order before they run in another way.
        for name, variable, which in (("raw", None, 1), ("strict", "strict", 1), ("twin", None, 2),
                                      ("strict_twin", "strict", 2)):
            setattr(cls, name, [run((*call[0], call[which], *call[3]), variable) for call in cls.calls])

    @classmethod
    def identifiers(cls):
        return re.findall("<string>(.*)</string>", run(("-t", cls.kind, "list")).decode())[::EACH]

    def each(self, check, *outputs):
        for call, *outputs_of_call in zip(self.calls, *outputs):
            with self.subTest(call=call):
                check(*outputs_of_call)

    def test_strict_documents_are_read_back(self):
        self.each(lambda strict, raw: self.assertEqual(read_back(strict), replaced(raw)), self.strict, self.raw)

    def test_text_format_stays(self):
        self.each(self.assertEqual, self.strict_twin, self.twin)

    def test_every_text_is_shown(self):
        shown = "".join(map(read_back, self.strict))
        marks = {name: mark for name, mark in self.host.texts.marks.items() if name.startswith(self.shows)}
        self.assertEqual({name for name, mark in marks.items() if mark not in shown}, set(self.hides))


class Adapters(Walk, unittest.TestCase):
    kind = "adapter"
    shows = ("_vexapi_adapter_t", "VX_SFlashMemoBlock")
    hides = ("VX_SFlashMemoBlock.Signature", "VX_SFlashMemoBlock.ToolId")  # only compared

    @classmethod
    def identifiers(cls):
        """Made from the records: an identifier in a strict document may have lost bytes."""
        text = lambda field: bytes.fromhex(field["bytes"].replace(":", ""))
        return [b"Adapter_%s_%s" % (text(adapter["Model"]), text(adapter["SerialNumber"]))
                for adapter in cls.host.adapters]

    def test_documents_without_the_variable_are_verbatim(self):
        head = b'<?xml version="1.0"?><output xmlns:esxcli="orfc">\n<list type="structure">\n'
        structure = (b'<structure typeName="AdapterList">\n<field name="Adapters">\n<string>%s</string></field>\n'
                     b"</structure>\n")
        listed = head + b"".join(structure % name for name in self.identifiers()) + b"</list>\n</output>\n"
        for value in (None, "", "STRICT", "strict ", "1"):
            self.assertEqual(run(("-t", "adapter", "list"), value), listed)


class Ports(Walk, unittest.TestCase):
    kind = "port"
    shows = ("_vexapi_protocol_t", "_VEXAPI_", "VX_NVME_BOOT_ENTRY", "CreditInfo", "VPD", "module_texts",
             "payload_texts")


class Targets(Walk, unittest.TestCase):
    kind = "target"
    shows = ("_tagVEXAPI_SDMTarget",)


class Luns(Walk, unittest.TestCase):
    kind = "lun"
    shows = ("_tagVEXAPI_SDMLun",)


class Completeness(unittest.TestCase):
    def test_every_text_of_every_record_is_hostile(self):
        host = Host()
        for record, fields in host.fields.items():
            self.assertEqual({f"{record}.{field}" for field in fields} - set(host.texts.marks), set())

    def test_every_text_belongs_to_a_class(self):
        prefixes = tuple(itertools.chain(*(walk.shows for walk in Walk.__subclasses__())))
        self.assertEqual([name for name in Host().texts.marks if not name.startswith(prefixes)], [])


if __name__ == "__main__":
    unittest.main()
