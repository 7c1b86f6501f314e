/// @file
/// A node of the command tree.
#pragma once

#include "Serializer.h"

class MultipleCmdsProcessor;

/// A command function. `self` is the family that owns the leaf; `args` are the remaining words.
using CmdFunction = VX_UINT32 (*)(MultipleCmdsProcessor* self, TavuStringArray& args);
/// A usage function; `cmdId` is the id of the leaf in question.
using UsageFunction = VX_UINT32 (*)(MultipleCmdsProcessor* self, TavuStringArray& args, VX_UINT32 cmdId);

/// Optional callbacks of a node, called with the node's parent.
struct CmdFunctions {
    CmdFunction initialize = nullptr;
    CmdFunction uninitialize = nullptr;
    CmdFunction applicable = nullptr; ///< 0 means applicable
    CmdFunction command = nullptr;
    UsageFunction usage = nullptr;
    CmdFunction help = nullptr;
    CmdFunction hidden = nullptr; ///< 0 means hidden
};

/// Flags of a node. A node with any flags is usable and listed only if bit 0 is set and the run is in engineering
/// mode.
enum CmdFlag : VX_UINT32 { CMD_ENGINEERING = 1 };

/// A leaf defined by its functions, or the base of a family.
class CmdProcessor : public Serializer {
public:
    /// The texts are not copied and must outlive the node: they come from constant tables.
    CmdProcessor(MultipleCmdsProcessor* parent, const char* name, const char* option, const char* description,
                 bool hidden, VX_UINT32 id, VX_UINT32 flags, const CmdFunctions& functions = {});
    CmdProcessor(const CmdProcessor&) = delete;
    CmdProcessor& operator=(const CmdProcessor&) = delete;
    CmdProcessor(CmdProcessor&&) = default; ///< into a vector, before first use

    virtual MultipleCmdsProcessor* GetParent() { return mParent; }
    virtual VX_UINT32 Initialize(TavuStringArray& args);
    virtual VX_UINT32 Uninitialize(TavuStringArray& args);
    /// 0 means applicable.
    virtual VX_UINT32 IsApplicable(TavuStringArray& args);
    /// 1 for a leaf, 0 for a family, contrary to the name. Dispatch relies on it.
    virtual VX_UINT32 IsMultiple() { return 1; }
    virtual bool IsHidden();
    virtual const char* GetCmdName() { return mName; }
    /// Word before the name, such as "-t"; empty for leaves.
    virtual const char* GetCmdOpt() { return mOption; }
    virtual VX_UINT32 GetCmdId() { return mId; }
    virtual const char* GetCmdDesc() { return mDescription; }
    virtual VX_UINT32 GetCmdFlags() { return mFlags; }
    virtual VX_UINT32 PrintUsage(TavuStringArray& args, VX_UINT32 id);
    /// Running a node without a command function is an assertion failure.
    virtual VX_UINT32 DoCmd(TavuStringArray& args);
    virtual VX_UINT32 CmdHelp(TavuStringArray& args);

    /// Whether the node is usable and listed in the current mode.
    bool IsUsableInThisMode();

private:
    VX_UINT32 Call(CmdFunction function, TavuStringArray& args) const {
        return function != nullptr ? function(mParent, args) : 0;
    }

    MultipleCmdsProcessor* mParent;
    const char* mName;
    const char* mOption;
    const char* mDescription;
    bool mHidden;
    VX_UINT32 mId;
    VX_UINT32 mFlags;
    CmdFunctions mFunctions;
};
