/// @file
/// The library's interface with exported functions. All sources of the simulator include this file instead of
/// those of library/; every other symbol stays hidden.
#pragma once

#pragma GCC visibility push(default)
#include "extensions.h"
#pragma GCC visibility pop
