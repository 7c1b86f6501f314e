/// @file
/// The names of the library's functions, and what is particular about some of them.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace sim {

/// All 62 names in the order of the interface.
std::span<const std::string_view> FunctionNames();
/// Position of a name among them, or their number when it isn't one of them.
std::size_t FunctionIndex(std::string_view name);
/// Whether the function hands out a pointer that a fault can make null.
bool GivesPointer(std::size_t function);
/// Whether callers may call the function with their own output still on standard output. Such a function
/// prints nothing.
bool IsSilent(std::size_t function);

} // namespace sim
