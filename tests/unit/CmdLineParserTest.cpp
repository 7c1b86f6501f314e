#include "CmdLineParser.h"

#include <gtest/gtest.h>

namespace {

struct Lookup {
    int result;
    std::string value;
};

Lookup Find(const TavuStringArray& args, const char* shortName, const char* longName) {
    TavuString value = "unchanged";
    const int result = CmdLineParser::GetCommandValueFromArgs(args, shortName, longName, value);
    return {result, value};
}

void ExpectValue(const Lookup& lookup, const char* value) {
    EXPECT_EQ(lookup.result, 1);
    EXPECT_EQ(lookup.value, value);
}

void ExpectNone(const Lookup& lookup) {
    EXPECT_EQ(lookup.result, 0);
    EXPECT_EQ(lookup.value, "unchanged");
}

TEST(GetCommandValueFromArgsTest, FindsEitherNameInAnyCase) {
    ExpectValue(Find({"x", "--count", "5"}, "-c", "--count"), "5");
    ExpectValue(Find({"x", "-C", "5"}, "-c", "--count"), "5");
    ExpectValue(Find({"--COUNT", "5"}, "-c", "--count"), "5");
}

TEST(GetCommandValueFromArgsTest, TakesTheNextWordWhateverItIs) {
    ExpectValue(Find({"-c", "-d"}, "-c", "--count"), "-d");
    ExpectValue(Find({"-c", "-c"}, "-c", "--count"), "-c");
    ExpectValue(Find({"-c", ""}, "-c", "--count"), "");
    ExpectValue(Find({"-c", "MiXeD"}, "-c", "--count"), "MiXeD");
}

TEST(GetCommandValueFromArgsTest, StopsAtTheFirstOfBothNames) {
    ExpectValue(Find({"--count", "1", "-c", "2"}, "-c", "--count"), "1");
    ExpectValue(Find({"-c", "1", "--count", "2"}, "-c", "--count"), "1");
    // The value of another option is found if it equals the name.
    ExpectValue(Find({"-x", "-c", "-c", "2"}, "-c", "--count"), "-c");
}

TEST(GetCommandValueFromArgsTest, GivesNothingForAnOptionWithoutValue) {
    ExpectNone(Find({"x", "-c"}, "-c", "--count"));
    ExpectNone(Find({}, "-c", "--count"));
    ExpectNone(Find({"x", "y"}, "-c", "--count"));
    ExpectNone(Find({"-cc", "5", "-", "6"}, "-c", "--count"));
}

TEST(GetCommandValueFromArgsTest, TakesAnEmptyNameForNone) {
    ExpectNone(Find({"", "5"}, "", ""));
    ExpectNone(Find({"", "5"}, "", "--count"));
    ExpectNone(Find({"", "5"}, "-c", ""));
    ExpectValue(Find({"", "5", "-c", "6"}, "-c", ""), "6");
    ExpectValue(Find({"", "5", "--count", "6"}, "", "--count"), "6");
}

TEST(GetCommandValueFromArgsTest, LeavesTheArguments) {
    const TavuStringArray args{"-c", "5"};
    Find(args, "-c", "");
    EXPECT_EQ(args, (TavuStringArray{"-c", "5"}));
}

/// The position, or -1 with the result 0.
int Position(const TavuStringArray& args, const char* option, const char* name) {
    int index = 77;
    const int result = IsCommandInArgs(args, option, name, index);
    EXPECT_EQ(result, index >= 0 ? 1 : 0);
    return index;
}

TEST(IsCommandInArgsTest, FindsThePairAnywhere) {
    EXPECT_EQ(Position({"-t", "port"}, "-t", "port"), 0);
    EXPECT_EQ(Position({"get", "x", "-T", "PORT", "y"}, "-t", "port"), 2);
    EXPECT_EQ(Position({"-t", "port", "-t", "port"}, "-t", "port"), 0);
}

TEST(IsCommandInArgsTest, GoesOnBehindAnotherName) {
    EXPECT_EQ(Position({"-t", "adapter", "-t", "port"}, "-t", "port"), 2);
    EXPECT_EQ(Position({"-t", "-t", "port"}, "-t", "port"), 1);
}

TEST(IsCommandInArgsTest, FindsNothing) {
    EXPECT_EQ(Position({}, "-t", "port"), -1);
    EXPECT_EQ(Position({"port"}, "-t", "port"), -1);
    EXPECT_EQ(Position({"port", "-t"}, "-t", "port"), -1);
    EXPECT_EQ(Position({"-t"}, "-t", "port"), -1);
    EXPECT_EQ(Position({"-t", "x", "port"}, "-t", "port"), -1);
    EXPECT_EQ(Position({"-t", "portx"}, "-t", "port"), -1);
    EXPECT_EQ(Position({"-t", "adapter", "-t"}, "-t", "port"), -1);
}

TEST(IsCommandInArgsTest, FindsTheNameWithoutAnOption) {
    EXPECT_EQ(Position({"x", "Port"}, "", "port"), 1);
    EXPECT_EQ(Position({"port", "port"}, "", "PORT"), 0);
    EXPECT_EQ(Position({"", "x"}, "", "port"), -1);
    EXPECT_EQ(Position({}, "", "port"), -1);
}

} // namespace
