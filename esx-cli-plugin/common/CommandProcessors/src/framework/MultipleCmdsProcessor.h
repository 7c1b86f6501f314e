/// @file
/// A family of commands: an inner node of the tree, and the dispatch through it.
#pragma once

#include "CommandRows.h"
#include "FamilyLeaf.h"

#include <span>
#include <vector>

class MultipleCmdsProcessor : public CmdProcessor {
public:
    /// The node of a family. The row must outlive it. Its children are made at the first call that asks for them,
    /// or at once when traces tell of each.
    MultipleCmdsProcessor(MultipleCmdsProcessor* parent, const FamilyRow& row);
    /// A node that makes its children itself.
    MultipleCmdsProcessor(MultipleCmdsProcessor* parent, const char* name, const char* option, const char* description,
                          bool hidden, VX_UINT32 id, VX_UINT32 flags);
    MultipleCmdsProcessor(MultipleCmdsProcessor&&) = default; ///< into a vector, before it has children
    ~MultipleCmdsProcessor() override;

    VX_UINT32 IsMultiple() override { return 0; }
    /// A family can't run and has no usage: both are assertion failures.
    VX_UINT32 PrintUsage(TavuStringArray& args, VX_UINT32 id) override;
    VX_UINT32 DoCmd(TavuStringArray& args) override;
    /// Lists the children that are not hidden.
    VX_UINT32 CmdHelp(TavuStringArray& args) override;

    /// The children: leaves, then sub-families.
    virtual std::vector<CmdProcessor*>& GetSubCmdProcessors();

    /// Runs a node: 0, or the first result that isn't. Prints the node's usage when its first word is "?"
    /// (the command then doesn't run) or when the command gives 4, 5 or 6.
    virtual VX_UINT32 InvokeCmdProcessor(MultipleCmdsProcessor* parent, CmdProcessor* node, TavuStringArray& args);

    /// Finds the node that `args` name and removes the words that select it; null when there is none.
    /// On a command line, and with two words or more, a family is selected by its option and name, which
    /// may stand anywhere; a leaf only by the first word that is left. Words that selected a family stay
    /// removed when nothing is found inside it, and the search goes on with the next child.
    virtual CmdProcessor* GetCmdProcessor(MultipleCmdsProcessor* parent, TavuStringArray& args);

    /// Prints a line for each child that is applicable and usable in this mode.
    void ListChildren(TavuStringArray& args, bool withHidden);

protected:
    void MakeFamilies(std::span<const FamilyRow> rows);
    void DeleteFamilies();

    std::vector<CmdProcessor*> mChildren;
    std::vector<MultipleCmdsProcessor> mFamilies;

private:
    const FamilyRow* mRow = nullptr;
    std::vector<FamilyLeaf> mLeaves;
};
