#include "Sysfs.h"

#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace host {

namespace {

constexpr std::size_t PAGE = 4096;
constexpr std::size_t LISTING = 64 * 1024;
/// More than any machine has; a folder of a file system that makes names up must end too.
constexpr std::size_t MAX_NAMES = 1 << 20;
/// Never block, even if a path turns out to be a FIFO or a terminal.
constexpr int NEVER_WAIT = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;

/// `read` that is restarted after signals.
ssize_t ReadBytes(int descriptor, char* buffer, std::size_t size) {
    ssize_t count = 0;
    do {
        count = ::read(descriptor, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

/// Opens a path below `root` without leaving it through links.
int OpenConfined(int root, const char* path, int flags) {
    open_how how{};
    how.flags = static_cast<unsigned>(flags);
    how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
    // The kernel returns EAGAIN if any file on the machine was renamed in the meantime.
    for (int tries = 0; tries < 100; ++tries) {
        const auto descriptor = static_cast<int>(syscall(SYS_openat2, root, path, &how, sizeof how));
        // Kernels before 5.6 lack it, and sandboxes may forbid it.
        if (descriptor < 0 && (errno == ENOSYS || errno == EPERM)) {
            return openat(root, path, flags);
        }
        if (descriptor >= 0 || errno != EAGAIN) {
            return descriptor;
        }
    }
    return -1;
}

} // namespace

Folder::Folder(const std::string& path)
    : mIsConfined(!path.empty()), mRoot(AT_FDCWD), mPath(path.empty() ? "/" : path + '/') {
    if (mIsConfined) {
        mDescriptor = mRoot = ::open(mPath.c_str(), O_RDONLY | O_DIRECTORY | NEVER_WAIT);
        mPath.clear();
    }
}

Folder::Folder(const Folder& parent, const char* path)
    : mIsConfined(parent.mIsConfined), mRoot(parent.mRoot), mPath(parent.mPath + path + '/') {}

Folder::~Folder() {
    if (mDescriptor && *mDescriptor >= 0) {
        close(*mDescriptor);
    }
}

int Folder::Descriptor() const {
    constexpr int FLAGS = O_RDONLY | O_DIRECTORY | NEVER_WAIT;
    if (!mDescriptor) {
        mDescriptor = mIsConfined ? OpenConfined(mRoot, mPath.c_str(), FLAGS) : ::open(mPath.c_str(), FLAGS);
    }
    return *mDescriptor;
}

int Folder::Open(const char* path, int flags) const {
    if (mIsConfined) {
        return OpenConfined(mRoot, (mPath + path).c_str(), flags | NEVER_WAIT);
    }
    if (!Exists()) {
        errno = ENOENT;
        return -1;
    }
    return openat(Descriptor(), path, flags | NEVER_WAIT);
}

std::vector<std::string> Folder::Names(const char* path) const {
    std::vector<std::string> names;
    const int descriptor = Open(path, O_RDONLY | O_DIRECTORY);
    if (descriptor < 0) {
        return names;
    }
    // Not readdir, which takes twice as many system calls for a small folder.
    alignas(dirent64) static char buffer[LISTING];
    ssize_t size = 0;
    while (names.size() < MAX_NAMES && (size = getdents64(descriptor, buffer, sizeof buffer)) > 0) {
        for (ssize_t at = 0; at < size;) {
            const auto* const entry = reinterpret_cast<const dirent64*>(buffer + at);
            if (entry->d_name[0] != '.') {
                names.emplace_back(entry->d_name);
            }
            at += entry->d_reclen;
        }
    }
    close(descriptor);
    return names;
}

std::string Folder::Link(const char* path) const {
    char target[PATH_MAX];
    const ssize_t size = Exists() ? readlinkat(Descriptor(), path, target, sizeof target) : -1;
    return size < 0 ? std::string() : std::string(target, static_cast<std::size_t>(size));
}

bool Folder::Has(const char* path) const {
    const int descriptor = Open(path, O_RDONLY);
    if (descriptor >= 0) {
        close(descriptor);
    }
    return descriptor >= 0;
}

Reading Folder::Read(const char* path) const {
    static char buffer[PAGE];
    const int descriptor = Open(path, O_RDONLY);
    if (descriptor < 0) {
        return {errno, {}};
    }
    const ssize_t size = ReadBytes(descriptor, buffer, sizeof buffer);
    const int error = size < 0 ? errno : 0;
    close(descriptor);
    return {error, {buffer, size < 0 ? 0 : static_cast<std::size_t>(size)}};
}

int Folder::ReadWhole(const char* path, std::size_t limit, std::string& bytes) const {
    const int descriptor = Open(path, O_RDONLY);
    if (descriptor < 0) {
        return errno;
    }
    bytes.resize(limit);
    std::size_t filled = 0;
    ssize_t count = 1;
    while (filled < limit && count > 0) {
        count = ReadBytes(descriptor, bytes.data() + filled, limit - filled);
        filled += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    const int error = count < 0 ? errno : 0;
    close(descriptor);
    bytes.resize(filled);
    return error;
}

int Folder::Write(const char* path, std::string_view text) const {
    const int descriptor = Open(path, O_WRONLY | O_NOFOLLOW);
    if (descriptor < 0) {
        return errno;
    }
    const ssize_t size = ::write(descriptor, text.data(), text.size());
    const int error = size < 0 ? errno : static_cast<std::size_t>(size) < text.size() ? EIO : 0;
    close(descriptor);
    return error;
}

} // namespace host
