/// @file
/// The library's interface with exported functions. All sources of this host include this file instead of vexapi.h;
/// every other symbol stays hidden.
#pragma once

#pragma GCC visibility push(default)
#include "vexapi.h"
#pragma GCC visibility pop
