#include "FamilyTest.h"

#include <algorithm>

using namespace family_test;

namespace {

class AdapterInfoTest : public FamilyTest {
protected:
    AdapterInfoTest() {
        SetText(adapter->Manufacturer, "Kerrith");
        adapter->AdapterType = 2;
        adapter->VendorId = 0x1D0C;
        adapter->SubVendorId = 0x103C;
        adapter->SubDeviceId = 0x02E2;
        adapter->PciBusNumber = 0x5E;
        adapter->ChipRevision = 12;
        SetText(adapter->MultibootVersion, "02.01.00");
        SetText(adapter->FlashFwVersion, "9.06.02");
        SetText(adapter->BiosVersion, "3.61");
        SetText(adapter->FCodeVersion, "4.11");
        SetText(adapter->EfiVersion, "7.04");
        components.PepFirmware = {0xEE, 11, 1, 2, {0xEE, 0xEE}};
        components.PepSoftRom = {0xEE, 12, 3, 4, {0xEE, 0xEE}};
        components.PepBoardConfig = {0xEE, 13, 5, 6, {0xEE, 0xEE}};
        components.PreloadFwArea = {0xEE, 14, 7, 8, {0xEE, 0xEE}};
        components.FcBoardConfig = {0xEE, 15, 9, 10, {0xEE, 0xEE}};
        components.MpiFirmware = {0xEE, 16, 11, 12, {0xEE, 0xEE}};
        components.MpiSoftRom = {0xEE, 17, 13, 14, {0xEE, 0xEE}};
        components.PcieSerdes = {0xEE, 18, 15, 16, {0xEE, 0xEE}};
        std::memcpy(block.Signature, "FMBS", 4);
        SetBytes(block.FamilyFw, {19, 17, 118});
        Fake().onGetFlashComponentVersion = [this](VX_PORT_HANDLE*, _VEXAPI_FlashComponentVersion* given) {
            return Give(given, components);
        };
        Fake().onGetAdapterFlashMemoBlock = [this](VX_PORT_HANDLE*, VX_SFlashMemoBlock* given) {
            return Give(given, block);
        };
    }
    template <typename Record> VX_UINT32 Give(Record* given, const Record& record) {
        Chatter();
        const auto* const bytes = reinterpret_cast<const unsigned char*>(given);
        wasCleared = wasCleared && std::all_of(bytes, bytes + sizeof *given, [](unsigned char b) { return b == 0; });
        *given = record;
        return 0;
    }
    static std::vector<std::string> Lines() { return LinesOf(BlockText(RunAdapter("info", "getcli").output)); }
    /// The whole line with a label; empty if there is none.
    static std::string LineOf(const std::string& label) {
        for (const std::string& line : Lines()) {
            if (line.starts_with(label + ": ")) {
                return line;
            }
        }
        return "";
    }

    _VEXAPI_FlashComponentVersion components{};
    VX_SFlashMemoBlock block{};
    bool wasCleared = true;
    const std::string componentCall = Call("GetFlashComponentVersion");
    const std::string blockCall = Call("GetAdapterFlashMemoBlock");
};

constexpr char WHOLE[] = "Manufacturer: Kerrith\n"
                         "      Model: ORV2\n"
                         "      Serial Number: S1\n"
                         "      Vendor ID: 0x1d0c\n"
                         "      Device ID: 0x2281\n"
                         "      Subsystem Device ID: 0x2e2\n"
                         "      Subsystem Vendor ID: 0x103c\n"
                         "      PCI Bus ID: 0x5e\n"
                         "      Chip Revision: 12\n"
                         "      Type: Fibre Channel Adapter\n"
                         "      Multiboot Version: 02.01.00\n"
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
                         "      Family Firmware Version: 19.17.118\n";

TEST_F(AdapterInfoTest, IsByteExact) {
    const CommandRun xml = RunAdapter("info", "get");
    EXPECT_EQ(xml.code, RC_SUCCESS);
    EXPECT_EQ(xml.output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                          "<structure typeName=\"AdapterInformation\">\n"
                          "<field name=\"Message\">\n<string>Success</string></field>\n"
                          "<field name=\"General Parameters\">\n"
                          "<list type=\"structure\">\n"
                          "<structure typeName=\"GeneralParametersList\">\n"
                          "<field name=\"Data\">\n"
                          "<string>" +
                              std::string(WHOLE) +
                              "</string></field>\n"
                              "</structure>\n"
                              "</list>\n"
                              "</field>\n"
                              "</structure>\n"
                              "</output>\n");
    EXPECT_EQ(RunAdapter("info", "getcli").output, "****************************************************\n"
                                                   "AdapterInformation:\n"
                                                   "Message: Success\n"
                                                   "General Parameters: GeneralParametersList:\n"
                                                   "Data: " +
                                                       std::string(WHOLE) +
                                                       "****************************************************\n");
    EXPECT_EQ(PortCalls(), (Calls{componentCall, blockCall}));
    EXPECT_TRUE(wasCleared);
}

TEST_F(AdapterInfoTest, ChipsDecideWhichLinesStand) {
    const std::vector<std::string> all = LinesOf(WHOLE);
    ASSERT_EQ(all.size(), 24u);
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        const bool isNew = chip.chip == LARCH || chip.chip == ALDER || chip.chip == BIRCH;
        const bool hasBlock = isNew || chip.chip == ROWAN_FC;
        std::vector<std::string> expected;
        for (std::size_t i = 0; i < all.size(); ++i) { // rows 1 to 24 of the report
            const std::size_t row = i + 1;
            const bool stands = row <= 17 || (row <= 21 ? isNew : row <= 23 ? chip.chip == BIRCH : hasBlock);
            if (stands) {
                char device[32];
                std::snprintf(device, sizeof device, "Device ID: 0x%x", unsigned{chip.device});
                expected.push_back(row == 5 ? device : all[i]);
            }
        }
        EXPECT_EQ(Lines(), expected) << chip.name;
        EXPECT_EQ(PortCalls(), hasBlock ? (Calls{componentCall, blockCall}) : Calls{componentCall}) << chip.name;
    }
    // A chip of the Maple family is a Rowan FC chip of a certain subsystem vendor.
    SetChip(*port, ROWAN_FC);
    port->ChipProperty.SubVendorId = 0x103C;
    port->ChipProperty.SubDeviceId = 0x1939;
    EXPECT_EQ(LineOf("Family Firmware Version"), "Family Firmware Version: 19.17.118");
}

TEST_F(AdapterInfoTest, AbsentValues) {
    const VX_PHY_PORT_LIST* const list = adapter->pPhyPortList;
    *adapter = {};
    adapter->pPhyPortList = const_cast<VX_PHY_PORT_LIST*>(list);
    components = {};
    block = {};
    EXPECT_EQ(BlockText(Run("-t adapter -s info getcli Adapter_").output),
              "Manufacturer: \n"
              "      Model: NA\n"
              "      Serial Number: NA\n"
              "      Vendor ID: 0x0\n"
              "      Device ID: 0x2281\n"
              "      Subsystem Device ID: 0x0\n"
              "      Subsystem Vendor ID: 0x0\n"
              "      PCI Bus ID: 0x0\n"
              "      Chip Revision: 0\n"
              "      Type: Unknown\n"
              "      Multiboot Version: NA\n"
              "      Flash Firmware Version: NA\n"
              "      Flash BIOS Version: NA\n"
              "      Flash FCode Version: NA\n"
              "      Flash EFI Version: NA\n"
              "      Flash Preload Firmware Area Version: NA\n"
              "      Flash FC Board Config Version: NA\n"
              "      Flash MPI Firmware Version: NA\n"
              "      Flash PEP Firmware Version: NA\n"
              "      Flash PEP Board Config Version: NA\n"
              "      Flash PEP SoftROM Version: NA\n"
              "      Flash MPI SoftROM Version: NA\n"
              "      Flash PCIE Serdes Version: NA\n");
}

/// The label of the absent component is unchanged, unlike in the port's report.
TEST_F(AdapterInfoTest, AbsentSoftRomKeepsItsLabel) {
    components.PepSoftRom = {};
    EXPECT_EQ(LineOf("Flash PEP SoftROM Version"), "Flash PEP SoftROM Version: NA");
    EXPECT_EQ(LineOf("Flash MPI SoftROM Version"), "Flash MPI SoftROM Version: 17.13.14");
    EXPECT_EQ(Lines().size(), 24u);
}

TEST_F(AdapterInfoTest, NamesEveryTypeOfAnAdapter) {
    static constexpr const char* WORDS[] = {"Unknown",       "Ethernet Adapter", "Fibre Channel Adapter",
                                            "iSCSI Adapter", "Aspen CNA",        "Ethernet CNA",
                                            "FCoE CNA",      "iSCSI CNA",        "RDMA CNA",
                                            "Unknown"};
    for (VX_UINT32 type = 0; type < std::size(WORDS); ++type) {
        adapter->AdapterType = type;
        EXPECT_EQ(LineOf("Type"), std::string("Type: ") + WORDS[type]);
    }
    adapter->AdapterType = 0x102;
    EXPECT_EQ(LineOf("Type"), "Type: Unknown");
}

/// All four characters of the signature count, and any byte of the version.
TEST_F(AdapterInfoTest, FamilyFirmwareNeedsASignature) {
    for (std::size_t i = 0; i < 4; ++i) {
        const char kept = block.Signature[i];
        block.Signature[i] = 'x';
        EXPECT_EQ(LineOf("Family Firmware Version"), "") << i;
        block.Signature[i] = kept;
    }
    // The first word is 0x53424D46: "F" in its lowest byte. The other order is another word.
    std::memcpy(block.Signature, "SBMF", 4);
    EXPECT_EQ(LineOf("Family Firmware Version"), "");
    std::memcpy(block.Signature, "FMBS", 4);
    static constexpr const char* TEXTS[] = {"200.00.00", "0.200.00", "0.00.200"};
    for (std::size_t i = 0; i < 3; ++i) {
        std::array<int, 3> bytes{};
        bytes[i] = 200;
        SetBytes(block.FamilyFw, bytes);
        EXPECT_EQ(LineOf("Family Firmware Version"), std::string("Family Firmware Version: ") + TEXTS[i]);
    }
    SetBytes(block.FamilyFw, {0, 0, 0});
    EXPECT_EQ(LineOf("Family Firmware Version"), "");
}

TEST_F(AdapterInfoTest, FailedReadsLeaveZeros) {
    Fake().Return("VEXAPI_GetFlashComponentVersion", 3);
    Fake().Return("VEXAPI_GetAdapterFlashMemoBlock", 3);
    EXPECT_EQ(RunAdapter("info", "get").code, RC_SUCCESS);
    EXPECT_EQ(PortCalls(), (Calls{componentCall, blockCall}));
    EXPECT_EQ(LineOf("Flash Preload Firmware Area Version"), "Flash Preload Firmware Area Version: NA");
    EXPECT_EQ(LineOf("Family Firmware Version"), "");
    EXPECT_EQ(Lines().size(), 23u);
}

TEST_F(AdapterInfoTest, NumbersOfOneDigitAndOfAll) {
    adapter->VendorId = 7;
    adapter->PciBusNumber = 0xFFFF;
    adapter->ChipRevision = 0xFFFFFFFF;
    EXPECT_EQ(LineOf("Vendor ID"), "Vendor ID: 0x7");
    EXPECT_EQ(LineOf("PCI Bus ID"), "PCI Bus ID: 0xffff");
    EXPECT_EQ(LineOf("Chip Revision"), "Chip Revision: 4294967295");
}

TEST_F(AdapterInfoTest, TextsMayFillTheirArraysAndHoldPercentSigns) {
    SetText(adapter->Manufacturer, "%n%s" + std::string(60, 'k'));
    SetText(adapter->EfiVersion, std::string(31, 'e') + "%");
    SetText(adapter->SerialNumber, std::string(32, '7'));
    const std::vector<std::string> lines =
        LinesOf(BlockText(Run("-t adapter -s info getcli adapter_orv2_" + std::string(32, '7')).output));
    ASSERT_EQ(lines.size(), 24u);
    EXPECT_EQ(lines[0], "Manufacturer: %n%s" + std::string(60, 'k'));
    EXPECT_EQ(lines[2], "Serial Number: " + std::string(32, '7'));
    EXPECT_EQ(lines[14], "Flash EFI Version: " + std::string(31, 'e') + "%");
}

std::string Error(const Format& format, const std::string& message) {
    return format.Report("AdapterInformation", {{"Message", message}}, "General Parameters", "");
}

TEST_F(AdapterInfoTest, RefusesHelpAndAnAdapterThatIsNotThere) {
    EXPECT_EQ(Run("-t adapter -s info get").output, Error(XML, "Failed, Invalid parameter"));
    const CommandRun invalid = Run("-t adapter -s info getcli Adapter_x_y");
    EXPECT_EQ(invalid.code, RC_INVALID_PARAMETER);
    EXPECT_EQ(invalid.output, Error(TEXT, "Failed, Invalid parameter") + "Usage: get [adapter identifier]\r\n");
    const CommandRun help = Run("-t adapter -s info get /h");
    EXPECT_EQ(help.code, RC_HELP_REQUESTED);
    EXPECT_EQ(help.output, Error(XML, "Failed, Unknown"));
}

TEST_F(AdapterInfoTest, FailsWithoutAHost) {
    LoseHost();
    const CommandRun lost = RunAdapter("info", "getcli");
    EXPECT_EQ(lost.code, RC_HOST_NOT_FOUND);
    EXPECT_EQ(lost.output, Error(TEXT, "Failed, Host not found"));
}

TEST_F(AdapterInfoTest, RefusesAnAdapterWithoutAnFcPort) {
    for (const VX_UINT32 type : {2u, 3u}) { // it resolves, but has no FC protocol
        port->ProtocolType = type;
        const CommandRun run = RunAdapter("info", "getcli");
        EXPECT_EQ(run.code, RC_ADAPTER_NOT_FOUND);
        EXPECT_EQ(run.output, Error(TEXT, "Failed, Adapter not found"));
        EXPECT_EQ(PortCalls(), Calls{});
    }
}

TEST_F(AdapterInfoTest, CallsNothingWithoutTheRedirection) {
    NoFiles files;
    LoseFiles(files);
    const CommandRun closed = RunAdapter("info", "get");
    EXPECT_EQ(closed.code, RC_FILE_ERROR);
    EXPECT_EQ(closed.output, Error(XML, "Failed, File not found"));
    EXPECT_EQ(PortCalls(), Calls{});
}

} // namespace
