/// @file
/// Link speed and statistics of targets.
#include "caller/Call.h"

#include <algorithm>

using namespace sim;

namespace {

/// Codes of link speeds, as in `PortSpeed`.
constexpr std::initializer_list<std::uint64_t> speedCodes = {1, 2, 4, 8, 16, 22, 50, 100};

Target& targetOf(Port& port, VX_UINT16 number) {
    const auto found = std::find_if(port.targets.begin(), port.targets.end(),
                                    [&](const Target& target) { return target.record.TargetNumber == number; });
    if (found == port.targets.end()) {
        throw Failure{statusNoSuchTarget, "the port has no target " + std::to_string(number)};
    }
    return *found;
}

} // namespace

VX_UINT32 VEXAPI_GetTargetLinkSpeed(VX_PORT_HANDLE* handle, VX_UINT16 targetNumber, VX_UINT32* speed) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.argument("targetNumber", targetNumber);
        call.pointer(speed, "speed");
        call.begin();
        *speed = targetOf(port, targetNumber).linkSpeed;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_SetTargetLinkSpeed(VX_PORT_HANDLE* handle, VX_UINT16 targetNumber, VX_UINT32 speed) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.argument("targetNumber", targetNumber);
        call.fixed("speed", speed, speedCodes);
        call.begin();
        Target& target = targetOf(port, targetNumber);
        call.change([&](Change& change) {
            change.touch(port, "LinkSpeeds");
            target.linkSpeed = speed;
        });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_GetPortStatisticsFC(VX_UINT32 word, VX_UINT32 reserved, VX_PORT_SELECTOR* selector,
                                     __STATISTICS* statistics) {
    return answer(__func__, [&](Call& call) {
        constexpr VX_UINT16 byPortName = 2;
        Port& port = call.port(word);
        call.fixed("reserved", reserved, {0});
        call.record("selector", selector);
        call.fixed("SelectorType", selector->SelectorType, {byPortName});
        call.cleared(statistics, "statistics");
        call.begin();
        const Target* target = findTarget(port, selector->PortName);
        if (target == nullptr) {
            throw Failure{statusNoSuchTarget, "the port sees no such target"};
        }
        *statistics = target->statistics;
        return statusOk;
    });
}
