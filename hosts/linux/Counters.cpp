/// @file
/// Optional function: the counters of a port or target by the kernel's names.
#include "Attributes.h"
#include "Extension.h"

using namespace host;

namespace {

/// More than any driver has.
constexpr std::size_t MAX_COUNTERS = 1024;

/// The counters of an entry, sorted by name. What isn't counted, or has a name that doesn't fit, is left out.
std::vector<VEXAPI_EXT_COUNTER> ReadCounters(const Folder& folder, const std::string& entry) {
    std::vector<VEXAPI_EXT_COUNTER> counters;
    const std::string statistics = entry + "/statistics";
    std::vector<std::string> names = folder.Names(statistics.c_str());
    std::sort(names.begin(), names.end());
    names.resize(std::min(names.size(), MAX_COUNTERS));
    for (const std::string& name : names) {
        VEXAPI_EXT_COUNTER counter{};
        if (name == RESET_STATISTICS || name.size() >= sizeof counter.Name) {
            continue;
        }
        const Attribute<std::optional<std::uint64_t>> attribute = {
            name.c_str(), "number", ON_REQUEST, [](Text text, auto& value) { return TakeNumber(text, value); }};
        std::optional<std::uint64_t> value;
        if (Take(folder, statistics, attribute, value) && value) {
            TakeText(name, counter.Name);
            counter.Value = *value;
            counters.push_back(counter);
        }
    }
    return counters;
}

} // namespace

VX_UINT32 VEXAPI_ExtGetCounters(VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* record,
                                VEXAPI_EXT_COUNTER* counters, VX_UINT32* count) {
    const Port* const port = PortOf(handle);
    const Target* const target = TargetOf(handle, record);
    if (port == nullptr || (record != nullptr && target == nullptr)) {
        return INVALID_HANDLE;
    }
    std::vector<VEXAPI_EXT_COUNTER> found;
    if (target == nullptr) {
        found = ReadCounters(GetTree()->Hosts(), port->name);
    } else if (!target->name.empty()) {
        found = ReadCounters(GetTree()->RemotePorts(), target->name);
    }
    std::copy_n(found.begin(), std::min<std::size_t>(*count, found.size()), counters);
    *count = static_cast<VX_UINT32>(found.size());
    return OK;
}
