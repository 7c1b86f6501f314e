#include "Json.h"
#include "Rows.h"

#include <limits>

using namespace orfc_test;
using nlohmann::ordered_json;

namespace {

const std::vector<ColumnInfo> COLUMNS = {
    {"name", "", Type::TEXT, Place::TABLE, "", "What it is called"},
    {"count", "", Type::INTEGER, Place::DETAILED, "", ""},
    {"power_dbm", "", Type::DECIMAL, Place::HEADING, "", ""},
    {"beacon", "", Type::FLAG, Place::WIDE, "", ""},
};

std::string RecordText(const std::vector<Rows::Cell>& row, const std::vector<ColumnInfo>& columns = COLUMNS) {
    const std::string text = Written(WriteJson, Rows(columns, {row}));
    const std::size_t start = text.find("\"records\":[\n") + 12;
    return text.substr(start, text.rfind("\n]}") - start);
}

TEST(JsonTest, EveryKeyInEveryRecord) {
    EXPECT_EQ(RecordText({"a", 7, Decimal{-2.053, 2}, false}),
              R"({"kind":"row","name":"a","count":7,"power_dbm":-2.05,"beacon":false})");
    EXPECT_EQ(RecordText({{}, {}, {}, {}}),
              R"({"kind":"row","name":null,"count":null,"power_dbm":null,"beacon":null})");
}

TEST(JsonTest, Numbers) {
    const auto count = [](const Rows::Cell& value) { return RecordText({value}, {COLUMNS[1]}); };
    EXPECT_EQ(count(std::int64_t{-40}), R"({"kind":"row","count":-40})");
    // Beyond 2 to the power of 53 doubles lose digits.
    EXPECT_EQ(count(std::uint64_t{9007199254740992}), R"({"kind":"row","count":9007199254740992})");
    EXPECT_EQ(count(std::uint64_t{9007199254740993}),
              R"({"kind":"row","count":9007199254740993,"count_text":"9007199254740993"})");
    EXPECT_EQ(count(UINT64_MAX), R"({"kind":"row","count":18446744073709551615,"count_text":"18446744073709551615"})");
    const auto power = [](double value, int digits) { return RecordText({Decimal{value, digits}}, {COLUMNS[2]}); };
    EXPECT_EQ(power(27.5625, 1), R"({"kind":"row","power_dbm":27.6})"); // the digits of the table
    EXPECT_EQ(power(0.1 + 0.2, 4), R"({"kind":"row","power_dbm":0.3})");
    EXPECT_EQ(power(-0.00001, 4), R"({"kind":"row","power_dbm":0.0})");
    for (const double number : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(power(number, 1), R"({"kind":"row","power_dbm":null})");
    }
}

TEST(JsonTest, TextsOfAnyBytes) {
    const auto name = [](const char* text) { return RecordText({text}, {COLUMNS[0]}); };
    // Two bytes of no character, and what they were.
    EXPECT_EQ(name("a\xFF\xFE"), R"({"kind":"row","name":"a\ufffd\ufffd","name_hex":"61fffe"})");
    EXPECT_EQ(name("\xC3\xA9"), R"({"kind":"row","name":"\u00e9"})");
    // Nothing that a terminal would follow: escape, U+009B, U+202E, delete.
    EXPECT_EQ(name("\033[2J\xC2\x9B\xE2\x80\xAE\x7F\"\\\n"),
              R"({"kind":"row","name":"\u001b[2J\u009b\u202e\u007f\"\\\n"})");
    EXPECT_EQ(name("\xF0\x9F\x98\x80"), R"({"kind":"row","name":"\ud83d\ude00"})");
}

Answer FullAnswer() {
    Answer answer;
    answer.command = "ports";
    answer.arguments = {"orfc", "ports", "\xFF"};
    answer.messages = {"host2/speed: Input/output error", "\033"};
    return answer;
}

TEST(JsonTest, TheWholeAnswer) {
    Answer answer = FullAnswer();
    const Rows rows({COLUMNS[0]}, {{"a"}, {"b"}});
    const Rows others({COLUMNS[1]}, {{1}}, "other");
    answer.records = {&rows, &others};
    answer.library = "/lib/a.so";
    answer.isOk = false;
    const ordered_json json = ordered_json::parse(Written(WriteJson, answer));
    EXPECT_EQ(json["json_format_version"], ordered_json(JSON_FORMAT_VERSION));
    EXPECT_EQ(json["tool"]["name"], "orfc");
    EXPECT_EQ(json["tool"]["arguments"], (ordered_json{"orfc", "ports", "\xEF\xBF\xBD"}));
    EXPECT_EQ(json["tool"]["library"], "/lib/a.so");
    EXPECT_EQ(json["command"], "ports");
    EXPECT_EQ(json["ok"], false);
    EXPECT_EQ(json["messages"], (ordered_json{"host2/speed: Input/output error", "\033"}));
    EXPECT_EQ(json["records"], (ordered_json{{{"kind", "row"}, {"name", "a"}},
                                             {{"kind", "row"}, {"name", "b"}},
                                             {{"kind", "other"}, {"count", 1}}}));
}

/// With an interval each answer is a line, for readers of lines.
TEST(JsonTest, CompactAnswersAreOneLine) {
    Answer answer = FullAnswer();
    const Rows rows({COLUMNS[0]}, {{"a"}, {"b\n"}});
    answer.records = {&rows};
    Style style;
    style.isCompact = true;
    const std::string text = Written(WriteJson, answer, style);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1);
    EXPECT_EQ(ordered_json::parse(text), ordered_json::parse(Written(WriteJson, answer)));
    EXPECT_EQ(ordered_json::parse(text)["tool"]["library"], nullptr);
}

TEST(JsonTest, SchemaNamesEachKindOnce) {
    const Rows rows({COLUMNS[0], COLUMNS[1]}, {});
    const Rows others({COLUMNS[2], COLUMNS[3]}, {}, "other");
    const ordered_json schema = SchemaOf({&rows, &others, &rows});
    EXPECT_EQ(schema["properties"]["records"]["items"]["anyOf"],
              (ordered_json{{{"$ref", "#/definitions/row"}}, {{"$ref", "#/definitions/other"}}}));
    const ordered_json& row = schema["definitions"]["row"];
    EXPECT_EQ(row["required"], (ordered_json{"kind", "name", "count"}));
    EXPECT_EQ(row["properties"]["name"],
              (ordered_json{{"description", "What it is called"}, {"type", {"string", "null"}}}));
    EXPECT_EQ(row["properties"]["count"]["type"], (ordered_json{"integer", "null"}));
    EXPECT_EQ(schema["definitions"]["other"]["properties"]["power_dbm"]["type"], (ordered_json{"number", "null"}));
    EXPECT_EQ(schema["definitions"]["other"]["properties"]["beacon"]["type"], (ordered_json{"boolean", "null"}));
}

} // namespace
