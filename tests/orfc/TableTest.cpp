/// @file
/// Tables and details, as people read them.
#include "Rows.h"
#include "Utf8.h"

using namespace orfc_test;

namespace {

const std::vector<ColumnInfo> COLUMNS = {
    {"port", "PORT", Type::TEXT, Place::ALWAYS, "Port", ""},
    {"state", "STATE", Type::VERDICT, Place::TABLE, "Link", ""},
    {"speed_gbps", "Gb/s", Type::INTEGER, Place::TABLE, "Link", ""},
    {"size_bytes", "SIZE", Type::BYTES, Place::WIDE, "Port", ""},
    {"beacon", "BEACON", Type::FLAG, Place::DETAILED, "Port", ""},
};
const Rows PORTS(COLUMNS, {{"FC_21", "online", 32, std::uint64_t{549755813888}, true},
                           {"FC_22:aa", "offline", std::nullopt, std::nullopt, std::nullopt}});

Style WithWidth(std::size_t width) {
    Style style;
    style.width = width;
    return style;
}

TEST(TableTest, AlignsNumbersRightAndPadsNoLastText) {
    EXPECT_EQ(Written(WriteTable, PORTS), "PORT      STATE    Gb/s\n"
                                          "FC_21     online     32\n"
                                          "FC_22:aa  offline     -\n");
    Style style;
    style.columns = {"speed_gbps", "state"};
    EXPECT_EQ(Written(WriteTable, PORTS, style), "Gb/s  STATE\n"
                                                 "  32  online\n"
                                                 "   -  offline\n");
}

TEST(TableTest, Wide) {
    Style style = WithWidth(20); // lines may be longer
    style.isWide = true;
    EXPECT_EQ(Written(WriteTable, PORTS, style), "PORT      STATE    Gb/s  SIZE\n"
                                                 "FC_21     online     32  512G\n"
                                                 "FC_22:aa  offline     -     -\n");
}

TEST(TableTest, WithoutHeadings) {
    Style style;
    style.hasHeadings = false;
    EXPECT_EQ(Written(WriteTable, PORTS, style), "FC_21     online   32\n"
                                                 "FC_22:aa  offline   -\n");
}

TEST(TableTest, FlagsAreWords) {
    Style style;
    style.columns = {"beacon"};
    EXPECT_EQ(Written(WriteTable, Rows(COLUMNS, {{"a", "b", 1, 1, true}, {"a", "b", 1, 1, false}}), style),
              "BEACON\nyes\nno\n");
}

/// As many columns as fit, from the left, and names in full however narrow it is.
TEST(TableTest, FitsTheTerminal) {
    const auto firstLine = [](std::size_t width) {
        const std::string text = Written(WriteTable, PORTS, WithWidth(width));
        return text.substr(0, text.find('\n'));
    };
    EXPECT_EQ(firstLine(23), "PORT      STATE    Gb/s");
    EXPECT_EQ(firstLine(22), "PORT      STATE");
    EXPECT_EQ(firstLine(17), "PORT      STATE");
    EXPECT_EQ(firstLine(16), "PORT");
    EXPECT_EQ(Written(WriteTable, PORTS, WithWidth(1)), "PORT\nFC_21\nFC_22:aa\n");
}

TEST(TableTest, ChosenColumnsAreNeverLeftOut) {
    Style style = WithWidth(4);
    style.columns = {"state", "speed_gbps"};
    EXPECT_EQ(Written(WriteTable, PORTS, style), "STATE    Gb/s\nonline     32\noffline     -\n");
}

/// Libraries without optional functions know nothing of some columns.
TEST(TableTest, ColumnsWithoutAnyValueAreLeftOut) {
    const Rows rows(COLUMNS, {{"FC_21", std::nullopt, 32, 1, true}, {"FC_22", std::nullopt, 16, 1, true}});
    EXPECT_EQ(Written(WriteTable, rows), "PORT   Gb/s\nFC_21    32\nFC_22    16\n");
    Style style;
    style.columns = {"port", "state"};
    EXPECT_EQ(Written(WriteTable, rows, style), "PORT   STATE\nFC_21  -\nFC_22  -\n");
}

TEST(TableTest, NothingForNoRecords) {
    EXPECT_EQ(Written(WriteTable, Rows(COLUMNS, {})), "");
    EXPECT_EQ(Written(WriteDetails, Rows(COLUMNS, {})), "");
}

TEST(TableTest, PeopleReadWhatIsForThem) {
    const Rows own({COLUMNS[0]}, {{"own"}});
    Answer answer;
    answer.records = {&PORTS};
    answer.forPeople = {&own, &own};
    EXPECT_EQ(Written(WriteTable, answer), "PORT\nown\n\nPORT\nown\n");
}

TEST(TableTest, Sizes) {
    Style style;
    style.hasHeadings = false;
    style.columns = {"size_bytes"};
    const auto size = [&](std::uint64_t bytes) {
        const std::string text = Written(WriteTable, Rows(COLUMNS, {{"", "", 0, bytes, true}}), style);
        return text.substr(0, text.size() - 1);
    };
    EXPECT_EQ(size(0), "0B");
    EXPECT_EQ(size(999), "999B");
    EXPECT_EQ(size(1000), "1.0K"); // never four digits
    EXPECT_EQ(size(1024), "1.0K");
    EXPECT_EQ(size(1536), "1.5K");
    EXPECT_EQ(size(16777216), "16.0M");
    EXPECT_EQ(size(std::uint64_t{100} << 30), "100G");
    EXPECT_EQ(size(1099511627776 * 999), "999T");
    EXPECT_EQ(size(UINT64_MAX), "16.0E"); // 2 to the power of 64
}

// ---- Headings: what rows have in common

const std::vector<ColumnInfo> PATHS = {
    {"volume", "VOLUME", Type::TEXT, Place::HEADING, "", ""},
    {"paths", "paths", Type::INTEGER, Place::HEADING, "", ""},
    {"redundancy", "REDUNDANCY", Type::VERDICT, Place::HEADING, "", ""},
    {"port", "PORT", Type::TEXT, Place::ALWAYS, "", ""},
    {"verdict", "VERDICT", Type::VERDICT, Place::TABLE, "", ""},
};
const Rows WAYS(PATHS, {{"naa.1", 2, "one port", "p1", "ok"},
                        {"naa.1", 2, "one port", "p2", "link down"},
                        {"naa.2", std::nullopt, "no path", "p1", "wrong map"}});

TEST(TableTest, HeadingsStandAboveTheirRows) {
    EXPECT_EQ(Written(WriteTable, WAYS), "  PORT  VERDICT\n"
                                         "naa.1  paths 2  one port\n"
                                         "  p1    ok\n"
                                         "  p2    link down\n"
                                         "naa.2  no path\n"
                                         "  p1    wrong map\n");
}

TEST(TableTest, HeadingsGoOnInAnotherLine) {
    // "naa.1  paths 2" has 14 cells, "    one port" 12.
    EXPECT_EQ(Written(WriteTable, WAYS, WithWidth(14)), "  PORT\n"
                                                        "naa.1  paths 2\n"
                                                        "    one port\n"
                                                        "  p1\n"
                                                        "  p2\n"
                                                        "naa.2  no path\n"
                                                        "  p1\n");
    EXPECT_EQ(Written(WriteTable, WAYS, WithWidth(13)), "  PORT\n"
                                                        "naa.1\n"
                                                        "    paths 2\n"
                                                        "    one port\n"
                                                        "  p1\n"
                                                        "  p2\n"
                                                        "naa.2\n"
                                                        "    no path\n"
                                                        "  p1\n");
}

TEST(TableTest, HeadingsCanBeChosenAsColumns) {
    Style style;
    style.columns = {"port", "paths"};
    EXPECT_EQ(Written(WriteTable, WAYS, style), "PORT  paths\np1        2\np2        2\np1        -\n");
}

// ---- Colours

TEST(TableTest, OnlyVerdictsHaveColours) {
    Style style;
    style.isColored = true;
    EXPECT_EQ(Written(WriteTable, PORTS, style), "PORT      STATE    Gb/s\n"
                                                 "FC_21     \033[32monline\033[0m     32\n"
                                                 "FC_22:aa  \033[31moffline\033[0m     -\n");
    EXPECT_EQ(Written(WriteTable, Rows({COLUMNS[0]}, {{"online"}}), style), "PORT\nonline\n");
}

/// Colours of all verdicts. Each is told by its word too.
TEST(TableTest, ColoursOfVerdicts) {
    constexpr char RED[] = "31", YELLOW[] = "33", GREEN[] = "32", NONE[] = "";
    const std::pair<const char*, const char*> verdicts[] = {
        {"ok", GREEN},          {"online", GREEN},         {"redundant", GREEN},     {"low alarm", RED},
        {"high alarm", RED},    {"low warning", YELLOW},   {"high warning", YELLOW}, {"offline", RED},
        {"link down", RED},     {"remote port down", RED}, {"device down", RED},     {"access down", RED},
        {"down in map", RED},   {"wrong map", RED},        {"no path", RED},         {"one path", YELLOW},
        {"one port", YELLOW},   {"one fabric", YELLOW},    {"standby", YELLOW},      {"transitioning", NONE},
        {"bad checksum", RED},  {"not ready", YELLOW},     {"empty", NONE},          {"unread", NONE},
        {"unknown kind", NONE}, {"no diagnostics", NONE},  {"no thresholds", NONE},  {"unconfigured", NONE},
        {"alarm", RED},         {"warning", YELLOW},       {"critical", RED},        {"unknown", NONE},
    };
    Style style;
    style.isColored = true;
    style.hasHeadings = false;
    for (const auto& [verdict, color] : verdicts) {
        const std::string plain = std::string(verdict) + "\n";
        const std::string colored = "\033[" + std::string(color) + "m" + verdict + "\033[0m\n";
        EXPECT_EQ(Written(WriteTable, Rows({COLUMNS[1]}, {{verdict}}), style), *color == '\0' ? plain : colored);
    }
}

// ---- Hostile texts

TEST(TableTest, NothingReachesATerminalRaw) {
    const std::string bad(REPLACEMENT);
    const Rows rows(COLUMNS, {{"\033]0;x\a\xFF", "on\nline", 1, 1, true}});
    Style style;
    style.hasHeadings = false;
    EXPECT_EQ(Written(WriteTable, rows, style), bad + "]0;x" + bad + bad + "  on" + bad + "line  1\n");
    EXPECT_EQ(Written(WriteDetails, rows), "Port\n"
                                           "  port        " +
                                               bad + "]0;x" + bad + bad +
                                               "\n"
                                               "  size_bytes  1 (1B)\n"
                                               "  beacon      yes\n"
                                               "Link\n"
                                               "  state       on" +
                                               bad +
                                               "line\n"
                                               "  speed_gbps  1\n");
}

TEST(TableTest, CellsAndNotBytesAreAligned) {
    EXPECT_EQ(Written(WriteTable, Rows({COLUMNS[0], COLUMNS[2]}, {{"\xC3\xA9\xE2\x82\xAC", 1}, {"abcde", 2}})),
              "PORT   Gb/s\n\xC3\xA9\xE2\x82\xAC        1\nabcde     2\n");
}

// ---- Details

TEST(DetailsTest, GroupsInTheOrderOfTheirFirstColumn) {
    EXPECT_EQ(Written(WriteDetails, PORTS), "Port\n"
                                            "  port        FC_21\n"
                                            "  size_bytes  549755813888 (512G)\n" // exact as well
                                            "  beacon      yes\n"
                                            "Link\n"
                                            "  state       online\n"
                                            "  speed_gbps  32\n"
                                            "\n"
                                            "Port\n" // what is unknown isn't there
                                            "  port        FC_22:aa\n"
                                            "Link\n"
                                            "  state       offline\n");
}

TEST(DetailsTest, RowsThatBelongTogetherAreATable) {
    Answer answer;
    answer.records = {&PORTS, &WAYS};
    const std::string text = Written(WriteDetails, answer);
    EXPECT_EQ(text.substr(text.find("  state       offline\n")),
              "  state       offline\n\n" + Written(WriteTable, WAYS));
}

TEST(DetailsTest, ChosenColumnsOfThoseThatHaveThem) {
    const Rows others({{"vendor", "VENDOR", Type::TEXT, Place::TABLE, "Target", ""}}, {{"BASALT"}});
    Answer answer;
    answer.records = {&others, &PORTS, &WAYS};
    Style style;
    style.columns = {"speed_gbps", "verdict"};
    EXPECT_EQ(Written(WriteDetails, answer, style), "Link\n  speed_gbps  32\n\n\nVERDICT\nok\nlink down\nwrong map\n");
}

} // namespace
