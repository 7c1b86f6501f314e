#include "HostScope.h"

#include "TargetIdentifiers.h"
#include "extensions.h"

#include <algorithm>
#include <dlfcn.h>

namespace {

/// Limits a scope to what exactly this identifier names; there is no limit if it names nothing.
void Limit(VEXAPI_EXT_SCOPE& scope, const char* identifier) {
    VX_UINT8 port[8];
    LunName lun;
    TargetName target;
    if (ParsePortIdentifier(identifier, port)) {
        std::copy_n(port, sizeof port, scope.PortName);
        return;
    }
    const bool isLun = ParseLunIdentifier(identifier, lun);
    if (!isLun && !ParseTargetIdentifier(identifier, target)) {
        return;
    }
    const TargetName& name = isLun ? lun.target : target;
    std::copy_n(name.portWwpn, sizeof name.portWwpn, scope.PortName);
    std::copy_n(name.targetWwpn, sizeof name.targetWwpn, scope.TargetName);
    if (isLun) {
        scope.HasLunNumber = 1;
        scope.LunNumber = lun.number;
    }
}

} // namespace

void LimitReading(VX_UINT32 parts, const char* identifier) {
    const auto setScope = reinterpret_cast<decltype(&VEXAPI_ExtSetScope)>(dlsym(RTLD_DEFAULT, "VEXAPI_ExtSetScope"));
    if (setScope == nullptr) {
        return;
    }
    VEXAPI_EXT_SCOPE scope{};
    scope.Size = sizeof scope;
    scope.Parts = parts;
    Limit(scope, identifier);
    setScope(&scope);
}
