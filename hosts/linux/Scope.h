/// @file
/// What the caller of the library is going to read.
#pragma once

#include "Api.h"

#include <cstdint>
#include <optional>

namespace host {

/// The parts of the interface, by shorter names.
enum Part : VX_UINT32 {
    ADAPTERS = VEXAPI_EXT_ADAPTERS,
    PORTS = VEXAPI_EXT_PORTS,
    PORT_DETAILS = VEXAPI_EXT_PORT_DETAILS,
    PORT_COUNTERS = VEXAPI_EXT_PORT_COUNTERS,
    TARGETS = VEXAPI_EXT_TARGETS,
    TARGET_DETAILS = VEXAPI_EXT_TARGET_DETAILS,
    LUNS = VEXAPI_EXT_LUNS,
    LUN_DETAILS = VEXAPI_EXT_LUN_DETAILS,
    ON_REQUEST = 0x80000000, ///< by an optional function, whatever the scope
};

/// Parts of the host, and the names to which they are limited.
struct Scope {
    VX_UINT32 parts = VEXAPI_EXT_EVERYTHING;
    std::optional<std::uint64_t> port;
    std::optional<std::uint64_t> target;
    std::optional<VX_UINT16> lun;

    /// The parts among `some`.
    VX_UINT32 Of(VX_UINT32 some) const { return parts & some; }
};

/// The scope of the next session.
const Scope& NextScope();

/// Whether a limit, if there is one, names a value.
template <class Value> bool Names(const std::optional<Value>& limit, Value value) {
    return !limit || *limit == value;
}

} // namespace host
