/// @file
/// A wall-clock stopwatch.
#pragma once

#include "TavuString.h"

#include <sys/time.h>

class TavuTimer {
public:
    void Start();
    void Stop();

    /// Whole milliseconds from start to stop, or until now while running; 0 if never started.
    unsigned long ElapsedTimeInMillisec() const;

    /// Same as "hh:mm:ss.mmm", prefixed with "%d days " from one day on.
    TavuString ElapsedTime() const;

private:
    timeval mStart{};
    timeval mStop{};
};
