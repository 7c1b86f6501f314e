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
constexpr int NEVER_WAIT = O_CLOEXEC | O_NOCTTY | O_NONBLOCK; // not even for what should be a file and is none

/// `read` that is not cut short by a signal.
ssize_t readBytes(int descriptor, char* buffer, std::size_t size) {
    ssize_t count = 0;
    do {
        count = ::read(descriptor, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

/// Opens a path below `root`, which no link leads out of. Returns -1 with ENOSYS where the kernel can't promise that.
int openInRoot(int root, const char* path, int flags) {
    open_how how{};
    how.flags = static_cast<unsigned>(flags);
    how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
    int descriptor = -1;
    // The kernel gives up when any file of the machine was renamed meanwhile.
    for (int tries = 0; tries < 100; ++tries) {
        descriptor = static_cast<int>(syscall(SYS_openat2, root, path, &how, sizeof how));
        if (descriptor >= 0 || errno != EAGAIN) {
            break;
        }
    }
    return descriptor;
}

} // namespace

Folder::Folder(const std::string& path)
    : descriptor_(::open(path.empty() ? "/" : path.c_str(), O_RDONLY | O_DIRECTORY | NEVER_WAIT)),
      root_(path.empty() ? -1 : descriptor_) {}

Folder::Folder(const Folder& parent, const char* path)
    : descriptor_(parent.open(path, O_RDONLY | O_DIRECTORY)), root_(parent.root_), path_(parent.path_ + path + '/') {}

Folder::~Folder() {
    if (isOpen()) {
        close(descriptor_);
    }
}

int Folder::open(const char* path, int flags) const {
    if (!isOpen()) {
        errno = ENOENT; // and not what the present folder of the process has
        return -1;
    }
    if (root_ >= 0) {
        const int descriptor = openInRoot(root_, (path_ + path).c_str(), flags | NEVER_WAIT);
        // Kernels before 5.6 can't, and sandboxes may forbid it.
        if (descriptor >= 0 || (errno != ENOSYS && errno != EPERM)) {
            return descriptor;
        }
    }
    return openat(descriptor_, path, flags | NEVER_WAIT);
}

std::vector<std::string> Folder::names() const {
    std::vector<std::string> names;
    // Of its own: closing a listing closes its descriptor.
    const int descriptor = isOpen() ? openat(descriptor_, ".", O_RDONLY | O_DIRECTORY | NEVER_WAIT) : -1;
    DIR* const listing = descriptor < 0 ? nullptr : fdopendir(descriptor);
    if (listing == nullptr) {
        if (descriptor >= 0) {
            close(descriptor);
        }
        return names;
    }
    while (const dirent* const entry = readdir(listing)) {
        if (entry->d_name[0] != '.') {
            names.emplace_back(entry->d_name);
        }
    }
    closedir(listing);
    return names;
}

std::string Folder::link(const char* path) const {
    char target[PATH_MAX];
    const ssize_t size = isOpen() ? readlinkat(descriptor_, path, target, sizeof target) : -1;
    return size < 0 ? std::string() : std::string(target, static_cast<std::size_t>(size));
}

bool Folder::has(const char* path) const {
    const int descriptor = open(path, O_RDONLY);
    if (descriptor >= 0) {
        close(descriptor);
    }
    return descriptor >= 0;
}

Reading Folder::read(const char* path) const {
    static char buffer[PAGE];
    const int descriptor = open(path, O_RDONLY);
    if (descriptor < 0) {
        return {errno, {}};
    }
    const ssize_t size = readBytes(descriptor, buffer, sizeof buffer);
    const int error = size < 0 ? errno : 0;
    close(descriptor);
    return {error, {buffer, size < 0 ? 0 : static_cast<std::size_t>(size)}};
}

int Folder::readWhole(const char* path, std::size_t limit, std::string& bytes) const {
    const int descriptor = open(path, O_RDONLY);
    if (descriptor < 0) {
        return errno;
    }
    bytes.resize(limit);
    std::size_t filled = 0;
    ssize_t count = 1;
    while (filled < limit && count > 0) {
        count = readBytes(descriptor, bytes.data() + filled, limit - filled);
        filled += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    const int error = count < 0 ? errno : 0;
    close(descriptor);
    bytes.resize(filled);
    return error;
}

int Folder::write(const char* path, std::string_view text) const {
    const int descriptor = open(path, O_WRONLY | O_NOFOLLOW);
    if (descriptor < 0) {
        return errno;
    }
    const ssize_t size = ::write(descriptor, text.data(), text.size());
    const int error = size < 0 ? errno : static_cast<std::size_t>(size) < text.size() ? EIO : 0;
    close(descriptor);
    return error;
}

} // namespace host
