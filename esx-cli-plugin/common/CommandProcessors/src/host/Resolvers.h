/// @file
/// Identifiers to the records that they name. Each command's first argument goes through one of these.
///
/// All give `RC_HELP_REQUESTED` for a help word, `RC_INVALID_PARAMETER` for an identifier that is none or finds
/// nothing, and `RC_HOST_NOT_FOUND` without an adapter list. Their traces name the class of the top-level word.
#pragma once

#include "ResultCodes.h"
#include "TavuString.h"
#include "vexapi.h"

/// An adapter with what its identifier resolves to.
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

/// Finds the adapter that the first argument names, "Adapter_<Model>_<SerialNumber>" in any letter case, and of
/// its ports the one with the lowest number that has an FC protocol. `entry` must be clear.
///
/// A model or serial number with "_" in it can't be resolved, and text after a further "_" is ignored. Of two
/// adapters with the same model and serial number the later one wins, but for what the earlier one has already
/// given.
ResultCode GetPhyPortFromAdapterString(const TavuStringArray& args, AdapterEntry& entry);
/// The same for commands that need an FC protocol: `RC_ADAPTER_NOT_FOUND` for an adapter without one.
ResultCode GetFcPortFromAdapterString(const TavuStringArray& args, AdapterEntry& entry);

/// Finds the port that the first argument names: exactly the text that `port list` prints. Where several
/// records have the same WWPN the first in list order is it. `entry` is only written on success.
ResultCode GetPhyPortFromPortString(const TavuStringArray& args, PortEntry& entry);
/// The same for commands that a virtual port can't take: `RC_NOT_SUPPORTED_FOR_VPORT` for one.
ResultCode GetPhysicalPortFromPortString(const TavuStringArray& args, PortEntry& entry);

/// Find the target or the LUN that the first argument names: exactly the text that `target list` or `lun list`
/// prints. The first in list order is it where several have the same names. `RC_TARGET_NOT_FOUND` is never given.
/// `entry` is only written on success.
ResultCode GetTargetFromTargetString(const TavuStringArray& args, TargetEntry& entry);
ResultCode GetLunFromLunString(const TavuStringArray& args, LunEntry& entry);
