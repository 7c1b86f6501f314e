/// @file
/// The guide of docs/ARCHITECTURE.md, followed: the family beside this file is made as "How to add a family" says.
#include "CommandTree.h"
#include "PhysicalPortTemperatureCmdsProcessor.h"
#include "TraceLog.h"
#include "families/FamilyTest.h"

using namespace family_test;

namespace {

/// Its row in the tree.
constexpr FamilyRow PORT[] = {DescribedRows::Row<PhysicalPortTemperatureCmdsProcessor>(
    "temperature", "-s", "use this command to get the board's temperature")};
constexpr FamilyRow ROOT = DescribedRows::Row<PhysicalPortCmdsProcessor>("port", "-t", "ports", PORT);

class GuideTest : public FamilyTest {
protected:
    GuideTest() {
        Fake().onGetAdapterAsicBoardTemperature = [](VX_PORT_HANDLE*, _VEXAPI_BoardThermalTemp* read) {
            Chatter();
            read->Temperature = 57;
            return 0u;
        };
    }

    /// Runs a command of the family, as the command line does.
    std::string RunWords(TavuStringArray words) {
        words.insert(words.begin(), {"-s", "temperature"});
        const VX_UINT32 flags = g_uFlags.exchange(FLAG_COMMAND_LINE);
        Capture capture;
        CmdProcessor* const node = root.GetCmdProcessor(&root, words);
        EXPECT_NE(node, nullptr);
        code = root.InvokeCmdProcessor(&root, node, words);
        g_uFlags = flags;
        return capture.Stop();
    }

    MultipleCmdsProcessor root{nullptr, ROOT};
    VX_UINT32 code = RC_SUCCESS;
};

TEST_F(GuideTest, WritesTheDocumentInBothFormats) {
    for (const Format& format : FORMATS) {
        EXPECT_EQ(RunWords({format.Leaf("get").c_str(), Id(*port).c_str()}),
                  format.Report(
                      "TemperatureInfo", {{"Message", "Success"}}, "Temperature",
                      format.Structure("TemperatureList", format.FieldOf({"Board Temperature", "57", Field::NUMBER}))));
        EXPECT_EQ(code, RC_SUCCESS);
    }
}

TEST_F(GuideTest, WritesAFailureAndTheUsageOfTheTwin) {
    EXPECT_EQ(RunWords({"getcli", "FC_nobody"}),
              TEXT.Report("TemperatureInfo", {{"Message", "Failed, Invalid parameter"}}, "Temperature", "") +
                  "Usage: get\r\n");
    EXPECT_EQ(code, RC_INVALID_PARAMETER);
    Fake().Return("VEXAPI_GetAdapterAsicBoardTemperature", 1);
    EXPECT_EQ(RunWords({"get", Id(*port).c_str()}),
              XML.Report("TemperatureInfo", {{"Message", "Failed, Temperature read failed"}}, "Temperature", ""));
    EXPECT_EQ(code, RC_CFG_READ_FAILED);
}

TEST_F(GuideTest, ListsTheCommandsInItsHelp) {
    const std::string help = RunWords({"help"});
    EXPECT_TRUE(help.starts_with("\r\nFollowing is the list of available commands in the Temperature command mode."));
    EXPECT_TRUE(help.ends_with("get         : get the temperature of the board\r\n"
                               "help        : list of available commands\r\n"
                               "getcli      : get the temperature of the board\r\n"))
        << help;
}

TEST_F(GuideTest, TracesTheCommandByItsNames) {
    root.GetSubCmdProcessors();
    const TraceLog log("1");
    RunWords({"get", Id(*port).c_str()});
    const std::vector<std::string> lines = TraceLog::Lines();
    const auto has = [&](const std::string& text) {
        return std::find(lines.begin(), lines.end(), "INFORMATION: PhysicalPortTemperatureCmdsProcessor::" + text) !=
               lines.end();
    };
    for (const char* const text : {"CmdGet: Entered", "CmdGetCommon: Entered", "DisplayTemperature: Entered",
                                   "DisplayTemperature: Board Temperature=57", "CmdGetCommon: Exiting"}) {
        EXPECT_TRUE(has(text)) << text << " in\n" << testing::PrintToString(lines);
    }
}

} // namespace
