/// @file
/// The journal of calls: the variable VEXAPI_SIM_JOURNAL.
#pragma once

#include "description/Fields.h"

namespace sim {

/// Appends a JSON line to the journal, if there is one, with a single write. If that fails, warns on standard error,
/// once.
void WriteJournal(const Json& line);

} // namespace sim
