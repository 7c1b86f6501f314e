// Persistent changes, and unusable state files.
#include "Fixture.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class State : public Simulated {
protected:
    State() { Describe(SmallHost()); }

    /// Runs `act` in a session in a child process and returns its result.
    int InSession(const std::function<int()>& act) {
        return InProcess([&] {
            if (VEXAPI_Initialize(0, 0) != 0) {
                return 254;
            }
            const int result = act();
            VEXAPI_Uninitialize();
            return result;
        });
    }
    static VX_UINT32 Beacon(unsigned index = 0) {
        VEXAPI_BEACON_TYPE state = 9;
        return VEXAPI_GetAdapterBeaconStatus(Handle(index), &state) == 0 ? state : 99;
    }
    static VX_UINT32 FrameSize(unsigned index = 0) {
        _VEXAPI_HBAParameters parameters{};
        VX_HBA_AUX auxiliary{};
        VEXAPI_GetHBAParamsInfo(Handle(index), &parameters, &auxiliary);
        return parameters.FrameSize;
    }
    static VX_UINT32 SetFrameSize(VX_UINT32 size, unsigned index = 0) {
        _VEXAPI_HBAParameters parameters{};
        VX_HBA_AUX auxiliary{};
        VEXAPI_GetHBAParamsInfo(Handle(index), &parameters, &auxiliary);
        parameters.FrameSize = size;
        return VEXAPI_UpdateHBAParameters(Handle(index), &parameters);
    }
    /// Starts and expects a line about the state file on both streams.
    void StartWithNote(const std::string& note) {
        testing::internal::CaptureStderr();
        ASSERT_EQ(Start(), 0U);
        EXPECT_NE(testing::internal::GetCapturedStderr().find(note), std::string::npos);
        EXPECT_NE(output.find(note), std::string::npos) << output;
    }
};

TEST_F(State, EveryChangeIsFoundByTheNextProcess) {
    Json host = SmallHost();
    std::string module(512, '\0');
    module.replace(20, 16, "WTD             ");
    File("module", module);
    PortOf(host).update(Json::parse(R"({"Transceiver": "module", "LinkFailureCount": 5, "IoCount": 6,
        "FwPrivateStatistics": [{"CorrectableFecErrors": 9}],
        "CongestionStatistics": [{"EntryType": 128, "AlarmCount": 1}, {"AlarmCount": 2}]})"));
    Describe(host);
    const std::string mbi = File("mbi", "ORFC-IMAGE MBI 2.10.15\nFirmware 9.15.7\nMpiFirmware 2.0.15\n");
    const std::string preload = File("preload", "ORFC-IMAGE FWPreload 4.5.6\n");
    const std::string sfp = File("sfp", "ORFC-IMAGE SFP B2\n");
    ASSERT_EQ(InSession([&] {
                  VX_PORT_HANDLE* h = Handle();
                  _VEXAPI_SCMRProfile profile{0, 1, 3, {7}};
                  _VEXAPI_FcNVMeBootParams boot{};
                  std::strcpy(boot.BootEntry[2].TargetNQN, "nqn");
                  VX_UINT32 failed = SetFrameSize(512);
                  failed |= VEXAPI_UpdateAdapterBeaconStatus(h, 1) | VEXAPI_ResetDeviceStats(h);
                  failed |= VEXAPI_ChangePersonalityType(h, 1) | VEXAPI_SetBfsConfigMode(4);
                  failed |= VEXAPI_SetNVMeBootDeviceEntries(h, &boot) | VEXAPI_FCSetBBCSupportInfo(h, 1, 7);
                  failed |= VEXAPI_FCSetFECSupportInfo(h, 0) | VEXAPI_ResetFECCounters(h);
                  failed |= VEXAPI_SANCongMgmtResetStatistics(h) | VEXAPI_SetSCMRProfile(h, &profile);
                  failed |= VEXAPI_ConfigureAdapterDPortSettings(h, 1, 0) | VEXAPI_SetTargetLinkSpeed(h, 1, 8);
                  failed |= VEXAPI_doOptionROMUpdate(h, mbi.c_str(), 0);
                  failed |= VEXAPI_UpdateAdapterFirmwareTableFromFile(h, preload.c_str());
                  failed |= VEXAPI_SfpModuleFirmwareUpdate(h, sfp.c_str(), 2);
                  return failed == 0 ? 0 : 1;
              }),
              0);
    ASSERT_EQ(Start(), 0U) << output;
    EXPECT_EQ(FrameSize(), 512U);
    EXPECT_EQ(Beacon(), 1U);
    EXPECT_EQ(Beacon(1), 0U);
    EXPECT_EQ(Port()->LinkFailureCount, 0U);
    EXPECT_EQ(Port()->IoCount, 6U);
    unsigned char personality = 9;
    EXPECT_EQ(VEXAPI_GetPersonalityType(Handle(1), &personality), 0U);
    EXPECT_EQ(personality, 1);
    EXPECT_EQ(VEXAPI_GetBfsConfigMode(), 4);
    _VEXAPI_FcNVMeBootParams boot{};
    EXPECT_EQ(VEXAPI_GetNVMeBootDeviceEntries(Handle(), &boot), 0U);
    EXPECT_STREQ(boot.BootEntry[2].TargetNQN, "nqn");
    VX_UINT8 out[4] = {};
    char reason[64] = {};
    EXPECT_EQ(VEXAPI_FCGetBBCSupportInfoEx(Handle(), out, out + 1, out + 2, out + 3, reason, 64), 0U);
    EXPECT_EQ(out[1], 7);
    VX_UINT32 number = 9;
    EXPECT_EQ(VEXAPI_FCGetFECSupportInfo(Handle(), &number), 0U);
    EXPECT_EQ(number, 0U);
    _VEXAPI_FWPRIVATESTATSEntry* entries = nullptr;
    EXPECT_EQ(VEXAPI_GetFWPrivateStats(Handle(), &entries, &number), 0U);
    EXPECT_EQ(number, 1U);
    EXPECT_EQ(entries->CorrectableFecErrors, 0U);
    std::free(entries);
    _VEXAPI_SANCONGTMGMTV2* list = nullptr;
    EXPECT_EQ(VEXAPI_GetSCMRStatisticsList(Handle(), &list), 0U);
    EXPECT_EQ(list->AlarmCount, 1U);
    EXPECT_EQ(list->pNext->AlarmCount, 0U);
    VEXAPI_FreeSCMRStatisticsList(list);
    _VEXAPI_SCMRProfile profile{};
    EXPECT_EQ(VEXAPI_GetSCMRProfile(Handle(), &profile), 0U);
    EXPECT_EQ(profile.Profile, 3);
    EXPECT_EQ(profile.Reserved[0], 7);
    EXPECT_EQ(VEXAPI_CheckAdapterDPortOption(Handle()), 1U);
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(Handle(), 1, &number), 0U);
    EXPECT_EQ(number, 8U);
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(Handle(), 0, &number), 0U);
    EXPECT_EQ(number, 50U);
    EXPECT_STREQ(VEXAPI_GetAdapterList()->pHead->MultibootVersion, "2.10.15");
    EXPECT_STREQ(VEXAPI_GetAdapterList()->pHead->FlashFwVersion, "9.15.7");
    EXPECT_EQ(Port(1)->FlashFwVersion[1], 15);
    _VEXAPI_FlashComponentVersion versions{};
    EXPECT_EQ(VEXAPI_GetFlashComponentVersion(Handle(1), &versions), 0U);
    EXPECT_EQ(versions.PreloadFwArea.Sub, 6);
    EXPECT_EQ(versions.MpiFirmware.Sub, 15);
    _VEXAPI_SFP_DATA data{};
    EXPECT_EQ(VEXAPI_GetSFPData(Handle(), &data), 0U);
    EXPECT_EQ(data.Data[56], 'B');
    VX_UINT32 required = 9;
    EXPECT_EQ(VEXAPI_IsRebootRequired(&required), 0U);
    EXPECT_EQ(required, 1U);
}

TEST_F(State, ARebootCarriesOutWhatWaitsForIt) {
    Json host = SmallHost();
    PortOf(host).update(Json::parse(R"({"RunningFwVersion": "8.08.231"})"));
    Describe(host);
    const std::string mbi =
        File("mbi", "ORFC-IMAGE MBI 2.10.15\nFirmware 9.15.7\nMpiFirmware 2.0.15\nPepFirmware 3.0.4\n");
    ASSERT_EQ(InSession([&] {
                  return static_cast<int>(VEXAPI_doOptionROMUpdate(Handle(), mbi.c_str(), 0) |
                                          VEXAPI_FCSetBBCSupportInfo(Handle(), 1, 9));
              }),
              0);
    ASSERT_EQ(Start(), 0U);
    EXPECT_STREQ(Port()->RunningFwVersion, "8.08.231");
    End();
    setenv("VEXAPI_SIM_REBOOT", "1", 1);
    ASSERT_EQ(Start(), 0U);
    unsetenv("VEXAPI_SIM_REBOOT");
    const auto check = [&] {
        VX_UINT32 required = 9;
        EXPECT_EQ(VEXAPI_IsRebootRequired(&required), 0U);
        EXPECT_EQ(required, 0U);
        EXPECT_STREQ(Port()->RunningFwVersion, "9.15.07");
        EXPECT_EQ(Port()->RunningMpiFwVersion[2], 15);
        EXPECT_EQ(Port()->RunningPepFwVersion[2], 4);
        VX_UINT8 out[4] = {};
        char reason[64] = {};
        EXPECT_EQ(VEXAPI_FCGetBBCSupportInfoEx(Handle(), out, out + 1, out + 2, out + 3, reason, 64), 0U);
        EXPECT_EQ(std::memcmp(out, "\1\x09\1\x09", 4), 0);
    };
    check();
    Restart(); // persistent
    check();
}

TEST_F(State, ProcessesAtOnceLoseNothing) {
    // Eight processes change the speed of a target each, and the beacons, all at the same time.
    Json host = SmallHost();
    Json targets = Json::array();
    for (int i = 0; i < 8; ++i) {
        char name[] = "50:00:00:00:00:00:00:00";
        name[22] = static_cast<char>('1' + i);
        targets.push_back({{"PortName", name}, {"LinkSpeed", 1}});
    }
    PortOf(host)["Targets"] = targets;
    Describe(host);
    int gate[2];
    ASSERT_EQ(pipe(gate), 0);
    std::vector<pid_t> children;
    for (VX_UINT16 i = 0; i < 8; ++i) {
        children.push_back(fork());
        if (children.back() == 0) {
            close(gate[1]);
            char go = 0;
            int result = 1;
            OutputOf([&] {
                if (VEXAPI_Initialize(0, 0) == 0 && read(gate[0], &go, 1) == 0) {
                    VX_UINT32 failed = 0;
                    for (const VX_UINT32 speed : {2U, 4U, 8U, 22U, 50U, 100U}) {
                        failed |= VEXAPI_SetTargetLinkSpeed(Handle(), i, speed);
                        failed |= VEXAPI_UpdateAdapterBeaconStatus(Handle(i % 2), 1);
                    }
                    result = failed == 0 ? 0 : 2;
                }
            });
            _exit(result);
        }
    }
    close(gate[0]);
    close(gate[1]); // starts all children
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    ASSERT_EQ(Start(), 0U) << output;
    for (VX_UINT16 i = 0; i < 8; ++i) {
        VX_UINT32 speed = 0;
        EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(Handle(), i, &speed), 0U);
        EXPECT_EQ(speed, 100U) << i;
    }
    EXPECT_EQ(Beacon(0), 1U);
    EXPECT_EQ(Beacon(1), 1U);
    // No temporary files are left.
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(Path("."))) {
        files += entry.path().filename().string().starts_with("state") ? 1 : 0;
    }
    EXPECT_EQ(files, 2U); // the state and its lock
}

TEST_F(State, ARunningSessionSeesTheChangesOfOthers) {
    ASSERT_EQ(Start(), 0U);
    EXPECT_EQ(Beacon(), 0U);
    ASSERT_EQ(InProcess([&] {
                  End();
                  VEXAPI_Initialize(0, 0);
                  return static_cast<int>(VEXAPI_UpdateAdapterBeaconStatus(Handle(), 1));
              }),
              0);
    const _vexapi_protocol_t* before = Port();
    EXPECT_EQ(Beacon(), 1U);
    EXPECT_EQ(Port(), before); // the tree doesn't move
}

TEST_F(State, AnotherDescription) {
    ASSERT_EQ(InSession([] { return static_cast<int>(SetFrameSize(512)); }), 0);
    Json host = SmallHost();
    PortOf(host)["PortSpeed"] = 22;
    Describe(host);
    StartWithNote("belongs to another description");
    EXPECT_EQ(FrameSize(), 2048U);
    EXPECT_EQ(VEXAPI_UpdateAdapterBeaconStatus(Handle(), 1), 0U);
    End();
    ASSERT_EQ(Start(), 0U); // the state now belongs to this description
    EXPECT_EQ(output.find("another"), std::string::npos);
    EXPECT_EQ(Beacon(), 1U);
    End();
    Describe(SmallHost());
    StartWithNote("belongs to another description");
    EXPECT_EQ(FrameSize(), 2048U);
}

TEST_F(State, AnotherBlobMakesAnotherDescription) {
    File("vpd", "one");
    Json host = SmallHost();
    PortOf(host)["Vpd"] = "vpd";
    Describe(host);
    ASSERT_EQ(InSession([] { return static_cast<int>(SetFrameSize(512)); }), 0);
    File("vpd", "two");
    StartWithNote("belongs to another description");
}

struct Damage {
    const char* name;
    std::function<std::string(std::string)> apply;
};

class DamagedState : public State, public testing::WithParamInterface<Damage> {};

TEST_P(DamagedState, IsRefusedAndReplacedByTheNextChange) {
    ASSERT_EQ(InSession([] {
                  return static_cast<int>(SetFrameSize(512) | VEXAPI_UpdateAdapterBeaconStatus(Handle(), 1) |
                                          VEXAPI_SetBfsConfigMode(2));
              }),
              0);
    File("state", GetParam().apply(TextOf(Path("state"))));
    StartWithNote("is refused");
    EXPECT_EQ(FrameSize(), 2048U); // none of it is applied
    EXPECT_EQ(Beacon(), 0U);
    EXPECT_EQ(VEXAPI_GetBfsConfigMode(), 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(SetFrameSize(1024, 1), 0U);
    testing::internal::GetCapturedStderr();
    Restart();
    EXPECT_EQ(output.find("refused"), std::string::npos) << output;
    EXPECT_EQ(FrameSize(1), 1024U);
    EXPECT_EQ(Beacon(), 0U);
}

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return text.replace(at, what.size(), with);
}

INSTANTIATE_TEST_SUITE_P(
    Damages, DamagedState,
    testing::Values(
        Damage{"Empty", [](const std::string&) { return std::string(); }},
        Damage{"CutInHalf", [](const std::string& text) { return text.substr(0, text.size() / 2); }},
        Damage{"NoJson", [](const std::string&) { return std::string("\x7f\x45\x4c\x46"); }},
        Damage{"OtherJson", [](const std::string&) { return std::string("{\"a\": 1}"); }},
        Damage{"NoObject", [](const std::string&) { return std::string("[1]"); }},
        Damage{"UnknownSection", [](const std::string& text) { return Replaced(text, "\"Host\"", "\"Hosts\""); }},
        Damage{"UnknownKey", [](const std::string& text) { return Replaced(text, "\"Beacon\"", "\"Bacon\""); }},
        Damage{"UnknownPort", [](const std::string& text) { return Replaced(text, "\"0\"", "\"7\""); }},
        Damage{"PortOfLetters", [](const std::string& text) { return Replaced(text, "\"0\"", "\"x\""); }},
        Damage{"BadNumber",
               [](const std::string& text) { return Replaced(text, "\"FrameSize\": 512", "\"FrameSize\": -1"); }},
        Damage{"PortAsList",
               [](const std::string& text) { return Replaced(text, "\"Ports\": {", "\"Ports\": [{") + ""; }},
        Damage{"NestedTooDeep", [](const std::string&) { return std::string(100000, '[') + std::string(100000, ']'); }},
        Damage{"BadBootMode",
               [](const std::string& text) { return Replaced(text, "\"BfsMode\": 2", "\"BfsMode\": \"UEFI\""); }}),
    [](const auto& chosen) { return chosen.param.name; });

TEST_F(State, DamagedWhileASessionRuns) {
    ASSERT_EQ(Start(), 0U);
    File("state", "damaged");
    testing::internal::CaptureStderr();
    EXPECT_EQ(OutputOf([] { Beacon(); }).find("vexapi simulator: the state file"), 0U);
    EXPECT_EQ(VEXAPI_UpdateAdapterBeaconStatus(Handle(), 1), 0U);
    testing::internal::GetCapturedStderr();
    Restart();
    EXPECT_EQ(Beacon(), 1U);
}

TEST_F(State, AChangeThatCannotBeWrittenFailsAndChangesNothing) {
    setenv("VEXAPI_SIM_STATE", Path("none/state").c_str(), 1);
    ASSERT_EQ(Start(), 0U) << output;
    EXPECT_EQ(SetFrameSize(512), STATE_NOT_KEPT);
    EXPECT_NE(LastCall().value("failure", "").find("No such file or directory"), std::string::npos);
    EXPECT_EQ(FrameSize(), 2048U);
    EXPECT_EQ(VEXAPI_ResetDeviceStats(Handle()), STATE_NOT_KEPT);
    EXPECT_EQ(VEXAPI_SetTargetLinkSpeed(Handle(), 0, 8), STATE_NOT_KEPT);
    VX_UINT32 number = 0;
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(Handle(), 0, &number), 0U);
    EXPECT_EQ(number, 50U);
    const std::string mbi = File("mbi", "ORFC-IMAGE MBI 2.10.15\nFirmware 9.15.7\n");
    EXPECT_EQ(VEXAPI_doOptionROMUpdate(Handle(), mbi.c_str(), 0), STATE_NOT_KEPT);
    EXPECT_STREQ(VEXAPI_GetAdapterList()->pHead->MultibootVersion, "1.90.68");
    EXPECT_EQ(Port()->FlashFwVersion[0], 0);
    EXPECT_EQ(VEXAPI_SetBfsConfigMode(2), STATE_NOT_KEPT);
    EXPECT_EQ(VEXAPI_GetBfsConfigMode(), 1);
    VX_UINT32 required = 9;
    EXPECT_EQ(VEXAPI_IsRebootRequired(&required), 0U);
    EXPECT_EQ(required, 0U);
}

TEST_F(State, AStateThatIsAFolder) {
    std::filesystem::create_directory(Path("state"));
    StartWithNote("is refused");
    EXPECT_EQ(SetFrameSize(512), STATE_NOT_KEPT);
    EXPECT_EQ(FrameSize(), 2048U);
    for (const auto& entry : std::filesystem::directory_iterator(Path("."))) {
        EXPECT_FALSE(entry.path().filename().string().starts_with("state.") && entry.path().filename() != "state.lock")
            << entry; // temporary files are removed
    }
}

TEST_F(State, WithoutAFileNothingIsKept) {
    setenv("VEXAPI_SIM_STATE", "", 1);
    ASSERT_EQ(Start(), 0U);
    EXPECT_EQ(SetFrameSize(512), 0U);
    EXPECT_EQ(FrameSize(), 512U);
    Restart();
    EXPECT_EQ(FrameSize(), 2048U);
}

TEST_F(State, DeletingTheFileResetsTheHost) {
    ASSERT_EQ(InSession([] { return static_cast<int>(SetFrameSize(512)); }), 0);
    std::filesystem::remove(Path("state"));
    ASSERT_EQ(Start(), 0U);
    EXPECT_EQ(FrameSize(), 2048U);
}

TEST_F(State, TheLabHostKeepsStateToo) {
    unsetenv("VEXAPI_SIM_HOST");
    ASSERT_EQ(InSession([] { return static_cast<int>(SetFrameSize(512)); }), 0);
    ASSERT_EQ(Start(), 0U) << output;
    EXPECT_EQ(FrameSize(), 512U);
}

TEST_F(State, ReadingLeavesNoFile) {
    ASSERT_EQ(Start(), 0U);
    Beacon();
    EXPECT_FALSE(std::filesystem::exists(Path("state")));
}

} // namespace
