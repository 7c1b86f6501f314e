// What the functions answer and change within one session: congestion, diagnostics, targets.
#include "Functions.h"

#include <cstring>

namespace {

TEST_F(Functions, CongestionStatisticsOfPortAndTargets) {
    startWith(R"({"CongestionStatistics": [
        {"WWPN": "21:00:00:24:ff:01:02:03", "EntryType": "0x80", "AlarmCount": 3},
        {"WWPN": "50:06:0e:80:00:00:00:01", "AlarmCount": 4, "LinkUncorFecCount": 18446744073709551615}]})");
    VX_UINT8 enabled = 0;
    EXPECT_EQ(VEXAPI_IsFWCMFeatureEnabled(handle(), &enabled), 0U);
    EXPECT_EQ(enabled, 1);
    _VEXAPI_SANCONGTMGMTV2* list = nullptr;
    ASSERT_EQ(VEXAPI_GetSCMRStatisticsList(handle(), &list), 0U);
    EXPECT_EQ(list->EntryType, 0x80U);
    ASSERT_NE(list->pNext, nullptr);
    EXPECT_EQ(list->pNext->LinkUncorFecCount, 18446744073709551615U);
    EXPECT_EQ(list->pNext->pNext, nullptr);
    EXPECT_EQ(VEXAPI_SANCongMgmtResetStatistics(handle()), 0U);
    EXPECT_EQ(list->pNext->AlarmCount, 4U); // the list is the caller's
    EXPECT_EQ(VEXAPI_FreeSCMRStatisticsList(list), 0U);
    ASSERT_EQ(VEXAPI_GetSCMRStatisticsList(handle(), &list), 0U);
    EXPECT_EQ(list->AlarmCount, 3U); // only targets are cleared
    EXPECT_EQ(list->pNext->AlarmCount, 0U);
    EXPECT_EQ(std::memcmp(list->pNext->WWPN, arrayName, 8), 0);
    EXPECT_EQ(VEXAPI_FreeSCMRStatisticsList(list), 0U);
    EXPECT_EQ(VEXAPI_SANCongMgmtResetStatistics(handle(1)), 118U); // without the second generation
}

TEST_F(Functions, CongestionStatisticsByDefault) {
    startWith(R"({"CongestionFeature": 0})");
    VX_UINT8 enabled = 0;
    EXPECT_EQ(VEXAPI_IsFWCMFeatureEnabled(handle(), &enabled), 0U);
    EXPECT_EQ(enabled, 0);
    _VEXAPI_SANCONGTMGMTV2* list = nullptr;
    ASSERT_EQ(VEXAPI_GetSCMRStatisticsList(handle(), &list), 0U);
    EXPECT_EQ(list->EntryType, 0x80U);
    EXPECT_EQ(std::memcmp(list->WWPN, port()->WWPN, 8), 0);
    EXPECT_EQ(std::memcmp(list->pNext->pNext->WWPN, nvmeName, 8), 0);
    EXPECT_EQ(list->pNext->pNext->pNext, nullptr);
    EXPECT_EQ(VEXAPI_FreeSCMRStatisticsList(list), 0U);
}

TEST_F(Functions, CongestionStatisticsWithoutNodes) {
    startWith(R"({"CongestionStatistics": []})");
    int something = 0;
    auto* list = reinterpret_cast<_VEXAPI_SANCONGTMGMTV2*>(&something);
    EXPECT_EQ(VEXAPI_GetSCMRStatisticsList(handle(), &list), 0U);
    EXPECT_EQ(list, nullptr);
}

TEST_F(Functions, CongestionProfile) {
    startWith();
    _VEXAPI_SCMRProfile profile{0, 1, 4, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}};
    EXPECT_EQ(VEXAPI_SetSCMRProfile(handle(), &profile), 0U);
    _VEXAPI_SCMRProfile read{};
    EXPECT_EQ(VEXAPI_GetSCMRProfile(handle(), &read), 0U);
    EXPECT_EQ(std::memcmp(&read, &profile, sizeof read), 0);
}

TEST_F(Functions, LoopbackIterationByIteration) {
    startWith(R"({"Loopback": [{"TestStatus": "Success"}, {"TestStatus": "CRC mismatch", "CrcError": 3}]})");
    DiagTestParams parameters{};
    parameters.LoopbackType = 4;
    std::memcpy(parameters.CustomData, "01010101", 8);
    EXPECT_STREQ(VEXAPI_DiagnosticsLoopBackTest(handle(), &parameters).TestStatus, "Success");
    EXPECT_EQ(lastCall()["records"]["parameters"]["CustomData"], "01010101");
    EXPECT_EQ(VEXAPI_DiagnosticsLoopBackTest(handle(), &parameters).CrcError, 3U);
    EXPECT_EQ(VEXAPI_DiagnosticsLoopBackTest(handle(), &parameters).CrcError, 3U); // the last one stays
    EXPECT_STREQ(VEXAPI_DiagnosticsLoopBackTest(handle(1), &parameters).TestStatus, "Success");
    restart();
    EXPECT_STREQ(VEXAPI_DiagnosticsLoopBackTest(handle(), &parameters).TestStatus, "Success");
}

TEST_F(Functions, BufferTestListByList) {
    startWith(R"({"ReadWriteBuffer": [
        [{"TestStatus": "Success", "PortId": "01:02:03"}, {"TestStatus": "Failed", "DataMiscompare": 2}], []]})");
    DiagTestParams parameters{};
    auto* list = VEXAPI_DiagnosticsReadWriteBufferTest(handle(), &parameters);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->PortId[2], 3);
    ASSERT_NE(list->pNext, nullptr);
    EXPECT_EQ(list->pNext->DataMiscompare, 2U);
    EXPECT_EQ(list->pNext->pNext, nullptr);
    EXPECT_EQ(VEXAPI_DiagnosticsReadWriteBufferTest(handle(), &parameters), nullptr);
    EXPECT_EQ(VEXAPI_FreeRWBufferTestResultList(list), 0U);
}

TEST_F(Functions, BufferTestByDefault) {
    startWith();
    DiagTestParams parameters{};
    auto* list = VEXAPI_DiagnosticsReadWriteBufferTest(handle(), &parameters);
    ASSERT_NE(list, nullptr);
    EXPECT_STREQ(list->TestStatus, "Success");
    EXPECT_EQ(list->PortId[2], 3);
    ASSERT_NE(list->pNext, nullptr);
    EXPECT_EQ(list->pNext->PortId[2], 4);
    EXPECT_EQ(VEXAPI_FreeRWBufferTestResultList(list), 0U);
    list = VEXAPI_DiagnosticsReadWriteBufferTest(handle(1), &parameters);
    ASSERT_NE(list, nullptr);
    EXPECT_STREQ(list->TestStatus, "No target");
    EXPECT_EQ(VEXAPI_FreeRWBufferTestResultList(list), 0U);
}

TEST_F(Functions, PingAndCtCommand) {
    startWith();
    VX_UINT32 out = 0;
    char buffer[256] = {};
    EXPECT_EQ(VEXAPI_DiagnosticsFCPingTest(handle(), "50:06:0E:80:00:00:00:01", 5, 1, &out, buffer, 256), 0U);
    EXPECT_EQ(out, 5U);
    EXPECT_STREQ(buffer, "5 of 5 answered");
    EXPECT_EQ(lastCall()["arguments"]["name"], "50:06:0E:80:00:00:00:01");
    out = 0;
    std::memset(buffer, 0, sizeof buffer);
    EXPECT_EQ(VEXAPI_DiagnosticsFCPingTest(handle(), "50:06:0e:80:00:00:00:02", 5, 1, &out, buffer, 256), noSuchTarget);
    EXPECT_EQ(VEXAPI_DiagnosticsCTCommand(handle(), "50:0a:09:80:00:00:00:01", 65535, 0, &out, buffer, 256, 1), 0U);
    out = 0;
    std::memset(buffer, 0, sizeof buffer);
    EXPECT_EQ(VEXAPI_DiagnosticsCTCommand(handle(1), "50:0a:09:80:00:00:00:01", 1, 0, &out, buffer, 256, 2),
              noSuchTarget);
}

TEST_F(Functions, EchoFrameByFrame) {
    startWith(R"({"Echo": [{"FrameSent": 1, "FrameReceived": 1, "ResponseLength": 128, "ResponseTime": 7,
        "EchoStatus": "012345678901234567890123456789012345678901234567890123456789012345678901"},
        {"FrameSent": 1, "EchoFailed": 1}]})");
    _VEXAPI_ECHO_RESULTS echo{};
    EXPECT_EQ(VEXAPI_DiagnosticsEchoElsTest(handle(), "50:06:0e:80:00:00:00:01", 1, 1, 2, &echo), 0U);
    EXPECT_EQ(echo.ResponseTime, 7U);
    EXPECT_EQ(echo.EchoStatus[71], '1'); // no terminator
    echo = {};
    EXPECT_EQ(VEXAPI_DiagnosticsEchoElsTest(handle(), "10:00:88:94:71:00:00:01", 1, 0, 3, &echo), 0U);
    EXPECT_EQ(echo.EchoFailed, 1U);
    echo = {};
    EXPECT_EQ(VEXAPI_DiagnosticsEchoElsTest(handle(), "10:00:88:94:71:00:00:01", 1, 0, 2, &echo), noSuchTarget);
    EXPECT_EQ(VEXAPI_DiagnosticsEchoElsTest(handle(), "50:06:0e:80:00:00:00:01", 1, 0, 3, &echo), noSuchTarget);
}

TEST_F(Functions, NothingAnswersOnADeadLink) {
    startWith(R"({"PortState": 3, "RdpPayload": {"bytes": "00:00:00:00"}, "DPortMode": 1})");
    constexpr VX_UINT32 linkDown = 130;
    VX_UINT32 out = 0;
    char buffer[508] = {};
    VX_UINT32 size = 508;
    _VEXAPI_ECHO_RESULTS echo{};
    _VEXAPI_DiagnosticsDPortResult result{};
    const char* name = "50:06:0e:80:00:00:00:01";
    EXPECT_EQ(VEXAPI_DiagnosticsFCPingTest(handle(), name, 1, 0, &out, buffer, 256), linkDown);
    EXPECT_EQ(VEXAPI_DiagnosticsCTCommand(handle(), name, 1, 0, &out, buffer, 256, 1), linkDown);
    EXPECT_EQ(VEXAPI_DiagnosticsEchoElsTest(handle(), name, 1, 0, 2, &echo), linkDown);
    EXPECT_EQ(VEXAPI_DiagnosticsRDPTest(handle(), buffer, &size), linkDown);
    EXPECT_EQ(VEXAPI_DiagnosticDPortTestV2(handle(), &result), linkDown);
}

TEST_F(Functions, DiagnosticPortMode) {
    startWith(R"({"DPortResult": {"RoundtripLinkLatency": 292, "CableLinkDistance": 27, "HbaPortStatus": 1,
                                  "LocalTxPower": 6694, "Mbx1": "0x4000", "StartTime": "now\n"}})");
    EXPECT_EQ(VEXAPI_CheckAdapterDPortOption(handle()), 0U);
    _VEXAPI_DiagnosticsDPortResult in{};
    EXPECT_EQ(VEXAPI_DiagnosticDPortTestV2(handle(), &in), 129U);
    auto result = VEXAPI_DiagnosticDPortTest(handle(), &in);
    EXPECT_EQ(result.Mbx1, 0x4005);
    EXPECT_EQ(result.Mbx2, 71); // incorrect state
    EXPECT_EQ(VEXAPI_ConfigureAdapterDPortSettings(handle(), 1, 0), 0U);
    EXPECT_EQ(VEXAPI_CheckAdapterDPortOption(handle()), 1U);
    EXPECT_EQ(rebootRequired(), 1U);
    EXPECT_EQ(VEXAPI_DiagnosticDPortTestV2(handle(), &in), 0U);
    result = VEXAPI_DiagnosticDPortTest(handle(), &(in = {}));
    EXPECT_EQ(result.Mbx1, 0x4000);
    // 292 is 0x00000124, stored with the high byte first; 6694 is 0x1A26.
    const VX_UINT8 latency[4] = {0, 0, 1, 0x24};
    EXPECT_EQ(std::memcmp(&result.RoundtripLinkLatency, latency, 4), 0);
    const VX_UINT8 power[2] = {0x1A, 0x26};
    EXPECT_EQ(std::memcmp(&result.LocalTxPower, power, 2), 0);
    EXPECT_STREQ(result.StartTime, "now\n");
    EXPECT_EQ(VEXAPI_ConfigureAdapterDPortSettings(handle(), 0, 0), 0U);
    EXPECT_EQ(VEXAPI_CheckAdapterDPortOption(handle()), 0U);
}

TEST_F(Functions, DiagnosticPortTestNeedsSpeedAndAPortOfItsOwn) {
    Json host = smallHost();
    portOf(host, 0).update(Json::parse(R"({"DPortMode": 1, "PortSpeed": 16})"));
    portOf(host, 1).update(Json::parse(R"({"DPortMode": 1, "PortInterfaceType": 3})"));
    describe(host);
    ASSERT_EQ(start(), 0U) << output;
    _VEXAPI_DiagnosticsDPortResult in{};
    EXPECT_EQ(VEXAPI_DiagnosticDPortTestV2(handle(0), &in), 131U);
    EXPECT_EQ(VEXAPI_DiagnosticDPortTestV2(handle(1), &in), 29U);
}

TEST_F(Functions, DiagnosticParametersOfTheLinkPartner) {
    startWith(R"({"RdpPayload": {"bytes": "00:00:00:08:00:01"}, "RdpSize": 9})");
    char buffer[508] = {};
    VX_UINT32 size = 508;
    EXPECT_EQ(VEXAPI_DiagnosticsRDPTest(handle(), buffer, &size), 0U);
    EXPECT_EQ(size, 9U);
    EXPECT_EQ(buffer[3], 8);
    size = 508;
    EXPECT_EQ(VEXAPI_DiagnosticsRDPTest(handle(1), buffer + 0, &size), callersMistake);
    char fresh[508] = {};
    EXPECT_EQ(VEXAPI_DiagnosticsRDPTest(handle(1), fresh, &size), noAnswer);
}

TEST_F(Functions, LinkSpeedOfTargets) {
    Json host = smallHost();
    portOf(host)["Targets"][1]["LinkSpeed"] = 8;
    portOf(host)["Targets"][1]["TargetNumber"] = 42;
    describe(host);
    ASSERT_EQ(start(), 0U) << output;
    VX_UINT32 speed = 0;
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(handle(), 0, &speed), 0U);
    EXPECT_EQ(speed, 50U); // the port's
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(handle(), 42, &speed), 0U);
    EXPECT_EQ(speed, 8U);
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(handle(), 1, &speed), noSuchTarget);
    EXPECT_EQ(VEXAPI_SetTargetLinkSpeed(handle(), 42, 100), 0U);
    EXPECT_EQ(VEXAPI_SetTargetLinkSpeed(handle(), 1, 100), noSuchTarget);
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(handle(), 42, &speed), 0U);
    EXPECT_EQ(speed, 100U);
}

TEST_F(Functions, StatisticsOfTargets) {
    Json host = smallHost();
    portOf(host)["Targets"][0]["Statistics"] = {{"LinkFailureCount", 1}, {"LinkDevSpecCount", 17}};
    describe(host);
    ASSERT_EQ(start(), 0U) << output;
    VX_PORT_SELECTOR selector{2, {}};
    std::memcpy(selector.PortName, arrayName, 8);
    __STATISTICS statistics{};
    EXPECT_EQ(VEXAPI_GetPortStatisticsFC(word(), 0, &selector, &statistics), 0U);
    EXPECT_EQ(statistics.LinkFailureCount, 1U);
    EXPECT_EQ(statistics.LinkDevSpecCount, 17U);
    EXPECT_EQ(lastCall()["records"]["selector"]["PortName"], "50:06:0e:80:00:00:00:01");
    statistics = {};
    selector.PortName[7] = 9;
    EXPECT_EQ(VEXAPI_GetPortStatisticsFC(word(), 0, &selector, &statistics), noSuchTarget);
}

} // namespace
