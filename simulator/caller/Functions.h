/// @file
/// The names of the library's functions, and properties of some of them.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace sim {

/// All names in the order of the interface, those of `extensions.h` last.
std::span<const std::string_view> FunctionNames();
/// Index of a name, or the number of names if there is no such function.
std::size_t FunctionIndex(std::string_view name);
/// Whether the function returns a pointer that a fault can make null.
bool GivesPointer(std::size_t function);
/// Whether the function prints nothing, because callers don't redirect standard output for it.
bool IsSilent(std::size_t function);

} // namespace sim
