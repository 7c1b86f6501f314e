/// @file
/// Files of our own in folders that every user can write. The tool runs as root on hosts with other users, so a
/// name in such a folder may be a link, a FIFO or somebody else's file.
#pragma once

#include "TavuString.h"

#include <cstdio>

enum class OwnFileMode {
    READ,
    APPEND, ///< creates a missing file
    CREATE, ///< only a file that doesn't exist yet
};

/// Opens a file without following a link in its last component and without waiting. The file must be regular,
/// belong to the effective user and have no second name. A new file gets the process's default mode, less the
/// right of group and others to write.
///
/// Returns a descriptor, or -1 with `errno` set; `EPERM` stands for a file that isn't one of our own.
int OpenOwnFile(const char* path, OwnFileMode mode);

/// The same for appending through a stream; null with `errno` set.
FILE* AppendToOwnFile(const char* path);

/// Largest file that `ReadOwnFile` takes, in bytes.
inline constexpr std::size_t MAX_OWN_FILE = 1 << 20;

/// Reads a file to its end. False, with `errno` set, when it can't be opened or not all of it can be read;
/// `EFBIG` for more than `MAX_OWN_FILE` bytes.
bool ReadOwnFile(const char* path, TavuString& content);

/// Creates a file with this content. False when it exists already or not all of the content reached it; in the
/// latter case the file is removed again.
bool CreateOwnFile(const char* path, const TavuString& content);
