#include "host/State.h"

#include "description/Files.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sim {
namespace {

/// Marks the file as ours.
constexpr char mark[] = "vexapi state 1";

[[noreturn]] void fail(const std::string& path, const char* what) {
    throw std::runtime_error(path + ": " + what + ": " + std::strerror(errno));
}

/// A file that is removed again unless it is given up to its final name.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string path) : path_(std::move(path)) {
        fd_ = mkostemp(path_.data(), O_CLOEXEC);
        if (fd_ < 0) {
            fail(path_, "can't be created");
        }
    }
    ~TemporaryFile() {
        if (fd_ >= 0) {
            close(fd_);
        }
        if (!path_.empty()) {
            unlink(path_.c_str());
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void write(std::string_view text) {
        while (!text.empty()) {
            const ssize_t put = ::write(fd_, text.data(), text.size());
            if (put < 0 && errno != EINTR) {
                fail(path_, "can't be written");
            }
            text.remove_prefix(put < 0 ? 0 : static_cast<std::size_t>(put));
        }
        if (fsync(fd_) != 0) {
            fail(path_, "can't be written");
        }
    }
    void renameTo(const std::string& path) {
        if (rename(path_.c_str(), path.c_str()) != 0) {
            fail(path, "can't be replaced");
        }
        path_.clear();
    }

private:
    std::string path_;
    int fd_;
};

} // namespace

bool StateFile::Version::operator==(const Version& other) const {
    return inode == other.inode && size == other.size && time.tv_sec == other.time.tv_sec &&
           time.tv_nsec == other.time.tv_nsec;
}

StateFile::StateFile(std::string path, std::string description)
    : path_(std::move(path)), description_(std::move(description)) {}

std::optional<StateFile::Version> StateFile::versionOnDisk() const {
    struct stat info {};
    if (path_.empty() || stat(path_.c_str(), &info) != 0) {
        return std::nullopt;
    }
    return Version{info.st_ino, info.st_size, info.st_mtim};
}

bool StateFile::changed() const {
    const auto now = versionOnDisk();
    return now && (!version_ || !(*now == *version_));
}

std::optional<Json> StateFile::load() {
    belongsToOther_ = false;
    version_ = versionOnDisk();
    if (!version_) {
        return std::nullopt;
    }
    Json state = parseJson(readFile(path_));
    if (!state.is_object() || state.value("Simulator", Json()) != mark || !state.contains("Description")) {
        throw std::runtime_error("isn't a state file of the simulator");
    }
    if (state["Description"] != description_) {
        belongsToOther_ = true;
        return std::nullopt;
    }
    state.erase("Simulator");
    state.erase("Description");
    return state;
}

void StateFile::save(const Json& state) {
    if (path_.empty()) {
        return;
    }
    Json whole = {{"Simulator", mark}, {"Description", description_}};
    whole.update(state);
    TemporaryFile file(path_ + ".XXXXXX");
    file.write(whole.dump(1, ' ', true, Json::error_handler_t::replace) + "\n");
    file.renameTo(path_);
    version_ = versionOnDisk();
}

StateFile::Lock::Lock(const StateFile& file) {
    if (file.path_.empty()) {
        return;
    }
    const std::string path = file.path_ + ".lock";
    fd_ = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (fd_ < 0) {
        fail(path, "can't be opened");
    }
    while (flock(fd_, LOCK_EX) != 0) {
        if (errno != EINTR) {
            close(fd_);
            fail(path, "can't be locked");
        }
    }
}

StateFile::Lock::~Lock() {
    if (fd_ >= 0) {
        close(fd_);
    }
}

std::string statePath(const std::string& descriptionPath) {
    if (const char* given = std::getenv("VEXAPI_SIM_STATE")) {
        return given;
    }
    const std::string which = descriptionPath.empty() ? "lab" : hashText(hashOf(descriptionPath));
    return "/var/tmp/vexapi-sim-" + std::to_string(getuid()) + "-" + which + ".json";
}

} // namespace sim
