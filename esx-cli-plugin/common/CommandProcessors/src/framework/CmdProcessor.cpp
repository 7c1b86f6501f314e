#include "CmdProcessor.h"

#include "Output.h"
#include "ProgramMode.h"

CmdProcessor::CmdProcessor(MultipleCmdsProcessor* parent, const char* name, const char* option, const char* description,
                           bool hidden, VX_UINT32 id, VX_UINT32 flags, const CmdFunctions& functions)
    : mParent(parent), mName(name), mOption(option), mDescription(description), mHidden(hidden), mId(id), mFlags(flags),
      mFunctions(functions) {}

VX_UINT32 CmdProcessor::Initialize(TavuStringArray& args) {
    return Call(mFunctions.initialize, args);
}

VX_UINT32 CmdProcessor::Uninitialize(TavuStringArray& args) {
    return Call(mFunctions.uninitialize, args);
}

VX_UINT32 CmdProcessor::IsApplicable(TavuStringArray& args) {
    return Call(mFunctions.applicable, args);
}

bool CmdProcessor::IsHidden() {
    if (mFunctions.hidden == nullptr) {
        return mHidden;
    }
    TavuStringArray none;
    return mFunctions.hidden(mParent, none) == 0;
}

VX_UINT32 CmdProcessor::PrintUsage(TavuStringArray& args, VX_UINT32 id) {
    return mFunctions.usage != nullptr ? mFunctions.usage(mParent, args, id) : 0;
}

VX_UINT32 CmdProcessor::DoCmd(TavuStringArray& args) {
    if (mFunctions.command == nullptr) {
        FailAssertion("a command without a command function was run");
    }
    return mFunctions.command(mParent, args);
}

VX_UINT32 CmdProcessor::CmdHelp(TavuStringArray& args) {
    if (mFunctions.help == nullptr) {
        FailAssertion("help was asked of a command without a help function");
    }
    return mFunctions.help(mParent, args);
}

bool CmdProcessor::IsUsableInThisMode() {
    const VX_UINT32 flags = GetCmdFlags();
    return flags == 0 || ((flags & CMD_ENGINEERING) != 0 && HasProgramFlag(FLAG_ENGINEERING));
}
