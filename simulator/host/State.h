/// @file
/// The state file, which keeps changes between processes.
#pragma once

#include "description/Fields.h"

#include <optional>
#include <string>
#include <sys/types.h>

namespace sim {

/// The changes of one host as JSON: {"Simulator", "Description", "Host": {}, "Adapters": {"0": {}},
/// "Ports": {"0": {}}}, with the keys of the description in the inner objects. Without a path nothing is saved.
class StateFile {
public:
    /// Identifies a version of the file, to detect changes by other processes.
    struct Version {
        ino_t inode;
        off_t size;
        timespec time;
        bool operator==(const Version& other) const;
    };

    /// `path` may be empty; `description` is the digest of the description.
    StateFile(std::string path, std::string description);

    const std::string& Path() const { return mPath; }
    /// The state on disk; none if there is no file, or if it belongs to another description (`BelongsToOther`).
    /// Throws `std::runtime_error` if the file is damaged or can't be read.
    std::optional<Json> Load();
    bool BelongsToOther() const { return mBelongsToOther; }
    /// Whether the file was replaced since the last `Load` or `Save`.
    bool Changed() const;
    /// Replaces the state atomically. Requires a `Lock`. Throws `std::runtime_error`.
    void Save(const Json& state);

    /// Locks the state against changes by other processes.
    class Lock {
    public:
        /// Waits for the lock. Throws `std::runtime_error`.
        explicit Lock(const StateFile& file);
        ~Lock();
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

    private:
        int mFd = -1;
    };

private:
    std::optional<Version> VersionOnDisk() const;

    std::string mPath;
    std::string mDescription;
    std::optional<Version> mVersion;
    bool mBelongsToOther = false;
};

/// Path of the state file: VEXAPI_SIM_STATE, or a name under /var/tmp for this user and description. Empty if the
/// variable is set but empty.
std::string StatePath(const std::string& descriptionPath);

} // namespace sim
