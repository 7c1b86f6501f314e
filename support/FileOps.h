/// @file
/// Small settings files: one "key=value" per line; "#" starts a comment.
#pragma once

#include "TavuString.h"

/// Reads and edits key-value files. Only files of our own are opened (see OwnFile.h). There is no locking: if two
/// runs update the same file, the last writer wins.
///
/// Required: the reader and the updater match keys differently, and files on disk rely on it. The reader compares
/// whole keys, ignoring case; the updater searches for the key anywhere in a line, case-sensitively, and replaces
/// every line that contains it. So no key of a file may occur inside another key's line.
class FileOps {
public:
    /// Results of `read_key_value`.
    enum ReadResult : int { KEY_FOUND = 1, KEY_NOT_FOUND = 0, READ_INVALID = -1, READ_NO_FILE = -2 };

    /// Copies the value of the first line with this key: the text after the delimiter, without leading white space,
    /// up to white space or "#". Lines of more than 1023 bytes are read in pieces. A value that fills `valueSize`
    /// bytes is not terminated: pass a zeroed buffer with one extra byte. Returns `READ_NO_FILE` for a file that
    /// can't be read completely.
    static int read_key_value(const char* path, const char* key, char* value, unsigned long valueSize, char delimiter);

    /// Same for the content of a file. Returns `KEY_FOUND` or `KEY_NOT_FOUND`.
    static int FindKeyValue(const TavuString& content, const char* key, char* value, unsigned long valueSize,
                            char delimiter);

    /// Replaces every line that contains the key, or appends a line; creates a missing file. Lines of more than 511
    /// bytes are processed in pieces. Returns 0 or `FILE_ERROR`. The new content is written to "PATH_tmp", which
    /// is renamed to "PATH" when complete, and stays if that fails.
    static unsigned UpdateKeyValueInFile(const TavuString& path, const TavuString& key, const TavuString& value);

    /// Returns 1 for a regular file of this name, else 0, or -1 if the name can't be examined; symbolic links are not
    /// followed.
    static int IsFilePresent(const TavuString& path);

    /// Returns 0 or `FILE_ERROR`.
    static unsigned DeleteFile(const TavuString& path);

    /// A file can't be opened, written, removed or renamed. Also a result code of commands.
    static constexpr unsigned FILE_ERROR = 19;
};
