#include "Program.h"

#include "ProgramMode.h"
#include "TavuDebug.h"

#include <csignal>
#include <unistd.h>

namespace {

struct ModeWord {
    const char* word;
    ProgramFlag flag;
};
constexpr ModeWord MODE_WORDS[] = {{"-debug", FLAG_DEBUG}, {"-eng", FLAG_ENGINEERING}};

/// Flag of a mode word; 0 for any other word.
VX_UINT32 FlagOf(const char* word) {
    for (const ModeWord& row : MODE_WORDS) {
        if (CompareNoCase(word, row.word) == 0) {
            return row.flag;
        }
    }
    return 0;
}

} // namespace

VX_UINT32 ChkProgMode(int argc, char** argv, unsigned* firstArg) {
    VX_UINT32 mode = 0;
    int at = 1;
    for (; at < argc; ++at) {
        const VX_UINT32 flag = FlagOf(argv[at]);
        if (flag == 0) {
            break;
        }
        mode |= flag;
    }
    *firstArg = static_cast<unsigned>(at);
    return mode;
}

void HandlerRoutine(int signal) {
    // Tracing allocates and opens a file, which is not async-signal-safe; it happens only if traces are on.
    if (signal == SIGQUIT) {
        g_uFlags |= FLAG_BREAK;
        TavuDebug::Print(TRACE_INFORMATION, "\r\nBreaking...\r\n");
        return;
    }
    TavuDebug::Print(TRACE_INFORMATION, "\r\nClosing...\r\n");
    std::signal(SIGINT, SIG_DFL);
    kill(getpid(), SIGINT);
}

void InstallSignalHandlers() {
    struct sigaction action {};
    action.sa_handler = HandlerRoutine;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGABRT, SIGTERM, SIGQUIT}) {
        sigaction(signal, &action, nullptr);
    }
}
