#include "MainCmdsProcessor.h"

#include "CommandTree.h"
#include "HostScope.h"
#include "LibraryCall.h"
#include "Output.h"
#include "ProgramMode.h"
#include "Version.h"
#include "Words.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr char CLASS_NAME[] = "MainCmdsProcessor";

/// Identifies the tool to the library.
constexpr VX_UINT32 TOOL_ID = 11;
constexpr VX_UINT32 LIBRARY_DEBUG_LEVEL = 31;
/// Value of ORFC_DEBUG_LEVEL that enables the library's own debug output.
constexpr long LIBRARY_DEBUG_REQUEST = 65535;

struct UsageText {
    VX_UINT32 id;
    const char* text;
};
constexpr UsageText USAGES[] = {
    {1, "Usage: q\r\n    return to the parent prompt.\r\n"},
    {2, "Usage: log [<filename>]\r\n"
        "    filename    : The file to log all the output to. \r\n"
        "                    If no filename is supplied, the currently open log \r\n"
        "                    file will be closed.\r\n"},
    {3, "Usage: version\r\n    display version of this program.\r\n"},
};

constexpr char HELP_DESCRIPTION[] = "list of available commands";

VX_UINT32 RefuseParameters() {
    Output(OUTPUT_ERROR, "Command parameter Error!\r\n");
    return RC_PARAM_ERROR;
}

/// What to do after a prompt read that returned no line.
enum class Interruption { QUIT, BREAK, END_OF_INPUT };

/// Allows five seconds for the interrupting signal to set its flag.
Interruption WaitForInterruption() {
    for (int seconds = 0;; ++seconds) {
        if (HasProgramFlag(FLAG_QUIT)) {
            return Interruption::QUIT;
        }
        if (HasProgramFlag(FLAG_BREAK)) {
            return Interruption::BREAK;
        }
        if (seconds == 5) {
            return Interruption::END_OF_INPUT;
        }
        sleep(1);
    }
}

/// Prompts and reads a line. Returns false if there is no line, or if SIGQUIT arrived after the prompt was printed:
/// the signal is blocked until the wait for input, so that none is lost in between.
bool PromptForLine(const char* prompt, char* line, int size) {
    sigset_t quit;
    sigset_t usual;
    sigemptyset(&quit);
    sigaddset(&quit, SIGQUIT);
    sigprocmask(SIG_BLOCK, &quit, &usual);
    g_uFlags &= ~VX_UINT32{FLAG_BREAK};
    Output(OUTPUT_TEXT, "%s>", prompt);
    std::fflush(stdout);
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    ppoll(&input, 1, nullptr, &usual);
    sigprocmask(SIG_SETMASK, &usual, nullptr);
    return !HasProgramFlag(FLAG_BREAK) && std::fgets(line, size, stdin) != nullptr;
}

} // namespace

MainCmdsProcessor* MainCmdsProcessor::mpMainCmdsProcessor = nullptr;

constinit const MainCmdsProcessor::RootLeaf MainCmdsProcessor::LEAVES[] = {
    {"q", "quit the program", 1, CmdQuit},
    {"log", "log all command input and output to a file", 2, CmdLog},
    {"version", "display version of this program", 3, CmdVersion},
    {"help", HELP_DESCRIPTION, 0, CmdHelp},
    {"?", HELP_DESCRIPTION, 0, CmdHelp, true},
    {"/h", HELP_DESCRIPTION, 0, CmdHelp, true},
    {"/help", HELP_DESCRIPTION, 0, CmdHelp, true},
    {"/?", HELP_DESCRIPTION, 0, CmdHelp, true},
};

MainCmdsProcessor::MainCmdsProcessor()
    : MultipleCmdsProcessor(nullptr, "main", "", "the main commands processor", false, 0, 0) {
    const ScopedTrace trace(ScopedTrace::CONSTRUCTOR, CLASS_NAME);
}

MainCmdsProcessor::~MainCmdsProcessor() {
    const ScopedTrace trace(ScopedTrace::DESTRUCTOR, CLASS_NAME);
}

MainCmdsProcessor* MainCmdsProcessor::getMainCmdsProcessor() {
    if (mpMainCmdsProcessor == nullptr) {
        mpMainCmdsProcessor = new MainCmdsProcessor;
    }
    return mpMainCmdsProcessor;
}

void MainCmdsProcessor::destroyMainCmdsProcessor() {
    delete mpMainCmdsProcessor;
    mpMainCmdsProcessor = nullptr;
}

VX_UINT32 MainCmdsProcessor::Initialize(TavuStringArray& args) {
    const TracedCall traced(CLASS_NAME, __func__);
    const char* value = std::getenv("ORFC_DEBUG_LEVEL");
    const long requested = value != nullptr ? std::strtol(value, nullptr, 10) : 0;
    const VX_UINT32 level = requested == LIBRARY_DEBUG_REQUEST ? LIBRARY_DEBUG_LEVEL : 0;
    const VX_UINT32 code = MakeLibraryCalls([&] {
        std::printf("FC ESXCLI Debug level = %ld\n", requested);
        std::printf("VEXAPI Debug level = %d\n", static_cast<int>(level));
        if (HasProgramFlag(FLAG_COMMAND_LINE)) {
            TavuStringArray words = args;
            const Leaf* const leaf = FindLeaf(CommandTree<ProgramRows>::ROOT, words);
            LimitReading(leaf != nullptr ? leaf->reads : 0, ArgText(words, 0));
        }
        TraceStatus("VEXAPI_Initialize", VEXAPI_Initialize(level, 0));
        VEXAPI_SetToolID(TOOL_ID);
        VEXAPI_SetToolVersion(TOOL_VERSION_MAJOR, TOOL_VERSION_MINOR, TOOL_VERSION_PATCH, 0);
    });
    if (code == RC_SUCCESS) {
        MakeFamilies(CommandTree<ProgramRows>::ROOT);
    }
    return code;
}

VX_UINT32 MainCmdsProcessor::Uninitialize(TavuStringArray&) {
    const TracedCall traced(CLASS_NAME, __func__);
    VEXAPI_Uninitialize();
    DeleteFamilies();
    mLeaves.clear();
    return RC_SUCCESS;
}

std::vector<CmdProcessor*>& MainCmdsProcessor::GetSubCmdProcessors() {
    if (mChildren.empty()) {
        mLeaves.reserve(std::size(LEAVES));
        mChildren.reserve(std::size(LEAVES) + mFamilies.size());
        for (const RootLeaf& row : LEAVES) {
            const CmdFunctions functions = {.command = row.command, .usage = Usage};
            mChildren.push_back(
                &mLeaves.emplace_back(this, row.name, "", row.description, row.hidden, row.id, 0, functions));
        }
        for (MultipleCmdsProcessor& family : mFamilies) {
            mChildren.push_back(&family);
        }
    }
    return mChildren;
}

VX_UINT32 MainCmdsProcessor::PrintUsage(TavuStringArray&, VX_UINT32) {
    Output(OUTPUT_LIST, "Usage: legacy\r\n    legacy commands are supported in this mode.\r\n");
    return RC_SUCCESS;
}

VX_UINT32 MainCmdsProcessor::DoCmd(TavuStringArray& args) {
    const TracedCall traced(CLASS_NAME, __func__);
    if (!HasProgramFlag(FLAG_COMMAND_LINE) && args.empty()) {
        return HandleInteractiveCmds();
    }
    // A word "version" or "q" anywhere on a command line, even as a value, silently ends the run: both commands
    // exist at the prompt only.
    if (IsCommandDone(args)) {
        return RC_SUCCESS;
    }
    return ExecCmd(args);
}

bool MainCmdsProcessor::IsCommandDone(const TavuStringArray& args) {
    return std::any_of(args.begin(), args.end(), [](const TavuString& word) {
        return word.CompareNoCase("version") == 0 || word.CompareNoCase("q") == 0;
    });
}

VX_UINT32 MainCmdsProcessor::ExecCmd(TavuStringArray& args) {
    CmdProcessor* node = GetCmdProcessor(this, args);
    if (node == nullptr) {
        Output(OUTPUT_ERROR, "Unknown command or invalid target identifier!\r\n");
        return RC_CMD_NOT_FOUND;
    }
    return InvokeCmdProcessor(this, node, args);
}

bool MainCmdsProcessor::ConvertCmdLineToStrArray(const char* line, TavuStringArray& args) {
    int argc = 0;
    char** const argv = ParseCommandLineToArgv(line, argc);
    if (argv == nullptr) {
        return false;
    }
    args.insert(args.end(), argv, argv + argc);
    std::free(argv);
    return true;
}

VX_UINT32 MainCmdsProcessor::HandleInteractiveCmds() {
    char line[2048];
    std::setvbuf(stdin, nullptr, _IONBF, 0); // the wait for input doesn't see buffered lines
    for (;;) {
        if (!PromptForLine(GetPrompt(), line, sizeof line)) {
            switch (WaitForInterruption()) {
            case Interruption::QUIT:
                return RC_SUCCESS;
            case Interruption::BREAK:
                std::clearerr(stdin);
                continue;
            case Interruption::END_OF_INPUT:
                Output(OUTPUT_ERROR, "Unknown input problem!\r\nQuit...\r\n");
                return RC_PARAM_ERROR;
            }
        }
        LogToFile(line);
        if (const std::size_t length = std::strlen(line); length > 0 && line[length - 1] == '\n') {
            line[length - 1] = '\0';
        }
        TavuStringArray args;
        if (!ConvertCmdLineToStrArray(line, args)) {
            Output(OUTPUT_ERROR, "Error parsing command input string!\n");
            continue;
        }
        if (args.empty()) {
            continue;
        }
        const VX_UINT32 result = ExecCmd(args);
        if (result == RC_EXIT || result == RC_QUIT || HasProgramFlag(FLAG_QUIT)) {
            return RC_SUCCESS;
        }
    }
}

VX_UINT32 MainCmdsProcessor::CmdQuit(MultipleCmdsProcessor*, TavuStringArray& args) {
    const TracedCall traced(CLASS_NAME, __func__);
    if (!args.empty()) {
        return RefuseParameters();
    }
    TavuDebug::Print(TRACE_INFORMATION, "Exiting the program...\r\n");
    return RC_QUIT;
}

VX_UINT32 MainCmdsProcessor::CmdVersion(MultipleCmdsProcessor*, TavuStringArray& args) {
    const TracedCall traced(CLASS_NAME, __func__);
    if (!args.empty()) {
        return RefuseParameters();
    }
    Output(OUTPUT_TEXT, "%s v%s\r\n", TOOL_TITLE, TOOL_VERSION);
    return RC_SUCCESS;
}

VX_UINT32 MainCmdsProcessor::CmdLog(MultipleCmdsProcessor*, TavuStringArray& args) {
    const TracedCall traced(CLASS_NAME, __func__);
    if (args.empty()) {
        if (g_hLogFile != -1) {
            close(g_hLogFile);
            g_hLogFile = -1;
        }
        return RC_SUCCESS;
    }
    // An already open log is not closed. Only processes of its owner may write the file.
    const char* name = ArgText(args, 0);
    g_hLogFile = open(name, O_WRONLY | O_CREAT | O_TRUNC, 0200);
    if (g_hLogFile == -1) {
        TavuDebug::Print(TRACE_DEBUG, "open() %s failed %d (%s)\n", name, errno, std::strerror(errno));
        Output(OUTPUT_ERROR, "Failed to create file %s\n", name);
    }
    return RC_SUCCESS;
}

VX_UINT32 MainCmdsProcessor::CmdHelp(MultipleCmdsProcessor* self, TavuStringArray& args) {
    const TracedCall traced(CLASS_NAME, __func__);
    Output(OUTPUT_HEADING, "\r\nFollowing is the list of available commands.\r\n"
                           "For detailed information of each command, please type 'command ?'\r\n");
    Output(OUTPUT_NOTE, "All commands are case insensitive.\r\n\r\n");
    self->CmdHelp(args);
    if (HasProgramFlag(FLAG_COMMAND_LINE)) {
        Output(OUTPUT_LIST, "\nFor a complete help. Please refer to ORFC_ESXCLI_Readme.txt in the same folder.\r\n");
    }
    return RC_SUCCESS;
}

VX_UINT32 MainCmdsProcessor::Usage(MultipleCmdsProcessor* self, TavuStringArray&, VX_UINT32 id) {
    const TracedCall traced(CLASS_NAME, __func__);
    if (id == 0) {
        TavuStringArray none;
        return CmdHelp(self, none);
    }
    for (const UsageText& usage : USAGES) {
        if (usage.id == id) {
            Output(OUTPUT_LIST, "%s", usage.text);
            return RC_SUCCESS;
        }
    }
    return RC_NO_USAGE;
}
