/// @file
/// A scripted management library: tests set the result of every function, and every call is recorded.
#pragma once

#include "vexapi.h"

#include <cstdlib>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

/// Builds and owns an adapter tree. All records are the interface's own and may be changed at any time: null for a
/// list pointer or head means a missing or empty list.
class HostBuilder {
public:
    HostBuilder() = default;
    HostBuilder(const HostBuilder&) = delete;
    HostBuilder& operator=(const HostBuilder&) = delete;

    /// Appends an adapter with an empty list of physical ports.
    _vexapi_adapter_t& AddAdapter();
    /// Appends a physical port with an empty list of protocols.
    _vexapi_phy_port_t& AddPhyPort(_vexapi_adapter_t& adapter);
    /// Appends an online FC protocol to a physical port. Its WWPN is "21:00:0a:0b:0c:0d:00:NN" and its WWNN
    /// "20:00:0a:0b:0c:0d:00:NN", where NN is its number in the host from 01 on; its handle contains NN.
    _vexapi_protocol_t& AddProtocol(_vexapi_phy_port_t& port);
    /// Adds a physical port with one protocol to the last adapter, or to a new one if there is none.
    _vexapi_protocol_t& AddPort();
    /// Appends a target to the port: its port name is "50:00:0a:0b:0c:0d:PP:TT", where PP is the port's number and
    /// TT the target's from 01 on; its `TargetNumber` is TT - 1.
    _tagVEXAPI_SDMTarget& AddTarget(_vexapi_protocol_t& protocol);
    /// Appends a LUN to the target, numbered from 0 on.
    _tagVEXAPI_SDMLun& AddLun(_tagVEXAPI_SDMTarget& target);

    /// Result of `VEXAPI_GetAdapterList`; null if `hasList` is false.
    VX_ADAPTER_LIST* List() { return hasList ? &mList : nullptr; }
    bool hasList = true;

    /// The protocol whose handle contains this word; null for any other word.
    const _vexapi_protocol_t* ByWord(VX_UINT32 word) const;

private:
    VX_ADAPTER_LIST mList{};
    std::deque<_vexapi_adapter_t> mAdapters;
    std::deque<VX_PHY_PORT_LIST> mPhyPortLists;
    std::deque<_vexapi_phy_port_t> mPhyPorts;
    std::deque<VX_PROTOCOL_LIST> mProtocolLists;
    std::deque<_vexapi_protocol_t> mProtocols;
    std::deque<_tagVEXAPI_SDMTarget> mTargets;
    std::deque<_tagVEXAPI_SDMLun> mLuns;
};

/// Identifier of a port as commands take it: "FC_" and its WWPN.
std::string Id(const _vexapi_protocol_t& protocol);
/// A WWN as text, "xx:xx:...".
std::string WwnOf(const VX_UINT8 (&name)[8]);

/// A copy of the values, to be released with `free`.
template <typename Value> Value* AllocatedCopy(const std::vector<Value>& values) {
    auto* const copy = static_cast<Value*>(std::malloc(values.size() * sizeof(Value) + 1));
    std::copy(values.begin(), values.end(), copy);
    return copy;
}

/// The library of the test program.
///
/// A status set by `Return` or `ReturnInTurn` comes first; a failing one is given without more, and so the outputs
/// stay. Else the function's hook, when there is one, fills the outputs and gives the result. A function without a
/// script refuses the call and leaves its outputs alone, so that a forgotten script never passes for a success. Only
/// the functions that start and end a session succeed unasked, and `VEXAPI_GetAdapterList` gives the tree of `host`.
class FakeLibrary {
public:
    /// What a function without a script gives; a record or a list of the library then tells of a failure too.
    static constexpr VX_UINT32 NO_SCRIPT = 0xFA4E;

    static FakeLibrary& Get();
    /// Clears tree, scripts and recorded calls.
    static void Reset();

    /// `function` is the full name, such as "VEXAPI_GetVpd".
    void Return(const std::string& function, VX_UINT32 status) { mAlways[function] = status; }
    /// The next calls return these statuses; later calls return the regular results.
    void ReturnInTurn(const std::string& function, std::deque<VX_UINT32> statuses) {
        mQueues[function] = std::move(statuses);
    }
    /// The functions, without their prefix, succeed and leave their outputs alone, unless they have hooks.
    void Succeed(std::initializer_list<const char*> functions) {
        for (const char* function : functions) {
            Return(std::string("VEXAPI_") + function, 0);
        }
    }

    HostBuilder host;

    /// Every call in order, as "VEXAPI_FCSetFECSupportInfo(21:00:0a:0b:0c:0d:00:01, 1)": a handle, or a handle's
    /// word, is shown as the WWPN of its port; texts are quoted; a selector is shown as its type and name; all
    /// other pointers are left out. A handle outside the tree is shown as "copy of WWPN".
    std::vector<std::string> calls;
    /// The calls, except those of every run: start, end, tool and adapter list.
    std::vector<std::string> PortCalls() const;

    /// Hooks, named "on" and the function's name without prefix.
    std::function<decltype(VEXAPI_Initialize)> onInitialize;
    std::function<decltype(VEXAPI_SetToolID)> onSetToolID;
    std::function<decltype(VEXAPI_SetToolVersion)> onSetToolVersion;
    std::function<decltype(VEXAPI_Uninitialize)> onUninitialize;
    std::function<decltype(VEXAPI_GetAdapterList)> onGetAdapterList;
    std::function<decltype(VEXAPI_IsRebootRequired)> onIsRebootRequired;
    std::function<decltype(VEXAPI_GetFlashComponentVersion)> onGetFlashComponentVersion;
    std::function<decltype(VEXAPI_GetAdapterFlashMemoBlock)> onGetAdapterFlashMemoBlock;
    std::function<decltype(VEXAPI_doOptionROMUpdate)> ondoOptionROMUpdate;
    std::function<decltype(VEXAPI_UpdateSpecificFlashRegionFromFile)> onUpdateSpecificFlashRegionFromFile;
    std::function<decltype(VEXAPI_UpdateAdapterFirmwareTableFromFile)> onUpdateAdapterFirmwareTableFromFile;
    std::function<decltype(VEXAPI_UpdateAdapterPEPCfgFromFile)> onUpdateAdapterPEPCfgFromFile;
    std::function<decltype(VEXAPI_GetPersonalityType)> onGetPersonalityType;
    std::function<decltype(VEXAPI_ChangePersonalityType)> onChangePersonalityType;
    std::function<decltype(VEXAPI_CheckRowanPersonalityChangeOption)> onCheckRowanPersonalityChangeOption;
    std::function<decltype(VEXAPI_UpdateAdapterNVRAMFromFile)> onUpdateAdapterNVRAMFromFile;
    std::function<decltype(VEXAPI_GetAdapterAsicBoardTemperature)> onGetAdapterAsicBoardTemperature;
    std::function<decltype(VEXAPI_GetLockdownStatus)> onGetLockdownStatus;
    std::function<decltype(VEXAPI_ResetDeviceStats)> onResetDeviceStats;
    std::function<decltype(VEXAPI_GetSFPData)> onGetSFPData;
    std::function<decltype(VEXAPI_SfpModuleFirmwareUpdate)> onSfpModuleFirmwareUpdate;
    std::function<decltype(VEXAPI_GetVpd)> onGetVpd;
    std::function<decltype(VEXAPI_SDGetFwDump2)> onSDGetFwDump2;
    std::function<decltype(VEXAPI_IsMezzAdapter)> onIsMezzAdapter;
    std::function<decltype(VEXAPI_GetAdapterBeaconStatus)> onGetAdapterBeaconStatus;
    std::function<decltype(VEXAPI_UpdateAdapterBeaconStatus)> onUpdateAdapterBeaconStatus;
    std::function<decltype(VEXAPI_GetHBAParamsInfo)> onGetHBAParamsInfo;
    std::function<decltype(VEXAPI_UpdateHBAParameters)> onUpdateHBAParameters;
    std::function<decltype(VEXAPI_RestoreDefaultNVRAM)> onRestoreDefaultNVRAM;
    std::function<decltype(VEXAPI_SaveSingleAdapterNVRAMToFile)> onSaveSingleAdapterNVRAMToFile;
    std::function<decltype(VEXAPI_GetBfsConfigMode)> onGetBfsConfigMode;
    std::function<decltype(VEXAPI_SetBfsConfigMode)> onSetBfsConfigMode;
    std::function<decltype(VEXAPI_GetBootDeviceInfo)> onGetBootDeviceInfo;
    std::function<decltype(VEXAPI_SetBootDeviceInfo)> onSetBootDeviceInfo;
    std::function<decltype(VEXAPI_GetNVMeBootDeviceEntries)> onGetNVMeBootDeviceEntries;
    std::function<decltype(VEXAPI_SetNVMeBootDeviceEntries)> onSetNVMeBootDeviceEntries;
    std::function<decltype(VEXAPI_FCGetBBCSupportInfoEx)> onFCGetBBCSupportInfoEx;
    std::function<decltype(VEXAPI_FCSetBBCSupportInfo)> onFCSetBBCSupportInfo;
    std::function<decltype(VEXAPI_FCGetFECSupportInfo)> onFCGetFECSupportInfo;
    std::function<decltype(VEXAPI_FCSetFECSupportInfo)> onFCSetFECSupportInfo;
    std::function<decltype(VEXAPI_ResetFECCounters)> onResetFECCounters;
    std::function<decltype(VEXAPI_GetFWPrivateStats)> onGetFWPrivateStats;
    std::function<decltype(VEXAPI_IsFWCMFeatureEnabled)> onIsFWCMFeatureEnabled;
    std::function<decltype(VEXAPI_GetSCMRStatisticsList)> onGetSCMRStatisticsList;
    std::function<decltype(VEXAPI_FreeSCMRStatisticsList)> onFreeSCMRStatisticsList;
    std::function<decltype(VEXAPI_SANCongMgmtResetStatistics)> onSANCongMgmtResetStatistics;
    std::function<decltype(VEXAPI_GetSCMRProfile)> onGetSCMRProfile;
    std::function<decltype(VEXAPI_SetSCMRProfile)> onSetSCMRProfile;
    std::function<decltype(VEXAPI_DiagnosticsLoopBackTest)> onDiagnosticsLoopBackTest;
    std::function<decltype(VEXAPI_DiagnosticsReadWriteBufferTest)> onDiagnosticsReadWriteBufferTest;
    std::function<decltype(VEXAPI_FreeRWBufferTestResultList)> onFreeRWBufferTestResultList;
    std::function<decltype(VEXAPI_DiagnosticsFCPingTest)> onDiagnosticsFCPingTest;
    std::function<decltype(VEXAPI_DiagnosticsEchoElsTest)> onDiagnosticsEchoElsTest;
    std::function<decltype(VEXAPI_DiagnosticsCTCommand)> onDiagnosticsCTCommand;
    std::function<decltype(VEXAPI_CheckAdapterDPortOption)> onCheckAdapterDPortOption;
    std::function<decltype(VEXAPI_ConfigureAdapterDPortSettings)> onConfigureAdapterDPortSettings;
    std::function<decltype(VEXAPI_DiagnosticDPortTest)> onDiagnosticDPortTest;
    std::function<decltype(VEXAPI_DiagnosticDPortTestV2)> onDiagnosticDPortTestV2;
    std::function<decltype(VEXAPI_DiagnosticsRDPTest)> onDiagnosticsRDPTest;
    std::function<decltype(VEXAPI_GetTargetLinkSpeed)> onGetTargetLinkSpeed;
    std::function<decltype(VEXAPI_SetTargetLinkSpeed)> onSetTargetLinkSpeed;
    std::function<decltype(VEXAPI_GetPortStatisticsFC)> onGetPortStatisticsFC;

    /// Records a call and determines its result.
    template <typename Result, typename... Arguments>
    Result Answer(const char* name, const std::function<Result(Arguments...)>& hook, const std::string& arguments,
                  std::type_identity_t<Arguments>... values) {
        calls.push_back(std::string(name) + "(" + arguments + ")");
        if constexpr (std::is_integral_v<Result>) {
            const std::optional<VX_UINT32> status = ScriptedStatus(name);
            if (status.has_value() && (*status != 0 || !hook)) {
                return static_cast<Result>(*status);
            }
        }
        if (hook) {
            return hook(values...);
        }
        return SucceedsUnasked(name) ? Result{} : Refusal<Result>();
    }

private:
    std::optional<VX_UINT32> ScriptedStatus(const std::string& function);
    static bool SucceedsUnasked(const std::string& function);
    template <typename Result> static Result Refusal() {
        Result refusal{}; // no list, no boot mode, no word of success
        if constexpr (std::is_same_v<Result, VX_UINT32>) {
            refusal = NO_SCRIPT;
        } else if constexpr (std::is_same_v<Result, _VEXAPI_DiagnosticsDPortResult>) {
            refusal.Mbx1 = 0x4005; // the mailbox command failed
        }
        return refusal;
    }

    std::map<std::string, VX_UINT32> mAlways;
    std::map<std::string, std::deque<VX_UINT32>> mQueues;
};
