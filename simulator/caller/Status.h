/// @file
/// The statuses that the simulator returns. Those below 1000 are the library's own.
#pragma once

#include "Api.h"

namespace sim {

using Status = VX_UINT32;

constexpr Status STATUS_OK = 0;
/* Files. */
constexpr Status STATUS_FILE_NOT_FOUND = 3;
constexpr Status STATUS_FILE_NOT_OPENED = 101;
constexpr Status STATUS_FILE_NOT_READ = 102;
constexpr Status STATUS_FILE_NOT_VALID = 103;
constexpr Status STATUS_FILE_SIZE_INVALID = 106;
constexpr Status STATUS_DATA_INVALID = 108;
/* Adapter and port. */
constexpr Status STATUS_NOT_SUPPORTED_BY_DRIVER = 118;
constexpr Status STATUS_NOT_IN_DIAGNOSTIC_MODE = 129;
constexpr Status STATUS_LINK_DOWN = 130;
constexpr Status STATUS_SPEED_TOO_LOW = 131;
constexpr Status STATUS_LOCKED_DOWN = 133;
constexpr Status STATUS_TRANSCEIVER_NOT_UPDATED = 144;
constexpr Status STATUS_TRANSCEIVER_VENDOR_MISMATCH = 145;
constexpr Status STATUS_TRANSCEIVER_VENDOR_UNSUPPORTED = 146;
constexpr Status STATUS_NOT_FOR_VIRTUAL_PORT = 29;
constexpr Status STATUS_REBOOT_NEEDED = 201; ///< a flash update succeeded
constexpr Status STATUS_NO_DUMP = 0x2000007B;
/* Specific to the simulator. */
constexpr Status STATUS_NO_SUCH_TARGET = 0x200000FA;
constexpr Status STATUS_NO_ANSWER = 0x200000FB;      ///< nobody answered on the link
constexpr Status STATUS_INTERNAL = 0x200000FC;       ///< out of memory, or a bug in the simulator
constexpr Status STATUS_STATE_NOT_KEPT = 0x200000FD; ///< the state file can't be written; nothing was changed
constexpr Status STATUS_REFUSED = 0x200000FE;        ///< the description or the fault list was refused
constexpr Status STATUS_CALLER_MISTAKE = 0x200000FF; ///< the caller broke the interface's rules

} // namespace sim
