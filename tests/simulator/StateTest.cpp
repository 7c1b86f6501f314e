// Changes that survive the process, and what becomes of state files that can't be used.
#include "Fixture.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class State : public Simulated {
protected:
    State() { describe(smallHost()); }

    /// Runs `act` in a session of a process of its own and gives its result.
    int inSession(const std::function<int()>& act) {
        return inProcess([&] {
            if (VEXAPI_Initialize(0, 0) != 0) {
                return 254;
            }
            const int result = act();
            VEXAPI_Uninitialize();
            return result;
        });
    }
    static VX_UINT32 beacon(unsigned index = 0) {
        VEXAPI_BEACON_TYPE state = 9;
        return VEXAPI_GetAdapterBeaconStatus(handle(index), &state) == 0 ? state : 99;
    }
    static VX_UINT32 frameSize(unsigned index = 0) {
        _VEXAPI_HBAParameters parameters{};
        VX_HBA_AUX auxiliary{};
        VEXAPI_GetHBAParamsInfo(handle(index), &parameters, &auxiliary);
        return parameters.FrameSize;
    }
    static VX_UINT32 setFrameSize(VX_UINT32 size, unsigned index = 0) {
        _VEXAPI_HBAParameters parameters{};
        VX_HBA_AUX auxiliary{};
        VEXAPI_GetHBAParamsInfo(handle(index), &parameters, &auxiliary);
        parameters.FrameSize = size;
        return VEXAPI_UpdateHBAParameters(handle(index), &parameters);
    }
    /// Starts, expecting a line about the state file on both streams.
    void startWithNote(const std::string& note) {
        testing::internal::CaptureStderr();
        ASSERT_EQ(start(), 0U);
        EXPECT_NE(testing::internal::GetCapturedStderr().find(note), std::string::npos);
        EXPECT_NE(output.find(note), std::string::npos) << output;
    }
};

TEST_F(State, EveryChangeIsFoundByTheNextProcess) {
    Json host = smallHost();
    std::string module(512, '\0');
    module.replace(20, 16, "WTD             ");
    file("module", module);
    portOf(host).update(Json::parse(R"({"Transceiver": "module", "LinkFailureCount": 5, "IoCount": 6,
        "FwPrivateStatistics": [{"CorrectableFecErrors": 9}],
        "CongestionStatistics": [{"EntryType": 128, "AlarmCount": 1}, {"AlarmCount": 2}]})"));
    describe(host);
    const std::string mbi = file("mbi", "ORFC-IMAGE MBI 2.10.15\nFirmware 9.15.7\nMpiFirmware 2.0.15\n");
    const std::string preload = file("preload", "ORFC-IMAGE FWPreload 4.5.6\n");
    const std::string sfp = file("sfp", "ORFC-IMAGE SFP B2\n");
    ASSERT_EQ(inSession([&] {
                  VX_PORT_HANDLE* h = handle();
                  _VEXAPI_SCMRProfile profile{0, 1, 3, {7}};
                  _VEXAPI_FcNVMeBootParams boot{};
                  std::strcpy(boot.BootEntry[2].TargetNQN, "nqn");
                  VX_UINT32 failed = setFrameSize(512);
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
    ASSERT_EQ(start(), 0U) << output;
    EXPECT_EQ(frameSize(), 512U);
    EXPECT_EQ(beacon(), 1U);
    EXPECT_EQ(beacon(1), 0U);
    EXPECT_EQ(port()->LinkFailureCount, 0U);
    EXPECT_EQ(port()->IoCount, 6U);
    unsigned char personality = 9;
    EXPECT_EQ(VEXAPI_GetPersonalityType(handle(1), &personality), 0U);
    EXPECT_EQ(personality, 1);
    EXPECT_EQ(VEXAPI_GetBfsConfigMode(), 4);
    _VEXAPI_FcNVMeBootParams boot{};
    EXPECT_EQ(VEXAPI_GetNVMeBootDeviceEntries(handle(), &boot), 0U);
    EXPECT_STREQ(boot.BootEntry[2].TargetNQN, "nqn");
    VX_UINT8 out[4] = {};
    char reason[64] = {};
    EXPECT_EQ(VEXAPI_FCGetBBCSupportInfoEx(handle(), out, out + 1, out + 2, out + 3, reason, 64), 0U);
    EXPECT_EQ(out[1], 7);
    VX_UINT32 number = 9;
    EXPECT_EQ(VEXAPI_FCGetFECSupportInfo(handle(), &number), 0U);
    EXPECT_EQ(number, 0U);
    _VEXAPI_FWPRIVATESTATSEntry* entries = nullptr;
    EXPECT_EQ(VEXAPI_GetFWPrivateStats(handle(), &entries, &number), 0U);
    EXPECT_EQ(number, 1U);
    EXPECT_EQ(entries->CorrectableFecErrors, 0U);
    std::free(entries);
    _VEXAPI_SANCONGTMGMTV2* list = nullptr;
    EXPECT_EQ(VEXAPI_GetSCMRStatisticsList(handle(), &list), 0U);
    EXPECT_EQ(list->AlarmCount, 1U);
    EXPECT_EQ(list->pNext->AlarmCount, 0U);
    VEXAPI_FreeSCMRStatisticsList(list);
    _VEXAPI_SCMRProfile profile{};
    EXPECT_EQ(VEXAPI_GetSCMRProfile(handle(), &profile), 0U);
    EXPECT_EQ(profile.Profile, 3);
    EXPECT_EQ(profile.Reserved[0], 7);
    EXPECT_EQ(VEXAPI_CheckAdapterDPortOption(handle()), 1U);
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(handle(), 1, &number), 0U);
    EXPECT_EQ(number, 8U);
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(handle(), 0, &number), 0U);
    EXPECT_EQ(number, 50U);
    EXPECT_STREQ(VEXAPI_GetAdapterList()->pHead->MultibootVersion, "2.10.15");
    EXPECT_STREQ(VEXAPI_GetAdapterList()->pHead->FlashFwVersion, "9.15.7");
    EXPECT_EQ(port(1)->FlashFwVersion[1], 15);
    _VEXAPI_FlashComponentVersion versions{};
    EXPECT_EQ(VEXAPI_GetFlashComponentVersion(handle(1), &versions), 0U);
    EXPECT_EQ(versions.PreloadFwArea.Sub, 6);
    EXPECT_EQ(versions.MpiFirmware.Sub, 15);
    _VEXAPI_SFP_DATA data{};
    EXPECT_EQ(VEXAPI_GetSFPData(handle(), &data), 0U);
    EXPECT_EQ(data.Data[56], 'B');
    VX_UINT32 required = 9;
    EXPECT_EQ(VEXAPI_IsRebootRequired(&required), 0U);
    EXPECT_EQ(required, 1U);
}

TEST_F(State, ARebootCarriesOutWhatWaitsForIt) {
    Json host = smallHost();
    portOf(host).update(Json::parse(R"({"RunningFwVersion": "8.08.231"})"));
    describe(host);
    const std::string mbi =
        file("mbi", "ORFC-IMAGE MBI 2.10.15\nFirmware 9.15.7\nMpiFirmware 2.0.15\nPepFirmware 3.0.4\n");
    ASSERT_EQ(inSession([&] {
                  return static_cast<int>(VEXAPI_doOptionROMUpdate(handle(), mbi.c_str(), 0) |
                                          VEXAPI_FCSetBBCSupportInfo(handle(), 1, 9));
              }),
              0);
    ASSERT_EQ(start(), 0U);
    EXPECT_STREQ(port()->RunningFwVersion, "8.08.231");
    end();
    setenv("VEXAPI_SIM_REBOOT", "1", 1);
    ASSERT_EQ(start(), 0U);
    unsetenv("VEXAPI_SIM_REBOOT");
    const auto check = [&] {
        VX_UINT32 required = 9;
        EXPECT_EQ(VEXAPI_IsRebootRequired(&required), 0U);
        EXPECT_EQ(required, 0U);
        EXPECT_STREQ(port()->RunningFwVersion, "9.15.07");
        EXPECT_EQ(port()->RunningMpiFwVersion[2], 15);
        EXPECT_EQ(port()->RunningPepFwVersion[2], 4);
        VX_UINT8 out[4] = {};
        char reason[64] = {};
        EXPECT_EQ(VEXAPI_FCGetBBCSupportInfoEx(handle(), out, out + 1, out + 2, out + 3, reason, 64), 0U);
        EXPECT_EQ(std::memcmp(out, "\1\x09\1\x09", 4), 0);
    };
    check();
    restart(); // and it stays so
    check();
}

TEST_F(State, ProcessesAtOnceLoseNothing) {
    // Eight processes change the same port's beacon and each its own target speeds, settings and modes, all
    // at the same time; each counts its changes in a field of its own.
    Json host = smallHost();
    Json targets = Json::array();
    for (int i = 0; i < 8; ++i) {
        char name[] = "50:00:00:00:00:00:00:00";
        name[22] = static_cast<char>('1' + i);
        targets.push_back({{"PortName", name}, {"LinkSpeed", 1}});
    }
    portOf(host)["Targets"] = targets;
    describe(host);
    int gate[2];
    ASSERT_EQ(pipe(gate), 0);
    std::vector<pid_t> children;
    for (VX_UINT16 i = 0; i < 8; ++i) {
        children.push_back(fork());
        if (children.back() == 0) {
            close(gate[1]);
            char go = 0;
            int result = 1;
            outputOf([&] {
                if (VEXAPI_Initialize(0, 0) == 0 && read(gate[0], &go, 1) == 0) {
                    VX_UINT32 failed = 0;
                    for (const VX_UINT32 speed : {2U, 4U, 8U, 22U, 50U, 100U}) {
                        failed |= VEXAPI_SetTargetLinkSpeed(handle(), i, speed);
                        failed |= VEXAPI_UpdateAdapterBeaconStatus(handle(i % 2), 1);
                    }
                    result = failed == 0 ? 0 : 2;
                }
            });
            _exit(result);
        }
    }
    close(gate[0]);
    close(gate[1]); // all begin when the last writer has gone
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    ASSERT_EQ(start(), 0U) << output;
    for (VX_UINT16 i = 0; i < 8; ++i) {
        VX_UINT32 speed = 0;
        EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(handle(), i, &speed), 0U);
        EXPECT_EQ(speed, 100U) << i;
    }
    EXPECT_EQ(beacon(0), 1U);
    EXPECT_EQ(beacon(1), 1U);
    // No half-written files stay behind.
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(path("."))) {
        files += entry.path().filename().string().starts_with("state") ? 1 : 0;
    }
    EXPECT_EQ(files, 2U); // the state and its lock
}

TEST_F(State, ARunningSessionSeesTheChangesOfOthers) {
    ASSERT_EQ(start(), 0U);
    EXPECT_EQ(beacon(), 0U);
    ASSERT_EQ(inProcess([&] {
                  end();
                  VEXAPI_Initialize(0, 0);
                  return static_cast<int>(VEXAPI_UpdateAdapterBeaconStatus(handle(), 1));
              }),
              0);
    const _vexapi_protocol_t* before = port();
    EXPECT_EQ(beacon(), 1U);
    EXPECT_EQ(port(), before); // the tree stays where it is
}

TEST_F(State, AnotherDescription) {
    ASSERT_EQ(inSession([] { return static_cast<int>(setFrameSize(512)); }), 0);
    Json host = smallHost();
    portOf(host)["PortSpeed"] = 22;
    describe(host);
    startWithNote("belongs to another description");
    EXPECT_EQ(frameSize(), 2048U);
    EXPECT_EQ(VEXAPI_UpdateAdapterBeaconStatus(handle(), 1), 0U);
    end();
    ASSERT_EQ(start(), 0U); // the state is this description's now
    EXPECT_EQ(output.find("another"), std::string::npos);
    EXPECT_EQ(beacon(), 1U);
    end();
    describe(smallHost());
    startWithNote("belongs to another description");
    EXPECT_EQ(frameSize(), 2048U);
}

TEST_F(State, AnotherBlobMakesAnotherDescription) {
    file("vpd", "one");
    Json host = smallHost();
    portOf(host)["Vpd"] = "vpd";
    describe(host);
    ASSERT_EQ(inSession([] { return static_cast<int>(setFrameSize(512)); }), 0);
    file("vpd", "two");
    startWithNote("belongs to another description");
}

struct Damage {
    const char* name;
    std::function<std::string(std::string)> apply;
};

class DamagedState : public State, public testing::WithParamInterface<Damage> {};

TEST_P(DamagedState, IsRefusedAndReplacedByTheNextChange) {
    ASSERT_EQ(inSession([] {
                  return static_cast<int>(setFrameSize(512) | VEXAPI_UpdateAdapterBeaconStatus(handle(), 1) |
                                          VEXAPI_SetBfsConfigMode(2));
              }),
              0);
    file("state", GetParam().apply(textOf(path("state"))));
    startWithNote("is refused");
    EXPECT_EQ(frameSize(), 2048U); // nothing of it is applied
    EXPECT_EQ(beacon(), 0U);
    EXPECT_EQ(VEXAPI_GetBfsConfigMode(), 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(setFrameSize(1024, 1), 0U);
    testing::internal::GetCapturedStderr();
    restart();
    EXPECT_EQ(output.find("refused"), std::string::npos) << output;
    EXPECT_EQ(frameSize(1), 1024U);
    EXPECT_EQ(beacon(), 0U);
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
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
        Damage{"UnknownSection", [](const std::string& text) { return replaced(text, "\"Host\"", "\"Hosts\""); }},
        Damage{"UnknownKey", [](const std::string& text) { return replaced(text, "\"Beacon\"", "\"Bacon\""); }},
        Damage{"UnknownPort", [](const std::string& text) { return replaced(text, "\"0\"", "\"7\""); }},
        Damage{"PortOfLetters", [](const std::string& text) { return replaced(text, "\"0\"", "\"x\""); }},
        Damage{"BadNumber",
               [](const std::string& text) { return replaced(text, "\"FrameSize\": 512", "\"FrameSize\": -1"); }},
        Damage{"PortAsList",
               [](const std::string& text) { return replaced(text, "\"Ports\": {", "\"Ports\": [{") + ""; }},
        Damage{"NestedTooDeep", [](const std::string&) { return std::string(100000, '[') + std::string(100000, ']'); }},
        Damage{"BadBootMode",
               [](const std::string& text) { return replaced(text, "\"BfsMode\": 2", "\"BfsMode\": \"UEFI\""); }}),
    [](const auto& chosen) { return chosen.param.name; });

TEST_F(State, DamagedWhileASessionRuns) {
    ASSERT_EQ(start(), 0U);
    file("state", "damaged");
    testing::internal::CaptureStderr();
    EXPECT_EQ(outputOf([] { beacon(); }).find("vexapi simulator: the state file"), 0U);
    EXPECT_EQ(VEXAPI_UpdateAdapterBeaconStatus(handle(), 1), 0U);
    testing::internal::GetCapturedStderr();
    restart();
    EXPECT_EQ(beacon(), 1U);
}

TEST_F(State, AChangeThatCannotBeWrittenFailsAndChangesNothing) {
    setenv("VEXAPI_SIM_STATE", path("none/state").c_str(), 1);
    ASSERT_EQ(start(), 0U) << output;
    EXPECT_EQ(setFrameSize(512), stateNotKept);
    EXPECT_NE(lastCall().value("failure", "").find("No such file or directory"), std::string::npos);
    EXPECT_EQ(frameSize(), 2048U);
    EXPECT_EQ(VEXAPI_ResetDeviceStats(handle()), stateNotKept);
    EXPECT_EQ(VEXAPI_SetTargetLinkSpeed(handle(), 0, 8), stateNotKept);
    VX_UINT32 number = 0;
    EXPECT_EQ(VEXAPI_GetTargetLinkSpeed(handle(), 0, &number), 0U);
    EXPECT_EQ(number, 50U);
    const std::string mbi = file("mbi", "ORFC-IMAGE MBI 2.10.15\nFirmware 9.15.7\n");
    EXPECT_EQ(VEXAPI_doOptionROMUpdate(handle(), mbi.c_str(), 0), stateNotKept);
    EXPECT_STREQ(VEXAPI_GetAdapterList()->pHead->MultibootVersion, "1.90.68");
    EXPECT_EQ(port()->FlashFwVersion[0], 0);
    EXPECT_EQ(VEXAPI_SetBfsConfigMode(2), stateNotKept);
    EXPECT_EQ(VEXAPI_GetBfsConfigMode(), 1);
    VX_UINT32 required = 9;
    EXPECT_EQ(VEXAPI_IsRebootRequired(&required), 0U);
    EXPECT_EQ(required, 0U);
}

TEST_F(State, AStateThatIsAFolder) {
    std::filesystem::create_directory(path("state"));
    startWithNote("is refused");
    EXPECT_EQ(setFrameSize(512), stateNotKept);
    EXPECT_EQ(frameSize(), 2048U);
    for (const auto& entry : std::filesystem::directory_iterator(path("."))) {
        EXPECT_FALSE(entry.path().filename().string().starts_with("state.") && entry.path().filename() != "state.lock")
            << entry; // the attempt cleans up behind itself
    }
}

TEST_F(State, WithoutAFileNothingIsKept) {
    setenv("VEXAPI_SIM_STATE", "", 1);
    ASSERT_EQ(start(), 0U);
    EXPECT_EQ(setFrameSize(512), 0U);
    EXPECT_EQ(frameSize(), 512U);
    restart();
    EXPECT_EQ(frameSize(), 2048U);
}

TEST_F(State, DeletingTheFileResetsTheHost) {
    ASSERT_EQ(inSession([] { return static_cast<int>(setFrameSize(512)); }), 0);
    std::filesystem::remove(path("state"));
    ASSERT_EQ(start(), 0U);
    EXPECT_EQ(frameSize(), 2048U);
}

TEST_F(State, TheLabHostKeepsStateToo) {
    unsetenv("VEXAPI_SIM_HOST");
    ASSERT_EQ(inSession([] { return static_cast<int>(setFrameSize(512)); }), 0);
    ASSERT_EQ(start(), 0U) << output;
    EXPECT_EQ(frameSize(), 512U);
}

TEST_F(State, ReadingLeavesNoFile) {
    ASSERT_EQ(start(), 0U);
    beacon();
    EXPECT_FALSE(std::filesystem::exists(path("state")));
}

} // namespace
