#pragma once

#include "Family.h"

/// A target with the port that sees it.
struct TargetEntry {
    _vexapi_protocol_t* protocol = nullptr;
    _tagVEXAPI_SDMTarget* target = nullptr;
};

/// The lines that name a target in most reports on it.
void AddTargetNames(ReportBlock& block, const _tagVEXAPI_SDMTarget& target);

/// `target`: lists the targets that the ports see, and resolves their identifiers.
class FCTargetCmdsProcessor final : public Family<FCTargetCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

    /// Finds the target that the first argument names: exactly the text that `list` prints. The first in
    /// list order is it where several have the same names.
    ///
    /// `RC_HELP_REQUESTED` for a help word, `RC_INVALID_PARAMETER` for an identifier that is none or finds
    /// nothing (`RC_TARGET_NOT_FOUND` is never given), `RC_HOST_NOT_FOUND` without an adapter list. The
    /// pointers are only written on success.
    static VX_UINT32 GetTargetFromTargetString(const TavuStringArray& args, _vexapi_protocol_t** protocol,
                                               _tagVEXAPI_SDMTarget** target);
    static VX_UINT32 GetTargetFromTargetString(const TavuStringArray& args, TargetEntry& entry) {
        return GetTargetFromTargetString(args, &entry.protocol, &entry.target);
    }

private:
    static const Leaf LEAVES[];
    static const SubFamily SUB_FAMILIES[];

    static VX_UINT32 CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
};
