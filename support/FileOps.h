/// @file
/// Small text files of settings: one "key=value" a line, "#" begins a comment.
#pragma once

#include "TavuString.h"

/// Reads and edits key-value files, which are files of our own (see OwnFile.h): anything else at their place is a
/// file that can't be opened. Nothing is locked: of two runs on one file the last writer wins.
///
/// Reader and updater differ on purpose, and files on disk rely on it: the reader compares whole keys
/// without regard to case, the updater looks for a key anywhere in a line, with regard to case, and
/// replaces every line that holds it. So no key of a file may occur inside another key's line.
class FileOps {
public:
    /// Results of `read_key_value`.
    enum ReadResult : int { KEY_FOUND = 1, KEY_NOT_FOUND = 0, READ_INVALID = -1, READ_NO_FILE = -2 };

    /// Copies the value of the first line with this key: the text after the delimiter, without leading
    /// white space, up to white space or "#". Lines of more than 1023 bytes are read in pieces. A value
    /// that fills `valueSize` bytes has no terminator: pass a cleared buffer of one byte more.
    /// `READ_NO_FILE` for a file that can't be read to its end.
    static int read_key_value(const char* path, const char* key, char* value, unsigned long valueSize, char delimiter);

    /// The same in the content of a file: `KEY_FOUND` or `KEY_NOT_FOUND`.
    static int FindKeyValue(const TavuString& content, const char* key, char* value, unsigned long valueSize,
                            char delimiter);

    /// Replaces every line that contains the key, or appends a line; creates a missing file. Lines of more than
    /// 511 bytes are taken in pieces. 0, or `FILE_ERROR`. The old file stays until the new one stands complete
    /// beside it, under the name "PATH_tmp".
    static unsigned UpdateKeyValueInFile(const TavuString& path, const TavuString& key, const TavuString& value);

    /// 1 for a regular file of this name, else 0; a link is none.
    static int IsFilePresent(const TavuString& path);

    /// 0, or `FILE_ERROR`.
    static unsigned DeleteFile(const TavuString& path);

    /// A file can't be opened, written, removed or renamed. Also a result code of commands.
    static constexpr unsigned FILE_ERROR = 19;
};
