/// @file
/// Units, and verdicts on values.
#include "Readings.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace decoders;

namespace {

TEST(UnitsTest, CountsOfFields) {
    EXPECT_EQ(CelsiusFrom256ths(25 * 256 + 128).value, 25.5);
    EXPECT_EQ(CelsiusFrom256ths(-1).value, -0.00390625);
    EXPECT_EQ(CelsiusFrom256ths(-32768).value, -128.0);
    EXPECT_EQ(VoltsFrom100Microvolts(33000).value, 3.3);
    EXPECT_EQ(VoltsFrom100Microvolts(65535).value, 6.5535);
    EXPECT_EQ(MilliamperesFrom2Microamperes(1).value, 0.002);
    EXPECT_EQ(MilliamperesFrom2Microamperes(65535).value, 131.07);
    EXPECT_EQ(MilliwattsFromTenthMicrowatts(1).value, 0.0001);
    EXPECT_EQ(MilliwattsFromTenthMicrowatts(65535).value, 6.5535);
}

TEST(UnitsTest, Decibels) {
    EXPECT_EQ(DbmOf(Milliwatts{1}).value().value, 0.0);
    EXPECT_DOUBLE_EQ(DbmOf(Milliwatts{10}).value().value, 10.0);
    EXPECT_DOUBLE_EQ(DbmOf(Milliwatts{0.0001}).value().value, -40.0); // the least that a field can say
    EXPECT_NEAR(DbmOf(Milliwatts{0.5}).value().value, -3.0103, 0.00001);
    EXPECT_NEAR(DbmOf(Milliwatts{6.5535}).value().value, 8.1647, 0.0001); // and the most
    EXPECT_FALSE(DbmOf(Milliwatts{0}).has_value());
    EXPECT_FALSE(DbmOf(Milliwatts{-0.0001}).has_value());
    EXPECT_FALSE(DbmOf(Milliwatts{std::nan("")}).has_value());
}

/// A level is crossed beyond it, not at it.
TEST(ReadingsTest, VerdictAtEveryLevel) {
    const Thresholds<Celsius> thresholds{{90}, {-40}, {80}, {-30}};
    const auto verdict = [&](double value) { return Judge(Celsius{value}, thresholds); };
    EXPECT_EQ(verdict(90.00390625), Verdict::HIGH_ALARM);
    EXPECT_EQ(verdict(90), Verdict::HIGH_WARNING);
    EXPECT_EQ(verdict(80.00390625), Verdict::HIGH_WARNING);
    EXPECT_EQ(verdict(80), Verdict::OK);
    EXPECT_EQ(verdict(0), Verdict::OK);
    EXPECT_EQ(verdict(-30), Verdict::OK);
    EXPECT_EQ(verdict(-30.00390625), Verdict::LOW_WARNING);
    EXPECT_EQ(verdict(-40), Verdict::LOW_WARNING);
    EXPECT_EQ(verdict(-40.00390625), Verdict::LOW_ALARM);
}

TEST(ReadingsTest, AlarmsComeBeforeWarnings) {
    // Warnings outside of the alarms never show.
    const Thresholds<Volts> inside{{3}, {2}, {4}, {1}};
    EXPECT_EQ(Judge(Volts{3.5}, inside), Verdict::HIGH_ALARM);
    EXPECT_EQ(Judge(Volts{1.5}, inside), Verdict::LOW_ALARM);
    EXPECT_EQ(Judge(Volts{2.5}, inside), Verdict::OK);
    // Levels that are crossed both ways.
    const Thresholds<Volts> reversed{{1}, {3}, {1}, {3}};
    EXPECT_EQ(Judge(Volts{2}, reversed), Verdict::HIGH_ALARM);
}

TEST(ReadingsTest, NoVerdictWithoutThresholds) {
    Reading<Milliwatts> reading{{0.5}, std::nullopt};
    EXPECT_FALSE(reading.Judged().has_value());
    reading.thresholds = {{1}, {0.1}, {0.4}, {0.2}};
    EXPECT_EQ(reading.Judged(), Verdict::HIGH_WARNING);
}

} // namespace
