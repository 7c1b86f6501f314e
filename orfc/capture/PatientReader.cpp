#include "PatientReader.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/openat2.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace orfc {

namespace {

constexpr int PATIENCE = 2; ///< seconds for a file
constexpr std::size_t MAX_ATTRIBUTE = std::size_t{64} << 10;

int Open(int root, const char* path) {
    constexpr int FLAGS = O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK | O_NOFOLLOW;
    open_how how{};
    how.flags = FLAGS;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS;
    const auto file = static_cast<int>(syscall(SYS_openat2, root, path, &how, sizeof how));
    const bool isUnknown = file < 0 && (errno == ENOSYS || errno == EPERM); // before Linux 5.6, or in a sandbox
    return isUnknown ? openat(root, path, FLAGS) : file;
}

/// Reads a file to the end of what the buffer has already. Returns an errno.
int ReadInto(int root, const char* path, std::vector<char>& bytes, std::size_t& size) {
    const int file = Open(root, path);
    if (file < 0) {
        return errno;
    }
    struct stat information {};
    int error = fstat(file, &information) != 0 ? errno : S_ISREG(information.st_mode) ? 0 : EISDIR;
    for (ssize_t count = 1; error == 0 && count > 0;) {
        count = read(file, bytes.data() + size, bytes.size() - size);
        error = count < 0 && errno != EINTR ? errno : size == bytes.size() ? EFBIG : 0;
        size += count > 0 ? static_cast<std::size_t>(count) : 0;
        count = count < 0 ? 1 : count;
    }
    close(file);
    return error;
}

/// Answers with an errno and the bytes of the files whose paths it receives.
[[noreturn]] void Serve(int socket, int root) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) { // which a stuck process would keep open
        dup2(nowhere, file);
    }
    std::vector<char> answer(sizeof(int) + MAX_ATTRIBUTE + 1);
    char path[PATH_MAX];
    for (ssize_t length = 0; (length = recv(socket, path, sizeof path - 1, 0)) > 0;) {
        path[length] = '\0';
        std::size_t size = sizeof(int);
        const int error = ReadInto(root, path, answer, size);
        std::memcpy(answer.data(), &error, sizeof error);
        send(socket, answer.data(), size, MSG_NOSIGNAL);
    }
    std::_Exit(0);
}

} // namespace

bool PatientReader::Start() {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
        return false;
    }
    mProcess = fork();
    if (mProcess == 0) {
        close(ends[0]);
        Serve(ends[1], mRoot);
    }
    close(ends[1]);
    mSocket = ends[0];
    return mProcess > 0;
}

void PatientReader::End() {
    if (mSocket >= 0) {
        close(mSocket);
        kill(mProcess, SIGKILL);
        waitpid(mProcess, nullptr, WNOHANG); // a stuck one stays until its driver answers
        mSocket = -1;
    }
}

PatientReader::Outcome PatientReader::Read(const std::string& path) {
    if (mSocket < 0 && !Start()) {
        return {.failure = std::string("no process: ") + std::strerror(errno)};
    }
    std::vector<char> answer(sizeof(int) + MAX_ATTRIBUTE + 1);
    send(mSocket, path.data(), path.size(), MSG_NOSIGNAL);
    pollfd answered{mSocket, POLLIN, 0};
    const bool isInTime = poll(&answered, 1, PATIENCE * 1000) == 1;
    const ssize_t size = isInTime ? recv(mSocket, answer.data(), answer.size(), 0) : 0;
    int error = 0;
    if (size < static_cast<ssize_t>(sizeof error)) {
        End();
        return {.failure = "no answer in " + std::to_string(PATIENCE) + " seconds"};
    }
    std::memcpy(&error, answer.data(), sizeof error);
    if (error != 0) {
        return {.failure = std::strerror(error), .error = error};
    }
    return {.content = {answer.data() + sizeof error, answer.data() + size}};
}

} // namespace orfc
