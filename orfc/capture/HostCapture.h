/// @file
/// Captures: a host in one file, and hosts that are read from one.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orfc {

struct CaptureOptions {
    std::string file = {};                      ///< to write; empty: named after the host and the time, in this folder
    bool isForced = false;                      ///< may replace a file
    std::string root = "/";                     ///< folder with the host's sys/
    std::vector<std::string> commands = {};     ///< whose output is kept; the overview is ""
    std::vector<std::string> libraryWords = {}; ///< that select the library for it
};

/// What was captured, in words.
struct CaptureReport {
    std::string summary;
    std::vector<std::string> messages; ///< what couldn't be read, one line each
};

/// Captures a host. `folder` is an empty one for this run. Throws `Failure`.
CaptureReport CaptureHost(const CaptureOptions& options, const std::string& folder);

/// Whether a root is a file instead of a folder.
bool IsCapture(const std::string& root);

/// Unpacks a capture into an existing folder, and returns where and when it was made, in words. Throws `Failure`.
std::string OpenCapture(const std::string& file, const std::string& folder);

} // namespace orfc
