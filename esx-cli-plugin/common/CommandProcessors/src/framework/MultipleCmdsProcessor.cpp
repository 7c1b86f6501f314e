#include "MultipleCmdsProcessor.h"

#include "CmdLineParser.h"
#include "Console.h"
#include "ResultCodes.h"

MultipleCmdsProcessor::MultipleCmdsProcessor(MultipleCmdsProcessor* parent, const char* name, const char* option,
                                             const char* description, bool hidden, VX_UINT32 id, VX_UINT32 flags)
    : CmdProcessor(parent, name, option, description, hidden, id, flags) {}

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
        if (optionsCount && *child->GetCmdOpt() != '\0') {
            int index = -1;
            if (IsCommandInArgs(args, child->GetCmdOpt(), child->GetCmdName(), index) == 0) {
                continue;
            }
            args.erase(args.begin() + index, args.begin() + index + 2);
        } else if (!args.empty() && args[0].CompareNoCase(child->GetCmdName()) == 0) {
            args.erase(args.begin());
        } else {
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

void MultipleCmdsProcessor::CreateSubFamilies(const char* option, std::span<const SubFamily> rows) {
    mSubFamilies.reserve(rows.size());
    for (const SubFamily& row : rows) {
        mSubFamilies.push_back(row.create(this, row.name, option, row.description));
    }
}

void MultipleCmdsProcessor::DeleteSubFamilies() {
    mChildren.clear();
    mLeaves.clear();
    mSubFamilies.clear();
}

std::vector<CmdProcessor*>& MultipleCmdsProcessor::BuildChildren(std::span<const Leaf> leaves) {
    if (mChildren.empty()) {
        mChildren.reserve(leaves.size() + mSubFamilies.size());
        mLeaves.reserve(leaves.size());
        for (const Leaf& leaf : leaves) {
            mLeaves.push_back(
                std::make_unique<CmdProcessor>(this, leaf.name, "", leaf.description, leaf.hidden, leaf.id, 0,
                                               CmdFunctions{.command = leaf.command, .usage = leaf.usage}));
            mChildren.push_back(mLeaves.back().get());
        }
        for (const auto& family : mSubFamilies) {
            mChildren.push_back(family.get());
        }
    }
    return mChildren;
}
