#include "FamilyTest.h"

#include <algorithm>

using namespace family_test;

namespace {

/// A port with a different value for every byte shown.
class PortInfoTest : public FamilyTest {
protected:
    PortInfoTest() {
        phyPort->PortNumber = 3;
        port->PciBusNumber = 0x4A;
        port->PciDeviceNumber = 0x0B;
        port->PciFunctionNumber = 0x01;
        port->ChipProperty.PciMaxLink = 16 << 4 | 4;       // x16, 16 Gtps
        port->ChipProperty.PciNegotiatedLink = 8 << 4 | 3; // x8, 8 Gtps
        SetText(port->DriverVersion, "4.1.14");
        SetText(port->HostNQN, "nqn.2014-08.org.nvmexpress:uuid:1");
        for (int i = 0; i < 16; ++i) {
            port->HostId[i] = static_cast<VX_UINT8>(0xA0 + i);
        }
        SetBytes(port->PrincipalFabricWWN, {0x10, 0x00, 0x31, 0x32, 0x33, 0x34, 0x35, 0x36});
        SetBytes(port->AdjacentFabricWWN, {0x10, 0x01, 0x41, 0x42, 0x43, 0x44, 0x45, 0x46});
        port->SupportedSpeeds = 0x20 | 0x40 | 0x80;
        port->PortType = 1;
        port->PortConnectionMode = 1;
        port->PortSpeed = 100;
        SetBytes(port->PortId, {0x01, 0x0A, 0xFF});
        SetBytes(port->FlashFwVersion, {9, 6, 2});
        SetText(port->BiosVersion, "3.61");
        SetBytes(port->FlashFCodeVersion, {4, 11});
        SetBytes(port->FlashEfiVersion, {7, 4});
        SetText(port->RunningFwVersion, "9.06.02 (d0d5)");
        SetBytes(port->RunningMpiFwVersion, {1, 2, 3});
        SetBytes(port->RunningPepFwVersion, {10, 20, 130});
        components.PepFirmware = {0xEE, 11, 1, 2, {0xEE, 0xEE}};
        components.PepSoftRom = {0xEE, 12, 3, 4, {0xEE, 0xEE}};
        components.PepBoardConfig = {0xEE, 13, 5, 6, {0xEE, 0xEE}};
        components.PreloadFwArea = {0xEE, 14, 7, 8, {0xEE, 0xEE}};
        components.FcBoardConfig = {0xEE, 15, 9, 10, {0xEE, 0xEE}};
        components.MpiFirmware = {0xEE, 16, 11, 12, {0xEE, 0xEE}};
        components.MpiSoftRom = {0xEE, 17, 13, 14, {0xEE, 0xEE}};
        components.PcieSerdes = {0xEE, 18, 15, 16, {0xEE, 0xEE}};
        lockdown = {1, 1, 1, 0, 118, 134};
        temperature.Temperature = 47;
        Fake().onGetAdapterAsicBoardTemperature = [this](VX_PORT_HANDLE*, _VEXAPI_BoardThermalTemp* given) {
            return Give(given, temperature);
        };
        Fake().onGetLockdownStatus = [this](VX_PORT_HANDLE*, VEXAPI_LOCKDOWNINFO* given) {
            return Give(given, lockdown);
        };
        Fake().onGetFlashComponentVersion = [this](VX_PORT_HANDLE*, _VEXAPI_FlashComponentVersion* given) {
            return Give(given, components);
        };
    }

    /// Fills the caller's record, and records whether it was zeroed.
    template <typename Record> VX_UINT32 Give(Record* given, const Record& record) {
        Chatter();
        const auto* const bytes = reinterpret_cast<const unsigned char*>(given);
        wasCleared = wasCleared && std::all_of(bytes, bytes + sizeof *given, [](unsigned char b) { return b == 0; });
        *given = record;
        return 0;
    }

    std::string Block() const { return BlockText(RunPort("info", "getcli").output); }
    std::vector<std::string> Lines() const { return LinesOf(Block()); }
    /// The values of all lines with a label.
    std::vector<std::string> ValuesOf(const std::string& label) const {
        std::vector<std::string> values;
        for (const std::string& line : Lines()) {
            if (line.starts_with(label + ": ")) {
                values.push_back(line.substr(label.size() + 2));
            }
        }
        return values;
    }
    void ExpectLine(const std::string& label, const std::string& value) const {
        EXPECT_EQ(ValuesOf(label), std::vector<std::string>{value}) << label;
    }
    void ExpectNoLine(const std::string& label) const {
        EXPECT_EQ(ValuesOf(label), std::vector<std::string>{}) << label;
    }

    _VEXAPI_BoardThermalTemp temperature{};
    VEXAPI_LOCKDOWNINFO lockdown{};
    _VEXAPI_FlashComponentVersion components{};
    bool wasCleared = true;
};

constexpr char WHOLE[] = "Model: ORV2\n"
                         "      Port Number: 3\n"
                         "      PCI Bus Number: 0x4a\n"
                         "      PCI Device Number: 0xb\n"
                         "      PCI Function Number: 0x1\n"
                         "      PCI Bus Max Width: x16\n"
                         "      PCI Bus Negotiated Width: x8\n"
                         "      PCI Bus Max Speed: 16 Gtps\n"
                         "      PCI Bus Negotiated Speed: 8 Gtps\n"
                         "      Driver Version: 4.1.14\n"
                         "      Host NQN: nqn.2014-08.org.nvmexpress:uuid:1\n"
                         "      Host ID: a0a1a2a3a4a5a6a7a8a9aaabacadaeaf\n"
                         "      Node Name: 20:00:0a:0b:0c:0d:00:01\n"
                         "      Port Name: 21:00:0a:0b:0c:0d:00:01\n"
                         "      Principal Fabric WWN: 10:00:31:32:33:34:35:36\n"
                         "      Adjacent Fabric WWN: 10:01:41:42:43:44:45:46\n"
                         "      Maximum Speed: 64 Gbps\n"
                         "      Supported Speeds: 16 32 64 Gbps\n"
                         "      Port Interface Type: Physical Port\n"
                         "      Protocol Type: FC\n"
                         "      Port Type: Node Port\n"
                         "      Port State: Online\n"
                         "      Port Connection Mode: Point to Point\n"
                         "      Port Speed: 64 Gbps\n"
                         "      Port ID: 01:0a:ff\n"
                         "      Temperature In Celsius: 47\n"
                         "      Flash Firmware Version: 9.06.02\n"
                         "      Flash BIOS Version: 3.61\n"
                         "      Flash FCode Version: 4.11\n"
                         "      Flash EFI Version: 7.04\n"
                         "      Flash Preload Firmware Area Version: 14.07.08\n"
                         "      Flash FC Board Config Version: 15.09.10\n"
                         "      Flash MPI Firmware Version: 16.11.12\n"
                         "      Flash PEP Firmware Version: 11.01.02\n"
                         "      Flash PEP Board Config Version: 13.05.06\n"
                         "      Flash PEP SoftROM Version: 12.03.04\n"
                         "      Flash MPI SoftROM Version: 17.13.14\n"
                         "      Flash PCIE Serdes Version: 18.15.16\n"
                         "      Running Firmware Version: 9.06.02 (d0d5)\n"
                         "      Running MPI Firmware Version: 1.02.03\n"
                         "      Running PEP Firmware Version: 10.20.130\n"
                         "      Config Lockdown: false\n"
                         "      Firmware Update Lockdown: Unsupported Driver\n"
                         "      MPI Lockdown: Unsupported Firmware\n";

TEST_F(PortInfoTest, IsByteExact) {
    const CommandRun xml = RunPort("info", "get");
    EXPECT_EQ(xml.code, RC_SUCCESS);
    EXPECT_EQ(xml.output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                          "<structure typeName=\"PortInformation\">\n"
                          "<field name=\"Message\">\n<string>Success</string></field>\n"
                          "<field name=\"PortInfo\">\n"
                          "<list type=\"structure\">\n"
                          "<structure typeName=\"PortInfoList\">\n"
                          "<field name=\"Data\">\n"
                          "<string>" +
                              std::string(WHOLE) +
                              "</string></field>\n"
                              "</structure>\n"
                              "</list>\n"
                              "</field>\n"
                              "</structure>\n"
                              "</output>\n");
    const CommandRun text = RunPort("info", "getcli");
    EXPECT_EQ(text.code, RC_SUCCESS);
    EXPECT_EQ(text.output, "****************************************************\n"
                           "PortInformation:\n"
                           "Message: Success\n"
                           "PortInfo: PortInfoList:\n"
                           "Data: " +
                               std::string(WHOLE) + "****************************************************\n");
    EXPECT_EQ(PortCalls(), (Calls{Call("GetAdapterAsicBoardTemperature"), Call("GetLockdownStatus"),
                                  Call("GetFlashComponentVersion")}));
    EXPECT_TRUE(wasCleared);
    EXPECT_EQ(LinesOf(WHOLE).size(), 44u);
}

/// The labels of lines for some chips only.
constexpr const char* NEW_CHIP_LABELS[] = {
    "Host NQN",
    "Host ID",
    "Flash MPI Firmware Version",
    "Flash PEP Firmware Version",
    "Flash PEP Board Config Version",
    "Flash PEP SoftROM Version",
    "Running MPI Firmware Version",
    "Running PEP Firmware Version",
    "Config Lockdown",
    "Firmware Update Lockdown",
    "MPI Lockdown",
};
constexpr const char* BIRCH_LABELS[] = {"Flash MPI SoftROM Version", "Flash PCIE Serdes Version"};
constexpr char TEMPERATURE_LABEL[] = "Temperature In Celsius";

TEST_F(PortInfoTest, ChipsDecideWhichLinesStand) {
    const std::vector<std::string> all = LinesOf(WHOLE);
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        const bool isNew = chip.chip == LARCH || chip.chip == ALDER || chip.chip == BIRCH;
        const bool hasTemperature = isNew || chip.chip == ROWAN_FC || chip.chip == ROWAN_CNA;
        const auto stands = [&](const std::string& line) {
            const auto isOneOf = [&](const auto& labels) {
                return std::any_of(std::begin(labels), std::end(labels),
                                   [&](const char* label) { return line.starts_with(std::string(label) + ":"); });
            };
            return isOneOf(NEW_CHIP_LABELS) ? isNew
                   : isOneOf(BIRCH_LABELS)  ? chip.chip == BIRCH
                                            : !line.starts_with(TEMPERATURE_LABEL) || hasTemperature;
        };
        std::vector<std::string> expected;
        std::copy_if(all.begin(), all.end(), std::back_inserter(expected), stands);
        // 44 lines: 30 of every chip, one of temperature, 11 of newer chips and 2 of the newest.
        EXPECT_EQ(expected.size(), 30u + (hasTemperature ? 1 : 0) + (isNew ? 11 : 0) + (chip.chip == BIRCH ? 2 : 0));
        EXPECT_EQ(Lines(), expected) << chip.name;
    }
}

/// An all-zero adapter: lines with a text for that, and lines without.
TEST_F(PortInfoTest, AbsentValues) {
    SetText(adapter->Model, "");
    const _vexapi_protocol_t old = *port;
    *port = {};
    std::memcpy(port->WWPN, old.WWPN, sizeof old.WWPN);
    port->PortHandle = old.PortHandle;
    SetChip(*port, BIRCH);
    temperature = {};
    lockdown = {};
    components = {};
    EXPECT_EQ(Block(), "Model: NA\n"
                       "      Port Number: 3\n"
                       "      PCI Bus Number: 0x0\n"
                       "      PCI Device Number: 0x0\n"
                       "      PCI Function Number: 0x0\n"
                       "      PCI Bus Max Width: Unknown\n"
                       "      PCI Bus Negotiated Width: Unknown\n"
                       "      PCI Bus Max Speed: Unknown\n"
                       "      PCI Bus Negotiated Speed: Unknown\n"
                       "      Driver Version: \n"
                       "      Host NQN: NA\n"
                       "      Host ID: NA\n"
                       "      Node Name: 00:00:00:00:00:00:00:00\n"
                       "      Port Name: 21:00:0a:0b:0c:0d:00:01\n"
                       "      Principal Fabric WWN: 00:00:00:00:00:00:00:00\n"
                       "      Adjacent Fabric WWN: 00:00:00:00:00:00:00:00\n"
                       "      Maximum Speed: Unknown\n"
                       "      Supported Speeds: Gbps\n"
                       "      Port Interface Type: Unknown\n"
                       "      Protocol Type: FC\n"
                       "      Port Type: Unknown\n"
                       "      Port State: Unknown\n"
                       "      Port Connection Mode: Unknown\n"
                       "      Port Speed: Unknown\n"
                       "      Port ID: 00:00:00\n"
                       "      Temperature In Celsius: 0\n"
                       "      Flash Firmware Version: NA\n"
                       "      Flash BIOS Version: NA\n"
                       "      Flash FCode Version: NA\n"
                       "      Flash EFI Version: NA\n"
                       "      Flash Preload Firmware Area Version: NA\n"
                       "      Flash FC Board Config Version: NA\n"
                       "      Flash MPI Firmware Version: NA\n"
                       "      Flash PEP Firmware Version: NA\n"
                       "      Flash PEP Board Config Version: NA\n"
                       "      Flash MPI SoftROM Version: NA\n" // the absent PEP SoftROM
                       "      Flash MPI SoftROM Version: NA\n"
                       "      Flash PCIE Serdes Version: NA\n"
                       "      Running Firmware Version: NA\n"
                       "      Running MPI Firmware Version: 0.00.00\n"
                       "      Running PEP Firmware Version: 0.00.00\n"
                       "      Config Lockdown: false\n"
                       "      Firmware Update Lockdown: false\n"
                       "      MPI Lockdown: false\n");
}

/// Any non-zero byte makes a version, and the first one is printed unchanged.
TEST_F(PortInfoTest, OneByteMakesAVersion) {
    for (std::size_t i = 0; i < 3; ++i) {
        static constexpr const char* TEXTS[] = {"200.00.00", "0.200.00", "0.00.200"};
        std::array<int, 3> bytes{};
        bytes[i] = 200;
        SetBytes(port->FlashFwVersion, bytes);
        SetBytes(port->RunningMpiFwVersion, bytes);
        ExpectLine("Flash Firmware Version", TEXTS[i]);
        ExpectLine("Running MPI Firmware Version", TEXTS[i]);
        const auto byte = [&](std::size_t at) { return static_cast<VX_UINT8>(bytes[at]); };
        components.PreloadFwArea = components.PepSoftRom = {0, byte(0), byte(1), byte(2), {0, 0}};
        ExpectLine("Flash Preload Firmware Area Version", TEXTS[i]);
        ExpectLine("Flash PEP SoftROM Version", TEXTS[i]);
    }
    for (std::size_t i = 0; i < 2; ++i) {
        static constexpr const char* TEXTS[] = {"9.00", "0.09"};
        std::array<int, 2> bytes{};
        bytes[i] = 9;
        SetBytes(port->FlashFCodeVersion, bytes);
        SetBytes(port->FlashEfiVersion, bytes);
        ExpectLine("Flash FCode Version", TEXTS[i]);
        ExpectLine("Flash EFI Version", TEXTS[i]);
    }
    // Only the version of a component counts.
    components.PreloadFwArea = {1, 0, 0, 0, {2, 3}};
    ExpectLine("Flash Preload Firmware Area Version", "NA");
    std::memset(port->HostId, 0, sizeof port->HostId);
    port->HostId[15] = 1;
    ExpectLine("Host ID", std::string(31, '0') + "1");
}

/// The label of the absent component differs.
TEST_F(PortInfoTest, AbsentSoftRomHasAnotherLabel) {
    components.PepSoftRom = {};
    ExpectNoLine("Flash PEP SoftROM Version");
    EXPECT_EQ(ValuesOf("Flash MPI SoftROM Version"), (std::vector<std::string>{"NA", "17.13.14"}));
    SetChip(*port, LARCH);
    EXPECT_EQ(ValuesOf("Flash MPI SoftROM Version"), std::vector<std::string>{"NA"});
    components.PepSoftRom.Sub = 1;
    ExpectLine("Flash PEP SoftROM Version", "0.00.01");
    ExpectNoLine("Flash MPI SoftROM Version");
}

TEST_F(PortInfoTest, TemperatureIsPrintedUnsigned) {
    static constexpr struct {
        VX_INT16 degrees;
        const char* text;
    } CASES[] = {
        {0, "0"},
        {1, "1"},
        {105, "105"},
        {32767, "32767"},
        {-1, "4294967295"},     // 2^32 - 1
        {-5, "4294967291"},     // 2^32 - 5
        {-32768, "4294934528"}, // 2^32 - 32768
    };
    for (const auto& row : CASES) {
        temperature.Temperature = row.degrees;
        ExpectLine(TEMPERATURE_LABEL, row.text);
    }
}

TEST_F(PortInfoTest, LockdownWords) {
    static constexpr struct {
        VX_UINT32 status;
        const char* word;
    } CASES[] = {
        {0, "false"},
        {1, "Unknown"},
        {117, "Unknown"},
        {118, "Unsupported Driver"},
        {119, "Unknown"},
        {133, "Unknown"},
        {135, "Unknown"},
        {134, "Unsupported Firmware"},
        {0xFFFFFFFF, "Unknown"},
    };
    const struct {
        const char* label;
        VX_UINT8 VEXAPI_LOCKDOWNINFO::*state;
        VX_UINT32 VEXAPI_LOCKDOWNINFO::*status;
    } items[] = {
        {"Config Lockdown", &VEXAPI_LOCKDOWNINFO::ConfigLockdown, &VEXAPI_LOCKDOWNINFO::ConfigStatus},
        {"Firmware Update Lockdown", &VEXAPI_LOCKDOWNINFO::FirmwareLockdown, &VEXAPI_LOCKDOWNINFO::FirmwareStatus},
        {"MPI Lockdown", &VEXAPI_LOCKDOWNINFO::MpiLockdown, &VEXAPI_LOCKDOWNINFO::MpiStatus},
    };
    for (const auto& row : CASES) {
        for (const auto& item : items) {
            for (const int state : {0, 1, int{'t'}, 255}) { // with status 0 any state reads "false"
                lockdown = {0, 0, 0, 5, 5, 5};
                lockdown.*item.state = static_cast<VX_UINT8>(state);
                lockdown.*item.status = row.status;
                for (const auto& other : items) {
                    ExpectLine(other.label, &other == &item ? row.word : "Unknown");
                }
            }
        }
    }
}

TEST_F(PortInfoTest, FailedReadsLeaveZeros) {
    for (const VX_UINT32 status : {1u, 118u, 134u}) {
        Fake().Return("VEXAPI_GetAdapterAsicBoardTemperature", status);
        Fake().Return("VEXAPI_GetLockdownStatus", status);
        Fake().Return("VEXAPI_GetFlashComponentVersion", status);
        EXPECT_EQ(RunPort("info", "get").code, RC_SUCCESS);
        EXPECT_EQ(PortCalls().size(), 3u); // a failure does not end the command
        ExpectLine(TEMPERATURE_LABEL, "0");
        ExpectLine("Config Lockdown", "false");
        ExpectLine("Firmware Update Lockdown", "false");
        ExpectLine("MPI Lockdown", "false");
        ExpectLine("Flash Preload Firmware Area Version", "NA");
        ExpectLine("Flash PCIE Serdes Version", "NA");
        EXPECT_EQ(Lines().size(), 44u);
    }
    // A record filled before the failure is kept.
    FakeLibrary::Get().Return("VEXAPI_GetAdapterAsicBoardTemperature", 0);
    Fake().onGetAdapterAsicBoardTemperature = [](VX_PORT_HANDLE*, _VEXAPI_BoardThermalTemp* given) {
        given->Temperature = 33;
        return 7u;
    };
    ExpectLine(TEMPERATURE_LABEL, "33");
}

std::string Error(const Format& format, const std::string& message) {
    return format.Report("PortInformation", {{"Message", message}}, "PortInfo", "");
}

TEST_F(PortInfoTest, RefusesHelpAndAPortThatIsNotThere) {
    EXPECT_EQ(Run("-t port -s info get").output, Error(XML, "Failed, Invalid parameter"));
    const CommandRun invalid = Run("-t port -s info getcli FC_x");
    EXPECT_EQ(invalid.code, RC_INVALID_PARAMETER);
    EXPECT_EQ(invalid.output, Error(TEXT, "Failed, Invalid parameter") + "Usage: get [port identifier]\r\n");
    const CommandRun help = Run("-t port -s info get -help");
    EXPECT_EQ(help.code, RC_HELP_REQUESTED);
    EXPECT_EQ(help.output, Error(XML, "Failed, Unknown"));
}

TEST_F(PortInfoTest, FailsWithoutAHost) {
    LoseHost();
    const CommandRun lost = RunPort("info", "getcli");
    EXPECT_EQ(lost.code, RC_HOST_NOT_FOUND);
    EXPECT_EQ(lost.output, Error(TEXT, "Failed, Host not found"));
}

TEST_F(PortInfoTest, CallsNothingWithoutTheRedirection) {
    NoFiles files;
    LoseFiles(files);
    const CommandRun closed = RunPort("info", "get");
    EXPECT_EQ(closed.code, RC_FILE_ERROR);
    EXPECT_EQ(closed.output, Error(XML, "Failed, File not found"));
    EXPECT_EQ(PortCalls(), Calls{});
}

TEST_F(PortInfoTest, VirtualPortIsAdmitted) {
    port->PortInterfaceType = 3;
    ExpectLine("Port Interface Type", "NPIV Virtual Port");
}

/// Library text is never used as a format: "%%" prints one percent sign, any other percent sign prints verbatim.
TEST_F(PortInfoTest, PercentSignsInTexts) {
    static constexpr struct {
        const char* text;
        const char* shown;
    } CASES[] = {
        {"100% sure", "100% sure"}, {"%s%n%d", "%s%n%d"}, {"%", "%"}, {"%%%", "%%"}, {"a%%b", "a%b"},
        {"%1$s %*d", "%1$s %*d"},
    };
    for (const auto& row : CASES) {
        SetText(port->DriverVersion, row.text);
        ExpectLine("Driver Version", row.shown);
    }
    SetText(port->DriverVersion, "50%d");
    SetText(adapter->Model, "%s");
    ExpectLine("Model", "%s");
}

TEST_F(PortInfoTest, TextsMayFillTheirArrays) {
    SetText(adapter->Model, std::string(32, 'm'));
    SetText(port->DriverVersion, std::string(64, 'd'));
    SetText(port->HostNQN, std::string(256, 'q'));
    SetText(port->BiosVersion, std::string(32, 'b'));
    SetText(port->RunningFwVersion, std::string(32, 'f'));
    ExpectLine("Model", std::string(32, 'm'));
    ExpectLine("Driver Version", std::string(64, 'd'));
    ExpectLine("Host NQN", std::string(256, 'q'));
    ExpectLine("Flash BIOS Version", std::string(32, 'b'));
    ExpectLine("Running Firmware Version", std::string(32, 'f'));
    EXPECT_EQ(Lines().size(), 44u);
}

} // namespace
