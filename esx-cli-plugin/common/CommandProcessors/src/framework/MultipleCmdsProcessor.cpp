#include "MultipleCmdsProcessor.h"

#include "CmdLineParser.h"
#include "Output.h"
#include "ProgramMode.h"
#include "TavuDebug.h"

namespace {

/// Removes the option and the name of a family, which may be anywhere; false if they aren't there.
bool TakeFamily(TavuStringArray& args, const char* option, const char* name) {
    int index = -1;
    if (IsCommandInArgs(args, option, name, index) == 0) {
        return false;
    }
    args.erase(args.begin() + index, args.begin() + index + 2);
    return true;
}

/// Removes the first word if it is this one.
bool TakeWord(TavuStringArray& args, const char* word) {
    if (args.empty() || args[0].CompareNoCase(word) != 0) {
        return false;
    }
    args.erase(args.begin());
    return true;
}

} // namespace

MultipleCmdsProcessor::MultipleCmdsProcessor(MultipleCmdsProcessor* parent, const FamilyRow& row)
    : CmdProcessor(parent, row.name, row.option, row.description, false, 0, 0), mRow(&row) {
    const ScopedTrace trace(ScopedTrace::CONSTRUCTOR, row.family->className);
    if (TavuDebug::IsEnabled(TRACE_INFORMATION)) {
        MakeFamilies(row.subFamilies);
    }
}

MultipleCmdsProcessor::MultipleCmdsProcessor(MultipleCmdsProcessor* parent, const char* name, const char* option,
                                             const char* description, bool hidden, VX_UINT32 id, VX_UINT32 flags)
    : CmdProcessor(parent, name, option, description, hidden, id, flags) {}

MultipleCmdsProcessor::~MultipleCmdsProcessor() {
    if (mRow != nullptr) {
        const ScopedTrace trace(ScopedTrace::DESTRUCTOR, mRow->family->className);
        DeleteFamilies();
    }
}

VX_UINT32 MultipleCmdsProcessor::PrintUsage(TavuStringArray&, VX_UINT32) {
    FailAssertion("a family has no usage");
}

VX_UINT32 MultipleCmdsProcessor::DoCmd(TavuStringArray&) {
    FailAssertion("a family can't be run");
}

VX_UINT32 MultipleCmdsProcessor::CmdHelp(TavuStringArray& args) {
    ListChildren(args, false);
    return RC_SUCCESS;
}

std::vector<CmdProcessor*>& MultipleCmdsProcessor::GetSubCmdProcessors() {
    if (mRow == nullptr || !mChildren.empty()) {
        return mChildren;
    }
    if (mFamilies.empty()) {
        MakeFamilies(mRow->subFamilies);
    }
    const std::span<const Leaf> leaves = mRow->family->leaves;
    mLeaves.reserve(leaves.size());
    mChildren.reserve(leaves.size() + mFamilies.size());
    for (const Leaf& leaf : leaves) {
        mChildren.push_back(&mLeaves.emplace_back(this, *mRow->family, leaf));
    }
    for (MultipleCmdsProcessor& family : mFamilies) {
        mChildren.push_back(&family);
    }
    return mChildren;
}

void MultipleCmdsProcessor::ListChildren(TavuStringArray& args, bool withHidden) {
    for (CmdProcessor* child : GetSubCmdProcessors()) {
        if (child->IsApplicable(args) != 0 || !child->IsUsableInThisMode() || (!withHidden && child->IsHidden())) {
            continue;
        }
        Output(OUTPUT_LIST, "%-12s: ", child->GetCmdName());
        Output(OUTPUT_LIST, "%s\r\n", child->GetCmdDesc());
    }
}

VX_UINT32 MultipleCmdsProcessor::InvokeCmdProcessor(MultipleCmdsProcessor*, CmdProcessor* node, TavuStringArray& args) {
    if (node == nullptr || node->IsApplicable(args) != 0) {
        return RC_CMD_NOT_FOUND;
    }
    if (const VX_UINT32 result = node->Initialize(args); result != 0) {
        node->Uninitialize(args);
        return result;
    }
    if (!node->IsUsableInThisMode()) {
        return node->Uninitialize(args);
    }
    if (!args.empty() && args[0].CompareNoCase("?") == 0) {
        node->PrintUsage(args, node->GetCmdId());
        return node->Uninitialize(args);
    }
    const VX_UINT32 result = node->DoCmd(args);
    if (result == RC_PARAM_ERROR || result == RC_HELP_REQUESTED || result == RC_INVALID_PARAMETER) {
        node->PrintUsage(args, node->GetCmdId());
    }
    const VX_UINT32 ended = node->Uninitialize(args);
    return result != 0 ? result : ended;
}

CmdProcessor* MultipleCmdsProcessor::GetCmdProcessor(MultipleCmdsProcessor*, TavuStringArray& args) {
    const bool optionsCount = HasProgramFlag(FLAG_COMMAND_LINE) || args.size() >= 2;
    for (CmdProcessor* child : GetSubCmdProcessors()) {
        if (child == nullptr || child->IsApplicable(args) != 0) {
            continue;
        }
        const bool isByOption = optionsCount && *child->GetCmdOpt() != '\0';
        if (!(isByOption ? TakeFamily(args, child->GetCmdOpt(), child->GetCmdName())
                         : TakeWord(args, child->GetCmdName()))) {
            continue;
        }
        const bool isLeaf = child->IsMultiple() != 0;
        if (isLeaf || !optionsCount) {
            return child;
        }
        if (CmdProcessor* found = static_cast<MultipleCmdsProcessor*>(child)->GetCmdProcessor(this, args)) {
            return found;
        }
    }
    return nullptr;
}

void MultipleCmdsProcessor::MakeFamilies(std::span<const FamilyRow> rows) {
    mFamilies.reserve(rows.size()); // nodes must not move: their children refer to them
    for (const FamilyRow& row : rows) {
        mFamilies.emplace_back(this, row);
    }
}

void MultipleCmdsProcessor::DeleteFamilies() {
    mChildren.clear();
    mFamilies.clear();
}

const Leaf* FindLeaf(std::span<const FamilyRow> rows, TavuStringArray& args) {
    for (const FamilyRow& row : rows) {
        if (!TakeFamily(args, row.option, row.name)) {
            continue;
        }
        for (const Leaf& leaf : row.family->leaves) {
            if (TakeWord(args, leaf.word)) {
                return &leaf;
            }
        }
        if (const Leaf* const found = FindLeaf(row.subFamilies, args)) {
            return found;
        }
    }
    return nullptr;
}
