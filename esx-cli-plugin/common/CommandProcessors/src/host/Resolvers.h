/// @file
/// Resolution of identifiers to records. The first argument of every command is resolved by one of these functions.
///
/// All return `RC_HELP_REQUESTED` for a help word, `RC_INVALID_PARAMETER` for an identifier that is malformed or
/// not found, and `RC_HOST_NOT_FOUND` without an adapter list. Their traces name the class of the top-level word.
#pragma once

#include "ResultCodes.h"
#include "TavuString.h"
#include "vexapi.h"

/// An adapter and what its identifier resolves to.
struct AdapterEntry {
    _vexapi_adapter_t* adapter = nullptr;
    _vexapi_phy_port_t* port = nullptr;
    _vexapi_protocol_t* nic = nullptr;
    _vexapi_protocol_t* fc = nullptr;
    _vexapi_protocol_t* iscsi = nullptr;
};

/// A port with the records around it.
struct PortEntry {
    _vexapi_adapter_t* adapter = nullptr;
    _vexapi_phy_port_t* port = nullptr;
    _vexapi_protocol_t* protocol = nullptr;
};

/// A target with the port that sees it.
struct TargetEntry {
    _vexapi_protocol_t* protocol = nullptr;
    _tagVEXAPI_SDMTarget* target = nullptr;
};

struct LunEntry {
    _tagVEXAPI_SDMLun* lun = nullptr;
};

/// Finds the adapter of the first argument, "Adapter_<Model>_<SerialNumber>" in any letter case, and its
/// lowest-numbered port with an FC protocol. `entry` must be empty.
///
/// A model or serial number that contains "_" can't be resolved; text after a further "_" is ignored. If two
/// adapters have the same model and serial number, the later one overrides what the earlier one set.
ResultCode GetPhyPortFromAdapterString(const TavuStringArray& args, AdapterEntry& entry);
/// Same for commands that need an FC protocol: returns `RC_ADAPTER_NOT_FOUND` for an adapter without one.
ResultCode GetFcPortFromAdapterString(const TavuStringArray& args, AdapterEntry& entry);

/// Finds the port of the first argument: exactly the text that `port list` prints. If several records have the same
/// WWPN, the first in list order is taken. `entry` is only written on success.
ResultCode GetPhyPortFromPortString(const TavuStringArray& args, PortEntry& entry);
/// Same for commands that don't support virtual ports: returns `RC_NOT_SUPPORTED_FOR_VPORT` for one.
ResultCode GetPhysicalPortFromPortString(const TavuStringArray& args, PortEntry& entry);

/// Find the target or LUN of the first argument: exactly the text that `target list` or `lun list` prints. If
/// several have the same names, the first in list order is taken. Never return `RC_TARGET_NOT_FOUND`. `entry` is
/// only written on success.
ResultCode GetTargetFromTargetString(const TavuStringArray& args, TargetEntry& entry);
ResultCode GetLunFromLunString(const TavuStringArray& args, LunEntry& entry);
