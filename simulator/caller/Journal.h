/// @file
/// The journal of calls: the variable VEXAPI_SIM_JOURNAL.
#pragma once

#include "description/Fields.h"

namespace sim {

/// Appends one JSON line to the journal with a single write, when there is a journal. A journal that can't
/// be written is complained about on standard error, once.
void WriteJournal(const Json& line);

} // namespace sim
