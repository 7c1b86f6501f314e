// Descriptions that are refused: one good host and one case for each fault.
#include "Fixture.h"

namespace {

struct Bad {
    const char* name;
    const char* at;     ///< JSON pointer of the value that is replaced in `SmallHost`
    const char* value;  ///< the replacement
    const char* reason; ///< end of the message
};

class Refusals : public Simulated, public testing::WithParamInterface<Bad> {
protected:
    /// Expects every call to fail, and the start to print one line to both streams.
    void ExpectRefused(const std::string& reason) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(Start(), REFUSED) << reason;
        const std::string line = "vexapi simulator: the description is refused: " + Path("host.json") + ": " + reason;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), line + "\n");
        EXPECT_TRUE(output.starts_with(line + "\n")) << output;
        EXPECT_EQ(VEXAPI_GetAdapterList(), nullptr);
        EXPECT_EQ(VEXAPI_SetToolID(11), REFUSED);
        EXPECT_EQ(VEXAPI_GetBfsConfigMode(), 0);
        EXPECT_EQ(VEXAPI_Uninitialize(), REFUSED);
        EXPECT_EQ(VEXAPI_SetToolID(11), CALLERS_MISTAKE); // the session is over
    }
};

const std::string PORT0 = "/Adapters/0/PhyPorts/0/Protocols/0";

TEST_P(Refusals, OneFault) {
    Json host = SmallHost();
    host[Json::json_pointer(GetParam().at)] = Json::parse(GetParam().value);
    Describe(host);
    ExpectRefused(GetParam().reason);
}

#define PORT "/Adapters/0/PhyPorts/0/Protocols/0"
#define TARGET PORT "/Targets/0"

INSTANTIATE_TEST_SUITE_P(
    Faults, Refusals,
    testing::Values(
        Bad{"UnknownKeyAtTheTop", "/Adapter", "[]", "/Adapter: unknown key"},
        Bad{"UnknownKeyInAnAdapter", "/Adapters/0/Serial", "1", "/Adapters/0/Serial: unknown key"},
        Bad{"UnknownKeyInAPhyPort", "/Adapters/0/PhyPorts/0/Number", "1", "/Adapters/0/PhyPorts/0/Number: unknown key"},
        Bad{"UnknownKeyInAPort", PORT "/Wwpn", "1", PORT "/Wwpn: unknown key"},
        Bad{"UnknownKeyWithASlash", PORT "/a~1b", "1", PORT "/a~1b: unknown key"},
        Bad{"UnknownKeyInATarget", TARGET "/Name", "1", TARGET "/Name: unknown key"},
        Bad{"UnknownKeyInALun", TARGET "/Luns/0/Lun", "1", TARGET "/Luns/0/Lun: unknown key"},
        Bad{"UnknownKeyInARecord", PORT "/ChipProperty/Chip", "1", PORT "/ChipProperty/Chip: unknown key"},
        Bad{"UnknownKeyInNvram", PORT "/Nvram", R"({"Datarate": 1})", PORT "/Nvram/Datarate: unknown key"},
        Bad{"HandleIsNoKey", PORT "/PortHandle", "\"00\"", PORT "/PortHandle: unknown key"},
        Bad{"NumberTooLargeFor8Bits", PORT "/PortState", "256", PORT "/PortState: 256 is above 255"},
        Bad{"NumberTooLargeFor16Bits", PORT "/PortInterfaceType", "\"0x10000\"",
            PORT "/PortInterfaceType: 65536 is above 65535"},
        Bad{"NumberTooLargeFor32Bits", PORT "/FeatureFlags", "4294967296",
            PORT "/FeatureFlags: 4294967296 is above 4294967295"},
        Bad{"NumberTooLargeFor64Bits", PORT "/ScmAlarmCount", "18446744073709551616",
            PORT "/ScmAlarmCount: must be a whole number"},
        Bad{"NumberNegative", PORT "/PortSpeed", "-1", PORT "/PortSpeed: must not be negative"},
        Bad{"NumberWithAFraction", PORT "/PortSpeed", "1.5", PORT "/PortSpeed: must be a whole number"},
        Bad{"NumberAsDecimalText", PORT "/PortSpeed", "\"50\"",
            PORT "/PortSpeed: must be a number or a text \"0x...\""},
        Bad{"NumberAsBadHexText", PORT "/PortSpeed", "\"0x5g\"",
            PORT "/PortSpeed: must be a number or a text \"0x...\""},
        Bad{"NumberAsEmptyHexText", PORT "/PortSpeed", "\"0x\"",
            PORT "/PortSpeed: must be a number or a text \"0x...\""},
        Bad{"NumberAsHugeHexText", PORT "/ScmAlarmCount", "\"0x10000000000000000\"",
            PORT "/ScmAlarmCount: must be a number or a text \"0x...\""},
        Bad{"NumberAsBoolean", PORT "/Mezzanine", "true", PORT "/Mezzanine: must be a number or a text \"0x...\""},
        Bad{"NumberAsNull", PORT "/PortSpeed", "null", PORT "/PortSpeed: must be a number or a text \"0x...\""},
        Bad{"TemperatureTooHigh", PORT "/Temperature", "32768", PORT "/Temperature: must be -32768 to 32767"},
        Bad{"TemperatureTooLow", PORT "/Temperature", "-32769", PORT "/Temperature: must be -32768 to 32767"},
        Bad{"TemperatureAsText", PORT "/Temperature", "\"0x10\"", PORT "/Temperature: must be a whole number"},
        Bad{"TextTooLong", "/Adapters/0/Model", "\"0123456789abcdef0123456789abcdefX\"",
            "/Adapters/0/Model: is longer than 32 bytes"},
        Bad{"TextAsNumber", "/Adapters/0/Model", "5", "/Adapters/0/Model: must be a text"},
        Bad{"TextAsOtherObject", "/Adapters/0/Model", R"({"byte": "aa"})", "/Adapters/0/Model/byte: unknown key"},
        Bad{"BytesTooFew", PORT "/WWNN", "\"20:00:00:24:ff:01:02\"", PORT "/WWNN: has 7 bytes instead of 8"},
        Bad{"BytesTooMany", PORT "/WWNN", "\"20:00:00:24:ff:01:02:03:04\"", PORT "/WWNN: has 9 bytes instead of 8"},
        Bad{"BytesWithBadDigit", PORT "/WWNN", "\"20:00:00:24:ff:01:02:0g\"",
            PORT "/WWNN: is no text of bytes \"aa:bb:...\""},
        Bad{"BytesWithSign", PORT "/WWNN", "\"20:00:00:24:ff:01:02:-3\"",
            PORT "/WWNN: is no text of bytes \"aa:bb:...\""},
        Bad{"BytesWithBadSeparator", PORT "/WWNN", "\"20-00:00:24:ff:01:02:03\"",
            PORT "/WWNN: is no text of bytes \"aa:bb:...\""},
        Bad{"BytesOfOneDigit", PORT "/WWNN", "\"2\"", PORT "/WWNN: is no text of bytes \"aa:bb:...\""},
        Bad{"BytesAsNumber", PORT "/WWNN", "5", PORT "/WWNN: must be a text of bytes \"aa:bb:...\""},
        Bad{"IdentifierTooLong", TARGET "/Luns/0/WorldwideId",
            "\"00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00:00\"",
            TARGET "/Luns/0/WorldwideId: has 33 bytes instead of at most 32"},
        Bad{"ListTooLong", PORT "/ScmLinkCounters", "[1, 2, 3, 4, 5, 6, 7]",
            PORT "/ScmLinkCounters: has more than 6 entries"},
        Bad{"ListAsNumber", PORT "/ScmLinkCounters", "7", PORT "/ScmLinkCounters: must be a list"},
        Bad{"ListWithBadElement", PORT "/ScmLinkCounters", "[1, \"x\"]",
            PORT "/ScmLinkCounters/1: must be a number or a text \"0x...\""},
        Bad{"NineBootEntries", PORT "/NvmeBoot", R"({"BootEntry": [{}, {}, {}, {}, {}, {}, {}, {}, {}]})",
            PORT "/NvmeBoot/BootEntry: has more than 8 entries"},
        Bad{"RecordAsList", PORT "/ChipProperty", "[]", PORT "/ChipProperty: must be an object"},
        Bad{"AdaptersAsObject", "/Adapters", "{}", "/Adapters: must be a list or null"},
        Bad{"AdapterAsText", "/Adapters/0", "\"x\"", "/Adapters/0: must be an object"},
        Bad{"PhyPortsAsText", "/Adapters/0/PhyPorts", "\"x\"", "/Adapters/0/PhyPorts: must be a list or null"},
        Bad{"LunsAsNumber", TARGET "/Luns", "300", TARGET "/Luns: must be a list or null"},
        Bad{"NoName", PORT "/WWPN", "\"00:00:00:00:00:00:00:00\"", PORT ": has no WWPN"},
        Bad{"NameGivenTwice", PORT "/WWPN", "\"21:00:00:24:ff:01:02:04\"",
            "/Adapters/0/PhyPorts/1/Protocols/0/WWPN: the name 21:00:00:24:ff:01:02:04 is taken by another port"},
        Bad{"BadBootMode", "/BfsMode", "3", "/BfsMode: must be 1, 2 or 4"},
        Bad{"BootModeTooLarge", "/BfsMode", "5", "/BfsMode: 5 is above 4"},
        Bad{"TooManyLuns", TARGET "/Luns/0/Repeat", "65537", TARGET "/Luns/0/Repeat: 65537 is above 65536"},
        Bad{"LastLunTooHigh", TARGET "/Luns/1/Repeat", "65300", TARGET "/Luns/1: the last LUN number is above 65535"},
        Bad{"UnknownTemplate", PORT "/Use", "\"none\"", PORT "/Use: names no template: \"none\""},
        Bad{"TemplateAsNumber", PORT "/Use", "5", PORT "/Use: names no template: 5"},
        Bad{"TemplateUnused", "/Templates", R"({"x": {}})", "/Templates/x: is used nowhere"},
        Bad{"TemplatesAsList", "/Templates", "[]", "/Templates: must be an object"},
        Bad{"BlobMissing", PORT "/Vpd", "\"none.hex\"",
            PORT "/Vpd: the file \"none.hex\" can't be opened: No such file or directory"},
        Bad{"BlobIsAFolder", PORT "/Vpd", "\".\"", PORT "/Vpd: the file \".\" is no regular file"},
        Bad{"BlobAsNumber", PORT "/Vpd", "5", PORT "/Vpd: must be an object"},
        Bad{"BlobAsOtherObject", PORT "/Vpd", R"({"name": "x"})",
            PORT "/Vpd: must be a file name, {\"bytes\": ...} or {\"file\": ..., \"patch\": ...}"},
        Bad{"BlobWithUnknownKey", PORT "/Vpd", R"({"bytes": "00", "x": 1})", PORT "/Vpd/x: unknown key"},
        Bad{"PatchAtNoOffset", PORT "/Vpd", R"({"bytes": "00", "patch": {"0x1": "00"}})",
            PORT "/Vpd/patch/0x1: is no offset in decimal"},
        Bad{"PatchBehindTheEnd", PORT "/Transceiver", R"({"bytes": "00", "patch": {"512": "00"}})",
            PORT "/Transceiver: has 513 bytes, more than 512"},
        Bad{"UnknownFunctionInStatuses", PORT "/Statuses", R"({"VEXAPI_None": 1})",
            PORT "/Statuses/VEXAPI_None: unknown key"},
        Bad{"StatusTooLarge", PORT "/Statuses", R"({"VEXAPI_GetVpd": 4294967296})",
            PORT "/Statuses/VEXAPI_GetVpd: 4294967296 is above 4294967295"},
        Bad{"NoLoopbackResult", PORT "/Loopback", "[]", PORT "/Loopback: needs the result of at least one call"},
        Bad{"NoEchoResult", PORT "/Echo", "[]", PORT "/Echo: needs the result of at least one call"},
        Bad{"NoBufferResult", PORT "/ReadWriteBuffer", "[]",
            PORT "/ReadWriteBuffer: needs the result of at least one call"},
        Bad{"UnknownKeyInAPortsKernel", PORT "/Kernel", R"({"Size": 4})", PORT "/Kernel/Size: unknown key"},
        Bad{"UnknownKeyInATargetsKernel", TARGET "/Kernel", R"({"Device": "x"})", TARGET "/Kernel/Device: unknown key"},
        Bad{"UnknownKeyInALunsKernel", TARGET "/Luns/0/Kernel", R"({"Roles": "x"})",
            TARGET "/Luns/0/Kernel/Roles: unknown key"},
        Bad{"NoRoomForTheTerminator", PORT "/Kernel", R"({"State": "0123456789abcdef0123456789abcdef"})",
            PORT "/Kernel/State: is longer than 31 bytes"},
        Bad{"CountersAsList", PORT "/Counters", "[]", PORT "/Counters: must be an object"},
        Bad{"CounterAsText", TARGET "/Counters", R"({"a/b": "1"})",
            TARGET "/Counters/a~1b: must be a number or a text \"0x...\""},
        Bad{"CounterNegative", TARGET "/Counters", R"({"a": {"step": -1}})",
            TARGET "/Counters/a/step: must not be negative"},
        Bad{"UnknownKeyInACounter", PORT "/Counters", R"({"a": {"Value": 1}})", PORT "/Counters/a/Value: unknown key"},
        Bad{"CounterNameTooLong", PORT "/Counters", R"({"0123456789abcdef0123456789abcdef0123456789abcdef": 1})",
            PORT "/Counters/0123456789abcdef0123456789abcdef0123456789abcdef: is longer than 47 bytes"},
        Bad{"BufferResultsAsRecords", PORT "/ReadWriteBuffer", "[{}]", PORT "/ReadWriteBuffer/0: must be a list"}),
    [](const auto& chosen) { return chosen.param.name; });

TEST_F(Refusals, TheHostItselfIsGood) {
    Describe(SmallHost());
    EXPECT_EQ(Start(), 0U) << output;
}

TEST_F(Refusals, TemplatesInACircle) {
    Json host = SmallHost();
    host["Templates"] = Json::parse(R"({"a": {"Use": "b"}, "b": {"Use": "a"}})");
    PortOf(host)["Use"] = "a";
    Describe(host);
    ExpectRefused("/Templates/b: its templates use each other in a circle");
}

TEST_F(Refusals, TemplatesThatMultiply) {
    // Each of the five uses the next one ten times: a hundred thousand uses in all.
    Json host = SmallHost();
    for (char name = 'a'; name < 'e'; ++name) {
        const std::string next(1, static_cast<char>(name + 1));
        host["Templates"][std::string(1, name)]["Use"] = std::vector<std::string>(10, next);
    }
    host["Templates"]["e"] = Json::object();
    PortOf(host)["Use"] = std::vector<std::string>(10, "a");
    Describe(host);
    ExpectRefused("/Templates/d: templates use templates more than 50000 times");
}

TEST_F(Refusals, NoAdapters) {
    DescribeText("{}");
    ExpectRefused("/: has no key \"Adapters\"");
}

TEST_F(Refusals, NoObject) {
    DescribeText("[]");
    ExpectRefused("/: must be an object");
}

TEST_F(Refusals, KeyGivenTwice) {
    DescribeText(R"({"Adapters": [{"Model": "a", "Model": "b"}]})");
    ExpectRefused("/: the key \"Model\" stands twice in one object");
}

TEST_F(Refusals, NestedTooDeep) {
    DescribeText(std::string(100000, '[') + std::string(100000, ']'));
    ExpectRefused("/: is nested more than 64 deep");
}

TEST_F(Refusals, NoJson) {
    DescribeText("{\"Adapters\": [}");
    EXPECT_EQ(Start(), REFUSED);
    EXPECT_NE(output.find("/: is no JSON: parse error at line 1, column 15"), std::string::npos) << output;
}

TEST_F(Refusals, EveryTruncation) {
    const std::string text = SmallHost().dump();
    for (std::size_t size = 0; size < text.size(); ++size) {
        DescribeText(text.substr(0, size));
        testing::internal::CaptureStderr();
        EXPECT_EQ(Start(), REFUSED) << size;
        testing::internal::GetCapturedStderr();
        End();
    }
}

TEST_F(Refusals, NoFile) {
    setenv("VEXAPI_SIM_HOST", Path("host.json").c_str(), 1);
    ExpectRefused("can't be opened: No such file or directory");
}

TEST_F(Refusals, BadHexFile) {
    for (const char* bad : {"0", "0g", "001", "00,01", "-1", "0x"}) {
        File("blob.hex", std::string("00 01\n") + bad + "\n");
        Json host = SmallHost();
        PortOf(host)["Vpd"] = "blob.hex";
        Describe(host);
        ExpectRefused(PORT0 + "/Vpd: the file \"blob.hex\" line 2 holds something else than bytes");
    }
}

TEST_F(Refusals, PayloadTooLong) {
    File("blob", std::string(509, 'x'));
    Json host = SmallHost();
    PortOf(host)["RdpPayload"] = "blob";
    Describe(host);
    ExpectRefused(PORT0 + "/RdpPayload: has 509 bytes, more than 508");
}

} // namespace
