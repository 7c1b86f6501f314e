/// @file
/// The library's interface with exported functions. All sources of this host include this file instead of vexapi.h and
/// extensions.h; every other symbol stays hidden.
#pragma once

#pragma GCC visibility push(default)
#include "extensions.h"
#include "vexapi.h"
#pragma GCC visibility pop
