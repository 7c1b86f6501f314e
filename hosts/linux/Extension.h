/// @file
/// Common parts of the optional functions.
#pragma once

#include "Session.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace host {

/// Fills the members that the caller's record has.
template <class Record> VX_UINT32 Fill(const Record& known, Record* record) {
    constexpr std::size_t SIZE = sizeof known.Size;
    const std::size_t end = std::clamp<std::size_t>(record->Size, SIZE, sizeof known);
    std::memcpy(reinterpret_cast<char*>(record) + SIZE, reinterpret_cast<const char*>(&known) + SIZE, end - SIZE);
    return OK;
}

/// What a caller names; null if there is no such thing.
inline Port* PortOf(const VX_PORT_HANDLE* handle) {
    return GetTree() == nullptr ? nullptr : GetTree()->FindPort(handle);
}
inline Target* TargetOf(const VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* record) {
    if (Port* const port = PortOf(handle)) {
        for (Target& target : port->targets) {
            if (&target.record == record) {
                return &target;
            }
        }
    }
    return nullptr;
}

} // namespace host
