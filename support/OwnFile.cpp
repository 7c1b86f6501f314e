#include "OwnFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int SAFELY = O_CLOEXEC | O_NOCTTY | O_NOFOLLOW | O_NONBLOCK;
constexpr mode_t NEW_FILE_MODE = 0644;

bool IsOwn(int descriptor) {
    struct stat information {};
    return fstat(descriptor, &information) == 0 && S_ISREG(information.st_mode) && information.st_nlink == 1 &&
           information.st_uid == geteuid();
}

int OpenExisting(const char* path, int flags) {
    const int descriptor = open(path, flags | SAFELY);
    if (descriptor == -1 || IsOwn(descriptor)) {
        return descriptor;
    }
    close(descriptor);
    errno = EPERM;
    return -1;
}

int Create(const char* path, int flags) {
    return open(path, flags | O_CREAT | O_EXCL | SAFELY, NEW_FILE_MODE);
}

bool WriteAll(int descriptor, const TavuString& content) {
    std::size_t done = 0;
    while (done < content.size()) {
        const ssize_t written = write(descriptor, content.data() + done, content.size() - done);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        done += static_cast<std::size_t>(written);
    }
    return true;
}

bool ReadAll(int descriptor, TavuString& content) {
    char buffer[4096];
    while (content.size() <= MAX_OWN_FILE) {
        const ssize_t count = read(descriptor, buffer, sizeof buffer);
        if (count == 0) {
            return true;
        }
        if (count > 0) {
            content.append(buffer, static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return false;
        }
    }
    errno = EFBIG;
    return false;
}

} // namespace

int OpenOwnFile(const char* path, OwnFileMode mode) {
    if (mode == OwnFileMode::READ) {
        return OpenExisting(path, O_RDONLY);
    }
    if (mode == OwnFileMode::CREATE) {
        return Create(path, O_WRONLY);
    }
    constexpr int APPENDING = O_WRONLY | O_APPEND;
    int descriptor = OpenExisting(path, APPENDING);
    if (descriptor == -1 && errno == ENOENT) {
        descriptor = Create(path, APPENDING);
        if (descriptor == -1 && errno == EEXIST) { // another run created it first
            descriptor = OpenExisting(path, APPENDING);
        }
    }
    return descriptor;
}

FILE* AppendToOwnFile(const char* path) {
    const int descriptor = OpenOwnFile(path, OwnFileMode::APPEND);
    if (descriptor == -1) {
        return nullptr;
    }
    FILE* const stream = fdopen(descriptor, "a");
    if (stream == nullptr) {
        close(descriptor);
    }
    return stream;
}

bool ReadOwnFile(const char* path, TavuString& content) {
    content.clear();
    const int descriptor = OpenOwnFile(path, OwnFileMode::READ);
    if (descriptor == -1) {
        return false;
    }
    const bool isRead = ReadAll(descriptor, content);
    const int error = errno;
    close(descriptor);
    errno = error;
    return isRead;
}

bool CreateOwnFile(const char* path, const TavuString& content) {
    const int descriptor = OpenOwnFile(path, OwnFileMode::CREATE);
    if (descriptor == -1) {
        return false;
    }
    const bool isWritten = WriteAll(descriptor, content);
    if (close(descriptor) != 0 || !isWritten) {
        unlink(path);
        return false;
    }
    return true;
}
