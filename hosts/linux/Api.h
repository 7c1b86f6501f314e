/// @file
/// The library's interface with its functions exported. Every source of this host includes the interface through
/// this file: all other symbols stay hidden.
#pragma once

#pragma GCC visibility push(default)
#include "vexapi.h"
#pragma GCC visibility pop
