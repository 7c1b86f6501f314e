#include "caller/Functions.h"

#include "functions.h"

#include <algorithm>

namespace sim {
namespace {

#define SIM_NAME(function) #function,
constexpr std::string_view NAMES[] = {VEXAPI_FUNCTIONS(SIM_NAME) VEXAPI_EXTENSIONS(SIM_NAME)};

constexpr std::string_view POINTER_GIVERS[] = {
    "VEXAPI_GetAdapterList",
    "VEXAPI_SDGetFwDump2",
    "VEXAPI_GetFWPrivateStats",
    "VEXAPI_GetSCMRStatisticsList",
    "VEXAPI_DiagnosticsReadWriteBufferTest",
};

constexpr std::string_view SILENT[] = {
    "VEXAPI_GetAdapterList",     "VEXAPI_Uninitialize",          "VEXAPI_IsRebootRequired",
    "VEXAPI_GetPersonalityType", "VEXAPI_ChangePersonalityType", "VEXAPI_CheckRowanPersonalityChangeOption",
};

bool IsAmong(std::span<const std::string_view> some, std::size_t function) {
    return function < std::size(NAMES) && std::find(some.begin(), some.end(), NAMES[function]) != some.end();
}

} // namespace

std::span<const std::string_view> FunctionNames() {
    return NAMES;
}

std::size_t FunctionIndex(std::string_view name) {
    return static_cast<std::size_t>(std::find(std::begin(NAMES), std::end(NAMES), name) - std::begin(NAMES));
}

bool GivesPointer(std::size_t function) {
    return IsAmong(POINTER_GIVERS, function);
}

bool IsSilent(std::size_t function) {
    return IsAmong(SILENT, function);
}

} // namespace sim
