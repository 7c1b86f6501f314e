#include "FamilyTest.h"

using namespace family_test;

namespace {

class PersonalityTest : public FamilyTest {
protected:
    PersonalityTest() {
        SetChip(*port, ROWAN_CNA);
        Fake().Return("VEXAPI_CheckRowanPersonalityChangeOption", 1);
        Fake().onGetPersonalityType = [this](VX_PORT_HANDLE*, unsigned char* given) {
            *given = personality;
            return 0u;
        };
        Fake().onChangePersonalityType = [](VX_PORT_HANDLE*, unsigned char) { return 0u; };
    }
    static std::string Got(const Format& format, const std::string& message, const std::string& word) {
        return format.Flat("AdapterPersonality", {{"Message", message}, {"Personality", word}});
    }
    static std::string Set(const Format& format, bool reboot, const std::string& message, const std::string& word) {
        return format.Flat("AdapterPersonality",
                           {Flag("Reboot Required", reboot), {"Message", message}, {"Personality", word}});
    }
    static void ExpectGet(ResultCode code, const std::string& message, const std::string& word, const Calls& calls) {
        const CommandRun run = RunAdapter("personality", "get");
        EXPECT_EQ(run.code, code);
        EXPECT_EQ(run.output, Got(XML, message, word));
        EXPECT_EQ(PortCalls(), calls);
    }
    static void ExpectSet(const std::string& rest, ResultCode code, bool reboot, const std::string& message,
                          const std::string& word, const Calls& calls) {
        for (const Format& format : FORMATS) {
            const CommandRun run = RunAdapter("personality", format.Leaf("set"), rest);
            EXPECT_EQ(run.code, code) << rest;
            EXPECT_EQ(run.output, Set(format, reboot, message, word)) << rest;
            EXPECT_EQ(PortCalls(), calls) << rest;
        }
    }

    unsigned char personality = 0;
    const std::string check = Call("CheckRowanPersonalityChangeOption");
    const std::string get = Call("GetPersonalityType");
    const std::string toFc = Call("ChangePersonalityType", "0");
    const std::string toCna = Call("ChangePersonalityType", "1");
};

TEST_F(PersonalityTest, IsByteExact) {
    EXPECT_EQ(RunAdapter("personality", "get").output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                                                       "<structure typeName=\"AdapterPersonality\">\n"
                                                       "<field name=\"Message\">\n<string>Success</string></field>\n"
                                                       "<field name=\"Personality\">\n<string>FC</string></field>\n"
                                                       "</structure>\n"
                                                       "</output>\n");
    EXPECT_EQ(RunAdapter("personality", "setcli", "CNA").output,
              "****************************************************\n"
              "AdapterPersonality:\n"
              "Reboot Required: true\n"
              "Message: Success\n"
              "Personality: CNA\n"
              "****************************************************\n");
    Fake().Return("VEXAPI_CheckRowanPersonalityChangeOption", 0);
    EXPECT_EQ(RunAdapter("personality", "setcli", "CNA").output,
              "****************************************************\n"
              "AdapterPersonality:\n"
              "Reboot Required: false\n"
              "Message: Failed, Personality change not allowed for user\n"
              "Personality: Unknown\n"
              "****************************************************\n");
}

TEST_F(PersonalityTest, GetAsksRowanChipsOnly) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        SCOPED_TRACE(chip.name);
        if (chip.chip == ROWAN_FC || chip.chip == ROWAN_CNA) {
            static constexpr const char* WORDS[] = {"FC", "CNA", "Unknown", "Unknown"};
            static constexpr unsigned char VALUES[] = {0, 1, 2, 255};
            for (std::size_t i = 0; i < std::size(VALUES); ++i) {
                personality = VALUES[i];
                ExpectGet(RC_SUCCESS, "Success", WORDS[i], {get});
            }
        } else {
            ExpectGet(RC_SUCCESS, "Success", chip.chip == WILLOW ? "CNA" : "FC", {});
        }
    }
}

TEST_F(PersonalityTest, GetTellsWhyItFails) {
    for (const VX_UINT32 status : {1u, 118u, 0x80000000u}) {
        Fake().ReturnInTurn("VEXAPI_GetPersonalityType", {status});
        ExpectGet(RC_CFG_READ_FAILED, "Failed, Personality read failed", "Unknown", {get});
    }
    for (const ChipRow& chip : CHIPS) { // before the chip
        SetChip(*port, chip.chip);
        port->PortInterfaceType = 3;
        ExpectGet(RC_NOT_SUPPORTED_FOR_VPORT, "Failed, Feature not supported for virtual port", "Unknown", {});
    }
    LoseHost();
    ExpectGet(RC_HOST_NOT_FOUND, "Failed, Host not found", "Unknown", {});
    Fake().host.hasList = true;
    port->PortInterfaceType = 1;
    port->ProtocolType = 2; // resolved through its NIC, but without FC protocol
    ExpectGet(RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found", "Unknown", {});
}

TEST_F(PersonalityTest, AnyWordButCnaMeansFc) {
    for (const char* word : {"CNA", "cna", "Cna", "CNA extra"}) {
        personality = 0;
        ExpectSet(word, RC_SUCCESS, true, "Success", "CNA", {check, get, toCna});
    }
    for (const char* word : {"", "FC", "fc", "CN", "CNAs", "1", "bad", "help"}) {
        personality = 1;
        ExpectSet(word, RC_SUCCESS, true, "Success", "FC", {check, get, toFc});
    }
}

/// "Reboot Required" is true even if nothing changes.
TEST_F(PersonalityTest, SetChangesOnlyWhatDiffers) {
    personality = 0;
    ExpectSet("fc", RC_SUCCESS, true, "Success", "FC", {check, get});
    personality = 1;
    ExpectSet("CNA", RC_SUCCESS, true, "Success", "CNA", {check, get});
    personality = 7; // neither
    ExpectSet("CNA", RC_SUCCESS, true, "Success", "CNA", {check, get, toCna});
    ExpectSet("FC", RC_SUCCESS, true, "Success", "FC", {check, get, toFc});
}

TEST_F(PersonalityTest, SetRefusesInOrder) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        SCOPED_TRACE(chip.name);
        const bool isRowan = chip.chip == ROWAN_FC || chip.chip == ROWAN_CNA;
        port->PortInterfaceType = 1;
        if (isRowan) {
            ExpectSet("CNA", RC_SUCCESS, true, "Success", "CNA", {check, get, toCna});
        } else {
            ExpectSet("CNA", RC_FEATURE_NOT_SUPPORTED, false, "Failed, Not supported for this adapter", "Unknown", {});
        }
        port->PortInterfaceType = 3; // after the chip
        ExpectSet("CNA", isRowan ? RC_NOT_SUPPORTED_FOR_VPORT : RC_FEATURE_NOT_SUPPORTED, false,
                  isRowan ? "Failed, Feature not supported for virtual port" : "Failed, Not supported for this adapter",
                  "Unknown", {});
    }
    SetChip(*port, ROWAN_FC);
    port->PortInterfaceType = 1;
    for (const VX_UINT32 answer : {0u, 2u, 0xFFFFFFFFu}) { // only 1 allows it
        Fake().Return("VEXAPI_CheckRowanPersonalityChangeOption", answer);
        ExpectSet("bad", RC_DISABLED_FOR_USER, false, "Failed, Personality change not allowed for user", "Unknown",
                  {check});
    }
}

TEST_F(PersonalityTest, SetTellsWhyItFails) {
    Fake().Return("VEXAPI_GetPersonalityType", 3);
    ExpectSet("CNA", RC_CFG_READ_FAILED, false, "Failed, Personality read failed", "Unknown", {check, get});
    Fake().Return("VEXAPI_GetPersonalityType", 0);
    Fake().Return("VEXAPI_ChangePersonalityType", 3);
    ExpectSet("CNA", RC_CFG_UPDATE_FAILED, false, "Failed, Personality change failed", "Unknown", {check, get, toCna});
    ExpectSet("FC", RC_SUCCESS, true, "Success", "FC", {check, get}); // nothing to change, nothing to fail
    LoseHost();
    ExpectSet("FC", RC_HOST_NOT_FOUND, false, "Failed, Host not found", "Unknown", {});
    Fake().host.hasList = true;
    port->ProtocolType = 3;
    ExpectSet("FC", RC_ADAPTER_NOT_FOUND, false, "Failed, Adapter not found", "Unknown", {});
}

TEST_F(PersonalityTest, CliLeavesPrintTheirUsage) {
    const CommandRun got = Run("-t adapter -s personality getcli Adapter_x_y");
    EXPECT_EQ(got.code, RC_INVALID_PARAMETER);
    EXPECT_EQ(got.output, Got(TEXT, "Failed, Invalid parameter", "Unknown") + "Usage: get [adapter identifier]\r\n");
    const CommandRun set = Run("-t adapter -s personality setcli help CNA");
    EXPECT_EQ(set.code, RC_HELP_REQUESTED);
    EXPECT_EQ(set.output, Set(TEXT, false, "Failed, Unknown", "Unknown") + "Usage: set [adapter identifier]\r\n");
    EXPECT_EQ(Run("-t adapter -s personality set").output, Set(XML, false, "Failed, Invalid parameter", "Unknown"));
}

/// None of these calls is redirected: output of the library reaches the client.
TEST_F(PersonalityTest, CallsStandOutsideTheRedirection) {
    Fake().Return("VEXAPI_CheckRowanPersonalityChangeOption", 0); // leaves the answer to the hook
    Fake().onCheckRowanPersonalityChangeOption = [](VX_PORT_HANDLE*) {
        std::printf("check\n");
        return 1u;
    };
    Fake().onGetPersonalityType = [](VX_PORT_HANDLE*, unsigned char* given) {
        std::printf("get\n");
        *given = 0;
        return 0u;
    };
    Fake().onChangePersonalityType = [](VX_PORT_HANDLE*, unsigned char) {
        std::printf("change\n");
        return 0u;
    };
    EXPECT_EQ(RunAdapter("personality", "set", "CNA").output,
              "check\nget\nchange\n" + Set(XML, true, "Success", "CNA"));
    EXPECT_EQ(RunAdapter("personality", "get").output, "get\n" + Got(XML, "Success", "FC"));
}

} // namespace
