/// @file
/// Archives of files, folders and links, in memory.
#pragma once

#include <map>
#include <string>

namespace orfc {

struct Entry {
    enum Kind { FOLDER, FILE, LINK };
    Kind kind = FOLDER;
    std::string content = {}; ///< of a file, or the target of a link
};

/// By their paths, which are relative. Folders may have no entry of their own.
using Entries = std::map<std::string, Entry, std::less<>>;

/// Whether a link from `path` stays among the entries: its target is relative, and climbs at its beginning only and no
/// further than to their root.
bool StaysInside(const std::string& path, const std::string& target);

/// Reads an archive (.tar.xz) of anybody. Throws `Failure` with the reason if it is none, isn't whole, is larger than
/// any host, or has entries that could write or lead elsewhere.
Entries ReadArchive(const std::string& file);

/// Writes an archive for this user alone: whole or not at all, and in the place of an existing file only if `isForced`.
/// Returns its size. Throws `Failure`.
std::size_t WriteArchive(const std::string& file, const Entries& entries, bool isForced);

/// Makes the entries below an existing folder. Throws `Failure`.
void Unpack(const Entries& entries, const std::string& folder);

} // namespace orfc
