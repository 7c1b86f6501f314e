#include "FakeLibrary.h"
#include "Capture.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

/// Whatever its result, a call without a script must not look like a success.
TEST(FakeLibraryTest, RefusesACallWithoutAScript) {
    FakeLibrary::Reset();
    FakeLibrary& fake = FakeLibrary::Get();
    _vexapi_protocol_t& port = fake.host.AddPort();
    VX_UINT32 status = 7;
    EXPECT_EQ(VEXAPI_FCGetFECSupportInfo(&port.PortHandle, &status), FakeLibrary::NO_SCRIPT);
    EXPECT_EQ(status, 7u);
    DiagTestParams parameters{};
    EXPECT_STREQ(VEXAPI_DiagnosticsLoopBackTest(&port.PortHandle, &parameters).TestStatus, "");
    EXPECT_EQ(VEXAPI_DiagnosticsReadWriteBufferTest(&port.PortHandle, &parameters), nullptr);
    _VEXAPI_DiagnosticsDPortResult result{};
    EXPECT_EQ(VEXAPI_DiagnosticDPortTest(&port.PortHandle, &result).Mbx1, 0x4005);
    EXPECT_EQ(VEXAPI_GetBfsConfigMode(), 0);
    EXPECT_EQ(fake.calls, (std::vector<std::string>{
                              "VEXAPI_FCGetFECSupportInfo(21:00:0a:0b:0c:0d:00:01)",
                              "VEXAPI_DiagnosticsLoopBackTest(21:00:0a:0b:0c:0d:00:01)",
                              "VEXAPI_DiagnosticsReadWriteBufferTest(21:00:0a:0b:0c:0d:00:01)",
                              "VEXAPI_DiagnosticDPortTest(21:00:0a:0b:0c:0d:00:01)",
                              "VEXAPI_GetBfsConfigMode()",
                          }));
    // The statuses of a script end, and what follows has none.
    fake.ReturnInTurn("VEXAPI_FCGetFECSupportInfo", {0});
    EXPECT_EQ(VEXAPI_FCGetFECSupportInfo(&port.PortHandle, &status), 0u);
    EXPECT_EQ(VEXAPI_FCGetFECSupportInfo(&port.PortHandle, &status), FakeLibrary::NO_SCRIPT);
}

TEST(FakeLibraryTest, ServesASessionWithoutAScript) {
    FakeLibrary::Reset();
    EXPECT_EQ(VEXAPI_Initialize(0, 0), 0u);
    EXPECT_EQ(VEXAPI_SetToolID(1), 0u);
    EXPECT_EQ(VEXAPI_SetToolVersion(1, 2, 3, 4), 0u);
    EXPECT_NE(VEXAPI_GetAdapterList(), nullptr);
    EXPECT_EQ(VEXAPI_Uninitialize(), 0u);
}

TEST(FakeLibraryTest, AnswersByScriptThenHook) {
    FakeLibrary::Reset();
    FakeLibrary& fake = FakeLibrary::Get();
    _vexapi_protocol_t& port = fake.host.AddPort();
    VX_UINT32 status = 7;
    fake.Succeed({"FCGetFECSupportInfo"});
    EXPECT_EQ(VEXAPI_FCGetFECSupportInfo(&port.PortHandle, &status), 0u);
    EXPECT_EQ(status, 7u);

    fake.onFCGetFECSupportInfo = [](VX_PORT_HANDLE*, VX_UINT32* enabled) {
        *enabled = 1;
        return 3u;
    };
    fake.ReturnInTurn("VEXAPI_FCGetFECSupportInfo", {5});
    EXPECT_EQ(VEXAPI_FCGetFECSupportInfo(&port.PortHandle, &status), 5u);
    EXPECT_EQ(status, 7u);
    EXPECT_EQ(VEXAPI_FCGetFECSupportInfo(&port.PortHandle, &status), 3u);
    EXPECT_EQ(status, 1u);
    fake.Return("VEXAPI_FCGetFECSupportInfo", 9);
    EXPECT_EQ(VEXAPI_FCGetFECSupportInfo(&port.PortHandle, &status), 9u);
}

TEST(FakeLibraryTest, RecordsCallsByPort) {
    FakeLibrary::Reset();
    FakeLibrary& fake = FakeLibrary::Get();
    fake.host.AddPort();
    _vexapi_protocol_t& port = fake.host.AddPort();
    VX_PORT_HANDLE copy = port.PortHandle;
    VX_UINT32 word = 0;
    std::memcpy(&word, port.PortHandle.opaque + 4, sizeof word);
    VX_PORT_SELECTOR selector{2, {0x50, 0, 1, 2, 3, 4, 5, 6}};
    __STATISTICS statistics{};

    VEXAPI_GetAdapterList();
    VEXAPI_FCSetFECSupportInfo(&port.PortHandle, 1);
    VEXAPI_FCSetFECSupportInfo(&copy, 0);
    VEXAPI_doOptionROMUpdate(&port.PortHandle, "/tmp/image", 0);
    VEXAPI_GetPortStatisticsFC(word, 0, &selector, &statistics);
    EXPECT_EQ(fake.PortCalls(), (std::vector<std::string>{
                                    "VEXAPI_FCSetFECSupportInfo(21:00:0a:0b:0c:0d:00:02, 1)",
                                    "VEXAPI_FCSetFECSupportInfo(copy of 21:00:0a:0b:0c:0d:00:02, 0)",
                                    "VEXAPI_doOptionROMUpdate(21:00:0a:0b:0c:0d:00:02, \"/tmp/image\", 0)",
                                    "VEXAPI_GetPortStatisticsFC(21:00:0a:0b:0c:0d:00:02, 0, 2, "
                                    "50:00:01:02:03:04:05:06)",
                                }));
    EXPECT_EQ(fake.calls.front(), "VEXAPI_GetAdapterList()");
}

TEST(FakeLibraryTest, GivesTheBuiltTree) {
    FakeLibrary::Reset();
    FakeLibrary& fake = FakeLibrary::Get();
    _vexapi_protocol_t& port = fake.host.AddPort();
    _tagVEXAPI_SDMTarget& target = fake.host.AddTarget(port);
    fake.host.AddLun(target);
    const VX_ADAPTER_LIST* const list = VEXAPI_GetAdapterList();
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->Count, 1u);
    EXPECT_EQ(list->pHead->pPhyPortList->pHead->pProtocolList->pHead, &port);
    EXPECT_EQ(port.pTargetList->pLunList->LunNumber, 0);
    EXPECT_EQ(Id(port), "FC_21:00:0a:0b:0c:0d:00:01");
    fake.host.hasList = false;
    EXPECT_EQ(VEXAPI_GetAdapterList(), nullptr);
}

TEST(CaptureTest, RunsACommandInItsSession) {
    FakeLibrary::Reset();
    const CommandRun run = RunCommand("no such command");
    EXPECT_EQ(run.code, RC_CMD_NOT_FOUND);
    EXPECT_EQ(run.output, "Unknown command or invalid target identifier!\r\n");
    EXPECT_FALSE(run.wasLeftRedirected);
    EXPECT_EQ(FakeLibrary::Get().calls,
              (std::vector<std::string>{"VEXAPI_Initialize(0, 0)", "VEXAPI_SetToolID(11)",
                                        "VEXAPI_SetToolVersion(1, 3, 6, 0)", "VEXAPI_Uninitialize()"}));
}

} // namespace
