/// @file
/// Reads a host from the library.
#pragma once

#include "Host.h"
#include "Library.h"

#include <functional>
#include <set>

namespace orfc {

/// What to read beyond adapters and ports with their names.
struct Wanted {
    bool portDetails = false;
    bool counters = false; ///< of ports and targets
    bool targets = false;
    bool luns = false;
    bool transceivers = false;
    bool modulesOfDownPorts = false; ///< transceivers of ports that are offline, with details of ports
    bool settings = false;           ///< of ports
    bool vpd = false;                ///< keywords of adapters
    bool farEnds = false;            ///< of ports that are online, which takes a frame to each
    std::set<Wwn> ports = {};        ///< counters, transceivers, settings and keywords of these only; empty: of all

    friend Wanted operator|(const Wanted& left, const Wanted& right);
};

/// The library's scope for that.
VEXAPI_EXT_SCOPE ScopeOf(const Wanted& wanted);

/// Reads the host. What can't be read is left out and told in the host's messages. Throws `Failure` where the library
/// shows no host at all.
///
/// `onPort(identifier)` is called before a port is read.
Host ReadHost(Session& session, const Wanted& wanted, const std::function<void(const std::string&)>& onPort = {});

/// Handle of the port with this name, for functions that take one. Throws `Failure` where it has gone.
VX_PORT_HANDLE* FindPort(Session& session, Wwn portName);

/// Status of functions that the driver doesn't have.
inline constexpr VX_UINT32 NOT_SUPPORTED = 118;

} // namespace orfc
