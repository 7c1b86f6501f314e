/// @file
/// The time that the program under test reads from `gettimeofday`.
#pragma once

#include <sys/time.h>

/// Stops the clock, from its making to its end, at a time that a test sets.
class StoppedClock {
public:
    explicit StoppedClock(timeval now);
    ~StoppedClock();
    StoppedClock(const StoppedClock&) = delete;
    StoppedClock& operator=(const StoppedClock&) = delete;

    void Set(timeval now);
};
