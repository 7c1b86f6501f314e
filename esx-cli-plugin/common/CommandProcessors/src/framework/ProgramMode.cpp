#include "ProgramMode.h"

std::atomic<VX_UINT32> g_uFlags{0};
