/// @file
/// State of the link tests between two calls, and their kernel.
#pragma once

#include "Bsg.h"

namespace host {

/// Closes the node that is kept open for the next frame.
void EndLinkTests();

/// Replaces the kernel; null restores this machine's, which nothing is sent through for a captured tree.
void SetKernel(Kernel* kernel);

} // namespace host
