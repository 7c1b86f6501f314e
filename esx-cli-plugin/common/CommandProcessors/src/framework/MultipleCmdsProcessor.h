/// @file
/// A family of commands: an inner node of the tree, and the dispatch through it.
#pragma once

#include "CmdProcessor.h"

#include <memory>
#include <span>
#include <vector>

/// A leaf of a family, as a row.
struct Leaf {
    const char* name;
    const char* description;
    VX_UINT32 id;
    CmdFunction command;
    UsageFunction usage; ///< null: nothing may ever be printed but the document
    bool hidden = false; ///< left out of the root's list
};

/// A family inside a family, as a row. `create` makes the node, with id and flags 0.
struct SubFamily {
    const char* name;
    const char* description;
    std::unique_ptr<MultipleCmdsProcessor> (*create)(MultipleCmdsProcessor* parent, const char* name,
                                                     const char* option, const char* description);
};

/// Makes a family of class `Class` for a row.
template <typename Class>
std::unique_ptr<MultipleCmdsProcessor> CreateFamily(MultipleCmdsProcessor* parent, const char* name, const char* option,
                                                    const char* description) {
    return std::make_unique<Class>(parent, name, option, description, 0, 0);
}

class MultipleCmdsProcessor : public CmdProcessor {
public:
    MultipleCmdsProcessor(MultipleCmdsProcessor* parent, const char* name, const char* option, const char* description,
                          bool hidden, VX_UINT32 id, VX_UINT32 flags);

    VX_UINT32 IsMultiple() override { return 0; }
    /// A family can't run and has no usage: both are assertion failures.
    VX_UINT32 PrintUsage(TavuStringArray& args, VX_UINT32 id) override;
    VX_UINT32 DoCmd(TavuStringArray& args) override;
    /// Lists the children that are not hidden.
    VX_UINT32 CmdHelp(TavuStringArray& args) override;

    /// The children: leaves, then sub-families. Made at the first call; the default family has none.
    virtual std::vector<CmdProcessor*>& GetSubCmdProcessors();

    /// Runs a node: 0, or the first result that isn't. Prints the node's usage when its first word is "?"
    /// (the command then doesn't run) or when the command gives 4, 5 or 6.
    virtual VX_UINT32 InvokeCmdProcessor(MultipleCmdsProcessor* parent, CmdProcessor* node, TavuStringArray& args);

    /// Finds the node that `args` name and takes the words that select it away; null when there is none.
    /// On a command line, and with two words or more, a family is selected by its option and name, which
    /// may stand anywhere; a leaf only by the first word that is left. Words that selected a family stay
    /// taken away when nothing is found inside it, and the search goes on with the next child.
    virtual CmdProcessor* GetCmdProcessor(MultipleCmdsProcessor* parent, TavuStringArray& args);

    /// Prints a line for each child that is applicable and usable in this mode.
    void ListChildren(TavuStringArray& args, bool withHidden);

protected:
    void CreateSubFamilies(const char* option, std::span<const SubFamily> rows);
    void DeleteSubFamilies();
    /// Makes the vector of children of `leaves` and the sub-families, once.
    std::vector<CmdProcessor*>& BuildChildren(std::span<const Leaf> leaves);

private:
    std::vector<std::unique_ptr<MultipleCmdsProcessor>> mSubFamilies;
    std::vector<std::unique_ptr<CmdProcessor>> mLeaves;
    std::vector<CmdProcessor*> mChildren;
};
