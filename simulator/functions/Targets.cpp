/// @file
/// Link speed and statistics of targets.
#include "caller/Call.h"

#include <algorithm>

using namespace sim;

namespace {

/// Link speeds as codes of `PortSpeed`.
constexpr std::initializer_list<std::uint64_t> SPEED_CODES = {1, 2, 4, 8, 16, 22, 50, 100};

Target& TargetOf(Port& port, VX_UINT16 number) {
    const auto found = std::find_if(port.targets.begin(), port.targets.end(),
                                    [&](const Target& target) { return target.record.TargetNumber == number; });
    if (found == port.targets.end()) {
        throw Failure{STATUS_NO_SUCH_TARGET, "the port has no target " + std::to_string(number)};
    }
    return *found;
}

} // namespace

VX_UINT32 VEXAPI_GetTargetLinkSpeed(VX_PORT_HANDLE* handle, VX_UINT16 targetNumber, VX_UINT32* speed) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.NoteArgument("targetNumber", targetNumber);
        call.CheckPointer(speed, "speed");
        call.Begin();
        *speed = TargetOf(port, targetNumber).linkSpeed;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_SetTargetLinkSpeed(VX_PORT_HANDLE* handle, VX_UINT16 targetNumber, VX_UINT32 speed) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.NoteArgument("targetNumber", targetNumber);
        call.CheckFixed("speed", speed, SPEED_CODES);
        call.Begin();
        Target& target = TargetOf(port, targetNumber);
        call.ChangeHost([&](Change& change) {
            change.Touch(port, "LinkSpeeds");
            target.linkSpeed = speed;
        });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_GetPortStatisticsFC(VX_UINT32 word, VX_UINT32 reserved, VX_PORT_SELECTOR* selector,
                                     __STATISTICS* statistics) {
    return Answer(__func__, [&](Call& call) {
        constexpr VX_UINT16 BY_PORT_NAME = 2;
        Port& port = call.GetPort(word);
        call.CheckFixed("reserved", reserved, {0});
        call.NoteRecord("selector", selector);
        call.CheckFixed("SelectorType", selector->SelectorType, {BY_PORT_NAME});
        call.CheckCleared(statistics, "statistics");
        call.Begin();
        const Target* target = FindTarget(port, selector->PortName);
        if (target == nullptr) {
            throw Failure{STATUS_NO_SUCH_TARGET, "the port sees no such target"};
        }
        *statistics = target->statistics;
        return STATUS_OK;
    });
}
