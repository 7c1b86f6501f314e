#include "FamilyTest.h"

#include <algorithm>

using namespace family_test;

namespace {

struct Kind {
    const char* word;
    const char* function;
    const char* further; ///< arguments after the path
    std::vector<Chip> allowed;
};
const std::vector<Chip> EVERY_CHIP = {FOUR_G, EIGHT_G, ROWAN_FC, ROWAN_CNA, HAZEL,       WILLOW,
                                      LARCH,  ALDER,   BIRCH,    NO_FAMILY, OTHER_VENDOR};
const Kind KINDS[] = {
    {"MBI", "doOptionROMUpdate", ", 0", EVERY_CHIP},
    {"BrdCfg", "UpdateSpecificFlashRegionFromFile", "", {ROWAN_FC, ROWAN_CNA, LARCH, ALDER}},
    {"FWPreload", "UpdateAdapterFirmwareTableFromFile", "", {EIGHT_G, ROWAN_FC, ROWAN_CNA, LARCH, ALDER}},
    {"PEPCfg", "UpdateAdapterPEPCfgFromFile", "", {LARCH, ALDER}},
};

bool IsAllowed(const Kind& kind, Chip chip) {
    return std::find(kind.allowed.begin(), kind.allowed.end(), chip) != kind.allowed.end();
}

class FlashUpdateTest : public FamilyTest {
protected:
    FlashUpdateTest() {
        Fake().ondoOptionROMUpdate = [this](VX_PORT_HANDLE*, const char*, VX_UINT32) { return Write(); };
        Fake().onUpdateSpecificFlashRegionFromFile = [this](VX_PORT_HANDLE*, const char*) { return Write(); };
        Fake().onUpdateAdapterFirmwareTableFromFile = [this](VX_PORT_HANDLE*, const char*) { return Write(); };
        Fake().onUpdateAdapterPEPCfgFromFile = [this](VX_PORT_HANDLE*, const char*) { return Write(); };
    }
    VX_UINT32 Write() const {
        Chatter();
        return status;
    }
    static std::string Document(const Format& format, bool reboot, const std::string& message) {
        return format.Flat("FlashUpdate", {Flag("Reboot Required", reboot), {"Message", message}});
    }
    CommandRun Update(const Format& format, const std::string& kind) const {
        return Run("-t adapter " + format.Leaf("update") + " Adapter_ORV2_S1 " + file + (kind.empty() ? "" : " ") +
                   kind);
    }
    void Expect(const std::string& kind, VX_UINT32 code, bool reboot, const std::string& message,
                const Calls& calls) const {
        for (const Format& format : FORMATS) {
            const CommandRun run = Update(format, kind);
            EXPECT_EQ(run.code, code) << kind;
            EXPECT_EQ(run.output, Document(format, reboot, message)) << kind;
            EXPECT_FALSE(run.wasLeftRedirected);
            EXPECT_EQ(PortCalls(), calls) << kind;
        }
    }
    std::string WriteCall(const Kind& kind) const { return Call(kind.function, "\"" + file + "\"" + kind.further); }

    TemporaryFolder folder;
    const std::string file = folder.Write("image.bin", "image");
    VX_UINT32 status = 0;
};

TEST_F(FlashUpdateTest, IsByteExact) {
    EXPECT_EQ(Update(XML, "MBI").output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                                         "<structure typeName=\"FlashUpdate\">\n"
                                         "<field name=\"Reboot Required\">\n<bool>false</bool></field>\n"
                                         "<field name=\"Message\">\n<string>Success</string></field>\n"
                                         "</structure>\n"
                                         "</output>\n");
    status = 133;
    EXPECT_EQ(Update(TEXT, "MBI").output, "****************************************************\n"
                                          "FlashUpdate:\n"
                                          "Reboot Required: false\n"
                                          "Message: Failed, Flash Update disabled as FW lockdown mode enabled\n"
                                          "****************************************************\n");
}

/// On a supported chip, only a multi-boot image on the three newest families runs without a reboot; status 201
/// always requests one.
TEST_F(FlashUpdateTest, KindsAndChips) {
    for (const Kind& kind : KINDS) {
        for (const ChipRow& chip : CHIPS) {
            if (!IsAllowed(kind, chip.chip)) {
                continue;
            }
            SetChip(*port, chip.chip);
            SCOPED_TRACE(chip.name);
            const bool runsAtOnce =
                std::string(kind.word) == "MBI" && (chip.chip == LARCH || chip.chip == ALDER || chip.chip == BIRCH);
            status = 0;
            Expect(kind.word, 0, !runsAtOnce, "Success", {WriteCall(kind)});
            status = 201;
            Expect(kind.word, 0, true, "Success", {WriteCall(kind)});
        }
    }
}

/// The library's log only grows: the output of a run starts at the log's previous size. Other runs may write there
/// at the same time.
constexpr char LIBRARY_LOG[] = "/var/tmp/vexapi-output.log";
std::uintmax_t LibraryLogSize() {
    return std::filesystem::exists(LIBRARY_LOG) ? std::filesystem::file_size(LIBRARY_LOG) : 0;
}
std::string LibraryLogFrom(std::uintmax_t start) {
    std::ifstream file(LIBRARY_LOG, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(start));
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

/// The document for an unsupported chip goes to the library's log, and clients see nothing.
TEST_F(FlashUpdateTest, RefusedChipLeavesTheRedirectionOpen) {
    int refused = 0;
    for (const Kind& kind : KINDS) {
        for (const ChipRow& chip : CHIPS) {
            if (IsAllowed(kind, chip.chip)) {
                continue;
            }
            SetChip(*port, chip.chip);
            SCOPED_TRACE(std::string(kind.word) + " on " + chip.name);
            for (const Format& format : FORMATS) {
                const std::uintmax_t start = LibraryLogSize();
                const CommandRun run = Update(format, kind.word);
                EXPECT_EQ(run.code, 35u);
                EXPECT_EQ(run.output, "");
                EXPECT_TRUE(run.wasLeftRedirected);
                EXPECT_EQ(PortCalls(), Calls{});
                EXPECT_NE(LibraryLogFrom(start).find(
                              Document(format, false, "Failed, Feature not supported for this adapter")),
                          std::string::npos);
            }
            ++refused;
        }
    }
    EXPECT_EQ(refused, 7 + 6 + 9); // of eleven chips, 4, 5 and 2 are allowed
}

TEST_F(FlashUpdateTest, StatusTable) {
    static constexpr struct {
        VX_UINT32 status;
        VX_UINT32 code;
        const char* message;
    } CASES[] = {
        {3, 19, "Failed, Flash File not found"},
        {40, 42, "Failed, Memory Error"},
        {101, 22, "Failed, File Open Error"},
        {102, 25, "Failed, File read Error"},
        {103, 23, "Failed, File not Valid"},
        {104, 26, "Failed, Invalid SSID"},
        {105, 27, "Failed, Corrupted File"},
        {106, 29, "Failed, Invalid File Size"},
        {107, 30, "Failed, Checksum Error"},
        {108, 17, "Failed, Invalid data"},
        {110, 18, "Failed, Invalid Serial Number"},
        {111, 31, "Failed, Invalid Signature"},
        {113, 35, "Failed, Feature not supported for this adapter"},
        {114, 21, "Failed, Adapter not found"},
        {121, 35, "Failed, Feature not supported for this adapter"},
        {133, 32, "Failed, Flash Update disabled as FW lockdown mode enabled"},
        {522, 16, "Failed, Flash Image Components Validation Error"},
        // Values adjacent to the rows, and at the ends:
        {1, 11, "Failed, Flash Update Error"},
        {2, 11, "Failed, Flash Update Error"},
        {4, 11, "Failed, Flash Update Error"},
        {39, 11, "Failed, Flash Update Error"},
        {41, 11, "Failed, Flash Update Error"},
        {100, 11, "Failed, Flash Update Error"},
        {109, 11, "Failed, Flash Update Error"},
        {112, 11, "Failed, Flash Update Error"},
        {115, 11, "Failed, Flash Update Error"},
        {120, 11, "Failed, Flash Update Error"},
        {122, 11, "Failed, Flash Update Error"},
        {132, 11, "Failed, Flash Update Error"},
        {134, 11, "Failed, Flash Update Error"},
        {200, 11, "Failed, Flash Update Error"},
        {202, 11, "Failed, Flash Update Error"},
        {521, 11, "Failed, Flash Update Error"},
        {523, 11, "Failed, Flash Update Error"},
        {0xFFFFFFFF, 11, "Failed, Flash Update Error"},
    };
    SetChip(*port, LARCH); // every kind is allowed
    for (const auto& row : CASES) {
        status = row.status;
        for (const Kind& kind : KINDS) {
            Expect(kind.word, row.code, false, row.message, {WriteCall(kind)});
        }
    }
}

TEST_F(FlashUpdateTest, KindsInAnyCase) {
    SetChip(*port, ALDER);
    for (const char* word : {"mbi", "Mbi", "MBI extra"}) {
        Expect(word, 0, false, "Success", {WriteCall(KINDS[0])});
    }
    Expect("brdcfg", 0, true, "Success", {WriteCall(KINDS[1])});
    Expect("FWPRELOAD", 0, true, "Success", {WriteCall(KINDS[2])});
    Expect("pepCFG", 0, true, "Success", {WriteCall(KINDS[3])});
}

/// An invalid kind is not a usage error on any chip.
TEST_F(FlashUpdateTest, UnknownKindIsAFailedUpdate) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        for (const char* word : {"MB", "MBIs", "BrdCfg2", "all", "0"}) {
            Expect(word, 11, false, "Failed, Flash Update Error", {});
        }
    }
}

TEST_F(FlashUpdateTest, WithoutAnFcProtocolTheUpdateFails) {
    for (const VX_UINT32 type : {2u, 3u}) {
        port->ProtocolType = type;
        for (const Kind& kind : KINDS) {
            Expect(kind.word, 11, false, "Failed, Flash Update Error", {});
        }
    }
}

TEST_F(FlashUpdateTest, RefusesInOrder) {
    const auto expect = [](const std::string& words, VX_UINT32 code, const std::string& message) {
        const CommandRun xml = Run("-t adapter update" + words);
        EXPECT_EQ(xml.code, code) << words;
        EXPECT_EQ(xml.output, Document(XML, false, message)) << words;
        const CommandRun text = Run("-t adapter updatecli" + words);
        EXPECT_EQ(text.code, code) << words;
        const bool showsUsage = code >= 4 && code <= 6;
        EXPECT_EQ(text.output,
                  Document(TEXT, false, message) + (showsUsage ? "Usage: [identifier] [flashfile]\r\n" : ""))
            << words;
        EXPECT_EQ(PortCalls(), Calls{});
    };
    const std::string id = " Adapter_ORV2_S1 ";
    const std::string missing = folder.Path("none");
    // The words are counted first.
    constexpr char TOO_FEW[] = "Failed, Invalid Number of parameters";
    expect("", 4, TOO_FEW);
    expect(" help", 4, TOO_FEW);
    expect(" Adapter_ORV2_S1", 4, TOO_FEW);
    expect(id + missing, 4, TOO_FEW);
    expect(id + file, 4, TOO_FEW);
    LoseHost();
    expect(id + file, 4, TOO_FEW);
    // Then the identifier.
    expect(id + missing + " MBI", 14, "Failed, Host not found");
    Fake().host.hasList = true;
    expect(" help " + missing + " MBI", 5, "Failed, Unknown");
    expect(" Adapter_x_y " + missing + " MBI", 6, "Failed, Invalid parameter");
    expect(" FC_21 " + file + " MBI", 6, "Failed, Invalid parameter");
    // Then the file, before kind and chip: a Birch takes no board configuration.
    expect(id + missing + " MBI", 19, "Failed, Flash File not found");
    expect(id + missing + " BrdCfg", 19, "Failed, Flash File not found");
    expect(id + missing + " bad", 19, "Failed, Flash File not found");
}

TEST_F(FlashUpdateTest, VirtualPortIsAdmitted) {
    port->PortInterfaceType = 3;
    Expect("MBI", 0, false, "Success", {WriteCall(KINDS[0])});
}

TEST_F(FlashUpdateTest, WithoutTheRedirection) {
    NoFiles files;
    LoseFiles(files);
    const CommandRun run = Update(XML, "PEPCfg"); // before the chip
    EXPECT_EQ(run.code, 19u);
    EXPECT_EQ(run.output, Document(XML, false, "Failed, Flash File not found"));
    EXPECT_FALSE(run.wasLeftRedirected);
    EXPECT_EQ(PortCalls(), Calls{});
}

} // namespace
