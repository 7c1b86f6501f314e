/// @file
/// Echo frames to remote ports.
#pragma once

#include "Host.h"
#include "Library.h"

#include <chrono>
#include <functional>
#include <limits>

namespace orfc {

/// What came of the frames to one remote port. Times are in milliseconds, by this program's clock.
struct PingResult {
    std::string port; ///< identifier
    Wwn remoteName = 0;
    std::string remotePort; ///< the kernel's name
    unsigned long sent = 0;
    unsigned long received = 0;
    double least = std::numeric_limits<double>::infinity();
    double most = 0;
    double sum = 0;
    std::string lastStatus; ///< of the last frame that was lost, in the library's words

    double LossPercent() const {
        return sent == 0 ? 0 : 100 * static_cast<double>(sent - received) / static_cast<double>(sent);
    }
};

/// Remote ports to ping, each over a port.
struct PingPlan {
    struct Remote {
        const Port* port;
        Wwn name;
        std::string kernelName;
        bool isFabric; ///< a port of the fabric, not a remote port of this host
    };
    std::vector<Remote> remotes;
    unsigned long count;                    ///< of frames to each
    std::chrono::duration<double> interval; ///< between two frames to the same
};

/// Sends a frame to each in turn until all have had their number or `isInterrupted()`. `onFrame` is called before and
/// after each, with its remote port's result so far.
std::vector<PingResult> Ping(Session& session, const PingPlan& plan, const std::function<bool()>& isInterrupted,
                             const std::function<void(const PingResult&)>& onFrame);

} // namespace orfc
