/// @file
/// Access to sysfs, or to a captured copy of it. Nothing here throws for what it finds there: entries vanish, links
/// dangle and reads fail.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// Result of reading a file. The bytes are valid until the next read of any file.
struct Reading {
    int error = 0; ///< an errno, or 0
    std::string_view bytes;
};

/// A folder in a tree, opened when it is first needed. All paths are relative to it. A folder that can't be opened
/// behaves as an empty one.
class Folder {
public:
    /// The root of a tree. An empty path is the root of this machine. Links can't leave any other tree: its root is the
    /// root of absolute links and its own parent.
    explicit Folder(const std::string& path);
    /// A folder in the tree of `parent`. The root's object must outlive it.
    Folder(const Folder& parent, const char* path);
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder();

    /// False if it can't be opened.
    bool Exists() const { return Descriptor() >= 0; }
    /// False in a captured tree.
    bool IsThisMachine() const { return mRoot < 0; }

    /// The names in a folder, unsorted, except those that begin with a dot. None if it can't be read.
    std::vector<std::string> Names(const char* path = ".") const;

    /// The target of a link, unresolved; empty if it isn't a link.
    std::string Link(const char* path) const;

    bool Has(const char* path) const;

    /// Reads an attribute: at most a page (4096 bytes), in a single read.
    Reading Read(const char* path) const;

    /// Reads up to `limit` bytes, in as many reads as it takes. Returns an errno, or 0.
    int ReadWhole(const char* path, std::size_t limit, std::string& bytes) const;

    /// Writes an existing file. Returns an errno, or 0.
    int Write(const char* path, std::string_view text) const;

private:
    int Open(const char* path, int flags) const;
    int Descriptor() const;

    bool mIsConfined;                       ///< to the tree
    int mRoot;                              ///< what `mPath` is relative to
    std::string mPath;                      ///< with a slash at its end
    mutable std::optional<int> mDescriptor; ///< -1: failed to open
};

} // namespace host
