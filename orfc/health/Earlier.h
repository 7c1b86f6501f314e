/// @file
/// Readings of ports that later ones are compared with, and the file that keeps them between runs.
#pragma once

#include "Host.h"

namespace orfc {

/// What is kept of a port.
struct Reading {
    /// The transmit power of a module's lane at some time.
    struct Power {
        double time; ///< seconds since the epoch
        double dbm;
    };
    double time = 0;  ///< seconds since the epoch
    std::string boot; ///< id of the system's boot
    Counters counters;
    std::map<std::string, Counters, std::less<>> targets; ///< counters that aren't 0, by the target's identifier
    std::string module;                                   ///< who the module is
    std::vector<std::vector<Power>> powers;               ///< of its lanes, at most one for a day, the oldest first
};

/// By the identifier of the port.
using Readings = std::map<std::string, Reading, std::less<>>;

/// The readings of a host at a time, of the ports of which something was read.
Readings ReadingsOf(const Host& host, double time, const std::string& boot);

/// How much a counter moved between two readings of a port: one that was reset in between counts from zero, and one
/// of 32 bits may have wrapped.
std::uint64_t IncreaseOf(std::uint64_t before, std::uint64_t now, bool wasReset);
/// Whether the counters of a port were reset since an earlier reading.
bool WasReset(const Reading& before, const Reading& now);

/// The time in seconds since the epoch, and the id of the system's boot; empty if unknown.
double CurrentTime();
std::string CurrentBoot();

/// Where readings are kept unless somebody says otherwise: `name` below /var/lib/orfc for root, below the folder for
/// the state of programs for others. Empty if there is none.
std::string UsualStateFile(const std::string& name);

/// Reads a file of readings. Nothing is in one that isn't there or is of another version. Throws `Failure` for one
/// that is no such file or isn't the user's own.
Readings LoadReadings(const std::string& file);
/// Adds readings to a file, in place of those of the same ports, and forgets ports that weren't read for a month.
/// Creates a missing file, and its folder for this user alone. Throws `Failure`, and leaves the file as it was, if it
/// can't or if the file is none of readings.
void SaveReadings(const std::string& file, const Readings& readings);

} // namespace orfc
