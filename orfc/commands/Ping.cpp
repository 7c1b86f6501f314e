/// Echo frames to remote ports, with what came back.
#include "Ping.h"

#include "Command.h"

#include <csignal>

namespace orfc {

namespace {

volatile std::sig_atomic_t s_isInterrupted = 0;

Value TimeValue(const PingResult& result, double milliseconds) {
    return result.received != 0 ? Value(Decimal{milliseconds, 3}) : Value();
}

// clang-format off
constexpr ColumnOf<PingResult> PING[] = {
    {{"port", "PORT", Type::TEXT, Place::HEADING, "Ping", "Identifier of the port"}, [](const PingResult& r) { return TextValue(r.port); }},
    {{"remote_port_name", "REMOTE NAME", Type::TEXT, Place::ALWAYS, "Ping", "Worldwide name of the remote port"}, [](const PingResult& r) { return TextValue(WwnText(r.remoteName)); }},
    {{"remote_port", "REMOTE PORT", Type::TEXT, Place::TABLE, "Ping", "The kernel's name of the remote port"}, [](const PingResult& r) { return TextValue(r.remotePort); }},
    {{"sent", "SENT", Type::INTEGER, Place::ALWAYS, "Ping", "Frames that were sent"}, [](const PingResult& r) { return Value(std::uint64_t{r.sent}); }},
    {{"received", "RECEIVED", Type::INTEGER, Place::ALWAYS, "Ping", "Frames that came back as they were sent"}, [](const PingResult& r) { return Value(std::uint64_t{r.received}); }},
    {{"lost_percent", "LOST %", Type::DECIMAL, Place::ALWAYS, "Ping", "Share of the frames that didn't"}, [](const PingResult& r) { return Value(Decimal{r.LossPercent(), 1}); }},
    {{"minimum_milliseconds", "MIN ms", Type::DECIMAL, Place::TABLE, "Ping", "Shortest time until an answer"}, [](const PingResult& r) { return TimeValue(r, r.least); }},
    {{"mean_milliseconds", "MEAN ms", Type::DECIMAL, Place::TABLE, "Ping", "Mean time"}, [](const PingResult& r) { return TimeValue(r, r.sum / static_cast<double>(r.received)); }},
    {{"maximum_milliseconds", "MAX ms", Type::DECIMAL, Place::TABLE, "Ping", "Longest time"}, [](const PingResult& r) { return TimeValue(r, r.most); }},
    {{"last_failure", "LAST FAILURE", Type::TEXT, Place::TABLE, "Ping", "Why the last frame was lost that was"}, [](const PingResult& r) { return TextValue(r.lastStatus); }},
};
// clang-format on

/// A worldwide name that is no target's, such as an initiator's or the fabric's; 0 for other texts.
Wwn WwnOf(std::string_view text) {
    Wwn name = 0;
    int digits = 0;
    for (const char c : text.substr(text.starts_with("0x") ? 2 : 0)) {
        if (c != ':') {
            const int digit = c >= '0' && c <= '9'   ? c - '0'
                              : c >= 'a' && c <= 'f' ? c - 'a' + 10
                              : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                     : -1;
            if (digit < 0 || ++digits > 16) {
                return 0;
            }
            name = name << 4 | static_cast<Wwn>(digit);
        }
    }
    return digits == 16 ? name : 0;
}

PingPlan PlanOf(const Request& request) {
    const Selection found = Find(request.host, request.names.front());
    const Selection selection = WithRelatives(request.host, found);
    if (selection.ports.size() != 1) {
        throw Failure(request.names.front() + " is no single port");
    }
    const Port* const port = *selection.ports.begin();
    PingPlan plan{{}, request.count != 0 ? request.count : 5, std::chrono::duration<double>(request.interval)};
    const auto add = [&](const Target& target) {
        const bool isKnown = std::any_of(plan.remotes.begin(), plan.remotes.end(),
                                         [&](const auto& remote) { return remote.name == target.portName; });
        if (target.port == port && !isKnown) { // a remote port may be several targets
            plan.remotes.push_back({port, target.portName, target.kernelName, false});
        }
    };
    for (std::size_t at = 1; at < request.names.size(); ++at) {
        const Wwn name = WwnOf(request.names[at]);
        const std::size_t before = plan.remotes.size();
        for (const Target& target : request.host.targets) {
            if (target.portName == name) {
                add(target);
            }
        }
        if (plan.remotes.size() == before && name != 0) {
            plan.remotes.push_back({port, name, "", name == port->fabricName || name == port->switchName});
        } else if (name == 0) {
            const Selection remote = WithRelatives(request.host, Find(request.host, request.names[at]));
            std::for_each(remote.targets.begin(), remote.targets.end(), [&](const Target* target) { add(*target); });
        }
    }
    if (request.names.size() == 1) {
        const bool isOneTarget = !found.targets.empty() || !found.luns.empty();
        for (const Target& target : request.host.targets) {
            if (!isOneTarget || selection.targets.contains(&target)) {
                add(target);
            }
        }
    }
    if (plan.remotes.empty()) {
        throw Failure(port->identifier + ": sees no such remote port");
    }
    return plan;
}

} // namespace

Shown ShowPing(const Request& request) {
    std::vector<PingResult> results;
    if (request.session != nullptr) { // else only the columns are wanted
        const PingPlan plan = PlanOf(request);
        // The first interrupt ends the run with what is known so far, the second one ends the program.
        struct sigaction once {};
        once.sa_handler = [](int) { s_isInterrupted = 1; };
        once.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(SIGINT, &once, nullptr);
        results = Ping(
            *request.session, plan, [] { return s_isInterrupted != 0; },
            [&](const PingResult& result) {
                if (request.onProgress) {
                    request.onProgress("pinging " + WwnText(result.remoteName) + ": " +
                                       std::to_string(result.received) + " of " + std::to_string(result.sent) +
                                       " answered");
                }
            });
        for (const PingResult& result : results) {
            if (result.received < result.sent) {
                request.messages->push_back(result.port + ": " + WwnText(result.remoteName) + ": " +
                                            std::to_string(result.sent - result.received) + " of " +
                                            std::to_string(result.sent) + " frames lost: " + result.lastStatus);
            }
        }
    }
    Shown shown;
    shown.AddRows<PingResult>("ping", PING, std::move(results));
    return shown;
}

} // namespace orfc
