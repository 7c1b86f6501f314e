#include "Failure.h"
#include "Rows.h"

#include <cmath>
#include <limits>

using namespace orfc_test;

namespace {

constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

const std::vector<ColumnInfo> COLUMNS = {
    {"name", "NAME", Type::TEXT, Place::ALWAYS, "", ""},
    {"count", "COUNT", Type::INTEGER, Place::TABLE, "", ""},
    {"power_dbm", "dBm", Type::DECIMAL, Place::WIDE, "", ""},
    {"note", "NOTE", Type::TEXT, Place::DETAILED, "", ""},
};

TEST(RecordsTest, Texts) {
    EXPECT_EQ(TextOf({}), "");
    EXPECT_EQ(TextOf(true), "true");
    EXPECT_EQ(TextOf(false), "false");
    EXPECT_EQ(TextOf(UINT64_MAX), "18446744073709551615");
    EXPECT_EQ(TextOf(INT64_MIN), "-9223372036854775808");
    EXPECT_EQ(TextOf(std::string("text")), "text");
    EXPECT_EQ(TextOf(Decimal{27.5625, 1}), "27.6");
    EXPECT_EQ(TextOf(Decimal{-0.26, 1}), "-0.3");
    EXPECT_EQ(TextOf(Decimal{1e308, 0}).size(), 309u);
}

TEST(RecordsTest, ZeroHasNoSign) {
    EXPECT_EQ(TextOf(Decimal{-0.04, 1}), "0.0");
    EXPECT_EQ(TextOf(Decimal{-0.0, 0}), "0");
    EXPECT_EQ(TextOf(Decimal{-0.05001, 1}), "-0.1");
    EXPECT_EQ(TextOf(Decimal{-10.0, 1}), "-10.0");
}

TEST(RecordsTest, WhatIsNoNumberIsUnknown) {
    for (const double number : {NAN_VALUE, INFINITE, -INFINITE}) {
        EXPECT_FALSE(IsKnown(Decimal{number, 1}));
        EXPECT_EQ(TextOf(Decimal{number, 1}), "");
    }
    EXPECT_FALSE(IsKnown({}));
    EXPECT_FALSE(IsKnown(TextValue("")));
    EXPECT_TRUE(IsKnown(false));
    EXPECT_TRUE(IsKnown(Decimal{0, 1}));
}

TEST(RecordsTest, ColumnsByPlace) {
    const Rows rows(COLUMNS, {});
    using Chosen = std::vector<std::size_t>;
    EXPECT_EQ(ChosenColumns(rows, {}, Place::TABLE), (Chosen{0, 1}));
    EXPECT_EQ(ChosenColumns(rows, {}, Place::WIDE), (Chosen{0, 1, 2}));
    EXPECT_EQ(ChosenColumns(rows, {}, Place::DETAILED), (Chosen{0, 1, 2, 3}));
    // Named ones in the order of their naming, wherever they belong; those of other records are left out.
    Style style;
    style.columns = {"note", "port", "name", "note"};
    EXPECT_EQ(ChosenColumns(rows, style, Place::TABLE), (Chosen{3, 0, 3}));
}

TEST(RecordsTest, KeysThatNoRecordsHave) {
    const Rows rows(COLUMNS, {});
    const Rows others({{"port", "PORT", Type::TEXT, Place::ALWAYS, "", ""}, COLUMNS[0]}, {});
    Style style;
    style.columns = {"port", "note"};
    EXPECT_NO_THROW(CheckColumns({&rows, &others}, style, "-count"));
    try {
        CheckColumns({&rows, &others}, style, "-speed");
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.status, Failure::USAGE);
        EXPECT_STREQ(failure.what(), "no column is named speed; there are name, count, power_dbm, note, port");
    }
    EXPECT_THROW(CheckColumns({&rows}, style, ""), Failure);
    EXPECT_THROW(CheckColumns({&rows}, {}, "-"), Failure);
    EXPECT_NO_THROW(CheckColumns({&rows}, {}, ""));
}

std::string Order(const Rows& rows, const char* key) {
    const SortedRecords sorted(rows, key);
    std::string order;
    for (std::size_t record = 0; record < sorted.Size(); ++record) {
        order += TextOf(sorted.At(record, 0));
    }
    return order;
}

TEST(RecordsTest, Sorts) {
    const Rows rows(COLUMNS, {{"a", 10, Decimal{-3, 2}, "x"},
                              {"b", std::nullopt, Decimal{NAN_VALUE, 2}, std::nullopt},
                              {"c", 9, std::nullopt, "X"},
                              {"d", 10, Decimal{-12, 2}, "w"}});
    EXPECT_EQ(Order(rows, "count"), "cadb"); // by number, equal ones as they were
    EXPECT_EQ(Order(rows, "-count"), "adcb");
    EXPECT_EQ(Order(rows, "power_dbm"), "dabc"); // unknown last in either order
    EXPECT_EQ(Order(rows, "-power_dbm"), "adbc");
    EXPECT_EQ(Order(rows, "note"), "cdab");
    EXPECT_EQ(Order(rows, "-name"), "dcba");
    EXPECT_EQ(Order(rows, "port"), "abcd"); // no such column
    EXPECT_EQ(Order(Rows(COLUMNS, {}), "name"), "");
}

} // namespace
