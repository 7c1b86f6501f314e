/// @file
/// Optional functions beyond the 62 of `vexapi.h`.
///
/// A caller looks each of them up at run time, by name, and does without those that the library lacks: the maker's has
/// none. Valid C11 and C++20, declarations only. The rules of `vexapi.h` hold, and:
///  - The caller zeroes a record and sets `Size` to the size of it. A library fills the members that it knows and that
///    the size covers, so members are only ever appended.
///  - A text that is unknown is empty, a number that is unknown `VEXAPI_EXT_UNKNOWN`. Texts are always terminated.
///  - Ports are named by their handle, targets and LUNs by the address of their record in the adapter tree.
///  - What is read is read at the call, so that a second call shows what has changed.
#ifndef VEXAPI_EXTENSIONS_H
#define VEXAPI_EXTENSIONS_H

#include "vexapi.h"

#ifdef __cplusplus
extern "C" {
#endif

#define VEXAPI_EXT_UNKNOWN 0xFFFFFFFFu

/* ---------------------------------------------------------------- What the caller is going to read */

/// Parts of the adapter tree. Names, numbers and ids that identify an object are part of its list.
enum VEXAPI_EXT_PARTS {
    VEXAPI_EXT_ADAPTERS = 0x01,       ///< adapters with model, serial number, maker and PCI ids
    VEXAPI_EXT_PORTS = 0x02,          ///< ports with their names; read in any case
    VEXAPI_EXT_PORT_DETAILS = 0x04,   ///< the rest of a port's record but for its counters
    VEXAPI_EXT_PORT_COUNTERS = 0x08,  ///< counters in a port's record; some drivers fetch them from firmware
    VEXAPI_EXT_TARGETS = 0x10,        ///< targets with their names, numbers and kinds
    VEXAPI_EXT_TARGET_DETAILS = 0x20, ///< the rest of a target's record
    VEXAPI_EXT_LUNS = 0x40,           ///< LUNs with their numbers
    VEXAPI_EXT_LUN_DETAILS = 0x80,    ///< the rest of a LUN's record
    VEXAPI_EXT_EVERYTHING = 0xFF,
};

/// What the caller is going to read, so that the library can leave out the rest.
typedef struct VEXAPI_EXT_SCOPE {
    VX_UINT32 Size;
    VX_UINT32 Parts;        ///< of `VEXAPI_EXT_PARTS`
    VX_UINT8 PortName[8];   ///< adapter, details, targets and LUNs of this port only; all zero: of every port
    VX_UINT8 TargetName[8]; ///< details and LUNs of targets of this name only; all zero: of every target
    VX_UINT8 HasLunNumber;  ///< 1: details of LUNs of the following number only
    VX_UINT16 LunNumber;
} VEXAPI_EXT_SCOPE;

/// Limits what `VEXAPI_Initialize` reads from now on; null ends the limit. Lists are as complete as without it, for the
/// parts and the port that are named; of everything else, records may be missing or zero.
VX_UINT32 VEXAPI_ExtSetScope(const VEXAPI_EXT_SCOPE* scope);

/// Receives one line, without its end, about something that couldn't be read, such as "host2/speed: Input/output
/// error". The text is the library's until the handler returns.
typedef void (*VEXAPI_EXT_HANDLER)(void* context, const char* line);
/// Hands such lines to `handler` instead of standard output; null restores that.
VX_UINT32 VEXAPI_ExtSetMessageHandler(VEXAPI_EXT_HANDLER handler, void* context);

/* ---------------------------------------------------------------- What the operating system knows */

typedef struct VEXAPI_EXT_PORT {
    VX_UINT32 Size;
    VX_UINT32 DeviceLossTimeout; ///< seconds until a target that vanished is given up
    char KernelName[32];         ///< "host2"
    char Device[64];             ///< "0000:3b:00.0", the PCI function, or the name of another parent device
    char Driver[32];             ///< kernel module
    char State[32];              ///< of the link, in the kernel's words: "Online", "Linkdown"
    char Speed[32];              ///< in the kernel's words: "16 Gbit"
    char SymbolicName[256];
} VEXAPI_EXT_PORT;
VX_UINT32 VEXAPI_ExtGetPort(VX_PORT_HANDLE* handle, VEXAPI_EXT_PORT* port);

typedef struct VEXAPI_EXT_TARGET {
    VX_UINT32 Size;
    VX_UINT32 DeviceLossTimeout; ///< seconds
    VX_UINT32 FastFailTimeout;   ///< seconds until commands to a vanished target fail
    char KernelName[32];         ///< "rport-2:0-1", or "nvme3" for a controller without a remote port
    char State[32];              ///< in the kernel's words: "Online", "Blocked", "Not Present"; "live", "connecting"
    char Roles[64];              ///< "FCP Target", "NVMe Target, NVMe Discovery"
} VEXAPI_EXT_TARGET;
VX_UINT32 VEXAPI_ExtGetTarget(VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* target, VEXAPI_EXT_TARGET* record);

/// A LUN or namespace as a block device, and the multipath map that it is part of.
typedef struct VEXAPI_EXT_LUN {
    VX_UINT32 Size;
    char Address[48];      ///< "2:0:1:5", host, channel, target and LUN; empty for a namespace
    char Device[32];       ///< "sdb", "nvme0n1", or "nvme0c1n1" for one path of a namespace
    char State[32];        ///< in the kernel's words: "running", "offline", "transport-offline", "blocked"; "live"
    char AccessState[32];  ///< "active/optimized", "standby"; "optimized", "inaccessible" of a namespace
    char WorldwideId[256]; ///< in the kernel's spelling: "naa.60…", "eui.…", "t10.…", "uuid.…"
    char Map[128];         ///< name of the map: "mpatha"
    char MapDevice[32];    ///< "dm-0", or "nvme0n1" where the kernel joins the paths itself
    char MapId[256];       ///< uuid of the map: "mpath-360…"
    char MapState[32];     ///< "active", "suspended"
    char MapPathState[32]; ///< of this path in the map: "active", "failed"
} VEXAPI_EXT_LUN;
VX_UINT32 VEXAPI_ExtGetLun(VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* target, const _tagVEXAPI_SDMLun* lun,
                           VEXAPI_EXT_LUN* record);

/// A counter by its name in the kernel: "tx_frames", "fpin_cn_credit_stall".
typedef struct VEXAPI_EXT_COUNTER {
    char Name[48];
    VX_UINT64 Value;
} VEXAPI_EXT_COUNTER;

/// Fills `counters` with what the driver counts, and nothing else. `*count` is the number of records on entry and that
/// of counters on return, which may be larger. `target` is null for the port's own.
VX_UINT32 VEXAPI_ExtGetCounters(VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* target,
                                VEXAPI_EXT_COUNTER* counters, VX_UINT32* count);

#ifdef __cplusplus
}
#endif
#endif
