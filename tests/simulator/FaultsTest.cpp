// Failures on demand, the journal of calls, the chatter, and calls outside a session.
#include "AllCalls.h"

#include <algorithm>
#include <cstdlib>
#include <set>

namespace {

const std::set<std::string> silentFunctions = {
    "VEXAPI_GetAdapterList",     "VEXAPI_Uninitialize",          "VEXAPI_IsRebootRequired",
    "VEXAPI_GetPersonalityType", "VEXAPI_ChangePersonalityType", "VEXAPI_CheckRowanPersonalityChangeOption"};

class Faults : public Simulated {
protected:
    Faults() {
        describe(smallHost());
        EXPECT_EQ(start(), 0U);
    }
    CallArguments arguments() const { return {handle(), word(), path(".")}; }
    static void demand(const std::string& faults) { setenv("VEXAPI_SIM_FAULTS", faults.c_str(), 1); }
};

TEST_F(Faults, CallsCoverAllFunctionsButTheTwoOfTheSession) {
    EXPECT_EQ(allCalls().size(), 60U);
}

TEST_F(Faults, EveryFunctionFailsOnDemand) {
    const CallArguments with = arguments();
    for (const NamedCall& call : allCalls()) {
        demand(std::string(call.name) + "=0x61");
        const VX_UINT32 result = call.call(with);
        switch (call.result) {
        case NamedCall::Result::Status:
        case NamedCall::Result::Value:
            EXPECT_EQ(result, 0x61U) << call.name;
            break;
        case NamedCall::Result::Pointer:
        case NamedCall::Result::Record:
            EXPECT_EQ(result, 1U) << call.name;
            break;
        }
        const Json line = lastCall();
        EXPECT_EQ(line["function"], call.name);
        EXPECT_EQ(line["status"], 0x61);
        EXPECT_TRUE(line.contains("demanded")) << call.name;
    }
}

TEST_F(Faults, RecordsTellADemandedStatus) {
    demand("VEXAPI_DiagnosticsLoopBackTest=0x61,VEXAPI_DiagnosticsReadWriteBufferTest=0x61,"
           "VEXAPI_DiagnosticDPortTest=21");
    DiagTestParams parameters{};
    EXPECT_STREQ(VEXAPI_DiagnosticsLoopBackTest(handle(), &parameters).TestStatus, "Failed, status 0x61");
    auto* list = VEXAPI_DiagnosticsReadWriteBufferTest(handle(), &parameters);
    ASSERT_NE(list, nullptr);
    EXPECT_STREQ(list->TestStatus, "Failed, status 0x61");
    EXPECT_EQ(VEXAPI_FreeRWBufferTestResultList(list), 0U);
    _VEXAPI_DiagnosticsDPortResult in{};
    const auto result = VEXAPI_DiagnosticDPortTest(handle(), &in);
    EXPECT_EQ(result.Mbx1, 0x4005);
    EXPECT_EQ(result.Mbx2, 21);
}

TEST_F(Faults, StartAndEndFailOnDemand) {
    end();
    demand("VEXAPI_Initialize=7");
    EXPECT_EQ(start(), 7U);
    EXPECT_EQ(VEXAPI_GetAdapterList(), nullptr);
    demand("VEXAPI_Uninitialize=8");
    EXPECT_EQ(start(), 0U);
    EXPECT_EQ(VEXAPI_Uninitialize(), 8U);
}

TEST_F(Faults, OnlyTheNthCall) {
    demand("VEXAPI_ResetDeviceStats@2=5,VEXAPI_ResetDeviceStats@4=6");
    std::vector<VX_UINT32> statuses;
    for (int i = 0; i < 5; ++i) {
        statuses.push_back(VEXAPI_ResetDeviceStats(handle()));
    }
    EXPECT_EQ(statuses, (std::vector<VX_UINT32>{0, 5, 0, 6, 0}));
}

TEST_F(Faults, TheNthCallBeatsAllCallsAndSpaceForSeveral) {
    demand("VEXAPI_ResetFECCounters@2=0x10,VEXAPI_ResetDeviceStats=4,VEXAPI_ResetDeviceStats@1=9");
    EXPECT_EQ(VEXAPI_ResetDeviceStats(handle()), 9U);
    EXPECT_EQ(VEXAPI_ResetDeviceStats(handle()), 4U);
    EXPECT_EQ(VEXAPI_ResetFECCounters(handle()), 0U);
    EXPECT_EQ(VEXAPI_ResetFECCounters(handle()), 16U);
}

TEST_F(Faults, CallsAreCountedThroughSessions) {
    demand("VEXAPI_ResetDeviceStats@2=5");
    EXPECT_EQ(VEXAPI_ResetDeviceStats(handle()), 0U);
    restart();
    EXPECT_EQ(VEXAPI_ResetDeviceStats(handle()), 5U);
}

TEST_F(Faults, AFailingCallChangesNothing) {
    demand("VEXAPI_UpdateAdapterBeaconStatus=5");
    EXPECT_EQ(VEXAPI_UpdateAdapterBeaconStatus(handle(), 1), 5U);
    VEXAPI_BEACON_TYPE state = 7;
    EXPECT_EQ(VEXAPI_GetAdapterBeaconStatus(handle(), &state), 0U);
    EXPECT_EQ(state, 0U);
}

TEST_F(Faults, StatusZeroSucceedsWithNothingDone) {
    demand("VEXAPI_GetAdapterBeaconStatus=0");
    VEXAPI_BEACON_TYPE state = 7;
    EXPECT_EQ(VEXAPI_GetAdapterBeaconStatus(handle(), &state), 0U);
    EXPECT_EQ(state, 7U);
}

TEST_F(Faults, StatusesOfOnePort) {
    end();
    Json host = smallHost();
    portOf(host)["Statuses"] = {{"VEXAPI_GetSFPData", 17}};
    describe(host);
    ASSERT_EQ(start(), 0U);
    _VEXAPI_SFP_DATA data{};
    EXPECT_EQ(VEXAPI_GetSFPData(handle(0), &data), 17U);
    EXPECT_EQ(VEXAPI_GetSFPData(handle(1), &data), 0U);
}

TEST_F(Faults, NullPointers) {
    const auto tool = arguments();
    demand("VEXAPI_GetAdapterList=null");
    EXPECT_EQ(VEXAPI_GetAdapterList(), nullptr);
    demand("VEXAPI_GetAdapterList=nullhead");
    const VX_ADAPTER_LIST* headless = VEXAPI_GetAdapterList();
    ASSERT_NE(headless, nullptr);
    EXPECT_EQ(headless->pHead, nullptr);
    demand("VEXAPI_SDGetFwDump2=null,VEXAPI_GetFWPrivateStats=null,VEXAPI_GetSCMRStatisticsList=null,"
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
    describe(smallHost());
    setenv("VEXAPI_SIM_FAULTS", GetParam().faults, 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(start(), refused);
    EXPECT_NE(testing::internal::GetCapturedStderr().find(GetParam().reason), std::string::npos);
    EXPECT_NE(output.find(GetParam().reason), std::string::npos) << output;
    EXPECT_EQ(VEXAPI_GetAdapterList(), nullptr);
    EXPECT_EQ(VEXAPI_SetToolID(11), refused);
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
    const CallArguments with = arguments();
    for (const NamedCall& call : allCalls()) {
        forget();
        call.call(with);
        const std::vector<Json> lines = journal();
        const auto own =
            std::count_if(lines.begin(), lines.end(), [&](const Json& line) { return line["function"] == call.name; });
        EXPECT_EQ(own, 1) << call.name;
        EXPECT_FALSE(lines.back().contains("mistake")) << lines.back();
    }
}

TEST_F(Faults, JournalLinesTellPortArgumentsAndRecords) {
    EXPECT_EQ(VEXAPI_FCSetBBCSupportInfo(handle(), 1, 9), 0U);
    Json line = lastCall();
    EXPECT_EQ(line["port"], "21:00:00:24:ff:01:02:03");
    EXPECT_EQ(line["arguments"], Json::parse(R"({"status": 1, "configured": 9})"));
    EXPECT_EQ(line["status"], 0);

    _VEXAPI_SCMRProfile profile{0, 1, 3, {9, 8, 7}};
    EXPECT_EQ(VEXAPI_SetSCMRProfile(handle(), &profile), 0U);
    line = lastCall();
    EXPECT_EQ(line["records"]["profile"], Json::parse(R"({"Disabled": 0, "ControlFlag": 1, "Profile": 3,
        "Reserved": "09:08:07:00:00:00:00:00:00:00:00:00:00"})"));
}

TEST_F(Faults, JournalKeepsTextsThatAreNoUtf8) {
    EXPECT_EQ(VEXAPI_UpdateAdapterNVRAMFromFile(handle(), "/\xff\xfe"), 3U);
    EXPECT_EQ(lastCall()["function"], "VEXAPI_UpdateAdapterNVRAMFromFile");
}

TEST_F(Faults, AllCallsChatterButThoseThatCallersMakeOpenly) {
    const CallArguments with = arguments();
    for (const NamedCall& call : allCalls()) {
        const std::string printed = outputOf([&] { call.call(with); });
        EXPECT_EQ(printed.empty(), silentFunctions.contains(call.name)) << call.name << ": " << printed;
    }
    EXPECT_EQ(outputOf([] { VEXAPI_Uninitialize(); }), "");
    EXPECT_EQ(start(), 0U);
    EXPECT_NE(output, "");
}

TEST_F(Faults, MistakesAndDemandedFailuresOfSilentFunctionsAreSilentToo) {
    EXPECT_EQ(outputOf([] { VEXAPI_IsRebootRequired(nullptr); }), "");
    demand("VEXAPI_GetAdapterList=1,VEXAPI_ChangePersonalityType=1");
    VX_PORT_HANDLE none{};
    EXPECT_EQ(outputOf([&] {
                  VEXAPI_GetAdapterList();
                  VEXAPI_ChangePersonalityType(&none, 1);
              }),
              "");
}

TEST_F(Faults, TheHighDebugLevelTellsMore) {
    const std::size_t quiet = output.size() + outputOf([] { VEXAPI_SetToolID(11); }).size();
    end();
    EXPECT_EQ(start(31), 0U);
    EXPECT_GT(output.size() + outputOf([] { VEXAPI_SetToolID(11); }).size(), quiet);
}

TEST_F(Faults, OutsideASessionEveryCallIsAMistake) {
    CallArguments with = arguments();
    VX_PORT_HANDLE kept = *with.handle;
    with.handle = &kept;
    end();
    for (const NamedCall& call : allCalls()) {
        const VX_UINT32 result = call.call(with);
        switch (call.result) {
        case NamedCall::Result::Status:
            EXPECT_EQ(result, callersMistake) << call.name;
            break;
        case NamedCall::Result::Value:
            EXPECT_EQ(result, 0U) << call.name;
            break;
        case NamedCall::Result::Pointer:
        case NamedCall::Result::Record:
            EXPECT_EQ(result, 1U) << call.name;
            break;
        }
        EXPECT_TRUE(lastCall().contains("mistake")) << call.name;
    }
    EXPECT_EQ(VEXAPI_Uninitialize(), callersMistake);
}

} // namespace
