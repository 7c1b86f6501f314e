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

/// Identifies a state file.
constexpr char MARK[] = "vexapi state 1";

[[noreturn]] void Fail(const std::string& path, const char* what) {
    throw std::runtime_error(path + ": " + what + ": " + std::strerror(errno));
}

/// A file that is removed unless it was renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string path) : mPath(std::move(path)) {
        mFd = mkostemp(mPath.data(), O_CLOEXEC);
        if (mFd < 0) {
            Fail(mPath, "can't be created");
        }
    }
    ~TemporaryFile() {
        if (mFd >= 0) {
            close(mFd);
        }
        if (!mPath.empty()) {
            unlink(mPath.c_str());
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void Write(std::string_view text) {
        while (!text.empty()) {
            const ssize_t put = ::write(mFd, text.data(), text.size());
            if (put < 0 && errno != EINTR) {
                Fail(mPath, "can't be written");
            }
            text.remove_prefix(put < 0 ? 0 : static_cast<std::size_t>(put));
        }
        if (fsync(mFd) != 0) {
            Fail(mPath, "can't be written");
        }
    }
    void RenameTo(const std::string& path) {
        if (rename(mPath.c_str(), path.c_str()) != 0) {
            Fail(path, "can't be replaced");
        }
        mPath.clear();
    }

private:
    std::string mPath;
    int mFd;
};

} // namespace

bool StateFile::Version::operator==(const Version& other) const {
    return inode == other.inode && size == other.size && time.tv_sec == other.time.tv_sec &&
           time.tv_nsec == other.time.tv_nsec;
}

StateFile::StateFile(std::string path, std::string description)
    : mPath(std::move(path)), mDescription(std::move(description)) {}

std::optional<StateFile::Version> StateFile::VersionOnDisk() const {
    struct stat info {};
    if (mPath.empty() || stat(mPath.c_str(), &info) != 0) {
        return std::nullopt;
    }
    return Version{info.st_ino, info.st_size, info.st_mtim};
}

bool StateFile::Changed() const {
    const auto now = VersionOnDisk();
    return now && (!mVersion || !(*now == *mVersion));
}

std::optional<Json> StateFile::Load() {
    mBelongsToOther = false;
    mVersion = VersionOnDisk();
    if (!mVersion) {
        return std::nullopt;
    }
    Json state = ParseJson(ReadFile(mPath));
    if (!state.is_object() || state.value("Simulator", Json()) != MARK || !state.contains("Description")) {
        throw std::runtime_error("isn't a state file of the simulator");
    }
    if (state["Description"] != mDescription) {
        mBelongsToOther = true;
        return std::nullopt;
    }
    state.erase("Simulator");
    state.erase("Description");
    return state;
}

void StateFile::Save(const Json& state) {
    if (mPath.empty()) {
        return;
    }
    Json whole = {{"Simulator", MARK}, {"Description", mDescription}};
    whole.update(state);
    TemporaryFile file(mPath + ".XXXXXX");
    file.Write(whole.dump(1, ' ', true, Json::error_handler_t::replace) + "\n");
    file.RenameTo(mPath);
    mVersion = VersionOnDisk();
}

StateFile::Lock::Lock(const StateFile& file) {
    if (file.mPath.empty()) {
        return;
    }
    const std::string path = file.mPath + ".lock";
    mFd = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (mFd < 0) {
        Fail(path, "can't be opened");
    }
    while (flock(mFd, LOCK_EX) != 0) {
        if (errno != EINTR) {
            close(mFd);
            Fail(path, "can't be locked");
        }
    }
}

StateFile::Lock::~Lock() {
    if (mFd >= 0) {
        close(mFd);
    }
}

std::string StatePath(const std::string& descriptionPath) {
    if (const char* given = std::getenv("VEXAPI_SIM_STATE")) {
        return given;
    }
    const std::string which = descriptionPath.empty() ? "lab" : HashText(HashOf(descriptionPath));
    return "/var/tmp/vexapi-sim-" + std::to_string(getuid()) + "-" + which + ".json";
}

} // namespace sim
