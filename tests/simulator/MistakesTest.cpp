// Callers that break the rules of the interface.
#include "AllCalls.h"

#include <cstring>
#include <set>

namespace {

class Mistakes : public Simulated {
protected:
    Mistakes() {
        describe(smallHost());
        EXPECT_EQ(start(), 0U);
        port_ = handle();
    }
    /// Expects a failing status and a journal line with the reason.
    void expectMistake(VX_UINT32 status, const std::string& reason) const {
        EXPECT_EQ(status, callersMistake) << reason;
        const Json line = lastCall();
        EXPECT_EQ(line.value("mistake", ""), reason);
        EXPECT_EQ(line["status"], callersMistake);
    }
    VX_PORT_HANDLE* port_;
};

/// A record in which one byte isn't zero: the last one.
template <class Record> Record dirty() {
    Record record{};
    reinterpret_cast<unsigned char*>(&record)[sizeof record - 1] = 1;
    return record;
}

TEST_F(Mistakes, Handles) {
    CallArguments with{nullptr, 0, path(".")};
    VX_PORT_HANDLE bent = *port_;
    bent.opaque[9] ^= 1; // the check word
    VX_PORT_HANDLE blank{};
    VX_PORT_HANDLE foreign = *port_;
    foreign.opaque[0] = 'x';
    const std::set<std::string> withoutPort = {"VEXAPI_SetToolID",        "VEXAPI_SetToolVersion",
                                               "VEXAPI_GetAdapterList",   "VEXAPI_IsRebootRequired",
                                               "VEXAPI_GetBfsConfigMode", "VEXAPI_SetBfsConfigMode"};
    for (VX_PORT_HANDLE* handle : {static_cast<VX_PORT_HANDLE*>(nullptr), &bent, &blank, &foreign}) {
        with.handle = handle;
        for (const NamedCall& call : allCalls()) {
            if (withoutPort.contains(call.name)) {
                continue;
            }
            const VX_UINT32 result = call.call(with);
            EXPECT_TRUE(lastCall().contains("mistake")) << call.name;
            EXPECT_FALSE(lastCall().contains("port")) << call.name;
            EXPECT_EQ(result, call.result == NamedCall::Result::Status  ? callersMistake
                              : call.result == NamedCall::Result::Value ? 0U
                                                                        : 1U)
                << call.name;
        }
    }
    expectMistake(VEXAPI_ResetDeviceStats(nullptr), "handle is null");
    expectMistake(VEXAPI_ResetDeviceStats(&bent), "the handle is none of the library's");
}

TEST_F(Mistakes, Words) {
    char buffer[1024] = {};
    VX_UINT32 size = sizeof buffer;
    for (const VX_UINT32 word : {0U, 1U, Simulated::word() + 2, Simulated::word() - 1, 0xFFFFFFFFU}) {
        expectMistake(VEXAPI_GetVpd(word, 0, buffer, &size), "the word is of no handle of the library's");
    }
}

TEST_F(Mistakes, NullPointers) {
    _VEXAPI_HBAParameters nvram{};
    VX_UINT32 number = 0;
    VX_UINT32 word = Simulated::word();
    VX_UINT8 bytes[4] = {};
    char text[1024] = {};
    VX_UINT32 vpdSize = 1024;
    VX_UINT32 rdpSize = 508;
    void* dump = nullptr;
    __STATISTICS statistics{};
    _VEXAPI_FWPRIVATESTATSEntry* entries = nullptr;
    const char* name = "50:06:0e:80:00:00:00:01";

    expectMistake(VEXAPI_IsRebootRequired(nullptr), "required is null");
    expectMistake(VEXAPI_GetFlashComponentVersion(port_, nullptr), "versions is null");
    expectMistake(VEXAPI_GetAdapterFlashMemoBlock(port_, nullptr), "block is null");
    expectMistake(VEXAPI_doOptionROMUpdate(port_, nullptr, 0), "path is null");
    expectMistake(VEXAPI_UpdateSpecificFlashRegionFromFile(port_, nullptr), "path is null");
    expectMistake(VEXAPI_UpdateAdapterFirmwareTableFromFile(port_, nullptr), "path is null");
    expectMistake(VEXAPI_UpdateAdapterPEPCfgFromFile(port_, nullptr), "path is null");
    expectMistake(VEXAPI_GetPersonalityType(port_, nullptr), "personality is null");
    expectMistake(VEXAPI_UpdateAdapterNVRAMFromFile(port_, nullptr), "path is null");
    expectMistake(VEXAPI_GetAdapterAsicBoardTemperature(port_, nullptr), "temperature is null");
    expectMistake(VEXAPI_GetLockdownStatus(port_, nullptr), "lockdown is null");
    expectMistake(VEXAPI_GetSFPData(port_, nullptr), "buffer is null");
    expectMistake(VEXAPI_SfpModuleFirmwareUpdate(port_, nullptr, 2), "path is null");
    expectMistake(VEXAPI_GetVpd(word, 0, nullptr, &vpdSize), "buffer is null");
    expectMistake(VEXAPI_GetVpd(word, 0, text, nullptr), "size is null");
    expectMistake(VEXAPI_SDGetFwDump2(word, 0, nullptr, &number), "dump is null");
    expectMistake(VEXAPI_SDGetFwDump2(word, 0, &dump, nullptr), "size is null");
    expectMistake(VEXAPI_IsMezzAdapter(port_, nullptr), "flag is null");
    expectMistake(VEXAPI_GetAdapterBeaconStatus(port_, nullptr), "state is null");
    expectMistake(VEXAPI_GetHBAParamsInfo(port_, &nvram, nullptr), "auxiliary is null");
    VX_HBA_AUX auxiliary{};
    expectMistake(VEXAPI_GetHBAParamsInfo(port_, nullptr, &auxiliary), "parameters is null");
    expectMistake(VEXAPI_UpdateHBAParameters(port_, nullptr), "parameters is null");
    expectMistake(VEXAPI_SaveSingleAdapterNVRAMToFile(port_, nullptr), "path is null");
    expectMistake(VEXAPI_GetBootDeviceInfo(port_, nullptr, nullptr), "parameters is null");
    expectMistake(VEXAPI_SetBootDeviceInfo(port_, nullptr), "parameters is null");
    expectMistake(VEXAPI_GetNVMeBootDeviceEntries(port_, nullptr), "parameters is null");
    expectMistake(VEXAPI_SetNVMeBootDeviceEntries(port_, nullptr), "parameters is null");
    VX_UINT8* const b = bytes;
    expectMistake(VEXAPI_FCGetBBCSupportInfoEx(port_, nullptr, b, b, b, text, 64), "status is null");
    expectMistake(VEXAPI_FCGetBBCSupportInfoEx(port_, b, nullptr, b, b, text, 64), "configured is null");
    expectMistake(VEXAPI_FCGetBBCSupportInfoEx(port_, b, b, nullptr, b, text, 64), "state is null");
    expectMistake(VEXAPI_FCGetBBCSupportInfoEx(port_, b, b, b, nullptr, text, 64), "negotiated is null");
    expectMistake(VEXAPI_FCGetBBCSupportInfoEx(port_, b, b, b, b, nullptr, 64), "reason is null");
    expectMistake(VEXAPI_FCGetFECSupportInfo(port_, nullptr), "status is null");
    expectMistake(VEXAPI_GetFWPrivateStats(port_, nullptr, &number), "entries is null");
    expectMistake(VEXAPI_GetFWPrivateStats(port_, &entries, nullptr), "count is null");
    expectMistake(VEXAPI_IsFWCMFeatureEnabled(port_, nullptr), "enabled is null");
    expectMistake(VEXAPI_GetSCMRStatisticsList(port_, nullptr), "list is null");
    expectMistake(VEXAPI_FreeSCMRStatisticsList(nullptr), "list is null");
    expectMistake(VEXAPI_GetSCMRProfile(port_, nullptr), "profile is null");
    expectMistake(VEXAPI_SetSCMRProfile(port_, nullptr), "profile is null");
    EXPECT_STREQ(VEXAPI_DiagnosticsLoopBackTest(port_, nullptr).TestStatus, "Failed, status 0x200000FF");
    EXPECT_EQ(lastCall()["mistake"], "parameters is null");
    EXPECT_EQ(VEXAPI_DiagnosticsReadWriteBufferTest(port_, nullptr), nullptr);
    EXPECT_EQ(lastCall()["mistake"], "parameters is null");
    expectMistake(VEXAPI_FreeRWBufferTestResultList(nullptr), "list is null");
    expectMistake(VEXAPI_DiagnosticsFCPingTest(port_, nullptr, 1, 0, &number, text, 256), "name is null");
    expectMistake(VEXAPI_DiagnosticsFCPingTest(port_, name, 1, 0, nullptr, text, 256), "output is null");
    expectMistake(VEXAPI_DiagnosticsFCPingTest(port_, name, 1, 0, &number, nullptr, 256), "buffer is null");
    expectMistake(VEXAPI_DiagnosticsEchoElsTest(port_, name, 1, 0, 2, nullptr), "result is null");
    expectMistake(VEXAPI_DiagnosticsCTCommand(port_, nullptr, 1, 0, &number, text, 256, 1), "name is null");
    EXPECT_EQ(VEXAPI_DiagnosticDPortTest(port_, nullptr).Mbx1, 0x4005);
    EXPECT_EQ(lastCall()["mistake"], "result is null");
    expectMistake(VEXAPI_DiagnosticDPortTestV2(port_, nullptr), "result is null");
    expectMistake(VEXAPI_DiagnosticsRDPTest(port_, nullptr, &rdpSize), "buffer is null");
    expectMistake(VEXAPI_DiagnosticsRDPTest(port_, text, nullptr), "size is null");
    expectMistake(VEXAPI_GetTargetLinkSpeed(port_, 0, nullptr), "speed is null");
    expectMistake(VEXAPI_GetPortStatisticsFC(word, 0, nullptr, &statistics), "selector is null");
    VX_PORT_SELECTOR selector{2, {}};
    expectMistake(VEXAPI_GetPortStatisticsFC(word, 0, &selector, nullptr), "statistics is null");
}

TEST_F(Mistakes, RecordsThatAreNotCleared) {
    const auto each = [&](auto function, auto record, const char* name) {
        expectMistake(function(port_, &record), std::string(name) + " isn't cleared");
    };
    each(VEXAPI_GetFlashComponentVersion, dirty<_VEXAPI_FlashComponentVersion>(), "versions");
    each(VEXAPI_GetAdapterFlashMemoBlock, dirty<VX_SFlashMemoBlock>(), "block");
    each(VEXAPI_GetAdapterAsicBoardTemperature, dirty<_VEXAPI_BoardThermalTemp>(), "temperature");
    each(VEXAPI_GetLockdownStatus, dirty<VEXAPI_LOCKDOWNINFO>(), "lockdown");
    each(VEXAPI_GetSFPData, dirty<_VEXAPI_SFP_DATA>(), "buffer");
    each(VEXAPI_GetNVMeBootDeviceEntries, dirty<_VEXAPI_FcNVMeBootParams>(), "parameters");
    each(VEXAPI_IsFWCMFeatureEnabled, dirty<VX_UINT8>(), "enabled");
    each(VEXAPI_GetSCMRProfile, dirty<_VEXAPI_SCMRProfile>(), "profile");
    each(VEXAPI_DiagnosticDPortTestV2, dirty<_VEXAPI_DiagnosticsDPortResult>(), "result");

    auto dirtyNvram = dirty<_VEXAPI_HBAParameters>();
    _VEXAPI_HBAParameters nvram{};
    auto dirtyAuxiliary = dirty<VX_HBA_AUX>();
    VX_HBA_AUX auxiliary{};
    expectMistake(VEXAPI_GetHBAParamsInfo(port_, &dirtyNvram, &auxiliary), "parameters isn't cleared");
    expectMistake(VEXAPI_GetHBAParamsInfo(port_, &nvram, &dirtyAuxiliary), "auxiliary isn't cleared");
    expectMistake(VEXAPI_GetBootDeviceInfo(port_, &dirtyNvram, nullptr), "parameters isn't cleared");

    auto dPort = dirty<_VEXAPI_DiagnosticsDPortResult>();
    EXPECT_EQ(VEXAPI_DiagnosticDPortTest(port_, &dPort).Mbx1, 0x4005);
    EXPECT_EQ(lastCall()["mistake"], "result isn't cleared");

    char buffer[1024] = {};
    VX_UINT32 size = 1024;
    buffer[1023] = 1;
    expectMistake(VEXAPI_GetVpd(word(), 0, buffer, &size), "buffer isn't cleared");
    void* dump = buffer;
    VX_UINT32 number = 0;
    expectMistake(VEXAPI_SDGetFwDump2(word(), 0, &dump, &number), "dump isn't cleared");
    dump = nullptr;
    number = 1;
    expectMistake(VEXAPI_SDGetFwDump2(word(), 0, &dump, &number), "size isn't cleared");
    VX_UINT8 b[4] = {};
    expectMistake(VEXAPI_FCGetBBCSupportInfoEx(port_, b, b, b, b, buffer + 960, 64), "reason isn't cleared");
    const char* name = "50:06:0e:80:00:00:00:01";
    expectMistake(VEXAPI_DiagnosticsFCPingTest(port_, name, 1, 0, &number, buffer, 256), "output isn't cleared");
    number = 0;
    expectMistake(VEXAPI_DiagnosticsFCPingTest(port_, name, 1, 0, &number, buffer + 768, 256), "buffer isn't cleared");
    expectMistake(VEXAPI_DiagnosticsCTCommand(port_, name, 1, 0, &number, buffer + 768, 256, 1),
                  "buffer isn't cleared");
    auto echo = dirty<_VEXAPI_ECHO_RESULTS>();
    expectMistake(VEXAPI_DiagnosticsEchoElsTest(port_, name, 1, 0, 2, &echo), "result isn't cleared");
    size = 508;
    expectMistake(VEXAPI_DiagnosticsRDPTest(port_, buffer + 516, &size), "buffer isn't cleared");
    auto statistics = dirty<__STATISTICS>();
    VX_PORT_SELECTOR selector{2, {}};
    expectMistake(VEXAPI_GetPortStatisticsFC(word(), 0, &selector, &statistics), "statistics isn't cleared");
}

TEST_F(Mistakes, FixedArguments) {
    char buffer[1024] = {};
    VX_UINT32 size = 1023;
    VX_UINT32 number = 0;
    void* dump = nullptr;
    VX_UINT8 b[4] = {};
    _VEXAPI_HBAParameters nvram{};
    const char* name = "50:06:0e:80:00:00:00:01";
    _VEXAPI_ECHO_RESULTS echo{};
    __STATISTICS statistics{};
    VX_PORT_SELECTOR selector{1, {}};

    expectMistake(VEXAPI_doOptionROMUpdate(port_, "/none", 1), "reserved may not be 1");
    expectMistake(VEXAPI_ChangePersonalityType(port_, 2), "personality may not be 2");
    expectMistake(VEXAPI_SfpModuleFirmwareUpdate(port_, "/none", 1), "option may not be 1");
    expectMistake(VEXAPI_GetVpd(word(), 1, buffer, &size), "reserved may not be 1");
    expectMistake(VEXAPI_GetVpd(word(), 0, buffer, &size), "size may not be 1023");
    expectMistake(VEXAPI_SDGetFwDump2(word(), 1, &dump, &number), "reserved may not be 1");
    expectMistake(VEXAPI_UpdateAdapterBeaconStatus(port_, 2), "state may not be 2");
    expectMistake(VEXAPI_SetBfsConfigMode(3), "mode may not be 3");
    expectMistake(VEXAPI_GetBootDeviceInfo(port_, &nvram, buffer), "reserved isn't null");
    expectMistake(VEXAPI_FCGetBBCSupportInfoEx(port_, b, b, b, b, buffer, 63), "reasonSize may not be 63");
    expectMistake(VEXAPI_FCSetBBCSupportInfo(port_, 2, 0), "status may not be 2");
    expectMistake(VEXAPI_FCSetBBCSupportInfo(port_, 1, 16), "configured may not be above 15");
    expectMistake(VEXAPI_FCSetFECSupportInfo(port_, 2), "status may not be 2");
    expectMistake(VEXAPI_DiagnosticsFCPingTest(port_, name, 0, 0, &number, buffer, 256), "count must be 1 to 65535");
    expectMistake(VEXAPI_DiagnosticsFCPingTest(port_, name, 65536, 0, &number, buffer, 256),
                  "count must be 1 to 65535");
    expectMistake(VEXAPI_DiagnosticsFCPingTest(port_, name, 1, 2, &number, buffer, 256), "stopOnError may not be 2");
    expectMistake(VEXAPI_DiagnosticsFCPingTest(port_, name, 1, 0, &number, buffer, 255), "size may not be 255");
    for (const char* bad : {"", "50:06:0e:80:00:00:00", "50:06:0e:80:00:00:00:0g", "50-06-0e-80-00-00-00-01",
                            "50:06:0e:80:00:00:00:01:02", "5:006:0e:80:00:00:00:01"}) {
        expectMistake(VEXAPI_DiagnosticsFCPingTest(port_, bad, 1, 0, &number, buffer, 256),
                      "name isn't of the form xx:xx:xx:xx:xx:xx:xx:xx");
    }
    expectMistake(VEXAPI_DiagnosticsEchoElsTest(port_, name, 2, 0, 2, &echo), "count may not be 2");
    expectMistake(VEXAPI_DiagnosticsEchoElsTest(port_, name, 1, 0, 1, &echo), "destinationType may not be 1");
    expectMistake(VEXAPI_DiagnosticsCTCommand(port_, name, 1, 0, &number, buffer, 256, 3), "testType may not be 3");
    expectMistake(VEXAPI_ConfigureAdapterDPortSettings(port_, 2, 0), "enable may not be 2");
    expectMistake(VEXAPI_ConfigureAdapterDPortSettings(port_, 1, 1), "reserved may not be 1");
    size = 507;
    expectMistake(VEXAPI_DiagnosticsRDPTest(port_, buffer, &size), "size may not be 507");
    expectMistake(VEXAPI_SetTargetLinkSpeed(port_, 0, 3), "speed may not be 3");
    expectMistake(VEXAPI_GetPortStatisticsFC(word(), 1, &selector, &statistics), "reserved may not be 1");
    expectMistake(VEXAPI_GetPortStatisticsFC(word(), 0, &selector, &statistics), "SelectorType may not be 1");
}

TEST_F(Mistakes, Start) {
    expectMistake(VEXAPI_Initialize(0, 0), "the library is initialized already");
    end();
    expectMistake(VEXAPI_Initialize(1, 0), "debugLevel may not be 1");
    expectMistake(VEXAPI_Initialize(0, 1), "reserved may not be 1");
    EXPECT_EQ(VEXAPI_GetAdapterList(), nullptr);
}

TEST_F(Mistakes, ListsReleasedTwiceOrByTheWrongFunction) {
    _VEXAPI_SANCONGTMGMTV2* list = nullptr;
    ASSERT_EQ(VEXAPI_GetSCMRStatisticsList(port_, &list), 0U);
    const std::string reason = "the list is none that the library gave, or was released already";
    expectMistake(VEXAPI_FreeSCMRStatisticsList(list->pNext), reason); // not the head
    EXPECT_EQ(VEXAPI_FreeSCMRStatisticsList(list), 0U);
    expectMistake(VEXAPI_FreeSCMRStatisticsList(list), reason);
    DiagTestParams parameters{};
    auto* results = VEXAPI_DiagnosticsReadWriteBufferTest(port_, &parameters);
    ASSERT_NE(results, nullptr);
    EXPECT_EQ(VEXAPI_FreeRWBufferTestResultList(results), 0U);
    expectMistake(VEXAPI_FreeRWBufferTestResultList(results), reason);
}

TEST_F(Mistakes, ListsThatAreNeverReleased) {
    _VEXAPI_SANCONGTMGMTV2* list = nullptr;
    ASSERT_EQ(VEXAPI_GetSCMRStatisticsList(port_, &list), 0U);
    DiagTestParams parameters{};
    ASSERT_NE(VEXAPI_DiagnosticsReadWriteBufferTest(port_, &parameters), nullptr);
    forget();
    EXPECT_EQ(VEXAPI_Uninitialize(), 0U);
    const std::vector<Json> lines = journal();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0]["mistake"], "a list was never given to VEXAPI_FreeSCMRStatisticsList");
    EXPECT_EQ(lines[1]["mistake"], "a list was never given to VEXAPI_FreeRWBufferTestResultList");
    EXPECT_FALSE(lines[2].contains("mistake"));
}

} // namespace
