#include "FamilyTest.h"

using namespace family_test;

namespace {

class BeaconTest : public FamilyTest {
protected:
    BeaconTest() {
        Fake().onIsMezzAdapter = [this](VX_PORT_HANDLE*, VX_UINT8* flag) {
            Chatter();
            *flag = mezzanineFlag;
            return 0u;
        };
        Fake().onGetAdapterBeaconStatus = [this](VX_PORT_HANDLE*, VEXAPI_BEACON_TYPE* read) {
            Chatter();
            *read = state;
            return 0u;
        };
        Fake().onUpdateAdapterBeaconStatus = [this](VX_PORT_HANDLE*, VEXAPI_BEACON_TYPE asked) {
            Chatter();
            state = isStubborn ? state : asked;
            return 0u;
        };
    }
    static std::string Document(const Format& format, const std::string& message, const std::string& word) {
        return format.Flat("BeaconInfo", {{"Message", message}, {"Beacon State", word}});
    }
    void Expect(const std::string& leaf, const std::string& rest, ResultCode code, const std::string& message,
                const std::string& word, const Calls& calls) const {
        const CommandRun run = RunPort("beacon", leaf, rest);
        EXPECT_EQ(run.code, code) << leaf << " " << rest;
        EXPECT_EQ(run.output, Document(XML, message, word)) << leaf << " " << rest;
        EXPECT_EQ(PortCalls(), calls) << leaf << " " << rest;
    }

    VX_UINT8 mezzanineFlag = 0;
    VEXAPI_BEACON_TYPE state = 0;
    bool isStubborn = false;
    const std::string mezz = Call("IsMezzAdapter");
    const std::string get = Call("GetAdapterBeaconStatus");
    const std::string on = Call("UpdateAdapterBeaconStatus", "1");
    const std::string off = Call("UpdateAdapterBeaconStatus", "0");
};

TEST_F(BeaconTest, IsByteExact) {
    EXPECT_EQ(RunPort("beacon", "set", "on").output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                                                     "<structure typeName=\"BeaconInfo\">\n"
                                                     "<field name=\"Message\">\n<string>Success</string></field>\n"
                                                     "<field name=\"Beacon State\">\n<string>ON</string></field>\n"
                                                     "</structure>\n"
                                                     "</output>\n");
    EXPECT_EQ(RunPort("beacon", "getcli").output, "****************************************************\n"
                                                  "BeaconInfo:\n"
                                                  "Message: Success\n"
                                                  "Beacon State: ON\n"
                                                  "****************************************************\n");
    port->PortInterfaceType = 3;
    EXPECT_EQ(RunPort("beacon", "getcli").output, "****************************************************\n"
                                                  "BeaconInfo:\n"
                                                  "Message: Failed, feature not supported for virtual port\n"
                                                  "Beacon State: Unknown\n"
                                                  "****************************************************\n");
}

TEST_F(BeaconTest, ShowsTheState) {
    static constexpr struct {
        VEXAPI_BEACON_TYPE state;
        const char* word;
    } CASES[] = {{0, "OFF"}, {1, "ON"}, {2, "Unknown"}, {0x100, "Unknown"}, {0xFFFFFFFF, "Unknown"}};
    for (const auto& row : CASES) {
        state = row.state;
        Expect("get", "", RC_SUCCESS, "Success", row.word, {mezz, get});
        EXPECT_EQ(RunPort("beacon", "getcli").output, Document(TEXT, "Success", row.word));
    }
}

TEST_F(BeaconTest, SetTakesOnAndOffInAnyCase) {
    for (const char* word : {"ON", "on", "On", "oN", "ON extra"}) {
        state = 0;
        Expect("set", word, RC_SUCCESS, "Success", "ON", {mezz, on, get});
    }
    for (const char* word : {"OFF", "off", "Off", "oFf"}) {
        state = 1;
        Expect("set", word, RC_SUCCESS, "Success", "OFF", {mezz, off, get});
    }
    for (const char* word : {"", "1", "0", "true", "O", "ONE", "OFFF", "beacon"}) {
        Expect("set", word, RC_INVALID_PARAMETER, "Failed, Invalid parameter", "Unknown", {mezz});
    }
}

/// Shows the state that is read back, not the requested one.
TEST_F(BeaconTest, SetShowsWhatTheAdapterSays) {
    isStubborn = true;
    state = 0;
    Expect("set", "ON", RC_SUCCESS, "Success", "OFF", {mezz, on, get});
    state = 2;
    Expect("set", "OFF", RC_SUCCESS, "Success", "Unknown", {mezz, off, get});
}

/// The `cli` leaves print the usage of `fec`, whose words are the same.
TEST_F(BeaconTest, CliLeavesPrintAUsage) {
    const std::string invalid = Document(TEXT, "Failed, Invalid parameter", "Unknown");
    EXPECT_EQ(RunPort("beacon", "setcli", "1").output, invalid + "Usage: set\r\n");
    EXPECT_EQ(Run("-t port -s beacon getcli FC_x").output, invalid + "Usage: get\r\n");
    EXPECT_EQ(Run("-t port -s beacon getcli ?").output, "Usage: get\r\n");
}

TEST_F(BeaconTest, OnlyFlagOneIsAMezzanineAdapter) {
    for (const std::string leaf : {"get", "set"}) {
        mezzanineFlag = 1;
        for (const ChipRow& chip : CHIPS) {
            SetChip(*port, chip.chip);
            Expect(leaf, "on", RC_FEATURE_NOT_SUPPORTED, "Failed, feature not supported", "Unknown", {mezz});
        }
        SetChip(*port, BIRCH);
        for (const int flag : {0, 2, 128, 255}) {
            mezzanineFlag = static_cast<VX_UINT8>(flag);
            EXPECT_EQ(RunPort("beacon", leaf, "on").code, RC_SUCCESS) << flag;
        }
    }
}

TEST_F(BeaconTest, ChipsWithABeacon) {
    for (const ChipRow& chip : CHIPS) {
        const bool isAdmitted = chip.chip == FOUR_G || chip.chip == EIGHT_G || chip.chip == ROWAN_FC ||
                                chip.chip == LARCH || chip.chip == ALDER || chip.chip == BIRCH;
        SetChip(*port, chip.chip);
        SCOPED_TRACE(chip.name);
        state = 0;
        if (isAdmitted) {
            Expect("get", "", RC_SUCCESS, "Success", "OFF", {mezz, get});
            Expect("set", "on", RC_SUCCESS, "Success", "ON", {mezz, on, get});
        } else {
            Expect("get", "", RC_FEATURE_NOT_SUPPORTED, "Failed, feature not supported", "Unknown", {mezz});
            // The chip is checked before the word.
            Expect("set", "bad", RC_FEATURE_NOT_SUPPORTED, "Failed, feature not supported", "Unknown", {mezz});
        }
    }
}

TEST_F(BeaconTest, AdmissionComesInOrder) {
    for (const std::string leaf : {"get", "set"}) {
        // A failed query comes before the checks of the chip and the word.
        SetChip(*port, NO_FAMILY);
        Fake().Return("VEXAPI_IsMezzAdapter", 9);
        Expect(leaf, "bad", RC_CFG_READ_FAILED, "Failed, Beacon read failed", "Unknown", {mezz});
        port->PortInterfaceType = 3; // before the question
        Expect(leaf, "bad", RC_NOT_SUPPORTED_FOR_VPORT, "Failed, feature not supported for virtual port", "Unknown",
               {});
        LoseHost();
        Expect(leaf, "bad", RC_HOST_NOT_FOUND, "Failed, Host not found", "Unknown", {});
        const CommandRun help = Run("-t port -s beacon " + leaf + " help");
        EXPECT_EQ(help.code, RC_HELP_REQUESTED);
        EXPECT_EQ(help.output, Document(XML, "Failed, Unknown", "Unknown"));
        EXPECT_EQ(Run("-t port -s beacon " + leaf).code, RC_INVALID_PARAMETER);
        Fake().Return("VEXAPI_IsMezzAdapter", 0);
        port->PortInterfaceType = 1;
        Fake().host.hasList = true;
    }
}

TEST_F(BeaconTest, AFailingCallEndsGetAndSet) {
    for (const VX_UINT32 status : {1u, 118u, 0x80000000u}) {
        Fake().ReturnInTurn("VEXAPI_GetAdapterBeaconStatus", {status});
        Expect("get", "", RC_CFG_READ_FAILED, "Failed, Beacon read failed", "Unknown", {mezz, get});
        Fake().ReturnInTurn("VEXAPI_UpdateAdapterBeaconStatus", {status});
        Expect("set", "ON", RC_CFG_UPDATE_FAILED, "Failed, Beacon update failed", "Unknown", {mezz, on});
        // The state has changed, but can't be read back.
        Fake().ReturnInTurn("VEXAPI_GetAdapterBeaconStatus", {status});
        Expect("set", "ON", RC_CFG_READ_FAILED, "Failed, Beacon read failed", "Unknown", {mezz, on, get});
    }
}

TEST_F(BeaconTest, WithoutTheRedirectionNothingIsCalled) {
    const struct {
        const char* leaf;
        const char* after; ///< the last function called
        Calls calls;
    } cases[] = {
        {"get", "", {}},         {"get", "mezz", {mezz}},       {"set", "", {}},
        {"set", "mezz", {mezz}}, {"set", "update", {mezz, on}},
    };
    for (const auto& row : cases) {
        NoFiles files;
        const std::string last = row.after;
        Fake().onGetAdapterList = [&files, last] {
            if (last.empty()) {
                files.Begin();
            }
            return FakeLibrary::Get().host.List();
        };
        Fake().onIsMezzAdapter = [&files, last](VX_PORT_HANDLE*, VX_UINT8*) {
            if (last == "mezz") {
                files.Begin();
            }
            return 0u;
        };
        Fake().onUpdateAdapterBeaconStatus = [&files](VX_PORT_HANDLE*, VEXAPI_BEACON_TYPE) {
            files.Begin();
            return 0u;
        };
        Expect(row.leaf, "on", RC_FILE_ERROR, "Failed, File not found", "Unknown", row.calls);
    }
}

} // namespace
