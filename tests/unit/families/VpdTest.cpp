#include "FamilyTest.h"
#include "PhysicalPortVPDCmdsProcessor.h"
#include "TraceLog.h"

#include <cstdio>

using namespace family_test;

namespace {

/// An item of an image, whose header may have a wrong length.
struct Item {
    std::string first;  ///< the two characters of a keyword, or a tag's byte and the low byte of its length
    VX_UINT8 third = 0; ///< a keyword's length, or the high byte of a tag's
    std::string value;
};

Item Keyword(const std::string& name, const std::string& value) {
    return {name, static_cast<VX_UINT8>(value.size()), value};
}
Item Tag(int tag, std::size_t length, const std::string& value = "") {
    return {{static_cast<char>(tag), static_cast<char>(length & 0xFF)}, static_cast<VX_UINT8>(length >> 8), value};
}

std::string ImageOf(const std::vector<Item>& items) {
    std::string image;
    for (const Item& item : items) {
        image += item.first + static_cast<char>(item.third) + item.value;
    }
    return image;
}

/// All reported keywords, out of order, and some unreported ones. "PN" and "V9" occur twice.
const std::vector<Item> GOLDEN = {
    Tag(0x82, 300, "Orvane 64G " + std::string(289, 'q')), // longer than a keyword's value can be
    Tag(0x90, 200),
    Keyword("V9", "old"),
    Keyword("PN", "OR-6400-A"),
    Keyword("EC", "A-4410"),
    Keyword("SN", "S1234567"),
    Keyword("MN", "1077"),
    Keyword("RM", "09.08.01"),
    Keyword("V0", "PCIe 4x8"),
    Keyword("V2", "never shown"),
    Keyword("V1", "7.04"),
    Keyword("V3", "9.06.02"),
    Keyword("V4", "3.61"),
    Keyword("V5", "4.11"),
    Keyword("RV", "\x5A"),
    Tag(0x91, 100),
    Keyword("V9", "02.01.00"),
    Keyword("PN", "OR-6400-B"),
    Keyword("YA", "asset"),
    Keyword("RW", std::string("\x07\0\0", 3)),
    Tag(0x78, 0),
    Keyword("SN", "behind the end"),
};

struct Row {
    const char* key;
    const char* tag;
    std::string value;
};
/// Sorted by key: "EC" is first, and "PI" precedes "PN".
const std::vector<Row> GOLDEN_ROWS = {
    {"EC", "Engineering Date Code", "A-4410"},
    {"MN", "Manufacturing Id", "1077"},
    {"PI", "Product Identifier", "Orvane 64G " + std::string(289, 'q')},
    {"PN", "Part Number", "OR-6400-B"}, // the later section's
    {"RM", "Multi Boot Version", "09.08.01"},
    {"SN", "Serial Number", "S1234567"},
    {"V0", "Miscellaneous Info", "PCIe 4x8"},
    {"V1", "Efi Driver Version", "7.04"},
    {"V3", "Firmware Version", "9.06.02"},
    {"V4", "Bios Version", "3.61"},
    {"V5", "FCode Version", "4.11"},
    {"V9", "Multi Boot Version", "02.01.00"}, // the same description as "RM"
};

/// The map of the first `size` bytes of an image, in an allocation of exactly that size.
VpdMap MapOf(const std::string& image, std::size_t size) {
    const std::vector<VX_UINT8> buffer(image.begin(), image.begin() + static_cast<std::ptrdiff_t>(size));
    VpdMap map;
    MapVpdData(decoders::Bytes(buffer), size, map);
    return map;
}
VpdMap MapOf(const std::vector<Item>& items) {
    const std::string image = ImageOf(items);
    return MapOf(image, image.size());
}

/// What a map reports.
std::vector<std::string> Reported(const VpdMap& map) {
    std::vector<std::string> rows;
    for (const auto& [key, value] : map) {
        if (*GetVPDKeyVal(key) != '\0') {
            rows.push_back(std::string(key.c_str()) + "=" + value.c_str());
        }
    }
    return rows;
}
std::vector<std::string> Reported(const std::map<std::string, std::string>& map) {
    std::vector<std::string> rows;
    for (const auto& [key, value] : map) {
        rows.push_back(key + "=" + value);
    }
    return rows;
}

TEST(VpdMapTest, ReadsTheGoldenImage) {
    const VpdMap map = MapOf(GOLDEN);
    std::vector<std::string> expected;
    for (const Row& row : GOLDEN_ROWS) {
        expected.push_back(row.key + std::string("=") + row.value);
        EXPECT_STREQ(GetVPDKeyVal(row.key), row.tag);
    }
    EXPECT_EQ(Reported(map), expected);
    EXPECT_EQ(map.at("RV"), "5a"); // the first byte as two digits
    EXPECT_EQ(map.at("RW"), "07");
    EXPECT_EQ(map.at("YA"), "asset");
    EXPECT_EQ(map.at("V2"), "never shown");
    EXPECT_EQ(map.size(), 12u + 4u); // no entry for the sections and the end tag
}

TEST(VpdMapTest, OnlyListedKeysAreDescribed) {
    for (const char* key : {"", "  ", "P", "pn", "PNX", " PN", "RV", "RW", "V2", "V6", "V7", "V8", "VA", "YA", "Z0"}) {
        EXPECT_STREQ(GetVPDKeyVal(key), "") << key;
    }
}

/// Every item whose first byte is present is read; missing bytes are zero.
TEST(VpdMapTest, ReadsAnImageCutAtEveryLength) {
    const std::string image = ImageOf(GOLDEN);
    for (std::size_t size = 0; size <= image.size(); ++size) {
        std::map<std::string, std::string> expected;
        std::size_t start = 0;
        for (const Item& item : GOLDEN) {
            const bool isEnd = item.first[0] == 0x78;
            if (start >= size || isEnd) {
                break;
            }
            const std::size_t there = std::min(item.value.size(), size - std::min(size, start + 3));
            std::string key = item.first.substr(0, size - start);
            key = static_cast<VX_UINT8>(key[0]) == 0x82 ? "PI" : key;
            if (*GetVPDKeyVal(key.c_str()) != '\0') {
                expected[key] = item.value.substr(0, there);
            }
            start += 3 + item.value.size();
        }
        ASSERT_EQ(Reported(MapOf(image, size)), Reported(expected)) << "cut at " << size;
    }
}

TEST(VpdMapTest, WithoutAnEndTagTheWalkEndsWithTheData) {
    EXPECT_EQ(Reported(MapOf({Keyword("PN", "a"), Keyword("SN", "b")})), (std::vector<std::string>{"PN=a", "SN=b"}));
    // Zero bytes are keywords without a name, three bytes each: "SN" is at a multiple of three.
    const std::string image = ImageOf({Keyword("PN", "a")}) + std::string(30, '\0') + ImageOf({Keyword("SN", "b")});
    EXPECT_EQ(Reported(MapOf(image, image.size())), (std::vector<std::string>{"PN=a", "SN=b"}));
    // One byte further, the walk reads it as a keyword "\0S" with the length 'N', which is 78.
    const std::string shifted = ImageOf({Keyword("PN", "a")}) + std::string(31, '\0') + ImageOf({Keyword("SN", "b")});
    EXPECT_EQ(Reported(MapOf(shifted, shifted.size())), std::vector<std::string>{"PN=a"});
}

TEST(VpdMapTest, EndTagEndsTheWalk) {
    EXPECT_EQ(Reported(MapOf({Tag(0x78, 0), Keyword("PN", "a")})), std::vector<std::string>{});
    // A keyword that begins with "x" is an end tag.
    EXPECT_EQ(Reported(MapOf({Keyword("PN", "a"), Keyword("xA", "b"), Keyword("SN", "c")})),
              std::vector<std::string>{"PN=a"});
    EXPECT_EQ(Reported(MapOf({Keyword("PN", "a"), Keyword("XA", "b"), Keyword("SN", "c")})),
              (std::vector<std::string>{"PN=a", "SN=c"}));
}

TEST(VpdMapTest, SectionsAreSkippedByTheirHeader) {
    for (const int tag : {0x90, 0x91}) {
        for (const std::size_t length : {0u, 4u, 0xFFFFu}) {
            EXPECT_EQ(Reported(MapOf({Tag(tag, length), Keyword("PN", "a")})), std::vector<std::string>{"PN=a"});
        }
    }
    // Any other byte starts a keyword, even a tag of another kind: 0x81 and 0x82 differ.
    EXPECT_EQ(Reported(MapOf({{"\x81P", 1, "z"}, Keyword("PN", "a")})), std::vector<std::string>{"PN=a"});
    EXPECT_EQ(Reported(MapOf({Tag(0x82, 0x0102, std::string(0x0102, 'p')), Keyword("PN", "a")})),
              (std::vector<std::string>{"PI=" + std::string(0x0102, 'p'), "PN=a"}));
}

TEST(VpdMapTest, ValuesAreText) {
    EXPECT_EQ(Reported(MapOf({Keyword("PN", std::string("ab\0cd", 5)), Keyword("SN", ""), Keyword("EC", "\xFF%s<&>")})),
              (std::vector<std::string>{"EC=\xFF%s<&>", "PN=ab", "SN="}));
    // The longest keyword; and the first byte after the header of "RV", whatever its length.
    const VpdMap map = MapOf({Keyword("PN", std::string(255, 'n')), Keyword("RV", ""), Keyword("SN", "b")});
    EXPECT_EQ(map.at("PN"), std::string(255, 'n').c_str());
    EXPECT_EQ(map.at("RV"), "53"); // "S" of the item after it
    EXPECT_EQ(map.at("SN"), "b");
    EXPECT_EQ(Reported(MapOf({Keyword("pn", "small"), Keyword("PN", "large")})), std::vector<std::string>{"PN=large"});
}

/// The value of an item may exceed the data, and its length may lead the walk past the end.
TEST(VpdMapTest, LyingLengths) {
    EXPECT_EQ(Reported(MapOf({{"PN", 255, "abc"}})), std::vector<std::string>{"PN=abc"});
    EXPECT_EQ(Reported(MapOf({{"PN", 4, "abc"}, Keyword("SN", "d")})), std::vector<std::string>{"PN=abcS"});
    EXPECT_EQ(Reported(MapOf({Tag(0x82, 0xFFFF, "abc")})), std::vector<std::string>{"PI=abc"});
    EXPECT_EQ(Reported(MapOf({Keyword("PN", "a"), Tag(0x82, 0xFFFF)})), (std::vector<std::string>{"PI=", "PN=a"}));
    // A header with only its first byte.
    EXPECT_EQ(Reported(MapOf("\x82", 1)), std::vector<std::string>{"PI="});
    EXPECT_EQ(Reported(MapOf("R", 1)), std::vector<std::string>{});
    // A value beyond the size, as far as there are bytes: the length, FFFFh, is beyond it too.
    std::vector<VX_UINT8> full(3 + 0xFFFF + 1, 0xFF);
    full[0] = 0x82;
    VpdMap map;
    MapVpdData(decoders::Bytes(full), 1, map);
    EXPECT_EQ(std::string(map.at("PI").c_str()).size(), 0xFFFFu);
}

TEST(VpdMapTest, TracesEveryItem) {
    const TraceLog log("1");
    MapOf({Tag(0x82, 3, "Two"), Tag(0x90, 10), Keyword("PN", "a b"), Keyword("RV", "\x0A\x0B"), Keyword("RX", "c"),
           Tag(0x91, 3), Tag(0x78, 0), Keyword("SN", "behind the end")});
    const std::string start = "INFORMATION: PhysicalPortVPDCmdsProcessor::MapFieldData: tmpText=";
    EXPECT_EQ(TraceLog::Lines(), (std::vector<std::string>{
                                     start + " 0x82  \"Two\"\n",
                                     start + " 0x90\n",
                                     start + " \"PN\"  \"a b\"\n",
                                     start + " \"RV\"  0a\n",
                                     start + " \"RX\"  \"c\"\n",
                                     start + " 0x91\n",
                                     start + " 0x78\n",
                                 }));
}

class VpdTest : public FamilyTest {
protected:
    VpdTest() {
        Fake().onGetVpd = [this](VX_UINT32, VX_UINT32, void* buffer, VX_UINT32* given) {
            Chatter();
            const auto* const bytes = static_cast<const char*>(buffer);
            startedEmpty = *given == 1024 && std::all_of(bytes, bytes + 1024, [](char c) { return c == 0; });
            std::memcpy(buffer, image.data(), std::min<std::size_t>(image.size(), 1024));
            *given = size.value_or(static_cast<VX_UINT32>(image.size()));
            return 0u;
        };
    }
    static std::string Document(const Format& format, const std::vector<Row>& rows) {
        std::string text;
        for (const Row& row : rows) {
            text += format.Structure("TagList", format.FieldsOf({{"Tag", row.tag}, {"Value", row.value}}));
        }
        return format.Report("VPDInformation", {{"Message", "Success"}}, "VPD Data", text);
    }
    static std::string Error(const Format& format, const std::string& message) {
        return format.Report("VPDInformation", {{"Message", message}}, "VPD Data", "");
    }

    std::string image = ImageOf(GOLDEN);
    std::optional<VX_UINT32> size;
    bool startedEmpty = false;
};

/// Keywords accumulate during the life of the process: a test that needs none of them runs in a separate process.
using VpdDeathTest = VpdTest;

void ExitWith(bool isAsExpected, const std::string& output) {
    if (!isAsExpected) {
        std::fprintf(stderr, "got: %s\n", output.c_str());
    }
    std::exit(isAsExpected ? 0 : 1);
}

TEST_F(VpdDeathTest, IsByteExact) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            image = ImageOf({Keyword("SN", "S1"), Tag(0x82, 3, "Two"), Tag(0x78, 0)});
            const std::string xml = RunPort("vpd", "get").output;
            const std::string text = RunPort("vpd", "getcli").output;
            ExitWith(xml == "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                            "<structure typeName=\"VPDInformation\">\n"
                            "<field name=\"Message\">\n<string>Success</string></field>\n"
                            "<field name=\"VPD Data\">\n"
                            "<list type=\"structure\">\n"
                            "<structure typeName=\"TagList\">\n"
                            "<field name=\"Tag\">\n<string>Product Identifier</string></field>\n"
                            "<field name=\"Value\">\n<string>Two</string></field>\n"
                            "</structure>\n"
                            "<structure typeName=\"TagList\">\n"
                            "<field name=\"Tag\">\n<string>Serial Number</string></field>\n"
                            "<field name=\"Value\">\n<string>S1</string></field>\n"
                            "</structure>\n"
                            "</list>\n"
                            "</field>\n"
                            "</structure>\n"
                            "</output>\n" &&
                         text == "****************************************************\n"
                                 "VPDInformation:\n"
                                 "Message: Success\n"
                                 "VPD Data: TagList:\n"
                                 "Tag: Product Identifier\n"
                                 "Value: Two\n"
                                 "TagList:\n"
                                 "Tag: Serial Number\n"
                                 "Value: S1\n"
                                 "****************************************************\n",
                     xml + text);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(VpdDeathTest, SizeZeroIsAnEmptyList) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            size = 0; // even though there are bytes
            const CommandRun run = RunPort("vpd", "get");
            ExitWith(run.code == RC_SUCCESS && run.output == Document(XML, {}), run.output);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(VpdTest, ReportsTheGoldenImage) {
    for (const Format& format : FORMATS) {
        const CommandRun run = RunPort("vpd", format.Leaf("get"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, Document(format, GOLDEN_ROWS));
        EXPECT_EQ(PortCalls(), Calls{Call("GetVpd", "0")});
        EXPECT_TRUE(startedEmpty);
    }
}

/// A later run keeps keywords that only an earlier one had, and replaces the others.
TEST_F(VpdTest, KeywordsCollectOverTheProcess) {
    EXPECT_EQ(RunPort("vpd", "get").output, Document(XML, GOLDEN_ROWS));
    image = ImageOf({Keyword("MN", "other")});
    std::vector<Row> rows = GOLDEN_ROWS;
    rows[1].value = "other";
    EXPECT_EQ(RunPort("vpd", "get").output, Document(XML, rows));
    size = 0;
    EXPECT_EQ(RunPort("vpd", "get").output, Document(XML, rows));
    // A failure still shows an empty list.
    Fake().Return("VEXAPI_GetVpd", 1);
    EXPECT_EQ(RunPort("vpd", "get").output, Error(XML, "Failed, VPD failed"));
}

/// A size above the buffer's is limited to it: the walk ends there.
TEST_F(VpdTest, SizeIsHeldAgainstTheBuffer) {
    image = ImageOf(GOLDEN);
    image.resize(1024, '\0');
    image.replace(ImageOf(GOLDEN).find("x"), 3, "Z0\1"); // no end tag: the walk goes on to the end
    std::memcpy(image.data() + 1021, "\x82\xFF\xFF", 3); // the last item, of the greatest length
    for (const VX_UINT32 lie : {1024u, 1025u, 65536u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        size = lie;
        const std::string id = std::to_string(1000 + lie % 9000); // another one in each round
        std::memcpy(image.data() + ImageOf(GOLDEN).find("1077"), id.data(), 4);
        const CommandRun run = RunPort("vpd", "getcli");
        EXPECT_EQ(run.code, RC_SUCCESS) << lie;
        EXPECT_NE(run.output.find("Manufacturing Id\nValue: " + id), std::string::npos) << run.output;
    }
}

TEST_F(VpdTest, ImagesCutAtEveryLength) {
    const std::string whole = image;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        image = whole.substr(0, length);
        EXPECT_EQ(RunPort("vpd", "getcli").code, RC_SUCCESS) << length;
    }
    EXPECT_EQ(RunPort("vpd", "get").output, Document(XML, GOLDEN_ROWS));
}

TEST_F(VpdTest, TellsAFailingRead) {
    for (const VX_UINT32 status : {1u, 118u, 0x80000000u}) {
        Fake().Return("VEXAPI_GetVpd", status);
        for (const Format& format : FORMATS) {
            const CommandRun run = RunPort("vpd", format.Leaf("get"));
            EXPECT_EQ(run.code, RC_VPD_FAILED);
            EXPECT_EQ(run.output, Error(format, "Failed, VPD failed"));
        }
    }
}

TEST_F(VpdTest, RefusesHelpAndAPortThatIsNotThere) {
    EXPECT_EQ(Run("-t port -s vpd get").code, RC_INVALID_PARAMETER);
    EXPECT_EQ(Run("-t port -s vpd getcli FC_x").output, Error(TEXT, "Failed, Invalid parameter") + "Usage: get\r\n");
    const CommandRun help = Run("-t port -s vpd get help");
    EXPECT_EQ(help.code, RC_HELP_REQUESTED);
    EXPECT_EQ(help.output, Error(XML, "Failed, Unknown"));
}

TEST_F(VpdTest, FailsWithoutAHost) {
    LoseHost();
    const CommandRun lost = RunPort("vpd", "get");
    EXPECT_EQ(lost.code, RC_HOST_NOT_FOUND);
    EXPECT_EQ(lost.output, Error(XML, "Failed, Host not found"));
    EXPECT_EQ(PortCalls(), Calls{});
}

TEST_F(VpdTest, CallsNothingWithoutTheRedirection) {
    NoFiles files;
    LoseFiles(files);
    const CommandRun closed = RunPort("vpd", "get");
    EXPECT_EQ(closed.code, RC_FILE_ERROR);
    EXPECT_EQ(closed.output, Error(XML, "Failed, File not found"));
    EXPECT_EQ(PortCalls(), Calls{});
}

TEST_F(VpdTest, EveryPortIsAdmitted) {
    port->PortInterfaceType = 3;
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        EXPECT_EQ(RunPort("vpd", "get").output, Document(XML, GOLDEN_ROWS)) << chip.name;
    }
}

} // namespace
