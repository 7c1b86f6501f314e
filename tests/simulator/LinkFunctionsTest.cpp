// The functions within one session: congestion, diagnostics, targets.
#include "Functions.h"

#include <cstring>

namespace {

TEST_F(Functions, CongestionStatisticsOfPortAndTargets) {
    StartWith(R"({"CongestionStatistics": [
        {"WWPN": "21:00:00:24:ff:01:02:03", "EntryType": "0x80", "AlarmCount": 3},
        {"WWPN": "50:06:0e:80:00:00:00:01", "AlarmCount": 4, "LinkUncorFecCount": 18446744073709551615}]})");
    VX_UINT8 enabled = 0;
    EXPECT_EQ(VEXAPI_IsFWCMFeatureEnabled(Handle(), &enabled), 0U);
    EXPECT_EQ(enabled, 1);
    _VEXAPI_SANCONGTMGMTV2* list = nullptr;
    ASSERT_EQ(VEXAPI_GetSCMRStatisticsList(Handle(), &list), 0U);
    EXPECT_EQ(list->EntryType, 0x80U);
    ASSERT_NE(list->pNext, nullptr);
    EXPECT_EQ(list->pNext->LinkUncorFecCount, 18446744073709551615U);
    EXPECT_EQ(list->pNext->pNext, nullptr);
    EXPECT_EQ(VEXAPI_SANCongMgmtResetStatistics(Handle()), 0U);
    EXPECT_EQ(list->pNext->AlarmCount, 4U); // the caller has a copy
    EXPECT_EQ(VEXAPI_FreeSCMRStatisticsList(list), 0U);
    ASSERT_EQ(VEXAPI_GetSCMRStatisticsList(Handle(), &list), 0U);
    EXPECT_EQ(list->AlarmCount, 3U); // only targets are cleared
    EXPECT_EQ(list->pNext->AlarmCount, 0U);
    EXPECT_EQ(std::memcmp(list->pNext->WWPN, ARRAY_NAME, 8), 0);
    EXPECT_EQ(VEXAPI_FreeSCMRStatisticsList(list), 0U);
    EXPECT_EQ(VEXAPI_SANCongMgmtResetStatistics(Handle(1)), 118U); // not second generation
}

TEST_F(Functions, CongestionStatisticsByDefault) {
    StartWith(R"({"CongestionFeature": 0})");
    VX_UINT8 enabled = 0;
    EXPECT_EQ(VEXAPI_IsFWCMFeatureEnabled(Handle(), &enabled), 0U);
    EXPECT_EQ(enabled, 0);
    _VEXAPI_SANCONGTMGMTV2* list = nullptr;
    ASSERT_EQ(VEXAPI_GetSCMRStatisticsList(Handle(), &list), 0U);
    EXPECT_EQ(list->EntryType, 0x80U);
    EXPECT_EQ(std::memcmp(list->WWPN, Port()->WWPN, 8), 0);
    EXPECT_EQ(std::memcmp(list->pNext->pNext->WWPN, NVME_NAME, 8), 0);
    EXPECT_EQ(list->pNext->pNext->pNext, nullptr);
    EXPECT_EQ(VEXAPI_FreeSCMRStatisticsList(list), 0U);
}

TEST_F(Functions, CongestionStatisticsWithoutNodes) {
    StartWith(R"({"CongestionStatistics": []})");
    int something = 0;
    auto* list = reinterpret_cast<_VEXAPI_SANCONGTMGMTV2*>(&something);
    EXPECT_EQ(VEXAPI_GetSCMRStatisticsList(Handle(), &list), 0U);
    EXPECT_EQ(list, nullptr);
}

TEST_F(Functions, CongestionProfile) {
    StartWith();
    _VEXAPI_SCMRProfile profile{0, 1, 4, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}};
    EXPECT_EQ(VEXAPI_SetSCMRProfile(Handle(), &profile), 0U);
    _VEXAPI_SCMRProfile read{};
    EXPECT_EQ(VEXAPI_GetSCMRProfile(Handle(), &read), 0U);
    EXPECT_EQ(std::memcmp(&read, &profile, sizeof read), 0);
}

TEST_F(Functions, LoopbackIterationByIteration) {
    StartWith(R"({"Loopback": [{"TestStatus": "Success"}, {"TestStatus": "CRC mismatch", "CrcError": 3}]})");
    DiagTestParams parameters{};
    parameters.LoopbackType = 4;
    std::memcpy(parameters.CustomData, "01010101", 8);
    EXPECT_STREQ(VEXAPI_DiagnosticsLoopBackTest(Handle(), &parameters).TestStatus, "Success");
    EXPECT_EQ(LastCall()["records"]["parameters"]["CustomData"], "01010101");
    EXPECT_EQ(VEXAPI_DiagnosticsLoopBackTest(Handle(), &parameters).CrcError, 3U);
    EXPECT_EQ(VEXAPI_DiagnosticsLoopBackTest(Handle(), &parameters).CrcError, 3U); // the last one repeats
    EXPECT_STREQ(VEXAPI_DiagnosticsLoopBackTest(Handle(1), &parameters).TestStatus, "Success");
    Restart();
    EXPECT_STREQ(VEXAPI_DiagnosticsLoopBackTest(Handle(), &parameters).TestStatus, "Success");
}

TEST_F(Functions, BufferTestListByList) {
    StartWith(R"({"ReadWriteBuffer": [
        [{"TestStatus": "Success", "PortId": "01:02:03"}, {"TestStatus": "Failed", "DataMiscompare": 2}], []]})");
    DiagTestParams parameters{};
    auto* list = VEXAPI_DiagnosticsReadWriteBufferTest(Handle(), &parameters);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->PortId[2], 3);
    ASSERT_NE(list->pNext, nullptr);
    EXPECT_EQ(list->pNext->DataMiscompare, 2U);
    EXPECT_EQ(list->pNext->pNext, nullptr);
    EXPECT_EQ(VEXAPI_DiagnosticsReadWriteBufferTest(Handle(), &parameters), nullptr);
    EXPECT_EQ(VEXAPI_FreeRWBufferTestResultList(list), 0U);
}

TEST_F(Functions, BufferTestByDefault) {
    StartWith();
    DiagTestParams parameters{};
    auto* list = VEXAPI_DiagnosticsReadWriteBufferTest(Handle(), &parameters);
    ASSERT_NE(list, nullptr);
    EXPECT_STREQ(list->TestStatus, "Success");
    EXPECT_EQ(list->PortId[2], 3);
    ASSERT_NE(list->pNext, nullptr);
    EXPECT_EQ(list->pNext->PortId[2], 4);
    EXPECT_EQ(VEXAPI_FreeRWBufferTestResultList(list), 0U);
    list = VEXAPI_DiagnosticsReadWriteBufferTest(Handle(1), &parameters);
    ASSERT_NE(list, nullptr);
    EXPECT_STREQ(list->TestStatus, "No target");
    EXPECT_EQ(VEXAPI_FreeRWBufferTestResultList(list), 0U);
}

TEST_F(Functions, PingAndCtCommand) {
    StartWith();
    VX_UINT32 out = 0;
    char buffer[256] = {};
    EXPECT_EQ(VEXAPI_DiagnosticsFCPingTest(Handle(), "50:06:0E:80:00:00:00:01", 5, 1, &out, buffer, 256), 0U);
    EXPECT_EQ(out, 5U);
    EXPECT_STREQ(buffer, "5 of 5 answered");
    EXPECT_EQ(LastCall()["arguments"]["name"], "50:06:0E:80:00:00:00:01");
    out = 0;
    std::memset(buffer, 0, sizeof buffer);
    EXPECT_EQ(VEXAPI_DiagnosticsFCPingTest(Handle(), "50:06:0e:80:00:00:00:02", 5, 1, &out, buffer, 256),
              NO_SUCH_TARGET);
    EXPECT_EQ(VEXAPI_DiagnosticsCTCommand(Handle(), "50:0a:09:80:00:00:00:01", 65535, 0, &out, buffer, 256, 1), 0U);
    out = 0;
    std::memset(buffer, 0, sizeof buffer);
    EXPECT_EQ(VEXAPI_DiagnosticsCTCommand(Handle(1), "50:0a:09:80:00:00:00:01", 1, 0, &out, buffer, 256, 2),
              NO_SUCH_TARGET);
}

TEST_F(Functions, EchoFrameByFrame) {
    StartWith(R"({"Echo": [{"FrameSent": 1, "FrameReceived": 1, "ResponseLength": 128, "ResponseTime": 7,
        "EchoStatus": "012345678901234567890123456789012345678901234567890123456789012345678901"},
        {"FrameSent": 1, "EchoFailed": 1}]})");
    _VEXAPI_ECHO_RESULTS echo{};
    EXPECT_EQ(VEXAPI_DiagnosticsEchoElsTest(Handle(), "50:06:0e:80:00:00:00:01", 1, 1, 2, &echo), 0U);
    EXPECT_EQ(echo.ResponseTime, 7U);
    EXPECT_EQ(echo.EchoStatus[71], '1'); // no terminator
    echo = {};
    EXPECT_EQ(VEXAPI_DiagnosticsEchoElsTest(Handle(), "10:00:88:94:71:00:00:01", 1, 0, 3, &echo), 0U);
    EXPECT_EQ(echo.EchoFailed, 1U);
    echo = {};
    EXPECT_EQ(VEXAPI_DiagnosticsEchoElsTest(Handle(), "10:00:88:94:71:00:00:01", 1, 0, 2, &echo), NO_SUCH_TARGET);
    EXPECT_EQ(VEXAPI_DiagnosticsEchoElsTest(Handle(), "50:06:0e:80:00:00:00:01", 1, 0, 3, &echo), NO_SUCH_TARGET);
}

TEST_F(Functions, NothingAnswersOnADeadLink) {
    StartWith(R"({"PortState": 3, "RdpPayload": {"bytes": "00:00:00:00"}, "DPortMode": 1})");
    constexpr VX_UINT32 LINK_DOWN = 130;
    VX_UINT32 out = 0;
    char buffer[508] = {};
    VX_UINT32 size = 508;
    _VEXAPI_ECHO_RESULTS echo{};
    _VEXAPI_DiagnosticsDPortResult result{};
    const char* name = "50:06:0e:80:00:00:00:01";
    EXPECT_EQ(VEXAPI_DiagnosticsFCPingTest(Handle(), name, 1, 0, &out, buffer, 256), LINK_DOWN);
    EXPECT_EQ(VEXAPI_DiagnosticsCTCommand(Handle(), name, 1, 0, &out, buffer, 256, 1), LINK_DOWN);
    EXPECT_EQ(VEXAPI_DiagnosticsEchoElsTest(Handle(), name, 1, 0, 2, &echo), LINK_DOWN);
    EXPECT_EQ(VEXAPI_DiagnosticsRDPTest(Handle(), buffer, &size), LINK_DOWN);
    EXPECT_EQ(VEXAPI_DiagnosticDPortTestV2(Handle(), &result), LINK_DOWN);
}

TEST_F(Functions, DiagnosticPortMode) {
    StartWith(R"({"DPortResult": {"RoundtripLinkLatency": 292, "CableLinkDistance": 27, "HbaPortStatus": 1,
                                  "LocalTxPower": 6694, "Mbx1": "0x4000", "StartTime": "now\n"}})");
    EXPECT_EQ(VEXAPI_CheckAdapterDPortOption(Handle()), 0U);
    _VEXAPI_DiagnosticsDPortResult in{};
    EXPECT_EQ(VEXAPI_DiagnosticDPortTestV2(Handle(), &in), 129U);
    auto result = VEXAPI_DiagnosticDPortTest(Handle(), &in);
    EXPECT_EQ(result.Mbx1, 0x4005);
    EXPECT_EQ(result.Mbx2, 71); // incorrect state
    EXPECT_EQ(VEXAPI_ConfigureAdapterDPortSettings(Handle(), 1, 0), 0U);
    EXPECT_EQ(VEXAPI_CheckAdapterDPortOption(Handle()), 1U);
    EXPECT_EQ(RebootRequired(), 1U);
    EXPECT_EQ(VEXAPI_DiagnosticDPortTestV2(Handle(), &in), 0U);
    result = VEXAPI_DiagnosticDPortTest(Handle(), &(in = {}));
    EXPECT_EQ(result.Mbx1, 0x4000);
    // 292 is 0x00000124, stored with the high byte first; 6694 is 0x1A26.
    const VX_UINT8 latency[4] = {0, 0, 1, 0x24};
    EXPECT_EQ(std::memcmp(&result.RoundtripLinkLatency, latency, 4), 0);
    const VX_UINT8 power[2] = {0x1A, 0x26};
    EXPECT_EQ(std::memcmp(&result.LocalTxPower, power, 2), 0);
    EXPECT_STREQ(result.StartTime, "now\n");
    EXPECT_EQ(VEXAPI_ConfigureAdapterDPortSettings(Handle(), 0, 0), 0U);
    EXPECT_EQ(VEXAPI_CheckAdapterDPortOption(Handle()), 0U);
}

TEST_F(Functions, DiagnosticPortTestNeedsSpeedAndAPortOfItsOwn) {
    Json host = SmallHost();
    PortOf(host, 0).update(Json::parse(R"({"DPortMode": 1, "PortSpeed": 16})"));
    PortOf(host, 1).update(Json::parse(R"({"DPortMode": 1, "PortInterfaceType": 3})"));
    Describe(host);
    ASSERT_EQ(Start(), 0U) << output;
    _VEXAPI_DiagnosticsDPortResult in{};
    EXPECT_EQ(VEXAPI_DiagnosticDPortTestV2(Handle(0), &in), 131U);
    EXPECT_EQ(VEXAPI_DiagnosticDPortTestV2(Handle(1), &in), 29U);
}

TEST_F(Functions, DiagnosticParametersOfTheLinkPartner) {
    StartWith(R"({"RdpPayload": {"bytes": "00:00:00:08:00:01"}, "RdpSize": 9})");
    char buffer[508] = {};
    VX_UINT32 size = 508;
    EXPECT_EQ(VEXAPI_DiagnosticsRDPTest(Handle(), buffer, &size), 0U);
    EXPECT_EQ(size, 9U);
    EXPECT_EQ(buffer[3], 8);
    size = 508;
    EXPECT_EQ(VEXAPI_DiagnosticsRDPTest(Handle(1), buffer + 0, &size), CALLERS_MISTAKE);
    char fresh[508] = {};
    EXPECT_EQ(VEXAPI_DiagnosticsRDPTest(Handle(1), fresh, &size), NO_ANSWER);
}

TEST_F(Functions, LinkSpeedOfTargets) {
    Json host = SmallHost();
    PortOf(host)["Targets"][1]["LinkSpeed"] = 8;
    PortOf(host)["Targets"][1]["TargetNumber"] = 42;
    Describe(host);
    ASSERT_EQ(Start(), 0U) << output;
    VX_UINT32 speed = 0;
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(Handle(), 0, &speed), 0U);
    EXPECT_EQ(speed, 50U); // the port's
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(Handle(), 42, &speed), 0U);
    EXPECT_EQ(speed, 8U);
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(Handle(), 1, &speed), NO_SUCH_TARGET);
    EXPECT_EQ(VEXAPI_SetTargetLinkSpeed(Handle(), 42, 100), 0U);
    EXPECT_EQ(VEXAPI_SetTargetLinkSpeed(Handle(), 1, 100), NO_SUCH_TARGET);
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(Handle(), 42, &speed), 0U);
    EXPECT_EQ(speed, 100U);
}

TEST_F(Functions, StatisticsOfTargets) {
    Json host = SmallHost();
    PortOf(host)["Targets"][0]["Statistics"] = {{"LinkFailureCount", 1}, {"LinkDevSpecCount", 17}};
    Describe(host);
    ASSERT_EQ(Start(), 0U) << output;
    VX_PORT_SELECTOR selector{2, {}};
    std::memcpy(selector.PortName, ARRAY_NAME, 8);
    __STATISTICS statistics{};
    EXPECT_EQ(VEXAPI_GetPortStatisticsFC(Word(), 0, &selector, &statistics), 0U);
    EXPECT_EQ(statistics.LinkFailureCount, 1U);
    EXPECT_EQ(statistics.LinkDevSpecCount, 17U);
    EXPECT_EQ(LastCall()["records"]["selector"]["PortName"], "50:06:0e:80:00:00:00:01");
    statistics = {};
    selector.PortName[7] = 9;
    EXPECT_EQ(VEXAPI_GetPortStatisticsFC(Word(), 0, &selector, &statistics), NO_SUCH_TARGET);
}

} // namespace
