/// @file
/// A leaf created from a command's row, and what it prints besides its document.
#pragma once

#include "CmdProcessor.h"
#include "CommandRows.h"

class FamilyLeaf final : public CmdProcessor {
public:
    /// Both rows must outlive the leaf.
    FamilyLeaf(MultipleCmdsProcessor* parent, const FamilyDescription& family, const Leaf& row)
        : CmdProcessor(parent, row.word, "", row.description, false, row.id, 0), mFamily(family), mRow(row) {}

    VX_UINT32 DoCmd(TavuStringArray& args) override;
    VX_UINT32 PrintUsage(TavuStringArray& args, VX_UINT32 id) override;

private:
    const FamilyDescription& mFamily;
    const Leaf& mRow;
};

/// Prints the heading of a family's help and a line for each child of its node.
void ShowFamilyHelp(const FamilyDescription& family, MultipleCmdsProcessor* node, TavuStringArray& args);

/// Prints the usage text of the leaf with this id, or the help for the id of `help`. Returns `RC_NO_USAGE`,
/// printing nothing, for an id without a text.
ResultCode ShowFamilyUsage(const FamilyDescription& family, MultipleCmdsProcessor* node, TavuStringArray& args,
                           VX_UINT32 id);
