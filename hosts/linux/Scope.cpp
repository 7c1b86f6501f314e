#include "Scope.h"

#include "Session.h"
#include "Values.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

using namespace host;

namespace {

Scope& Next() {
    static Scope scope;
    return scope;
}

std::optional<std::uint64_t> NameIn(const VX_UINT8 (&name)[8]) {
    const std::uint64_t number = NameNumber(name);
    return number == 0 ? std::nullopt : std::optional(number);
}

/// LUNs can't be read without their targets, nor details without what they belong to.
VX_UINT32 WithWhatTheyNeed(VX_UINT32 parts) {
    if ((parts & LUN_DETAILS) != 0) {
        parts |= LUNS;
    }
    if ((parts & (LUNS | TARGET_DETAILS)) != 0) {
        parts |= TARGETS;
    }
    return parts;
}

} // namespace

const Scope& host::NextScope() {
    return Next();
}

VX_UINT32 VEXAPI_ExtSetScope(const VEXAPI_EXT_SCOPE* scope) {
    Next() = {};
    if (scope == nullptr) {
        return OK;
    }
    if (scope->Size < offsetof(VEXAPI_EXT_SCOPE, PortName)) {
        return UNSUPPORTED;
    }
    VEXAPI_EXT_SCOPE known{}; // the caller's may be shorter
    std::memcpy(&known, scope, std::min<std::size_t>(scope->Size, sizeof known));
    Next() = {WithWhatTheyNeed(known.Parts), NameIn(known.PortName), NameIn(known.TargetName),
              known.HasLunNumber != 0 ? std::optional(known.LunNumber) : std::nullopt};
    return OK;
}
