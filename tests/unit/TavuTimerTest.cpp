#include "TavuTimer.h"
#include "Clock.h"

#include <gtest/gtest.h>

namespace {

constexpr long SECOND = 1'600'000'000;

TEST(TavuTimerTest, GivesZeroWithoutAStart) {
    TavuTimer timer;
    EXPECT_EQ(timer.ElapsedTimeInMillisec(), 0u);
    timer.Stop();
    EXPECT_EQ(timer.ElapsedTimeInMillisec(), 0u);
    EXPECT_EQ(timer.ElapsedTime(), "00:00:00.000");
}

TEST(TavuTimerTest, RunsToNowUntilItIsStopped) {
    StoppedClock clock({SECOND, 0});
    TavuTimer timer;
    timer.Start();
    clock.Set({SECOND + 1, 250'000});
    EXPECT_EQ(timer.ElapsedTimeInMillisec(), 1250u);
    timer.Stop();
    clock.Set({SECOND + 9, 0});
    EXPECT_EQ(timer.ElapsedTimeInMillisec(), 1250u);
    timer.Start(); // again: the old stop is discarded
    clock.Set({SECOND + 10, 0});
    EXPECT_EQ(timer.ElapsedTimeInMillisec(), 1000u);
}

TEST(TavuTimerTest, CountsWholeMilliseconds) {
    StoppedClock clock({SECOND, 999'500});
    TavuTimer timer;
    timer.Start();
    clock.Set({SECOND + 1, 499}); // 999 microseconds later, over the end of the second
    timer.Stop();
    EXPECT_EQ(timer.ElapsedTimeInMillisec(), 0u);
    clock.Set({SECOND + 1, 500});
    timer.Stop();
    EXPECT_EQ(timer.ElapsedTimeInMillisec(), 1u);
}

struct Elapsed {
    long seconds;
    long microseconds;
    const char* text;
};

TEST(TavuTimerTest, WritesHoursToMillisecondsAndDays) {
    const Elapsed rows[] = {
        {0, 7'000, "00:00:00.007"},        {59, 999'000, "00:00:59.999"},
        {60, 0, "00:01:00.000"},           {3600 + 2 * 60 + 3, 45'000, "01:02:03.045"},
        {86399, 999'999, "23:59:59.999"}, // a millisecond short of a day of 86400 seconds
        {86400, 0, "1 days 00:00:00.000"}, {2 * 86400 + 3 * 3600 + 4 * 60 + 5, 6'000, "2 days 03:04:05.006"},
    };
    for (const Elapsed& row : rows) {
        StoppedClock clock({SECOND, 0});
        TavuTimer timer;
        timer.Start();
        clock.Set({SECOND + row.seconds, row.microseconds});
        timer.Stop();
        EXPECT_EQ(timer.ElapsedTime(), row.text);
    }
}

} // namespace
