#pragma once

#include "MultipleCmdsProcessor.h"

/// The tool's name; its version is in Version.h.
inline constexpr char TOOL_TITLE[] = "Kerrith Orvane Sorvenna FC ESXCLI Plugin";

/// The root of the command tree: the library session, the prompt, and the root's own leaves.
class MainCmdsProcessor final : public MultipleCmdsProcessor {
public:
    /// The root, created at the first call.
    static MainCmdsProcessor* getMainCmdsProcessor();
    static void destroyMainCmdsProcessor();

    /// Starts the library and creates the top-level families. Returns `RC_FILE_ERROR`, having done neither, if the
    /// library's output can't be redirected.
    VX_UINT32 Initialize(TavuStringArray& args) override;
    /// Ends the library, even if it was never started, and deletes the families.
    VX_UINT32 Uninitialize(TavuStringArray& args) override;
    VX_UINT32 PrintUsage(TavuStringArray& args, VX_UINT32 id) override;
    /// Runs one command, or the prompt if there are no arguments.
    VX_UINT32 DoCmd(TavuStringArray& args) override;
    std::vector<CmdProcessor*>& GetSubCmdProcessors() override;

    VX_UINT32 ExecCmd(TavuStringArray& args);
    /// True if any word is "version" or "q".
    static bool IsCommandDone(const TavuStringArray& args);
    /// Appends the words of a line; false if a quote is left open.
    static bool ConvertCmdLineToStrArray(const char* line, TavuStringArray& args);

private:
    MainCmdsProcessor();
    ~MainCmdsProcessor() override;

    VX_UINT32 HandleInteractiveCmds();
    static const char* GetPrompt() { return "$"; }

    static VX_UINT32 CmdQuit(MultipleCmdsProcessor* self, TavuStringArray& args);
    static VX_UINT32 CmdVersion(MultipleCmdsProcessor* self, TavuStringArray& args);
    static VX_UINT32 CmdLog(MultipleCmdsProcessor* self, TavuStringArray& args);
    using MultipleCmdsProcessor::CmdHelp;
    static VX_UINT32 CmdHelp(MultipleCmdsProcessor* self, TavuStringArray& args);
    static VX_UINT32 Usage(MultipleCmdsProcessor* self, TavuStringArray& args, VX_UINT32 id);

    /// The root's own commands have no `cli` twin and print no document.
    struct RootLeaf {
        const char* name;
        const char* description;
        VX_UINT32 id;
        CmdFunction command;
        bool hidden = false; ///< not listed
    };
    static const RootLeaf LEAVES[];

    std::vector<CmdProcessor> mLeaves;
    static MainCmdsProcessor* mpMainCmdsProcessor;
};
