#include "CommandNodes.h"

#include <gtest/gtest.h>

namespace {

/// A tree: "quit", "-x opt" (a leaf with an option), families "-t one" ("list", "get", "-s info" ("get",
/// "show")), "-t two" ("list", "set") and "bare" without an option ("run").
class DispatchTest : public testing::Test {
protected:
    ScriptedLeaf quit{"quit"}, withOption{"opt", {}, "-x"};
    ScriptedLeaf infoGet{"get"}, infoShow{"show"};
    ScriptedFamily info{"info", "-s", {&infoGet, &infoShow}};
    ScriptedLeaf oneList{"list"}, oneGet{"get"};
    ScriptedFamily one{"one", "-t", {&oneList, &oneGet, &info}};
    ScriptedLeaf twoList{"list"}, twoSet{"set"};
    ScriptedFamily two{"two", "-t", {&twoList, &twoSet}};
    ScriptedLeaf bareRun{"run"};
    ScriptedFamily bare{"bare", "", {&bareRun}};
    ScriptedFamily root{"main", "", {&quit, nullptr, &withOption, &one, &two, &bare}};

    /// Finds the node of the words in a mode; `left` receives the remaining words.
    CmdProcessor* Find(VX_UINT32 flags, const TavuStringArray& words) {
        const RunMode mode(flags);
        left = words;
        return root.GetCmdProcessor(nullptr, left);
    }
    CmdProcessor* OnCommandLine(const TavuStringArray& words) { return Find(FLAG_COMMAND_LINE, words); }
    CmdProcessor* AtPrompt(const TavuStringArray& words) { return Find(0, words); }

    TavuStringArray left;
};

using Words = TavuStringArray;

TEST_F(DispatchTest, SelectsALeafByTheFirstWord) {
    EXPECT_EQ(OnCommandLine({"quit"}), &quit);
    EXPECT_EQ(left, Words{});
    EXPECT_EQ(OnCommandLine({"QUIT", "x", "quit"}), &quit);
    EXPECT_EQ(left, (Words{"x", "quit"}));
    EXPECT_EQ(OnCommandLine({"x", "quit"}), nullptr);
    EXPECT_EQ(left, (Words{"x", "quit"}));
}

TEST_F(DispatchTest, SelectsALeafWithAnOptionByThePair) {
    EXPECT_EQ(OnCommandLine({"a", "-X", "OPT", "b"}), &withOption);
    EXPECT_EQ(left, (Words{"a", "b"}));
    EXPECT_EQ(OnCommandLine({"opt"}), nullptr);
    EXPECT_EQ(AtPrompt({"opt", "b"}), nullptr);
    EXPECT_EQ(AtPrompt({"opt"}), &withOption); // a single word at the prompt is a name
    EXPECT_EQ(left, Words{});
}

TEST_F(DispatchTest, SelectsFamiliesByTheirPairAnywhere) {
    EXPECT_EQ(OnCommandLine({"-t", "one", "list", "x"}), &oneList);
    EXPECT_EQ(left, (Words{"x"}));
    EXPECT_EQ(OnCommandLine({"-T", "ONE", "-S", "INFO", "SHOW"}), &infoShow);
    EXPECT_EQ(left, Words{});
    EXPECT_EQ(OnCommandLine({"show", "x", "-t", "one", "-s", "info"}), &infoShow);
    EXPECT_EQ(left, (Words{"x"}));
    EXPECT_EQ(OnCommandLine({"-s", "info", "show", "-t", "one"}), &infoShow);
    EXPECT_EQ(OnCommandLine({"x", "show", "-t", "one", "-s", "info"}), nullptr);
}

TEST_F(DispatchTest, TriesLeavesAheadOfSubFamilies) {
    EXPECT_EQ(OnCommandLine({"get", "-t", "one", "-s", "info"}), &oneGet);
    EXPECT_EQ(left, (Words{"-s", "info"}));
    EXPECT_EQ(OnCommandLine({"-s", "info", "get", "-t", "one"}), &infoGet);
}

TEST_F(DispatchTest, FindsNothingByAFamilyName) {
    EXPECT_EQ(OnCommandLine({"one", "list"}), nullptr);
    EXPECT_EQ(OnCommandLine({"one"}), nullptr);
    EXPECT_EQ(AtPrompt({"one", "list"}), nullptr);
}

TEST_F(DispatchTest, FindsNothingInsideAFamily) {
    EXPECT_EQ(OnCommandLine({"-t", "one"}), nullptr);
    EXPECT_EQ(OnCommandLine({"-t", "one", "set"}), nullptr);
    EXPECT_EQ(OnCommandLine({"-t", "one", "-s", "nosuch", "get"}), nullptr);
    EXPECT_EQ(OnCommandLine({"-t"}), nullptr);
    EXPECT_EQ(OnCommandLine({"-t", "nosuch", "list"}), nullptr);
    EXPECT_EQ(OnCommandLine({}), nullptr);
}

TEST_F(DispatchTest, KeepsTheWordsOfAFamilyTakenAway) {
    // "one" consumes its pair and finds no leaf "-t"; then "two" consumes its own pair and finds "list".
    EXPECT_EQ(OnCommandLine({"-t", "two", "-t", "one", "list"}), &twoList);
    EXPECT_EQ(left, Words{});
    // Although only "one" has "set", the pair stays removed.
    EXPECT_EQ(OnCommandLine({"-t", "one", "set", "x"}), nullptr);
    EXPECT_EQ(left, (Words{"set", "x"}));
    // Inside "one", "info" consumes its pair too before the search continues.
    EXPECT_EQ(OnCommandLine({"-t", "one", "-s", "info", "set"}), nullptr);
    EXPECT_EQ(left, (Words{"set"}));
    EXPECT_EQ(OnCommandLine({"-t", "one", "-s", "info", "-t", "two", "set"}), &twoSet);
    EXPECT_EQ(left, Words{});
}

TEST_F(DispatchTest, SelectsAFamilyWithoutAnOptionByTheFirstWord) {
    EXPECT_EQ(OnCommandLine({"BARE", "run", "x"}), &bareRun);
    EXPECT_EQ(left, (Words{"x"}));
    EXPECT_EQ(OnCommandLine({"x", "bare", "run"}), nullptr);
    EXPECT_EQ(OnCommandLine({"bare", "nosuch"}), nullptr);
    EXPECT_EQ(left, (Words{"nosuch"}));
    EXPECT_EQ(OnCommandLine({"bare"}), nullptr); // on a command line the option is needed, and nothing is inside
    EXPECT_EQ(left, Words{});
}

TEST_F(DispatchTest, TakesOptionsAtThePromptFromTwoWordsOn) {
    EXPECT_EQ(AtPrompt({"-t", "one", "list"}), &oneList);
    EXPECT_EQ(AtPrompt({"-t", "one", "-s", "info", "get"}), &infoGet);
    EXPECT_EQ(AtPrompt({"-x", "opt"}), &withOption);
    // The mode is determined again inside "one", where a single word is left: it names the sub-family itself.
    EXPECT_EQ(AtPrompt({"-t", "one", "info"}), &info);
    EXPECT_EQ(OnCommandLine({"-t", "one", "info"}), nullptr);
}

TEST_F(DispatchTest, SelectsAFamilyItselfByOneWordAtThePrompt) {
    EXPECT_EQ(AtPrompt({"ONE"}), &one);
    EXPECT_EQ(left, Words{});
    EXPECT_EQ(AtPrompt({"bare"}), &bare);
    EXPECT_EQ(AtPrompt({"info"}), nullptr);
    EXPECT_EQ(AtPrompt({"quit"}), &quit);
    EXPECT_EQ(AtPrompt({}), nullptr);
}

TEST_F(DispatchTest, SkipsChildrenThatDoNotApply) {
    one.script.applicable = 1;
    EXPECT_EQ(OnCommandLine({"-t", "one", "list"}), nullptr);
    EXPECT_EQ(left, (Words{"-t", "one", "list"}));
    EXPECT_EQ(AtPrompt({"one"}), nullptr);
    one.script.applicable = 0;
    quit.script.applicable = 5;
    EXPECT_EQ(OnCommandLine({"quit"}), nullptr);
    oneList.script.applicable = 1;
    EXPECT_EQ(OnCommandLine({"-t", "one", "list"}), nullptr);
}

TEST_F(DispatchTest, TakesTheFirstOfTwoEqualNames) {
    ScriptedLeaf first("same"), second("same");
    ScriptedFamily family("main", "", {&first, &second});
    TavuStringArray words{"same"};
    const RunMode mode(FLAG_COMMAND_LINE);
    EXPECT_EQ(family.GetCmdProcessor(nullptr, words), &first);
    first.script.applicable = 1;
    words = {"same"};
    EXPECT_EQ(family.GetCmdProcessor(nullptr, words), &second);
}

TEST_F(DispatchTest, FindsNothingInAFamilyWithoutChildren) {
    MultipleCmdsProcessor family(nullptr, "main", "", "", false, 0, 0);
    EXPECT_TRUE(family.GetSubCmdProcessors().empty());
    TavuStringArray words{"x"};
    EXPECT_EQ(family.GetCmdProcessor(nullptr, words), nullptr);
}

} // namespace
