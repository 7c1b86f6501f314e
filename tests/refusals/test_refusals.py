#!/usr/bin/python3
"""Every failure of every command: its document, and its lines in the debug log.

REFUSALS has a row for each. To add one: the words after the family's options, the result code, the message, and the
traces that must be in the log at level 4, without the names of class and function if they are the family's and the
command's. `Row` documents the conditions that a row can set."""
import collections
import dataclasses
import functools
import json
import os
import pathlib
import re
import shlex
import subprocess
import tempfile
import unittest

BUILD = pathlib.Path(os.environ["BUILD"])
PROGRAM = BUILD / "orfc-esxcli"
TESTS = pathlib.Path(__file__).resolve().parents[1]
MANUAL = (TESTS.parent / "ORFC_ESXCLI_Readme.txt").read_text()
DEBUG_LOG = pathlib.Path("/var/tmp/orfc-esxcli.log")
LIBRARY_LOG = pathlib.Path("/var/tmp/vexapi-output.log")

FOLDER = tempfile.TemporaryDirectory()
JOURNAL = pathlib.Path(FOLDER.name) / "journal"

# Meaning of the words in the tables.
NAMES = {name: f"FC_{wwpn}" for name, wwpn in {
    # The lab's ports.
    "4G": "21:00:00:24:ff:0a:51:c4", "8G": "21:00:00:24:ff:92:0f:38", "rowan": "21:00:00:24:ff:4b:18:7a",
    "converged": "21:00:00:24:ff:08:65:91", "empty_bay": "21:00:00:24:ff:08:65:93", "willow": "21:00:00:24:ff:18:a4:e1",
    "larch": "21:00:00:24:ff:7e:2d:94", "virtual": "28:24:00:24:ff:00:00:1a", "mezzanine": "21:00:00:24:ff:91:0a:d2",
    "alder": "21:00:00:24:ff:a6:77:0c", "down": "21:00:00:24:ff:a6:77:0d", "birch": "21:00:00:24:ff:0c:48:2e",
    "maple": "21:00:00:24:ff:52:e1:40", "cedar": "21:00:00:24:ff:52:f8:9c",
    # fec.json
    "fec": "21:00:00:24:ff:10:20:30", "fec_virtual": "21:01:00:24:ff:10:20:30", "fec_fixed": "21:00:00:24:ff:10:20:31",
    "fec_8G": "21:00:00:24:ff:10:20:70",
    # boot.json
    "boot": "21:00:00:24:ff:60:00:01", "boot_virtual": "21:01:00:24:ff:60:00:01",
    "boot_no_bios": "21:00:00:24:ff:60:00:02", "boot_no_uefi": "21:00:00:24:ff:60:00:03",
    "boot_8G": "21:00:00:24:ff:60:00:04",
    # transceivers.json
    "sfp": "21:00:00:24:ff:60:00:07", "sfp_driver": "21:00:00:24:ff:60:00:08", "sfp_alder": "21:00:00:24:ff:60:00:09",
    # diagnostics.json
    "diag": "21:00:00:24:ff:70:00:01", "diag_virtual": "21:01:00:24:ff:70:00:01",
    "diag_first": "21:00:00:24:ff:70:00:02", "diag_second": "21:00:00:24:ff:70:00:03",
    "diag_mailbox": "21:00:00:24:ff:70:00:04", "diag_down": "21:00:00:24:ff:70:00:05",
    "diag_slow": "21:00:00:24:ff:70:00:06", "diag_mezzanine": "21:00:00:24:ff:70:00:07",
    "diag_8G": "21:00:00:24:ff:70:00:08",
    # refusals.json
    "16G_mezzanine": "21:00:00:24:ff:90:00:03", "64G": "21:00:00:24:ff:90:00:04",
}.items()}
NAMES |= {f"scm{number}": f"FC_21:00:00:24:ff:60:20:{number}" for number in (10, 20, 40, 41, 70, 71, 72, 73, 74)}
ARRAY, NVME, NOBODY = "50:06:0e:80:12:4a:7c:10", "50:0a:09:81:a1:c3:40:10", "50:06:0e:80:12:4a:7c:99"
NAMES |= {
    "larch_adapter": "Adapter_ORV2742_RFH1836M74420", "rowan_adapter": "Adapter_ORV8362_RFE1506P30951",
    "8G_adapter": "Adapter_ORV2562_RFD1019S27745", "birch_adapter": "Adapter_ORV2872_RFL2348G90175",
    "bare_adapter": "Adapter_ORV2882_GFD2111M91002", "network_adapter": "Adapter_ORV8362_RFN0001",
    "virtual_adapter": "Adapter_ORV2672_RFN0002",
    "array": ARRAY, "nvme": NVME, "nobody": NOBODY, "to_array": f"_Target_{ARRAY}",
    "target": f"FC_21:00:00:24:ff:cc:00:01_Target_{ARRAY}",
    "target_virtual": f"FC_28:24:00:24:ff:cc:00:01_Target_{ARRAY}",
    "target_willow": f"FC_20:00:00:24:ff:cc:00:02_Target_{ARRAY}",
}
for kind, text in {"mbi": "ORFC-IMAGE MBI 2.10.15\n", "sfp_image": "ORFC-IMAGE SFP B\n",
                   "nvram": "ORFC-IMAGE NVRAM 1\nFrameSize 1024\n"}.items():
    NAMES[kind] = f"{FOLDER.name}/{kind}"
    pathlib.Path(NAMES[kind]).write_text(text)
NAMES["out"] = f"{FOLDER.name}/out"

# Messages of several families.
INVALID = "Failed, Invalid parameter"
NO_HOST = "Failed, Host not found"
NO_ADAPTER = "Failed, Adapter not found"
NO_FILE = "Failed, File not found"
UNKNOWN = "Failed, Unknown"

NO_DOCUMENT = None


@dataclasses.dataclass(frozen=True)
class Row:
    words: str
    code: int  # in the trace of the document
    message: str
    # Texts at level 4; %d matches any number. "Function: text" names another function of the family's class, "*: text"
    # any function, and "Class::Function: text" both. One text of a tuple must be there.
    traces: tuple
    faults: str = ""  # of the library
    refuse: int = 0  # the first opening of the library's log that fails; all later ones fail too
    host: str = None  # instead of the family's
    staged: str = None  # words of a command to run first
    broken: str = ""  # the file for staged settings can't be created ("create") or replaced ("merge")
    display: str = None  # the function that writes the document, if not the leaf's
    refused_in: str = ""  # the function that rejects an option
    ahead: tuple = ()  # messages of documents before the failing one
    where: tuple = ("output",)  # where documents with this message appear: "output", "log" of the library

    def __str__(self):
        circumstances = [f"{field.name}={value!r}" for field in dataclasses.fields(self)[4:]
                         if (value := getattr(self, field.name)) != field.default]
        return " ".join((self.words, *circumstances))


def row(words, code, message, *traces, **circumstances):
    return Row(words, code, message, traces, **circumstances)


@dataclasses.dataclass(frozen=True)
class Family:
    path: str
    class_name: str
    # Commands that succeed, in order, and the functions that trace their entry and exit.
    successes: list
    rows: list
    host: str = None
    displays: dict = dataclasses.field(default_factory=dict)  # by leaf; DisplayError for others
    field: str = "Message"  # of the documents

    @property
    def name(self):
        return self.path.split()[-1]

    def display(self, row):
        return row.display or self.displays.get(row.words.split()[0], "DisplayError")


def common_function(leaf):
    leaf = {"getraw": "getRaw", "updatenvram": "updateNvram"}.get(leaf, leaf)
    return f"Cmd{leaf[0].upper()}{leaf[1:]}Common"


def rows_of_port(leaf, rest="", also="", none=True):
    """Failures of every command that takes a port; `also` is a trace with the code. Without `none` the command checks
    other words first."""
    resolver = "PhysicalPortCmdsProcessor::GetPhyPortFromPortString"
    own = lambda code: (also.replace("%d", str(code)),) if also else ()
    yield row(f"{leaf} nosuch {rest}", 6, INVALID, f"{resolver}: Invalid Port identifier nosuch", *own(6))
    if none:
        yield row(leaf, 6, INVALID, f"{resolver}: Invalid Port identifier ", *own(6))
    yield row(f"{leaf} FC_21:00:00:24:ff:00:00:00 {rest}", 6, INVALID, *own(6))
    yield row(f"{leaf} help {rest}", 5, UNKNOWN, *own(5))
    yield row(f"{leaf} {{larch}} {rest}", 14, NO_HOST, f"{resolver}: Adapter List is NULL", *own(14),
              faults="VEXAPI_GetAdapterList=null")
    yield row(f"{leaf} {{larch}} {rest}", 6, INVALID, *own(6), faults="VEXAPI_GetAdapterList=nullhead")


def rows_of_adapter(leaf, rest=""):
    yield row(f"{leaf} nosuch {rest}", 6, INVALID,
              "AdapterDefaultCfgCmdsProcessor::GetPhyPortFromAdapterString: Invalid Adapter identifier nosuch")
    if not rest:
        yield row(leaf, 6, INVALID,
                  "AdapterDefaultCfgCmdsProcessor::GetPhyPortFromAdapterString: Invalid Adapter identifier ")
    yield row(f"{leaf} Adapter_ORV2742_x {rest}", 6, INVALID)
    yield row(f"{leaf} -h {rest}", 5, UNKNOWN)
    yield row(f"{leaf} {{larch_adapter}} {rest}", 14, NO_HOST,
              "AdapterCmdsProcessor::GetPhyPortFromAdapterString: Adapter List is NULL",
              faults="VEXAPI_GetAdapterList=null")


def rows_of_target(leaf, rest="", also=""):
    resolver = "FCTargetCmdsProcessor::GetTargetFromTargetString"
    own = lambda code: (also.replace("%d", str(code)),) if also else ()
    yield row(f"{leaf} nosuch {rest}", 6, INVALID, f"{resolver}: Invalid Port identifier nosuch", *own(6))
    yield row(leaf, 6, INVALID, f"{resolver}: Invalid Port identifier ", *own(6))
    yield row(f"{leaf} {{larch}} {rest}", 6, INVALID, f"{resolver}: Invalid Tgt identifier {NAMES['larch']}", *own(6))
    yield row(f"{leaf} {{larch}}_Target_{NOBODY} {rest}", 6, INVALID, *own(6))
    yield row(f"{leaf} /? {rest}", 5, UNKNOWN, f"{resolver}: Invoking Help", *own(5))
    yield row(f"{leaf} {{larch}}{{to_array}} {rest}", 14, NO_HOST, f"{resolver}: Adapter List is NULL", *own(14),
              faults="VEXAPI_GetAdapterList=null")


def rows_of_list(class_name):
    yield row("list", None, NO_DOCUMENT, f"{class_name}::CmdListCommon: List is NULL",
              faults="VEXAPI_GetAdapterList=null")
    yield row("list help", None, NO_DOCUMENT)


def without_log(words, calls, message=NO_FILE, **circumstances):
    """The library's log can't be opened for one of the calls; the first opening is at the start."""
    return [row(words, 19, message, refuse=number + 1, **circumstances) for number in range(1, calls + 1)]


def by_status(words, function, results, trace=None):
    """`results` maps each status to its code and message."""
    return [row(words, code, message, *([trace.replace("%d", str(status))] if trace else []),
                faults=f"{function}={status}")
            for status, (code, message) in results.items()]


# -t adapter

FLASH_RESULTS = {
    3: (19, "Failed, Flash File not found"), 40: (42, "Failed, Memory Error"), 101: (22, "Failed, File Open Error"),
    102: (25, "Failed, File read Error"), 103: (23, "Failed, File not Valid"), 104: (26, "Failed, Invalid SSID"),
    105: (27, "Failed, Corrupted File"), 106: (29, "Failed, Invalid File Size"), 107: (30, "Failed, Checksum Error"),
    108: (17, "Failed, Invalid data"), 110: (18, "Failed, Invalid Serial Number"),
    111: (31, "Failed, Invalid Signature"), 113: (35, "Failed, Feature not supported for this adapter"),
    114: (21, NO_ADAPTER), 121: (35, "Failed, Feature not supported for this adapter"),
    133: (32, "Failed, Flash Update disabled as FW lockdown mode enabled"),
    522: (16, "Failed, Flash Image Components Validation Error"), 999: (11, "Failed, Flash Update Error"),
}
NOT_UPDATED = "Update operation failed. uReturnCode=%d"

ADAPTERS = [
    Family("-t adapter", "AdapterCmdsProcessor", displays={"update": "DisplayUpdateInfo"},
           successes=[("list", ""), ("update {larch_adapter} {mbi} MBI", "DisplayUpdateInfo")],
           rows=[
               *rows_of_adapter("update", "{mbi} MBI"),
               *rows_of_list("AdapterCmdsProcessor"),
               row("update", 4, "Failed, Invalid Number of parameters", "Invalid number of arguments"),
               row("update {larch_adapter}", 4, "Failed, Invalid Number of parameters", "Invalid number of arguments"),
               row("update {larch_adapter} {mbi}", 4, "Failed, Invalid Number of parameters",
                   "Invalid number of arguments"),
               row("update {larch_adapter} nosuch.bin MBI", 19, "Failed, Flash File not found",
                   "Firmware file [nosuch.bin] does not exist"),
               *without_log("update {larch_adapter} {mbi} MBI", 1, "Failed, Flash File not found"),
               row("update {larch_adapter} {mbi} Firmware", 11, "Failed, Flash Update Error",
                   NOT_UPDATED.replace("%d", "-1")),
               row("update {network_adapter} {mbi} MBI", 11, "Failed, Flash Update Error",
                   NOT_UPDATED.replace("%d", "-1"), host="refusals"),
               # The library's log stays open and receives the document.
               *(row(f"update {{{adapter}_adapter}} {{mbi}} {kind}", 35,
                     "Failed, Feature not supported for this adapter", where=("log",))
                 for adapter, kind in (("8G", "BrdCfg"), ("birch", "FWPreload"), ("rowan", "PEPCfg"))),
               *by_status("update {larch_adapter} {mbi} MBI", "VEXAPI_doOptionROMUpdate", FLASH_RESULTS, NOT_UPDATED),
               *by_status("update {larch_adapter} {mbi} brdcfg", "VEXAPI_UpdateSpecificFlashRegionFromFile",
                          {104: FLASH_RESULTS[104]}, NOT_UPDATED),
               *by_status("update {8G_adapter} {mbi} fwpreload", "VEXAPI_UpdateAdapterFirmwareTableFromFile",
                          {105: FLASH_RESULTS[105]}, NOT_UPDATED),
               *by_status("update {larch_adapter} {mbi} pepcfg", "VEXAPI_UpdateAdapterPEPCfgFromFile",
                          {106: FLASH_RESULTS[106]}, NOT_UPDATED),
           ]),
    Family("-t adapter -s info", "AdapterInfoCmdsProcessor",
           successes=[("get {larch_adapter}", "DisplayAdapterInfo")],
           rows=[
               *rows_of_adapter("get"),
               *without_log("get {larch_adapter}", 1),
               row("get {network_adapter}", 21, NO_ADAPTER, host="refusals"),
           ]),
    Family("-t adapter -s personality", "AdapterPersonalityCmdsProcessor",
           successes=[("get {rowan_adapter}", "DisplayAdapterPersonality"),
                      ("set {rowan_adapter} FC", "DisplayAdapterPersonality")],
           rows=[
               *rows_of_adapter("get"),
               row("get {virtual_adapter}", 51, "Failed, Feature not supported for virtual port", host="refusals"),
               row("get {network_adapter}", 21, NO_ADAPTER, host="refusals"),
               row("get {rowan_adapter}", 13, "Failed, Personality read failed", faults="VEXAPI_GetPersonalityType=5"),
               *rows_of_adapter("set", "FC"),
               row("set {network_adapter} FC", 21, NO_ADAPTER, host="refusals"),
               row("set {larch_adapter} CNA", 35, "Failed, Not supported for this adapter",
                   "feature not supported for this adapter"),
               row("set {virtual_adapter} CNA", 51, "Failed, Feature not supported for virtual port", host="refusals"),
               row("set Adapter_ORV2670M_RFF1508V22064 CNA", 24, "Failed, Personality change not allowed for user",
                   "personality change by user not supported"),
               row("set {rowan_adapter} FC", 13, "Failed, Personality read failed",
                   faults="VEXAPI_GetPersonalityType=5"),
               row("set {rowan_adapter} FC", 20, "Failed, Personality change failed",
                   faults="VEXAPI_ChangePersonalityType=5"),
           ]),
    Family("-t adapter -s flashinfo", "AdapterFlashInfoCmdsProcessor",
           successes=[("get {larch_adapter}", "DisplayFlashInfo")],
           rows=[
               *rows_of_adapter("get"),
               *without_log("get {larch_adapter}", 1),
               row("get {network_adapter}", 21, NO_ADAPTER, host="refusals"),
               row("get {rowan_adapter}", 35, "Failed, feature not supported for this adapter",
                   "Command not supported for this adapter"),
               row("get {larch_adapter}", 13, "Failed, Flash Info read failed",
                   faults="VEXAPI_GetAdapterFlashMemoBlock=5"),
               row("get {bare_adapter}", 31, "Failed, Flash Signature Error", "Get FMB signature failed err=%d",
                   host="boot"),
           ]),
]

# -t port, identity and state

PORTS = [
    Family("-t port", "PhysicalPortCmdsProcessor", displays={"updatenvram": "DisplayUpdateNvram"},
           successes=[("list", ""), ("updatenvram {larch} {nvram}", "DisplayUpdateNvram")],
           rows=[
               *rows_of_port("updatenvram", "{nvram}"),
               *rows_of_list("PhysicalPortCmdsProcessor"),
               row("updatenvram {virtual} {nvram}", 51, "Failed, feature not supported for virtual port"),
               row("updatenvram {larch} nosuch.txt", 19, NO_FILE, "NVRAM file [nosuch.txt] does not exist"),
               row("updatenvram {larch}", 19, NO_FILE),
               *without_log("updatenvram {larch} {nvram}", 1),
               row("updatenvram {larch} {nvram}", 20, "Failed, NVRAM update failed",
                   faults="VEXAPI_UpdateAdapterNVRAMFromFile=5"),
           ]),
    Family("-t port -s info", "PhysicalPortInfoCmdsProcessor", successes=[("get {larch}", "DisplayPortInfo")],
           rows=[*rows_of_port("get"), *without_log("get {larch}", 1)]),
    Family("-t port -s stats", "PhysicalPortFCStatsCmdsProcessor",
           successes=[("get {larch} Driver", "DisplayFCDriverStats"), ("get {larch} Firmware", "DisplayFCFWStats"),
                      ("reset {larch} Firmware", "")],
           rows=[
               *rows_of_port("get", "Driver"),
               row("get {larch} both", 6, INVALID, "Invalid mode=both"),
               row("get {larch}", 6, INVALID, "Invalid mode="),
               *rows_of_port("reset", "Firmware"),
               row("reset {larch} Driver", 6, INVALID, "Invalid mode=Driver"),
               row("reset {larch}", 6, INVALID, "Invalid mode="),
               *without_log("reset {larch} Firmware", 1),
               row("reset {larch} Firmware", 39, "Failed, Statistics clear error", faults="VEXAPI_ResetDeviceStats=5"),
           ]),
    Family("-t port -s dmi", "PhysicalPortDMICmdsProcessor", displays={"update": "DisplaySfpUpdate"},
           successes=[("get {larch}", "DisplayDMIInfo"), ("getraw {larch}", "DisplayRawDMIInfo"),
                      ("update {birch} {sfp_image} WTD", "DisplaySfpUpdate")],
           rows=[
               *(refusal for leaf in ("get", "getraw") for refusal in (
                   *rows_of_port(leaf),
                   *without_log(f"{leaf} {{larch}}", 1),
                   row(f"{leaf} {{larch}}", 13, "Failed, SFP DMI data read failed", faults="VEXAPI_GetSFPData=5"),
                   row(f"{leaf} {{empty_bay}}", 8, "Failed, Data not available"))),
               *rows_of_port("update", "{sfp_image} WTD"),
               row("update {birch} {sfp_image}", 6, INVALID),
               row("update {birch} nosuch.img WTD", 19, NO_FILE, "SFP Image file [nosuch.img] does not exist"),
               row("update {birch} {sfp_image} Other", 57, "Failed, SFP FW update not supported for this SFP vendor"),
               row("update {larch} {sfp_image} WTD", 35, "Failed, Feature not supported for adapter"),
               row("update {sfp_driver} {sfp_image} WTD", 45, "Failed, Feature not supported by driver",
                   host="transceivers"),
               *without_log("update {birch} {sfp_image} WTD", 1),
               *by_status("update {birch} {sfp_image} WTD", "VEXAPI_SfpModuleFirmwareUpdate", {
                   101: (22, "Failed, File open error"), 107: (30, "Failed, Checksum error"),
                   113: (35, "Failed, Feature not supported for adapter"), 114: (21, NO_ADAPTER),
                   118: (45, "Failed, Feature not supported by driver"), 144: (59, "Failed, SFP FW update failed"),
                   145: (58, "Failed, SFP Vendor mismatched"),
                   146: (57, "Failed, SFP FW update not supported for this SFP vendor"), 115: (50, UNKNOWN)}),
           ]),
    Family("-t port -s vpd", "PhysicalPortVPDCmdsProcessor", successes=[("get {larch}", "DisplayVPDInfo")],
           rows=[
               *rows_of_port("get"),
               *without_log("get {larch}", 1),
               row("get {larch}", 41, "Failed, VPD failed", faults="VEXAPI_GetVpd=5"),
           ]),
    Family("-t port -s fwdump", "PhysicalPortFwDumpCmdsProcessor",
           successes=[("get {larch} {out}", "DisplayFwDumpInfo")],
           # Its text for a bad value has a capital letter of its own.
           rows=[
               *(dataclasses.replace(refusal, message=refusal.message.replace(" parameter", " Parameter"))
                 for refusal in rows_of_port("get", "{out}")),
               *without_log("get {larch} {out}", 1),
               *by_status("get {larch} {out}", "VEXAPI_SDGetFwDump2", {
                   0x20000064: (6, "Failed, Invalid Parameter"), 0x20000072: (42, "Failed, Memory Error"),
                   0x20000073: (4, "Failed, Parameter Error"), 5: (13, "Failed, FW Dump read failed")}),
               row("get {larch}", 4, "Failed, Parameter Error"),
               row("get {8G} {out}", 46, "Failed, FW Dump Not Available"),
               row("get {larch} /nosuch/file", 19, NO_FILE),
           ]),
    Family("-t port -s beacon", "PhysicalPortBeaconCmdsProcessor",
           successes=[("get {larch}", "DisplayBeaconInfo"), ("set {larch} ON", "DisplayBeaconInfo")],
           rows=[
               *(refusal for leaf, rest, calls in (("get", "", 2), ("set", "ON", 3)) for refusal in (
                   *rows_of_port(leaf, rest),
                   row(f"{leaf} {{virtual}} {rest}", 51, "Failed, feature not supported for virtual port"),
                   row(f"{leaf} {{mezzanine}} {rest}", 35, "Failed, feature not supported"),
                   row(f"{leaf} {{willow}} {rest}", 35, "Failed, feature not supported"),
                   row(f"{leaf} {{larch}} {rest}", 13, "Failed, Beacon read failed", faults="VEXAPI_IsMezzAdapter=5"),
                   row(f"{leaf} {{larch}} {rest}", 13, "Failed, Beacon read failed",
                       faults="VEXAPI_GetAdapterBeaconStatus=5"),
                   *without_log(f"{leaf} {{larch}} {rest}", calls))),
               row("set {larch} 1", 6, INVALID),
               row("set {larch}", 6, INVALID),
               row("set {larch} OFF", 20, "Failed, Beacon update failed", faults="VEXAPI_UpdateAdapterBeaconStatus=5"),
           ]),
]

# -t port, settings


def not_pending(*traces):
    return row("set {larch}", 0, UNKNOWN, *traces)


LOOP_ONLY = "Failed, Connection Options value Loop_Only not supported for data rate value 16 Gbps and above"
NO_TIMER = ("Failed, Interrupt Delay Timer value > 0 not supported for Operation Mode value "
            "Interrupt_For_Every_I/O_Completion")
VIRTUAL = "Failed, feature not supported for virtual port"


def refused_parameters():
    """Rejected options of `hbaparams setFile`, which are named at level 1."""
    for port, option, code, message in (
            ("maple", "-c Loop_Only", 6, INVALID),
            ("maple", "-c Loop_Preferred_Otherwise_Point_To_Point", 6, INVALID),
            ("larch", "-c Loop", 6, INVALID),
            ("birch", "-c Loop_Only", 18, LOOP_ONLY),
            ("willow", "-d Auto", 47, "Failed, Read-Only parameter"),
            ("cedar", "-d Auto", 47, "Failed, Read-Only parameter"),
            ("maple", "-d 4_Gbps", 6, INVALID),
            ("mezzanine", "-d 64_Gbps", 6, INVALID),
            ("larch", "-d 1_Gbps", 6, INVALID),
            ("larch", "-d 10_Gbps", 6, INVALID),
            ("larch", "-d 16_Gbps -c Loop_Only", 18, LOOP_ONLY),
            ("willow", "-m Interrupt_For_Every_I/O_Completion", 35, "Failed, feature not supported"),
            ("larch", "-m Sometimes", 6, INVALID),
            ("larch", "-z 2112", 6, INVALID),
            ("larch", "-z 4096", 6, INVALID),
            ("willow", "-e 1", 35, "Failed, feature not supported"),
            ("larch", "-e 256", 6, INVALID),
            ("larch", "-m Interrupt_For_Every_I/O_Completion -e 5", 17, NO_TIMER),
            ("8G", "-x 65536", 6, INVALID),
            ("larch", "-r 256", 6, INVALID),
            ("larch", "-u 256", 6, INVALID),
            ("larch", "-w 256", 6, INVALID),
            ("larch", "-o 241", 6, INVALID),
            ("larch", "-y 257", 6, INVALID),
            ("larch", "-l 126", 6, INVALID),
            *((port, f"-{letter} 1", 35, "Failed, feature not supported")
              for port, letters in (("willow", "lpgknqj"), ("4G", "knqj"), ("8G", "nqj"), ("rowan", "xqj"),
                                    ("larch", "xj"), ("alder", "xj"), ("birch", "x"), ("converged", "x"))
              for letter in letters),
            *(("birch", f"-{letter} yes", 6, INVALID) for letter in "bpfgaknqj")):
        yield row(f"setFile {{{port}}} {option}", code, message, refused_in="UpdateHBAParamsInFile")
    yield row("setFile {16G_mezzanine} -d 32_Gbps", 6, INVALID, host="refusals")
    yield row("setFile {64G} -c Loop_Only", 18, LOOP_ONLY, host="refusals")
    yield row("setFile {larch} -d 16_Gbps", 18, LOOP_ONLY, staged="setFile {larch} -d 8_Gbps -c Loop_Only")
    yield row("setFile {larch} -c Loop_Only", 18, LOOP_ONLY, staged="setFile {larch} -c Point_To_Point_Only -d 16_Gbps")
    yield row("setFile {larch} -e 5", 17, NO_TIMER, staged="setFile {larch} -m Interrupt_For_Every_I/O_Completion")


# The obstacle is a dangling link, which may be refused before writing.
NOT_MADE = tuple(f"FileOps::UpdateKeyValueInFile: File open failed in {mode} mode" for mode in ("read", "write"))
NOT_REPLACED = "FileOps::UpdateKeyValueInFile: temp file open failed"

FEC_READ_ERRORS = {"VEXAPI_FCGetFECSupportInfo": "Get FEC Info failed",
                   "VEXAPI_IsMezzAdapter": "Mezz adapter check failed",
                   "VEXAPI_GetFWPrivateStats": "Get FW Private stats failed"}
FEC_FIXED = "Modification of fec-status is supported at 16Gbps and Unknown speed for non-mezz adapters only"

BOOT_READ, BOOT_UPDATE = "Failed, Boot Config read failed", "Failed, Boot Config update failed"
NO_BIOS, NO_UEFI = "Failed, Adapter does not have ROM BIOS", "Failed, Adapter does not have ROM UEFI"
NOT_ON_ADAPTER = "Failed, Feature not supported for this adapter"
NOT_IN_UEFI = "Failed, Boot parameter not supported with UEFI boot mode option"
NEEDS_UEFI = "Failed, Boot parameter requires UEFI boot mode option"
NEEDS_MODE = "Failed, Boot parameter requires valid boot mode option"
NO_UEFI_MODE = "Failed, UEFI boot mode not supported for this adapter"
NO_NVME_MODE = "Failed, UEFI/NVME boot mode not supported for this adapter"
NEEDS_FCP = "Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets"
NEEDS_NVME = "Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets"


def not_supported(option, value):
    return f"*: {option}={value.format_map(NAMES)} not supported"


def refused(words, option, value, code, message):
    """A boot option whose value, the last word, is rejected, and named without its dashes."""
    return row(f"setFile {words} --{option} {value}", code, message, not_supported(option, value),
               refused_in="UpdateBootConfigInFile")


def rows_of_boot(modes):
    """Failures common to both groups of boot settings. `modes` has the words that select BIOS and UEFI."""
    bios, uefi = modes
    for leaf in ("get", "setFile"):
        yield from rows_of_port(leaf, bios, none=False)
        yield row(f"{leaf} {{boot_virtual}} {bios}", 51, "Failed, Feature not supported for virtual port")
        yield from without_log(f"{leaf} {{boot}} {bios}", 2, UNKNOWN)
        yield row(f"{leaf} {{boot}} {uefi}", 13, BOOT_READ, faults="VEXAPI_SetBfsConfigMode=5")
        yield row(f"{leaf} {{boot_no_bios}} {bios}", 53, NO_BIOS)
        yield row(f"{leaf} {{boot_no_uefi}} {uefi}", 54, NO_UEFI)
        yield row(f"{leaf} {{boot}} {bios}", 13, BOOT_READ, faults="VEXAPI_GetBootDeviceInfo=5")
    yield row(f"setFile {{boot}} {bios}", 19, UNKNOWN, NOT_MADE, broken="create")
    yield row(f"setFile {{boot}} {bios} --enable-bfs true", 19, UNKNOWN, NOT_REPLACED, broken="merge",
              staged=f"setFile {{boot}} {bios}")
    yield from rows_of_port("set")
    yield row("set {boot_virtual}", 51, "Failed, Feature not supported for virtual port")
    yield row("set {boot}", 13, BOOT_READ, faults="VEXAPI_GetBootDeviceInfo=5")
    yield row("set {boot}", 0, UNKNOWN)
    yield from without_log("set {boot}", 2, UNKNOWN, staged=f"setFile {{boot}} {bios}")
    yield row("set {boot}", 20, BOOT_UPDATE, faults="VEXAPI_SetBootDeviceInfo=5", staged=f"setFile {{boot}} {bios}")
    # Options; first those that a mode or an adapter doesn't support.
    yield refused(f"{{boot}} {uefi}", "selectable-boot", "true", 18, NOT_IN_UEFI)
    yield refused(f"{{boot_8G}} {bios}", "fabric-assigned-boot-lun", "true", 35, NOT_ON_ADAPTER)
    for option in ("enable-bfs", "fabric-assigned-boot-lun", "selectable-boot"):
        yield refused(f"{{boot}} {bios}", option, "yes", 6, INVALID)
    needs_uefi = NEEDS_UEFI if "UEFI" in uefi and "--" in uefi else NEEDS_MODE
    for option in ("selective-login", "selective-lun-login", "world-login"):
        yield refused(f"{{boot_8G}} {bios}", option, "true", 35, NOT_ON_ADAPTER)
        yield refused(f"{{boot}} {bios}", option, "true", 4, needs_uefi)
        yield refused(f"{{boot}} {uefi}", option, "yes", 6, INVALID)


SETTINGS = [
    Family("-t port -s hbaparams", "PhysicalPortHBAParamsCmdsProcessor",
           displays={"restoreDefaults": "DisplayRestoreDefaultsError", "save": "DisplaySaveError"},
           successes=[("get {larch}", "DisplayHBAParamsInfo"),
                      ("setFile {larch} --frame-size 1024", "CreateHBAParamsFile UpdateHBAParamsInFile "
                       "ReadHBAParamsFromFile DisplayHBAParamsInfo"),
                      ("set {larch}", "ReadHBAParamsFromFile DisplayHBAParamsInfo"),
                      ("restoreDefaults {larch}", ""), ("save {larch} {out}", "")],
           rows=[
               *(refusal for leaf, rest in (("get", ""), ("setFile", "-z 512"), ("set", ""), ("restoreDefaults", ""),
                                            ("save", "{out}"))
                 for refusal in (
                     *rows_of_port(leaf, rest),
                     row(f"{leaf} {{virtual}} {rest}", 51, VIRTUAL),
                     *without_log(f"{leaf} {{larch}} {rest}", 1, UNKNOWN))),
               *(row(f"{leaf} {{larch}}", 13, "Failed, NVRAM read failed", faults="VEXAPI_GetHBAParamsInfo=5")
                 for leaf in ("get", "setFile", "set")),
               row("restoreDefaults {larch}", 13, "Failed, NVRAM read failed", faults="VEXAPI_RestoreDefaultNVRAM=5"),
               row("save {larch} {out}", 13, "Failed, NVRAM read failed",
                   faults="VEXAPI_SaveSingleAdapterNVRAMToFile=5"),
               row("save {larch}", 6, INVALID),
               *refused_parameters(),
               row("setFile {larch} -z 512", 19, UNKNOWN, NOT_MADE, broken="create"),
               row("setFile {larch} -z 512", 19, UNKNOWN, NOT_REPLACED, broken="merge", staged="setFile {larch}"),
               not_pending(),
               row("set {larch}", 20, "Failed, NVRAM update failed", faults="VEXAPI_UpdateHBAParameters=5",
                   staged="setFile {larch}"),
               row("set {larch}", 19, UNKNOWN, refuse=3, staged="setFile {larch}"),
           ]),
    Family("-t port -s bbcr", "PhysicalPortBBCRCmdsProcessor",
           successes=[("get {larch}", "DisplayBBCRInfo"),
                      ("setFile {larch} -c 3", "CreateBBCRFile UpdateBBCRInFile ReadBBCRFromFile DisplayBBCRInfo"),
                      ("set {larch}", "ReadBBCRFromFile DisplayBBCRInfo")],
           rows=[
               *(refusal for leaf in ("get", "setFile", "set") for refusal in (
                   *rows_of_port(leaf),
                   row(f"{leaf} {{virtual}}", 51, VIRTUAL, "Command not supported for vport"),
                   row(f"{leaf} {{rowan}}", 35, "Failed, feature not supported",
                       "Command not supported for this adapter"),
                   *without_log(f"{leaf} {{larch}}", 1),
                   row(f"{leaf} {{larch}}", 13, "Failed, NVRAM read failed", "Get BBCR Info failed err=5",
                       faults="VEXAPI_FCGetBBCSupportInfoEx=5"))),
               *(row(f"setFile {{larch}} {option} {value}", 6, INVALID, f"UpdateBBCRInFile: {trace}",
                     "UpdateBBCRInFile failed with uRet=6", refused_in="UpdateBBCRInFile")
                 for option, value, trace in (("-b", "on", "bbcr-status=on not supported"),
                                              ("--bbcr-configured", "16", "bbcr-count=16 not supported"),
                                              ("-c", "-1", "bbcr-count=-1 not supported"))),
               row("setFile {larch}", 19, NO_FILE, NOT_MADE, "CreateBBCRFile failed", broken="create"),
               row("setFile {larch} -c 3", 19, NO_FILE, NOT_REPLACED, "UpdateBBCRInFile: file ops failed",
                   "UpdateBBCRInFile failed with uRet=19", broken="merge", staged="setFile {larch}"),
               not_pending(f"/tmp/BBCR_{NAMES['larch']} file not present"),
               row("set {larch}", 19, NO_FILE, refuse=3, staged="setFile {larch}"),
               row("set {larch}", 20, "Failed, NVRAM update failed", "Update BBCR failed err=5",
                   faults="VEXAPI_FCSetBBCSupportInfo=5", staged="setFile {larch}"),
           ]),
    Family("-t port -s fec", "PhysicalPortFECCmdsProcessor", host="fec",
           successes=[("get {fec}", "DisplayFECInfo"), ("set {fec} -f true -r reset", "DisplayFECInfo")],
           rows=[
               *(refusal for leaf in ("get", "set") for refusal in (
                   *rows_of_port(leaf),
                   row(f"{leaf} {{fec_virtual}}", 51, VIRTUAL),
                   row(f"{leaf} {{fec_8G}}", 35, "Failed, feature not supported",
                       "Command not supported for this adapter"),
                   *(row(f"{leaf} {{fec}}", 13, "Failed, FEC read failed", f"{trace} err=5", faults=f"{function}=5")
                     for function, trace in FEC_READ_ERRORS.items()),
                   row(f"{leaf} {{fec}}", 13, "Failed, FEC read failed", faults="VEXAPI_GetFWPrivateStats=null"))),
               *without_log("get {fec}", 3),
               *without_log("set {fec} -f true -r reset", 5),
               *(row(f"set {{fec_fixed}} -f {value}", 47,
                     "Failed, Read-Only parameter for non 16Gbps or Unknown speed or mezz adapter", FEC_FIXED)
                 for value in ("true", "on")),
               row("set {fec} -f on", 6, INVALID, "fec-status=on not supported"),
               row("set {fec} -f true -r all", 6, INVALID, "reset=all not supported"),
               row("set {fec} -f true", 20, "Failed, FEC update failed", "Update FEC failed err=5",
                   faults="VEXAPI_FCSetFECSupportInfo=5"),
               row("set {fec} -r reset", 20, "Failed, FEC update failed", "Reset FEC counters failed err=5",
                   faults="VEXAPI_ResetFECCounters=5"),
           ]),
    Family("-t port -s bootconfig", "PhysicalPortBootConfigCmdsProcessor", host="boot",
           successes=[("get {boot}", "DisplayBootConfigInfo"),
                      ("setFile {boot} -a true -j {array}-3", "CreateBootConfigFile UpdateBootConfigInFile "
                       "ReadBootConfigFromFile DisplayBootConfigInfo"),
                      ("set {boot}", "ReadBootConfigFromFile DisplayBootConfigInfo")],
           rows=[
               *rows_of_boot(("", "--boot-mode UEFI")),
               *(row(f"{leaf} {{{port}}} --boot-mode {mode}", code, message, not_supported("boot-mode", mode))
                 for leaf in ("get", "setFile")
                 for port, mode, code, message in (("boot_8G", "UEFI", 8, NO_UEFI_MODE),
                                                   ("boot", "NVME", 6, INVALID))),
               *(refusal for number in range(4, 8) for refusal in (
                   refused("{boot_8G}", f"drive-{number}", "{array}-3", 35, NOT_ON_ADAPTER),
                   refused("{boot}", f"drive-{number}", "{array}-3", 4, NEEDS_UEFI))),
               *(refused("{boot} -b UEFI", f"drive-{number}", "{nobody}-3", 6, INVALID) for number in range(8)),
               refused("{boot}", "drive-0", "{array}-4", 6, INVALID),
               refused("{boot}", "drive-1", "50:06:0e:80:12:4a:7c:17-0", 6, INVALID),
               refused("{boot}", "drive-2", "{nvme}-1", 36, "Failed, Feature not supported for NVMe target"),
           ]),
    Family("-t port -s bootconfigext", "PhysicalPortBootConfigExtCmdsProcessor", host="boot",
           successes=[("get {boot} NVME", "DisplayBootConfigInfo"),
                      ("setFile {boot} NVME -n 1 -p {nvme} -o 2 -l true", "CreateBootConfigFile "
                       "UpdateBootConfigInFile ReadBootConfigFromFile DisplayBootConfigInfo"),
                      ("set {boot}", "ReadBootConfigFromFile DisplayBootConfigInfo")],
           rows=[
               *rows_of_boot(("BIOS", "UEFI")),
               *(refusal for leaf in ("get", "setFile") for refusal in (
                   row(f"{leaf} {{boot}}", 6, INVALID),
                   row(f"{leaf} {{boot}} OpenFirmware", 6, INVALID),
                   row(f"{leaf} {{boot_8G}} UEFI", 8, NO_NVME_MODE),
                   row(f"{leaf} {{boot_8G}} NVME", 8, NO_NVME_MODE),
                   row(f"{leaf} {{boot_no_uefi}} NVME", 54, NO_UEFI),
                   row(f"{leaf} {{boot}} NVME", 19, UNKNOWN, refuse=4))),
               row("get {boot} NVME", 17, "Failed, NVMe Boot Config not present",
                   faults="VEXAPI_GetNVMeBootDeviceEntries=5"),
               *(row("set {boot}", 20, BOOT_UPDATE, faults=fault, staged="setFile {boot} NVME")
                 for fault in ("VEXAPI_SetNVMeBootDeviceEntries=5", "VEXAPI_GetNVMeBootDeviceEntries=5")),
               *(row("set {boot}", 19, UNKNOWN, refuse=number, staged="setFile {boot} NVME") for number in (4, 5)),
               refused("{boot} NVME", "selectable-boot", "true", 18, NOT_IN_UEFI),
               refused("{boot_8G} BIOS", "fc-nvme", "true", 35, NOT_ON_ADAPTER),
               refused("{boot} UEFI", "fc-nvme", "true", 4, NEEDS_MODE),
               refused("{boot} NVME", "fc-nvme", "yes", 6, INVALID),
               refused("{boot} BIOS", "boot-target-num", "4", 4, NEEDS_MODE),
               refused("{boot_8G} BIOS", "boot-target-num", "4", 4, NEEDS_MODE),
               refused("{boot} UEFI", "boot-target-wwpn", "{nobody}", 6, INVALID),
               refused("{boot_8G} BIOS", "boot-target-enable", "true", 35, NOT_ON_ADAPTER),
               refused("{boot} UEFI", "boot-target-enable", "true", 4, NEEDS_MODE),
               refused("{boot} NVME", "boot-target-enable", "yes", 6, INVALID),
               # No single option is wrong.
               *(row(f"setFile {{boot}} {mode} {options}", code, message)
                 for mode, code, message in (("BIOS", 55, NEEDS_FCP), ("UEFI", 55, NEEDS_FCP), ("NVME", 56, NEEDS_NVME))
                 for options in ("-n 1", "-p {array}", "-o 3 -n 1")),
               row("setFile {boot} NVME -n 1 -p {nvme} -o 2", 56, NEEDS_NVME),
               *(row(f"setFile {{boot}} {mode} -n 1 -p {{{target}}} -o {disk} {rest}", 6, INVALID,
                     (not_supported("boot-disk-num", disk), not_supported("boot-target-wwpn", NAMES[target])))
                 for mode, target, disk, rest in (("UEFI", "array", "9", ""), ("UEFI", "nvme", "1", ""),
                                                  ("NVME", "nvme", "9", "-l true"), ("NVME", "array", "3", "-l true"))),
           ]),
]

# -t port, congestion

SCM_READ = "Failed, FWCM settings read error"
SCM_OFF = "Failed, Feature disabled on the port"
SCM_UNSUPPORTED = "Failed, Driver/Firmware does not support this feature"
SCM_RELEASE = "Failed, Statistics list clear error"


def unanswered(words):
    """The library can't tell if the feature is on."""
    return row(words, 13, SCM_READ, "Get FWCM feature failed err=5", faults="VEXAPI_IsFWCMFeatureEnabled=5")


CONGESTION = [
    Family("-t port -s scmstats", "PhysicalPortSCMStatsCmdsProcessor", host="congestion",
           displays={"clear": "DisplayClear"},
           successes=[("get {scm20}", "DisplayPortSCMStatsV2"), ("get {scm10}", "DisplayPortSCMStats"),
                      ("clear {scm20}", "DisplayClear")],
           rows=[
               *(refusal for leaf in ("get", "clear") for refusal in (
                   *rows_of_port(leaf, also="Get phy port failed err=%d"),
                   row(f"{leaf} {{scm70}}", 35, NOT_ON_ADAPTER, "SCM feature not supported for this adapter."),
                   row(f"{leaf} {{scm71}}", 45, SCM_UNSUPPORTED, "Driver/Firmware does not support SCM."),
                   row(f"{leaf} {{scm72}}", 51, VIRTUAL, "Command not supported for vport"),
                   unanswered(f"{leaf} {{scm20}}"),
                   row(f"{leaf} {{scm41}}", 52, SCM_OFF, "FWCM feature is disabled"),
                   *without_log(f"{leaf} {{scm20}}", 2))),
               row("get {scm20}", 38, "Failed, Statistics read error", "Get SCMR Statistics failed err=5",
                   faults="VEXAPI_GetSCMRStatisticsList=5"),
               row("get {scm20}", 38, "Failed, Statistics read error", "Get SCMR Statistics failed err=0",
                   faults="VEXAPI_GetSCMRStatisticsList=null"),
               row("get {scm20}", 19, NO_FILE, refuse=4, ahead=("Success",)),
               row("get {scm20}", 39, SCM_RELEASE, faults="VEXAPI_FreeSCMRStatisticsList=5", ahead=("Success",)),
               row("clear {scm10}", 45, SCM_UNSUPPORTED, "Driver/Firmware does not support SCM."),
               row("clear {scm74}", 45, SCM_UNSUPPORTED, "Get SCM Reset Statistics failed err=118"),
               row("clear {scm20}", 50, UNKNOWN, "Get SCM Reset Statistics failed err=5",
                   faults="VEXAPI_SANCongMgmtResetStatistics=5"),
           ]),
    Family("-t port -s scmchk", "PhysicalPortSCMChkCmdsProcessor", host="congestion",
           successes=[("get {scm20}", "DisplayPortSCMChk")],
           rows=[
               *rows_of_port("get"),
               row("get {scm70}", 35, NOT_ON_ADAPTER),
               row("get {scm10}", 45, SCM_UNSUPPORTED),
               row("get {scm72}", 51, VIRTUAL),
               unanswered("get {scm20}"),
               row("get {scm41}", 52, SCM_OFF, "FWCM feature is disabled"),
               *without_log("get {scm20}", 1),
           ]),
    Family("-t port -s scmprofile", "PhysicalPortSCMProfileCmdsProcessor", host="congestion",
           successes=[("get {scm40}", "DisplaySCMProfile"), ("set {scm40} -a Moderate", "DisplaySCMProfile")],
           rows=[
               *(refusal for leaf in ("get", "set") for refusal in (
                   *rows_of_port(leaf),
                   row(f"{leaf} {{scm70}}", 35, NOT_ON_ADAPTER),
                   row(f"{leaf} {{scm71}}", 51, "Failed, Feature not supported for virtual port"),
                   row(f"{leaf} {{scm73}}", 45, UNKNOWN),
                   row(f"{leaf} {{scm40}}", 13, "Failed, NVRAM read failed", "Get SCMR Profile failed err=5",
                       faults="VEXAPI_GetSCMRProfile=5"))),
               *without_log("get {scm40}", 1),
               *without_log("set {scm40}", 3),
               row("set {scm40} -r all", 6, INVALID, "restore=all not supported"),
               row("set {scm40} --activation High", 6, INVALID, "activation=High not supported"),
               row("set {scm40} -a Moderate -r Driver_Settings", 37,
                   "Failed, Restore and Activation command-line options are mutually exclusive",
                   "Mutually exclusive parameters"),
               row("set {scm40}", 20, "Failed, NVRAM update failed", "Update SCMR Profile failed err=5",
                   faults="VEXAPI_SetSCMRProfile=5"),
               row("set {scm40}", 13, "Failed, NVRAM read failed", "Get SCMR Profile failed after set err=5",
                   faults="VEXAPI_GetSCMRProfile@2=5"),
           ]),
]

# -t port, diagnostics

DIAG_VIRTUAL = "Failed, Feature not supported for virtual port"
DIAG_PORT = "Failed, Feature not supported for this port"
DIAG_DOWN = "Failed, Feature requires link up"
DIAG_FAILED = "Failed, Diagnostic test failed"
DIAG_MODE = "Failed, Port not in diagnostics mode"
DIAG_SPEED = "Failed, Feature supported for speeds 16 Gbps and above"
NO_TARGET = "Failed, Target not found"
MAILBOX = {
    7: "Failed, Firmware is not ready to execute request command", 21: "Failed, Invalid Request",
    58: "Failed, Mailbox command IOCB not allowed for this command", 71: "Failed, Incorrect state for this command",
    96: "Failed, SFP not supported WRAP capability", 32865: "Failed, Command not supported with Current Switch",
    99: UNKNOWN,
}


def rows_of_ping(function, kind=""):
    """Failures of `fcping`, `fcecho` and `ctdiag`; `kind` is the word of the test, if there are several."""
    run = lambda port, rest: f"run {{{port}}} {kind} {rest}"
    yield from rows_of_port("run", f"{kind} {{array}} 1 true", none=not kind)
    yield row(run("diag_virtual", "{array} 1 true"), 51, DIAG_VIRTUAL)
    yield row(run("diag_down", "{array} 1 true"), 43, DIAG_DOWN)
    for count in ("0", "65536", "x"):
        yield row(run("diag", f"{{array}} {count} true"), 6, INVALID)
    yield row(run("diag", "{array}"), 6, INVALID)
    yield row(run("diag", ""), 6, INVALID)
    yield row(run("diag", "{nobody} 1 true"), 28, NO_TARGET)
    yield row(run("diag_8G", "{array} 1 true"), 28, NO_TARGET)
    yield row(run("diag", "{array} 1 true"), 34, DIAG_FAILED, faults=f"{function}=5")
    yield from without_log(run("diag", "{array} 1 true"), 1)


def rows_of_frames(word_of_type, limit, size):
    """Failures of `loopback` and `rwbuffer`. `word_of_type` precedes the pattern; `size` is not accepted."""
    run = lambda port, numbers, rest="Random": f"run {{{port}}} {numbers} Ignore {word_of_type} {rest}"
    yield from rows_of_port("run", f"1 1 8 Ignore {word_of_type} Random")
    yield row(run("diag_virtual", "1 1 8"), 51, DIAG_VIRTUAL)
    for count in ("0", str(limit + 1), "x"):
        yield row(run("diag", f"{count} 1 8"), 6, INVALID, "Invalid test count")
    for increment in ("0", str(limit + 1), "-1"):
        yield row(run("diag", f"1 {increment} 8"), 6, INVALID, "Invalid test increment")
    yield row(run("diag", f"1 1 {size}"), 6, INVALID, "Invalid data size")
    yield row(run("diag", "1 1 8", "Custom -d 12345678"), 12,
              "Failed, Custom Data should be of 8 chars separated by '-' (hifen)",
              "Custom data is not '-' (hifen) separated")
    yield row("run {diag} 1 1 8", 6, INVALID)
    yield from without_log(run("diag", "1 1 8"), 1)


DIAGNOSTICS = [
    Family("-t port -s dportdiag", "PhysicalPortDPortDiagCmdsProcessor", host="diagnostics",
           displays={"get": "DisplayDPortDiagInfo", "set": "DisplayDPortDiagInfo"},
           successes=[("get {diag}", "DisplayDPortDiagInfo"), ("set {diag} true", "DisplayDPortDiagInfo"),
                      ("run {diag_second}", "DisplayDPortDiagResult"), ("run {diag_first}", "DisplayDPortDiagResult")],
           rows=[
               *(refusal for leaf, rest in (("get", ""), ("set", "true"), ("run", "")) for refusal in (
                   *rows_of_port(leaf, rest),
                   row(f"{leaf} {{diag_virtual}} {rest}", 51, DIAG_VIRTUAL),
                   row(f"{leaf} {{diag_mezzanine}} {rest}", 35, DIAG_PORT),
                   row(f"{leaf} {{diag_8G}} {rest}", 35, DIAG_PORT),
                   row(f"{leaf} {{diag}} {rest}", 13, "Failed, DPortDiag read failed",
                       faults="VEXAPI_IsMezzAdapter=5"))),
               *without_log("get {diag}", 2),
               *without_log("set {diag} true", 3),
               *without_log("run {diag_first}", 3),
               row("set {diag} on", 6, INVALID),
               row("set {diag}", 6, INVALID),
               row("set {diag} true", 20, "Failed, DPortDiag update failed",
                   faults="VEXAPI_ConfigureAdapterDPortSettings=5"),
               row("run {diag}", 48, DIAG_MODE),
               row("run {diag_down}", 43, DIAG_DOWN),
               row("run {diag_slow}", 44, DIAG_SPEED),
               *by_status("run {diag_second}", "VEXAPI_DiagnosticDPortTestV2", {
                   2: (6, INVALID), 29: (51, DIAG_VIRTUAL), 38: (35, DIAG_PORT), 129: (48, DIAG_MODE),
                   130: (43, DIAG_DOWN), 131: (44, DIAG_SPEED), 5: (50, UNKNOWN)}),
               # A first document goes to the library's log.
               row("run {diag_second}", 40, "Failed, Feature not supported in Boot-From-SAN mode",
                   faults="VEXAPI_DiagnosticDPortTestV2=132", where=("log", "output")),
               row("run {diag_mailbox}", 33, MAILBOX[32865], display="DisplayMbxError"),
               *(row("run {diag_first}", 33, message, faults=f"VEXAPI_DiagnosticDPortTest={status}",
                     display="DisplayMbxError") for status, message in MAILBOX.items()),
           ]),
    Family("-t port -s ctdiag", "PhysicalPortCTDiagCmdsProcessor", host="diagnostics",
           displays={"run": "DisplayCTDiagResult"}, field="Test Result",
           successes=[("run {diag} CTPing {array} 1 true", "DisplayCTDiagResult")],
           rows=[
               *rows_of_ping("VEXAPI_DiagnosticsCTCommand", "CTPing"),
               row("run {diag} Ping {array} 1 true", 6, INVALID),
               row("run nosuch Ping {array} 1 true", 6, INVALID),
               row("run", 6, INVALID),
           ]),
    Family("-t port -s fcping", "PhysicalPortFCPingCmdsProcessor", host="diagnostics",
           displays={"run": "DisplayFCPingResult"}, field="Test Result",
           successes=[("run {diag} {array} 1 true", "DisplayFCPingResult")],
           rows=[*rows_of_ping("VEXAPI_DiagnosticsFCPingTest")]),
    Family("-t port -s fcecho", "PhysicalPortFCEchoCmdsProcessor", host="diagnostics",
           displays={"run": "DisplayFCEchoResult"},
           successes=[("run {diag} {array} 1 false", "DisplayFCEchoResult")],
           rows=[
               *rows_of_ping("VEXAPI_DiagnosticsEchoElsTest"),
               row("run {diag} {array} 3 true", 34, DIAG_FAILED),
               row("run {diag} {array} 2 false", 34, DIAG_FAILED),
               row("run {diag} {array} 3 false", 19, NO_FILE, refuse=3),
           ]),
    Family("-t port -s rdp", "PhysicalPortRDPCmdsProcessor", successes=[("get {larch}", "DisplayRDPInfo")],
           rows=[
               *rows_of_port("get"),
               row("get {virtual}", 51, DIAG_VIRTUAL),
               row("get {down}", 43, DIAG_DOWN),
               row("get {larch}", 34, DIAG_FAILED, faults="VEXAPI_DiagnosticsRDPTest=5"),
               *without_log("get {larch}", 1),
           ]),
    Family("-t port -s loopback", "PhysicalPortLoopbackCmdsProcessor", host="diagnostics",
           successes=[("run {diag} 1 1 8 Ignore Internal Random", "DisplayLoopbackTestResult")],
           rows=[
               *rows_of_frames("Internal", 65535, "65536"),
               *(row(f"run {{diag}} 1 1 8 Ignore {kind} Random", 4,
                     "Failed, Loopback type not supported for this adapter", trace)
                 for kind, trace in (("Internal_10bit", "Option not supported for this adapter"),
                                     ("misspelt", "Option not supported for this adapter"),
                                     ("FCoE_Echo", "Option not supported for FC adapter"))),
           ]),
    Family("-t port -s rwbuffer", "PhysicalPortRWBufferCmdsProcessor", host="diagnostics",
           successes=[("run {diag} 1 1 8 Ignore Random", "DisplayRWBufferTestResult")],
           rows=[*rows_of_frames("", 10000, "256"),
                 row("run {diag} 1 1 8 Ignore Random", 19, NO_FILE, refuse=3, ahead=("Success",)),
                 row("run {diag} 1 1 8 Ignore Random", 13, "Failed, DPortDiag read failed",
                     faults="VEXAPI_DiagnosticsReadWriteBufferTest=null")]),
]

# -t target, -t lun

LUN_RESOLVER = "FCLunCmdsProcessor::GetLunFromLunString"

TARGETS = [
    Family("-t target", "FCTargetCmdsProcessor", successes=[("list", "")],
           rows=[*rows_of_list("FCTargetCmdsProcessor")]),
    Family("-t target -v info", "FCTargetInfoCmdsProcessor", host="targets",
           successes=[("get {target}", "DisplayTargetInfo")], rows=[*rows_of_target("get")]),
    Family("-t target -v scmstats", "FCTargetSCMStatsCmdsProcessor", host="congestion",
           successes=[("get {scm20}{to_array}", "DisplayTargetSCMStatsV2"),
                      ("get {scm10}{to_array}", "DisplayTargetSCMStats")],
           rows=[
               *rows_of_target("get", also="Get target failed err=%d"),
               row("get {scm70}{to_array}", 35, NOT_ON_ADAPTER, "SCM feature not supported for this adapter."),
               row("get {scm71}{to_array}", 45, SCM_UNSUPPORTED, "Driver/Firmware does not support SCM."),
               row("get {scm72}{to_array}", 51, VIRTUAL, "Command not supported for vport"),
               unanswered("get {scm20}{to_array}"),
               row("get {scm41}{to_array}", 52, SCM_OFF, "FWCM feature is disabled"),
               *without_log("get {scm20}{to_array}", 2),
               *without_log("get {scm10}{to_array}", 2),
               row("get {scm20}{to_array}", 38, "Failed, Statistics read error", "Get SCMR Statistics failed err=5",
                   faults="VEXAPI_GetSCMRStatisticsList=5"),
               row("get {scm20}{to_array}", 38, "Failed, Statistics read error", "Get SCMR Statistics failed err=0",
                   faults="VEXAPI_GetSCMRStatisticsList=null"),
               row("get {scm20}{to_array}", 19, NO_FILE, refuse=4, ahead=("Success",)),
               row("get {scm20}{to_array}", 39, SCM_RELEASE, faults="VEXAPI_FreeSCMRStatisticsList=5",
                   ahead=("Success",)),
               row("get {scm10}{to_array}", 38, "Failed, Statistics read error", "Get Port Stats FC failed err=5",
                   faults="VEXAPI_GetPortStatisticsFC=5"),
           ]),
    Family("-t target -v scmchk", "FCTargetSCMChkCmdsProcessor", host="congestion",
           successes=[("get {scm20}{to_array}", "DisplayTargetSCMChk")],
           rows=[
               *rows_of_target("get"),
               row("get {scm70}{to_array}", 35, NOT_ON_ADAPTER),
               row("get {scm10}{to_array}", 45, SCM_UNSUPPORTED),
               row("get {scm72}{to_array}", 51, VIRTUAL),
               unanswered("get {scm20}{to_array}"),
               row("get {scm41}{to_array}", 52, SCM_OFF, "FWCM feature is disabled"),
               *without_log("get {scm20}{to_array}", 1),
           ]),
    Family("-t target -v iidma", "FCTargetIIDMACmdsProcessor", host="targets",
           successes=[("get {target}", "DisplayTargetIIDMA"), ("set {target} 16_Gbps", "DisplayTargetIIDMA")],
           rows=[
               *(refusal for leaf, rest in (("get", ""), ("set", "16_Gbps")) for refusal in (
                   *rows_of_target(leaf, rest),
                   row(f"{leaf} {{target_virtual}} {rest}", 51, VIRTUAL),
                   row(f"{leaf} {{target}} {rest}", 13, "Failed, IIDMA read failed",
                       *(["Get Link Speed failed err=5"] if leaf == "get" else []),
                       faults="VEXAPI_GetTargetLinkSpeed=5"))),
               *without_log("get {target}", 1),
               *without_log("set {target} 16_Gbps", 2),
               row("set {target_willow} 8_Gbps", 8, "Failed, Read-Only feature for this adapter",
                   "Command not supported for this adapter"),
               *(row(f"set {{target}} {speed}", 44, "Failed, Speed not supported for this adapter",
                     "speed not supported for this adapter") for speed in ("64_Gbps", "10_Gbps")),
               # Required: the trace is that of a read.
               row("set {target} 16_Gbps", 20, "Failed, IIDMA set failed", "Get Link Speed failed err=5",
                   faults="VEXAPI_SetTargetLinkSpeed=5"),
           ]),
    Family("-t target -v stats", "FCTargetStatsCmdsProcessor", host="targets",
           successes=[("get {target}", "DisplayTargetStats")],
           rows=[
               *rows_of_target("get", also="Get target failed err=%d"),
               *without_log("get {target}", 1),
               row("get {target}", 38, "Failed, Statistics read error", "Get Port Stats FC failed err=5",
                   faults="VEXAPI_GetPortStatisticsFC=5"),
           ]),
    Family("-t lun", "FCLunCmdsProcessor", successes=[("list", "")], rows=[*rows_of_list("FCLunCmdsProcessor")]),
    Family("-t lun -v info", "FCLunInfoCmdsProcessor", host="targets",
           successes=[("get {target}_LUN_0", "DisplayLunInfo")],
           rows=[
               row("get nosuch", 6, INVALID, f"{LUN_RESOLVER}: Invalid Port identifier nosuch"),
               row("get", 6, INVALID, f"{LUN_RESOLVER}: Invalid Port identifier "),
               row("get {larch}", 6, INVALID, f"{LUN_RESOLVER}: Invalid Tgt identifier {NAMES['larch']}"),
               row("get {target}", 6, INVALID, f"{LUN_RESOLVER}: Invalid LUN/NSID identifier {NAMES['target']}"),
               row("get {target}_LUN_99", 6, INVALID),
               row("get {target}_NSID_0", 6, INVALID),
               row("get -help", 5, UNKNOWN),
               row("get {target}_LUN_0", 14, NO_HOST, faults="VEXAPI_GetAdapterList=null"),
           ]),
]

REFUSALS = ADAPTERS + PORTS + SETTINGS + CONGESTION + DIAGNOSTICS + TARGETS

# Texts of the manual that no command prints, and why.
UNREACHABLE = {
    "Failed, PF-Number not provided": "`vpd` takes no number of a function",
    "Failed, VPD not present": "`vpd` asks every adapter, and every failure of the library is \"Failed, VPD failed\"",
    "Failed, Feature not supported by switch": "the congestion commands don't ask about the switch",
    "Failed, RWBuffer type not supported for this adapter": "`rwbuffer` takes no type",
}

# Calls that don't return a library status, and calls of the session.
NO_STATUS = {"VEXAPI_GetAdapterList", "VEXAPI_GetBfsConfigMode", "VEXAPI_CheckRowanPersonalityChangeOption",
             "VEXAPI_CheckAdapterDPortOption", "VEXAPI_DiagnosticsLoopBackTest",
             "VEXAPI_DiagnosticsReadWriteBufferTest", "VEXAPI_DiagnosticDPortTest", "VEXAPI_Initialize",
             "VEXAPI_ExtSetScope", "VEXAPI_SetToolID", "VEXAPI_SetToolVersion", "VEXAPI_Uninitialize"}

# Classes that resolve identifiers for all families; one of them traces the name of another.
RESOLVERS = ("AdapterCmdsProcessor", "AdapterDefaultCfgCmdsProcessor", "PhysicalPortCmdsProcessor",
             "FCTargetCmdsProcessor", "FCLunCmdsProcessor")

STAMP = r"\d{1,2}/\d{1,2}/\d{4} \d\d:\d\d:\d\d\.\d{3} CIM Provider "


@dataclasses.dataclass
class Run:
    output: str
    library_log: str  # added by this run
    log: str  # the whole debug log, or empty
    process: int
    status: int
    errors: str

    def traces(self):
        """Texts of the debug log; one may have several lines."""
        _, *texts = re.split(rf"{STAMP}(?:[A-Z_]+ *)?\d+: ", self.log)
        return [text.removesuffix("\r\n") for text in texts]


def words_of(text):
    return shlex.split(text.format_map(NAMES))


def run(path, words, level, host=None, faults="", refuse=0, journal=False, command=None):
    """Runs the program with these words, or another command that does."""
    environment = dict(os.environ, VEXAPI_SIM_STATE="", VEXAPI_SIM_FAULTS=faults, ORFC_DEBUG_LEVEL=str(level))
    if host is not None:
        environment["VEXAPI_SIM_HOST"] = f"{TESTS}/data/{host}.json"
    if refuse:
        environment |= {"LD_PRELOAD": f"{BUILD}/tests/transcripts/librefuse_log.so", "REFUSE_LOG_FROM": str(refuse)}
    if journal:
        environment["VEXAPI_SIM_JOURNAL"] = str(JOURNAL)
    for file in (DEBUG_LOG, LIBRARY_LOG, JOURNAL):
        file.unlink(missing_ok=True)
    process = subprocess.Popen(command or [PROGRAM, *path.split(), *words_of(words)], env=environment,
                               stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    output, errors = process.communicate(timeout=60)
    read = lambda file: file.read_bytes().decode() if file.exists() else ""
    return Run(output.decode(), read(LIBRARY_LOG), read(DEBUG_LOG), process.pid, process.returncode, errors.decode())


def staged_files(words):
    """Path of the staged settings of the port that a command names."""
    return [pathlib.Path(f"/tmp/{group}_{word}") for word in words_of(words) if word.startswith("FC_")
            for group in ("HBAParams", "BBCR", "BootConfig", "BootConfigExt")]


def forget_staged(words):
    for file in staged_files(words):
        file.unlink(missing_ok=True)
        temporary = pathlib.Path(f"{file}_tmp")
        if temporary.is_dir():
            temporary.rmdir()
        temporary.unlink(missing_ok=True)


def run_row(family, refusal, level=4, command=None):
    host = refusal.host or family.host
    forget_staged(refusal.words)
    if refusal.staged:
        ahead = run(family.path, refusal.staged, 0, host)
        assert ">Success<" in ahead.output, (family.path, refusal.staged, ahead.output)
    for file in staged_files(refusal.words):
        if refusal.broken == "create":
            file.symlink_to("/nosuch/file")
        elif refusal.broken == "merge":
            pathlib.Path(f"{file}_tmp").mkdir()
    try:
        return run(family.path, refusal.words, level, host, refusal.faults, refusal.refuse, command=command)
    finally:
        forget_staged(refusal.words)


def messages(family, text):
    return re.findall(rf'<field name="{family.field}">\n<string>(.*)</string></field>\n', text)


class Walk:
    """The failures of some families, each run once and checked by all tests."""
    families = []
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.walked = [(family, refusal, run_row(family, refusal)) for family in cls.families for refusal in family.rows]

    def each(self, check):
        for family, refusal, result in self.walked:
            with self.subTest(family=family.path, refusal=str(refusal)):
                check(family, refusal, result)

    def test_documents(self):
        def check(family, refusal, result):
            self.assertEqual((result.status, result.errors), (0, ""))
            if refusal.message is NO_DOCUMENT:
                self.assertEqual(result.output, "")
                return
            self.assertTrue(refusal.message.startswith("Failed"))
            where = collections.Counter(refusal.where)
            self.assertEqual(messages(family, result.output), [*refusal.ahead, *[refusal.message] * where["output"]])
            self.assertEqual(messages(family, result.library_log), [refusal.message] * where["log"])
        self.each(check)

    def test_every_document_is_traced(self):
        def check(family, refusal, result):
            expected = [f"{family.class_name}::{family.display(refusal)}: {refusal.message} (result {refusal.code})"]
            if refusal.message is NO_DOCUMENT:
                expected = []
            found = [text for text in result.traces() if re.search(r" \(result -?\d+\)$", text)]
            self.assertEqual(found, expected * len(refusal.where))
        self.each(check)

    def test_traces_name_class_function_and_reason(self):
        def check(family, refusal, result):
            classes = "|".join((family.class_name, *RESOLVERS, "FileOps"))
            self.assertRegex(result.log, rf"\A({STAMP}DEBUG       {result.process}: ({classes})::\w+: \S.*\r\n)*\Z")
        self.each(check)

    def test_told_traces(self):
        def check(family, refusal, result):
            for alternatives in refusal.traces:
                if isinstance(alternatives, str):
                    alternatives = (alternatives,)
                pattern = "|".join(self.pattern(family, refusal, trace) for trace in alternatives)
                if not any(re.fullmatch(pattern, text) for text in result.traces()):
                    self.fail(f"none of {result.traces()} is {' or '.join(alternatives)}")
        self.each(check)

    def pattern(self, family, refusal, trace):
        """Regular expression of a trace in the table."""
        if not re.match(r"\w+::", trace):
            if not re.match(r"(\w+|\*): ", trace):
                trace = f"{common_function(refusal.words.split()[0])}: {trace}"
            trace = f"{family.class_name}::{trace}"
        return re.escape(trace).replace("::\\*:", r"::\w+:").replace("%d", r"-?\d+")


class Adapters(Walk, unittest.TestCase):
    families = ADAPTERS


class Ports(Walk, unittest.TestCase):
    families = PORTS


class Settings(Walk, unittest.TestCase):
    families = SETTINGS


class Congestion(Walk, unittest.TestCase):
    families = CONGESTION


class Diagnostics(Walk, unittest.TestCase):
    families = DIAGNOSTICS


class Targets(Walk, unittest.TestCase):
    families = TARGETS


class Root(unittest.TestCase):
    """The root has no documents."""

    def test_log_that_cannot_be_made(self):
        result = run("", "log /nosuch/file", 4)
        self.assertEqual(result.output, "Failed to create file /nosuch/file\n")
        self.assertEqual(result.traces(), ["open() /nosuch/file failed 2 (No such file or directory)\n"])

    def test_unknown_command(self):
        for words in ("nosuch", "-t port", "-t port -s nosuch get", "-t"):
            self.assertEqual(run("", words, 4).output, "Unknown command or invalid target identifier!\r\n")


class Successes(unittest.TestCase):
    """A successful command traces nothing at level 4, except the irregular trace of settings files."""

    def test_successes(self):
        odd = re.compile(r"FileOps::IsFilePresent: (/tmp/\w+_FC_[0-9a-f:]+ file|File not) present|"
                         r"FileOps::UpdateKeyValueInFile: File open failed in read mode, creating it")
        for family in REFUSALS:
            stages = any("File" in words.split()[0] for words, _ in family.successes)
            for words, _ in family.successes:
                with self.subTest(family=family.path, words=words):
                    result = run(family.path, words, 4, family.host)
                    self.assertEqual(messages(family, result.output), [] if words == "list" else ["Success"])
                    self.assertEqual([text for text in result.traces() if not (stages and odd.fullmatch(text))], [])
            forget_staged(" ".join(words for words, _ in family.successes))


class Steps(unittest.TestCase):
    """Level 1: the steps of a command, even if it fails."""
    maxDiff = None

    # Functions that always trace their exit.
    PAIRED = re.compile(r"\w+::(Display\w+|CmdHelp|Usage|Create\w+File|Update\w+InFile|Read\w+FromFile)")

    def check(self, result, functions, is_failure, within=r"Cmd\w+Common"):
        """Within a function of that name, entries and exits must nest, and the functions must be entered."""
        self.assertEqual((result.status, result.errors), (0, ""))
        self.assertEqual(set(re.findall(rf"{STAMP}(.{{11}}) {result.process}: ", result.log)), {"INFORMATION"})
        entered, left, stack = [], [], []
        leave = lambda name: self.PAIRED.fullmatch(name) or (name.endswith("Common") and not is_failure)
        for text in result.traces():
            if match := re.fullmatch(r"(\w+::\w+): Entered", text):
                stack.append(match[1])
                if within is None or any(re.fullmatch(rf"\w+::{within}", name) for name in stack):
                    entered.append(match[1])
            elif match := re.fullmatch(r"(\w+::\w+): Exiting", text):
                self.assertIn(match[1], stack, "left but not entered")
                left.append(match[1])
                while (name := stack.pop()) != match[1]:
                    self.assertFalse(leave(name), f"{name} is not left")
        for name in stack:
            self.assertFalse(leave(name), f"{name} is not left")
        for function in functions:
            self.assertIn(function, entered)
        if is_failure:
            self.assertEqual([name for name in left if name.endswith("Common")], [])

    def each_success(self, check):
        for family in REFUSALS:
            for words, functions in family.successes:
                with self.subTest(family=family.path, words=words):
                    check(family, words, functions.split())
            forget_staged(" ".join(words for words, _ in family.successes))

    def test_commands_that_succeed(self):
        def check(family, words, functions):
            result = run(family.path, words, 1, family.host)
            common = common_function(words.split()[0])
            self.check(result, [f"{family.class_name}::{name}" for name in (common, *functions)], is_failure=False)
        self.each_success(check)

    def test_commands_that_fail(self):
        for family in REFUSALS:
            leaves = {refusal.words.split()[0]: refusal for refusal in reversed(family.rows)}
            for leaf, refusal in leaves.items():
                with self.subTest(family=family.path, refusal=str(refusal)):
                    names = [common_function(leaf)]
                    if refusal.message is not NO_DOCUMENT:
                        names.append(family.display(refusal))
                    self.check(run_row(family, refusal, level=1), [f"{family.class_name}::{name}" for name in names],
                               is_failure=True)

    def test_refused_settings(self):
        for family in SETTINGS:
            for refusal in family.rows:
                if refusal.refused_in:
                    with self.subTest(family=family.path, refusal=str(refusal)):
                        functions = [f"{family.class_name}::{name}" for name in (refusal.refused_in, "DisplayError")]
                        self.check(run_row(family, refusal, level=1), functions, is_failure=True)

    def test_refused_parameters_are_named(self):
        family = next(family for family in SETTINGS if family.name == "hbaparams")
        for words, trace in (("{larch} --hard-loop-id 126", "hard-loop-id=126"),
                             ("{larch} -d 1_Gbps", "data-rate=1_Gbps"),
                             ("{birch} -q yes", "enable-fwcm=yes"), ("{willow} -m x", "operation-mode=x")):
            with self.subTest(words=words):
                result = run(family.path, f"setFile {words}", 1)
                forget_staged(words)
                self.assertRegex("\n".join(result.traces()), rf"(?m)^{family.class_name}::\w+: {trace} not supported$")

    def test_help_and_usage(self):
        families = ((family.path, family.class_name) for family in REFUSALS)
        for path, class_name in (("", "MainCmdsProcessor"), *families):
            with self.subTest(family=path):
                self.check(run(path, "help", 1), [f"{class_name}::CmdHelp"], is_failure=False, within=None)
                self.check(run(path, "help '?'", 1), [f"{class_name}::Usage", f"{class_name}::CmdHelp"],
                           is_failure=False, within="Usage")

    def test_usage_behind_a_failure(self):
        # Including one with the usage of another family.
        for path, class_name in (("-t port -s fec", "PhysicalPortFECCmdsProcessor"),
                                 ("-t port -s beacon", "PhysicalPortFECCmdsProcessor"),
                                 ("-t target -v info", "FCTargetInfoCmdsProcessor")):
            with self.subTest(family=path):
                result = run(path, "getcli nosuch", 1)
                self.assertIn("Usage: get", result.output)
                self.check(result, [f"{class_name}::Usage"], is_failure=True, within=None)

    def test_classes_are_made_and_deleted(self):
        for words in ("-t port -s fec get {larch}", "-t lun list", "nosuch"):
            texts = run("", words, 1).traces()
            for class_name in ("MainCmdsProcessor", *(family.class_name for family in REFUSALS)):
                with self.subTest(words=words, class_name=class_name):
                    for function in (rf"{class_name}\(.*\)", rf"~{class_name}\(\)"):
                        for step in ("STARTING", "RETURNING"):
                            line = rf"{step} (virtual )?{class_name}::{function}"
                            self.assertEqual(sum(bool(re.fullmatch(line, text)) for text in texts), 1, line)

    def test_making_and_deleting_nest(self):
        stack = []
        for text in run("", "-t port list", 1).traces():
            if match := re.fullmatch(r"STARTING (.*)", text):
                stack.append(match[1])
            elif match := re.fullmatch(r"RETURNING (.*?)( \.\.\. elapsed .*)?", text):
                self.assertEqual(stack.pop(), match[1])
        self.assertEqual(stack, [])

    def test_statuses_of_the_library(self):
        def check(family, words, _):
            self.check_statuses(run(family.path, words, 1, family.host, journal=True))
            if calls := self.status_calls():
                function = calls[0]["function"]
                self.check_statuses(run(family.path, words, 1, family.host, f"{function}=7", journal=True))
        self.each_success(check)

    def status_calls(self):
        calls = [json.loads(line) for line in JOURNAL.read_text().splitlines()]
        return [call for call in calls if call["function"] not in NO_STATUS]

    def check_statuses(self, result):
        expected = [f"{call['function']}={call['status']}" for call in self.status_calls()]
        called = {text.split("=")[0] for text in expected}
        found = [match[1] for text in result.traces() if (match := re.fullmatch(r"\w+::\w+: (VEXAPI_\w+=-?\d+)", text))]
        self.assertEqual([text for text in found if text.split("=")[0] in called], expected)

    def test_lists_of_targets_are_counted(self):
        found = re.findall(r"<string>(.*)</string>", run("-t target", "list", 0, "targets").output)
        with_luns = {re.sub(r"_(LUN|NSID)_\d+$", "", lun)
                     for lun in re.findall(r"<string>(.*)</string>", run("-t lun", "list", 0, "targets").output)}
        for path, class_name in (("-t target", "FCTargetCmdsProcessor"), ("-t lun", "FCLunCmdsProcessor")):
            with self.subTest(path=path):
                texts = run(path, "list", 1, "targets").traces()
                got = lambda what: [text.split("=", 1)[1] for text in texts
                                    if text.startswith(f"{class_name}::CmdListCommon: Got {what}=")]
                self.assertEqual(got("Tgt Count"), ["4", "1", "1", "1"])
                targets = {re.sub(r"_(LUN|NSID)_\d+$", "", text) for text in got("Tgt")}
                self.assertLessEqual(with_luns, targets)
                self.assertLessEqual(targets, set(found))
        self.assertEqual(len(found), 7)


class Completeness(unittest.TestCase):
    """The rows are complete, by the program's lists of commands and by the manual's list of failures."""
    maxDiff = None

    OPTIONS = {"adapter": "-s", "port": "-s", "target": "-v", "lun": "-v"}

    def leaves(self):
        """The plain leaves of every family, by its path."""
        children = lambda path: re.findall(r"^(\S+) *: ", run(path, "help", 0).output.replace("\r", ""), re.MULTILINE)
        plain = lambda words: {word for word in words if word != "help" and not word.endswith("cli")}
        for top, option in self.OPTIONS.items():
            words = children(f"-t {top}")
            # A family's own commands end with the last `cli` twin.
            subfamilies = words[max(at for at, word in enumerate(words) if word.endswith("cli")) + 1:]
            yield f"-t {top}", plain(set(words) - set(subfamilies))
            for subfamily in subfamilies:
                path = f"-t {top} {option} {subfamily}"
                yield path, plain(children(path))

    def test_every_command_is_refused(self):
        walked = {family.path: {refusal.words.split()[0] for refusal in family.rows} for family in REFUSALS}
        self.assertEqual(walked, dict(self.leaves()))

    def test_every_command_succeeds(self):
        walked = {family.path: {words.split()[0] for words, _ in family.successes} for family in REFUSALS}
        self.assertEqual(walked, dict(self.leaves()))

    @functools.cached_property
    def told(self):
        """Headings of the manual's list of failures, with the families that they name and the texts that follow."""
        chapter = MANUAL[MANUAL.index("\n7. WHEN A COMMAND FAILS"):]
        sections = re.findall(r"^   (\S.*)\n((?:(?:    .*)?\n)*)", chapter, re.MULTILINE)
        told = []
        for heading, body in sections:
            texts = re.findall(r"^      (Failed, .*)$", body, re.MULTILINE)
            if texts:
                told.append((heading, self.families_of(heading), texts))
        self.assertEqual(len(told), 7)
        self.assertEqual(sum(len(texts) for _, _, texts in told),
                         len(re.findall(r"^ +Failed, ", MANUAL, re.MULTILINE)))
        return told

    def families_of(self, heading):
        names = {family.name for family in REFUSALS}
        if heading == "Any command":
            return names
        # After options, or after a topic's colon.
        if heading.startswith("-t"):
            found = set(re.findall(r"-s (\w+)", heading)) or {heading.split()[1]}
        else:
            found = {"port" if word == "updatenvram" else word for word in re.findall(r"\w+", heading.split(":")[1])}
        self.assertLessEqual(found, names, heading)
        return found

    def met(self, names):
        return {refusal.message for family in REFUSALS if family.name in names for refusal in family.rows}

    def test_every_text_of_the_manual_is_met(self):
        for heading, names, texts in self.told:
            with self.subTest(heading=heading):
                self.assertEqual(set(texts) - self.met(names) - set(UNREACHABLE), set())

    def test_unreachable_texts_are_told_and_not_met(self):
        self.assertLessEqual(set(UNREACHABLE), {text for _, _, texts in self.told for text in texts})
        self.assertEqual(set(UNREACHABLE) & self.met({family.name for family in REFUSALS}), set())

    def test_every_message_is_told_for_its_family(self):
        for family in REFUSALS:
            with self.subTest(family=family.path):
                told = {text for _, names, texts in self.told if family.name in names for text in texts}
                self.assertEqual(self.met({family.name}) - told - {NO_DOCUMENT}, set())

    def test_rows_differ(self):
        for family in REFUSALS:
            rows = [str(refusal) for refusal in family.rows]
            self.assertEqual([text for text, count in collections.Counter(rows).items() if count > 1], [])


if __name__ == "__main__":
    unittest.main()
