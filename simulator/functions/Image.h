/// @file
/// The files that the update functions take: text that begins with "ORFC-IMAGE KIND VERSION".
#pragma once

#include "caller/Call.h"

#include <map>
#include <span>
#include <string>

namespace sim {

struct Image {
    std::string version;
    /// The lines behind the first one: a word and the rest of the line.
    std::map<std::string, std::string> values;
};

/// Reads an image of one kind. Throws `Failure` with the library's status for the file: not found, not
/// opened, not read, of invalid size (empty or above 64 MB), not valid.
Image ReadImage(const char* path, const std::string& kind);

/// Reads `numbers.size()` numbers below 256 with points between them. Throws `Failure`.
void ParseVersion(const std::string& text, std::span<VX_UINT8> numbers);

} // namespace sim
