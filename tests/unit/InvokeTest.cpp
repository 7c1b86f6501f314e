#include "Capture.h"
#include "CommandNodes.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

using Steps = std::vector<std::string>;

struct Run {
    VX_UINT32 result;
    Steps steps;
};

/// Runs a scripted leaf in the current mode.
Run Invoke(const NodeScript& script, TavuStringArray args = {}) {
    ScriptedLeaf leaf("leaf", script);
    ScriptedFamily family("main", "");
    const VX_UINT32 result = family.InvokeCmdProcessor(nullptr, &leaf, args);
    return {result, leaf.calls};
}

void ExpectRun(const Run& run, VX_UINT32 result, const Steps& steps) {
    EXPECT_EQ(run.result, result);
    EXPECT_EQ(run.steps, steps);
}

const Steps WHOLE_RUN = {"IsApplicable", "Initialize", "DoCmd", "Uninitialize"};

TEST(InvokeCmdProcessorTest, RefusesNoNode) {
    ScriptedFamily family("main", "");
    TavuStringArray args;
    EXPECT_EQ(family.InvokeCmdProcessor(nullptr, nullptr, args), RC_CMD_NOT_FOUND);
}

TEST(InvokeCmdProcessorTest, RefusesANodeThatDoesNotApply) {
    ExpectRun(Invoke({.applicable = 1}), RC_CMD_NOT_FOUND, {"IsApplicable"});
}

TEST(InvokeCmdProcessorTest, RunsAllSteps) {
    ExpectRun(Invoke({}), RC_SUCCESS, WHOLE_RUN);
}

TEST(InvokeCmdProcessorTest, EndsANodeThatCouldNotStart) {
    ExpectRun(Invoke({.initialize = RC_EXIT, .uninitialize = RC_INVALID_CMD}), RC_EXIT,
              {"IsApplicable", "Initialize", "Uninitialize"});
}

TEST(InvokeCmdProcessorTest, GivesTheFirstResultThatIsNotZero) {
    ExpectRun(Invoke({.uninitialize = RC_INVALID_CMD, .command = RC_ADAPTER_NOT_FOUND}), RC_ADAPTER_NOT_FOUND,
              WHOLE_RUN);
    ExpectRun(Invoke({.uninitialize = RC_INVALID_CMD}), RC_INVALID_CMD, WHOLE_RUN);
}

TEST(InvokeCmdProcessorTest, PrintsUsageForThreeResultsOnly) {
    for (VX_UINT32 result = 1; result < 60; ++result) {
        const bool hasUsage = result == RC_PARAM_ERROR || result == RC_HELP_REQUESTED || result == RC_INVALID_PARAMETER;
        ExpectRun(Invoke({.uninitialize = RC_INVALID_CMD, .command = result, .id = 3}), result,
                  hasUsage ? Steps{"IsApplicable", "Initialize", "DoCmd", "PrintUsage(3)", "Uninitialize"} : WHOLE_RUN);
    }
}

TEST(InvokeCmdProcessorTest, AnswersAQuestionMarkWithoutTheCommand) {
    const Steps steps = {"IsApplicable", "Initialize", "PrintUsage(3)", "Uninitialize"};
    ExpectRun(Invoke({.id = 3}, {"?"}), RC_SUCCESS, steps);
    ExpectRun(Invoke({.uninitialize = RC_INVALID_CMD, .command = RC_HELP_REQUESTED, .id = 3}, {"?", "x"}),
              RC_INVALID_CMD, steps);
}

TEST(InvokeCmdProcessorTest, GivesEveryOtherWordToTheCommand) {
    for (const char* word : {"help", "/?", "-h", "??", "", "? "}) {
        ExpectRun(Invoke({}, {word}), RC_SUCCESS, WHOLE_RUN);
    }
    ExpectRun(Invoke({}, {"x", "?"}), RC_SUCCESS, WHOLE_RUN);
}

TEST(InvokeCmdProcessorTest, RunsEngineeringNodesInEngineeringModeOnly) {
    const Steps refused = {"IsApplicable", "Initialize", "Uninitialize"};
    struct Row {
        VX_UINT32 nodeFlags;
        VX_UINT32 mode;
        bool runs;
    };
    const Row rows[] = {
        {0, 0, true}, {0, 8, true},  {1, 0, false}, {1, 4, false}, {1, 8, true},
        {3, 8, true}, {3, 7, false}, {2, 0, false}, {2, 8, false}, {0x80000000, 8, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.nodeFlags << " in mode " << row.mode);
        const RunMode mode(row.mode);
        const NodeScript script{
            .uninitialize = RC_INVALID_CMD, .command = RC_ADAPTER_NOT_FOUND, .flags = row.nodeFlags};
        ExpectRun(Invoke(script, {"x"}), row.runs ? RC_ADAPTER_NOT_FOUND : RC_INVALID_CMD,
                  row.runs ? WHOLE_RUN : refused);
        if (!row.runs) {
            ExpectRun(Invoke(script, {"?"}), RC_INVALID_CMD, refused);
        }
    }
}

/// Arguments of a call of a node's function.
struct FunctionCall {
    MultipleCmdsProcessor* self;
    TavuStringArray args;
};
std::vector<FunctionCall> s_functionCalls;

template <VX_UINT32 result> VX_UINT32 Recorded(MultipleCmdsProcessor* self, TavuStringArray& args) {
    s_functionCalls.push_back({self, args});
    return result;
}

template <VX_UINT32 result> VX_UINT32 RecordedUsage(MultipleCmdsProcessor* self, TavuStringArray& args, VX_UINT32 id) {
    s_functionCalls.push_back({self, args});
    return result + id;
}

TEST(CmdProcessorTest, CallsItsFunctionsWithItsParent) {
    s_functionCalls.clear();
    ScriptedFamily family("family", "-t");
    CmdProcessor node(&family, "name", "-o", "description", true, 30, 1,
                      {.initialize = Recorded<11>,
                       .uninitialize = Recorded<12>,
                       .applicable = Recorded<13>,
                       .command = Recorded<14>,
                       .usage = RecordedUsage<15>,
                       .help = Recorded<16>,
                       .hidden = Recorded<17>});
    TavuStringArray args{"a", "b"};
    EXPECT_EQ(node.GetParent(), &family);
    EXPECT_STREQ(node.GetCmdName(), "name");
    EXPECT_STREQ(node.GetCmdOpt(), "-o");
    EXPECT_STREQ(node.GetCmdDesc(), "description");
    EXPECT_EQ(node.GetCmdId(), 30u);
    EXPECT_EQ(node.GetCmdFlags(), 1u);
    EXPECT_EQ(node.IsMultiple(), 1u);
    EXPECT_EQ(node.Initialize(args), 11u);
    EXPECT_EQ(node.Uninitialize(args), 12u);
    EXPECT_EQ(node.IsApplicable(args), 13u);
    EXPECT_EQ(node.DoCmd(args), 14u);
    EXPECT_EQ(node.PrintUsage(args, 5), 20u); // 15 and the id
    EXPECT_EQ(node.CmdHelp(args), 16u);
    ASSERT_EQ(s_functionCalls.size(), 6u);
    for (const FunctionCall& call : s_functionCalls) {
        EXPECT_EQ(call.self, &family);
        EXPECT_EQ(call.args, args);
    }
}

TEST(CmdProcessorTest, GivesZeroWithoutFunctions) {
    CmdProcessor node(nullptr, "name", "", "", false, 0, 0);
    TavuStringArray args;
    EXPECT_EQ(node.Initialize(args), RC_SUCCESS);
    EXPECT_EQ(node.Uninitialize(args), RC_SUCCESS);
    EXPECT_EQ(node.IsApplicable(args), RC_SUCCESS);
    EXPECT_EQ(node.PrintUsage(args, 3), RC_SUCCESS);
    EXPECT_FALSE(node.IsHidden());
}

TEST(CmdProcessorTest, IsHiddenByItsFunctionBeforeItsMember) {
    for (const bool member : {false, true}) {
        EXPECT_EQ(CmdProcessor(nullptr, "n", "", "", member, 0, 0).IsHidden(), member);
        EXPECT_TRUE(CmdProcessor(nullptr, "n", "", "", member, 0, 0, {.hidden = Recorded<0>}).IsHidden());
        EXPECT_FALSE(CmdProcessor(nullptr, "n", "", "", member, 0, 0, {.hidden = Recorded<1>}).IsHidden());
    }
    s_functionCalls.clear();
    CmdProcessor(nullptr, "n", "", "", false, 0, 0, {.hidden = Recorded<0>}).IsHidden();
    EXPECT_TRUE(s_functionCalls.at(0).args.empty());
}

TEST(CmdProcessorDeathTest, AbortsWithoutACommandOrAHelpFunction) {
    CmdProcessor node(nullptr, "name", "", "", false, 0, 0);
    TavuStringArray args;
    EXPECT_EXIT(node.DoCmd(args), testing::KilledBySignal(SIGABRT), "^Assertion failed: [^\n]+\n$");
    EXPECT_EXIT(node.CmdHelp(args), testing::KilledBySignal(SIGABRT), "^Assertion failed: [^\n]+\n$");
}

TEST(MultipleCmdsProcessorDeathTest, AbortsWhenAFamilyIsRun) {
    ScriptedFamily family("family", "-t");
    TavuStringArray args;
    EXPECT_EQ(family.IsMultiple(), 0u);
    EXPECT_EXIT(family.DoCmd(args), testing::KilledBySignal(SIGABRT), "^Assertion failed: [^\n]+\n$");
    EXPECT_EXIT(family.PrintUsage(args, 0), testing::KilledBySignal(SIGABRT), "^Assertion failed: [^\n]+\n$");
    EXPECT_EXIT(family.InvokeCmdProcessor(nullptr, &family, args), testing::KilledBySignal(SIGABRT), "");
}

std::string HelpOf(ScriptedFamily& family) {
    TavuStringArray args;
    Capture capture;
    EXPECT_EQ(family.CmdHelp(args), RC_SUCCESS);
    return capture.Stop();
}

std::string ListOf(ScriptedFamily& family, bool withHidden) {
    TavuStringArray args;
    Capture capture;
    family.ListChildren(args, withHidden);
    return capture.Stop();
}

TEST(ListChildrenTest, PadsNamesToTwelveCharacters) {
    ScriptedLeaf brief("get"), exact("123456789012"), longer("1234567890123");
    ScriptedFamily inner("inner", "-s");
    ScriptedFamily family("family", "-t", {&brief, &exact, &longer, &inner});
    EXPECT_EQ(HelpOf(family), "get         : a leaf\r\n"
                              "123456789012: a leaf\r\n"
                              "1234567890123: a leaf\r\n"
                              "inner       : a family\r\n");
}

TEST(ListChildrenTest, LeavesOutHiddenChildrenWhenAskedTo) {
    ScriptedLeaf shown("shown"), hidden("hidden", {.hidden = true});
    ScriptedFamily family("family", "-t", {&hidden, &shown});
    EXPECT_EQ(HelpOf(family), "shown       : a leaf\r\n");
    EXPECT_EQ(ListOf(family, false), "shown       : a leaf\r\n");
    EXPECT_EQ(ListOf(family, true), "hidden      : a leaf\r\nshown       : a leaf\r\n");
}

TEST(ListChildrenTest, LeavesOutChildrenThatDoNotApply) {
    ScriptedLeaf first("first", {.applicable = 1}), second("second");
    ScriptedFamily third("third", "-s", {}, {.applicable = 2});
    ScriptedFamily family("family", "-t", {&first, &second, &third});
    EXPECT_EQ(ListOf(family, true), "second      : a leaf\r\n");
}

TEST(ListChildrenTest, ShowsEngineeringChildrenInEngineeringModeOnly) {
    ScriptedLeaf plain("plain"), engineering("engineering", {.flags = 1}), other("other", {.flags = 2});
    ScriptedFamily family("family", "-t", {&plain, &engineering, &other});
    EXPECT_EQ(ListOf(family, true), "plain       : a leaf\r\n");
    const RunMode mode(FLAG_ENGINEERING);
    EXPECT_EQ(ListOf(family, true), "plain       : a leaf\r\nengineering : a leaf\r\n");
    EXPECT_EQ(HelpOf(family), "plain       : a leaf\r\nengineering : a leaf\r\n");
}

} // namespace
