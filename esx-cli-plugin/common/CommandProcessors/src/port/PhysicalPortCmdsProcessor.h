#pragma once

#include "Document.h"
#include "Family.h"

/// A port with the records around it.
struct PortEntry {
    _vexapi_adapter_t* adapter = nullptr;
    _vexapi_phy_port_t* port = nullptr;
    _vexapi_protocol_t* protocol = nullptr;
};

/// `port`: lists the FC and FCoE ports, resolves their identifiers, "FC_<WWPN>", and writes NVRAM files.
class PhysicalPortCmdsProcessor final : public Family<PhysicalPortCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

    /// Finds the port that the first argument names: exactly the text that `list` prints. Where several
    /// records have the same WWPN the first in list order is it.
    ///
    /// `RC_HELP_REQUESTED` for a help word, `RC_INVALID_PARAMETER` for an identifier that is none or finds
    /// nothing, `RC_HOST_NOT_FOUND` without an adapter list. The pointers are only written on success.
    static VX_UINT32 GetPhyPortFromPortString(const TavuStringArray& args, _vexapi_adapter_t** adapter,
                                              _vexapi_phy_port_t** port, _vexapi_protocol_t** protocol);
    static VX_UINT32 GetPhyPortFromPortString(const TavuStringArray& args, PortEntry& entry) {
        return GetPhyPortFromPortString(args, &entry.adapter, &entry.port, &entry.protocol);
    }
    /// The same for commands that a virtual port can't take: `RC_NOT_SUPPORTED_FOR_VPORT` for one.
    static VX_UINT32 GetPhysicalPortFromPortString(const TavuStringArray& args, PortEntry& entry);

private:
    static const Leaf LEAVES[];
    static const SubFamily SUB_FAMILIES[];

    static VX_UINT32 CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static VX_UINT32 CmdUpdateNvramCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static VX_UINT32 UpdateNvram(const TavuStringArray& args, bool& rebootRequired);
    static void DisplayUpdateNvram(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format,
                                   bool rebootRequired);
};
