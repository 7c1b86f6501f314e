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
    void Expect(const std::string& kind, ResultCode code, bool reboot, const std::string& message,
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
            Expect(kind.word, RC_SUCCESS, !runsAtOnce, "Success", {WriteCall(kind)});
            status = 201;
            Expect(kind.word, RC_SUCCESS, true, "Success", {WriteCall(kind)});
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
                EXPECT_EQ(run.code, RC_FEATURE_NOT_SUPPORTED);
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

TEST_F(FlashUpdateTest, GivesEveryStatusItsCodeAndText) {
    static constexpr struct {
        VX_UINT32 status;
        ResultCode code;
        const char* message;
    } CASES[] = {
        {3, RC_FILE_ERROR, "Failed, Flash File not found"},
        {40, RC_NO_MEMORY, "Failed, Memory Error"},
        {101, RC_FILE_OPEN_ERROR, "Failed, File Open Error"},
        {102, RC_FILE_READ_ERROR, "Failed, File read Error"},
        {103, RC_FILE_NOT_VALID, "Failed, File not Valid"},
        {104, RC_SSID_NOT_FOUND, "Failed, Invalid SSID"},
        {105, RC_FILE_CORRUPTED, "Failed, Corrupted File"},
        {106, RC_FILE_SIZE_INVALID, "Failed, Invalid File Size"},
        {107, RC_CHECKSUM_ERROR, "Failed, Checksum Error"},
        {108, RC_INVALID_DATA, "Failed, Invalid data"},
        {110, RC_INVALID_FIELD, "Failed, Invalid Serial Number"},
        {111, RC_SIGNATURE_ERROR, "Failed, Invalid Signature"},
        {113, RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this adapter"},
        {114, RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
        {121, RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this adapter"},
        {133, RC_FLASH_UPDATE_LOCKDOWN, "Failed, Flash Update disabled as FW lockdown mode enabled"},
        {522, RC_IMAGE_COMPONENTS_INVALID, "Failed, Flash Image Components Validation Error"},
        // Values adjacent to the rows, and at the ends:
        {1, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {2, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {4, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {39, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {41, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {100, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {109, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {112, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {115, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {120, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {122, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {132, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {134, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {200, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {202, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {521, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {523, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
        {0xFFFFFFFF, RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
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
        Expect(word, RC_SUCCESS, false, "Success", {WriteCall(KINDS[0])});
    }
    Expect("brdcfg", RC_SUCCESS, true, "Success", {WriteCall(KINDS[1])});
    Expect("FWPRELOAD", RC_SUCCESS, true, "Success", {WriteCall(KINDS[2])});
    Expect("pepCFG", RC_SUCCESS, true, "Success", {WriteCall(KINDS[3])});
}

/// An invalid kind is not a usage error on any chip.
TEST_F(FlashUpdateTest, UnknownKindIsAFailedUpdate) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        for (const char* word : {"MB", "MBIs", "BrdCfg2", "all", "0"}) {
            Expect(word, RC_FLASH_UPDATE_FAILED, false, "Failed, Flash Update Error", {});
        }
    }
}

TEST_F(FlashUpdateTest, WithoutAnFcProtocolTheUpdateFails) {
    for (const VX_UINT32 type : {2u, 3u}) {
        port->ProtocolType = type;
        for (const Kind& kind : KINDS) {
            Expect(kind.word, RC_FLASH_UPDATE_FAILED, false, "Failed, Flash Update Error", {});
        }
    }
}

TEST_F(FlashUpdateTest, RefusesInOrder) {
    const auto expect = [](const std::string& words, ResultCode code, const std::string& message) {
        const CommandRun xml = Run("-t adapter update" + words);
        EXPECT_EQ(xml.code, code) << words;
        EXPECT_EQ(xml.output, Document(XML, false, message)) << words;
        const CommandRun text = Run("-t adapter updatecli" + words);
        EXPECT_EQ(text.code, code) << words;
        const bool showsUsage = code >= RC_PARAM_ERROR && code <= RC_INVALID_PARAMETER;
        EXPECT_EQ(text.output,
                  Document(TEXT, false, message) + (showsUsage ? "Usage: [identifier] [flashfile]\r\n" : ""))
            << words;
        EXPECT_EQ(PortCalls(), Calls{});
    };
    const std::string id = " Adapter_ORV2_S1 ";
    const std::string missing = folder.Path("none");
    // The words are counted first.
    constexpr char TOO_FEW[] = "Failed, Invalid Number of parameters";
    expect("", RC_PARAM_ERROR, TOO_FEW);
    expect(" help", RC_PARAM_ERROR, TOO_FEW);
    expect(" Adapter_ORV2_S1", RC_PARAM_ERROR, TOO_FEW);
    expect(id + missing, RC_PARAM_ERROR, TOO_FEW);
    expect(id + file, RC_PARAM_ERROR, TOO_FEW);
    LoseHost();
    expect(id + file, RC_PARAM_ERROR, TOO_FEW);
    // Then the identifier.
    expect(id + missing + " MBI", RC_HOST_NOT_FOUND, "Failed, Host not found");
    Fake().host.hasList = true;
    expect(" help " + missing + " MBI", RC_HELP_REQUESTED, "Failed, Unknown");
    expect(" Adapter_x_y " + missing + " MBI", RC_INVALID_PARAMETER, "Failed, Invalid parameter");
    expect(" FC_21 " + file + " MBI", RC_INVALID_PARAMETER, "Failed, Invalid parameter");
    // Then the file, before kind and chip: a Birch takes no board configuration.
    expect(id + missing + " MBI", RC_FILE_ERROR, "Failed, Flash File not found");
    expect(id + missing + " BrdCfg", RC_FILE_ERROR, "Failed, Flash File not found");
    expect(id + missing + " bad", RC_FILE_ERROR, "Failed, Flash File not found");
}

TEST_F(FlashUpdateTest, VirtualPortIsAdmitted) {
    port->PortInterfaceType = 3;
    Expect("MBI", RC_SUCCESS, false, "Success", {WriteCall(KINDS[0])});
}

TEST_F(FlashUpdateTest, WithoutTheRedirection) {
    NoFiles files;
    LoseFiles(files);
    const CommandRun run = Update(XML, "PEPCfg"); // before the chip
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, Document(XML, false, "Failed, Flash File not found"));
    EXPECT_FALSE(run.wasLeftRedirected);
    EXPECT_EQ(PortCalls(), Calls{});
}

} // namespace
