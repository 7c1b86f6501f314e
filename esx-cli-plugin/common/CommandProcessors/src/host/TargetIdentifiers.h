/// @file
/// Identifiers of targets and LUNs, and common parts of their resolvers.
///
/// A target is "FC_<port WWPN>_Target_<target WWPN>"; a LUN appends "_LUN_<number>" and a namespace
/// "_NSID_<number>".
#pragma once

#include "HostTree.h"
#include "ResultCodes.h"
#include "TavuString.h"

/// True for an NVMe target, which has namespaces instead of LUNs.
inline bool IsNvmeTarget(const _tagVEXAPI_SDMTarget& target) {
    return (target.TargetFlags[5] & 0x08) != 0;
}

/// Identifier of a target of a port.
struct TargetIdentifier {
    TargetIdentifier(const _vexapi_protocol_t& protocol, const _tagVEXAPI_SDMTarget& target);
    char text[sizeof "FC_" - 1 + WWN_LENGTH + sizeof "_Target_" - 1 + WWN_LENGTH + 1];
};

/// Identifiers of a target's LUNs or namespaces: created once per target, then completed with each number.
class LunIdentifier {
public:
    LunIdentifier(const _vexapi_protocol_t& protocol, const _tagVEXAPI_SDMTarget& target);
    /// The identifier with this number; valid until the next call.
    const char* WithNumber(VX_UINT16 number);

private:
    char mText[sizeof(TargetIdentifier) + sizeof "_NSID_65535"];
    char* mNumber; ///< start of the number
};

/// Content of a target's identifier.
struct TargetName {
    VX_UINT8 portWwpn[8];
    VX_UINT8 targetWwpn[8];
};

/// Content of a LUN's identifier.
struct LunName {
    TargetName target;
    bool isNamespace;
    VX_UINT16 number;
};

/// Parse an identifier. Return true only for exactly the text that the types above produce for the same name; so
/// searching by name is equivalent to comparing the text with every identifier of the host.
bool ParseTargetIdentifier(const char* text, TargetName& name);
bool ParseLunIdentifier(const char* text, LunName& name);

/// The kind of identifier that a resolver takes.
enum class IdentifierKind { TARGET, LUN };

/// Preparation of a resolver: checks the first argument and gets the host.
///
/// The words of the identifier are accepted in any letter case, and the bytes in any form that parses as a number,
/// although the search then only finds the exact text. So a misspelt identifier of this form is rejected only after
/// a missing host, and one of another form before it.
///
/// Returns `RC_HELP_REQUESTED` for a help word, `RC_INVALID_PARAMETER` for an identifier of another form,
/// `RC_HOST_NOT_FOUND` without an adapter list, else `RC_SUCCESS` and the host.
ResultCode AdmitIdentifier(IdentifierKind kind, const TavuStringArray& args, const VX_ADAPTER_LIST*& host);
