/// @file
/// Start and end of the library, and the adapter tree.
#include "Session.h"

#include "LinkTests.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

std::unique_ptr<host::Tree>& Current() {
    static std::unique_ptr<host::Tree> tree;
    return tree;
}

} // namespace

host::Tree* host::GetTree() {
    return Current().get();
}

/// Reads at once what the scope asks for: messages printed here don't end up in the tool's documents.
VX_UINT32 VEXAPI_Initialize(VX_UINT32 /*debugLevel*/, VX_UINT32 /*reserved*/) {
    const char* const root = std::getenv("VEXAPI_SYSFS_ROOT");
    const std::string folder = root == nullptr ? "" : root;
    Current() = std::make_unique<host::Tree>(folder, host::NextScope());
    if (!Current()->IsValid()) {
        std::fprintf(stderr, "vexapi linux: %s/sys/class can't be read: no sysfs there\n", folder.c_str());
        return host::NOT_READABLE;
    }
    if (Current()->PortCount() == 0) {
        std::fprintf(stderr, "vexapi linux: no Fibre Channel port in %s/sys/class/fc_host\n", folder.c_str());
    }
    return host::OK;
}

VX_UINT32 VEXAPI_SetToolID(VX_UINT32 /*toolId*/) {
    return host::OK;
}

VX_UINT32 VEXAPI_SetToolVersion(VX_UINT32 /*major*/, VX_UINT32 /*minor*/, VX_UINT32 /*sub*/, VX_UINT32 /*build*/) {
    return host::OK;
}

VX_UINT32 VEXAPI_Uninitialize(void) {
    host::EndLinkTests();
    Current().reset();
    return host::OK;
}

VX_ADAPTER_LIST* VEXAPI_GetAdapterList(void) {
    return host::GetTree() != nullptr && host::GetTree()->IsValid() ? host::GetTree()->List() : nullptr;
}
