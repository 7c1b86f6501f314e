#include "Ping.h"

#include "ReadHost.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <thread>

namespace orfc {

namespace {

using Clock = std::chrono::steady_clock;

/// Kinds of destination of an echo frame.
constexpr VX_UINT32 TO_REMOTE_PORT = 2;
constexpr VX_UINT32 TO_FABRIC = 3;

/// A signal doesn't end a sleep of the standard library.
void SleepUntil(Clock::time_point time, const std::function<bool()>& isInterrupted) {
    constexpr std::chrono::milliseconds PERIOD(50);
    while (Clock::now() < time && !isInterrupted()) {
        std::this_thread::sleep_until(std::min(time, Clock::now() + PERIOD));
    }
}

void SendFrame(Session& session, VX_PORT_HANDLE* handle, const PingPlan::Remote& remote, PingResult& result) {
    _VEXAPI_ECHO_RESULTS echo{};
    const Clock::time_point begin = Clock::now();
    const VX_UINT32 status = session->VEXAPI_DiagnosticsEchoElsTest(
        handle, WwnText(remote.name).c_str(), 1, 0, remote.isFabric ? TO_FABRIC : TO_REMOTE_PORT, &echo);
    const double time = std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
    ++result.sent;
    if (status == 0 && echo.EchoFailed == 0) {
        ++result.received;
        result.least = std::min(result.least, time);
        result.most = std::max(result.most, time);
        result.sum += time;
        return;
    }
    result.lastStatus.assign(echo.EchoStatus, strnlen(echo.EchoStatus, sizeof echo.EchoStatus));
    if (result.lastStatus.empty()) {
        char text[24];
        std::snprintf(text, sizeof text, "status %u", status);
        result.lastStatus = status == NOT_SUPPORTED ? "not supported" : text;
    }
}

} // namespace

std::vector<PingResult> Ping(Session& session, const PingPlan& plan, const std::function<bool()>& isInterrupted,
                             const std::function<void(const PingResult&)>& onFrame) {
    std::vector<PingResult> results;
    std::vector<VX_PORT_HANDLE*> handles;
    for (const PingPlan::Remote& remote : plan.remotes) {
        PingResult& result = results.emplace_back();
        result.port = remote.port->identifier;
        result.remoteName = remote.name;
        result.remotePort = remote.kernelName;
        handles.push_back(FindPort(session, remote.port->portName));
    }
    Clock::time_point next = Clock::now();
    for (unsigned long frame = 0; frame < plan.count && !isInterrupted(); ++frame) {
        if (frame != 0) {
            next += std::chrono::duration_cast<Clock::duration>(plan.interval);
            SleepUntil(next, isInterrupted);
        }
        for (std::size_t at = 0; at < results.size() && !isInterrupted(); ++at) {
            onFrame(results[at]);
            SendFrame(session, handles[at], plan.remotes[at], results[at]);
            onFrame(results[at]);
        }
    }
    return results;
}

} // namespace orfc
