#include "PrivateFolder.h"

#include "Failure.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orfc {

namespace {

constexpr int ENDING[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

/// Waits for a process, and passes on to it the signals that end programs. They and SIGCHLD are blocked.
int WaitFor(pid_t process, const sigset_t& signals) {
    int status = 0;
    while (waitpid(process, &status, WNOHANG) == 0) {
        const int signal = sigwaitinfo(&signals, nullptr);
        if (signal > 0 && signal != SIGCHLD) {
            kill(process, signal);
        }
    }
    return status;
}

} // namespace

int RunInPrivateFolder(const std::function<int(const std::string& folder)>& run) {
    sigset_t signals;
    sigset_t before;
    sigemptyset(&signals);
    for (const int signal : ENDING) {
        sigaddset(&signals, signal);
    }
    sigaddset(&signals, SIGCHLD);
    sigprocmask(SIG_BLOCK, &signals, &before);
    std::signal(SIGCHLD, SIG_DFL); // NOLINT(bugprone-signal-handler): whoever ignores it can't wait
    std::string folder = (std::filesystem::temp_directory_path() / "orfc-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        throw Failure(folder + ": " + std::strerror(errno));
    }
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        sigprocmask(SIG_SETMASK, &before, nullptr);
        umask(S_IRWXG | S_IRWXO);
        const int status = getppid() == parent ? run(folder) : Failure::FAILED;
        std::fflush(nullptr);
        std::_Exit(status);
    }
    const int error = errno;
    const int status = process > 0 ? WaitFor(process, signals) : 0;
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    if (process < 0) {
        throw Failure(std::string("no process: ") + std::strerror(error));
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
    if (WIFSIGNALED(status)) {
        std::signal(WTERMSIG(status), SIG_DFL);
        std::raise(WTERMSIG(status));
    }
    return WEXITSTATUS(status);
}

} // namespace orfc
