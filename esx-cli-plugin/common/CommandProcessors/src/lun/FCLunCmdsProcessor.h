#pragma once

#include "Family.h"

/// `lun`: lists the LUNs and namespaces that the ports see, and resolves their identifiers.
class FCLunCmdsProcessor final : public Family<FCLunCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

    /// Finds the LUN or namespace that the first argument names: exactly the text that `list` prints. The
    /// form with "LUN" does not find a namespace, nor that with "NSID" a LUN. The first in list order is it
    /// where several have the same names and number.
    ///
    /// `RC_HELP_REQUESTED` for a help word, `RC_INVALID_PARAMETER` for an identifier that is none or finds
    /// nothing, `RC_HOST_NOT_FOUND` without an adapter list. The pointer is only written on success.
    static VX_UINT32 GetLunFromLunString(const TavuStringArray& args, _tagVEXAPI_SDMLun** lun);

private:
    static const Leaf LEAVES[];
    static const SubFamily SUB_FAMILIES[];

    static VX_UINT32 CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
};
