/// @file
/// Conversion of the kernel's texts to the library's values.
#include "Attributes.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <sstream>

using namespace host;
using namespace std::string_literals;

namespace {

/// Everything that the kernel shows for unknown values.
constexpr Text UNTOLD[] = {"", "\n", " \n", "unknown\n", "Unknown\n", "-1\n"};

std::string Hex(const VX_UINT8* bytes, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", bytes[i]);
        text += digits;
    }
    return text;
}

TEST(LinuxValuesTest, Numbers) {
    EXPECT_EQ(NumberIn("0x0"), 0u);
    EXPECT_EQ(NumberIn("0xff"), 255u);
    EXPECT_EQ(NumberIn("300"), 300u);
    EXPECT_EQ(NumberIn("0xffffffffffffffff"), ~std::uint64_t{0});
    for (const Text text : {"", "0x", "x", "12 ", " 12", "12x", "-2", "0x1ffffffffffffffff", "99999999999999999999"}) {
        EXPECT_FALSE(NumberIn(text)) << text;
    }
}

TEST(LinuxValuesTest, NumbersOfARecord) {
    VX_UINT8 small = 7;
    VX_UINT16 middle = 7;
    VX_UINT32 large = 7;
    VX_UINT64 huge = 7;
    for (const Text text : UNTOLD) {
        EXPECT_TRUE(TakeNumber(text, small) && TakeNumber(text, middle) && TakeNumber(text, large)) << text;
        EXPECT_TRUE(TakeNumber(text, huge)) << text;
    }
    EXPECT_TRUE(TakeNumber("0xffffffffffffffff\n", large));
    EXPECT_TRUE(small == 7 && middle == 7 && large == 7 && huge == 7);
    EXPECT_FALSE(TakeNumber("seven", large));
    EXPECT_EQ(large, 7u);
    EXPECT_TRUE(TakeNumber("0x1fffffffe\n", large) && TakeNumber("65536\n", middle) && TakeNumber("256\n", small));
    EXPECT_EQ(large, 0xFFFFFFFFu);
    EXPECT_EQ(middle, 0xFFFF);
    EXPECT_EQ(small, 0xFF);
    EXPECT_TRUE(TakeNumber("0x1fffffffe\n", huge));
    EXPECT_EQ(huge, 0x1FFFFFFFEu);
    EXPECT_EQ(Saturated(0xFFFFFFFF), 0xFFFFFFFFu);
    EXPECT_EQ(Saturated(0x100000000), 0xFFFFFFFFu);
}

TEST(LinuxValuesTest, Sums) {
    VX_UINT32 sum = 5;
    EXPECT_TRUE(AddNumber("0x10\n", sum) && AddNumber("0xffffffffffffffff\n", sum));
    EXPECT_EQ(sum, 21u);
    EXPECT_TRUE(AddNumber("0xfffffff0\n", sum));
    EXPECT_EQ(sum, 0xFFFFFFFFu);
    EXPECT_FALSE(AddNumber("many", sum));
}

TEST(LinuxValuesTest, Names) {
    VX_UINT8 name[8] = {};
    EXPECT_TRUE(TakeName("0x200002000000a001\n", name));
    EXPECT_EQ(Hex(name, 8), "200002000000a001");
    EXPECT_EQ(NameNumber(name), 0x200002000000a001u);
    for (const Text text : UNTOLD) {
        EXPECT_TRUE(TakeName(text, name));
    }
    EXPECT_TRUE(TakeName("0xffffffffffffffff\n", name));
    EXPECT_FALSE(TakeName("20:00:02:00:00:00:a0:01\n", name));
    EXPECT_EQ(Hex(name, 8), "200002000000a001");
    EXPECT_TRUE(TakeName("0x0\n", name));
    EXPECT_EQ(NameNumber(name), 0u);
}

TEST(LinuxValuesTest, PortIds) {
    VX_UINT8 id[3] = {};
    EXPECT_TRUE(TakePortId("0x01a2b3\n", id));
    EXPECT_EQ(Hex(id, 3), "01a2b3");
    EXPECT_TRUE(TakePortId("0xffffff\n", id));
    EXPECT_EQ(Hex(id, 3), "ffffff");
    EXPECT_TRUE(TakePortId("0x1000000\n", id) && TakePortId("0xffffffff\n", id));
    EXPECT_EQ(Hex(id, 3), "ffffff");
    EXPECT_FALSE(TakePortId("none", id));
}

TEST(LinuxValuesTest, Texts) {
    const std::pair<Text, std::string> rows[] = {
        {"ABC\n", "ABC"},          {"  two words \t\n", "two words"}, {Text("NUL\0 \0", 6), "NUL"},
        {"tab\there", "tab?here"}, {"\x7f\x80\xff~", "???~"},         {"<a>&\"%s%n'", "<a>&\"%s%n'"},
        {"UNKNOWN", ""},           {"unknowns", "unknowns"},          {"", ""},
    };
    for (const auto& [text, expected] : rows) {
        std::string value;
        EXPECT_TRUE(TakeText(text, value));
        EXPECT_EQ(value, expected);
    }
    std::string kept = "kept";
    EXPECT_TRUE(TakeText("unknown\n", kept));
    EXPECT_EQ(kept, "kept");
    char line[4] = "xyz";
    TakeText("abcdef", line);
    EXPECT_STREQ(line, "abc");
    VX_UINT8 padded[4] = {};
    TakePadded("abcdef", padded);
    EXPECT_EQ(std::memcmp(padded, "abcd", 4), 0);
    VX_UINT8 shorter[4] = {};
    TakePadded("ab  ", shorter);
    EXPECT_EQ(std::memcmp(shorter, "ab\0\0", 4), 0);
}

TEST(LinuxValuesTest, Speeds) {
    const std::pair<Text, VX_UINT32> rows[] = {
        {"1 Gbit", 1},   {"2 Gbit", 2},    {"4 Gbit", 4},   {"8 Gbit", 8},        {"10 Gbit", 16}, {"16 Gbit", 22},
        {"32 Gbit", 50}, {"64 Gbit", 100}, {"20 Gbit", 0},  {"25 Gbit", 0},       {"40 Gbit", 0},  {"50 Gbit", 0},
        {"100 Gbit", 0}, {"128 Gbit", 0},  {"256 Gbit", 0}, {"Not Negotiated", 0}};
    for (const auto& [text, code] : rows) {
        VX_UINT32 speed = 7;
        EXPECT_TRUE(TakeSpeed(std::string(text) + "\n", speed)) << text;
        EXPECT_EQ(speed, code) << text;
    }
    VX_UINT32 speed = 7;
    EXPECT_TRUE(TakeSpeed("unknown\n", speed));
    EXPECT_FALSE(TakeSpeed("16Gbit\n", speed));
    EXPECT_EQ(speed, 7u);
}

TEST(LinuxValuesTest, SupportedSpeeds) {
    const std::tuple<Text, bool, VX_UINT8> rows[] = {
        {"8 Gbit, 16 Gbit, 32 Gbit\n", true, 0x70},
        {"1 Gbit, 2 Gbit, 4 Gbit, 8 Gbit, 10 Gbit, 16 Gbit, 32 Gbit, 64 Gbit\n", true, 0xFF},
        {"10 Gbit\n", true, 0x04},
        {"128 Gbit, 64 Gbit\n", true, 0x80},
        {"unknown\n", true, 0},
        {"\n", true, 0},
        {",\n", true, 0},
        {"4 Gbit,,8 Gbit,\n", true, 0x18},
        {"4 Gbit, quick\n", false, 0x08},
    };
    for (const auto& [text, isUnderstood, mask] : rows) {
        VX_UINT8 speeds = 0;
        EXPECT_EQ(TakeSpeeds(text, speeds), isUnderstood) << text;
        EXPECT_EQ(speeds, mask) << text;
    }
}

TEST(LinuxValuesTest, PortStates) {
    const std::tuple<Text, VX_UINT8, bool> rows[] = {
        {"Online", 1, true},       {"Offline", 3, false},  {"Linkdown", 3, false}, {"Not Present", 3, false},
        {"Bypassed", 3, false},    {"Error", 3, false},    {"Deleted", 3, false},  {"Blocked", 0, false},
        {"Diagnostics", 0, false}, {"Loopback", 0, false}, {"Marginal", 0, true},
    };
    for (const auto& [text, code, isOnline] : rows) {
        VX_UINT8 state = 9;
        VX_UINT8 flags[6] = {};
        EXPECT_TRUE(TakePortState(text, state) && TakeTargetState(text, flags)) << text;
        EXPECT_EQ(state, code) << text;
        EXPECT_EQ(Hex(flags, 6), isOnline ? "000002000100" : "000000000000") << text;
    }
    VX_UINT8 state = 9;
    VX_UINT8 flags[6] = {};
    EXPECT_TRUE(TakePortState("Unknown", state) && TakeTargetState("Unknown", flags));
    EXPECT_FALSE(TakePortState("online", state) || TakeTargetState("online", flags));
    EXPECT_EQ(state, 9);
}

TEST(LinuxValuesTest, PortTypes) {
    const std::tuple<Text, VX_UINT8, VX_UINT8> rows[] = {
        {"NPort (fabric via point-to-point)", 1, 1},
        {"Point-To-Point (direct nport connection)", 1, 1},
        {"NPIV VPORT", 1, 1},
        {"NLPort (fabric via loop)", 6, 2},
        {"LPort (private loop)", 2, 2},
        {"Other", 0, 0},
        {"Not Present", 0, 0},
        {"Unknown", 0, 0},
    };
    for (const auto& [text, type, mode] : rows) {
        _vexapi_protocol_t record{};
        EXPECT_TRUE(TakePortType(text, record)) << text;
        EXPECT_EQ(record.PortType, type) << text;
        EXPECT_EQ(record.PortConnectionMode, mode) << text;
    }
    _vexapi_protocol_t record{};
    EXPECT_FALSE(TakePortType("XPort", record));
}

TEST(LinuxValuesTest, PciLinks) {
    const std::tuple<Text, Text, VX_UINT16> rows[] = {
        {"2.5 GT/s PCIe", "1", 0x11},  {"5.0 GT/s PCIe", "2", 0x22},    {"8.0 GT/s PCIe", "4", 0x43},
        {"16.0 GT/s PCIe", "8", 0x84}, {"32.0 GT/s PCIe", "16", 0x108}, {"64.0 GT/s PCIe", "32", 0x180},
        {"8 GT/s", "24", 0x003},       {"Unknown", "255", 0},           {"Unknown speed", "0", 0},
    };
    for (const auto& [speed, width, expected] : rows) { // 32 lanes are the library's code 24
        VX_UINT16 link = 0;
        EXPECT_TRUE(TakeLinkSpeed(speed, link) && TakeLinkWidth(width, link)) << speed;
        EXPECT_EQ(link, expected) << speed;
    }
    VX_UINT16 link = 0;
    EXPECT_FALSE(TakeLinkSpeed("fast", link) || TakeLinkWidth("wide", link));
}

TEST(LinuxValuesTest, WorldwideIds) {
    const std::tuple<Text, bool, std::string> rows[] = {
        {"naa.60014050000a00311114000800000000\n", true, "60014050000a00311114000800000000"},
        {"eui.0011223344556677\n", true, "0011223344556677"},
        {"uuid.44444444-0000-4000-8000-000000000007\n", true, "44444444000040008000000000000007"},
        {"t10.ABC \n", true, "414243"},
        {"nvme.1af4-53-4d-00000001\n", true, ""},
        {"\n", true, ""},
        {"naa.600140\n", true, "600140"},
        {"naa.60014\n", false, ""},
        {"naa.60xx\n", false, ""},
        {"other.60\n", false, ""},
    };
    for (const auto& [text, isUnderstood, expected] : rows) {
        _tagVEXAPI_SDMLun lun{};
        EXPECT_EQ(TakeWorldwideId(text, lun), isUnderstood) << text;
        EXPECT_EQ(Hex(lun.WorldwideId, lun.WorldwideIdLength), expected) << text;
    }
    _tagVEXAPI_SDMLun lun{};
    EXPECT_TRUE(TakeWorldwideId("naa." + std::string(80, '7'), lun));
    EXPECT_EQ(lun.WorldwideIdLength, 32);
}

/// VPD page 83h with these designators: association and type, and the bytes.
std::string Page(std::initializer_list<std::pair<int, std::string>> designators) {
    std::string bytes;
    for (const auto& [kind, value] : designators) {
        bytes += "\1"s + static_cast<char>(kind) + '\0' + static_cast<char>(value.size()) + value;
    }
    return "\0\x83"s + static_cast<char>(bytes.size() >> 8) + static_cast<char>(bytes.size()) + bytes;
}

TEST(LinuxValuesTest, Designators) {
    const std::tuple<std::string, bool, std::string> rows[] = {
        {Page({{1, "T10"}, {2, "EUI"}, {3, "NAA"}}), true, "4e4141"},
        {Page({{1, "T10"}, {2, "EUI"}}), true, "455549"},
        {Page({{1, "T10"}}), true, "543130"},
        {Page({{0x13, "port"}, {0x23, "device"}, {3, "NAA"}}), true,
         "4e4141"}, // those of ports and devices are ignored
        {Page({{3, ""}, {3, "A"}}), true, "41"},
        {Page({{3, "A"}, {3, "B"}}), true, "41"},
        // NAA formats by preference: registered extended, registered, extended, locally assigned.
        {Page({{3, "\x31"}, {3, "\x21"}, {3, "\x51"}, {3, "\x61"}, {3, "\x52"}}), true, "61"},
        {Page({{3, "\x31"}, {3, "\x21"}, {3, "\x51"}}), true, "51"},
        {Page({{3, "\x31"}, {3, "\x21"}}), true, "21"},
        {Page({{2, "\xff"}, {3, "\x31"}}), true, "31"},
        {Page({{0x13, "port"}, {8, "name"}}), false, ""},
        {Page({}), false, ""},
        {Page({{3, "NAA"}}).substr(0, 10), false, ""}, // truncated within the designator
        {Page({{3, "NAA"}}).substr(0, 6), false, ""},
        {"\0\x83\xff\xff"s + Page({{3, "NAA"}}).substr(4), true, "4e4141"}, // the page claims to be longer than it is
        {"\0\x83\0\2"s + Page({{3, "NAA"}}).substr(4), false, ""},          // and shorter
        {"\0\x80\0\7"s + Page({{3, "NAA"}}).substr(4), false, ""},          // another page
        {"", false, ""},
        {"\0\x83\0"s, false, ""},
    };
    _tagVEXAPI_SDMLun longest{};
    EXPECT_TRUE(TakeDesignators(Page({{3, std::string(40, '!')}}), longest));
    EXPECT_EQ(longest.WorldwideIdLength, 32);
    for (const auto& [bytes, isUnderstood, expected] : rows) {
        _tagVEXAPI_SDMLun lun{};
        EXPECT_EQ(TakeDesignators(bytes, lun), isUnderstood);
        EXPECT_EQ(Hex(lun.WorldwideId, lun.WorldwideIdLength), expected);
    }
}

TEST(LinuxValuesTest, Uuids) {
    VX_UINT8 id[16] = {};
    EXPECT_TRUE(TakeUuid("33333333-0000-4000-8000-0000000000ab\n", id));
    EXPECT_EQ(Hex(id, 16), "333333330000400080000000000000ab");
    for (const Text text : {"33333333-0000-4000-8000-0000000000", "33333333-0000-4000-8000-0000000000gg", "3"}) {
        EXPECT_FALSE(TakeUuid(text, id)) << text;
    }
    EXPECT_TRUE(TakeUuid("\n", id));
    EXPECT_EQ(Hex(id, 16), "333333330000400080000000000000ab");
}

TEST(LinuxValuesTest, Addresses) {
    struct Row {
        Text text;
        bool isUnderstood;
        std::uint64_t node, port, host;
    };
    const Row rows[] = {
        {"traddr=nn-0x10:pn-0x20,host_traddr=nn-0x30:pn-0x40\n", true, 0x10, 0x20, 0x40},
        {"host_traddr=nn-0x30:pn-0x40,traddr=nn-0x10:pn-0x20,trsvcid=none\n", true, 0x10, 0x20, 0x40},
        {"traddr=pn-0x20,host_traddr=pn-0x40\n", true, 0, 0x20, 0x40},
        {"traddr=nn-0x10:pn-0x20\n", false, 0x10, 0x20, 0},
        {"host_traddr=nn-0x30:pn-0x40\n", false, 0, 0, 0x40},
        {"traddr=nn-0x10:pn-x,host_traddr=pn-0x40\n", false, 0x10, 0, 0x40},
        {"traddr=192.0.2.1,trsvcid=4420\n", false, 0, 0, 0},
        {"\n", false, 0, 0, 0},
    };
    for (const Row& row : rows) {
        Controller controller;
        EXPECT_EQ(TakeAddress(row.text, controller), row.isUnderstood) << row.text;
        EXPECT_EQ(NameNumber(controller.target.NodeName), row.node) << row.text;
        EXPECT_EQ(NameNumber(controller.target.PortName), row.port) << row.text;
        EXPECT_EQ(controller.hostPort, row.host) << row.text;
    }
}

TEST(LinuxValuesTest, Inquiry) {
    const std::string bytes = "\x61\0\6\2\x5b\0\0\0MAKER   PRODUCT         1.0 "s;
    Lun lun;
    EXPECT_TRUE(TakeInquiry(bytes, lun));
    EXPECT_EQ(lun.deviceType, 1u); // the upper bits are the peripheral qualifier
    EXPECT_EQ(std::memcmp(lun.record.VendorId, "MAKER\0\0\0", 8), 0);
    EXPECT_EQ(std::memcmp(lun.record.ProductId, "PRODUCT\0\0\0\0\0\0\0\0\0", 16), 0);
    EXPECT_EQ(std::memcmp(lun.record.ProductRevision, "1.0\0", 4), 0);
    EXPECT_FALSE(TakeInquiry(bytes.substr(0, 35), lun));
}

TEST(LinuxValuesTest, KeywordsOfACard) {
    const auto section = [](int tag, const std::string& content) {
        return std::string(1, static_cast<char>(tag)) + static_cast<char>(content.size()) + '\0' + content;
    };
    const std::string card = section(0x82, "Card PN\3not") + section(0x91, "PN\3old") +
                             section(0x90, "EC\0SN\4S123PN\3P-1PN\3P-2"s) + "\x78";
    EXPECT_EQ(VpdKeyword(card, "PN"), "P-1");
    EXPECT_EQ(VpdKeyword(card, "SN"), "S123");
    EXPECT_EQ(VpdKeyword(card, "EC"), "");
    EXPECT_EQ(VpdKeyword(card, "MN"), "");
    EXPECT_EQ(VpdKeyword("\x78" + card, "PN"), ""); // after the end tag
    for (std::size_t size = 0; size < card.size(); ++size) {
        const Text value = VpdKeyword(Text(card).substr(0, size), "SN");
        EXPECT_TRUE(Text("S123").starts_with(value)) << size;
    }
}

/// "port details, targets"
std::string PartNames(VX_UINT32 parts) {
    constexpr std::pair<VX_UINT32, const char*> NAMES[] = {
        {ADAPTERS, "adapters"},
        {PORTS, "ports"},
        {PORT_DETAILS, "port details"},
        {PORT_COUNTERS, "port counters"},
        {TARGETS, "targets"},
        {TARGET_DETAILS, "target details"},
        {LUNS, "LUNs"},
        {LUN_DETAILS, "LUN details"},
        {ON_REQUEST, "on request"},
    };
    std::string names;
    for (const auto& [part, name] : NAMES) {
        if ((parts & part) != 0) {
            names += (names.empty() ? "" : ", ") + std::string(name);
        }
    }
    return names;
}

/// The README lists every file with its meaning and what it is read for, and no other.
TEST(LinuxValuesTest, TheGuideNamesEveryFile) {
    std::multiset<std::string> expected;
    const auto expectAll = [&](const auto&... tables) {
        const auto expect = [&](const auto& attribute) {
            expected.insert("| `"s + attribute.path + "` | " + attribute.meaning + " | " + PartNames(attribute.parts));
        };
        const auto expectTable = [&](const auto& table) {
            if constexpr (requires { std::begin(table); }) {
                std::for_each(std::begin(table), std::end(table), expect);
            } else {
                expect(table);
            }
        };
        (expectTable(tables), ...);
    };
    expectAll(HOST, IDENTITY, HOST_STATISTICS, PCI, PCI_CLASS, ROLES, REMOTE_PORT, INQUIRY, INQUIRY_TEXTS, DESIGNATORS,
              WORLDWIDE_ID, BLOCK_DEVICE, NAMESPACE_NUMBER, TRANSPORT, ENDS, CONTROLLER, KERNEL_PORT, DRIVER,
              KERNEL_REMOTE_PORT, KERNEL_CONTROLLER, KERNEL_LUN, KERNEL_NAMESPACE, NAMESPACE_STATE, MAP_ID, MAP,
              MAP_NUMBER, NATIVE_MAP);
    std::ifstream file(LINUX_HOST_SOURCE "/README.md");
    const std::string guide{std::istreambuf_iterator<char>(file), {}};
    const std::size_t begin = guide.find("## What is read");
    std::istringstream lines(guide.substr(begin, guide.find("## Sources") - begin));
    std::multiset<std::string> listed;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("| `")) {
            listed.insert(line.substr(0, line.rfind(" | "))); // without the last column
        }
    }
    EXPECT_EQ(listed, expected);
    for (const Notification& counter : NOTIFICATION_COUNTERS) {
        EXPECT_NE(guide.find("`"s + counter.path + "`"), std::string::npos) << counter.path;
    }
}

} // namespace
