/// @file
/// What couldn't be read.
#pragma once

#include <string>

namespace host {

/// Hands "WHAT: WHY" to the caller's handler, or prints it, after the library's name, to the library's output.
void Tell(const std::string& what, const std::string& why);

} // namespace host
