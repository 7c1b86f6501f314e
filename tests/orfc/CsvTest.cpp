#include "Rows.h"
#include "Utf8.h"

using namespace orfc_test;

namespace {

const std::vector<ColumnInfo> COLUMNS = {
    {"port", "PORT", Type::TEXT, Place::ALWAYS, "", ""},
    {"beacon", "BEACON", Type::FLAG, Place::DETAILED, "", ""},
    {"size_bytes", "SIZE", Type::BYTES, Place::HEADING, "", ""},
    {"power_dbm", "dBm", Type::DECIMAL, Place::WIDE, "", ""},
};

/// All columns, numbers exact, flags as in JSON; lines end as RFC 4180 says.
TEST(CsvTest, EveryColumn) {
    const Rows rows(COLUMNS, {{"a", true, std::uint64_t{549755813888}, Decimal{-2.053, 2}},
                              {"b", std::nullopt, std::nullopt, std::nullopt}});
    EXPECT_EQ(Written(WriteCsv, rows), "port,beacon,size_bytes,power_dbm\r\na,true,549755813888,-2.05\r\nb,,,\r\n");
    Style style;
    style.hasHeadings = false;
    style.columns = {"power_dbm", "port"};
    EXPECT_EQ(Written(WriteCsv, rows, style), "-2.05,a\r\n,b\r\n");
}

TEST(CsvTest, Quotes) {
    const auto field = [](const char* text) {
        const std::string line = Written(WriteCsv, Rows({COLUMNS[0]}, {{text}}));
        return line.substr(std::string("port\r\n").size());
    };
    EXPECT_EQ(field("a b"), "a b\r\n");
    EXPECT_EQ(field("a,b"), "\"a,b\"\r\n");
    EXPECT_EQ(field("\""), "\"\"\"\"\r\n");
    EXPECT_EQ(field("\"\"a\""), "\"\"\"\"\"a\"\"\"\r\n");
    // Ends of lines are control characters, and so never in a field.
    EXPECT_EQ(field("a\r\nb\033"),
              "a" + std::string(REPLACEMENT) + std::string(REPLACEMENT) + "b" + std::string(REPLACEMENT) + "\r\n");
}

TEST(CsvTest, KindsHaveAnEmptyLineBetweenThem) {
    const Rows rows({COLUMNS[0]}, {{"a"}});
    const Rows others({COLUMNS[1]}, {{true}});
    const Rows none({COLUMNS[0]}, {});
    Answer answer;
    answer.records = {&rows, &none, &others};
    EXPECT_EQ(Written(WriteCsv, answer), "port\r\na\r\n\r\nbeacon\r\ntrue\r\n");
    Style style;
    style.columns = {"beacon"};
    EXPECT_EQ(Written(WriteCsv, answer, style), "beacon\r\ntrue\r\n");
    EXPECT_EQ(Written(WriteCsv, none), "port\r\n"); // the only one has its headings
}

} // namespace
