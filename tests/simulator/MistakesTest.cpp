// Calls that break the rules of the interface.
#include "AllCalls.h"

#include <cstring>
#include <set>

namespace {

class Mistakes : public Simulated {
protected:
    Mistakes() {
        Describe(SmallHost());
        EXPECT_EQ(Start(), 0U);
        port = Handle();
    }
    /// Expects a failing status and a journal line with the reason.
    void ExpectMistake(VX_UINT32 status, const std::string& reason) const {
        EXPECT_EQ(status, CALLERS_MISTAKE) << reason;
        const Json line = LastCall();
        EXPECT_EQ(line.value("mistake", ""), reason);
        EXPECT_EQ(line["status"], CALLERS_MISTAKE);
    }
    VX_PORT_HANDLE* port;
};

/// A record that is zero except for its last byte.
template <class Record> Record Dirty() {
    Record record{};
    reinterpret_cast<unsigned char*>(&record)[sizeof record - 1] = 1;
    return record;
}

TEST_F(Mistakes, Handles) {
    CallArguments with{nullptr, 0, Path(".")};
    VX_PORT_HANDLE bent = *port;
    bent.opaque[9] ^= 1; // the check word
    VX_PORT_HANDLE blank{};
    VX_PORT_HANDLE foreign = *port;
    foreign.opaque[0] = 'x';
    const std::set<std::string> withoutPort = {
        "VEXAPI_SetToolID",        "VEXAPI_SetToolVersion",   "VEXAPI_GetAdapterList", "VEXAPI_IsRebootRequired",
        "VEXAPI_GetBfsConfigMode", "VEXAPI_SetBfsConfigMode", "VEXAPI_ExtSetScope",    "VEXAPI_ExtSetMessageHandler"};
    for (VX_PORT_HANDLE* handle : {static_cast<VX_PORT_HANDLE*>(nullptr), &bent, &blank, &foreign}) {
        with.handle = handle;
        for (const NamedCall& call : AllCalls()) {
            if (withoutPort.contains(call.name)) {
                continue;
            }
            const VX_UINT32 result = call.call(with);
            EXPECT_TRUE(LastCall().contains("mistake")) << call.name;
            EXPECT_FALSE(LastCall().contains("port")) << call.name;
            EXPECT_EQ(result, call.result == NamedCall::Result::STATUS  ? CALLERS_MISTAKE
                              : call.result == NamedCall::Result::VALUE ? 0U
                                                                        : 1U)
                << call.name;
        }
    }
    ExpectMistake(VEXAPI_ResetDeviceStats(nullptr), "handle is null");
    ExpectMistake(VEXAPI_ResetDeviceStats(&bent), "the handle is none of the library's");
}

TEST_F(Mistakes, Words) {
    char buffer[1024] = {};
    VX_UINT32 size = sizeof buffer;
    for (const VX_UINT32 word : {0U, 1U, Simulated::Word() + 2, Simulated::Word() - 1, 0xFFFFFFFFU}) {
        ExpectMistake(VEXAPI_GetVpd(word, 0, buffer, &size), "the word is of no handle of the library's");
    }
}

TEST_F(Mistakes, NullPointers) {
    _VEXAPI_HBAParameters nvram{};
    VX_UINT32 number = 0;
    VX_UINT32 word = Simulated::Word();
    VX_UINT8 bytes[4] = {};
    char text[1024] = {};
    VX_UINT32 vpdSize = 1024;
    VX_UINT32 rdpSize = 508;
    void* dump = nullptr;
    __STATISTICS statistics{};
    _VEXAPI_FWPRIVATESTATSEntry* entries = nullptr;
    const char* name = "50:06:0e:80:00:00:00:01";

    ExpectMistake(VEXAPI_IsRebootRequired(nullptr), "required is null");
    ExpectMistake(VEXAPI_GetFlashComponentVersion(port, nullptr), "versions is null");
    ExpectMistake(VEXAPI_GetAdapterFlashMemoBlock(port, nullptr), "block is null");
    ExpectMistake(VEXAPI_doOptionROMUpdate(port, nullptr, 0), "path is null");
    ExpectMistake(VEXAPI_UpdateSpecificFlashRegionFromFile(port, nullptr), "path is null");
    ExpectMistake(VEXAPI_UpdateAdapterFirmwareTableFromFile(port, nullptr), "path is null");
    ExpectMistake(VEXAPI_UpdateAdapterPEPCfgFromFile(port, nullptr), "path is null");
    ExpectMistake(VEXAPI_GetPersonalityType(port, nullptr), "personality is null");
    ExpectMistake(VEXAPI_UpdateAdapterNVRAMFromFile(port, nullptr), "path is null");
    ExpectMistake(VEXAPI_GetAdapterAsicBoardTemperature(port, nullptr), "temperature is null");
    ExpectMistake(VEXAPI_GetLockdownStatus(port, nullptr), "lockdown is null");
    ExpectMistake(VEXAPI_GetSFPData(port, nullptr), "buffer is null");
    ExpectMistake(VEXAPI_SfpModuleFirmwareUpdate(port, nullptr, 2), "path is null");
    ExpectMistake(VEXAPI_GetVpd(word, 0, nullptr, &vpdSize), "buffer is null");
    ExpectMistake(VEXAPI_GetVpd(word, 0, text, nullptr), "size is null");
    ExpectMistake(VEXAPI_SDGetFwDump2(word, 0, nullptr, &number), "dump is null");
    ExpectMistake(VEXAPI_SDGetFwDump2(word, 0, &dump, nullptr), "size is null");
    ExpectMistake(VEXAPI_IsMezzAdapter(port, nullptr), "flag is null");
    ExpectMistake(VEXAPI_GetAdapterBeaconStatus(port, nullptr), "state is null");
    ExpectMistake(VEXAPI_GetHBAParamsInfo(port, &nvram, nullptr), "auxiliary is null");
    VX_HBA_AUX auxiliary{};
    ExpectMistake(VEXAPI_GetHBAParamsInfo(port, nullptr, &auxiliary), "parameters is null");
    ExpectMistake(VEXAPI_UpdateHBAParameters(port, nullptr), "parameters is null");
    ExpectMistake(VEXAPI_SaveSingleAdapterNVRAMToFile(port, nullptr), "path is null");
    ExpectMistake(VEXAPI_GetBootDeviceInfo(port, nullptr, nullptr), "parameters is null");
    ExpectMistake(VEXAPI_SetBootDeviceInfo(port, nullptr), "parameters is null");
    ExpectMistake(VEXAPI_GetNVMeBootDeviceEntries(port, nullptr), "parameters is null");
    ExpectMistake(VEXAPI_SetNVMeBootDeviceEntries(port, nullptr), "parameters is null");
    VX_UINT8* const b = bytes;
    ExpectMistake(VEXAPI_FCGetBBCSupportInfoEx(port, nullptr, b, b, b, text, 64), "status is null");
    ExpectMistake(VEXAPI_FCGetBBCSupportInfoEx(port, b, nullptr, b, b, text, 64), "configured is null");
    ExpectMistake(VEXAPI_FCGetBBCSupportInfoEx(port, b, b, nullptr, b, text, 64), "state is null");
    ExpectMistake(VEXAPI_FCGetBBCSupportInfoEx(port, b, b, b, nullptr, text, 64), "negotiated is null");
    ExpectMistake(VEXAPI_FCGetBBCSupportInfoEx(port, b, b, b, b, nullptr, 64), "reason is null");
    ExpectMistake(VEXAPI_FCGetFECSupportInfo(port, nullptr), "status is null");
    ExpectMistake(VEXAPI_GetFWPrivateStats(port, nullptr, &number), "entries is null");
    ExpectMistake(VEXAPI_GetFWPrivateStats(port, &entries, nullptr), "count is null");
    ExpectMistake(VEXAPI_IsFWCMFeatureEnabled(port, nullptr), "enabled is null");
    ExpectMistake(VEXAPI_GetSCMRStatisticsList(port, nullptr), "list is null");
    ExpectMistake(VEXAPI_FreeSCMRStatisticsList(nullptr), "list is null");
    ExpectMistake(VEXAPI_GetSCMRProfile(port, nullptr), "profile is null");
    ExpectMistake(VEXAPI_SetSCMRProfile(port, nullptr), "profile is null");
    EXPECT_STREQ(VEXAPI_DiagnosticsLoopBackTest(port, nullptr).TestStatus, "Failed, status 0x200000FF");
    EXPECT_EQ(LastCall()["mistake"], "parameters is null");
    EXPECT_EQ(VEXAPI_DiagnosticsReadWriteBufferTest(port, nullptr), nullptr);
    EXPECT_EQ(LastCall()["mistake"], "parameters is null");
    ExpectMistake(VEXAPI_FreeRWBufferTestResultList(nullptr), "list is null");
    ExpectMistake(VEXAPI_DiagnosticsFCPingTest(port, nullptr, 1, 0, &number, text, 256), "name is null");
    ExpectMistake(VEXAPI_DiagnosticsFCPingTest(port, name, 1, 0, nullptr, text, 256), "output is null");
    ExpectMistake(VEXAPI_DiagnosticsFCPingTest(port, name, 1, 0, &number, nullptr, 256), "buffer is null");
    ExpectMistake(VEXAPI_DiagnosticsEchoElsTest(port, name, 1, 0, 2, nullptr), "result is null");
    ExpectMistake(VEXAPI_DiagnosticsCTCommand(port, nullptr, 1, 0, &number, text, 256, 1), "name is null");
    EXPECT_EQ(VEXAPI_DiagnosticDPortTest(port, nullptr).Mbx1, 0x4005);
    EXPECT_EQ(LastCall()["mistake"], "result is null");
    ExpectMistake(VEXAPI_DiagnosticDPortTestV2(port, nullptr), "result is null");
    ExpectMistake(VEXAPI_DiagnosticsRDPTest(port, nullptr, &rdpSize), "buffer is null");
    ExpectMistake(VEXAPI_DiagnosticsRDPTest(port, text, nullptr), "size is null");
    ExpectMistake(VEXAPI_GetTargetLinkSpeed(port, 0, nullptr), "speed is null");
    ExpectMistake(VEXAPI_GetPortStatisticsFC(word, 0, nullptr, &statistics), "selector is null");
    VX_PORT_SELECTOR selector{2, {}};
    ExpectMistake(VEXAPI_GetPortStatisticsFC(word, 0, &selector, nullptr), "statistics is null");
}

TEST_F(Mistakes, RecordsThatAreNotCleared) {
    const auto each = [&](auto function, auto record, const char* name) {
        ExpectMistake(function(port, &record), std::string(name) + " isn't cleared");
    };
    each(VEXAPI_GetFlashComponentVersion, Dirty<_VEXAPI_FlashComponentVersion>(), "versions");
    each(VEXAPI_GetAdapterFlashMemoBlock, Dirty<VX_SFlashMemoBlock>(), "block");
    each(VEXAPI_GetAdapterAsicBoardTemperature, Dirty<_VEXAPI_BoardThermalTemp>(), "temperature");
    each(VEXAPI_GetLockdownStatus, Dirty<VEXAPI_LOCKDOWNINFO>(), "lockdown");
    each(VEXAPI_GetSFPData, Dirty<_VEXAPI_SFP_DATA>(), "buffer");
    each(VEXAPI_GetNVMeBootDeviceEntries, Dirty<_VEXAPI_FcNVMeBootParams>(), "parameters");
    each(VEXAPI_IsFWCMFeatureEnabled, Dirty<VX_UINT8>(), "enabled");
    each(VEXAPI_GetSCMRProfile, Dirty<_VEXAPI_SCMRProfile>(), "profile");
    each(VEXAPI_DiagnosticDPortTestV2, Dirty<_VEXAPI_DiagnosticsDPortResult>(), "result");

    auto dirtyNvram = Dirty<_VEXAPI_HBAParameters>();
    _VEXAPI_HBAParameters nvram{};
    auto dirtyAuxiliary = Dirty<VX_HBA_AUX>();
    VX_HBA_AUX auxiliary{};
    ExpectMistake(VEXAPI_GetHBAParamsInfo(port, &dirtyNvram, &auxiliary), "parameters isn't cleared");
    ExpectMistake(VEXAPI_GetHBAParamsInfo(port, &nvram, &dirtyAuxiliary), "auxiliary isn't cleared");
    ExpectMistake(VEXAPI_GetBootDeviceInfo(port, &dirtyNvram, nullptr), "parameters isn't cleared");

    auto dPort = Dirty<_VEXAPI_DiagnosticsDPortResult>();
    EXPECT_EQ(VEXAPI_DiagnosticDPortTest(port, &dPort).Mbx1, 0x4005);
    EXPECT_EQ(LastCall()["mistake"], "result isn't cleared");

    char buffer[1024] = {};
    VX_UINT32 size = 1024;
    buffer[1023] = 1;
    ExpectMistake(VEXAPI_GetVpd(Word(), 0, buffer, &size), "buffer isn't cleared");
    void* dump = buffer;
    VX_UINT32 number = 0;
    ExpectMistake(VEXAPI_SDGetFwDump2(Word(), 0, &dump, &number), "dump isn't cleared");
    dump = nullptr;
    number = 1;
    ExpectMistake(VEXAPI_SDGetFwDump2(Word(), 0, &dump, &number), "size isn't cleared");
    VX_UINT8 b[4] = {};
    ExpectMistake(VEXAPI_FCGetBBCSupportInfoEx(port, b, b, b, b, buffer + 960, 64), "reason isn't cleared");
    const char* name = "50:06:0e:80:00:00:00:01";
    ExpectMistake(VEXAPI_DiagnosticsFCPingTest(port, name, 1, 0, &number, buffer, 256), "output isn't cleared");
    number = 0;
    ExpectMistake(VEXAPI_DiagnosticsFCPingTest(port, name, 1, 0, &number, buffer + 768, 256), "buffer isn't cleared");
    ExpectMistake(VEXAPI_DiagnosticsCTCommand(port, name, 1, 0, &number, buffer + 768, 256, 1), "buffer isn't cleared");
    auto echo = Dirty<_VEXAPI_ECHO_RESULTS>();
    ExpectMistake(VEXAPI_DiagnosticsEchoElsTest(port, name, 1, 0, 2, &echo), "result isn't cleared");
    size = 508;
    ExpectMistake(VEXAPI_DiagnosticsRDPTest(port, buffer + 516, &size), "buffer isn't cleared");
    auto statistics = Dirty<__STATISTICS>();
    VX_PORT_SELECTOR selector{2, {}};
    ExpectMistake(VEXAPI_GetPortStatisticsFC(Word(), 0, &selector, &statistics), "statistics isn't cleared");
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

    ExpectMistake(VEXAPI_doOptionROMUpdate(port, "/none", 1), "reserved may not be 1");
    ExpectMistake(VEXAPI_ChangePersonalityType(port, 2), "personality may not be 2");
    ExpectMistake(VEXAPI_SfpModuleFirmwareUpdate(port, "/none", 1), "option may not be 1");
    ExpectMistake(VEXAPI_GetVpd(Word(), 1, buffer, &size), "reserved may not be 1");
    ExpectMistake(VEXAPI_GetVpd(Word(), 0, buffer, &size), "size may not be 1023");
    ExpectMistake(VEXAPI_SDGetFwDump2(Word(), 1, &dump, &number), "reserved may not be 1");
    ExpectMistake(VEXAPI_UpdateAdapterBeaconStatus(port, 2), "state may not be 2");
    ExpectMistake(VEXAPI_SetBfsConfigMode(3), "mode may not be 3");
    ExpectMistake(VEXAPI_GetBootDeviceInfo(port, &nvram, buffer), "reserved isn't null");
    ExpectMistake(VEXAPI_FCGetBBCSupportInfoEx(port, b, b, b, b, buffer, 63), "reasonSize may not be 63");
    ExpectMistake(VEXAPI_FCSetBBCSupportInfo(port, 2, 0), "status may not be 2");
    ExpectMistake(VEXAPI_FCSetBBCSupportInfo(port, 1, 16), "configured may not be above 15");
    ExpectMistake(VEXAPI_FCSetFECSupportInfo(port, 2), "status may not be 2");
    ExpectMistake(VEXAPI_DiagnosticsFCPingTest(port, name, 0, 0, &number, buffer, 256), "count must be 1 to 65535");
    ExpectMistake(VEXAPI_DiagnosticsFCPingTest(port, name, 65536, 0, &number, buffer, 256), "count must be 1 to 65535");
    ExpectMistake(VEXAPI_DiagnosticsFCPingTest(port, name, 1, 2, &number, buffer, 256), "stopOnError may not be 2");
    ExpectMistake(VEXAPI_DiagnosticsFCPingTest(port, name, 1, 0, &number, buffer, 255), "size may not be 255");
    for (const char* bad : {"", "50:06:0e:80:00:00:00", "50:06:0e:80:00:00:00:0g", "50-06-0e-80-00-00-00-01",
                            "50:06:0e:80:00:00:00:01:02", "5:006:0e:80:00:00:00:01"}) {
        ExpectMistake(VEXAPI_DiagnosticsFCPingTest(port, bad, 1, 0, &number, buffer, 256),
                      "name isn't of the form xx:xx:xx:xx:xx:xx:xx:xx");
    }
    ExpectMistake(VEXAPI_DiagnosticsEchoElsTest(port, name, 2, 0, 2, &echo), "count may not be 2");
    ExpectMistake(VEXAPI_DiagnosticsEchoElsTest(port, name, 1, 0, 1, &echo), "destinationType may not be 1");
    ExpectMistake(VEXAPI_DiagnosticsCTCommand(port, name, 1, 0, &number, buffer, 256, 3), "testType may not be 3");
    ExpectMistake(VEXAPI_ConfigureAdapterDPortSettings(port, 2, 0), "enable may not be 2");
    ExpectMistake(VEXAPI_ConfigureAdapterDPortSettings(port, 1, 1), "reserved may not be 1");
    size = 507;
    ExpectMistake(VEXAPI_DiagnosticsRDPTest(port, buffer, &size), "size may not be 507");
    ExpectMistake(VEXAPI_SetTargetLinkSpeed(port, 0, 3), "speed may not be 3");
    ExpectMistake(VEXAPI_GetPortStatisticsFC(Word(), 1, &selector, &statistics), "reserved may not be 1");
    ExpectMistake(VEXAPI_GetPortStatisticsFC(Word(), 0, &selector, &statistics), "SelectorType may not be 1");
}

TEST_F(Mistakes, Start) {
    ExpectMistake(VEXAPI_Initialize(0, 0), "the library is initialized already");
    End();
    ExpectMistake(VEXAPI_Initialize(1, 0), "debugLevel may not be 1");
    ExpectMistake(VEXAPI_Initialize(0, 1), "reserved may not be 1");
    EXPECT_EQ(VEXAPI_GetAdapterList(), nullptr);
}

TEST_F(Mistakes, ListsReleasedTwiceOrByTheWrongFunction) {
    _VEXAPI_SANCONGTMGMTV2* list = nullptr;
    ASSERT_EQ(VEXAPI_GetSCMRStatisticsList(port, &list), 0U);
    const std::string reason = "the list is none that the library gave, or was released already";
    ExpectMistake(VEXAPI_FreeSCMRStatisticsList(list->pNext), reason); // not the head
    EXPECT_EQ(VEXAPI_FreeSCMRStatisticsList(list), 0U);
    ExpectMistake(VEXAPI_FreeSCMRStatisticsList(list), reason);
    DiagTestParams parameters{};
    auto* results = VEXAPI_DiagnosticsReadWriteBufferTest(port, &parameters);
    ASSERT_NE(results, nullptr);
    EXPECT_EQ(VEXAPI_FreeRWBufferTestResultList(results), 0U);
    ExpectMistake(VEXAPI_FreeRWBufferTestResultList(results), reason);
}

TEST_F(Mistakes, ListsThatAreNeverReleased) {
    _VEXAPI_SANCONGTMGMTV2* list = nullptr;
    ASSERT_EQ(VEXAPI_GetSCMRStatisticsList(port, &list), 0U);
    DiagTestParams parameters{};
    ASSERT_NE(VEXAPI_DiagnosticsReadWriteBufferTest(port, &parameters), nullptr);
    Forget();
    EXPECT_EQ(VEXAPI_Uninitialize(), 0U);
    const std::vector<Json> lines = Journal();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0]["mistake"], "a list was never given to VEXAPI_FreeSCMRStatisticsList");
    EXPECT_EQ(lines[1]["mistake"], "a list was never given to VEXAPI_FreeRWBufferTestResultList");
    EXPECT_FALSE(lines[2].contains("mistake"));
}

} // namespace
