/// @file
/// Reads of sysfs, or of a folder that was captured from one. Nothing here throws on what it finds there: entries
/// vanish while they are read, links dangle, and files refuse.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

/// What a read of a file gave. The bytes hold until the next read of any file.
struct Reading {
    int error = 0; ///< an errno, 0 when there are bytes
    std::string_view bytes;
};

/// An open folder of a tree, closed with the object. All paths are relative to it. One that can't be opened reads as
/// empty.
class Folder {
public:
    /// The root of a tree, at `path` from the present folder of the process. An empty path is the root of this machine;
    /// out of any other no link leads, since that root is the one of absolute links and of those that climb above it.
    explicit Folder(const std::string& path);
    /// A folder in the tree of `parent`. The root's object must outlive it.
    Folder(const Folder& parent, const char* path);
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder();

    bool IsOpen() const { return mDescriptor >= 0; }

    /// The names in it, but those that begin with a dot, in no order.
    std::vector<std::string> Names() const;

    /// Where a link points to, as it stands; empty when it is no link.
    std::string Link(const char* path) const;

    bool Has(const char* path) const;

    /// One attribute, of at most a page (4096 bytes), which the kernel gives in one read.
    Reading Read(const char* path) const;

    /// A file of any size up to `limit` bytes, which the kernel gives in pieces. Returns an errno, or 0.
    int ReadWhole(const char* path, std::size_t limit, std::string& bytes) const;

    /// Returns an errno, or 0.
    int Write(const char* path, std::string_view text) const;

private:
    int Open(const char* path, int flags) const;

    int mDescriptor = -1;
    int mRoot = -1;    ///< of the tree; -1: the root of this machine
    std::string mPath; ///< from `mRoot`, with a slash at its end
};

} // namespace host
