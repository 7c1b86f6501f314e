/// @file
/// A stop watch of wall-clock time.
#pragma once

#include "TavuString.h"

#include <sys/time.h>

class TavuTimer {
public:
    void Start();
    void Stop();

    /// Whole milliseconds from the start to the stop, or to now while it runs; 0 without a start.
    unsigned long ElapsedTimeInMillisec() const;

    /// The same as "hh:mm:ss.mmm", with "%d days " ahead from one day on.
    TavuString ElapsedTime() const;

private:
    timeval mStart{};
    timeval mStop{};
};
