/// @file
/// The texts that name targets and LUNs, and what their resolvers have in common.
///
/// A target is "FC_<port WWPN>_Target_<target WWPN>"; a LUN puts "_LUN_<number>" behind that, a namespace
/// "_NSID_<number>".
#pragma once

#include "HostTree.h"
#include "ResultCodes.h"
#include "TavuString.h"

/// True for an NVMe target, which has namespaces in place of LUNs.
inline bool IsNvmeTarget(const _tagVEXAPI_SDMTarget& target) {
    return (target.TargetFlags[5] & 0x08) != 0;
}

/// Identifier of a target behind a port.
struct TargetIdentifier {
    TargetIdentifier(const _vexapi_protocol_t& protocol, const _tagVEXAPI_SDMTarget& target);
    char text[sizeof "FC_" - 1 + WWN_LENGTH + sizeof "_Target_" - 1 + WWN_LENGTH + 1];
};

/// Identifiers of a target's LUNs or namespaces: made once a target, then given number after number.
class LunIdentifier {
public:
    LunIdentifier(const _vexapi_protocol_t& protocol, const _tagVEXAPI_SDMTarget& target);
    /// The identifier with this number; valid until the next call.
    const char* WithNumber(VX_UINT16 number);

private:
    char mText[sizeof(TargetIdentifier) + sizeof "_NSID_65535"];
    char* mNumber; ///< where the number begins
};

/// What a target's identifier holds.
struct TargetName {
    VX_UINT8 portWwpn[8];
    VX_UINT8 targetWwpn[8];
};

/// What a LUN's identifier holds.
struct LunName {
    TargetName target;
    bool isNamespace;
    VX_UINT16 number;
};

/// Read an identifier. True only for exactly the text that the types above make of the same name: a search
/// for the name is then the same as a comparison with every identifier of the host.
bool ParseTargetIdentifier(const char* text, TargetName& name);
bool ParseLunIdentifier(const char* text, LunName& name);

/// Which identifier a resolver takes.
enum class IdentifierKind { TARGET, LUN };

/// What a resolver does before it searches: it looks at the first argument and gets the host.
///
/// The words of the identifier pass in any letter case and the bytes in any form that reads as a number,
/// although the search then finds nothing but the exact text. So a misspelt identifier of this form is
/// refused behind a missing host, and one of another form ahead of it.
///
/// `RC_HELP_REQUESTED` for a help word, `RC_INVALID_PARAMETER` for an identifier of another form,
/// `RC_HOST_NOT_FOUND` without an adapter list; else `RC_SUCCESS` with the host stored.
ResultCode AdmitIdentifier(IdentifierKind kind, const TavuStringArray& args, const VX_ADAPTER_LIST*& host);
