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

/// Opens a path below `root` without leaving it through links. Returns -1 with ENOSYS if the kernel doesn't support
/// that.
int OpenInRoot(int root, const char* path, int flags) {
    open_how how{};
    how.flags = static_cast<unsigned>(flags);
    how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
    int descriptor = -1;
    // The kernel returns EAGAIN if any file on the machine was renamed in the meantime.
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
    : mDescriptor(::open(path.empty() ? "/" : path.c_str(), O_RDONLY | O_DIRECTORY | NEVER_WAIT)),
      mRoot(path.empty() ? -1 : mDescriptor) {}

Folder::Folder(const Folder& parent, const char* path)
    : mDescriptor(parent.Open(path, O_RDONLY | O_DIRECTORY)), mRoot(parent.mRoot), mPath(parent.mPath + path + '/') {}

Folder::~Folder() {
    if (IsOpen()) {
        close(mDescriptor);
    }
}

int Folder::Open(const char* path, int flags) const {
    if (!IsOpen()) {
        errno = ENOENT; // not a file of the current directory
        return -1;
    }
    if (mRoot >= 0) {
        const int descriptor = OpenInRoot(mRoot, (mPath + path).c_str(), flags | NEVER_WAIT);
        // Kernels before 5.6 lack it, and sandboxes may forbid it.
        if (descriptor >= 0 || (errno != ENOSYS && errno != EPERM)) {
            return descriptor;
        }
    }
    return openat(mDescriptor, path, flags | NEVER_WAIT);
}

std::vector<std::string> Folder::Names() const {
    std::vector<std::string> names;
    // A separate descriptor, since closedir closes it.
    const int descriptor = IsOpen() ? openat(mDescriptor, ".", O_RDONLY | O_DIRECTORY | NEVER_WAIT) : -1;
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

std::string Folder::Link(const char* path) const {
    char target[PATH_MAX];
    const ssize_t size = IsOpen() ? readlinkat(mDescriptor, path, target, sizeof target) : -1;
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
