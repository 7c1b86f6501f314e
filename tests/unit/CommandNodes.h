/// @file
/// Small command trees of scripted nodes that record their calls.
#pragma once

#include "MultipleCmdsProcessor.h"
#include "Output.h"
#include "ProgramMode.h"
#include "Words.h"

#include <string>
#include <vector>

/// Sets the mode of the run during its lifetime.
class RunMode {
public:
    explicit RunMode(VX_UINT32 flags) : mSaved(g_uFlags) { g_uFlags = flags; }
    ~RunMode() { g_uFlags = mSaved; }
    RunMode(const RunMode&) = delete;
    RunMode& operator=(const RunMode&) = delete;

private:
    VX_UINT32 mSaved;
};

/// Behavior of a scripted node.
struct NodeScript {
    VX_UINT32 initialize = 0;
    VX_UINT32 uninitialize = 0;
    VX_UINT32 applicable = 0; ///< 0 means applicable
    VX_UINT32 command = 0;
    VX_UINT32 flags = 0;
    VX_UINT32 id = 0;
    bool hidden = false;
};

/// A leaf that follows its script. `calls` lists its calls.
class ScriptedLeaf : public CmdProcessor {
public:
    explicit ScriptedLeaf(const char* name, NodeScript leafScript = {}, const char* option = "")
        : CmdProcessor(nullptr, name, option, "a leaf", leafScript.hidden, leafScript.id, leafScript.flags),
          script(leafScript) {}

    VX_UINT32 Initialize(TavuStringArray&) override { return Step("Initialize", script.initialize); }
    VX_UINT32 Uninitialize(TavuStringArray&) override { return Step("Uninitialize", script.uninitialize); }
    VX_UINT32 IsApplicable(TavuStringArray&) override { return Step("IsApplicable", script.applicable); }
    VX_UINT32 DoCmd(TavuStringArray&) override { return Step("DoCmd", script.command); }
    VX_UINT32 PrintUsage(TavuStringArray&, VX_UINT32 id) override {
        return Step("PrintUsage(" + std::to_string(id) + ")", 77); // this result is ignored
    }

    NodeScript script;
    std::vector<std::string> calls;

private:
    VX_UINT32 Step(const std::string& step, VX_UINT32 result) {
        calls.push_back(step);
        return result;
    }
};

/// A family with given children.
class ScriptedFamily : public MultipleCmdsProcessor {
public:
    ScriptedFamily(const char* name, const char* option, std::vector<CmdProcessor*> children = {},
                   NodeScript familyScript = {})
        : MultipleCmdsProcessor(nullptr, name, option, "a family", familyScript.hidden, familyScript.id,
                                familyScript.flags),
          script(familyScript), mChildren(std::move(children)) {}

    VX_UINT32 IsApplicable(TavuStringArray&) override { return script.applicable; }
    std::vector<CmdProcessor*>& GetSubCmdProcessors() override { return mChildren; }

    NodeScript script;

private:
    std::vector<CmdProcessor*> mChildren;
};
