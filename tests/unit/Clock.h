/// @file
/// The time that `gettimeofday` returns to the program under test.
#pragma once

#include <sys/time.h>

/// Stops the clock at a given time during its lifetime.
class StoppedClock {
public:
    explicit StoppedClock(timeval now);
    ~StoppedClock();
    StoppedClock(const StoppedClock&) = delete;
    StoppedClock& operator=(const StoppedClock&) = delete;

    void Set(timeval now);
};
