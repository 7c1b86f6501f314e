/// @file
/// Files of our own in world-writable directories. The tool runs as root on hosts with other users, so a name in
/// such a directory may be a link, a FIFO or another user's file.
#pragma once

#include "TavuString.h"

#include <cstdio>

enum class OwnFileMode {
    READ,
    APPEND, ///< creates a missing file
    CREATE, ///< only a file that doesn't exist yet
};

/// Opens a file without blocking and without following a link in the last path component. The file must be regular,
/// owned by the effective user and have a single link. A new file gets the default mode without write permission
/// for group and others.
///
/// Returns a descriptor, or -1 with `errno` set; `EPERM` means that the file is not our own.
int OpenOwnFile(const char* path, OwnFileMode mode);

/// Same, for appending through a stream. Returns null with `errno` set on failure.
FILE* AppendToOwnFile(const char* path);

/// Largest file that `ReadOwnFile` reads, in bytes.
inline constexpr std::size_t MAX_OWN_FILE = 1 << 20;

/// Reads a whole file. Returns false, with `errno` set, if it can't be opened or read completely; `EFBIG` means
/// that it exceeds `MAX_OWN_FILE`.
bool ReadOwnFile(const char* path, TavuString& content);

/// Creates a file with this content. Returns false if it already exists or can't be written completely; an
/// incomplete file is removed.
bool CreateOwnFile(const char* path, const TavuString& content);
