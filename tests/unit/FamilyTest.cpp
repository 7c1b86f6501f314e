#include "Family.h"
#include "Capture.h"
#include "CommandNodes.h"
#include "TraceLog.h"

#include <gtest/gtest.h>

namespace {

using Strings = std::vector<std::string>;

const auto XML = Serializer::FORMAT_XML;

struct State {
    std::string word;
};

/// Recorded steps of the test's family, and its results.
Strings s_steps;
ResultCode s_fetchResult = RC_SUCCESS;

/// A typical family: "get", "help", "getcli" and a sub-family.
class SampleFamily : public Family<SampleFamily> {
public:
    static const FamilyDescription FAMILY;

    using Family::DisplayBlock;
    using Family::DisplayError;
    using Family::DisplaySetError;
    using Family::ResultText;

    static ResultCode Fetch(const TavuStringArray& args, State& state) {
        s_steps.push_back(std::string("fetch ") + ArgText(args, 0));
        state.word = "fetched";
        return s_fetchResult;
    }
    static void Display(MultipleCmdsProcessor*, const State& state, eOutputFormat format) {
        s_steps.push_back("display " + state.word + " as " + std::to_string(format));
    }
    static void ShowError(MultipleCmdsProcessor*, ResultCode code, eOutputFormat format) {
        s_steps.push_back("error " + std::to_string(code) + " as " + std::to_string(format));
    }

    static const Command COMMANDS[];

private:
    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Fetch, Display, ShowError>;
};

class InnerFamily : public Family<InnerFamily> {
public:
    static const FamilyDescription FAMILY;
};

constinit const FamilyDescription InnerFamily::FAMILY = {.className = "Inner", .helpWord = "Inner", .leaves = {}};

constexpr ReportNames NAMES = {"SampleInfo", "Sample Info", "SampleInfoList"};
constexpr CodeText RESULT_TEXTS[] = {{6, "Failed, Invalid parameter"}, {42, "Failed, No memory"}};

constexpr Command SampleFamily::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get it",
     .run = CmdGetCommon,
     .usage = "Usage: [identifier] 100%s\r\n",
     .arguments = ONLY_PORT,
     .document = ReportDocument(NAMES)},
};

constinit const FamilyDescription SampleFamily::FAMILY = {
    .className = "Sample",
    .helpWord = "Sample word",
    .leaves = LEAVES_OF<SampleFamily, "list of commands">,
    .resultTexts = RESULT_TEXTS,
    .report = NAMES,
};

constexpr FamilyRow INNER_ROWS[] = {{"inner", "-s", "an inner family", &InnerFamily::FAMILY, nullptr, {}}};
constexpr FamilyRow ROW = {"sample", "-t", "a sample", &SampleFamily::FAMILY, SampleFamily::COMMANDS, INNER_ROWS};

class FamilyTest : public testing::Test {
protected:
    void SetUp() override {
        s_steps.clear();
        s_fetchResult = RC_SUCCESS;
        family.GetSubCmdProcessors(); // created before a test traces, as in a traced program
    }

    CmdProcessor& Child(std::size_t at) { return *family.GetSubCmdProcessors().at(at); }

    /// Output of a child; its result is stored in `code`.
    std::string Run(std::size_t at, TavuStringArray args) {
        Capture capture;
        code = family.InvokeCmdProcessor(&family, &Child(at), args);
        return capture.Stop();
    }

    MultipleCmdsProcessor family{nullptr, ROW};
    VX_UINT32 code = 0;
};

TEST_F(FamilyTest, HasItsLeavesAndThenItsSubFamilies) {
    const std::vector<CmdProcessor*>& children = family.GetSubCmdProcessors();
    ASSERT_EQ(children.size(), 4u);
    const char* const names[] = {"get", "help", "getcli", "inner"};
    const VX_UINT32 ids[] = {0, 1, 2, 0};
    for (std::size_t at = 0; at < 4; ++at) {
        EXPECT_STREQ(children[at]->GetCmdName(), names[at]);
        EXPECT_EQ(children[at]->GetCmdId(), ids[at]);
        EXPECT_EQ(children[at]->GetCmdFlags(), 0u);
        EXPECT_STREQ(children[at]->GetCmdOpt(), at < 3 ? "" : "-s");
        EXPECT_EQ(children[at]->IsMultiple(), at < 3 ? 1u : 0u);
        EXPECT_EQ(children[at]->GetParent(), &family);
        EXPECT_FALSE(children[at]->IsHidden());
    }
    EXPECT_STREQ(children[3]->GetCmdDesc(), "an inner family");
    EXPECT_EQ(&family.GetSubCmdProcessors(), &children);
    EXPECT_EQ(family.GetSubCmdProcessors().size(), 4u);
    EXPECT_EQ(family.GetCmdId(), 0u);
    EXPECT_FALSE(family.IsHidden());
}

TEST_F(FamilyTest, FetchesAndThenDisplays) {
    EXPECT_EQ(Run(0, {"port"}), "");
    EXPECT_EQ(code, RC_SUCCESS);
    EXPECT_EQ(Run(2, {"port"}), "");
    EXPECT_EQ(s_steps, (Strings{"fetch port", "display fetched as 1", "fetch port", "display fetched as 2"}));
}

TEST_F(FamilyTest, ShowsTheErrorOfAFailedFetch) {
    s_fetchResult = RC_CFG_READ_FAILED;
    Run(0, {});
    EXPECT_EQ(code, RC_CFG_READ_FAILED);
    EXPECT_EQ(s_steps, (Strings{"fetch ", "error 13 as 1"}));
}

TEST_F(FamilyTest, PrintsUsageBehindACliLeafOnly) {
    for (const ResultCode result : {RC_PARAM_ERROR, RC_HELP_REQUESTED, RC_INVALID_PARAMETER}) {
        s_fetchResult = result;
        EXPECT_EQ(Run(0, {"port"}), "");
        EXPECT_EQ(Run(2, {"port"}), "Usage: [identifier] 100%s\r\n");
        EXPECT_EQ(code, result);
    }
    s_steps.clear();
    EXPECT_EQ(Run(0, {"?"}), "");
    EXPECT_EQ(Run(2, {"?"}), "Usage: [identifier] 100%s\r\n");
    EXPECT_TRUE(s_steps.empty());
}

const char HELP[] = "\r\nFollowing is the list of available commands in the Sample word command mode.\r\n"
                    "For detailed information of each command, please type 'command ?'\r\n"
                    "All commands are case insensitive.\r\n\r\n"
                    "get         : get it\r\n"
                    "help        : list of commands\r\n"
                    "getcli      : get it\r\n"
                    "inner       : an inner family\r\n";

TEST_F(FamilyTest, ListsItsChildrenInItsHelp) {
    EXPECT_EQ(Run(1, {}), HELP);
    EXPECT_EQ(code, RC_SUCCESS);
    EXPECT_EQ(Run(1, {"?"}), HELP); // the usage of "help" is the help
}

TEST_F(FamilyTest, ListsHiddenChildrenInItsHelpToo) {
    ScriptedLeaf hidden("hidden", {.hidden = true}), refused("refused", {.applicable = 1});
    ScriptedLeaf engineering("engineering", {.flags = 1});
    ScriptedFamily scripted("family", "-t", {&hidden, &refused, &engineering});
    TavuStringArray args;
    Capture capture;
    ShowFamilyHelp(SampleFamily::FAMILY, &scripted, args);
    EXPECT_TRUE(capture.Stop().ends_with("insensitive.\r\n\r\nhidden      : a leaf\r\n"));
}

TEST_F(FamilyTest, KnowsItsUsagesById) {
    const auto usage = [this](VX_UINT32 id) {
        TavuStringArray args;
        return ShowFamilyUsage(SampleFamily::FAMILY, &family, args, id);
    };
    Capture capture;
    EXPECT_EQ(usage(2), RC_SUCCESS);
    EXPECT_EQ(capture.Stop(), "Usage: [identifier] 100%s\r\n");
    Capture unknown;
    EXPECT_EQ(usage(3), RC_NO_USAGE);
    EXPECT_EQ(usage(0), RC_NO_USAGE); // of the plain leaf
    EXPECT_EQ(unknown.Stop(), "");
}

TEST_F(FamilyTest, TracesACommandAndItsExitWhenItSucceeds) {
    const TraceLog log("1");
    Run(0, {});
    EXPECT_EQ(TraceLog::Lines(),
              (Strings{"INFORMATION: Sample::CmdGet: Entered", "INFORMATION: Sample::CmdGetCommon: Entered",
                       "INFORMATION: Sample::CmdGetCommon: Exiting"}));
}

TEST_F(FamilyTest, TracesNoExitOfAFailedCommand) {
    const TraceLog log("1");
    s_fetchResult = RC_CFG_READ_FAILED;
    Run(2, {});
    EXPECT_EQ(TraceLog::Lines(),
              (Strings{"INFORMATION: Sample::CmdGetCli: Entered", "INFORMATION: Sample::CmdGetCommon: Entered"}));
}

TEST_F(FamilyTest, TracesItsHelpUsageAndErrors) {
    const TraceLog log("1");
    TavuStringArray args;
    Capture capture;
    ShowFamilyUsage(SampleFamily::FAMILY, &family, args, 1); // that of "help"
    SampleFamily::DisplayError(&family, RC_INVALID_PARAMETER, XML);
    SampleFamily::DisplayBlock(&family, XML, "DisplayIt",
                               BlockShape{SampleFamily::FAMILY.report, 64, ReportBlock::SizeRule::FULL},
                               [](ReportBlock& block) { block.Line("N", "1"); });
    capture.Stop();
    const auto line = [](const std::string& text) { return "INFORMATION: Sample::" + text; };
    EXPECT_EQ(
        TraceLog::Lines(),
        (Strings{line("Usage: Entered"), line("CmdHelp: Entered"), line("CmdHelp: Exiting"), line("Usage: Exiting"),
                 line("DisplayError: Entered"), line("DisplayError: Message=Failed, Invalid parameter"),
                 line("DisplayError: Exiting"), line("DisplayIt: Entered"), line("DisplayIt: N=1"),
                 line("DisplayIt: Message=Success"), line("DisplayIt: Exiting")}));
}

TEST_F(FamilyTest, TracesItsLife) {
    const TraceLog log("1");
    { const MultipleCmdsProcessor other(nullptr, ROW); }
    // The sub-family is created in the constructor and deleted in the destructor.
    const std::vector<std::string> lines = TraceLog::Lines();
    const std::string made = "(MultipleCmdsProcessor*, const char*, const char*, const char*, VX_UINT32, VX_UINT32)";
    const auto line = [](const std::string& text) { return "INFORMATION: " + text; };
    EXPECT_EQ(lines, (Strings{line("STARTING Sample::Sample" + made), line("STARTING Inner::Inner" + made),
                              line("RETURNING Inner::Inner" + made), line("RETURNING Sample::Sample" + made),
                              line("STARTING virtual Sample::~Sample()"), line("STARTING virtual Inner::~Inner()"),
                              line("RETURNING virtual Inner::~Inner()"), line("RETURNING virtual Sample::~Sample()")}));
}

std::string ErrorDocument(const std::string& reboot, const std::string& message) {
    return "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n<structure typeName=\"SampleInfo\">\n" + reboot +
           "<field name=\"Message\">\n<string>" + message +
           "</string></field>\n<field name=\"Sample Info\">\n<list type=\"structure\">\n"
           "</list>\n</field>\n</structure>\n</output>\n";
}

TEST_F(FamilyTest, WritesItsErrorsInItsOwnWords) {
    const std::pair<ResultCode, const char*> rows[] = {{RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
                                                       {RC_HELP_REQUESTED, "Failed, Unknown"},
                                                       {RC_LIBRARY_FAILED, "Failed, Unknown"}};
    for (const auto& [result, message] : rows) {
        EXPECT_STREQ(SampleFamily::ResultText(result), message);
        Capture plain;
        SampleFamily::DisplayError(&family, result, XML);
        EXPECT_EQ(plain.Stop(), ErrorDocument("", message));
        Capture set;
        SampleFamily::DisplaySetError(&family, result, XML);
        EXPECT_EQ(set.Stop(), ErrorDocument("<field name=\"Reboot Required\">\n<bool>false</bool></field>\n", message));
    }
}

TEST_F(FamilyTest, WritesABlockOrThatThereIsNoMemory) {
    BlockShape shape{SampleFamily::FAMILY.report, 64, ReportBlock::SizeRule::FULL};
    const auto fill = [](ReportBlock& block) { block.Line("N", "1"); };
    Capture block;
    SampleFamily::DisplayBlock(&family, Serializer::FORMAT_TEXT, "Show", shape, fill);
    const std::string asterisks(52, '*');
    EXPECT_EQ(block.Stop(), asterisks + "\nSampleInfo:\nMessage: Success\nSample Info: SampleInfoList:\nData: N: 1\n" +
                                asterisks + "\n");
    shape.size = ~std::size_t{0} >> 1;
    Capture refused;
    SampleFamily::DisplayBlock(&family, XML, "Show", shape, [](ReportBlock&) { FAIL() << "there is no block"; });
    EXPECT_EQ(refused.Stop(), ErrorDocument("", "Failed, No memory"));
}

} // namespace
