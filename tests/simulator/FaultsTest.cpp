// Fault injection, the journal, output of the library, and calls outside of a session.
#include "AllCalls.h"

#include <algorithm>
#include <cstdlib>
#include <set>

namespace {

const std::set<std::string> SILENT_FUNCTIONS = {
    "VEXAPI_GetAdapterList",     "VEXAPI_Uninitialize",          "VEXAPI_IsRebootRequired",
    "VEXAPI_GetPersonalityType", "VEXAPI_ChangePersonalityType", "VEXAPI_CheckRowanPersonalityChangeOption"};

class Faults : public Simulated {
protected:
    Faults() {
        Describe(SmallHost());
        EXPECT_EQ(Start(), 0U);
    }
    CallArguments Arguments() const { return {Handle(), Word(), Path("."), Port()->pTargetList}; }
    static void Demand(const std::string& faults) { setenv("VEXAPI_SIM_FAULTS", faults.c_str(), 1); }
};

TEST_F(Faults, CallsCoverAllFunctionsButTheTwoOfTheSession) {
    EXPECT_EQ(AllCalls().size(), 62U + 6 - 2);
}

TEST_F(Faults, EveryFunctionFailsOnDemand) {
    const CallArguments with = Arguments();
    for (const NamedCall& call : AllCalls()) {
        Demand(std::string(call.name) + "=0x61");
        const VX_UINT32 result = call.call(with);
        switch (call.result) {
        case NamedCall::Result::STATUS:
        case NamedCall::Result::VALUE:
            EXPECT_EQ(result, 0x61U) << call.name;
            break;
        case NamedCall::Result::POINTER:
        case NamedCall::Result::RECORD:
            EXPECT_EQ(result, 1U) << call.name;
            break;
        }
        const Json line = LastCall();
        EXPECT_EQ(line["function"], call.name);
        EXPECT_EQ(line["status"], 0x61);
        EXPECT_TRUE(line.contains("demanded")) << call.name;
    }
}

TEST_F(Faults, RecordsTellADemandedStatus) {
    Demand("VEXAPI_DiagnosticsLoopBackTest=0x61,VEXAPI_DiagnosticsReadWriteBufferTest=0x61,"
           "VEXAPI_DiagnosticDPortTest=21");
    DiagTestParams parameters{};
    EXPECT_STREQ(VEXAPI_DiagnosticsLoopBackTest(Handle(), &parameters).TestStatus, "Failed, status 0x61");
    auto* list = VEXAPI_DiagnosticsReadWriteBufferTest(Handle(), &parameters);
    ASSERT_NE(list, nullptr);
    EXPECT_STREQ(list->TestStatus, "Failed, status 0x61");
    EXPECT_EQ(VEXAPI_FreeRWBufferTestResultList(list), 0U);
    _VEXAPI_DiagnosticsDPortResult in{};
    const auto result = VEXAPI_DiagnosticDPortTest(Handle(), &in);
    EXPECT_EQ(result.Mbx1, 0x4005);
    EXPECT_EQ(result.Mbx2, 21);
}

TEST_F(Faults, StartAndEndFailOnDemand) {
    End();
    Demand("VEXAPI_Initialize=7");
    EXPECT_EQ(Start(), 7U);
    EXPECT_EQ(VEXAPI_GetAdapterList(), nullptr);
    Demand("VEXAPI_Uninitialize=8");
    EXPECT_EQ(Start(), 0U);
    EXPECT_EQ(VEXAPI_Uninitialize(), 8U);
}

TEST_F(Faults, OnlyTheNthCall) {
    Demand("VEXAPI_ResetDeviceStats@2=5,VEXAPI_ResetDeviceStats@4=6");
    std::vector<VX_UINT32> statuses;
    for (int i = 0; i < 5; ++i) {
        statuses.push_back(VEXAPI_ResetDeviceStats(Handle()));
    }
    EXPECT_EQ(statuses, (std::vector<VX_UINT32>{0, 5, 0, 6, 0}));
}

TEST_F(Faults, TheNthCallBeatsAllCallsAndSpaceForSeveral) {
    Demand("VEXAPI_ResetFECCounters@2=0x10,VEXAPI_ResetDeviceStats=4,VEXAPI_ResetDeviceStats@1=9");
    EXPECT_EQ(VEXAPI_ResetDeviceStats(Handle()), 9U);
    EXPECT_EQ(VEXAPI_ResetDeviceStats(Handle()), 4U);
    EXPECT_EQ(VEXAPI_ResetFECCounters(Handle()), 0U);
    EXPECT_EQ(VEXAPI_ResetFECCounters(Handle()), 16U);
}

TEST_F(Faults, CallsAreCountedThroughSessions) {
    Demand("VEXAPI_ResetDeviceStats@2=5");
    EXPECT_EQ(VEXAPI_ResetDeviceStats(Handle()), 0U);
    Restart();
    EXPECT_EQ(VEXAPI_ResetDeviceStats(Handle()), 5U);
}

TEST_F(Faults, AFailingCallChangesNothing) {
    Demand("VEXAPI_UpdateAdapterBeaconStatus=5");
    EXPECT_EQ(VEXAPI_UpdateAdapterBeaconStatus(Handle(), 1), 5U);
    VEXAPI_BEACON_TYPE state = 7;
    EXPECT_EQ(VEXAPI_GetAdapterBeaconStatus(Handle(), &state), 0U);
    EXPECT_EQ(state, 0U);
}

TEST_F(Faults, StatusZeroSucceedsWithNothingDone) {
    Demand("VEXAPI_GetAdapterBeaconStatus=0");
    VEXAPI_BEACON_TYPE state = 7;
    EXPECT_EQ(VEXAPI_GetAdapterBeaconStatus(Handle(), &state), 0U);
    EXPECT_EQ(state, 7U);
}

TEST_F(Faults, StatusesOfOnePort) {
    End();
    Json host = SmallHost();
    PortOf(host)["Statuses"] = {{"VEXAPI_GetSFPData", 17}};
    Describe(host);
    ASSERT_EQ(Start(), 0U);
    _VEXAPI_SFP_DATA data{};
    EXPECT_EQ(VEXAPI_GetSFPData(Handle(0), &data), 17U);
    EXPECT_EQ(VEXAPI_GetSFPData(Handle(1), &data), 0U);
}

TEST_F(Faults, NullPointers) {
    const auto tool = Arguments();
    Demand("VEXAPI_GetAdapterList=null");
    EXPECT_EQ(VEXAPI_GetAdapterList(), nullptr);
    Demand("VEXAPI_GetAdapterList=nullhead");
    const VX_ADAPTER_LIST* headless = VEXAPI_GetAdapterList();
    ASSERT_NE(headless, nullptr);
    EXPECT_EQ(headless->pHead, nullptr);
    Demand("VEXAPI_SDGetFwDump2=null,VEXAPI_GetFWPrivateStats=null,VEXAPI_GetSCMRStatisticsList=null,"
           "VEXAPI_DiagnosticsReadWriteBufferTest=null");
    void* dump = nullptr;
    VX_UINT32 size = 0;
    EXPECT_EQ(VEXAPI_SDGetFwDump2(tool.word, 0, &dump, &size), 0U);
    EXPECT_EQ(dump, nullptr);
    EXPECT_GT(size, 0U);
    auto* entries = reinterpret_cast<_VEXAPI_FWPRIVATESTATSEntry*>(&size);
    VX_UINT32 count = 0;
    EXPECT_EQ(VEXAPI_GetFWPrivateStats(tool.handle, &entries, &count), 0U);
    EXPECT_EQ(entries, nullptr);
    EXPECT_EQ(count, 1U);
    auto* list = reinterpret_cast<_VEXAPI_SANCONGTMGMTV2*>(&size);
    EXPECT_EQ(VEXAPI_GetSCMRStatisticsList(tool.handle, &list), 0U);
    EXPECT_EQ(list, nullptr);
    DiagTestParams parameters{};
    EXPECT_EQ(VEXAPI_DiagnosticsReadWriteBufferTest(tool.handle, &parameters), nullptr);
}

struct BadList {
    const char* name;
    const char* faults;
    const char* reason;
};

class RefusedFaults : public Simulated, public testing::WithParamInterface<BadList> {};

TEST_P(RefusedFaults, StopsEverythingLoudly) {
    Describe(SmallHost());
    setenv("VEXAPI_SIM_FAULTS", GetParam().faults, 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(Start(), REFUSED);
    EXPECT_NE(testing::internal::GetCapturedStderr().find(GetParam().reason), std::string::npos);
    EXPECT_NE(output.find(GetParam().reason), std::string::npos) << output;
    EXPECT_EQ(VEXAPI_GetAdapterList(), nullptr);
    EXPECT_EQ(VEXAPI_SetToolID(11), REFUSED);
}

INSTANTIATE_TEST_SUITE_P(
    Lists, RefusedFaults,
    testing::Values(BadList{"UnknownName", "VEXAPI_GetSfpData=1", "is no function of the library"},
                    BadList{"NoEquals", "VEXAPI_GetSFPData", "is not NAME=STATUS"},
                    BadList{"NoStatus", "VEXAPI_GetSFPData=", "neither a 32-bit number"},
                    BadList{"StatusTooLarge", "VEXAPI_GetSFPData=0x100000000", "neither a 32-bit number"},
                    BadList{"StatusNegative", "VEXAPI_GetSFPData=-1", "neither a 32-bit number"},
                    BadList{"NoCallNumber", "VEXAPI_GetSFPData@=1", "counted from 1"},
                    BadList{"CallNumberZero", "VEXAPI_GetSFPData@0=1", "counted from 1"},
                    BadList{"NullOfAFunctionWithoutPointer", "VEXAPI_GetSFPData=null", "hands out no pointer"},
                    BadList{"NullHeadElsewhere", "VEXAPI_SDGetFwDump2=nullhead", "only VEXAPI_GetAdapterList"},
                    BadList{"EmptyItem", "VEXAPI_GetSFPData=1,,VEXAPI_GetVpd=1", "is not NAME=STATUS"}),
    [](const auto& chosen) { return chosen.param.name; });

TEST_F(Faults, EveryCallLeavesOneLineInTheJournal) {
    const CallArguments with = Arguments();
    for (const NamedCall& call : AllCalls()) {
        Forget();
        call.call(with);
        const std::vector<Json> lines = Journal();
        const auto own =
            std::count_if(lines.begin(), lines.end(), [&](const Json& line) { return line["function"] == call.name; });
        EXPECT_EQ(own, 1) << call.name;
        EXPECT_FALSE(lines.back().contains("mistake")) << lines.back();
    }
}

TEST_F(Faults, JournalLinesTellPortArgumentsAndRecords) {
    EXPECT_EQ(VEXAPI_FCSetBBCSupportInfo(Handle(), 1, 9), 0U);
    Json line = LastCall();
    EXPECT_EQ(line["port"], "21:00:00:24:ff:01:02:03");
    EXPECT_EQ(line["arguments"], Json::parse(R"({"status": 1, "configured": 9})"));
    EXPECT_EQ(line["status"], 0);

    _VEXAPI_SCMRProfile profile{0, 1, 3, {9, 8, 7}};
    EXPECT_EQ(VEXAPI_SetSCMRProfile(Handle(), &profile), 0U);
    line = LastCall();
    EXPECT_EQ(line["records"]["profile"], Json::parse(R"({"Disabled": 0, "ControlFlag": 1, "Profile": 3,
        "Reserved": "09:08:07:00:00:00:00:00:00:00:00:00:00"})"));
}

TEST_F(Faults, JournalKeepsTextsThatAreNoUtf8) {
    EXPECT_EQ(VEXAPI_UpdateAdapterNVRAMFromFile(Handle(), "/\xff\xfe"), 3U);
    EXPECT_EQ(LastCall()["function"], "VEXAPI_UpdateAdapterNVRAMFromFile");
}

TEST_F(Faults, AllCallsChatterButThoseThatCallersMakeOpenly) {
    const CallArguments with = Arguments();
    for (const NamedCall& call : AllCalls()) {
        const std::string printed = OutputOf([&] { call.call(with); });
        EXPECT_EQ(printed.empty(), SILENT_FUNCTIONS.contains(call.name)) << call.name << ": " << printed;
    }
    EXPECT_EQ(OutputOf([] { VEXAPI_Uninitialize(); }), "");
    EXPECT_EQ(Start(), 0U);
    EXPECT_NE(output, "");
}

TEST_F(Faults, MistakesAndDemandedFailuresOfSilentFunctionsAreSilentToo) {
    EXPECT_EQ(OutputOf([] { VEXAPI_IsRebootRequired(nullptr); }), "");
    Demand("VEXAPI_GetAdapterList=1,VEXAPI_ChangePersonalityType=1");
    VX_PORT_HANDLE none{};
    EXPECT_EQ(OutputOf([&] {
                  VEXAPI_GetAdapterList();
                  VEXAPI_ChangePersonalityType(&none, 1);
              }),
              "");
}

TEST_F(Faults, TheHighDebugLevelTellsMore) {
    const std::size_t quiet = output.size() + OutputOf([] { VEXAPI_SetToolID(11); }).size();
    End();
    EXPECT_EQ(Start(31), 0U);
    EXPECT_GT(output.size() + OutputOf([] { VEXAPI_SetToolID(11); }).size(), quiet);
}

TEST_F(Faults, OutsideASessionEveryCallIsAMistake) {
    CallArguments with = Arguments();
    VX_PORT_HANDLE kept = *with.handle;
    with.handle = &kept;
    with.target = nullptr;
    End();
    for (const NamedCall& call : AllCalls()) {
        const VX_UINT32 result = call.call(with);
        EXPECT_EQ(LastCall().contains("mistake"), !call.anytime) << call.name;
        if (call.anytime) {
            EXPECT_EQ(result, 0U) << call.name;
            continue;
        }
        switch (call.result) {
        case NamedCall::Result::STATUS:
            EXPECT_EQ(result, CALLERS_MISTAKE) << call.name;
            break;
        case NamedCall::Result::VALUE:
            EXPECT_EQ(result, 0U) << call.name;
            break;
        case NamedCall::Result::POINTER:
        case NamedCall::Result::RECORD:
            EXPECT_EQ(result, 1U) << call.name;
            break;
        }
    }
    EXPECT_EQ(VEXAPI_Uninitialize(), CALLERS_MISTAKE);
}

} // namespace
