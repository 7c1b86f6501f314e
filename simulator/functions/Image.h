/// @file
/// The files of the update functions: text that begins with "ORFC-IMAGE KIND VERSION".
#pragma once

#include "caller/Call.h"

#include <map>
#include <span>
#include <string>

namespace sim {

struct Image {
    std::string version;
    /// The lines after the first: a word and the rest of the line.
    std::map<std::string, std::string> values;
};

/// Reads an image of one kind. Throws `Failure` with the library's status: file not found, not opened, not read, of
/// invalid size (empty or larger than 64 MB) or not valid.
Image ReadImage(const char* path, const std::string& kind);

/// Parses `numbers.size()` numbers below 256, separated by dots. Throws `Failure`.
void ParseVersion(const std::string& text, std::span<VX_UINT8> numbers);

} // namespace sim
