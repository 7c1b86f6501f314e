#include "MainCmdsProcessor.h"
#include "Output.h"
#include "Program.h"
#include "ProgramMode.h"
#include "ResultCodes.h"
#include "TavuDebug.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>

/// Runs one command, or the prompt if there is none. Always exits with 0: the result is in the document or in an
/// error line, and `esxcli` reads nothing else.
int main(int argc, char** argv) {
    TavuDebug::Initialize();
    std::srand(static_cast<unsigned>(std::time(nullptr))); // for the library's random test patterns
    unsigned firstArg = 1;
    g_uFlags |= ChkProgMode(argc, argv, &firstArg);
    InstallSignalHandlers();
    if (HasProgramFlag(FLAG_QUIT)) {
        TavuDebug::Print(TRACE_INFORMATION, "main: quit requested");
        return 0;
    }
    MainCmdsProcessor* const root = MainCmdsProcessor::getMainCmdsProcessor();
    TavuStringArray args(argv + std::min(argc, static_cast<int>(firstArg)), argv + argc);
    if (!args.empty()) {
        g_uFlags |= FLAG_COMMAND_LINE;
        // A single command writes its whole document at once; the default buffer is a sixteenth of this.
        static char buffer[64 * 1024];
        std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
    }
    const VX_UINT32 result = root->Initialize(args) == 0 ? root->DoCmd(args) : VX_UINT32{RC_INIT_FAILED};
    if (root->Uninitialize(args) != 0) {
        FailAssertion("the root did not end");
    }
    MainCmdsProcessor::destroyMainCmdsProcessor();
    TavuDebug::Print(TRACE_INFORMATION, "main: Program Exit Code: (%u)\n", result);
    return 0;
}
