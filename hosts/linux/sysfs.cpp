#include "sysfs.h"

#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace host {

namespace {

constexpr std::size_t PAGE = 4096;

/// `read` that is not cut short by a signal.
ssize_t readBytes(int descriptor, char* buffer, std::size_t size) {
    ssize_t count = 0;
    do {
        count = ::read(descriptor, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

} // namespace

Folder::Folder(const char* path) : descriptor_(::open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

Folder::Folder(const Folder& parent, const char* path) : descriptor_(parent.open(path, O_RDONLY | O_DIRECTORY)) {}

Folder::Folder(Folder&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

Folder& Folder::operator=(Folder&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

Folder::~Folder() {
    if (isOpen()) {
        close(descriptor_);
    }
}

/// Never waits, not even for what should be a file and is none.
int Folder::open(const char* path, int flags) const {
    if (!isOpen()) {
        errno = ENOENT; // and not what the present folder of the process has
        return -1;
    }
    return openat(descriptor_, path, flags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
}

std::vector<std::string> Folder::names() const {
    std::vector<std::string> names;
    // Of its own: closing a listing closes its descriptor.
    const int descriptor = open(".", O_RDONLY | O_DIRECTORY);
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
    return isOpen() && faccessat(descriptor_, path, F_OK, 0) == 0;
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
    const int descriptor = open(path, O_WRONLY);
    if (descriptor < 0) {
        return errno;
    }
    const ssize_t size = ::write(descriptor, text.data(), text.size());
    const int error = size < 0 ? errno : static_cast<std::size_t>(size) < text.size() ? EIO : 0;
    close(descriptor);
    return error;
}

} // namespace host
