/// @file
/// Files that are replaced as a whole, by one run at a time, and files that are read.
#pragma once

#include <string>
#include <sys/types.h>

namespace orfc {

/// Holds "FILE.lock" while it lives. Whoever else may write in the folder can't redirect what is written: links and
/// files of others are refused. Each function throws `Failure` with the file and the reason.
class LockedFile {
public:
    /// Waits some seconds for a run that holds the lock.
    explicit LockedFile(std::string path);
    LockedFile(const LockedFile&) = delete;
    ~LockedFile();

    /// Writes the new content to "FILE.new" and renames that.
    void Replace(const std::string& content, mode_t mode) const;

private:
    std::string mPath;
    int mLock;
};

/// The content of a file of our own; empty if there is none. Throws `Failure`.
std::string ReadOwnText(const std::string& path);
/// The content of a regular file of whoever it is, of a megabyte at most. Throws a usage `Failure`.
std::string ReadText(const std::string& path);

} // namespace orfc
