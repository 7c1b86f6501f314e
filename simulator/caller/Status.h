/// @file
/// The statuses that the simulator answers with. Those below 1000 are the library's own numbering.
#pragma once

#include "Api.h"

namespace sim {

using Status = VX_UINT32;

constexpr Status statusOk = 0;
/* Files. */
constexpr Status statusFileNotFound = 3;
constexpr Status statusFileNotOpened = 101;
constexpr Status statusFileNotRead = 102;
constexpr Status statusFileNotValid = 103;
constexpr Status statusFileSizeInvalid = 106;
constexpr Status statusDataInvalid = 108;
/* Adapter and port. */
constexpr Status statusNotSupportedByDriver = 118;
constexpr Status statusNotInDiagnosticMode = 129;
constexpr Status statusLinkDown = 130;
constexpr Status statusSpeedTooLow = 131;
constexpr Status statusLockedDown = 133;
constexpr Status statusTransceiverNotUpdated = 144;
constexpr Status statusTransceiverVendorMismatch = 145;
constexpr Status statusTransceiverVendorUnsupported = 146;
constexpr Status statusNotForVirtualPort = 29;
constexpr Status statusRebootNeeded = 201; ///< success, of a flash update
constexpr Status statusNoDump = 0x2000007B;
/* The simulator's own. */
constexpr Status statusNoSuchTarget = 0x200000FA;
constexpr Status statusNoAnswer = 0x200000FB;      ///< nobody answered on the link
constexpr Status statusInternal = 0x200000FC;      ///< out of memory, or a defect of the simulator
constexpr Status statusStateNotKept = 0x200000FD;  ///< the state file can't be written; nothing was changed
constexpr Status statusRefused = 0x200000FE;       ///< the description or the fault list was refused
constexpr Status statusCallerMistake = 0x200000FF; ///< the caller broke the interface's rules

} // namespace sim
