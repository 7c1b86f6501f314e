#include "FamilyTest.h"
#include "TraceLog.h"
#include "TransceiverImages.h"

using namespace family_test;
using transceiver_test::Image;
using transceiver_test::LoadImage;
using transceiver_test::ReportOf;

namespace {

/// The document of a report or a failure; `rows` is the content of the list.
std::string Document(const Format& format, const std::string& message, const std::string& rows = "") {
    return format.Report("DMIInformation", {{"Message", message}}, "Dmi Info", rows);
}
std::string ReportDocument(const Format& format, const std::string& text) {
    const std::string content = format.IsXml() ? "<string>" + text + "</string>" : text;
    return Document(format, "Success", format.Structure("DMIInfoList", format.OpenField("Dmi Data", content)));
}
std::string RawDocument(const Format& format, const std::string& a0, const std::string& a2) {
    return Document(
        format, "Success",
        format.Structure("DMIInfoList", format.FieldsOf({{"Dmi A0Data In Hex", a0}, {"Dmi A2Data In Hex", a2}})));
}
std::string UpdateDocument(const Format& format, const std::string& message) {
    return format.Flat("SFPFirmwareUpdate", {{"Message", message}});
}

/// Output of a `cli` leaf after the document of an invalid call.
std::string Usage(const Format& format, const std::string& leaf) {
    return format.IsXml() ? "" : "Usage: " + leaf + " [port identifier]\r\n";
}

constexpr VX_UINT8 DRIVER_CAN_UPDATE = 2;

class DmiTest : public FamilyTest {
protected:
    DmiTest() {
        port->DriverFeatureFlags = DRIVER_CAN_UPDATE;
        Fake().Succeed({"SfpModuleFirmwareUpdate"});
        Insert(LoadImage("finisar-ftlx8571-auj0rcj"));
    }

    /// The module in the port.
    static void Insert(const Image& image) {
        Fake().onGetSFPData = [image](VX_PORT_HANDLE*, void* buffer) {
            Chatter();
            for (std::size_t i = 0; i < sizeof image.Data; ++i) {
                EXPECT_EQ(static_cast<VX_UINT8*>(buffer)[i], 0) << "not zeroed at " << i;
            }
            std::memcpy(buffer, image.Data, sizeof image.Data);
            return 0u;
        };
    }
    CommandRun RunDmi(const Format& format, const std::string& leaf, const std::string& rest = "") const {
        return RunPort("dmi", format.Leaf(leaf), rest);
    }

    TemporaryFolder folder;
    std::string file = folder.Write("sfp.bin", "firmware");
};

TEST_F(DmiTest, GetIsTheReportAsOneText) {
    for (const Format& format : FORMATS) {
        const CommandRun run = RunDmi(format, "get");
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, ReportDocument(format, ReportOf(LoadImage("finisar-ftlx8571-auj0rcj"))));
        EXPECT_EQ(PortCalls(), Calls{Call("GetSFPData")});
    }
}

TEST_F(DmiTest, GetrawIsBothPagesInHexadecimal) {
    // All bytes of a page differ, and the pages differ.
    Image image;
    std::string a0;
    std::string a2;
    for (int i = 0; i < 256; ++i) {
        image.Set(static_cast<std::size_t>(i), {255 - i}).Set(256 + static_cast<std::size_t>(i), {i});
        char text[8];
        std::snprintf(text, sizeof text, "%02x ", static_cast<unsigned>(255 - i));
        a0 += text;
        std::snprintf(text, sizeof text, "%02x ", static_cast<unsigned>(i));
        a2 += text;
    }
    EXPECT_EQ(a0.size(), 768u);
    Insert(image);
    for (const Format& format : FORMATS) {
        const CommandRun run = RunDmi(format, "getraw");
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, RawDocument(format, a0, a2));
        EXPECT_EQ(PortCalls(), Calls{Call("GetSFPData")});
    }
}

TEST_F(DmiTest, EmptyBayIsAFailureWithResultZero) {
    Insert(Image());
    for (const Format& format : FORMATS) {
        for (const char* leaf : {"get", "getraw"}) {
            const CommandRun run = RunDmi(format, leaf);
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Document(format, "Failed, Data not available"));
        }
    }
}

TEST_F(DmiTest, OneByteIsData) {
    for (const std::size_t offset : {0, 255, 256, 511}) {
        const Image image = Image().Set(offset, {1});
        Insert(image);
        EXPECT_EQ(RunDmi(TEXT, "get").output, ReportDocument(TEXT, ReportOf(image))) << offset;
        std::string pages;
        for (std::size_t i = 0; i < 512; ++i) {
            pages += i == offset ? "01 " : "00 ";
        }
        EXPECT_EQ(RunDmi(TEXT, "getraw").output, RawDocument(TEXT, pages.substr(0, 768), pages.substr(768))) << offset;
    }
}

TEST_F(DmiTest, EveryRealModuleInBothFormats) {
    for (const char* name : {"amphenol-dac-571540007", "badccext-oem-sfp-ge-t", "cisco-finisar-10g-lr",
                             "extcal-huawei-hpsp2120", "fs-qsfp28-ir4-100g", "molex-dac-1110401054"}) {
        Insert(LoadImage(name));
        for (const Format& format : FORMATS) {
            EXPECT_EQ(RunDmi(format, "get").output, ReportDocument(format, ReportOf(LoadImage(name)))) << name;
        }
    }
}

/// Percent signs of a module are not conversions; a pair prints as one.
TEST_F(DmiTest, PercentSignsOfAModule) {
    Insert(LoadImage("finisar-ftlx8571-auj0rcj").Set(20, "%s%n%d%%50%08x%"));
    const std::string output = RunDmi(TEXT, "get").output;
    EXPECT_NE(output.find("Vendor: %s%n%d%50%08x%"), std::string::npos) << output;
    EXPECT_NE(output.find("Vendor name: %s%n%d%50%08x%"), std::string::npos) << output;
}

TEST_F(DmiTest, FailuresOfReading) {
    struct Failure {
        const char* what;
        std::function<void(DmiTest&)> prepare;
        std::string words;
        ResultCode code;
        const char* message;
        bool showsUsage;
        bool asks; ///< whether the library is asked for the module
    };
    const Failure FAILURES[] = {
        {"no identifier", [](DmiTest&) {}, "", RC_INVALID_PARAMETER, "Failed, Invalid parameter", true, false},
        {"no such port", [](DmiTest&) {}, " FC_21:00:0a:0b:0c:0d:00:77", RC_INVALID_PARAMETER,
         "Failed, Invalid parameter", true, false},
        {"help", [](DmiTest&) {}, " help", RC_HELP_REQUESTED, "Failed, Unknown", true, false},
        {"no host", [](DmiTest&) { LoseHost(); }, " " + Id(*port), RC_HOST_NOT_FOUND, "Failed, Host not found", false,
         false},
        {"status", [](DmiTest&) { Fake().Return("VEXAPI_GetSFPData", 113); }, " " + Id(*port), RC_CFG_READ_FAILED,
         "Failed, SFP DMI data read failed", false, true},
    };
    for (const Failure& failure : FAILURES) {
        for (const Format& format : FORMATS) {
            for (const char* leaf : {"get", "getraw"}) {
                SCOPED_TRACE(std::string(failure.what) + " " + format.Leaf(leaf));
                failure.prepare(*this);
                const CommandRun run = Run("-t port -s dmi " + format.Leaf(leaf) + failure.words);
                EXPECT_EQ(run.code, failure.code);
                EXPECT_EQ(run.output,
                          Document(format, failure.message) + (failure.showsUsage ? Usage(format, leaf) : ""));
                EXPECT_EQ(PortCalls(), failure.asks ? Calls{Call("GetSFPData")} : Calls{});
                Fake().host.hasList = true;
            }
        }
    }
}

TEST_F(DmiTest, ReadingWithoutTheLibrarysLog) {
    for (const Format& format : FORMATS) {
        NoFiles files;
        LoseFiles(files);
        const CommandRun run = RunDmi(format, "get");
        EXPECT_EQ(run.code, RC_FILE_ERROR);
        EXPECT_EQ(run.output, Document(format, "Failed, File not found"));
        EXPECT_EQ(PortCalls(), Calls{});
    }
}

/// A module can be read on virtual ports, on any adapter and without a link.
TEST_F(DmiTest, EveryPortIsRead) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        port->PortInterfaceType = 3;
        port->PortState = 3;
        EXPECT_EQ(RunDmi(TEXT, "get").code, RC_SUCCESS) << chip.name;
        EXPECT_EQ(PortCalls(), Calls{Call("GetSFPData")}) << chip.name;
    }
}

TEST_F(DmiTest, UpdatePassesThePathAndTheNumberTwo) {
    for (const Format& format : FORMATS) {
        Fake().onSfpModuleFirmwareUpdate = [](VX_PORT_HANDLE*, const char*, VX_UINT32) {
            Chatter();
            return 0u;
        };
        const CommandRun run = RunDmi(format, "update", file + " WTD");
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, UpdateDocument(format, "Success"));
        EXPECT_EQ(PortCalls(), Calls{Call("SfpModuleFirmwareUpdate", "\"" + file + "\", 2")});
    }
}

TEST_F(DmiTest, UpdateGivesEveryStatusItsCodeAndText) {
    struct Status {
        VX_UINT32 status;
        ResultCode code;
        const char* message;
    };
    const Status STATUSES[] = {
        {0, RC_SUCCESS, "Success"},
        {1, RC_LIBRARY_FAILED, "Failed, Unknown"},
        {100, RC_LIBRARY_FAILED, "Failed, Unknown"},
        {101, RC_FILE_OPEN_ERROR, "Failed, File open error"},
        {102, RC_LIBRARY_FAILED, "Failed, Unknown"},
        {107, RC_CHECKSUM_ERROR, "Failed, Checksum error"},
        {113, RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for adapter"},
        {114, RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
        {115, RC_LIBRARY_FAILED, "Failed, Unknown"},
        {118, RC_UNSUPPORTED_FW, "Failed, Feature not supported by driver"},
        {143, RC_LIBRARY_FAILED, "Failed, Unknown"},
        {144, RC_SFP_FW_UPDATE_FAILED, "Failed, SFP FW update failed"},
        {145, RC_SFP_VENDOR_MISMATCHED, "Failed, SFP Vendor mismatched"},
        {146, RC_SFP_VENDOR_UNSUPPORTED, "Failed, SFP FW update not supported for this SFP vendor"},
        {147, RC_LIBRARY_FAILED, "Failed, Unknown"},
        {0xFFFFFFFF, RC_LIBRARY_FAILED, "Failed, Unknown"},
    };
    for (const Status& row : STATUSES) {
        for (const Format& format : FORMATS) {
            SCOPED_TRACE(row.status);
            Fake().Return("VEXAPI_SfpModuleFirmwareUpdate", row.status);
            const CommandRun run = RunDmi(format, "update", file + " WTD");
            EXPECT_EQ(run.code, row.code);
            EXPECT_EQ(run.output, UpdateDocument(format, row.message));
        }
    }
}

/// The checks in order: each case fails one check and all later ones.
TEST_F(DmiTest, UpdateRefusesInOrder) {
    struct Case {
        const char* what;
        std::string words;
        Chip chip;
        VX_UINT8 driver;
        ResultCode code;
        const char* message;
        bool showsUsage;
    };
    const std::string id = Id(*port);
    const std::string missing = folder.Path("missing");
    const Case CASES[] = {
        {"no word", "", ALDER, 0, RC_INVALID_PARAMETER, "Failed, Invalid parameter", true},
        {"help", " help", ALDER, 0, RC_HELP_REQUESTED, "Failed, Unknown", true},
        {"no such port", " FC_21:00:0a:0b:0c:0d:00:77 " + missing + " other", ALDER, 0, RC_INVALID_PARAMETER,
         "Failed, Invalid parameter", true},
        {"one word", " " + id, ALDER, 0, RC_INVALID_PARAMETER, "Failed, Invalid parameter", true},
        {"two words", " " + id + " " + missing, ALDER, 0, RC_INVALID_PARAMETER, "Failed, Invalid parameter", true},
        {"no file", " " + id + " " + missing + " other", ALDER, 0, RC_FILE_ERROR, "Failed, File not found", false},
        {"empty path", " " + id + "  other", ALDER, 0, RC_FILE_ERROR, "Failed, File not found", false},
        {"another vendor", " " + id + " " + file + " other", ALDER, 0, RC_SFP_VENDOR_UNSUPPORTED,
         "Failed, SFP FW update not supported for this SFP vendor", false},
        {"a longer vendor", " " + id + " " + file + " WTDX", ALDER, 0, RC_SFP_VENDOR_UNSUPPORTED,
         "Failed, SFP FW update not supported for this SFP vendor", false},
        {"another chip", " " + id + " " + file + " WTD", ALDER, 0, RC_FEATURE_NOT_SUPPORTED,
         "Failed, Feature not supported for adapter", false},
        {"another driver", " " + id + " " + file + " WTD", BIRCH, 0, RC_UNSUPPORTED_FW,
         "Failed, Feature not supported by driver", false},
        {"other flags of the driver", " " + id + " " + file + " WTD", BIRCH, 0xFD, RC_UNSUPPORTED_FW,
         "Failed, Feature not supported by driver", false},
    };
    for (const Case& row : CASES) {
        for (const Format& format : FORMATS) {
            SCOPED_TRACE(row.what);
            SetChip(*port, row.chip);
            port->DriverFeatureFlags = row.driver;
            const CommandRun run = Run("-t port -s dmi " + format.Leaf("update") + row.words);
            EXPECT_EQ(run.code, row.code);
            EXPECT_EQ(run.output,
                      UpdateDocument(format, row.message) + (row.showsUsage ? Usage(format, "update") : ""));
            EXPECT_EQ(PortCalls(), Calls{});
        }
    }
}

TEST_F(DmiTest, UpdateTracesAMissingFile) {
    const TraceLog log("4");
    RunDmi(XML, "update", "no/sfp.bin WTD");
    EXPECT_EQ(TraceLog::Steps(),
              std::vector<std::string>{
                  "DEBUG: PhysicalPortDMICmdsProcessor::CmdUpdateCommon: SFP Image file [no/sfp.bin] does not exist"});
}

TEST_F(DmiTest, UpdateTracesAFailingStatus) {
    const TraceLog log("4");
    Fake().Return("VEXAPI_SfpModuleFirmwareUpdate", 144);
    RunDmi(XML, "update", file + " WTD");
    EXPECT_EQ(
        TraceLog::Steps(),
        std::vector<std::string>{"DEBUG: PhysicalPortDMICmdsProcessor::CmdUpdateCommon: SFP FW update failed err=144"});
}

TEST_F(DmiTest, UpdateOnBirchOnly) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        EXPECT_EQ(RunDmi(TEXT, "update", file + " WTD").code,
                  chip.chip == BIRCH ? RC_SUCCESS : RC_FEATURE_NOT_SUPPORTED)
            << chip.name;
    }
}

TEST_F(DmiTest, UpdateTakesTheVendorInAnyCase) {
    for (const char* vendor : {"WTD", "wtd", "Wtd", "wTd"}) {
        EXPECT_EQ(RunDmi(TEXT, "update", file + " " + vendor).code, RC_SUCCESS) << vendor;
    }
    // A trailing blank is part of the word.
    const CommandRun run = RunCommand({"-t", "port", "-s", "dmi", "update", Id(*port).c_str(), file.c_str(), "WTD "});
    EXPECT_EQ(run.code, RC_SFP_VENDOR_UNSUPPORTED);
}

TEST_F(DmiTest, UpdateFailsWithoutAHost) {
    LoseHost();
    for (const Format& format : FORMATS) {
        const CommandRun run = RunDmi(format, "update", file + " WTD");
        EXPECT_EQ(run.code, RC_HOST_NOT_FOUND);
        EXPECT_EQ(run.output, UpdateDocument(format, "Failed, Host not found"));
    }
}

TEST_F(DmiTest, UpdateTakesAVirtualPort) {
    port->PortInterfaceType = 3;
    EXPECT_EQ(RunDmi(TEXT, "update", file + " WTD").code, RC_SUCCESS);
}

TEST_F(DmiTest, UpdateCallsNothingWithoutTheRedirection) {
    NoFiles files;
    LoseFiles(files);
    const CommandRun run = RunDmi(TEXT, "update", file + " WTD");
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, UpdateDocument(TEXT, "Failed, File not found"));
    EXPECT_EQ(PortCalls(), Calls{});
}

} // namespace
