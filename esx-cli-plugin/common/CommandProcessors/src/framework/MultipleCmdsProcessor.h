/// @file
/// A family of commands: an inner node of the tree, with dispatch.
#pragma once

#include "CommandRows.h"
#include "FamilyLeaf.h"

#include <span>
#include <vector>

class MultipleCmdsProcessor : public CmdProcessor {
public:
    /// The node of a family. The row must outlive it. Its children are created on first use, or immediately if
    /// traces report them.
    MultipleCmdsProcessor(MultipleCmdsProcessor* parent, const FamilyRow& row);
    /// A node that creates its own children.
    MultipleCmdsProcessor(MultipleCmdsProcessor* parent, const char* name, const char* option, const char* description,
                          bool hidden, VX_UINT32 id, VX_UINT32 flags);
    MultipleCmdsProcessor(MultipleCmdsProcessor&&) = default; ///< into a vector, before children exist
    ~MultipleCmdsProcessor() override;

    VX_UINT32 IsMultiple() override { return 0; }
    /// A family can't run and has no usage: calling either is an assertion failure.
    VX_UINT32 PrintUsage(TavuStringArray& args, VX_UINT32 id) override;
    VX_UINT32 DoCmd(TavuStringArray& args) override;
    /// Lists the visible children.
    VX_UINT32 CmdHelp(TavuStringArray& args) override;

    /// The children: leaves, then sub-families.
    virtual std::vector<CmdProcessor*>& GetSubCmdProcessors();

    /// Runs a node. Returns 0 or the first other result. Prints the node's usage if its first word is "?" (the
    /// command then doesn't run) or if the command returns 4, 5 or 6.
    virtual VX_UINT32 InvokeCmdProcessor(MultipleCmdsProcessor* parent, CmdProcessor* node, TavuStringArray& args);

    /// Finds the node that `args` select, and removes the words that select it; null if there is none. On a command
    /// line with two or more words, a family is selected by its option and name, anywhere on the line; a leaf only
    /// by the first remaining word. If nothing is found inside a family, the words that selected it stay removed,
    /// and the search continues with the next child.
    virtual CmdProcessor* GetCmdProcessor(MultipleCmdsProcessor* parent, TavuStringArray& args);

    /// Prints a line for each child that is applicable and usable in the current mode.
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

/// The leaf that a command line selects below these families, found as `GetCmdProcessor` finds its node but without
/// making one; null if there is none. Removes the words that select it.
const Leaf* FindLeaf(std::span<const FamilyRow> rows, TavuStringArray& args);
