#include "CongestionTest.h"

using namespace family_test;

namespace {

constexpr char LIST[] = "CongestionProfileList";
constexpr char INVALID[] = "Failed, Invalid parameter";
constexpr char EXCLUSIVE[] = "Failed, Restore and Activation command-line options are mutually exclusive";

using Profile = _VEXAPI_SCMRProfile;

/// A port whose library stores and records the profile that it receives.
class CongestionProfileTest : public CongestionTest {
protected:
    CongestionProfileTest() {
        kept = {0, 7, 2, {}};
        for (VX_UINT8 i = 0; i < sizeof kept.Reserved; ++i) {
            kept.Reserved[i] = static_cast<VX_UINT8>(0xA0 + i);
        }
        Fake().onGetSCMRProfile = [this](VX_PORT_HANDLE*, Profile* profile) {
            Chatter();
            const Profile none{};
            EXPECT_EQ(std::memcmp(profile, &none, sizeof none), 0); // also after a set
            *profile = kept;
            return 0u;
        };
        Fake().onSetSCMRProfile = [this](VX_PORT_HANDLE*, Profile* profile) {
            Chatter();
            written = *profile;
            return 0u;
        };
    }

    std::string Report(const Format& format, const std::string& status, const std::string& management,
                       const std::string& activation) const {
        return format.Block("PortFWCMProfile", "Congestion Profile", LIST,
                            TextOfLines(Joined(portNames, {"FWCM Configuration Status: " + status,
                                                           "FWCM Profile Management: " + management,
                                                           "FWCM Profile Activation: " + activation})));
    }
    /// Expects `set` with these options to write this control flag and level, and all other bytes as read.
    void ExpectWritten(const std::string& options, VX_UINT8 control, VX_UINT8 level) {
        SCOPED_TRACE(options);
        written.reset();
        EXPECT_EQ(RunCongestion(PROFILE_SET, XML, options).code, RC_SUCCESS);
        EXPECT_EQ(PortCalls(), setCalls);
        ASSERT_TRUE(written.has_value());
        Profile expected = kept;
        expected.ControlFlag = control;
        expected.Profile = level;
        EXPECT_EQ(std::memcmp(&*written, &expected, sizeof expected), 0)
            << int{written->ControlFlag} << " " << int{written->Profile};
    }
    /// Expects `set` with these options to change nothing.
    void ExpectRefusal(const std::string& options, ResultCode code, const std::string& message) const {
        SCOPED_TRACE(options);
        ExpectFailure(PROFILE_SET, code, message, {Call("GetSCMRProfile")}, options);
    }

    const Calls setCalls = {Call("GetSCMRProfile"), Call("SetSCMRProfile"), Call("GetSCMRProfile")};
    Profile kept;
    std::optional<Profile> written;
};

TEST_F(CongestionProfileTest, ReportsTheProfile) {
    for (const Format& format : FORMATS) {
        const CommandRun run = RunCongestion(PROFILE_GET, format);
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, Report(format, "true", "NVRAM", "Moderate"));
        EXPECT_EQ(PortCalls(), (Calls{Call("GetSCMRProfile")}));
    }
}

TEST_F(CongestionProfileTest, NamesEveryValue) {
    static constexpr const char* LEVELS[] = {"Monitor_Only", "Conservative", "Moderate", "Aggressive", "Defensive"};
    for (int value = 0; value <= 0xFF; ++value) {
        const auto byte = static_cast<VX_UINT8>(value);
        kept = {byte, byte, byte, {}};
        ASSERT_EQ(RunCongestion(PROFILE_GET, TEXT).output,
                  Report(TEXT, value == 0 ? "true" : "false", value == 0 ? "Driver_Settings" : "NVRAM",
                         value < 5 ? LEVELS[value] : "Unknown"));
    }
}

TEST_F(CongestionProfileTest, WritesWhatTheOptionsSay) {
    ExpectWritten("", 7, 2); // as it was read
    ExpectWritten("--restore Driver_Settings", 0, 2);
    ExpectWritten("-r driver_SETTINGS", 0, 2);
    ExpectWritten("--activation Monitor_Only", 1, 0);
    ExpectWritten("--activation Conservative", 1, 1);
    ExpectWritten("-a Moderate", 1, 2);
    ExpectWritten("-A aggressive", 1, 3);
    ExpectWritten("--ACTIVATION dEFENSIVE", 1, 4);
    ExpectWritten("what ever -a Defensive", 1, 4);
    // An option without a value counts as absent.
    ExpectWritten("-a", 7, 2);
    ExpectWritten("--restore", 7, 2);
    ExpectWritten("-r Driver_Settings -a", 0, 2);
}

TEST_F(CongestionProfileTest, FindsOptionsAheadOfTheIdentifier) {
    // The first argument is always the identifier.
    EXPECT_EQ(Run("-t port -s scmprofile set -a Moderate " + Id(*port)).code, RC_INVALID_PARAMETER);
    EXPECT_EQ(PortCalls(), Calls{});
}

TEST_F(CongestionProfileTest, RefusesOtherValues) {
    for (const char* options : {"--restore x", "-r Driver_Setting", "-r Driver_Settingsx", "-r NVRAM", "-r Moderate",
                                "-a x", "--activation Driver_Settings", "-a 3", "-a Moderate1", "-a Unknown",
                                // The word after an option is its value, even another option's name.
                                "-r -a Moderate", "-a -r Driver_Settings",
                                // The restore value is checked first, and each value before the use of both.
                                "--restore x --activation y", "--restore x --activation Moderate",
                                "--restore Driver_Settings --activation y"}) {
        ExpectRefusal(options, RC_INVALID_PARAMETER, INVALID);
    }
    EXPECT_FALSE(written.has_value());
}

TEST_F(CongestionProfileTest, RefusesBothOptions) {
    ExpectRefusal("--restore Driver_Settings --activation Moderate", RC_MUTUALLY_EXCLUSIVE, EXCLUSIVE);
    ExpectRefusal("-a Moderate -r Driver_Settings", RC_MUTUALLY_EXCLUSIVE, EXCLUSIVE);
    EXPECT_FALSE(written.has_value());
}

TEST_F(CongestionProfileTest, ShowsWhatIsReadBack) {
    Fake().onSetSCMRProfile = [this](VX_PORT_HANDLE*, Profile*) {
        kept = {1, 0, 4, {}}; // not what was asked for
        return 0u;
    };
    for (const Format& format : FORMATS) {
        EXPECT_EQ(RunCongestion(PROFILE_SET, format, "-a Moderate").output,
                  Report(format, "false", "Driver_Settings", "Defensive"));
    }
}

TEST_F(CongestionProfileTest, TellsWhatTheLibraryRefuses) {
    const std::string get = Call("GetSCMRProfile");
    const std::string set = Call("SetSCMRProfile");
    for (const VX_UINT32 status : {1u, 118u, 0x20000075u}) {
        Fake().Return("VEXAPI_GetSCMRProfile", status);
        ExpectFailure(PROFILE_GET, RC_CFG_READ_FAILED, "Failed, NVRAM read failed", {get});
        ExpectFailure(PROFILE_SET, RC_CFG_READ_FAILED, "Failed, NVRAM read failed", {get}, "-a Moderate");
        // The profile is read before the options.
        ExpectFailure(PROFILE_SET, RC_CFG_READ_FAILED, "Failed, NVRAM read failed", {get}, "-a x");
        Fake().Return("VEXAPI_GetSCMRProfile", 0);
        Fake().Return("VEXAPI_SetSCMRProfile", status);
        ExpectFailure(PROFILE_SET, RC_CFG_UPDATE_FAILED, "Failed, NVRAM update failed", {get, set}, "-a Moderate");
        Fake().Return("VEXAPI_SetSCMRProfile", 0);
        for (const Format& format : FORMATS) {
            Fake().ReturnInTurn("VEXAPI_GetSCMRProfile", {0, status});
            const CommandRun run = RunCongestion(PROFILE_SET, format, "-a Moderate");
            EXPECT_EQ(run.code, RC_CFG_READ_FAILED);
            EXPECT_EQ(run.output, FailureOf(PROFILE_SET, format, "Failed, NVRAM read failed"));
            EXPECT_EQ(PortCalls(), setCalls);
        }
    }
}

TEST_F(CongestionProfileTest, NeedsTheLogForEachCall) {
    // Every command of the group needs the first.
    const auto read = Fake().onGetSCMRProfile;
    {
        NoFiles files;
        Fake().onGetSCMRProfile = [&](VX_PORT_HANDLE* handle, Profile* profile) {
            files.Begin();
            return read(handle, profile);
        };
        const CommandRun run = RunCongestion(PROFILE_SET, XML, "-a Moderate");
        EXPECT_EQ(run.code, RC_FILE_ERROR);
        EXPECT_EQ(run.output, FailureOf(PROFILE_SET, XML, "Failed, File not found"));
        EXPECT_EQ(PortCalls(), (Calls{Call("GetSCMRProfile")}));
    }
    Fake().onGetSCMRProfile = read;
    NoFiles files;
    Fake().onSetSCMRProfile = [&](VX_PORT_HANDLE*, Profile*) {
        files.Begin();
        return 0u;
    };
    const CommandRun run = RunCongestion(PROFILE_SET, XML, "-a Moderate");
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, FailureOf(PROFILE_SET, XML, "Failed, File not found"));
    EXPECT_EQ(PortCalls(), (Calls{Call("GetSCMRProfile"), Call("SetSCMRProfile")}));
}

TEST_F(CongestionProfileTest, TracesRefusedOptionsAndFailingCalls) {
    const TraceLog log("4");
    const auto tracesOf = [&](const std::string& options) {
        unlink(TraceLog::Path());
        RunCongestion(PROFILE_SET, XML, options);
        return TraceLog::Steps();
    };
    const std::string by = "DEBUG: PhysicalPortSCMProfileCmdsProcessor::";
    EXPECT_EQ(tracesOf("-r x"), (std::vector<std::string>{by + "CmdSetCommon: restore=x not supported"}));
    EXPECT_EQ(tracesOf("-a y"), (std::vector<std::string>{by + "CmdSetCommon: activation=y not supported"}));
    EXPECT_EQ(tracesOf("-a Moderate -r Driver_Settings"),
              (std::vector<std::string>{by + "CmdSetCommon: Mutually exclusive parameters"}));
    Fake().ReturnInTurn("VEXAPI_GetSCMRProfile", {0, 9});
    EXPECT_EQ(tracesOf(""), (std::vector<std::string>{by + "CmdSetCommon: Get SCMR Profile failed after set err=9"}));
    Fake().Return("VEXAPI_SetSCMRProfile", 8);
    EXPECT_EQ(tracesOf(""), (std::vector<std::string>{by + "CmdSetCommon: Update SCMR Profile failed err=8"}));
    Fake().Return("VEXAPI_GetSCMRProfile", 7);
    EXPECT_EQ(tracesOf(""), (std::vector<std::string>{by + "CmdSetCommon: Get SCMR Profile failed err=7"}));
}

} // namespace
