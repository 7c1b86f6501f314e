#include "Files.h"

#include "Failure.h"
#include "OwnFile.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace orfc {

namespace {

constexpr std::chrono::seconds PATIENCE(2);
constexpr std::chrono::milliseconds PERIOD(20);

[[noreturn]] void Fail(const std::string& path) {
    throw Failure(path + ": " + (errno == EPERM ? "is no file of this user alone" : std::strerror(errno)));
}

} // namespace

LockedFile::LockedFile(std::string path) : mPath(std::move(path)) {
    const std::string lock = mPath + ".lock";
    mLock = OpenOwnFile(lock.c_str(), OwnFileMode::APPEND);
    if (mLock < 0) {
        Fail(lock);
    }
    fchmod(mLock, S_IRUSR | S_IWUSR); // whoever can open it could hold it
    const auto end = std::chrono::steady_clock::now() + PATIENCE;
    while (flock(mLock, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK || std::chrono::steady_clock::now() > end) {
            const int error = errno;
            close(mLock);
            errno = error;
            throw Failure(lock + ": " + (error == EWOULDBLOCK ? "another run holds it" : std::strerror(error)));
        }
        std::this_thread::sleep_for(PERIOD);
    }
}

LockedFile::~LockedFile() {
    close(mLock);
}

void LockedFile::Replace(const std::string& content, mode_t mode) const {
    const std::string fresh = mPath + ".new";
    if (unlink(fresh.c_str()) != 0 && errno != ENOENT) { // of a run that was killed
        Fail(fresh);
    }
    if (!CreateOwnFile(fresh.c_str(), content)) {
        Fail(fresh);
    }
    const int file = OpenOwnFile(fresh.c_str(), OwnFileMode::READ);
    const bool isWhole = file >= 0 && fchmod(file, mode) == 0 && fsync(file) == 0;
    const bool isReplaced = isWhole && std::rename(fresh.c_str(), mPath.c_str()) == 0;
    const int error = errno;
    if (file >= 0) {
        close(file);
    }
    if (!isReplaced) {
        unlink(fresh.c_str());
        errno = error;
        Fail(mPath);
    }
}

std::string ReadOwnText(const std::string& path) {
    TavuString content;
    if (!ReadOwnFile(path.c_str(), content) && errno != ENOENT) {
        Fail(path);
    }
    return content;
}

std::string ReadText(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    struct stat information {};
    std::string content;
    bool isRead =
        file >= 0 && fstat(file, &information) == 0 && (S_ISREG(information.st_mode) || (errno = EINVAL, false));
    while (isRead && content.size() <= MAX_OWN_FILE) {
        char buffer[4096];
        const ssize_t count = read(file, buffer, sizeof buffer);
        isRead = count >= 0;
        content.append(buffer, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count == 0) {
            break;
        }
    }
    if (isRead && content.size() > MAX_OWN_FILE) {
        errno = EFBIG;
        isRead = false;
    }
    const int error = errno;
    if (file >= 0) {
        close(file);
    }
    if (!isRead) {
        throw Failure(path + ": " + std::strerror(error), Failure::USAGE);
    }
    return content;
}

} // namespace orfc
