#pragma once

#include "Family.h"

/// An adapter with what its identifier resolves to.
struct AdapterEntry {
    _vexapi_adapter_t* adapter = nullptr;
    _vexapi_phy_port_t* port = nullptr;
    _vexapi_protocol_t* nic = nullptr;
    _vexapi_protocol_t* fc = nullptr;
    _vexapi_protocol_t* iscsi = nullptr;
};

/// `adapter`: lists the adapters, writes their flash and resolves their identifiers, "Adapter_<Model>_<SerialNumber>".
class AdapterCmdsProcessor final : public Family<AdapterCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

    /// Finds the adapter that the first argument names, in any letter case, and of its ports the one with
    /// the lowest number that has an FC protocol. The caller clears the five pointers.
    ///
    /// `RC_HELP_REQUESTED` for a help word, `RC_INVALID_PARAMETER` for an identifier that is none or finds
    /// nothing, `RC_HOST_NOT_FOUND` without an adapter list. A model or serial number with "_" in it can't
    /// be resolved, and text behind a further "_" is ignored. Of two adapters with the same model and
    /// serial number the later one wins, but for what the earlier one has already given.
    static VX_UINT32 GetPhyPortFromAdapterString(const TavuStringArray& args, _vexapi_adapter_t** adapter,
                                                 _vexapi_phy_port_t** port, _vexapi_protocol_t** nic,
                                                 _vexapi_protocol_t** fc, _vexapi_protocol_t** iscsi);
    static VX_UINT32 GetPhyPortFromAdapterString(const TavuStringArray& args, AdapterEntry& entry) {
        return GetPhyPortFromAdapterString(args, &entry.adapter, &entry.port, &entry.nic, &entry.fc, &entry.iscsi);
    }
    /// The same for commands that need an FC protocol: `RC_ADAPTER_NOT_FOUND` for an adapter without one.
    static VX_UINT32 GetFcPortFromAdapterString(const TavuStringArray& args, AdapterEntry& entry);

private:
    static const Leaf LEAVES[];
    static const SubFamily SUB_FAMILIES[];

    static VX_UINT32 CmdUpdateCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static VX_UINT32 Update(const TavuStringArray& args, bool& reboot);
    static void DisplayUpdateInfo(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format, bool reboot);
    static VX_UINT32 CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
};
