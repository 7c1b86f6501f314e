#include "FamilyTest.h"

#include <algorithm>

using namespace family_test;

namespace {

class FlashInfoTest : public FamilyTest {
protected:
    FlashInfoTest() {
        std::memcpy(block.Signature, "FMBS", 4);
        SetBytes(block.FamilyFw, {19, 1, 118});
        SetBytes(block.Mbi, {2, 21, 100});
        std::memcpy(block.MbiBuildDate, "20240917", 8);
        std::memcpy(block.ToolId, "ECLI", 4);
        block.Year = 2025;
        block.Month = 3;
        block.Day = 14;
        block.Hour = 5;
        block.Minute = 46;
        block.Second = 7;
        const VX_UINT8 version[4] = {1, 3, 60, 200};
        std::memcpy(block.ToolVersion, version, 4);
        // Bytes between the fields are not read.
        std::memset(block.Reserved4, 0xEE, sizeof block.Reserved4);
        block.Reserved19 = block.Reserved23 = block.Reserved43 = 0xEE;
        Fake().onGetAdapterFlashMemoBlock = [this](VX_PORT_HANDLE*, VX_SFlashMemoBlock* given) {
            Chatter();
            const auto* const bytes = reinterpret_cast<const unsigned char*>(given);
            wasCleared =
                wasCleared && std::all_of(bytes, bytes + sizeof *given, [](unsigned char b) { return b == 0; });
            *given = block;
            return 0u;
        };
    }
    static std::string Error(const Format& format, const std::string& message) {
        return format.Report("AdapterFlashInformation", {{"Message", message}}, "Flash Info", "");
    }
    static std::string Block() { return BlockText(RunAdapter("flashinfo", "getcli").output); }

    VX_SFlashMemoBlock block{};
    bool wasCleared = true;
};

constexpr char WHOLE[] = "MBI Version: 02.21.100\n"
                         "      MBI Build Date: 2024-09-17\n"
                         "      Flash Tool ID: ESX CLI Plugin\n"
                         "      Flash Tool Version: 01.03.60.200\n"
                         "      Last Update Time: 2025-03-14 05:46:07\n"
                         "      Family Firmware Version: 19.01.118\n";

TEST_F(FlashInfoTest, IsByteExact) {
    const CommandRun xml = RunAdapter("flashinfo", "get");
    EXPECT_EQ(xml.code, RC_SUCCESS);
    EXPECT_EQ(xml.output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                          "<structure typeName=\"AdapterFlashInformation\">\n"
                          "<field name=\"Message\">\n<string>Success</string></field>\n"
                          "<field name=\"Flash Info\">\n"
                          "<list type=\"structure\">\n"
                          "<structure typeName=\"FlashInfoList\">\n"
                          "<field name=\"Data\">\n"
                          "<string>" +
                              std::string(WHOLE) +
                              "</string></field>\n"
                              "</structure>\n"
                              "</list>\n"
                              "</field>\n"
                              "</structure>\n"
                              "</output>\n");
    EXPECT_EQ(RunAdapter("flashinfo", "getcli").output, "****************************************************\n"
                                                        "AdapterFlashInformation:\n"
                                                        "Message: Success\n"
                                                        "Flash Info: FlashInfoList:\n"
                                                        "Data: " +
                                                            std::string(WHOLE) +
                                                            "****************************************************\n");
    EXPECT_EQ(PortCalls(), Calls{Call("GetAdapterFlashMemoBlock")});
    EXPECT_TRUE(wasCleared);
}

/// One matching character suffices.
TEST_F(FlashInfoTest, SignatureNeedsOneCharacter) {
    for (unsigned places = 0; places < 16; ++places) {
        for (std::size_t i = 0; i < 4; ++i) {
            // A signature character at another position is ignored.
            block.Signature[i] = (places >> i & 1) != 0 ? "FMBS"[i] : "MFSB"[i];
        }
        const CommandRun run = RunAdapter("flashinfo", "get");
        EXPECT_EQ(run.code, places == 0 ? RC_SIGNATURE_ERROR : RC_SUCCESS) << places;
        EXPECT_EQ(run.output, places == 0 ? Error(XML, "Failed, Flash Signature Error")
                                          : XML.Block("AdapterFlashInformation", "Flash Info", "FlashInfoList", WHOLE));
    }
    std::memcpy(block.Signature, "fmbs", 4); // case-sensitive
    EXPECT_EQ(RunAdapter("flashinfo", "get").code, RC_SIGNATURE_ERROR);
    block = {};
    EXPECT_EQ(RunAdapter("flashinfo", "getcli").output, Error(TEXT, "Failed, Flash Signature Error"));
    // A block of zeros but for one character prints its zeros; the zero bytes of the date end that piece before
    // its line end.
    block.Signature[0] = 'F';
    EXPECT_EQ(Block(), "MBI Version: 00.00.00\n"
                       "      MBI Build Date:       Flash Tool ID: Unknown\n"
                       "      Flash Tool Version: 00.00.00.00\n"
                       "      Last Update Time: 0000-00-00 00:00:00\n");
}

TEST_F(FlashInfoTest, ZeroByteEndsTheDate) {
    static constexpr const char* DATES[] = {"", "2", "20", "202", "2024-", "2024-0", "2024-09-", "2024-09-1"};
    for (std::size_t i = 0; i < 8; ++i) {
        std::memcpy(block.MbiBuildDate, "20240917", 8);
        block.MbiBuildDate[i] = '\0';
        std::string expected = WHOLE;
        expected.replace(expected.find("2024-09-17\n"), 11, DATES[i]);
        EXPECT_EQ(Block(), expected) << i;
    }
    std::memcpy(block.MbiBuildDate, "%d%s%%n\n", 8); // characters of any kind
    std::string expected = WHOLE;
    expected.replace(expected.find("2024-09-17"), 10, "%d%s-%-n\n"); // the pair in "%%" prints one percent sign
    EXPECT_EQ(Block(), expected);
}

TEST_F(FlashInfoTest, ToolIds) {
    static constexpr struct {
        const char* id;
        const char* name;
    } CASES[] = {
        {"OCLI", "Sorvenna CLI"},
        {"OGUI", "Sorvenna GUI"},
        {"OMFG", "Manufacturing Tool"},
        {"ORFS", "DOS Flash Update Utility"},
        {"PLDM", "Platform Management Firmware"},
        {"EFLS", "UEFI Flash Tool"},
        {"EFMP", "UEFI Firmware Management Protocol Driver"},
        {"VIPL", "ESXi Plugin"},
        {"HPFL", "Flash Update Library"},
        {"ORFL", "ORFL"},
        {"ECLI", "ESX CLI Plugin"},
        {"FCTB", "FC Toolbench"},
        {"CMPR", "CIM Provider"},
        {"IBMD", "IBM AIX Driver"},
        {"ocli", "Sorvenna CLI"},
        {"OmFg", "Manufacturing Tool"},
        {"ibmd", "IBM AIX Driver"},
        {"orfl", "orfl"}, // the block's own characters
        {"OrFl", "OrFl"},
        {"OCLJ", "Unknown"},
        {"XCLI", "Unknown"},
        {"OCL", "Unknown"},
        {" OCL", "Unknown"},
        {"", "Unknown"},
    };
    for (const auto& row : CASES) {
        std::memset(block.ToolId, 0, 4);
        std::memcpy(block.ToolId, row.id, std::strlen(row.id));
        std::string expected = WHOLE;
        expected.replace(expected.find("ESX CLI Plugin"), 14, row.name);
        EXPECT_EQ(Block(), expected) << row.id;
    }
}

TEST_F(FlashInfoTest, NumbersOfAllLengths) {
    block.Year = 65535;
    block.Month = block.Day = block.Hour = block.Minute = block.Second = 255;
    SetBytes(block.Mbi, {0, 9, 255});
    EXPECT_EQ(LinesOf(Block())[4], "Last Update Time: 65535-255-255 255:255:255");
    EXPECT_EQ(LinesOf(Block())[0], "MBI Version: 00.09.255");
    block.Year = 7;
    EXPECT_EQ(LinesOf(Block())[4], "Last Update Time: 0007-255-255 255:255:255");
}

TEST_F(FlashInfoTest, FamilyVersionOfZeroHasNoLine) {
    for (std::size_t i = 0; i < 3; ++i) {
        static constexpr const char* TEXTS[] = {"05.00.00", "00.05.00", "00.00.05"};
        std::array<int, 3> bytes{};
        bytes[i] = 5;
        SetBytes(block.FamilyFw, bytes);
        EXPECT_EQ(LinesOf(Block()).at(5), std::string("Family Firmware Version: ") + TEXTS[i]);
    }
    SetBytes(block.FamilyFw, {0, 0, 0});
    EXPECT_EQ(LinesOf(Block()).size(), 5u);
}

TEST_F(FlashInfoTest, ChipsWithAMemoBlock) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        const bool has = chip.chip == ROWAN_FC || chip.chip == LARCH || chip.chip == ALDER || chip.chip == BIRCH;
        const CommandRun run = RunAdapter("flashinfo", "get");
        EXPECT_EQ(run.code, has ? RC_SUCCESS : RC_FEATURE_NOT_SUPPORTED) << chip.name;
        if (!has) {
            EXPECT_EQ(run.output, Error(XML, "Failed, feature not supported for this adapter")) << chip.name;
            EXPECT_EQ(PortCalls(), Calls{});
        }
    }
}

TEST_F(FlashInfoTest, TellsAFailingRead) {
    for (const VX_UINT32 status : {1u, 118u, 0x80000000u}) {
        Fake().ReturnInTurn("VEXAPI_GetAdapterFlashMemoBlock", {status});
        const CommandRun run = RunAdapter("flashinfo", "getcli");
        EXPECT_EQ(run.code, RC_CFG_READ_FAILED);
        EXPECT_EQ(run.output, Error(TEXT, "Failed, Flash Info read failed"));
    }
}

TEST_F(FlashInfoTest, RefusesHelpAndAnAdapterThatIsNotThere) {
    EXPECT_EQ(Run("-t adapter -s flashinfo get").output, Error(XML, "Failed, Invalid parameter"));
    const CommandRun invalid = Run("-t adapter -s flashinfo getcli FC_x");
    EXPECT_EQ(invalid.code, RC_INVALID_PARAMETER);
    EXPECT_EQ(invalid.output, Error(TEXT, "Failed, Invalid parameter") + "Usage: get [adapter identifier]\r\n");
    const CommandRun help = Run("-t adapter -s flashinfo get help");
    EXPECT_EQ(help.code, RC_HELP_REQUESTED);
    EXPECT_EQ(help.output, Error(XML, "Failed, Unknown"));
}

TEST_F(FlashInfoTest, FailsWithoutAHost) {
    LoseHost();
    const CommandRun lost = RunAdapter("flashinfo", "get");
    EXPECT_EQ(lost.code, RC_HOST_NOT_FOUND);
    EXPECT_EQ(lost.output, Error(XML, "Failed, Host not found"));
}

TEST_F(FlashInfoTest, RefusesAnAdapterWithoutAnFcPort) {
    port->ProtocolType = 3;
    const CommandRun none = RunAdapter("flashinfo", "get");
    EXPECT_EQ(none.code, RC_ADAPTER_NOT_FOUND);
    EXPECT_EQ(none.output, Error(XML, "Failed, Adapter not found"));
    EXPECT_EQ(PortCalls(), Calls{});
}

TEST_F(FlashInfoTest, CallsNothingWithoutTheRedirection) {
    NoFiles files;
    LoseFiles(files);
    const CommandRun closed = RunAdapter("flashinfo", "get");
    EXPECT_EQ(closed.code, RC_FILE_ERROR);
    EXPECT_EQ(closed.output, Error(XML, "Failed, File not found"));
    EXPECT_EQ(PortCalls(), Calls{});
}

} // namespace
