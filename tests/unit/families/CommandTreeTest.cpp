#include "CommandTree.h"
#include "CommandNodes.h"
#include "CommandTreeRows.h"
#include "FamilyTest.h"

#include <algorithm>
#include <set>

using namespace family_test;
using namespace command_tree;

namespace {

constexpr std::uint32_t MAX_ID = 20;

/// A leaf or a family of the tree as one line of text, for comparing trees.
std::string NodeLine(const std::string& path, const std::string& option, std::uint32_t id, const std::string& text,
                     bool hidden, std::uint32_t flags, bool isLeaf, const std::string& usage) {
    return path + " | option '" + option + "' | id " + std::to_string(id) + " | " + text +
           (hidden ? " | hidden" : " | shown") + " | flags " + std::to_string(flags) +
           (isLeaf ? " | leaf, usage of " + usage : " | family");
}

std::string Join(const std::string& path, const std::string& name) {
    return path.empty() ? name : path + " " + name;
}

/// The parent of a path; empty for a child of the root.
std::string ParentOf(const std::string& path) {
    const std::size_t blank = path.rfind(' ');
    return blank == std::string::npos ? "" : path.substr(0, blank);
}
std::string NameOf(const std::string& path) {
    const std::size_t blank = path.rfind(' ');
    return blank == std::string::npos ? path : path.substr(blank + 1);
}

const command_tree::FamilyRow* FindFamily(const std::string& path) {
    for (const command_tree::FamilyRow& row : FAMILIES) {
        if (row.path == path) {
            return &row;
        }
    }
    return nullptr;
}

std::string ExpectedUsage(const LeafRow& leaf) {
    switch (leaf.usage) {
    case UsageOf::NOBODY:
        return "nobody";
    case UsageOf::FEC:
        return "FEC";
    case UsageOf::FAMILY:
        break;
    }
    return *leaf.family == '\0' ? "root" : FindFamily(leaf.family)->helpWord;
}

/// The expected children of a family, as lines, each sub-family followed by its own.
void AppendExpected(const std::string& path, std::vector<std::string>& lines) {
    for (const LeafRow& leaf : LEAVES) {
        if (leaf.family == path) {
            lines.push_back(NodeLine(Join(path, leaf.name), "", leaf.id, leaf.description, leaf.hidden, 0, true,
                                     ExpectedUsage(leaf)));
        }
    }
    for (const command_tree::FamilyRow& family : FAMILIES) {
        if (ParentOf(family.path) == path) {
            lines.push_back(NodeLine(family.path, family.option, 0, family.description, false, 0, false, ""));
            AppendExpected(family.path, lines);
        }
    }
}

std::string UsageText(CmdProcessor& node, std::uint32_t id) {
    Capture capture;
    TavuStringArray none;
    node.PrintUsage(none, id);
    return capture.Stop();
}

/// The owner of a leaf's usage function: for one of the ids it prints the help of its family, whose heading names
/// the family.
std::string UsageOwner(CmdProcessor& leaf) {
    static constexpr char START[] = "\r\nFollowing is the list of available commands";
    bool prints = false;
    for (std::uint32_t id = 0; id < MAX_ID; ++id) {
        const std::string text = UsageText(leaf, id);
        prints = prints || !text.empty();
        if (text.starts_with(START)) {
            const std::string rest = text.substr(sizeof START - 1);
            return rest.starts_with(".") ? "root" : rest.substr(8, rest.find(" command mode") - 8);
        }
    }
    return prints ? "somebody" : "nobody";
}

void AppendLive(MultipleCmdsProcessor& family, const std::string& path, std::vector<std::string>& lines) {
    for (CmdProcessor* child : family.GetSubCmdProcessors()) {
        const std::string childPath = Join(path, child->GetCmdName());
        EXPECT_EQ(child->GetParent(), &family) << childPath;
        const bool isLeaf = child->IsMultiple() == 1;
        lines.push_back(NodeLine(childPath, child->GetCmdOpt(), child->GetCmdId(), child->GetCmdDesc(),
                                 child->IsHidden(), child->GetCmdFlags(), isLeaf, isLeaf ? UsageOwner(*child) : ""));
        if (!isLeaf) {
            AppendLive(static_cast<MultipleCmdsProcessor&>(*child), childPath, lines);
        }
    }
}

/// The tree of a session.
class CommandTreeTest : public ::testing::Test {
protected:
    CommandTreeTest() {
        FakeLibrary::Reset();
        root = MainCmdsProcessor::getMainCmdsProcessor();
        TavuStringArray none;
        EXPECT_EQ(root->Initialize(none), RC_SUCCESS);
    }
    ~CommandTreeTest() override {
        TavuStringArray none;
        EXPECT_EQ(root->Uninitialize(none), RC_SUCCESS);
        MainCmdsProcessor::destroyMainCmdsProcessor();
    }

    /// The node at a path of names; null if there is none.
    CmdProcessor* Find(const std::string& path) const {
        if (path.empty()) {
            return root;
        }
        CmdProcessor* const parent = Find(ParentOf(path));
        if (parent == nullptr || parent->IsMultiple() != 0) {
            return nullptr;
        }
        for (CmdProcessor* child : static_cast<MultipleCmdsProcessor*>(parent)->GetSubCmdProcessors()) {
            if (child->GetCmdName() == NameOf(path)) {
                return child;
            }
        }
        return nullptr;
    }

    MainCmdsProcessor* root;
};

TEST(CommandTreeRowsTest, AreWhole) {
    EXPECT_EQ(std::size(LEAVES), 156u);
    EXPECT_EQ(std::size(FAMILIES), 34u); // 4 under the root, 3 adapter, 21 port, 5 target, 1 lun
    std::set<std::string> seen;
    for (const LeafRow& leaf : LEAVES) {
        EXPECT_TRUE(seen.insert(Join(leaf.family, leaf.name)).second) << leaf.family << " " << leaf.name;
        EXPECT_TRUE(*leaf.family == '\0' || FindFamily(leaf.family) != nullptr) << leaf.family;
    }
}

TEST_F(CommandTreeTest, RootIsTheMainProcessor) {
    EXPECT_STREQ(root->GetCmdName(), "main");
    EXPECT_STREQ(root->GetCmdOpt(), "");
    EXPECT_STREQ(root->GetCmdDesc(), "the main commands processor");
    EXPECT_EQ(root->GetCmdId(), 0u);
    EXPECT_EQ(root->GetCmdFlags(), 0u);
    EXPECT_FALSE(root->IsHidden());
    EXPECT_EQ(root->GetParent(), nullptr);
    EXPECT_EQ(root->IsMultiple(), 0u);
}

TEST_F(CommandTreeTest, HasEveryNodeInItsPlace) {
    std::vector<std::string> expected;
    AppendExpected("", expected);
    std::vector<std::string> live;
    AppendLive(*root, "", live);
    for (std::size_t i = 0; i < std::max(expected.size(), live.size()); ++i) {
        ASSERT_EQ(i < live.size() ? live[i] : "(end of the tree)", i < expected.size() ? expected[i] : "(nothing)");
    }
}

TEST_F(CommandTreeTest, BuildsItsChildrenOnce) {
    for (const command_tree::FamilyRow& family : FAMILIES) {
        if (auto* const node = static_cast<MultipleCmdsProcessor*>(Find(family.path)); node != nullptr) {
            const std::vector<CmdProcessor*> first = node->GetSubCmdProcessors();
            EXPECT_EQ(&node->GetSubCmdProcessors(), &node->GetSubCmdProcessors()) << family.path;
            EXPECT_EQ(node->GetSubCmdProcessors(), first) << family.path;
        }
    }
}

TEST_F(CommandTreeTest, FindsALeafInTheRowsAsItsNode) {
    const RunMode mode(FLAG_COMMAND_LINE);
    for (const LeafRow& row : LEAVES) {
        TavuStringArray front = {row.name, "FC_1"};
        TavuStringArray back = {row.name, "FC_1"};
        for (std::string path = row.family; !path.empty(); path = ParentOf(path)) {
            const TavuStringArray words = {FindFamily(path)->option, NameOf(path).c_str()};
            front.insert(front.begin(), words.begin(), words.end());
            back.insert(back.end(), words.begin(), words.end());
        }
        for (const TavuStringArray& words : {front, back, TavuStringArray{"FC_1", row.name}}) {
            TavuStringArray nodeArgs = words;
            TavuStringArray leafArgs = words;
            CmdProcessor* const node = root->GetCmdProcessor(root, nodeArgs);
            const Leaf* const leaf = FindLeaf(CommandTree<ProgramRows>::ROOT, leafArgs);
            if (node == nullptr ||
                node->GetParent() == root) { // the root's own leaves, such as its help, are in no row
                EXPECT_TRUE(leaf == nullptr || leaf->kind == Leaf::HELP) << row.family << " " << row.name;
                continue;
            }
            ASSERT_NE(leaf, nullptr) << row.family << " " << row.name;
            EXPECT_EQ(leaf->word, node->GetCmdName());
            EXPECT_EQ(leaf->description, node->GetCmdDesc());
            EXPECT_EQ(leaf->id, node->GetCmdId());
            EXPECT_EQ(leafArgs, nodeArgs);
        }
    }
}

/// Output of a usage function for an id; for any id other than that of `help` it prints nothing and returns 2.
struct UsageRow {
    const char* family;
    const char* leaf;
    const char* text;
};
constexpr UsageRow USAGES[] = {
    {"", "q", "Usage: q\r\n    return to the parent prompt.\r\n"},
    {"", "log",
     "Usage: log [<filename>]\r\n    filename    : The file to log all the output to. \r\n"
     "                    If no filename is supplied, the currently open log \r\n"
     "                    file will be closed.\r\n"},
    {"", "version", "Usage: version\r\n    display version of this program.\r\n"},
    {"adapter", "listcli", "Usage: list\r\n"},
    {"adapter", "updatecli", "Usage: [identifier] [flashfile]\r\n"},
    {"adapter info", "getcli", "Usage: get [adapter identifier]\r\n"},
    {"adapter personality", "getcli", "Usage: get [adapter identifier]\r\n"},
    {"adapter personality", "setcli", "Usage: set [adapter identifier]\r\n"},
    {"adapter flashinfo", "getcli", "Usage: get [adapter identifier]\r\n"},
    {"port", "listcli", "Usage: list\r\n"},
    {"port", "updatenvramcli", ""}, // its usage function does not know it
    {"port info", "getcli", "Usage: get [port identifier]\r\n"},
    {"port stats", "getcli", "Usage: get [port identifier]\r\n"},
    {"port stats", "resetcli", "Usage: reset [port identifier]\r\n"},
    {"port dmi", "getcli", "Usage: get [port identifier]\r\n"},
    {"port dmi", "getrawcli", "Usage: getraw [port identifier]\r\n"},
    {"port dmi", "updatecli", "Usage: update [port identifier]\r\n"},
    {"port vpd", "getcli", "Usage: get\r\n"},
    {"port hbaparams", "getcli", "Usage: get\r\n"},
    {"port hbaparams", "setFilecli", "Usage: setFile\r\n"},
    {"port hbaparams", "setcli", "Usage: set\r\n"},
    {"port hbaparams", "restoreDefaultscli", "Usage: restoreDefaults\r\n"},
    {"port hbaparams", "savecli", "Usage: save\r\n"},
    {"port bbcr", "getcli", "Usage: get\r\n"},
    {"port bbcr", "setFilecli", "Usage: setFile\r\n"},
    {"port bbcr", "setcli", "Usage: set\r\n"},
    {"port fec", "getcli", "Usage: get\r\n"},
    {"port fec", "setcli", "Usage: set\r\n"},
    {"port bootconfig", "getcli", "Usage: get\r\n"},
    {"port bootconfig", "setFilecli", "Usage: setFile\r\n"},
    {"port bootconfig", "setcli", "Usage: set\r\n"},
    {"port bootconfigext", "getcli", "Usage: get\r\n"},
    {"port bootconfigext", "setFilecli", "Usage: setFile\r\n"},
    {"port bootconfigext", "setcli", "Usage: set\r\n"},
    {"port fwdump", "getcli", "Usage: get\r\n"},
    {"port beacon", "getcli", "Usage: get\r\n"},
    {"port beacon", "setcli", "Usage: set\r\n"},
    {"port scmstats", "getcli", "Usage: get [port identifier]\r\n"},
    {"port scmchk", "getcli", "Usage: get [port identifier]\r\n"},
    {"port scmprofile", "getcli", "Usage: get\r\n"},
    {"port scmprofile", "setcli", "Usage: set\r\n"},
    {"port dportdiag", "getcli", "Usage: set\r\n"}, // the function is that of `fec`, which has other ids
    {"port dportdiag", "setcli", ""},
    {"target", "listcli", "Usage: list\r\n"},
    {"target info", "getcli", "Usage: get [port identifier]\r\n"},
    {"target scmstats", "getcli", "Usage: get [port identifier]\r\n"},
    {"target scmchk", "getcli", "Usage: get [port identifier]\r\n"},
    {"target iidma", "getcli", "Usage: get [port identifier]\r\n"},
    {"target iidma", "setcli", "Usage: set [port identifier]\r\n"},
    {"target stats", "getcli", "Usage: get [port identifier]\r\n"},
    {"lun", "listcli", "Usage: list\r\n"},
    {"lun info", "getcli", "Usage: get [port identifier]\r\n"},
};

const UsageRow* FindUsage(const std::string& family, const std::string& leaf) {
    for (const UsageRow& row : USAGES) {
        if (row.family == family && row.leaf == leaf) {
            return &row;
        }
    }
    return nullptr;
}

/// A line of a help list: the name in at least 12 characters, and the description.
std::string HelpLine(const std::string& name, const std::string& description) {
    return name + std::string(name.size() < 12 ? 12 - name.size() : 0, ' ') + ": " + description + "\r\n";
}

/// The help of a family or of the root: a heading and a line for each child; the root omits hidden ones.
std::string Help(const std::string& path) {
    std::string text = "\r\nFollowing is the list of available commands";
    text += path.empty() ? "" : std::string(" in the ") + FindFamily(path)->helpWord + " command mode";
    text += ".\r\nFor detailed information of each command, please type 'command ?'\r\n"
            "All commands are case insensitive.\r\n\r\n";
    for (const LeafRow& leaf : LEAVES) {
        if (leaf.family == path && !leaf.hidden) {
            text += HelpLine(leaf.name, leaf.description);
        }
    }
    for (const command_tree::FamilyRow& family : FAMILIES) {
        if (ParentOf(family.path) == path) {
            text += HelpLine(NameOf(family.path), family.description);
        }
    }
    return text;
}

bool IsHelpLeaf(const LeafRow& leaf) {
    return std::string(leaf.name) == "help" || leaf.hidden;
}

/// Usage of an implemented leaf, by its id; nullopt for a family whose texts aren't listed yet.
std::optional<std::string> ExpectedText(const LeafRow& leaf) {
    if (leaf.usage == UsageOf::NOBODY) {
        return "";
    }
    if (IsHelpLeaf(leaf)) {
        return Help(leaf.family);
    }
    const UsageRow* const row = FindUsage(leaf.family, leaf.name);
    return row != nullptr ? std::optional<std::string>(row->text) : std::nullopt;
}

TEST_F(CommandTreeTest, PrintsEachLeafsUsage) {
    for (const LeafRow& leaf : LEAVES) {
        const std::string path = Join(leaf.family, leaf.name);
        SCOPED_TRACE(path);
        CmdProcessor* const node = Find(path);
        ASSERT_NE(node, nullptr);
        const std::optional<std::string> expected = ExpectedText(leaf);
        ASSERT_TRUE(expected.has_value()) << "list its usage";
        EXPECT_EQ(UsageText(*node, leaf.id), *expected);
    }
}

TEST_F(CommandTreeTest, UsageOfAnUnknownIdIsRefused) {
    for (const char* path : {"q", "adapter listcli", "adapter info getcli", "adapter personality getcli",
                             "adapter flashinfo getcli", "port listcli", "port info getcli", "port stats getcli",
                             "port vpd getcli", "port fec getcli", "port fwdump getcli", "port beacon help"}) {
        TavuStringArray none;
        ASSERT_NE(Find(path), nullptr) << path;
        EXPECT_EQ(Find(path)->PrintUsage(none, MAX_ID), RC_NO_USAGE) << path;
        EXPECT_EQ(UsageText(*Find(path), MAX_ID), "") << path;
    }
    // 4 is an id of a leaf of `port`, but its usage function doesn't know it.
    TavuStringArray none;
    EXPECT_EQ(Find("port updatenvramcli")->PrintUsage(none, 4), RC_NO_USAGE);
}

/// A question mark after a leaf prints its usage, and the command doesn't run.
TEST(CommandUsageTest, QuestionMarkAsksForTheUsageOnly) {
    for (const LeafRow& leaf : LEAVES) {
        if (leaf.hidden) {
            continue;
        }
        std::string line = leaf.name + std::string(" ?");
        for (std::string path = leaf.family; !path.empty(); path = ParentOf(path)) {
            line = std::string(FindFamily(path)->option) + " " + NameOf(path) + " " + line;
        }
        SCOPED_TRACE(line);
        FakeLibrary::Reset();
        const bool isRoot = *leaf.family == '\0';
        const CommandRun run = RunCommand(line);
        EXPECT_EQ(run.code, RC_SUCCESS);
        std::string expected = ExpectedText(leaf).value_or("?");
        if (isRoot && IsHelpLeaf(leaf)) {
            expected += "\nFor a complete help. Please refer to ORFC_ESXCLI_Readme.txt in the same folder.\r\n";
        }
        // "q" and "version" silently end a command line, at any position.
        const bool isSilent = isRoot && (leaf.name == std::string("q") || leaf.name == std::string("version"));
        EXPECT_EQ(run.output, isSilent ? "" : expected);
        EXPECT_EQ(FakeLibrary::Get().PortCalls(), Calls{});
    }
}

} // namespace
