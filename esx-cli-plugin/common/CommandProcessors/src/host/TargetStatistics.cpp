#include "TargetStatistics.h"

#include "HostTree.h"
#include "LibraryCall.h"

#include <algorithm>

ResultCode ReadTargetStatistics(const TargetEntry& entry, __STATISTICS& counters) {
    constexpr VX_UINT16 SELECT_BY_PORT_NAME = 2;
    VX_PORT_SELECTOR selector{};
    selector.SelectorType = SELECT_BY_PORT_NAME;
    std::copy_n(entry.target->PortName, sizeof selector.PortName, selector.PortName);
    counters = {};
    return CallLibrary({"VEXAPI_GetPortStatisticsFC", "", "Get Port Stats FC failed", RC_STATS_READ_FAILED}, [&] {
        return VEXAPI_GetPortStatisticsFC(HandleWord(entry.protocol->PortHandle), 0, &selector, &counters);
    });
}
