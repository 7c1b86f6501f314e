#include "FamilyLeaf.h"

#include "MultipleCmdsProcessor.h"
#include "Output.h"
#include "TracedFunction.h"

#include <cstring>

namespace {

/// Runs a command and traces its functions. For a failed command no exit is traced.
ResultCode RunCommand(const FamilyDescription& family, const Leaf& row, MultipleCmdsProcessor* node,
                      TavuStringArray& args) {
    const bool isPlain = row.kind == Leaf::PLAIN;
    if (TavuDebug::IsEnabled(TRACE_INFORMATION)) {
        const auto length = static_cast<int>(std::strlen(row.function) - std::strlen("Common"));
        TavuDebug::Print(TRACE_INFORMATION, "%s::%.*s%s: Entered", family.className, length, row.function,
                         isPlain ? "" : "Cli");
    }
    const TracedFunction traced(family.className, row.function);
    TraceStep(TRACE_INFORMATION, "Entered");
    const ResultCode code = row.run(node, args, isPlain ? Serializer::FORMAT_XML : Serializer::FORMAT_TEXT);
    if (code == RC_SUCCESS) {
        TraceStep(TRACE_INFORMATION, "Exiting");
    }
    return code;
}

} // namespace

VX_UINT32 FamilyLeaf::DoCmd(TavuStringArray& args) {
    if (mRow.kind == Leaf::HELP) {
        ShowFamilyHelp(mFamily, GetParent(), args);
        return RC_SUCCESS;
    }
    return RunCommand(mFamily, mRow, GetParent(), args);
}

VX_UINT32 FamilyLeaf::PrintUsage(TavuStringArray& args, VX_UINT32 id) {
    if (!mRow.hasUsage) {
        return RC_SUCCESS;
    }
    return ShowFamilyUsage(mRow.usageFamily != nullptr ? *mRow.usageFamily : mFamily, GetParent(), args, id);
}

void ShowFamilyHelp(const FamilyDescription& family, MultipleCmdsProcessor* node, TavuStringArray& args) {
    const TracedCall traced(family.className, "CmdHelp");
    Output(OUTPUT_HEADING,
           "\r\nFollowing is the list of available commands in the %s command mode.\r\n"
           "For detailed information of each command, please type 'command ?'\r\n",
           family.helpWord);
    Output(OUTPUT_NOTE, "All commands are case insensitive.\r\n\r\n");
    node->ListChildren(args, true);
}

ResultCode ShowFamilyUsage(const FamilyDescription& family, MultipleCmdsProcessor* node, TavuStringArray& args,
                           VX_UINT32 id) {
    const TracedCall traced(family.className, "Usage");
    for (const Leaf& leaf : family.leaves) {
        // Plain leaves have no usage, and may share the ids of other leaves.
        if (leaf.id != id || leaf.kind == Leaf::PLAIN) {
            continue;
        }
        if (leaf.kind == Leaf::HELP) {
            ShowFamilyHelp(family, node, args);
            return RC_SUCCESS;
        }
        if (leaf.usage != nullptr) {
            Output(OUTPUT_LIST, "%s", leaf.usage);
            return RC_SUCCESS;
        }
    }
    return RC_NO_USAGE;
}
