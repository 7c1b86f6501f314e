#include "Rows.h"
#include "Utf8.h"

using namespace orfc_test;

namespace {

const std::vector<ColumnInfo> COLUMNS = {
    {"link_failure_count", "", Type::INTEGER, Place::TABLE, "", ""},
    {"om1_power_dbm", "", Type::DECIMAL, Place::DETAILED, "", ""},
    {"beacon", "", Type::FLAG, Place::DETAILED, "", ""},
    {"vendor", "", Type::TEXT, Place::HEADING, "", ""},
    {"size_bytes", "", Type::BYTES, Place::TABLE, "", ""},
};
const std::string HEAD = "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n<list type=\"structure\">\n";
const std::string END = "</list>\n</output>\n";

std::string Field(const std::string& name, const std::string& type, const std::string& text) {
    return "<field name=\"" + name + "\"><" + type + ">" + text + "</" + type + "></field>\n";
}

/// Every field in every record: what is unknown is -1 for integers, else an empty text.
TEST(EsxcliTest, FlatAndTyped) {
    const Rows rows(COLUMNS, {{7, Decimal{-2.05, 2}, true, "BASALT", 1}, {{}, {}, {}, {}, {}}}, "port_counter");
    const auto structure = [](const char* count, const char* power, const char* beacon, const char* vendor,
                              const char* size) {
        return "<structure typeName=\"PortCounter\">\n" + Field("LinkFailureCount", "int", count) +
               Field("Om1PowerDbm", "string", power) + Field("Beacon", "string", beacon) +
               Field("Vendor", "string", vendor) + Field("SizeBytes", "int", size) + "</structure>\n";
    };
    EXPECT_EQ(Written(WriteEsxcli, rows),
              HEAD + structure("7", "-2.05", "true", "BASALT", "1") + structure("-1", "", "", "", "-1") + END);
}

TEST(EsxcliTest, AnEmptyListIsAList) {
    EXPECT_EQ(Written(WriteEsxcli, Rows(COLUMNS, {})), HEAD + END);
}

/// Signed, 64 bits.
TEST(EsxcliTest, IntegersFit) {
    const auto number = [](const Rows::Cell& value) {
        const std::string text = Written(WriteEsxcli, Rows({COLUMNS[0]}, {{value}}));
        const std::size_t start = text.find("<int>") + 5;
        return text.substr(start, text.find('<', start) - start);
    };
    EXPECT_EQ(number(std::uint64_t{INT64_MAX}), "9223372036854775807");
    EXPECT_EQ(number(std::uint64_t{INT64_MAX} + 1), "9223372036854775807");
    EXPECT_EQ(number(UINT64_MAX), "9223372036854775807");
    EXPECT_EQ(number(std::int64_t{-40}), "-40");
}

TEST(EsxcliTest, TextsAreEscapedAndHoldWhatXmlCan) {
    const auto text = [](const char* value) {
        const std::string written = Written(WriteEsxcli, Rows({COLUMNS[3]}, {{value}}));
        const std::size_t start = written.find("<string>") + 8;
        return written.substr(start, written.rfind("</string>") - start);
    };
    const std::string bad(REPLACEMENT);
    EXPECT_EQ(text("a&b<c>d]]>\"'"), "a&amp;b&lt;c&gt;d]]&gt;\"'");
    EXPECT_EQ(text("</string></field>&#13;"), "&lt;/string&gt;&lt;/field&gt;&amp;#13;");
    EXPECT_EQ(text("\x01\n\xFF\xEF\xBF\xBF\xEF\xBF\xBE\xC3\xA9"), bad + bad + bad + bad + bad + "\xC3\xA9");
}

} // namespace
