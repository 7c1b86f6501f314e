/// @file
/// The state file: what was changed through the library, kept between processes.
#pragma once

#include "description/Fields.h"

#include <optional>
#include <string>
#include <sys/types.h>

namespace sim {

/// The changes of one host as JSON: {"Simulator", "Description", "Host": {}, "Adapters": {"0": {}},
/// "Ports": {"0": {}}}, the inner objects with the keys of the description. Without a path nothing is kept.
class StateFile {
public:
    /// Which version of the file is on disk, to see whether another process changed it.
    struct Version {
        ino_t inode;
        off_t size;
        timespec time;
        bool operator==(const Version& other) const;
    };

    /// `path` may be empty; `description` is the digest that the state is bound to.
    StateFile(std::string path, std::string description);

    const std::string& Path() const { return mPath; }
    /// The state on disk. None when there is no file or when it belongs to another description, which
    /// `BelongsToOther` then tells. Throws `std::runtime_error` when the file is damaged or can't be read.
    std::optional<Json> Load();
    bool BelongsToOther() const { return mBelongsToOther; }
    /// Whether the file has been replaced since the last `Load` or `Save`.
    bool Changed() const;
    /// Puts a new state in the place of the old one, whole or not at all. Call it under a `Lock`. Throws
    /// `std::runtime_error`.
    void Save(const Json& state);

    /// Keeps other processes from reading and writing the state in between.
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

/// The state file's path: VEXAPI_SIM_STATE, or a name of the user's and the description's own under
/// /var/tmp. Empty when the variable is set and empty.
std::string StatePath(const std::string& descriptionPath);

} // namespace sim
