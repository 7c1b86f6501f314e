/// @file
/// Optional functions: what the kernel knows of ports and targets.
#include "Attributes.h"
#include "Extension.h"

using namespace host;

namespace {

std::string LastPart(std::string path) {
    while (path.ends_with('/')) {
        path.pop_back();
    }
    return path.substr(path.rfind('/') + 1);
}

/// The module that drives a PCI function; empty if it isn't known.
std::string ModuleOf(const Folder& hosts, const PciFunction& pci) {
    return pci.path.empty() ? std::string() : LastPart(Folder(hosts, (pci.path + "driver").c_str()).Link("module"));
}

} // namespace

VX_UINT32 VEXAPI_ExtGetPort(VX_PORT_HANDLE* handle, VEXAPI_EXT_PORT* record) {
    const Port* const port = PortOf(handle);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    const Tree& tree = *GetTree();
    VEXAPI_EXT_PORT known{};
    known.DeviceLossTimeout = VEXAPI_EXT_UNKNOWN;
    TakeText(port->name, known.KernelName);
    TakeText(LastPart(port->pci.path.empty() ? port->owner : port->pci.path), known.Device);
    TakeAll(tree.Hosts(), port->name, KERNEL_PORT, ON_REQUEST, known);
    // An FCoE port's PCI function is driven by that of a network device.
    TakeText(port->isFcoe ? std::string() : ModuleOf(tree.Hosts(), port->pci), known.Driver);
    if (known.Driver[0] == '\0') {
        Take(tree.Classes(), "scsi_host/" + port->name, DRIVER, known);
        known.Driver[0] = known.Driver == std::string_view(NO_DRIVER) ? '\0' : known.Driver[0];
    }
    return Fill(known, record);
}

VX_UINT32 VEXAPI_ExtGetTarget(VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* record, VEXAPI_EXT_TARGET* filled) {
    const Target* const target = TargetOf(handle, record);
    if (target == nullptr) {
        return INVALID_HANDLE;
    }
    const Tree& tree = *GetTree();
    VEXAPI_EXT_TARGET known{};
    known.DeviceLossTimeout = VEXAPI_EXT_UNKNOWN;
    known.FastFailTimeout = VEXAPI_EXT_UNKNOWN;
    TakeText(target->name.empty() ? target->controller : target->name, known.KernelName);
    if (target->name.empty()) {
        Take(tree.Classes(), "nvme/" + target->controller, KERNEL_CONTROLLER, known);
    } else {
        TakeAll(tree.RemotePorts(), target->name, KERNEL_REMOTE_PORT, ON_REQUEST, known);
    }
    return Fill(known, filled);
}
