// The functions within one session: tree, flash, reports, settings.
#include "Functions.h"

#include <cstdlib>
#include <cstring>

namespace {

TEST_F(Functions, TheTreeIsTheSameThroughoutASession) {
    StartWith();
    const VX_ADAPTER_LIST* list = VEXAPI_GetAdapterList();
    const _vexapi_protocol_t* first = Port();
    EXPECT_EQ(VEXAPI_ResetDeviceStats(Handle()), 0U);
    EXPECT_EQ(VEXAPI_GetAdapterList(), list);
    EXPECT_EQ(Port(), first);
    EXPECT_EQ(list->Count, 1U);
    EXPECT_EQ(list->pHead->pPhyPortList->Count, 2U);
    EXPECT_EQ(list->pHead->pPhyPortList->pHead->pProtocolList->Count, 1U);
}

TEST_F(Functions, ToolIdAndVersion) {
    StartWith();
    EXPECT_EQ(VEXAPI_SetToolID(11), 0U);
    EXPECT_EQ(LastCall()["arguments"]["toolId"], 11);
    EXPECT_EQ(VEXAPI_SetToolVersion(1, 3, 6, 0), 0U);
    EXPECT_EQ(LastCall()["arguments"], Json::parse(R"({"major": 1, "minor": 3, "sub": 6, "build": 0})"));
}

TEST_F(Functions, FlashVersions) {
    StartWith(R"({"FlashComponents": {"PepFirmware": {"Major": 1, "Minor": 2, "Sub": 3},
                                      "PcieSerdes": {"Major": 4, "Minor": 5, "Sub": 6}},
                  "MemoBlock": {"Signature": "FMBS", "FamilyFw": "07:08:09", "Mbi": "0a:0b:0c",
                                "MbiBuildDate": "20240102", "ToolId": "OCLI", "Year": 2024, "Second": 59,
                                "ToolVersion": "01:02:03:04"}})");
    _VEXAPI_FlashComponentVersion versions{};
    EXPECT_EQ(VEXAPI_GetFlashComponentVersion(Handle(), &versions), 0U);
    EXPECT_EQ(versions.PepFirmware.Major, 1);
    EXPECT_EQ(versions.PepFirmware.Sub, 3);
    EXPECT_EQ(versions.PcieSerdes.Minor, 5);
    EXPECT_EQ(versions.MpiFirmware.Major, 0);
    VX_SFlashMemoBlock memo{};
    EXPECT_EQ(VEXAPI_GetAdapterFlashMemoBlock(Handle(), &memo), 0U);
    EXPECT_EQ(std::memcmp(memo.Signature, "FMBS", 4), 0);
    EXPECT_EQ(memo.FamilyFw[2], 9);
    EXPECT_EQ(memo.Mbi[0], 10);
    EXPECT_EQ(std::memcmp(memo.MbiBuildDate, "20240102OCLI", 12), 0); // adjacent fields, without terminators
    EXPECT_EQ(memo.Year, 2024);
    EXPECT_EQ(memo.Second, 59);
    EXPECT_EQ(memo.ToolVersion[3], 4);
}

TEST_F(Functions, AMultiBootImageGoesToTheWholeAdapter) {
    StartWith();
    EXPECT_EQ(RebootRequired(), 0U);
    VEXAPI_SetToolVersion(1, 3, 6, 0);
    const std::string image = File("mbi", "ORFC-IMAGE MBI 2.10.15\nFirmware 9.15.7\nBios 3.69\nEfi 8.5\nFCode 4.26\n"
                                          "MpiFirmware 2.0.15\nFamilyFirmware 9.15.8\nBuildDate 20250312\n");
    EXPECT_EQ(VEXAPI_doOptionROMUpdate(Handle(), image.c_str(), 0), 0U);
    EXPECT_EQ(RebootRequired(), 1U);
    EXPECT_STREQ(Adapter().MultibootVersion, "2.10.15");
    EXPECT_STREQ(Adapter().FlashFwVersion, "9.15.7");
    EXPECT_STREQ(Adapter().BiosVersion, "3.69");
    EXPECT_STREQ(Adapter().EfiVersion, "8.5");
    EXPECT_STREQ(Adapter().FCodeVersion, "4.26");
    for (unsigned i = 0; i < 2; ++i) {
        EXPECT_STREQ(Port(i)->BiosVersion, "3.69");
        EXPECT_EQ(Port(i)->FlashFwVersion[2], 7);
        EXPECT_EQ(Port(i)->FlashEfiVersion[0], 8);
        EXPECT_EQ(Port(i)->FlashFCodeVersion[1], 26);
        EXPECT_STREQ(Port(i)->RunningFwVersion, ""); // until the reboot
        _VEXAPI_FlashComponentVersion versions{};
        EXPECT_EQ(VEXAPI_GetFlashComponentVersion(Handle(i), &versions), 0U);
        EXPECT_EQ(versions.MpiFirmware.Sub, 15);
        VX_SFlashMemoBlock memo{};
        EXPECT_EQ(VEXAPI_GetAdapterFlashMemoBlock(Handle(i), &memo), 0U);
        EXPECT_EQ(memo.Mbi[1], 10);
        EXPECT_EQ(memo.FamilyFw[2], 8);
        EXPECT_EQ(std::memcmp(memo.MbiBuildDate, "20250312ECLI", 12), 0);
        EXPECT_EQ(memo.ToolVersion[2], 6);
        EXPECT_GE(memo.Year, 2024);
    }
}

TEST_F(Functions, AMultiBootImageMayAskForAReboot) {
    StartWith();
    EXPECT_EQ(VEXAPI_doOptionROMUpdate(Handle(), File("mbi", "ORFC-IMAGE MBI 2.10.15\nReboot yes\n").c_str(), 0), 201U);
    EXPECT_STREQ(Adapter().MultibootVersion, "2.10.15");
}

TEST_F(Functions, TheOtherFlashUpdatesWriteTheirComponent) {
    StartWith();
    EXPECT_EQ(VEXAPI_UpdateSpecificFlashRegionFromFile(Handle(), File("b", "ORFC-IMAGE BrdCfg 1.2.3").c_str()), 0U);
    EXPECT_EQ(VEXAPI_UpdateAdapterFirmwareTableFromFile(Handle(), File("f", "ORFC-IMAGE FWPreload 4.5.6\n").c_str()),
              0U);
    EXPECT_EQ(VEXAPI_UpdateAdapterPEPCfgFromFile(Handle(), File("p", "ORFC-IMAGE PEPCfg 7.8.9\r\n").c_str()), 0U);
    _VEXAPI_FlashComponentVersion versions{};
    EXPECT_EQ(VEXAPI_GetFlashComponentVersion(Handle(1), &versions), 0U);
    EXPECT_EQ(versions.FcBoardConfig.Major, 1);
    EXPECT_EQ(versions.PreloadFwArea.Minor, 5);
    EXPECT_EQ(versions.PepBoardConfig.Sub, 9);
    EXPECT_EQ(RebootRequired(), 1U);
}

struct BadImage {
    const char* name;
    const char* content;
    VX_UINT32 status;
};

class BadImages : public Functions, public testing::WithParamInterface<BadImage> {};

TEST_P(BadImages, AreRefusedAndChangeNothing) {
    StartWith();
    const std::string path = File("image", GetParam().content);
    EXPECT_EQ(VEXAPI_doOptionROMUpdate(Handle(), path.c_str(), 0), GetParam().status);
    EXPECT_STREQ(Adapter().MultibootVersion, "1.90.68");
    EXPECT_STREQ(Adapter().FlashFwVersion, "8.08.231");
    EXPECT_EQ(Port()->FlashFwVersion[0], 0);
    EXPECT_EQ(RebootRequired(), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Files, BadImages,
    testing::Values(BadImage{"Empty", "", 106}, BadImage{"NoImage", "something else\n", 103},
                    BadImage{"OtherKind", "ORFC-IMAGE BrdCfg 1.2.3\n", 103},
                    BadImage{"NoVersion", "ORFC-IMAGE MBI\n", 103},
                    BadImage{"VersionOfTwoNumbers", "ORFC-IMAGE MBI 1.2\n", 108},
                    BadImage{"VersionOfFourNumbers", "ORFC-IMAGE MBI 1.2.3.4\n", 108},
                    BadImage{"VersionAbove255", "ORFC-IMAGE MBI 1.2.256\n", 108},
                    BadImage{"VersionOfLetters", "ORFC-IMAGE MBI 1.x.3\n", 108},
                    BadImage{"UnknownLine", "ORFC-IMAGE MBI 1.2.3\nFirmwares 1.2.3\n", 103},
                    BadImage{"LineTwice", "ORFC-IMAGE MBI 1.2.3\nBios 1\nBios 2\n", 103},
                    BadImage{"BadLineBehindGoodOnes", "ORFC-IMAGE MBI 1.2.3\nFirmware 9.9.9\nEfi 1.2.3\n", 108},
                    BadImage{"TextTooLong", "ORFC-IMAGE MBI 1.2.3\nBios 12345678901234567890123456789012\n", 108},
                    BadImage{"BadDate", "ORFC-IMAGE MBI 1.2.3\nBuildDate 2025\n", 108}),
    [](const auto& chosen) { return chosen.param.name; });

TEST_F(Functions, FilesThatCannotBeRead) {
    StartWith();
    EXPECT_EQ(VEXAPI_doOptionROMUpdate(Handle(), Path("missing").c_str(), 0), 3U);
    EXPECT_EQ(VEXAPI_doOptionROMUpdate(Handle(), Path("missing/deeper").c_str(), 0), 3U);
    EXPECT_EQ(VEXAPI_doOptionROMUpdate(Handle(), Path(".").c_str(), 0), 102U);
    EXPECT_EQ(VEXAPI_doOptionROMUpdate(Handle(), std::string(5000, 'x').c_str(), 0), 101U);
}

TEST_F(Functions, LockedFirmwareAndConfiguration) {
    StartWith(R"({"Lockdown": {"FirmwareLockdown": 1, "ConfigLockdown": 1, "MpiStatus": 134}})");
    VEXAPI_LOCKDOWNINFO lockdown{};
    EXPECT_EQ(VEXAPI_GetLockdownStatus(Handle(), &lockdown), 0U);
    EXPECT_EQ(lockdown.FirmwareLockdown, 1);
    EXPECT_EQ(lockdown.MpiStatus, 134U);
    const std::string image = File("mbi", "ORFC-IMAGE MBI 2.10.15\n");
    EXPECT_EQ(VEXAPI_doOptionROMUpdate(Handle(), image.c_str(), 0), 133U);
    EXPECT_EQ(VEXAPI_UpdateAdapterPEPCfgFromFile(Handle(), image.c_str()), 133U);
    _VEXAPI_HBAParameters parameters{};
    EXPECT_EQ(VEXAPI_UpdateHBAParameters(Handle(), &parameters), 133U);
    EXPECT_EQ(VEXAPI_RestoreDefaultNVRAM(Handle()), 133U);
    EXPECT_EQ(VEXAPI_FCSetFECSupportInfo(Handle(), 0), 133U);
}

TEST_F(Functions, Personality) {
    StartWith(R"({"PersonalityChangeAllowed": 0})");
    unsigned char personality = 9;
    EXPECT_EQ(VEXAPI_GetPersonalityType(Handle(), &personality), 0U);
    EXPECT_EQ(personality, 0);
    EXPECT_EQ(VEXAPI_CheckRowanPersonalityChangeOption(Handle(0)), 0U);
    EXPECT_EQ(VEXAPI_CheckRowanPersonalityChangeOption(Handle(1)), 1U);
    EXPECT_EQ(VEXAPI_ChangePersonalityType(Handle(0), 1), 0U);
    EXPECT_EQ(VEXAPI_GetPersonalityType(Handle(1), &personality), 0U);
    EXPECT_EQ(personality, 1); // applies to the whole adapter
    EXPECT_EQ(RebootRequired(), 1U);
}

TEST_F(Functions, Temperature) {
    StartWith(R"({"Temperature": -7})");
    _VEXAPI_BoardThermalTemp temperature{};
    EXPECT_EQ(VEXAPI_GetAdapterAsicBoardTemperature(Handle(), &temperature), 0U);
    EXPECT_EQ(temperature.Temperature, -7);
}

TEST_F(Functions, ResettingStatisticsLeavesTheDriversCounters) {
    StartWith(R"({"IoCount": 5, "InterruptCount": 6, "LinkFailureCount": 1, "LossOfSyncCount": 2,
                  "LossOfSignalCount": 3, "PrimitiveSeqProtocolErrorCount": 4, "InvalidTxWordCount": 5,
                  "InvalidCrcCount": 6, "ScmLinkCounters": [1, 2, 3, 4, 5, 6]})");
    EXPECT_EQ(VEXAPI_ResetDeviceStats(Handle()), 0U);
    const _vexapi_protocol_t& record = *Port();
    EXPECT_EQ(record.LinkFailureCount + record.LossOfSyncCount + record.LossOfSignalCount +
                  record.PrimitiveSeqProtocolErrorCount + record.InvalidTxWordCount + record.InvalidCrcCount,
              0U);
    EXPECT_EQ(record.IoCount, 5U);
    EXPECT_EQ(record.InterruptCount, 6U);
    EXPECT_EQ(record.ScmLinkCounters[5], 6U); // counters of another kind
}

/// A module image of one vendor, base checksum included.
std::string ModuleOf(const std::string& vendor) {
    std::string image(512, '\0');
    image[0] = 3;
    const std::string padded = vendor + std::string(16 - vendor.size(), ' ');
    image.replace(20, 16, padded);
    image.replace(56, 4, "A   ");
    unsigned sum = 0;
    for (int i = 0; i < 63; ++i) {
        sum += static_cast<unsigned char>(image[static_cast<std::size_t>(i)]);
    }
    image[63] = static_cast<char>(sum);
    return image;
}

TEST_F(Functions, TransceiverFirmware) {
    File("wtd", ModuleOf("WTD"));
    StartWith(R"({"Transceiver": "wtd"})");
    const std::string image = File("sfp", "ORFC-IMAGE SFP B2\nVendor WTD\n");
    EXPECT_EQ(VEXAPI_SfpModuleFirmwareUpdate(Handle(), image.c_str(), 2), 0U);
    _VEXAPI_SFP_DATA data{};
    EXPECT_EQ(VEXAPI_GetSFPData(Handle(), &data), 0U);
    EXPECT_EQ(std::memcmp(data.Data + 56, "B2  ", 4), 0);
    // "A   " is 0x41 + 3 * 0x20, "B2  " is 0x42 + 0x32 + 2 * 0x20: the sum grows by 0x13.
    const auto before = static_cast<unsigned char>(ModuleOf("WTD")[63]);
    EXPECT_EQ(data.Data[63], static_cast<unsigned char>(before + 0x13));
}

TEST_F(Functions, TransceiverFirmwareThatDoesNotFit) {
    File("wtd", ModuleOf("WTD"));
    File("other", ModuleOf("OPTIWAY"));
    Json host = SmallHost();
    PortOf(host, 0)["Transceiver"] = "wtd";
    PortOf(host, 1)["Transceiver"] = "other";
    host["Adapters"][0]["PhyPorts"].push_back(Json::parse(R"({"Protocols": [{"WWPN": "21:00:00:24:ff:01:02:05"}]})"));
    Describe(host);
    ASSERT_EQ(Start(), 0U) << output;
    const std::string image = File("sfp", "ORFC-IMAGE SFP B2\nVendor OPTIWAY\n");
    EXPECT_EQ(VEXAPI_SfpModuleFirmwareUpdate(Handle(0), image.c_str(), 2), 145U); // image of another vendor
    EXPECT_EQ(VEXAPI_SfpModuleFirmwareUpdate(Handle(1), image.c_str(), 2), 146U); // module of another vendor
    EXPECT_EQ(VEXAPI_SfpModuleFirmwareUpdate(Handle(2), image.c_str(), 2), 144U); // empty bay
    EXPECT_EQ(VEXAPI_SfpModuleFirmwareUpdate(Handle(0), File("long", "ORFC-IMAGE SFP B2345\n").c_str(), 2), 108U);
    EXPECT_EQ(VEXAPI_SfpModuleFirmwareUpdate(Handle(0), File("mbi", "ORFC-IMAGE MBI 1.2.3\n").c_str(), 2), 103U);
    EXPECT_EQ(VEXAPI_SfpModuleFirmwareUpdate(Handle(0), Path("missing").c_str(), 2), 3U);
}

TEST_F(Functions, VitalProductData) {
    StartWith(R"({"Vpd": {"bytes": "82:01:00:41:78"}})");
    char buffer[1024] = {};
    VX_UINT32 size = sizeof buffer;
    EXPECT_EQ(VEXAPI_GetVpd(Word(), 0, buffer, &size), 0U);
    EXPECT_EQ(size, 5U);
    EXPECT_EQ(std::memcmp(buffer, "\x82\x01\0A\x78\0", 6), 0);
}

TEST_F(Functions, VitalProductDataThatLies) {
    File("long", std::string(1500, 'v'));
    StartWith(R"({"Vpd": "long", "VpdSize": 2000})");
    char buffer[1026] = {};
    VX_UINT32 size = 1024;
    EXPECT_EQ(VEXAPI_GetVpd(Word(), 0, buffer, &size), 0U);
    EXPECT_EQ(size, 2000U);
    EXPECT_EQ(buffer[1023], 'v');
    EXPECT_EQ(buffer[1024], 0);
}

TEST_F(Functions, FirmwareDump) {
    File("dump", "ORVFWDMP");
    StartWith(R"({"FirmwareDump": "dump"})");
    void* dump = nullptr;
    VX_UINT32 size = 0;
    EXPECT_EQ(VEXAPI_SDGetFwDump2(Word(), 0, &dump, &size), 0U);
    ASSERT_EQ(size, 8U);
    EXPECT_EQ(std::memcmp(dump, "ORVFWDMP", 8), 0);
    std::free(dump);
}

TEST_F(Functions, FirmwareDumpEmptyAndAbsent) {
    File("dump", "");
    StartWith(R"({"FirmwareDump": "dump"})");
    void* dump = nullptr;
    VX_UINT32 size = 0;
    EXPECT_EQ(VEXAPI_SDGetFwDump2(Word(), 0, &dump, &size), 0U);
    EXPECT_EQ(size, 0U);
    std::free(dump);
    dump = nullptr;
    EXPECT_EQ(VEXAPI_SDGetFwDump2(Word(1), 0, &dump, &size), 0x2000007BU);
    EXPECT_EQ(dump, nullptr);
}

TEST_F(Functions, MezzanineAndBeacon) {
    StartWith(R"({"Mezzanine": 1, "Beacon": 2})");
    VX_UINT8 flag = 9;
    EXPECT_EQ(VEXAPI_IsMezzAdapter(Handle(0), &flag), 0U);
    EXPECT_EQ(flag, 1);
    EXPECT_EQ(VEXAPI_IsMezzAdapter(Handle(1), &flag), 0U);
    EXPECT_EQ(flag, 0);
    VEXAPI_BEACON_TYPE state = 9;
    EXPECT_EQ(VEXAPI_GetAdapterBeaconStatus(Handle(), &state), 0U);
    EXPECT_EQ(state, 2U);
    EXPECT_EQ(VEXAPI_UpdateAdapterBeaconStatus(Handle(), 1), 0U);
    EXPECT_EQ(VEXAPI_GetAdapterBeaconStatus(Handle(), &state), 0U);
    EXPECT_EQ(state, 1U);
    EXPECT_EQ(RebootRequired(), 0U);
}

TEST_F(Functions, ParametersTravelWhole) {
    StartWith(R"({"NvramDefaults": {"FrameSize": 1024, "HardLoopId": 7}, "Nvram": {"HardLoopId": 9}})");
    _VEXAPI_HBAParameters parameters = Nvram();
    EXPECT_EQ(parameters.FrameSize, 1024U);
    EXPECT_EQ(parameters.HardLoopId, 9U);
    EXPECT_EQ(parameters.LoginRetryCount, 8U); // the factory's
    parameters.EnableVirtualLane = 1;
    parameters.Reserved[63] = 0xA5;
    parameters.Alt7BootLunNumber = 700;
    EXPECT_EQ(VEXAPI_UpdateHBAParameters(Handle(), &parameters), 0U);
    EXPECT_EQ(RebootRequired(), 1U);
    const _VEXAPI_HBAParameters read = Nvram();
    EXPECT_EQ(std::memcmp(&read, &parameters, sizeof read), 0);
    EXPECT_EQ(LastCall()["function"], "VEXAPI_GetHBAParamsInfo");
    EXPECT_EQ(VEXAPI_RestoreDefaultNVRAM(Handle()), 0U);
    EXPECT_EQ(Nvram().HardLoopId, 7U);
    EXPECT_EQ(Nvram().EnableVirtualLane, 0);
}

TEST_F(Functions, ChangesThatNeedNoReboot) {
    StartWith(R"({"RebootAfterChange": 0})");
    _VEXAPI_HBAParameters parameters = Nvram();
    EXPECT_EQ(VEXAPI_UpdateHBAParameters(Handle(0), &parameters), 0U);
    EXPECT_EQ(RebootRequired(), 0U);
    EXPECT_EQ(VEXAPI_UpdateHBAParameters(Handle(1), &parameters), 0U);
    EXPECT_EQ(RebootRequired(), 1U);
    EXPECT_EQ(VEXAPI_UpdateHBAParameters(Handle(0), &parameters), 0U);
    EXPECT_EQ(RebootRequired(), 0U); // of the last change
    Restart();
    EXPECT_EQ(RebootRequired(), 1U); // of any pending change
}

TEST_F(Functions, SavedNvramIsReadBack) {
    StartWith();
    _VEXAPI_HBAParameters parameters = Nvram();
    parameters.FrameSize = 512;
    std::memcpy(parameters.BootPortName, ARRAY_NAME, 8);
    parameters.NVMeEnable = 1;
    EXPECT_EQ(VEXAPI_UpdateHBAParameters(Handle(), &parameters), 0U);
    EXPECT_EQ(VEXAPI_SaveSingleAdapterNVRAMToFile(Handle(), Path("nvram").c_str()), 0U);
    const std::string text = TextOf(Path("nvram"));
    EXPECT_TRUE(text.starts_with("ORFC-IMAGE NVRAM 21:00:00:24:ff:01:02:03\nDataRate 2\n")) << text;
    EXPECT_NE(text.find("\nBootPortName 50:06:0e:80:00:00:00:01\n"), std::string::npos);
    EXPECT_EQ(VEXAPI_UpdateAdapterNVRAMFromFile(Handle(1), Path("nvram").c_str()), 0U);
    const _VEXAPI_HBAParameters read = Nvram(1);
    EXPECT_EQ(std::memcmp(&read, &parameters, sizeof read), 0);
    EXPECT_EQ(VEXAPI_SaveSingleAdapterNVRAMToFile(Handle(), Path("none/nvram").c_str()), 101U);
}

TEST_F(Functions, NvramFilesThatAreNotValid) {
    StartWith();
    const auto update = [&](const char* content) {
        return VEXAPI_UpdateAdapterNVRAMFromFile(Handle(), File("nvram", content).c_str());
    };
    EXPECT_EQ(update(""), 106U);
    EXPECT_EQ(update("just a text\n"), 103U);
    EXPECT_EQ(update("ORFC-IMAGE NVRAM x\nFrameSizes 512\n"), 103U);
    EXPECT_EQ(update("ORFC-IMAGE NVRAM x\nFrameSize 4294967296\n"), 108U);
    EXPECT_EQ(update("ORFC-IMAGE NVRAM x\nFrameSize 99999999999999999999999\n"), 108U);
    EXPECT_EQ(update("ORFC-IMAGE NVRAM x\nFrameSize\n"), 108U);
    EXPECT_EQ(update("ORFC-IMAGE NVRAM x\nBootPortName 50:06\n"), 108U);
    EXPECT_EQ(update("ORFC-IMAGE NVRAM x\nFrameSize 1024\nHardLoopId x\n"), 108U);
    EXPECT_EQ(Nvram().FrameSize, 2048U);
    EXPECT_EQ(update("ORFC-IMAGE NVRAM x\nFrameSize 0x400\n"), 0U);
    EXPECT_EQ(Nvram().FrameSize, 1024U);
}

TEST_F(Functions, BootMode) {
    StartWith();
    EXPECT_EQ(VEXAPI_GetBfsConfigMode(), 1);
    for (const VX_UINT8 mode : {VX_UINT8{4}, VX_UINT8{2}, VX_UINT8{1}}) {
        EXPECT_EQ(VEXAPI_SetBfsConfigMode(mode), 0U);
        EXPECT_EQ(VEXAPI_GetBfsConfigMode(), mode);
    }
}

TEST_F(Functions, BootSettingsAreWrittenAndNothingElse) {
    StartWith();
    _VEXAPI_HBAParameters settings{};
    EXPECT_EQ(VEXAPI_GetBootDeviceInfo(Handle(), &settings, nullptr), 0U);
    EXPECT_EQ(settings.DisableBIOS, 1U);
    settings.DisableBIOS = 0;
    settings.EnableSelectableBoot = 1;
    settings.EnableSelectiveLogin = 1;
    settings.EnableSelectiveLUN = 1;
    settings.ForceWorldLogin = 1;
    settings.EnableFabricAssignBootLun = 1;
    settings.NVMeEnable = 1;
    std::memcpy(settings.BootPortName, ARRAY_NAME, 8);
    settings.BootLunNumber = 300;
    std::memcpy(settings.Alt7BootPortName, NVME_NAME, 8);
    settings.Alt7BootLunNumber = 1;
    settings.FrameSize = 512; // no boot setting
    EXPECT_EQ(VEXAPI_SetBootDeviceInfo(Handle(), &settings), 0U);
    EXPECT_EQ(RebootRequired(), 1U);
    settings.FrameSize = 2048;
    _VEXAPI_HBAParameters read{};
    EXPECT_EQ(VEXAPI_GetBootDeviceInfo(Handle(), &read, nullptr), 0U);
    EXPECT_EQ(std::memcmp(&read, &settings, sizeof read), 0);
}

TEST_F(Functions, BootTargetsMustBeThere) {
    StartWith(R"({"Nvram": {"Alt1BootPortName": "50:00:00:00:00:00:00:99", "Alt1BootLunNumber": 3}})");
    _VEXAPI_HBAParameters settings = Nvram();
    EXPECT_EQ(VEXAPI_SetBootDeviceInfo(Handle(), &settings), 0U); // an existing entry is kept
    std::memcpy(settings.Alt3BootPortName, ARRAY_NAME, 8);
    settings.Alt3BootLunNumber = 1; // there are 0 and 300
    EXPECT_EQ(VEXAPI_SetBootDeviceInfo(Handle(), &settings), NO_SUCH_TARGET);
    EXPECT_EQ(Nvram().Alt3BootPortName[0], 0);
    settings.Alt3BootLunNumber = 300;
    settings.Alt3BootPortName[7] = 9;
    EXPECT_EQ(VEXAPI_SetBootDeviceInfo(Handle(), &settings), NO_SUCH_TARGET);
    std::memset(settings.Alt3BootPortName, 0, 8);
    EXPECT_EQ(VEXAPI_SetBootDeviceInfo(Handle(), &settings), 0U); // cleared, regardless of the LUN
}

TEST_F(Functions, NvmeBootEntries) {
    StartWith(R"({"HostNQN": "nqn.host", "HostId": "01:02:03:04:05:06:07:08:09:0a:0b:0c:0d:0e:0f:10"})");
    _VEXAPI_FcNVMeBootParams boot{};
    EXPECT_EQ(VEXAPI_GetNVMeBootDeviceEntries(Handle(), &boot), 0U);
    EXPECT_STREQ(boot.HostNQN, "nqn.host");
    EXPECT_EQ(boot.HostId[15], 0x10);
    VX_NVME_BOOT_ENTRY& entry = boot.BootEntry[7];
    std::memcpy(entry.TargetWWPN, NVME_NAME, 8);
    entry.TargetNSID = 1;
    entry.TargetCtrlID = 65;
    entry.TargetFlags = 1;
    std::strcpy(entry.TargetNQN, "nqn.target");
    std::strcpy(boot.HostNQN, "another");
    EXPECT_EQ(VEXAPI_SetNVMeBootDeviceEntries(Handle(), &boot), 0U);
    _VEXAPI_FcNVMeBootParams read{};
    EXPECT_EQ(VEXAPI_GetNVMeBootDeviceEntries(Handle(), &read), 0U);
    EXPECT_EQ(std::memcmp(read.BootEntry, boot.BootEntry, sizeof boot.BootEntry), 0);
    EXPECT_STREQ(read.HostNQN, "nqn.host"); // read-only
    entry.TargetNSID = 2;
    EXPECT_EQ(VEXAPI_SetNVMeBootDeviceEntries(Handle(), &boot), NO_SUCH_TARGET);
}

TEST_F(Functions, CreditRecovery) {
    StartWith(R"({"CreditRecovery": {"Status": 1, "Configured": 4, "State": 0, "Negotiated": 3,
                                     "Reason": "0123456789012345678901234567890123456789012345678901234567890123"}})");
    VX_UINT8 out[4] = {};
    char reason[65] = {};
    EXPECT_EQ(VEXAPI_FCGetBBCSupportInfoEx(Handle(), out, out + 1, out + 2, out + 3, reason, 64), 0U);
    EXPECT_EQ(std::memcmp(out, "\1\4\0\3", 4), 0);
    EXPECT_EQ(std::strlen(reason), 64U); // it fills its array
    EXPECT_EQ(VEXAPI_FCSetBBCSupportInfo(Handle(), 0, 15), 0U);
    std::memset(reason, 0, sizeof reason);
    EXPECT_EQ(VEXAPI_FCGetBBCSupportInfoEx(Handle(), out, out + 1, out + 2, out + 3, reason, 64), 0U);
    EXPECT_EQ(std::memcmp(out, "\0\x0f\0\3", 4), 0);
    EXPECT_EQ(RebootRequired(), 1U);
}

TEST_F(Functions, ForwardErrorCorrection) {
    StartWith(R"({"Fec": 0, "FwPrivateStatistics": [{"CorrectableFecErrors": 4294967301, "UncorrectableFecErrors": 2},
                                                    {"CorrectableFecErrors": 1}]})");
    VX_UINT32 status = 9;
    EXPECT_EQ(VEXAPI_FCGetFECSupportInfo(Handle(), &status), 0U);
    EXPECT_EQ(status, 0U);
    EXPECT_EQ(VEXAPI_FCSetFECSupportInfo(Handle(), 1), 0U);
    EXPECT_EQ(VEXAPI_FCGetFECSupportInfo(Handle(), &status), 0U);
    EXPECT_EQ(status, 1U);
    const auto counters = [&](VX_UINT32 wanted) {
        _VEXAPI_FWPRIVATESTATSEntry* entries = nullptr;
        VX_UINT32 count = 9;
        EXPECT_EQ(VEXAPI_GetFWPrivateStats(Handle(), &entries, &count), 0U);
        EXPECT_EQ(count, wanted);
        const std::vector<_VEXAPI_FWPRIVATESTATSEntry> copy(entries, entries + count);
        std::free(entries);
        return copy;
    };
    EXPECT_EQ(counters(2)[0].CorrectableFecErrors, 4294967301U);
    EXPECT_EQ(VEXAPI_ResetFECCounters(Handle()), 0U);
    EXPECT_EQ(counters(2)[0].CorrectableFecErrors, 0U);
    EXPECT_EQ(counters(2)[0].UncorrectableFecErrors, 0U);
}

TEST_F(Functions, PrivateStatisticsThatAreEmptyOrNull) {
    Json host = SmallHost();
    PortOf(host, 0)["FwPrivateStatistics"] = Json::array();
    PortOf(host, 1)["FwPrivateStatistics"] = nullptr;
    Describe(host);
    ASSERT_EQ(Start(), 0U) << output;
    for (unsigned i = 0; i < 2; ++i) {
        _VEXAPI_FWPRIVATESTATSEntry* entries = nullptr;
        VX_UINT32 count = 9;
        EXPECT_EQ(VEXAPI_GetFWPrivateStats(Handle(i), &entries, &count), 0U);
        EXPECT_EQ(count, 0U);
        EXPECT_EQ(entries == nullptr, i == 1);
        std::free(entries);
        EXPECT_EQ(VEXAPI_ResetFECCounters(Handle(i)), 0U);
    }
}

} // namespace
